#include "desktop/kit/FormKit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <algorithm>
#include <stdexcept>

#include "desktop/QtHost.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/HexView.h"
#include "desktop/widgets/ImageView.h"
#include "desktop/widgets/Lamp.h"
#include "desktop/widgets/Readout.h"
#include "desktop/widgets/RegisterGrid.h"
#include "desktop/widgets/ValueBar.h"

namespace quoll {

namespace {

constexpr int kReadoutDigits = 7;

// What a "&" in a button's or an entry's text would do is not meant by the tables.
QString Caption(const ControlRef& ref) { return ToQt(CaptionOf(ref)).replace('&', "&&"); }

// A step of a key or of the wheel takes the value through its range in about a hundred of them.
void SetSteps(QAbstractSlider* slider, const Scroll& scroll) {
  const int range = std::max(scroll.first, scroll.last) - std::min(scroll.first, scroll.last);
  slider->setSingleStep(std::max(1, range / 100));
  slider->setPageStep(std::max(1, range / 10));
}

}  // namespace

FormKit::FormKit(QtHost& hostOfWindow, Machine& machineOfWindow, const Form& formOfWindow)
    : host(hostOfWindow), m(machineOfWindow), form(formOfWindow), binder(host, m, form) {}

QString FormKit::NameOf(const ControlRef& ref) {
  const QString name = ToQt(ref.control->name);
  if (ref.index == 0) return name;
  const QString number = QString::number(ref.index);
  const bool taken = FindControl(*ref.form, (name + number).toStdString()) != nullptr;
  return taken ? QString("%1(%2)").arg(name, number) : name + number;
}

ControlRef FormKit::Ref(std::string_view control, int index, ControlKind kind) const {
  const ControlRef ref = binder.Ref(control, index);
  if (ref.control->kind != kind) throw std::logic_error(std::string(control) + " is of another kind");
  return ref;
}

template <class Widget>
Widget* FormKit::Made(const ControlRef& ref, Widget* widget) {
  NameWidget(widget, NameOf(ref), ToQt(CaptionOf(ref)));
  binder.Bind(ref, widget);
  return widget;
}

QCheckBox* FormKit::Check(std::string_view control, int index) {
  const ControlRef ref = Ref(control, index, ControlKind::Check);
  return Made(ref, new QCheckBox(Caption(ref)));
}

QRadioButton* FormKit::Option(std::string_view control, int index) {
  const ControlRef ref = Ref(control, index, ControlKind::Option);
  return Made(ref, new QRadioButton(Caption(ref)));
}

QPushButton* FormKit::Button(std::string_view control, int index) {
  const ControlRef ref = Ref(control, index, ControlKind::Button);
  auto* button = new QPushButton(Caption(ref));
  button->setAutoDefault(true);  // Enter presses it
  return Made(ref, button);
}

QPushButton* FormKit::IconButton(std::string_view control, const QIcon& icon) {
  QPushButton* button = Button(control);
  button->setToolTip(button->text());
  button->setText({});
  button->setIcon(icon);
  return button;
}

QLineEdit* FormKit::Text(std::string_view control, int index) {
  return Made(Ref(control, index, ControlKind::Text), new QLineEdit);
}

QPlainTextEdit* FormKit::Memo(std::string_view control) {
  auto* box = Made(Ref(control, 0, ControlKind::Text), new QPlainTextEdit);
  box->setTabChangesFocus(true);
  return box;
}

PressLabel* FormKit::Label(std::string_view control, int index) {
  const ControlRef ref = binder.Ref(control, index);
  const bool text = FieldOf<std::string>(m, ref) != nullptr;
  if (!text && ref.control->kind != ControlKind::Label)
    throw std::logic_error(std::string(control) + " has no text");
  auto* label = new PressLabel;
  if (!text) label->setText(ToQt(CaptionOf(ref)));
  return Made(ref, label);
}

Lamp* FormKit::Lamp(std::string_view control, int index) {
  const ControlRef ref = Ref(control, index, ControlKind::Lamp);
  return Made(ref, new quoll::Lamp(ToQt(CaptionOf(ref))));
}

Readout* FormKit::Readout(std::string_view control, int index, const QString& note) {
  const ControlRef ref = Ref(control, index, ControlKind::Label);
  auto* readout = new quoll::Readout(ToQt(CaptionOf(ref)), kReadoutDigits, note);
  Made(ref, readout->Value());
  return readout;
}

QSlider* FormKit::AddSlider(std::string_view control, int index, Qt::Orientation orientation) {
  const ControlRef ref = Ref(control, index, ControlKind::Scroll);
  auto* slider = Made(ref, new QSlider(orientation));
  SetSteps(slider, *FieldOf<quoll::Scroll>(m, ref));
  return slider;
}

QSlider* FormKit::Slider(std::string_view control, int index) {
  return AddSlider(control, index, Qt::Horizontal);
}

QSlider* FormKit::Fader(std::string_view control, int index) {
  return AddSlider(control, index, Qt::Vertical);
}

ValueBar* FormKit::Bar(std::string_view control, int index) {
  return Made(Ref(control, index, ControlKind::Bar), new ValueBar);
}

QScrollBar* FormKit::ScrollBar(std::string_view control, Qt::Orientation orientation) {
  const ControlRef ref = Ref(control, 0, ControlKind::Scroll);
  auto* bar = Made(ref, new QScrollBar(orientation));
  bar->setFocusPolicy(Qt::StrongFocus);
  SetSteps(bar, *FieldOf<quoll::Scroll>(m, ref));
  return bar;
}

FileList* FormKit::List(std::string_view control) {
  return Made(Ref(control, 0, ControlKind::List), new FileList);
}

QComboBox* FormKit::Combo(std::string_view control) {
  return Made(Ref(control, 0, ControlKind::Combo), new QComboBox);
}

Scope* FormKit::Scope(std::string_view control, int index, const ScopeBox& box) {
  return Made(Ref(control, index, ControlKind::Scope), new quoll::Scope(box));
}

ImageView* FormKit::Image(std::string_view control, QSize place, int index) {
  return Made(Ref(control, index, ControlKind::Image), new ImageView(place));
}

RegisterGrid* FormKit::Registers(std::string_view control, int columns, int digits) {
  const ControlRef first = Ref(control, 0, ControlKind::Label);
  const int cells = Count(control);
  auto* grid = Made(first, new RegisterGrid(cells, columns, digits));
  for (int cell = 0; cell < cells; ++cell)
    grid->SetName(cell, ToQt(CaptionOf({first.form, first.control, cell})));
  return grid;
}

HexView* FormKit::Hex(std::string_view rows, std::string_view scroll, const QString& header, int seen) {
  auto* view = Made(Ref(rows, 0, ControlKind::Label), new HexView(header, seen));
  Made(Ref(scroll, 0, ControlKind::Scroll), view->Bar());
  return view;
}

QMenuBar* FormKit::Menus() {
  auto* bar = new QMenuBar;
  bar->setNativeMenuBar(false);
  bar->setAccessibleName(QCoreApplication::translate("quoll::FormKit", "Menus"));
  QMenu* menu = nullptr;
  std::string_view title;
  for (const Control& control : form.controls) {
    if (control.kind != ControlKind::Menu) continue;
    if (menu == nullptr || control.menu != title) {
      title = control.menu;
      menu = bar->addMenu("&" + ToQt(title));
      menu->setAccessibleName(ToQt(title));
      QObject::connect(menu, &QMenu::aboutToShow, menu, [this] { binder.Pull(); });
    }
    const ControlRef ref{&form, &control, 0};
    QAction* entry = menu->addAction(Caption(ref));
    entry->setObjectName(NameOf(ref));
    binder.Bind(ref, entry);
  }
  return bar;
}

QGroupBox* FormKit::Frame(const char* name, const QString& title) {
  auto* frame = new QGroupBox(title);
  NameWidget(frame, name, title);
  return frame;
}

}  // namespace quoll
