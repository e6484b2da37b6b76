#include "display/MemoryFaults.h"

namespace quoll {

namespace {

// Puts a random state into the given bit: a number rounded to 0 sets it, one rounded to 1 clears it.
void bitr(Random& random, uint8_t& byte, uint8_t bit) {
  const bool roundsToZero = RandomNext(random) <= 0.5;
  byte = static_cast<uint8_t>(roundsToZero ? byte | bit : byte & ~bit);
}

}  // namespace

uint8_t FaultyByte(uint8_t byte, uint8_t mask, BitFault fault, Random& random) {
  if (fault == BitFault::Zero) return static_cast<uint8_t>(byte & ~mask);
  if (fault == BitFault::One) return byte | mask;
  for (uint32_t bit = 1; bit <= 0x80U; bit <<= 1U)
    if ((mask & bit) != 0) bitr(random, byte, static_cast<uint8_t>(bit));
  return byte;
}

}  // namespace quoll
