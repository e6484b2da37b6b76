#include "sound/test/model/PlainYm3812.h"

#include <algorithm>
#include <cmath>

namespace quoll {
namespace {

constexpr double kMultipliers[16] = {0.5, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 10, 11, 11, 12, 12};
constexpr double kFeedbacks[8] = {0, 1 / 16.0, 1 / 8.0, 1 / 4.0, 1 / 2.0, 1, 2, 4};
constexpr int kModulatorOffset[9] = {0, 1, 2, 8, 9, 10, 16, 17, 18};
constexpr int kCarrierOffset[9] = {3, 4, 5, 11, 12, 13, 19, 20, 21};

constexpr double kTurn = 6.28318530718;
constexpr double kFeedbackTurn = 6.283185;

struct Channel {
  uint8_t keyOn;
  float frequency;
};

struct Operator {
  int multiplier;
  int level;
  int wave;
};

Channel DecodeChannel(const PlainYm3812& chip, int c) {
  const int low = chip.OPL_Reg[0xA0 + c];
  const int high = chip.OPL_Reg[0xB0 + c];
  const int number = low + (high & 3) * 256;
  const int block = (high >> 2) & 7;
  Channel channel{};
  channel.keyOn = static_cast<uint8_t>(high & 0x20);
  channel.frequency = static_cast<float>(number * std::pow(2.0, block) / 21.23);
  return channel;
}

Operator DecodeOperator(const PlainYm3812& chip, int offset) {
  Operator op{};
  op.multiplier = chip.OPL_Reg[0x20 + offset] & 15;
  op.level = chip.OPL_Reg[0x40 + offset] & 63;
  op.wave = chip.OPL_Reg[0xE0 + offset] & 3;
  if ((chip.OPL_Reg[1] & 0x20) == 0) op.wave = 0;
  return op;
}

double StepOf(const Channel& channel, const Operator& op) {
  double rate = channel.frequency / 2.0 * kMultipliers[op.multiplier];
  if (rate > 11000) rate = 11000;
  return rate / 11025;
}

double LevelOf(const Operator& op) { return 1.0 / (op.level + 1); }

void RenderModulator(PlainYm3812& chip, int c, const Channel& channel, const Operator& op) {
  const double feedback = kFeedbacks[(chip.OPL_Reg[0xC0 + c] >> 1) & 7];
  const double step = StepOf(channel, op);
  for (int i = 0; i < kFrameSamples; ++i) {
    float& phase = chip.modulatorPhase[c];
    phase = static_cast<float>(phase + step + std::sin(feedback * kFeedbackTurn));
    while (phase >= 1.0F) phase = phase - 1.0F;
    float value = 0;
    if (op.wave == 0) value = phase;
    if (op.wave == 1) value = phase <= 0.5F ? phase : 0;
    if (op.wave == 2 || op.wave == 3) {
      if (phase >= 0.5F) phase = phase - 0.5F;
      if (op.wave == 2) value = std::fabs(phase);
      if (op.wave == 3) value = phase <= 0.25F ? phase : 0;
    }
    chip.modulator[i][c] = value;
  }
}

void RenderCarrier(PlainYm3812& chip, int c, const Channel& channel, const Operator& modulator,
                   const Operator& op) {
  const double step = StepOf(channel, op);
  for (int i = 0; i < kFrameSamples; ++i) {
    float& phase = chip.carrierPhase[c];
    phase = static_cast<float>(phase + step);
    if (phase >= 1.0F) phase = phase - 1.0F;
    double t = LevelOf(modulator) * std::sin(chip.modulator[i][c] * kTurn) + phase;
    double y = std::sin(t * kTurn);
    if (op.wave == 1 && y > 0) y = 0;
    if (op.wave == 2 || op.wave == 3) y = std::fabs(y);
    if (op.wave == 3) {
      if (t >= 1) t = t - 1;
      if (t > 0.25 && t < 0.5) y = 0;
      if (t > 0.75 && t < 1) y = 0;
    }
    chip.carrier[i][c] = static_cast<float>(LevelOf(op) * y);
  }
}

}  // namespace

void PlainYm3812::Reset() {
  OPL_Reg.fill(0);
  silent = 1;
}

void PlainYm3812::Write(int port, int value) {
  if (port % 2 == 0) {
    latch = static_cast<uint8_t>(value);
  } else {
    OPL_Reg[latch] = static_cast<uint8_t>(value);
  }
}

const FrameSamples& PlainYm3812::Render() {
  std::array<Channel, 9> channels{};
  for (int c = 0; c < 9; ++c) channels[c] = DecodeChannel(*this, c);

  // The sum wraps at a byte: eight keys at once are silence.
  uint8_t keys = 0;
  for (int c = 0; c < 9; ++c) keys = static_cast<uint8_t>(keys + channels[c].keyOn);
  if (keys == 0) {
    silent = 1;
    Ym3812Out = FrameSamples{};
    return Ym3812Out;
  }
  silent = 0;

  modulator = {};
  carrier = {};
  for (int c = 0; c < 9; ++c) {
    if (channels[c].keyOn == 0) continue;
    const Operator mod = DecodeOperator(*this, kModulatorOffset[c]);
    const Operator car = DecodeOperator(*this, kCarrierOffset[c]);
    RenderModulator(*this, c, channels[c], mod);
    RenderCarrier(*this, c, channels[c], mod, car);
  }

  for (int i = 0; i < kFrameSamples; ++i) {
    for (int c = 0; c < 9; ++c) {
      if (enabled[c]) continue;
      modulator[i][c] = 0;
      carrier[i][c] = 0;
    }
    double sum = 0;
    if ((OPL_Reg[0xC9] & 1) != 0)
      for (int c = 0; c < 9; ++c) sum = sum + modulator[i][c];
    for (int c = 0; c < 9; ++c) sum = sum + carrier[i][c];
    const double level = std::clamp(sum * 20, -126.0, 126.0);
    Ym3812Out[i] = static_cast<int16_t>(std::nearbyint(level));
  }
  return Ym3812Out;
}

}  // namespace quoll
