// Rounding of samples.
#pragma once

#include <bit>
#include <cstdint>

namespace quoll {

// The nearest whole number, ties to the even one, of a value that 32 bits can hold. In this sum the places
// after the point fall off the end of the double, and its low bits are the number: the library's own rounding
// is a call for each sample.
inline int32_t RoundEven(double value) {
  constexpr double kWholeNumbersOnly = 0x1.8p52;
  return static_cast<int32_t>(std::bit_cast<int64_t>(value + kWholeNumbersOnly));
}

}  // namespace quoll
