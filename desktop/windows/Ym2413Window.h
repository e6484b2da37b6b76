// FYM2413: the window of the YM2413.
#pragma once

#include "desktop/kit/FormWindow.h"

namespace quoll {

class Ym2413Window : public FormWindow {
  Q_OBJECT

 public:
  explicit Ym2413Window(FormKit& kitOfWindow);
};

}  // namespace quoll
