// Phases of many oscillators side by side: each must wait for its own last phase, so that all together take
// no longer than one.
#pragma once

#include <array>

#include "sound/Lanes.h"
#include "sound/Tone.h"

namespace quoll {

// One source's frame, filled up to whole quads.
using PaddedFrame = std::array<float, kFrameSamples + 3>;

// Four oscillators. A step is added in double, and the phase kept as a float: its rounding is part of the
// sound.
struct PhaseQuad {
  Quad phase{};                    // turns, below 1
  std::array<Pair, 2> step{};      // turns a sample, 0 to below 1
  std::array<Pair, 2> feedback{};  // added after the step, -1 to 1
  Quad half = All(2.0F);           // 0.5 is taken off from here on; never reached at 2
  std::array<float*, 4> out{};     // where each oscillator's phases go: a PaddedFrame
};

// The phase less one, or a half, where it has reached the limit.
inline Quad TakenOff(Quad phase, Quad limit, float taken) {
  return phase - Where(phase >= limit, All(taken));
}

template <bool feedback, bool halves>
inline void NextPhases(PhaseQuad& q) {
  Pair low = LowHalf(q.phase) + q.step[0];
  Pair high = HighHalf(q.phase) + q.step[1];
  if constexpr (feedback) {
    low += q.feedback[0];
    high += q.feedback[1];
  }
  q.phase = TakenOff(Narrowed(low, high), All(1.0F), 1.0F);
  // Phase, step and feedback are below 1 each: two reductions are always enough.
  if constexpr (feedback) q.phase = TakenOff(q.phase, All(1.0F), 1.0F);
  if constexpr (halves) q.phase = TakenOff(q.phase, q.half, 0.5F);
}

// The whole frame of the first `count` quads.
template <bool feedback, bool halves, size_t size>
inline void AdvancePhases(std::array<PhaseQuad, size>& quads, int count) {
  constexpr int kWhole = kFrameSamples / 4 * 4;
  static_assert(kFrameSamples == kWhole + 1);
  for (int i = 0; i < kWhole; i += 4) {
    for (int k = 0; k < count; ++k) {
      PhaseQuad& q = quads[k];
      std::array<Quad, 4> rows;
      for (Quad& row : rows) {
        NextPhases<feedback, halves>(q);
        row = q.phase;
      }
      StoreTurned(rows, q.out, i);
    }
  }
  for (int k = 0; k < count; ++k) {
    PhaseQuad& q = quads[k];
    NextPhases<feedback, halves>(q);
    for (int lane = 0; lane < 4; ++lane) {
      // The places after the frame take part in the sums of whole quads, unread.
      StoreQuad(Quad{q.phase[lane], 0.0F, 0.0F, 0.0F}, q.out[lane] + kWhole);
    }
  }
}

// A state that no run leads to, in a record filled from outside, starts again.
inline float ValidPhase(float phase, float lowest) { return phase >= lowest && phase < 1.0F ? phase : 0.0F; }

}  // namespace quoll
