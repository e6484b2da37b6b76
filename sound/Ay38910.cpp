#include "sound/Ay38910.h"

#include <algorithm>

#include "sound/Padded.h"
#include "sound/Phase.h"
#include "sound/Round.h"

namespace quoll {
namespace {

constexpr int kRegisters = 16, kTones = 3;
constexpr int kMixer = 7;
constexpr int kMixerBits = 0x3F;
constexpr int kEnvelopeMode = 16;  // in a level register
constexpr double kEnvelopePrescale = 16;
constexpr float kFullLevel = 16.0F;

using Column = Padded<float>;

int ToneBit(int tone) { return 1 << tone; }
int NoiseBit(int tone) { return 8 << tone; }

bool UsesEnvelope(const Ay38910& ay, int tone) { return (ay.AY_Reg[8 + tone] & kEnvelopeMode) != 0; }

// Rate in Hz for a period; 0 counts as 1, and the state goes on saying 0.
int32_t Rate(int32_t period, double prescale) {
  const double hertz = kAyClock / static_cast<double>(std::max(period, 1)) / prescale;
  return std::min(RoundEven(hertz), kHighestRate);
}

// Takes the registers over into the state. Several changes start the envelope anew.
void Decode(Ay38910& ay) {
  AyState& state = ay.AY_State;
  float& envelopePhase = ay.AY_Phase[kAyEnvelope];

  int32_t modes = 0;
  for (int tone = 0; tone < kTones; ++tone) modes += ay.AY_Reg[8 + tone] & kEnvelopeMode;
  if (modes > ay.envelopeModes) envelopePhase = 0;
  ay.envelopeModes = modes;

  for (const int coarse : {1, 3, 5}) ay.AY_Reg[coarse] &= 15;
  ay.AY_Reg[6] &= 31;

  for (int tone = 0; tone < kTones; ++tone) {
    AyState::Tone& t = state.tone[tone];
    t.period = ((ay.AY_Reg[2 * tone] & 0xFF) + ay.AY_Reg[2 * tone + 1] * 256) * 2;
    t.level = AY_Vol[ay.AY_Reg[8 + tone] & 15] * kFullLevel;
    const int32_t mixer = ~ay.AY_Reg[kMixer] & (ToneBit(tone) | NoiseBit(tone));
    if (mixer > t.mixer) envelopePhase = 0;
    t.mixer = mixer;
  }
  state.noisePeriod = ay.AY_Reg[6] * 2;

  const int32_t period = ((ay.AY_Reg[11] & 0xFF) + (ay.AY_Reg[12] & 0xFF) * 256) * 2;
  const int32_t shape = ay.AY_Reg[13] & 15;
  if (period != state.envelopePeriod || shape != state.envelopeShape) envelopePhase = 0;
  state.envelopePeriod = period;
  state.envelopeShape = shape;
}

// One sample of the envelope, as each family of shapes goes on after the step was added to p.
struct EnvelopeStep {
  float p, v;
  double step;

  void Add() { p = static_cast<float>(p + step); }
  void WrapAt(float limit) { p = p >= limit ? p - limit : p; }
  void Rise() { v = static_cast<float>(2.0 * p); }
  void Fall() { v = static_cast<float>(1.0 - 2.0 * p); }
  bool SecondHalf() const { return p >= 0.5F; }
  // The step is gone for this frame only: what waits at 0 starts over at the next.
  void HoldAt(float place) {
    p = place;
    step = 0;
  }
};

// Calls render with the function that makes one sample of this shape.
template <class Render>
void WithShape(int shape, Render render) {
  using E = EnvelopeStep;
  switch (shape) {
    case 8:
      return render([](E& e) {
        e.WrapAt(1.0F);
        e.WrapAt(0.5F);
        if (!e.SecondHalf()) e.Fall();
      });
    case 10:
      return render([](E& e) {
        e.WrapAt(1.0F);
        e.v = static_cast<float>(e.SecondHalf() ? 2.0 * e.p - 1.0 : 1.0 - 2.0 * e.p);
      });
    case 11:
      return render([](E& e) {
        e.WrapAt(1.0F);
        if (e.SecondHalf()) e.HoldAt(0);
        e.Fall();
      });
    case 12:
      // Above 5512 Hz half a turn a sample is not enough, and the phase runs away with the value held.
      return render([](E& e) {
        e.WrapAt(0.5F);
        if (!e.SecondHalf()) e.Rise();
      });
    case 13:
      return render([](E& e) {
        if (e.SecondHalf()) e.HoldAt(0.5F);
        e.Rise();
      });
    case 14:
      return render([](E& e) {
        e.WrapAt(1.0F);
        e.v = static_cast<float>(e.SecondHalf() ? 2.0 - 2.0 * e.p : 2.0 * e.p);
      });
    case 4:
    case 5:
    case 6:
    case 7:
    case 15:
      return render([](E& e) {
        e.WrapAt(1.0F);
        if (e.SecondHalf()) e.HoldAt(0);
        e.Rise();
      });
    default:
      return render([](E& e) {
        if (e.SecondHalf()) e.HoldAt(0.5F);
        e.Fall();
      });
  }
}

struct Generated {
  std::array<Column, kTones> tone;
  Column noise, envelope;
};

// Runs the five generators side by side: each one's phase is a long chain of sums that waits for nothing
// else.
void Generate(Ay38910& ay, Random& random, Generated& out) {
  AyState& state = ay.AY_State;
  std::array<double, kTones> step{};
  for (int tone = 0; tone < kTones; ++tone) {
    state.tone[tone].frequency = Rate(state.tone[tone].period, 1);
    step[tone] = state.tone[tone].frequency / kRateDivisor;
  }
  state.noiseFrequency = Rate(state.noisePeriod, 1);
  const double noiseStep = state.noiseFrequency / kRateDivisor;
  state.envelopeFrequency = Rate(state.envelopePeriod, kEnvelopePrescale);

  float a = ay.AY_Phase[0], b = ay.AY_Phase[1], c = ay.AY_Phase[2], n = ay.AY_Phase[kAyNoise];
  float noise = state.noiseValue;
  EnvelopeStep e{.p = ay.AY_Phase[kAyEnvelope],
                 .v = state.envelopeValue,
                 .step = state.envelopeFrequency / kRateDivisor};
  WithShape(state.envelopeShape, [&](auto stepShape) {
    for (int i = 0; i < kFrameSamples; ++i) {
      PhaseStep(a, step[0]);
      PhaseStep(b, step[1]);
      PhaseStep(c, step[2]);
      out.tone[0][i] = a;
      out.tone[1][i] = b;
      out.tone[2][i] = c;
      if (PhaseStep(n, noiseStep)) noise = static_cast<float>((RandomNext(random) * 32.0 - 16.0) / 16.0);
      out.noise[i] = noise;
      e.Add();
      stepShape(e);
      out.envelope[i] = e.v;
    }
  });
  ay.AY_Phase = {a, b, c, n, e.p};
  state.noiseValue = noise;
  state.envelopeValue = e.v;
}

// Below the half turn the wave is down.
void SquareOfPhase(Column& column) {
  for (float& sample : column) sample = sample < 0.5F ? -1.0F : 1.0F;
}

// The mixer bits of register 7: the channel becomes nothing, the tone, the noise or both.
void MixColumn(int32_t mixer, int tone, Column& __restrict column, const Column& noise) {
  if (mixer == 0) {
    column.fill(0);
  } else if (mixer == NoiseBit(tone)) {
    column = noise;
  } else {
    SquareOfPhase(column);
    if (mixer == ToneBit(tone)) return;
    for (int i = 0; i < kPaddedSamples; ++i) column[i] += noise[i];
  }
}

// Hertz of what the registers call a period.
double HertzOfPeriod(int32_t period) {
  return period == 0 ? 2.0 * kAyClock : kAyClock / static_cast<double>(period);
}

// Level that the envelope gives at each sample.
void EnvelopeLevels(const Column& envelope, Column& __restrict levels) {
  for (int i = 0; i < kPaddedSamples; ++i) {
    const int32_t index = RoundEven(envelope[i] * 15.0);
    levels[i] = AY_Vol[std::clamp(index, 0, 15)] * kFullLevel;
  }
}

}  // namespace

void AyInit(Ay38910& ay) { AyReset(ay); }

void AyReset(Ay38910& ay) {
  ay.AY_Reg.fill(0);
  ay.AY_Reg[kMixer] = 0xFF;
}

void AyWrite(Ay38910& ay, uint8_t port, uint8_t value) {
  if ((port & 1) == 0) {
    ay.latch = value;
  } else if (ay.latch < kRegisters) {
    ay.AY_Reg[ay.latch] = value;
  }
}

void AyRender(Ay38910& ay, Random& random) {
  Decode(ay);
  ay.silent = (ay.AY_Reg[kMixer] & kMixerBits) == kMixerBits ? 1 : 0;
  if (ay.silent != 0) {
    ay.AyOut.fill(0);
    return;
  }

  Generated g{};
  Generate(ay, random, g);
  Column levels{};
  if (ay.envelopeModes != 0) EnvelopeLevels(g.envelope, levels);
  for (int tone = 0; tone < kTones; ++tone) {
    const AyState::Tone& t = ay.AY_State.tone[tone];
    Column& column = g.tone[tone];
    MixColumn(t.mixer, tone, column, g.noise);
    if (UsesEnvelope(ay, tone)) {
      for (int i = 0; i < kPaddedSamples; ++i) column[i] *= levels[i];
    } else {
      for (float& sample : column) sample *= t.level;
    }
  }
  for (int i = 0; i < kFrameSamples; ++i) {
    const float a = g.tone[0][i], b = g.tone[1][i], c = g.tone[2][i];
    ay.AY_Rows[i] = {a, b, c, g.noise[i], g.envelope[i]};
    ay.AyOut[i] = static_cast<int16_t>(RoundEven(static_cast<double>(a) + b + c));
  }
}

double AyToneHertz(const Ay38910& ay, int tone) {
  return HertzOfPeriod((ay.AY_Reg[2 * tone] & 0xFF) + (ay.AY_Reg[2 * tone + 1] & 15) * 256);
}

double AyNoiseHertz(const Ay38910& ay) { return HertzOfPeriod(ay.AY_Reg[6] & 31); }

double AyEnvelopeHertz(const Ay38910& ay) {
  return HertzOfPeriod((ay.AY_Reg[11] & 0xFF) + (ay.AY_Reg[12] & 0xFF) * 256) / kEnvelopePrescale;
}

float AyScopeY(int column, float value) { return 32.0F - (column < kTones ? value : value * 16.0F); }

}  // namespace quoll
