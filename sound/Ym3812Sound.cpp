#include "sound/Ym3812Sound.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "sound/FastSine.h"
#include "sound/Lanes.h"
#include "sound/Oscillators.h"

namespace quoll {
namespace {

constexpr double kHighestHertz = 11000.0;
constexpr double kHertzPerStep = 11025.0;  // half the sample rate: a step of 1 is a turn in every sample
constexpr double kFeedbackTurn = 6.283185;
constexpr double kTurn = 6.28318530718;
constexpr double kOutScale = 20.0;
constexpr double kOutLimit = 126.0;
// Feedback takes at most 1.23E-6 off in a sample. From here down that is lost in the rounding.
constexpr float kLowestPhase = -32.0F;

// How far a fast sum may be from the literal one, in units of the output. A fast turn is off by the inner
// sine's error and two roundings, its sine by 2 pi times that and the outer sine's error; nine channels; and
// the roundings of levels and sums.
constexpr double kTurnError = kFastSineError + 2.0E-7;
constexpr double kChannelError = 2.0 * 3.1416 * kTurnError + kFastSineError + 2.0E-7;
constexpr double kSumError = 1.0E-5;
constexpr auto kSlack = static_cast<float>(kOutScale * (kOplChannels * kChannelError + kSumError));
static_assert(kSlack < 0.0012F);

double StepOf(const OplChannel& channel, const OplOperator& op) {
  return std::min(channel.frequency / 2.0 * OPL_Mult[op.multiplier], kHighestHertz) / kHertzPerStep;
}

// Sine of a channel's feedback: a constant, not its output.
double FeedbackOf(const OplChannel& channel) {
  static const std::array<double, 8> sines = [] {
    std::array<double, 8> values{};
    for (int i = 0; i < 8; ++i) values[i] = std::sin(OPL_Feedback[i] * kFeedbackTurn);
    return values;
  }();
  return sines[channel.feedback];
}

// Modulators and carriers, one after the other, of the channels that are keyed on.
struct Work {
  std::array<PaddedFrame, kOplChannels> modulator;  // phases, then values
  std::array<PaddedFrame, kOplChannels> carrier;    // phases
  PaddedFrame unread;                               // of lanes left over
  PaddedFrame sum;                                  // of the carriers, by fast sines
};

void AdvanceChannels(const std::array<OplChannel, kOplChannels>& channels, OplPhases& phases, Work& work) {
  constexpr int kQuads = (2 * kOplChannels + 3) / 4;
  std::array<PhaseQuad, kQuads> quads{};
  for (PhaseQuad& quad : quads) quad.out.fill(work.unread.data());
  int count = 0;
  bool feedback = false;
  bool halves = false;
  const auto add = [&](float phase, double step, PaddedFrame& out) -> PhaseQuad& {
    PhaseQuad& quad = quads[count / 4];
    const int lane = count % 4;
    quad.phase[lane] = phase;
    quad.step[lane / 2][lane % 2] = step;
    quad.out[lane] = out.data();
    return quad;
  };
  for (int c = 0; c < kOplChannels; ++c) {
    const OplChannel& channel = channels[c];
    if (channel.keyOn == 0) continue;
    PhaseQuad& quad = add(ValidPhase(phases.modulator[c], kLowestPhase), StepOf(channel, channel.modulator),
                          work.modulator[c]);
    const int lane = count % 4;
    quad.feedback[lane / 2][lane % 2] = FeedbackOf(channel);
    if (channel.modulator.wave >= 2) quad.half[lane] = 0.5F;
    feedback = feedback || channel.feedback != 0;
    halves = halves || channel.modulator.wave >= 2;
    ++count;
    add(ValidPhase(phases.carrier[c], 0.0F), StepOf(channel, channel.carrier), work.carrier[c]);
    ++count;
  }
  // Adding a feedback of 0 changes nothing, nor does a half that is never reached.
  const int used = (count + 3) / 4;
  if (halves) {
    AdvancePhases<true, true>(quads, used);
  } else if (feedback) {
    AdvancePhases<true, false>(quads, used);
  } else {
    AdvancePhases<false, false>(quads, used);
  }
  for (int c = 0; c < kOplChannels; ++c) {
    if (channels[c].keyOn == 0) continue;
    phases.modulator[c] = work.modulator[c][kFrameSamples - 1];
    phases.carrier[c] = work.carrier[c][kFrameSamples - 1];
  }
}

void ShapeModulator(PaddedFrame& values, int wave) {
  if (wave == 0) return;
  for (float& value : values) value = OplModulatorValue(value, wave);
}

bool InMutedQuarters(double turn) {
  const double t = turn >= 1.0 ? turn - 1.0 : turn;
  return (t > 0.25 && t < 0.5) || (t > 0.75 && t < 1.0);
}

// The wave's shape on fast sines. Where the turn is too near to a quarter's end to be sure, no number comes
// out, and none out of the sum.
Quad Shaped(Quad y, Quad turn, int wave) {
  if (wave == 1) return Where(y < All(0.0F), y);
  if (wave == 2) return SizeOf(y);
  const Quad t = TakenOff(turn, All(1.0F), 1.0F);
  const QuadBits muted = ((t > All(0.25F)) & (t < All(0.5F))) | ((t > All(0.75F)) & (t < All(1.0F)));
  const Quad quarters = turn * 4.0F;
  constexpr auto kNear = static_cast<float>(4.0 * kTurnError);
  const QuadBits unsure = SizeOf(quarters - Rounded(quarters)) <= All(kNear);
  const Quad y3 = Where(~muted, SizeOf(y));
  return std::bit_cast<Quad>(BitsOf(y3) | unsure);  // all bits set: not a number
}

template <bool plainWave>
void AddCarrier(PaddedFrame& sum, const PaddedFrame& modulator, const PaddedFrame& carrier,
                const OplVoice& voice) {
  const auto modulatorLevel = static_cast<float>(voice.modulatorLevel);
  const auto level = static_cast<float>(voice.level);
  for (int i = 0; i < kFrameSamples; i += 4) {
    const Quad turn = FastSine(LoadQuad(&modulator[i])) * modulatorLevel + LoadQuad(&carrier[i]);
    Quad y = FastSine(turn);
    if constexpr (!plainWave) y = Shaped(y, turn, voice.wave);
    StoreQuad(LoadQuad(&sum[i]) + y * level, &sum[i]);
  }
}

int16_t OutOfSum(double sum) {
  return static_cast<int16_t>(std::nearbyint(std::clamp(sum * kOutScale, -kOutLimit, kOutLimit)));
}

}  // namespace

OplVoice OplVoiceOf(const OplChannel& channel) {
  return {.modulatorLevel = 1.0 / (channel.modulator.level + 1),
          .level = 1.0 / (channel.carrier.level + 1),
          .wave = channel.carrier.wave};
}

float OplCarrierSample(const OplVoice& voice, float modulator, float phase) {
  const double turn = voice.modulatorLevel * std::sin(modulator * kTurn) + phase;
  double y = std::sin(turn * kTurn);
  if (voice.wave == 1 && y > 0.0) y = 0.0;
  if (voice.wave >= 2) y = std::fabs(y);
  if (voice.wave == 3 && InMutedQuarters(turn)) y = 0.0;
  return static_cast<float>(voice.level * y);
}

float OplModulatorValue(float phase, int wave) {
  switch (wave) {
    case 1: return phase <= 0.5F ? phase : 0.0F;
    case 2: return std::fabs(phase);
    case 3: return phase <= 0.25F ? phase : 0.0F;
    default: return phase;
  }
}

// The sum is made of fast sines first, whose distance from the literal sum is below kSlack. Where that can't
// move it over the border between two whole numbers, the rounded sample is the literal one. Elsewhere, about
// once in a frame, the sample is made plainly.
void OplFrame(const std::array<OplChannel, kOplChannels>& channels,
              const std::array<bool, kOplChannels>& heard, bool addModulators, OplPhases& phases,
              FrameSamples& out) {
  Work work;
  AdvanceChannels(channels, phases, work);
  work.sum.fill(0.0F);
  std::array<OplVoice, kOplChannels> voices;
  for (int c = 0; c < kOplChannels; ++c) {
    if (!heard[c]) continue;
    voices[c] = OplVoiceOf(channels[c]);
    ShapeModulator(work.modulator[c], channels[c].modulator.wave);
    if (voices[c].wave == 0) {
      AddCarrier<true>(work.sum, work.modulator[c], work.carrier[c], voices[c]);
    } else {
      AddCarrier<false>(work.sum, work.modulator[c], work.carrier[c], voices[c]);
    }
  }
  const auto modulators = [&](int i) {
    double sum = 0.0;
    for (int c = 0; c < kOplChannels; ++c) {
      if (heard[c]) sum += work.modulator[c][i];
    }
    return sum;
  };
  const auto literal = [&](int i) {
    double sum = addModulators ? modulators(i) : 0.0;
    for (int c = 0; c < kOplChannels; ++c) {
      if (heard[c]) sum += OplCarrierSample(voices[c], work.modulator[c][i], work.carrier[c][i]);
    }
    return OutOfSum(sum);
  };
  if (addModulators) {
    for (int i = 0; i < kFrameSamples; ++i) work.sum[i] += static_cast<float>(modulators(i));
  }
  constexpr auto kScale = static_cast<float>(kOutScale);
  constexpr auto kLimit = static_cast<float>(kOutLimit);
  for (int i = 0; i < kFrameSamples; i += 4) {
    const Quad scaled = LoadQuad(&work.sum[i]) * kScale;
    const QuadBits above = scaled > All(kLimit);
    const QuadBits below = scaled < All(-kLimit);
    const Quad limited =
        Where(~(above | below), scaled) + Where(above, All(kLimit)) - Where(below, All(kLimit));
    const Quad whole = Rounded(limited);
    const QuadBits sure = SizeOf(limited - whole) < All(0.5F - kSlack);
    const int count = std::min(4, kFrameSamples - i);
    if (!Any(~sure)) [[likely]] {
      const QuadBits values = __builtin_convertvector(whole, QuadBits);
      for (int k = 0; k < count; ++k) out[i + k] = static_cast<int16_t>(values[k]);
    } else {
      for (int k = 0; k < count; ++k) {
        out[i + k] = sure[k] != 0 ? static_cast<int16_t>(whole[k]) : literal(i + k);
      }
    }
  }
}

OplTables OplTablesOf(const OplFrameStart& frame, int samples) {
  Work work;
  OplPhases phases = frame.phases;
  AdvanceChannels(frame.channels, phases, work);
  OplTables tables;
  for (int c = 0; c < kOplChannels; ++c) {
    if (!frame.heard[c]) continue;
    const OplVoice voice = OplVoiceOf(frame.channels[c]);
    for (int i = 0; i < samples; ++i) {
      tables.modulator[c][i] = OplModulatorValue(work.modulator[c][i], frame.channels[c].modulator.wave);
      tables.carrier[c][i] = OplCarrierSample(voice, tables.modulator[c][i], work.carrier[c][i]);
    }
  }
  return tables;
}

}  // namespace quoll
