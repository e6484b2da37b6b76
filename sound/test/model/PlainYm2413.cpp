#include "sound/test/model/PlainYm2413.h"

#include <cmath>

namespace quoll {
namespace {

struct Channel {
  float frequency, key, volume;
};

Channel Decode(const PlainYm2413& chip, int c) {
  const int control = chip.OPLL_Reg[0x20 + c];
  const int number = (control & 1) * 256 + chip.OPLL_Reg[0x10 + c];
  const int block = (control >> 1) & 7;
  Channel channel{};
  channel.frequency = static_cast<float>(number * std::pow(2.0, block) / 21.276595);
  channel.key = static_cast<float>((control >> 4) & 1);
  channel.volume = static_cast<float>(chip.OPLL_Reg[0x30 + c] & 15);
  return channel;
}

int16_t Round16(double value) { return static_cast<int16_t>(std::nearbyint(value)); }

}  // namespace

void PlainYm2413::Reset() {
  OPLL_Reg.fill(0);
  silent = 1;
}

void PlainYm2413::Write(int port, int value) {
  if (port % 2 == 0) {
    latch = static_cast<uint8_t>(value & 63);
  } else {
    OPLL_Reg[latch] = static_cast<uint8_t>(value);
  }
}

const FrameSamples& PlainYm2413::Render() {
  std::array<Channel, 9> channels{};
  float volumes = 0;
  for (int c = 0; c < 9; ++c) {
    channels[c] = Decode(*this, c);
    volumes = volumes + channels[c].volume;
  }
  if (volumes == 0) {
    silent = 1;
    Ym2413Out = FrameSamples{};
    return Ym2413Out;
  }
  silent = 0;

  const bool upperHalfOnly = (OPLL_Reg[3] & 0x10) != 0;
  for (int c = 0; c < 9; ++c) {
    double rate = channels[c].frequency;
    if (rate > 11000) rate = 11000;
    const double step = rate / 11025;
    for (int i = 0; i < kFrameSamples; ++i) {
      phase[c] = static_cast<float>(phase[c] + step);
      if (phase[c] >= 1.0F) phase[c] = phase[c] - 1.0F;
      int16_t v = Round16(std::sin(phase[c] * 6.28));
      v = Round16(static_cast<double>(v) * channels[c].volume * channels[c].key);
      if (upperHalfOnly && v < 0) v = 0;
      if (!enabled[c]) v = 0;
      work[i][c] = v;
    }
  }
  for (int i = 0; i < kFrameSamples; ++i) {
    int16_t sum = 0;
    for (int c = 0; c < 9; ++c) sum = static_cast<int16_t>(sum + work[i][c]);
    Ym2413Out[i] = sum;
  }
  return Ym2413Out;
}

}  // namespace quoll
