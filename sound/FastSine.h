// Sines of four numbers at once, a known and small distance from the true ones. Whoever needs the exact
// samples of std::sin takes these first, looks whether the distance could matter, and asks std::sin where it
// could.
#pragma once

#include <bit>

#include "sound/Lanes.h"

namespace quoll {

// Greatest distance of FastSine from the sine. The polynomial's own is 3.4E-9; the rest are the roundings.
inline constexpr double kFastSineError = 4.0E-7;

// Sine of an angle in turns, -64 to 64.
inline Quad FastSine(Quad turns) {
  // In the numbers from 2^22 to 2^23 the last bit counts halves: half turns come off, each turning the sign.
  constexpr float kHalfRounder = 0x1.8p22F;
  const Quad shifted = turns + kHalfRounder;
  const Quad x = turns - (shifted - kHalfRounder);  // -0.25 to 0.25, exact
  const QuadBits sign = BitsOf(shifted) << 31;
  // The odd polynomial of degree 9 whose greatest error is the smallest, found by the exchange method of
  // Remez.
  const Quad q = x * x;
  Quad sum = q * 39.53670613741095F - 76.54978232493826F;
  sum = sum * q + 81.60100407599933F;
  sum = sum * q - 41.34165503149175F;
  sum = sum * q + 6.283185160089989F;
  return std::bit_cast<Quad>(BitsOf(sum * x) ^ sign);
}

}  // namespace quoll
