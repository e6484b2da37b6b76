// FSN76489: the window of the SN76489.
#pragma once

#include "desktop/kit/FormWindow.h"

namespace quoll {

class SnWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit SnWindow(FormKit& kitOfWindow);

 private:
  QWidget* Head(int channel);
  QWidget* ByHand();
};

}  // namespace quoll
