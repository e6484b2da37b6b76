// Ties widgets to the controls of a form, of every kind: what the user does goes by the functions of
// core/Form.h into the field and to the handlers, a pull copies the fields into the widgets. How a control
// looks just now, where its table has that, is taken over too.
#pragma once

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Form.h"

class QAbstractButton;
class QAbstractSlider;
class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QString;
class QWidget;

namespace quoll {

class FileList;
class HexView;
class ImageView;
class Lamp;
class PressLabel;
class QtHost;
class RegisterGrid;
class Scope;
class ValueBar;

class ControlBinder {
 public:
  ControlBinder(QtHost& hostOfWindow, Machine& machineOfWindow, const Form& formOfWindow);
  ControlBinder(const ControlBinder&) = delete;
  ControlBinder& operator=(const ControlBinder&) = delete;

  // A control of the form, of an array the one at index. Asking for one that the form does not have is a
  // mistake of the program and throws std::logic_error.
  ControlRef Ref(std::string_view control, int index = 0) const;

  // The widget must live as long as pulls are made. A control without a field only calls its handlers, a
  // label only shows.
  void Bind(const ControlRef& ref, QAction* entry);
  void Bind(const ControlRef& ref, QAbstractButton* button);  // a check, an option or a plain button
  void Bind(const ControlRef& ref, QLineEdit* box);
  void Bind(const ControlRef& ref, QPlainTextEdit* box);
  void Bind(const ControlRef& ref, QLabel* label);
  void Bind(const ControlRef& ref, PressLabel* label);
  void Bind(const ControlRef& ref, Lamp* lamp);
  void Bind(const ControlRef& ref, QAbstractSlider* slider);
  void Bind(const ControlRef& ref, ValueBar* bar);
  void Bind(const ControlRef& ref, FileList* list);
  void Bind(const ControlRef& ref, QComboBox* box);
  void Bind(const ControlRef& ref, Scope* scope);
  void Bind(const ControlRef& ref, ImageView* image);
  void Bind(const ControlRef& ref, RegisterGrid* grid);  // the whole array, from its first label on
  void Bind(const ControlRef& ref, HexView* view);       // a label of several lines, in code page 852

  // Any widget that looks as the control does, beside its own.
  void BindLook(const ControlRef& ref, QWidget* widget);

  // Copies the fields into their widgets, where they differ; those that are worked out only for somebody who
  // looks are brought up to date first.
  void Pull();

  // Whether the user has done something with a control since the last call.
  bool TakeActed() { return std::exchange(acted, false); }

 private:
  template <class Work>
  void Act(Work work);
  template <class T, class Show>
  void PullField(const ControlRef& ref, Show show);
  template <class Show>
  void PullText(const ControlRef& ref, Show show);
  template <class Box>
  void BindPresses(const ControlRef& ref, Box* box);

  QtHost& host;
  Machine& m;
  const Form& form;
  std::vector<std::function<void()>> pulls;
  bool acted = false;
};

}  // namespace quoll
