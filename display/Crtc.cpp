#include "display/Crtc.h"

namespace quoll {

namespace {

constexpr int32_t kWhole = -1;
constexpr int32_t kFirstReadable = 12;
constexpr int32_t kCursorOffAtReset = 0x20;

// What a port write leaves of the value, by register. The last is the selection, which a program reaches as
// register 18.
constexpr std::array<int32_t, 19> kWriteMasks{
    kWhole, kWhole, kWhole, kWhole,                            // R0 to R3
    0x7F,   0x1F,   0x7F,   0x7F,   0xF3, 0x1F,   0x7F, 0x1F,  // R4 to R11
    0x3F,   kWhole, 0x3F,   kWhole, 0x3F, kWhole,              // R12 to R17
    kWhole,
};

bool HasRegister(int32_t selected) { return selected >= 0 && selected <= kCrtcSelected; }

}  // namespace

void CrtcReset(Crtc& crtc) {
  crtc.CrtcRegs.fill(0);
  crtc.CrtcRegs[10] = kCursorOffAtReset;
}

void CrtcSelect(Crtc& crtc, int32_t& value) {
  value &= 0x1F;
  crtc.CrtcRegs[kCrtcSelected] = value;
}

void CrtcWrite(Crtc& crtc, int32_t& value) {
  const int32_t selected = crtc.CrtcRegs[kCrtcSelected];
  if (!HasRegister(selected)) return;
  value &= kWriteMasks[selected];
  crtc.CrtcRegs[selected] = value;
}

int32_t CrtcRead(const Crtc& crtc) {
  const int32_t selected = crtc.CrtcRegs[kCrtcSelected];
  if (selected < kFirstReadable) return 255;
  return HasRegister(selected) ? crtc.CrtcRegs[selected] : 0;
}

int32_t CursorPosition(const Crtc& crtc) {
  // Only four bits of R14 take part. R15 can be any number when a script has set it: the sum wraps.
  const uint32_t high = static_cast<uint32_t>(crtc.CrtcRegs[14]) & 0x0FU;
  return static_cast<int32_t>(high * 256U + 392U + static_cast<uint32_t>(crtc.CrtcRegs[15]));
}

}  // namespace quoll
