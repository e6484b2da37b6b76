#include "sound/SidVoices.h"

#include <algorithm>
#include <cmath>

namespace quoll {
namespace {

constexpr double kSampleRate = 22050.0;
constexpr double kNoiseScale = 11000.0;

using VoiceFrame = std::array<float, kFrameSamples>;
using VoiceFrames = std::array<VoiceFrame, kSidVoices>;

struct Oscillator {
  double step = 0.0;   // added in a sample
  float limit = 1.0F;  // from here on 2 is taken off
  float phase = 0.0F;
  bool sync = false;
  double syncRate = 0.0;   // added to the accumulator in a sample
  double syncTurns = 0.0;  // the accumulator: at 1 the phase starts again
};

Oscillator OscillatorOf(const Sid6581& chip, int number, bool ringOn) {
  const SidVoice& voice = chip.SID_Voice[number];
  const SidVoice& before = chip.SID_Voice[(number + kSidVoices - 1) % kSidVoices];
  const int wave = SidWaveOf(voice.control);
  Oscillator oscillator{.step = voice.frequency / kSampleRate, .phase = chip.SidPhase[number]};
  if (wave == SidNoiseBit) {
    oscillator.step = std::min(voice.frequency / kNoiseScale * 8.0, 1.0);
    oscillator.limit = 0.0F;
  } else if (wave == SidPulse) {
    // The wrap at the width leaves the period alone: the width is the high state's share.
    oscillator.limit = static_cast<float>(voice.pulseWidth) / 2048.0F;
  }
  oscillator.sync = ringOn && (voice.control & SidSyncBit) != 0 && wave != 0 && wave != SidNoiseBit;
  oscillator.syncRate = before.frequency / kSampleRate / 4.0;
  return oscillator;
}

template <bool sync>
void NextPhase(Oscillator& o) {
  o.phase = static_cast<float>(o.phase + o.step);
  if (o.phase >= o.limit) o.phase -= 2.0F;
  if constexpr (sync) {
    if (!o.sync) return;
    o.syncTurns += o.syncRate;
    if (o.syncTurns >= 1.0) o.phase = 0.0F, o.syncTurns = 0.0;
  }
}

// The voices advance together: each phase waits for its own last one only.
template <bool sync>
void AdvancePhases(std::array<Oscillator, kSidVoices>& oscillators, VoiceFrames& phases) {
  auto [a, b, c] = oscillators;
  for (int i = 0; i < kFrameSamples; ++i) {
    NextPhase<sync>(a);
    NextPhase<sync>(b);
    NextPhase<sync>(c);
    phases[0][i] = a.phase;
    phases[1][i] = b.phase;
    phases[2][i] = c.phase;
  }
  oscillators = {a, b, c};
}

// A new value where the phase has wrapped, which is where it has fallen.
void NoiseFrame(float& noise, float phase, const VoiceFrame& phases, VoiceFrame& out, Random& random) {
  for (int i = 0; i < kFrameSamples; ++i) {
    if (phases[i] < phase) noise = static_cast<float>((std::trunc(RandomNext(random) * 8.0) - 4.0) * 0.25);
    phase = phases[i];
    out[i] = noise;
  }
}

void WaveFrame(int wave, const VoiceFrame& phases, VoiceFrame& out) {
  if (wave == SidPulse) {
    for (int i = 0; i < kFrameSamples; ++i) out[i] = phases[i] < 0.0F ? -1.0F : 1.0F;
  } else if (wave == SidSaw) {
    out = phases;
  } else {
    for (int i = 0; i < kFrameSamples; ++i) out[i] = 2.0F * (std::fabs(phases[i]) - 0.5F);
  }
}

// Multiplies the samples by the envelope, which moves on before each of them. Each state is a loop of its
// own, and what follows it begins at the sample where it ends.
void ApplyEnvelope(SidVoice& voice, int32_t& state, VoiceFrame& samples) {
  float envelope = voice.envelope;
  int i = 0;
  const auto apply = [&] { samples[i++] *= envelope; };
  while (state == SidAttack && i < kFrameSamples) {
    envelope += voice.attackStep;
    if (envelope >= 1.0F) {
      envelope = 1.0F;
      state = SidDecay;
    }
    apply();
  }
  while (state == SidDecay && i < kFrameSamples) {
    if (envelope > voice.sustainLevel) {
      envelope = std::max(envelope - voice.decayStep, 0.0F);
      apply();
    } else {
      state = SidSustain;
    }
  }
  if (state == SidSustain && i < kFrameSamples) {
    if ((voice.control & SidGateBit) != 0) {
      envelope = voice.sustainLevel;
      while (i < kFrameSamples) apply();
    } else {
      state = SidRelease;
    }
  }
  while (state == SidRelease && i < kFrameSamples) {
    envelope = std::max(envelope - voice.releaseStep, 0.0F);
    apply();
  }
  voice.envelope = envelope;
}

// A voice whose box is clear moves on twice as far, and is not heard.
void Mute(Oscillator oscillator, float& phase, VoiceFrame& out) {
  oscillator.limit = 1.0F;
  for (float& sample : out) {
    NextPhase<false>(oscillator);
    sample = 0.0F;
  }
  phase = oscillator.phase;
}

}  // namespace

void SidVoicesFrame(Sid6581& chip, const SidControls& controls, Random& random) {
  std::array<Oscillator, kSidVoices> oscillators;
  bool anySync = false;
  for (int v = 0; v < kSidVoices; ++v) {
    oscillators[v] = OscillatorOf(chip, v, controls.Check10);
    anySync = anySync || oscillators[v].sync;
  }
  VoiceFrames phases;
  if (anySync) {
    AdvancePhases<true>(oscillators, phases);
  } else {
    AdvancePhases<false>(oscillators, phases);
  }
  for (int v = 0; v < kSidVoices; ++v) {
    SidVoice& voice = chip.SID_Voice[v];
    VoiceFrame& out = chip.SidVoiceOut[v];
    const int wave = SidWaveOf(voice.control);
    if (wave == 0) {
      out.fill(0.0F);
    } else {
      if (wave == SidNoiseBit) {
        NoiseFrame(chip.SidNoise[v], chip.SidPhase[v], phases[v], out, random);
      } else {
        WaveFrame(wave, phases[v], out);
      }
      if (controls.Check6) {
        ApplyEnvelope(voice, chip.SidEnvState[v], out);
      } else {
        voice.envelope = 1.0F;
      }
    }
    chip.SidPhase[v] = oscillators[v].phase;
    if (!controls.Check9[v]) Mute(oscillators[v], chip.SidPhase[v], out);
  }
}

}  // namespace quoll
