// Four numbers side by side, for the inner loops of the sound chips. The compiler's own vector types: each
// operation rounds exactly as it does on a single number.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace quoll {

using Quad = float __attribute__((vector_size(16)));
using QuadBits = int32_t __attribute__((vector_size(16)));
using Pair = double __attribute__((vector_size(16)));

constexpr Quad All(float value) { return Quad{value, value, value, value}; }

inline Quad LoadQuad(const float* from) {
  Quad values;
  std::memcpy(&values, from, sizeof values);
  return values;
}

inline void StoreQuad(Quad values, float* to) { std::memcpy(to, &values, sizeof values); }

inline QuadBits BitsOf(Quad values) { return std::bit_cast<QuadBits>(values); }

// The values where the mask is set, 0 elsewhere.
inline Quad Where(QuadBits mask, Quad values) { return std::bit_cast<Quad>(mask & BitsOf(values)); }

inline Quad SizeOf(Quad values) { return Where(QuadBits{} + 0x7FFFFFFF, values); }

inline bool Any(QuadBits mask) {
  const auto halves = std::bit_cast<std::array<uint64_t, 2>>(mask);
  return (halves[0] | halves[1]) != 0;
}

inline Pair LowHalf(Quad values) {
  return __builtin_convertvector(__builtin_shufflevector(values, values, 0, 1), Pair);
}
// The halves change places first: the compiler has one instruction for the low one only.
inline Pair HighHalf(Quad values) { return LowHalf(__builtin_shufflevector(values, values, 2, 3, 2, 3)); }

// Each rounded to a float.
inline Quad Narrowed(Pair low, Pair high) {
  using Half = float __attribute__((vector_size(8)));
  return __builtin_shufflevector(__builtin_convertvector(low, Half), __builtin_convertvector(high, Half), 0,
                                 1, 2, 3);
}

// Rows of four lanes at four times, into four lanes' values one after the other.
inline void StoreTurned(const std::array<Quad, 4>& rows, const std::array<float*, 4>& lanes, int place) {
  const Quad a = __builtin_shufflevector(rows[0], rows[1], 0, 4, 1, 5);
  const Quad b = __builtin_shufflevector(rows[2], rows[3], 0, 4, 1, 5);
  const Quad c = __builtin_shufflevector(rows[0], rows[1], 2, 6, 3, 7);
  const Quad d = __builtin_shufflevector(rows[2], rows[3], 2, 6, 3, 7);
  StoreQuad(__builtin_shufflevector(a, b, 0, 1, 4, 5), lanes[0] + place);
  StoreQuad(__builtin_shufflevector(a, b, 2, 3, 6, 7), lanes[1] + place);
  StoreQuad(__builtin_shufflevector(c, d, 0, 1, 4, 5), lanes[2] + place);
  StoreQuad(__builtin_shufflevector(c, d, 2, 3, 6, 7), lanes[3] + place);
}

// A number of at most 2^21 in size plus this is rounded to a whole number, ties to even.
inline constexpr float kWholeRounder = 0x1.8p23F;
inline Quad Rounded(Quad values) { return (values + kWholeRounder) - kWholeRounder; }

}  // namespace quoll
