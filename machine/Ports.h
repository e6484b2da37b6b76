// The I/O bus.
#pragma once

#include <cstdint>

namespace quoll {

struct Machine;

// Writes a port, 0 to 255. The value stands in the caller's variable afterwards as the device left it:
// ports 0x70 to 0x77 mask it, and an OUT leaves the masked value in the processor's register.
// run.FrameClock must be that of the pass's start.
void PortOut(Machine& m, int32_t port, int32_t& value);

// Reads a port; 0 to 255. Ports without a function and numbers above 255 give 255.
int32_t PortIn(Machine& m, int32_t port);

// Bits of the status byte in PortShadow[0x59]; the low five are interrupt flags, active low.
inline constexpr int kStatusPort = 0x59;
inline constexpr uint8_t kIrqFlags = 0x1F;
inline constexpr uint8_t kCursorToneFlag = 0x10;

}  // namespace quoll
