#include "desktop/kit/ControlBinder.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <optional>
#include <stdexcept>

#include "cards/CodePage852.h"
#include "desktop/QtHost.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/Colour.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/HexView.h"
#include "desktop/widgets/ImageView.h"
#include "desktop/widgets/Lamp.h"
#include "desktop/widgets/PressLabel.h"
#include "desktop/widgets/RegisterGrid.h"
#include "desktop/widgets/Scope.h"
#include "desktop/widgets/ValueBar.h"

namespace quoll {

namespace {

using Roles = std::initializer_list<QPalette::ColorRole>;

void SetColour(QPalette& palette, Roles roles, int32_t colour) {
  if (colour == kOwnColour) return;
  for (const QPalette::ColorRole role : roles) palette.setColor(role, ToColour(colour));
}

void ShowLook(QWidget* widget, const Look& look) {
  widget->setVisible(look.visible);
  widget->setEnabled(look.enabled);
  QPalette palette;
  SetColour(palette, {QPalette::Window, QPalette::Base, QPalette::Button}, look.back);
  SetColour(palette, {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}, look.fore);
  widget->setPalette(palette);
  widget->setAutoFillBackground(look.back != kOwnColour);
}

void ShowLook(QAction* entry, const Look& look) {
  entry->setVisible(look.visible);
  entry->setEnabled(look.enabled);
}

// A text that has only grown keeps its place, and stays at its end when that was seen.
void ShowGrowing(QPlainTextEdit* box, const QString& text) {
  const QString before = box->toPlainText();
  if (before == text) return;
  if (before.isEmpty() || !text.startsWith(before)) return box->setPlainText(text);
  QScrollBar* bar = box->verticalScrollBar();
  const bool atEnd = bar->value() == bar->maximum();
  QTextCursor end(box->document());
  end.movePosition(QTextCursor::End);
  end.insertText(text.mid(before.size()));
  if (atEnd) bar->setValue(bar->maximum());
}

void ShowScroll(QAbstractSlider* slider, const Scroll& scroll) {
  const auto [low, high] = std::minmax(scroll.first, scroll.last);
  const bool inverted = scroll.first > scroll.last;
  if (slider->minimum() == low && slider->maximum() == high && slider->value() == scroll.value &&
      slider->invertedAppearance() == inverted)
    return;
  const QSignalBlocker quiet(slider);
  slider->setRange(low, high);
  slider->setValue(scroll.value);
  slider->setInvertedAppearance(inverted);
  // Of a scroll bar's wheel and keys down is more: Qt has them inverted from the start.
  slider->setInvertedControls(inverted != (qobject_cast<QScrollBar*>(slider) != nullptr));
}

void ShowEntries(QComboBox* box, const ListRef& list) {
  const int wanted = static_cast<int>(list.EntryCount());
  const QSignalBlocker quiet(box);
  while (box->count() > wanted) box->removeItem(box->count() - 1);
  for (int i = 0; i < wanted; ++i) {
    const QString text = ToQt(list.Entry(static_cast<size_t>(i)));
    if (i == box->count()) box->addItem(text);
    if (box->itemText(i) != text) box->setItemText(i, text);
  }
  const int selected = *list.selected < wanted ? std::max(*list.selected, -1) : -1;
  if (box->currentIndex() != selected) box->setCurrentIndex(selected);
}

}  // namespace

ControlBinder::ControlBinder(QtHost& hostOfWindow, Machine& machineOfWindow, const Form& formOfWindow)
    : host(hostOfWindow), m(machineOfWindow), form(formOfWindow) {}

ControlRef ControlBinder::Ref(std::string_view control, int index) const {
  const ControlRef ref{&form, FindControl(form, control), index};
  if (ref.control == nullptr || index < 0 || index >= std::max(1, ref.control->count))
    throw std::logic_error("no control " + std::string(form.name) + "." + std::string(control) + "(" +
                           std::to_string(index) + ")");
  return ref;
}

template <class Work>
void ControlBinder::Act(Work work) {
  acted = true;
  host.Act(m, work);
}

template <class T, class Show>
void ControlBinder::PullField(const ControlRef& ref, Show show) {
  pulls.emplace_back([this, ref, show]() mutable {
    if (const T* value = FieldOf<T>(m, ref)) show(*value);
  });
}

// A shown text, which only the record changes. Compared as the record has it: with hundreds of labels, making
// Qt's own text of each at every pull costs more than all the painting.
template <class Show>
void ControlBinder::PullText(const ControlRef& ref, Show show) {
  PullField<std::string>(ref, [show, shown = std::optional<std::string>()](const std::string& text) mutable {
    if (shown == text) return;
    shown = text;
    show(text);
  });
}

void ControlBinder::BindLook(const ControlRef& ref, QWidget* widget) {
  if (ref.control->look == nullptr) return;
  pulls.emplace_back([this, ref, widget, shown = Look{}]() mutable {
    const Look now = LookOf(m, ref);
    if (now == shown) return;
    shown = now;
    ShowLook(widget, now);
  });
}

void ControlBinder::Bind(const ControlRef& ref, QAction* entry) {
  // Qt flips a tick by itself when its entry is selected; the record has the last word.
  entry->setCheckable(FieldOf<bool>(m, ref) != nullptr);
  // An entry without a handler and without a tick has nothing behind it yet.
  entry->setEnabled(entry->isCheckable() || ref.control->click);
  QObject::connect(entry, &QAction::triggered, entry, [this, ref] { Act([&] { Press(m, ref); }); });
  PullField<bool>(ref, [entry](bool tick) { entry->setChecked(tick); });
  if (ref.control->look == nullptr) return;
  pulls.emplace_back([this, ref, entry] { ShowLook(entry, LookOf(m, ref)); });
}

void ControlBinder::Bind(const ControlRef& ref, QAbstractButton* button) {
  const ControlKind kind = ref.control->kind;
  if (kind == ControlKind::Button) BindPresses(ref, button);
  // An option button can be chosen but not be given up: the group's rule is the record's, not Qt's.
  if (kind == ControlKind::Option) button->setAutoExclusive(false);
  QObject::connect(button, &QAbstractButton::clicked, button, [this, ref, kind](bool checked) {
    Act([&] {
      if (kind == ControlKind::Button) return Press(m, ref);
      SetTick(m, ref, checked || kind == ControlKind::Option);
    });
  });
  // A screen reader's toggle is no click.
  QObject::connect(button, &QAbstractButton::toggled, button, [this] { acted = true; });
  PullField<bool>(ref, [button](bool tick) {
    if (button->isChecked() != tick) button->setChecked(tick);
  });
  BindLook(ref, button);
}

// What goes down and comes up.
template <class Box>
void ControlBinder::BindPresses(const ControlRef& ref, Box* box) {
  const auto act = [this, ref](void (*action)(Machine&, const ControlRef&)) {
    return [this, ref, action] { Act([&] { action(m, ref); }); };
  };
  if constexpr (std::is_same_v<Box, PressLabel>) {
    QObject::connect(box, &PressLabel::Pressed, box, act(MouseDown));
    QObject::connect(box, &PressLabel::Released, box, act(MouseUp));
    QObject::connect(box, &PressLabel::Clicked, box, act(Press));
  } else {
    if (ref.control->down) QObject::connect(box, &QAbstractButton::pressed, box, act(MouseDown));
    if (ref.control->up) QObject::connect(box, &QAbstractButton::released, box, act(MouseUp));
  }
}

void ControlBinder::Bind(const ControlRef& ref, QLineEdit* box) {
  QObject::connect(box, &QLineEdit::textEdited, box,
                   [this, ref](const QString& text) { Act([&] { SetText(m, ref, text.toStdString()); }); });
  QObject::connect(box, &QLineEdit::returnPressed, box, [this, ref, box] {
    box->setModified(false);
    Act([&] { PressEnter(m, ref); });
  });
  PullField<std::string>(ref, [box](const std::string& text) { ShowText(box, ToQt(text)); });
  BindLook(ref, box);
}

void ControlBinder::Bind(const ControlRef& ref, QPlainTextEdit* box) {
  QObject::connect(box, &QPlainTextEdit::textChanged, box,
                   [this, ref, box] { Act([&] { SetText(m, ref, box->toPlainText().toStdString()); }); });
  PullField<std::string>(ref, [box, shown = std::string()](const std::string& text) mutable {
    if (text == shown) return;
    shown = text;
    const QSignalBlocker quiet(box);
    ShowGrowing(box, ToQt(text));
  });
  BindLook(ref, box);
}

void ControlBinder::Bind(const ControlRef& ref, QLabel* label) {
  PullText(ref, [label](const std::string& text) { ShowText(label, ToQt(text)); });
  BindLook(ref, label);
}

void ControlBinder::Bind(const ControlRef& ref, PressLabel* label) {
  const Control& control = *ref.control;
  label->SetPressable(control.click || control.down || control.up);
  BindPresses(ref, label);
  Bind(ref, static_cast<QLabel*>(label));
}

void ControlBinder::Bind(const ControlRef& ref, Lamp* lamp) {
  PullField<bool>(ref, [lamp](bool on) { lamp->Set(on); });
  BindLook(ref, lamp);
}

void ControlBinder::Bind(const ControlRef& ref, QAbstractSlider* slider) {
  QObject::connect(slider, &QAbstractSlider::valueChanged, slider,
                   [this, ref](int value) { Act([&] { SetScroll(m, ref, value); }); });
  PullField<Scroll>(ref, [slider](const Scroll& scroll) { ShowScroll(slider, scroll); });
  BindLook(ref, slider);
}

void ControlBinder::Bind(const ControlRef& ref, ValueBar* bar) {
  PullField<Scroll>(ref, [bar](const Scroll& scroll) {
    const int range = scroll.last - scroll.first;
    bar->SetShare(range > 0 ? static_cast<float>(scroll.value - scroll.first) / static_cast<float>(range)
                            : 0);
  });
  BindLook(ref, bar);
}

void ControlBinder::Bind(const ControlRef& ref, FileList* list) {
  QObject::connect(list, &FileList::Chosen, list,
                   [this, ref](int entry) { Act([&] { ChooseEntry(m, ref, entry); }); });
  QObject::connect(list, &FileList::Opened, list,
                   [this, ref](int entry) { Act([&] { DoubleClickEntry(m, ref, entry); }); });
  // A press that chooses nothing moves the mark all the same.
  QObject::connect(list, &QListWidget::currentRowChanged, list, [this] { acted = true; });
  pulls.emplace_back([this, ref, list] { list->Show(ListOf(m, *ref.control)); });
  BindLook(ref, list);
}

void ControlBinder::Bind(const ControlRef& ref, QComboBox* box) {
  QObject::connect(box, &QComboBox::activated, box,
                   [this, ref](int entry) { Act([&] { ChooseEntry(m, ref, entry); }); });
  pulls.emplace_back([this, ref, box] { ShowEntries(box, ListOf(m, *ref.control)); });
  BindLook(ref, box);
}

void ControlBinder::Bind(const ControlRef& ref, Scope* scope) {
  PullField<Trace>(ref, [scope](const Trace& trace) { scope->Show(trace); });
  BindLook(ref, scope);
}

void ControlBinder::Bind(const ControlRef& ref, ImageView* image) {
  PullField<PixelImage>(ref, [image](const PixelImage& picture) { image->Show(picture); });
  BindLook(ref, image);
}

void ControlBinder::Bind(const ControlRef& ref, RegisterGrid* grid) {
  QObject::connect(grid, &RegisterGrid::Pressed, grid, [this, ref](int cell) {
    const ControlRef pressed{ref.form, ref.control, cell};
    Act([&] {
      MouseDown(m, pressed);
      MouseUp(m, pressed);
      Press(m, pressed);
    });
  });
  pulls.emplace_back([this, ref, grid, shown = std::vector<std::string>(grid->Cells())]() mutable {
    const ControlField field = ref.control->field(m);
    const auto values = std::get<std::span<std::string>>(field);
    for (size_t cell = 0; cell < std::min(shown.size(), values.size()); ++cell) {
      if (shown[cell] == values[cell]) continue;
      shown[cell] = values[cell];
      grid->SetValue(static_cast<int>(cell), ToQt(values[cell]));
    }
  });
  if (ref.control->look == nullptr) return;
  if (ref.control->look(m).size() == 1) return BindLook(ref, grid);
  pulls.emplace_back([this, ref, grid] {
    for (int cell = 0; cell < grid->Cells(); ++cell) {
      const Look look = LookOf(m, {ref.form, ref.control, cell});
      grid->SetColours(cell, look.fore, look.back);
    }
  });
}

void ControlBinder::Bind(const ControlRef& ref, HexView* view) {
  PullText(ref, [view](const std::string& rows) { view->SetRows(ToQt(PrintedText(rows))); });
  BindLook(ref, view);
}

void ControlBinder::Pull() {
  RefreshForm(m, form);
  for (const auto& pull : pulls) pull();
}

}  // namespace quoll
