// The machine's characters beyond ASCII, 0x7F to 0x9F: accented letters and pieces of frames.
#pragma once

#include <cstdint>

namespace quoll {

inline constexpr uint8_t kFirstNational = 0x7F, kLastNational = 0x9F;

// The character's place in code page 852, which printers and monitors use; a full stop for one above 0x9F.
// Not all are the letters that the machine draws: wanted, printed listings are compared by these codes.
uint8_t NationalCode(uint8_t character);

}  // namespace quoll
