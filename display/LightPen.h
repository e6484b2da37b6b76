// The light pen: the mouse over the picture, told to the CRTC once a frame.
#pragma once

#include <cstdint>

#include "display/Crtc.h"

namespace quoll {

struct LightPen {
  int32_t LpenHigh = 0;  // address of the pen / 256
  int32_t LpenLow = 0;   // its low byte

  bool operator==(const LightPen&) const = default;
};

// A mouse move over the picture: x, y in pixels of the picture box.
void picd_MouseMove(LightPen& pen, int32_t x, int32_t y);

// Frame end: R16 and R17 take the pen's address.
void LPENRefresh(const LightPen& pen, Crtc& crtc);

}  // namespace quoll
