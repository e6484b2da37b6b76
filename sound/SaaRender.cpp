// The SAA1099's frame, stage by stage: noise, tones, envelopes, levels, sums.
#include <algorithm>
#include <bit>
#include <cmath>

#include "sound/Padded.h"
#include "sound/Phase.h"
#include "sound/Round.h"
#include "sound/Saa1099.h"

namespace quoll {
namespace {

constexpr uint8_t kHigh = 255;            // a square wave's upper level
constexpr double kToneDivisor = 11000.0;  // the tones run a quarter of a percent sharp
constexpr int kGroup = 3;                 // the channels from here on have the other noise and envelope
constexpr int kLoudest = 120;             // of a side
constexpr std::array<double, 3> kNoiseRates{10500.0, 6500.0, 4000.0};  // Hz of the clock settings 0 to 2
constexpr int kNoiseFromTone = 3;                                      // the setting that takes a tone's rate

// Two oscillators in the lanes of a vector, which costs no more than one and knows no branches to guess
// wrong.
using Pair = double __attribute__((vector_size(16)));
using Mask = int64_t __attribute__((vector_size(16)));

using Column = Saa1099::Column;

uint8_t RoundByte(double value) { return static_cast<uint8_t>(RoundEven(value)); }

void ForcePatches(Saa1099& saa, const SaaControls& controls) {
  if (controls.patch2) saa.SAA_Enable[2].tone = 1;
  if (controls.patch5) saa.SAA_Enable[5].tone = 1;
}

// Steps of the two noises. Noise 1 looks at the clock of noise 0 for its third case; where only its own
// setting asks for a tone, it gets noise 0's step and divides that once more.
Pair NoiseSteps(const Saa1099& saa) {
  const int clock0 = saa.SAA_Noise[0] & 3, clock1 = saa.SAA_Noise[1] & 3;
  const bool fromTone = clock0 == kNoiseFromTone;
  const double rate0 = fromTone ? SaaHertz(saa, 0) * 2.0 : kNoiseRates[clock0];
  const double step0 = rate0 / kRateDivisor;
  const double own1 = clock1 == kNoiseFromTone ? step0 : kNoiseRates[clock1];
  const double rate1 = fromTone ? SaaHertz(saa, 3) * 2.0 : own1;
  return Pair{step0, rate1 / kRateDivisor};
}

struct OscillatorPair {
  Pair phase, step;
};

// One sample: all bits set in the lanes whose phase turns. A phase may run ahead of its one turn a sample.
Mask Turn(OscillatorPair& pair) {
  const Pair one{1.0, 1.0};
  const Mask turns = pair.phase >= one;
  pair.phase -= std::bit_cast<Pair>(turns & std::bit_cast<Mask>(one));
  pair.phase += pair.step;
  return turns;
}

OscillatorPair TonePair(const Saa1099& saa, int channel) {
  return {.phase = Pair{saa.SAA_Tone.phase[channel], saa.SAA_Tone.phase[channel + 1]},
          .step = Pair{SaaHertz(saa, channel) / kToneDivisor, SaaHertz(saa, channel + 1) / kToneDivisor}};
}

// The levels at a sample: bits 0 to 5 for the tones, 6 and 7 for the noises' toggles.
constexpr int kNoiseToggle = 6;

// Here and below __restrict says that the column written is none of those read: so vectors can be made.
void ToneWave(const Column& levels, int channel, Column& __restrict wave) {
  const auto bit = static_cast<uint8_t>(1 << channel);
  for (int i = 0; i < kPaddedSamples; ++i) wave[i] = (levels[i] & bit) != 0 ? kHigh : 0;
}

// A fresh value at the frame's first sample and at each flip of the toggle.
void RenderNoise(const Column& levels, int noise, Random& random, Column& out) {
  Random source = random;
  int last = ~levels[0];
  uint8_t value = 0;
  for (int i = 0; i < kFrameSamples; ++i) {
    const int flipped = levels[i] ^ last;
    if (((flipped >> (kNoiseToggle + noise)) & 1) != 0) value = RoundByte(RandomNext(source) * kHigh);
    last = levels[i];
    out[i] = value;
  }
  random = source;
}

bool Repeats(int mode) { return mode == 3 || mode == 5 || mode == 7; }
bool IsSingleShot(int mode) { return mode == 2 || mode == 4 || mode == 6; }

// Envelope 0 follows channel 1. Envelope 1 follows channel 4, but in two of its single shots it takes the
// channel and the speed of envelope 0.
double EnvelopeRateStep(const Saa1099& saa, int envelope) {
  const int mode = saa.SAA_Env[envelope].mode;
  const bool first = envelope == 0 || mode == 2 || mode == 6;
  const double rate = SaaHertz(saa, first ? 1 : 4) / 4.0;
  const bool threeBit = saa.SAA_Env[first ? 0 : 1].threeBit != 0;
  return (threeBit ? rate : rate / 2.0) / kRateDivisor;
}

// A repeating envelope while its frame is rendered. One of another shape turns idly beside it.
struct Repeater {
  float phase;
  bool high;
  double step;
};

Repeater RepeaterOf(const Saa1099& saa, int envelope) {
  if (!Repeats(saa.SAA_Env[envelope].mode)) return {};
  return {.phase = saa.SAA_EnvState.phase[envelope],
          .high = saa.SAA_EnvState.level[envelope] != 0,
          .step = EnvelopeRateStep(saa, envelope)};
}

float NextPhase(Repeater& r) {
  if (r.phase >= 1.0F) {
    r.phase -= 1.0F;
    r.high = !r.high;
  }
  const float phase = r.phase;
  r.phase = static_cast<float>(r.phase + r.step);
  return phase;
}

void Keep(Saa1099& saa, int envelope, const Repeater& r) {
  if (!Repeats(saa.SAA_Env[envelope].mode)) return;
  saa.SAA_EnvState.phase[envelope] = r.phase;
  saa.SAA_EnvState.level[envelope] = r.high ? kHigh : 0;
}

using EnvelopePhases = std::array<Padded<float>, 2>;

// All oscillators go side by side: each one's phase is a long chain of sums that waits for nothing else. The
// noises begin anew in every frame.
template <bool kRepeaters>
void RunPhases(Saa1099& saa, Column& levels, EnvelopePhases& envelope) {
  OscillatorPair ab = TonePair(saa, 0), cd = TonePair(saa, 2), ef = TonePair(saa, 4);
  OscillatorPair noise{.phase = Pair{}, .step = NoiseSteps(saa)};
  Repeater r0 = RepeaterOf(saa, 0), r1 = RepeaterOf(saa, 1);
  int64_t level = 0;
  for (int c = 0; c < kSaaChannels; ++c) level |= saa.SAA_Tone.level[c] != 0 ? 1 << c : 0;
  for (int i = 0; i < kFrameSamples; ++i) {
    const Mask turns = (Turn(ab) & Mask{1, 2}) | (Turn(cd) & Mask{4, 8}) | (Turn(ef) & Mask{16, 32}) |
                       (Turn(noise) & Mask{64, 128});
    level ^= turns[0] | turns[1];
    levels[i] = static_cast<uint8_t>(level);
    if constexpr (kRepeaters) {
      envelope[0][i] = NextPhase(r0);
      envelope[1][i] = NextPhase(r1);
    }
  }
  saa.SAA_Tone.phase = {ab.phase[0], ab.phase[1], cd.phase[0], cd.phase[1], ef.phase[0], ef.phase[1]};
  for (int c = 0; c < kSaaChannels; ++c) saa.SAA_Tone.level[c] = ((level >> c) & 1) != 0 ? kHigh : 0;
  Keep(saa, 0, r0);
  Keep(saa, 1, r1);
}

// One turn from the frame's first sample on, then nothing: these shapes sound 50 times a second.
void RenderSingleShot(Column& out, int mode, double step) {
  double p = 0;
  out.fill(0);
  for (uint8_t& byte : out) {
    if (p >= 1.0) return;
    if (mode == 4) {
      byte = RoundByte(p <= 0.5 ? 500.0 * p : 500.0 * (1.0 - p));
    } else {
      byte = RoundByte(250.0 * (mode == 2 ? 1.0 - p : p));
    }
    p += step;
  }
}

template <class Shape>
void RenderShape(Column& out, const Padded<float>& phase, Shape shape) {
  for (int i = 0; i < kPaddedSamples; ++i) out[i] = RoundByte(shape(static_cast<double>(phase[i])));
}

void RenderEnvelope(const Saa1099& saa, int envelope, const Padded<float>& phase, Column& out) {
  const int mode = saa.SAA_Env[envelope].mode;
  if (IsSingleShot(mode)) return RenderSingleShot(out, mode, EnvelopeRateStep(saa, envelope));
  switch (mode) {
    case 3: return RenderShape(out, phase, [](double p) { return (1.0 - p) * 250.0; });
    case 5: return RenderShape(out, phase, [](double p) { return std::abs(p - 0.5) * 500.0; });
    case 7: return RenderShape(out, phase, [](double p) { return p * 250.0; });
    default: out.fill(mode == 1 ? 250 : 0);
  }
}

// A byte divided by 255 or 31, to the nearest: odd divisors know no ties.
constexpr uint8_t Part255(uint32_t product) { return static_cast<uint8_t>((product + 127) / 255); }
constexpr uint8_t Part31(uint32_t product) { return static_cast<uint8_t>((product + 15) / 31); }

// The channel with its level: its tone, its noise or both. At most 251.
void ApplyLevel(const Saa1099::Enable& enable, double divisor, uint32_t level, const Column& wave,
                const Column& noise, Column& __restrict out) {
  const auto high = static_cast<uint8_t>(enable.tone != 0 ? RoundEven(kHigh / divisor * level) : 0);
  if (enable.noise == 0) {
    for (int i = 0; i < kPaddedSamples; ++i) out[i] = wave[i] & high;
  } else {
    for (int i = 0; i < kPaddedSamples; ++i)
      out[i] = static_cast<uint8_t>((wave[i] & high) + Part31(static_cast<uint16_t>(noise[i] * level)));
  }
}

void Scale(Column& __restrict side, const Column& gain) {
  for (int i = 0; i < kPaddedSamples; ++i) side[i] = Part255(static_cast<uint16_t>(gain[i] * side[i]));
}

// Channels 2 and 5 have the envelopes 0 and 1.
void ApplyEnvelope(const Saa1099::Envelope& envelope, int number, const Column& shape, Column& left,
                   Column& right) {
  if (envelope.enable == 0) return;
  const bool invert = envelope.invertRight != 0;
  Column other = shape;
  if (invert)
    for (uint8_t& gain : other) gain = static_cast<uint8_t>(~gain);
  Scale(right, other);
  // Envelope 1 all but loses its left side unless the right one is inverted: 0 or 1 is left of it.
  if (number == 1 && !invert) other.fill(1);
  Scale(left, invert ? shape : other);
}

// An eighth of the channels' sum, ties to the even one, limited.
void SumSide(const std::array<Column, kSaaChannels>& side, FrameSamples& out) {
  Padded<int16_t> sums{};
  for (const Column& channel : side)
    for (int i = 0; i < kPaddedSamples; ++i) sums[i] = static_cast<int16_t>(sums[i] + channel[i]);
  for (int16_t& sum : sums) {
    const int odd = (sum >> 3) & 1;
    sum = static_cast<int16_t>(std::min((sum + 3 + odd) >> 3, kLoudest));
  }
  CopyFrame(sums, out);
}

void RenderStages(Saa1099& saa, const SaaControls& controls, Random& random) {
  ForcePatches(saa, controls);
  Column levels{};
  EnvelopePhases phases{};
  if (Repeats(saa.SAA_Env[0].mode) || Repeats(saa.SAA_Env[1].mode)) {
    RunPhases<true>(saa, levels, phases);
  } else {
    RunPhases<false>(saa, levels, phases);
  }
  for (int c = 0; c < kSaaChannels; ++c) ToneWave(levels, c, saa.SaaWave[c]);
  RenderNoise(levels, 0, random, saa.SaaNoise0);
  RenderNoise(levels, 1, random, saa.SaaNoise1);
  RenderEnvelope(saa, 0, phases[0], saa.SaaEnv0);
  RenderEnvelope(saa, 1, phases[1], saa.SaaEnv1);
  for (int c = 0; c < kSaaChannels; ++c) {
    const Column& noise = c < kGroup ? saa.SaaNoise0 : saa.SaaNoise1;
    const double divisor = c < kGroup ? 31.0 : 30.0;
    const Saa1099::Enable& enable = saa.SAA_Enable[c];
    ApplyLevel(enable, divisor, saa.SAA_Amp[c] & 15, saa.SaaWave[c], noise, saa.SaaLeft[c]);
    ApplyLevel(enable, divisor, saa.SAA_Amp[c + kSaaChannels] & 15, saa.SaaWave[c], noise, saa.SaaRight[c]);
  }
  ApplyEnvelope(saa.SAA_Env[0], 0, saa.SaaEnv0, saa.SaaLeft[2], saa.SaaRight[2]);
  ApplyEnvelope(saa.SAA_Env[1], 1, saa.SaaEnv1, saa.SaaLeft[5], saa.SaaRight[5]);
}

// The stages of a frame in which nothing sounds though there are levels.
void ClearStages(Saa1099& saa) {
  saa.SaaWave = saa.SaaLeft = saa.SaaRight = {};
  saa.SaaNoise0 = saa.SaaNoise1 = saa.SaaEnv0 = saa.SaaEnv1 = {};
}

}  // namespace

void SaaRender(Saa1099& saa, const SaaControls& controls, Random& random) {
  saa.wasReset = false;
  uint8_t levels = 0;
  for (const uint8_t level : saa.SAA_Amp) levels = static_cast<uint8_t>(levels + level);
  saa.silent = levels == 0 ? 1 : 0;
  if (saa.silent != 0) {
    saa.SaaOutL.fill(0);
    saa.SaaOutR.fill(0);
    return;
  }
  if (saa.resetRequest != 0) {
    SaaReset(saa);
    saa.resetRequest = 0;
    saa.wasReset = true;
    ClearStages(saa);
  } else if (saa.soundEnable == 0) {
    ClearStages(saa);
  } else {
    RenderStages(saa, controls, random);
  }
  SumSide(saa.SaaLeft, saa.SaaOutL);
  SumSide(saa.SaaRight, saa.SaaOutR);
}

}  // namespace quoll
