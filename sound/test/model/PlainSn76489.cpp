#include "sound/test/model/PlainSn76489.h"

#include <cmath>

namespace quoll {

void PlainSn76489::Write(int value) {
  const int v = value & 0xFF;
  if (v < 0x80) {
    word[3 * latch] = v & 63;
    return;
  }
  const int channel = v >> 5 & 3;
  if (channel < 3) {
    word[3 * channel + ((v & 0x10) == 0 ? 1 : 2)] = v & 15;
    latch = static_cast<uint8_t>(channel);
    return;
  }
  switch (v & 0xF0) {
    case 0xF0: word[11] = (word[11] & 0xFF00) | (v & 15); break;
    case 0xE0:
      word[9] = v & 3;
      word[11] = (word[11] & 0x00FF) | (v & 4) << 8;
      break;
    default: break;
  }
}

void PlainSn76489::Reset() {
  word[2] = 15;
  word[5] = 15;
  word[8] = 15;
  word[11] = (word[11] & 0xFF00) | 15;
  silent = 1;
}

void PlainSn76489::Render(Random& machine, uint64_t seed) {
  const int noiseAttenuation = word[11] & 0xFF;
  const int feedback = word[11] >> 8 & 0xFF;

  const int sum = (word[2] & 0xFF) + (word[5] & 0xFF) + (word[8] & 0xFF) + noiseAttenuation;
  if ((sum & 0xFF) == 60) {
    silent = 1;
    for (int i = 0; i < 441; ++i) out[i] = 0;
    return;
  }
  silent = 0;

  for (int c = 0; c < 3; ++c) {
    int period = word[3 * c] * 16 + word[3 * c + 1];
    if (period == 0) period = 1;
    int f = static_cast<int>(3579545.0 / period / 32.0);
    if (f > 11000) f = 11000;
    const double step = f / 11025.0;
    const int amplitude = (15 - (word[3 * c + 2] & 0xFF)) * 20;
    for (int i = 0; i < 441; ++i) {
      phase[c] = static_cast<float>(static_cast<double>(phase[c]) + step);
      if (phase[c] >= 1.0F) {
        phase[c] = static_cast<float>(static_cast<double>(phase[c]) - 1.0);
        toggle[c] = 1 - toggle[c];
      }
      voices[i][c] = static_cast<int16_t>(toggle[c] == 1 ? amplitude : -amplitude);
    }
  }

  if (feedback == 4 && reseedCount == 10) RandomSeed(own, seed);
  if (reseedCount == 10) {
    reseedCount = 1;
  } else {
    ++reseedCount;
  }

  int period = 0;
  if (word[9] == 0) period = 20;
  if (word[9] == 1) period = 40;
  if (word[9] == 2) period = 80;
  if (word[9] == 3) period = word[6] * 64 + word[7];
  if (period == 0) period = 1;
  int f = static_cast<int>(3579545.0 / period / 32.0);
  if (f > 11000) f = 11000;
  const double step = f / 11025.0;
  const int amplitude = (15 - noiseAttenuation) * 20;
  for (int i = 0; i < 441; ++i) {
    phase[3] = static_cast<float>(static_cast<double>(phase[3]) + step);
    if (phase[3] >= 1.0F) {
      phase[3] = static_cast<float>(static_cast<double>(phase[3]) - 1.0);
      toggle[3] = static_cast<int32_t>(std::nearbyint(RandomNext(feedback == 4 ? own : machine)));
    }
    voices[i][3] = static_cast<int16_t>(toggle[3] == 1 ? amplitude : -amplitude);
  }

  for (int i = 0; i < 441; ++i) {
    out[i] = static_cast<int16_t>(voices[i][0] + voices[i][1] + voices[i][2] + voices[i][3]);
  }
}

}  // namespace quoll
