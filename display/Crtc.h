// The 6845 CRT controller, as far as this machine honours it: a row of numbers that the picture
// builder reads once a frame and the run loop consults for the cursor interrupt.
#pragma once

#include <array>
#include <cstdint>

namespace quoll {

struct Crtc {
  // Registers 0 to 17; [18] is the number of the selected register.
  std::array<int32_t, 19> CrtcRegs{};

  bool operator==(const Crtc&) const = default;
};

inline constexpr int32_t kCrtcSelected = 18;

// All zero but R10 = 32, which keeps the cursor interrupt off.
void CrtcReset(Crtc& crtc);

// Ports 0x70, 0x72, 0x74, 0x76: selects a register. Leaves the value masked with 0x1F in the caller's
// variable.
void CrtcSelect(Crtc& crtc, int32_t& value);

// Ports 0x71, 0x73, 0x75, 0x77: stores into the selected register. Leaves the value in the caller's
// variable masked to the register's width. Selected numbers of 19 to 31 have no register.
void CrtcWrite(Crtc& crtc, int32_t& value);

// Ports 0x71, 0x73, 0x75, 0x77: the selected register from 12 on (0 for 19 to 31), 255 below 12.
int32_t CrtcRead(const Crtc& crtc);

// The character position at which the cursor interrupt comes, counted from the frame's start:
// low four bits of R14, R15, and 0x188 more.
int32_t CursorPosition(const Crtc& crtc);

}  // namespace quoll
