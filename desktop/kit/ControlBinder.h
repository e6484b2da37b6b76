// Ties the widgets of a window to the controls of a form: the user's change goes into the field and calls the
// control's handler, a pull copies the fields into the widgets.
#pragma once

#include <QString>
#include <functional>
#include <string_view>
#include <vector>

class QAbstractButton;
class QLabel;
class QLineEdit;
class QListWidget;

namespace quoll {

class QtHost;
struct Control;
struct Machine;

class ControlBinder {
 public:
  ControlBinder(QtHost& hostOfWindow, Machine& machineOfWindow, std::string_view formName);

  // Each names a control of the form, with the place within an array of controls. A check box or option
  // button takes the field's value; a plain button just calls the handler. Naming a control that the form
  // does not have is a mistake of the program and ends it.
  void Bind(std::string_view control, QAbstractButton* button, int index = 0);
  void Bind(std::string_view control, QLineEdit* box, int index = 0);
  void Bind(std::string_view control, QLabel* label, int index = 0);

  // Copies all fields into their widgets.
  void Pull();

 private:
  const Control& Find(std::string_view control) const;
  void Changed(const Control& control, int index);

  QtHost& host;
  Machine& m;
  std::string_view form;
  std::vector<std::function<void()>> pulls;
};

// Text of the machine as Qt shows it. Its strings are UTF-8; other bytes become replacement characters.
QString ToQt(std::string_view text);

// Sets a widget's text only when it differs, so that nothing is laid out or painted for nothing.
void ShowText(QLabel* label, const QString& text);
void ShowText(QLineEdit* box, const QString& text);

}  // namespace quoll
