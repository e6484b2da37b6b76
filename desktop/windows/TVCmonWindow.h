// TVCmon: the window of the hardware monitor.
#pragma once

#include "desktop/kit/FormWindow.h"

class QGroupBox;

namespace quoll {

class TVCmonWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit TVCmonWindow(FormKit& kitOfWindow);

 private:
  QGroupBox* SoundFrameBox();
};

}  // namespace quoll
