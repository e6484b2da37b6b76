// The machine's random source: seeded by the host, so that a run can be repeated.
#pragma once

#include <cstdint>

namespace quoll {

struct Random {
  uint64_t state = 0x9E3779B97F4A7C15U;  // any value; the sequence follows from it

  bool operator==(const Random&) const = default;
};

// Starts the sequence that belongs to this seed.
inline void RandomSeed(Random& random, uint64_t seed) { random.state = seed; }

// Next number, uniform in [0, 1). The generator is SplitMix64, taking the upper 53 bits.
inline double RandomNext(Random& random) {
  random.state += 0x9E3779B97F4A7C15U;
  uint64_t z = random.state;
  z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
  z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
  z ^= z >> 31U;
  return static_cast<double>(z >> 11U) * 0x1.0p-53;
}

}  // namespace quoll
