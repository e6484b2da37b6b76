// The AY-3-8910 told step by step and slowly, for comparison with the machine's own.
#pragma once

#include <array>
#include <cstdint>

#include "core/Random.h"

namespace quoll {

struct PlainAy38910 {
  std::array<int32_t, 16> reg{};
  uint8_t latch = 0;
  std::array<float, 16> volume{};

  struct Tone {
    int32_t frequency = 0, period = 0;
    float level = 0.0F;
    int32_t mixer = 0;
  };
  std::array<Tone, 3> tone{};
  int32_t noiseFrequency = 0, noisePeriod = 0;
  float noiseValue = 0.0F;
  int32_t envelopeFrequency = 0, envelopePeriod = 0;
  float envelopeValue = 0.0F;
  int32_t envelopeShape = 0;

  std::array<float, 5> phase{};  // A, B, C, noise, envelope
  float rows[441][5] = {};       // the same columns
  uint8_t silent = 0;
  int32_t envelopeModes = 0;  // sum of the mode bits in the frame before
  int16_t out[441] = {};

  PlainAy38910();  // tables and reset
  void Write(int port, int value);
  void Reset();
  void Render(Random& random);

 private:
  void RenderEnvelope();
};

}  // namespace quoll
