// ErrorSim: the window of the error simulation.
#pragma once

#include <QWidget>

#include "desktop/kit/ControlBinder.h"

class QGroupBox;

namespace quoll {

class ErrorSimWindow : public QWidget {
 public:
  ErrorSimWindow(QtHost& hostOfWindow, Machine& machineOfWindow);

  // Shows, raises or hides the window as the record wants it, and its boxes.
  void Pull();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QGroupBox* VideoFrame();
  QGroupBox* SystemFrame();
  template <typename Button>
  Button* Add(const char* control, const QString& caption, const QString& accessibleName, int index = 0);

  Machine& m;
  ControlBinder binder;
};

}  // namespace quoll
