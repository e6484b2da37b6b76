// Makes the widgets of a form's controls: named for the control, with caption and accessible name from the
// form's table, bound both ways. A window that is built with it is layout only:
//
//   rows->addRow(kit.Scope("Pic1", tone), kit.Slider("HScroll3", tone), kit.Readout("Label6", tone));
#pragma once

#include <QIcon>
#include <QString>
#include <algorithm>
#include <string_view>

#include "desktop/kit/ControlBinder.h"
#include "desktop/widgets/Scope.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QSlider;

namespace quoll {

class Readout;

class FormKit {
 public:
  FormKit(QtHost& hostOfWindow, Machine& machineOfWindow, const Form& formOfWindow);

  QtHost& host;
  Machine& m;
  const Form& form;
  ControlBinder binder;

  // Of how many controls an array is; 1 for a single control.
  int Count(std::string_view control) const { return std::max(1, binder.Ref(control).control->count); }
  FormState& State() const { return *form.state(m); }

  // The object name of a control's widget. Of an array the first bears the array's name, the others have
  // their number behind it: "Check1", "Check12"; in brackets, "Check1(1)", where another control is called
  // so.
  static QString NameOf(const ControlRef& ref);

  // Each is for the control of that name, of an array the one at index. An unknown one, or one of another
  // kind, is a mistake of the program and throws std::logic_error. The layout owns what it takes.
  QCheckBox* Check(std::string_view control, int index = 0);
  QRadioButton* Option(std::string_view control, int index = 0);
  QPushButton* Button(std::string_view control, int index = 0);
  QPushButton* IconButton(std::string_view control, const QIcon& icon);  // its caption is the tool tip
  QLineEdit* Text(std::string_view control, int index = 0);
  QPlainTextEdit* Memo(std::string_view control);  // a text of many lines
  // Also of any other text, which it shows; the caption where there is none to be shown.
  PressLabel* Label(std::string_view control, int index = 0);
  quoll::Lamp* Lamp(std::string_view control, int index = 0);
  quoll::Readout* Readout(std::string_view control, int index = 0, const QString& note = {});
  QSlider* Slider(std::string_view control, int index = 0);  // from the left to the right
  QSlider* Fader(std::string_view control, int index = 0);   // from the bottom up
  ValueBar* Bar(std::string_view control, int index = 0);
  QScrollBar* ScrollBar(std::string_view control, Qt::Orientation orientation);
  FileList* List(std::string_view control);
  QComboBox* Combo(std::string_view control);
  quoll::Scope* Scope(std::string_view control, int index = 0, const ScopeBox& box = {});
  ImageView* Image(std::string_view control, QSize place, int index = 0);
  RegisterGrid* Registers(std::string_view control, int columns, int digits = 2);
  // rows: the label that holds the text; scroll: the scroll bar of addresses.
  HexView* Hex(std::string_view rows, std::string_view scroll, const QString& header, int seen);

  // All menus of the form, in its table's order.
  QMenuBar* Menus();

  // A frame around controls, with a title on it, which is no control itself.
  static QGroupBox* Frame(const char* name, const QString& title);

 private:
  ControlRef Ref(std::string_view control, int index, ControlKind kind) const;
  template <class Widget>
  Widget* Made(const ControlRef& ref, Widget* widget);
  QSlider* AddSlider(std::string_view control, int index, Qt::Orientation orientation);
};

}  // namespace quoll
