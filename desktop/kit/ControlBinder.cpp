#include "desktop/kit/ControlBinder.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <stdexcept>

#include "core/Form.h"
#include "machine/Machine.h"
#include "desktop/QtHost.h"

namespace quoll {

namespace {

// The field of type T behind a control, nullptr when it has another type or the place is outside the array.
template <typename T>
T* FieldOf(Machine& m, const Control& control, int index) {
  if (control.field == nullptr) return nullptr;
  ControlField field = control.field(m);
  if (auto* one = std::get_if<T*>(&field)) return *one;
  auto* many = std::get_if<std::span<T>>(&field);
  if (many == nullptr || index < 0 || static_cast<size_t>(index) >= many->size()) return nullptr;
  return &(*many)[static_cast<size_t>(index)];
}

}  // namespace

ControlBinder::ControlBinder(QtHost& hostOfWindow, Machine& machineOfWindow, std::string_view formName)
    : host(hostOfWindow), m(machineOfWindow), form(formName) {}

const Control& ControlBinder::Find(std::string_view control) const {
  const Control* found = FindControl(form, control);
  if (found == nullptr) throw std::logic_error("no control " + std::string(control));
  return *found;
}

void ControlBinder::Changed(const Control& control, int index) {
  host.Guard([&] { ControlChanged(m, control, index); });
  Pull();  // what the change has brought about is seen at once, also while the machine stands
}

void ControlBinder::Bind(std::string_view control, QAbstractButton* button, int index) {
  const Control& found = Find(control);
  QObject::connect(button, &QAbstractButton::clicked, [this, &found, index](bool checked) {
    // An option button can be chosen but not be given up: the group's rule is the record's, not Qt's.
    const bool on = checked || found.kind == ControlKind::Option;
    if (bool* value = FieldOf<bool>(m, found, index)) *value = on;
    Changed(found, index);
  });
  if (found.kind == ControlKind::Button) return;
  if (found.kind == ControlKind::Option) button->setAutoExclusive(false);
  pulls.emplace_back([this, &found, index, button] {
    const bool* value = FieldOf<bool>(m, found, index);
    if (value != nullptr && button->isChecked() != *value) button->setChecked(*value);
  });
}

void ControlBinder::Bind(std::string_view control, QLineEdit* box, int index) {
  const Control& found = Find(control);
  QObject::connect(box, &QLineEdit::textEdited, [this, &found, index](const QString& text) {
    if (auto* value = FieldOf<std::string>(m, found, index)) *value = text.toStdString();
    Changed(found, index);
  });
  pulls.emplace_back([this, &found, index, box] {
    if (const auto* value = FieldOf<std::string>(m, found, index)) ShowText(box, ToQt(*value));
  });
}

void ControlBinder::Bind(std::string_view control, QLabel* label, int index) {
  const Control& found = Find(control);
  pulls.emplace_back([this, &found, index, label] {
    if (const auto* value = FieldOf<std::string>(m, found, index)) ShowText(label, ToQt(*value));
  });
}

void ControlBinder::Pull() {
  for (const auto& pull : pulls) pull();
}

QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void ShowText(QLabel* label, const QString& text) {
  if (label->text() != text) label->setText(text);
}

void ShowText(QLineEdit* box, const QString& text) {
  if (box->text() != text) box->setText(text);
}

}  // namespace quoll
