#include "display/LightPen.h"

namespace quoll {

void picd_MouseMove(LightPen& pen, int32_t x, int32_t y) {
  // 64 bytes to a row and 20 pixels to a pen row whatever the CRTC shows: wanted, programs are tuned to it.
  const auto row = static_cast<uint32_t>(y / 20);
  const auto address = static_cast<int32_t>(row * 64U + static_cast<uint32_t>(x / 8));
  pen.LpenHigh = address / 256;
  pen.LpenLow = address - pen.LpenHigh * 256;
}

void LPENRefresh(const LightPen& pen, Crtc& crtc) {
  crtc.CrtcRegs[16] = pen.LpenHigh;
  crtc.CrtcRegs[17] = pen.LpenLow;
}

}  // namespace quoll
