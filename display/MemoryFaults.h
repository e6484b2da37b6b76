// Faulty memory chips: bytes as they come back from them.
#pragma once

#include <cstdint>

#include "core/Random.h"

namespace quoll {

enum class BitFault { Zero, One, Random };

// The byte as chips with this fault give it back; mask: the bits whose chips are faulty.
uint8_t FaultyByte(uint8_t byte, uint8_t mask, BitFault fault, Random& random);

}  // namespace quoll
