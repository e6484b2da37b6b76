// Frequencies of the SAA1099's 8 x 256 tone settings.
#pragma once

#include <array>
#include <cstdint>

namespace quoll {

// Hz of a setting with 13 fractional bits: 15625 x 2^octave / (511 - frequency), octave 0 to 7, frequency 0
// to 255. Up to 64000000.
constexpr int32_t SaatEntry(int octave, int frequency) {
  const int64_t numerator = int64_t{8192 * 15625} << octave;
  const int64_t divisor = 511 - frequency;
  return static_cast<int32_t>((2 * numerator + divisor) / (2 * divisor));
}

// The settings in whole Hz, ties to the even one; setting octave x 256 + frequency.
inline constexpr std::array<int32_t, 2048> SAAT = [] {
  std::array<int32_t, 2048> table{};
  for (int setting = 0; setting < 2048; ++setting) {
    const int32_t entry = SaatEntry(setting / 256, setting % 256);
    const int32_t whole = entry / 8192;
    table[setting] = (entry + 4095 + whole % 2) / 8192;
  }
  return table;
}();

}  // namespace quoll
