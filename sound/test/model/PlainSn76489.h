// The SN76489 told step by step and slowly, for comparison with the machine's own.
#pragma once

#include <array>
#include <cstdint>

#include "core/Random.h"

namespace quoll {

struct PlainSn76489 {
  static constexpr uint64_t kNoiseSeed = 0x5EED;  // any one seed; the same at every restart

  // Three words for each tone: period high, period low, attenuation. Then the noise rate, one without use,
  // and the noise attenuation with its feedback flag in the second byte.
  std::array<int32_t, 12> word{};
  uint8_t latch = 0;
  uint8_t silent = 0;
  uint8_t reseedCount = 10;
  std::array<float, 4> phase{};
  std::array<int32_t, 4> toggle{};
  int16_t voices[441][4] = {};
  int16_t out[441] = {};
  Random own{kNoiseSeed};  // the sequence that the restart begins anew; white noise draws from it

  void Write(int value);
  void Reset();
  // Periodic noise draws from the machine's record. Seeds of `own` may be set from outside to those of
  // another.
  void Render(Random& machine, uint64_t seed = kNoiseSeed);
};

}  // namespace quoll
