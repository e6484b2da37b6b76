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

// Port 0x5A: the cards in slots 0 and 1 name themselves, two bits a slot; those in slots 2 and 3 can't.
int32_t CardIds(const Machine& m);

// The tape's next sample as a level, 0 or 1. It is heard, too.
int32_t ReadTape(Machine& m);

// Ports whose access can bring an event nearer, so that the run loop has to look at its clocks anew:
// interrupts acknowledged (7) or flagged (0x58 to 0x5F, of which 0x5B and 0x5F also reload the tone counter),
// and CRTC registers (0x71, 0x73, 0x75, 0x77), which place the cursor interrupt.
constexpr bool MovesEvents(int32_t port) {
  return port == 0x07 || (port & 0xF8) == 0x58 || (port & 0xF9) == 0x71;
}

// Bits of the status byte in PortShadow[0x59]; the low five are interrupt flags, active low.
inline constexpr int kStatusPort = 0x59;
inline constexpr uint8_t kIrqFlags = 0x1F;
inline constexpr uint8_t kCursorToneFlag = 0x10;

}  // namespace quoll
