// The SAA1099 told step by step and slowly, for comparison with the machine's own.
#pragma once

#include <array>
#include <cstdint>

#include "core/Random.h"

namespace quoll {

struct PlainSaa1099 {
  std::array<int32_t, 2048> hertz{};  // of octave * 256 + frequency byte

  uint8_t address = 0;
  std::array<uint8_t, 12> amp{};  // left levels of channels 0 to 5, then right ones
  struct Frequency {
    uint8_t number = 0, octave = 0;
  };
  std::array<Frequency, 6> freq{};
  struct Enable {
    uint8_t tone = 0, noise = 0;
  };
  std::array<Enable, 6> enable{};
  std::array<uint8_t, 2> noise{};
  struct Envelope {
    uint8_t enable = 0, invertRight = 0, external = 0, mode = 0, threeBit = 0;
  };
  std::array<Envelope, 2> env{};
  uint8_t soundEnable = 0, resetRequest = 0, silent = 0;

  std::array<double, 6> tonePhase{}, toneLevel{};
  std::array<float, 2> envPhase{}, envLevel{};

  uint8_t wave[441][6] = {}, left[441][6] = {}, right[441][6] = {};
  uint8_t noise0[441] = {}, noise1[441] = {}, env0[441] = {}, env1[441] = {};
  int16_t outL[441] = {}, outR[441] = {};

  PlainSaa1099();
  void Write(int port, int value);
  void Reset();
  // The patches are the window's two boxes that force a tone on: of channel 2 and of channel 5.
  void Render(Random& random, bool patch2, bool patch5);

 private:
  int32_t HertzOf(int channel) const { return hertz[freq[channel].octave * 256 + freq[channel].number]; }
  void RenderNoises(Random& random);
  void RenderTones();
  void RenderEnvelope(int which, uint8_t* values);
  void ApplyLevels();
  void ApplyEnvelopes();
};

}  // namespace quoll
