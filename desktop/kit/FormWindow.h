// A window of its own that shows a form. It comes, goes and is raised as the machine's record of windows
// says.
#pragma once

#include <QWidget>

#include "desktop/kit/ControlBinder.h"
#include "desktop/QtHost.h"
#include "display/Windows.h"

namespace quoll {

class FormWindow : public QWidget, public RecordView {
 public:
  ~FormWindow() override;

  void Pull(Machine& machine) override;

 protected:
  // state: which of the windows it is; form: the name of the form's table.
  FormWindow(QtHost& hostOfWindow, Machine& machineOfWindow, WindowState Windows::*state, const char* form);

  // What a window shows besides its bound controls; only called while it is visible.
  virtual void ShowRecord() {}

  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

  // A button or box bound to a control of the form; its object name is the control's.
  template <typename Button>
  Button* Add(const char* control, const QString& caption, const QString& accessibleName = {}) {
    auto* button = new Button(caption);
    button->setObjectName(control);
    button->setAccessibleName(accessibleName.isEmpty() ? caption : accessibleName);
    binder.Bind(control, button);
    return button;
  }

  bool escapeCloses = true;
  QtHost& host;
  Machine& m;
  ControlBinder binder;

 private:
  WindowState Windows::*which;
};

}  // namespace quoll
