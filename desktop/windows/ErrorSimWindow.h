// ErrorSim: the window of the error simulation.
#pragma once

#include "desktop/kit/FormWindow.h"

class QGroupBox;

namespace quoll {

class ErrorSimWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit ErrorSimWindow(FormKit& kitOfWindow);

 private:
  QGroupBox* VideoFrame();
  QGroupBox* SystemFrame();
};

}  // namespace quoll
