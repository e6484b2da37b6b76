// T8910: the window of the AY-3-8910.
#pragma once

#include "desktop/kit/FormWindow.h"

namespace quoll {

class AyWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit AyWindow(FormKit& kitOfWindow);

 private:
  QWidget* Registers();
};

}  // namespace quoll
