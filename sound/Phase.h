// The turn counter of a square wave oscillator.
#pragma once

#include <algorithm>

namespace quoll {

// Highest rate that an oscillator of a chip runs at, and the divisor that makes a rate the step of a sample:
// a rate counts half waves, of which 22050 samples a second take 11025 steps for each of its hertz.
inline constexpr int kHighestRate = 11000;
inline constexpr double kRateDivisor = 11025.0;

// Adds the step of one sample, below 1, to a phase from 0 to below 1; true when it goes over and begins anew.
// The sum is made in double and kept in the phase's own type: that rounding is part of the sound.
template <class Real>
inline bool PhaseStep(Real& phase, double step) {
  const auto sum = static_cast<Real>(phase + step);
  const bool wrapped = sum >= Real{1};
  phase = wrapped ? sum - Real{1} : sum;
  return wrapped;
}

}  // namespace quoll
