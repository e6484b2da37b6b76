#include "sound/Sid6581.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "sound/SidFilters.h"
#include "sound/SidVoices.h"

namespace quoll {
namespace {

constexpr double kFrequencyScale = 8.66;
constexpr uint8_t kFirstDirectPort = 0xE0, kLastDirectPort = 0xF8;
constexpr double kSweepStart = 50.0, kSweepFactor = 1.05, kSweepEnd = 11000.0, kSweepStill = 440.0;
constexpr int kDecayScale = 3;  // decay and release against attack

int Byte(const Sid6581& chip, int index) { return chip.SID_Reg[index] & 0xFF; }

// Change of the envelope in a sample: at a slider of 440 a millisecond is 22 samples.
float EnvelopeStep(int milliseconds, int32_t slider) {
  return static_cast<float>(1.0 / (milliseconds / (20.0 / std::clamp(slider, 1, 1200))));
}

void StartEnvelope(SidVoice& voice, const SidControls& controls) {
  voice.attackStep = EnvelopeStep(kSidAttackMs[voice.attack], controls.HScroll4);
  voice.decayStep = EnvelopeStep(kDecayScale * kSidAttackMs[voice.decay], controls.HScroll5);
  voice.sustainLevel = static_cast<float>(voice.sustain / 15.0);
  voice.releaseStep = EnvelopeStep(kDecayScale * kSidAttackMs[voice.release], controls.HScroll4);
  voice.envelope = 0.0F;
}

void DecodeVoice(Sid6581& chip, int number, const SidControls& controls) {
  SidVoice& voice = chip.SID_Voice[number];
  const int base = 7 * number;
  voice.frequency = SidHertz(chip, number);
  voice.pulseWidth = (Byte(chip, base + 3) & 15) * 256 + Byte(chip, base + 2);
  voice.attack = Byte(chip, base + 5) >> 4;
  voice.decay = Byte(chip, base + 5) & 15;
  voice.sustain = Byte(chip, base + 6) >> 4;
  voice.release = Byte(chip, base + 6) & 15;
  voice.control = static_cast<uint8_t>(Byte(chip, base + 4));
  chip.SidGate[number] = voice.control & SidGateBit;
  if (chip.SidGate[number] == 1 && chip.SidGateOld[number] == 0) {
    StartEnvelope(voice, controls);
    chip.SidEnvState[number] = SidAttack;
  }
  chip.SidGateOld[number] = chip.SidGate[number];
}

// The sweep plays voice 1, in place of what the registers say.
void Sweep(Sid6581& chip, bool still) {
  if (chip.SidTestFreq == 0.0F) chip.SidTestFreq = kSweepStart;
  chip.SidTestFreq = static_cast<float>(chip.SidTestFreq * kSweepFactor);
  if (still) chip.SidTestFreq = kSweepStill;
  // The test is turned round so that what is no number starts again, too.
  if (!(chip.SidTestFreq <= kSweepEnd)) {
    chip.SidTestFreq = kSweepStart;
    chip.sweepRestarted = true;
  }
  chip.SID_Voice[0].frequency = static_cast<int32_t>(chip.SidTestFreq);
  chip.SID_Voice[0].control = SidTriangle | SidGateBit;
  chip.SID_Voice[0].pulseWidth = 0x800;
  chip.SID_Voice[1].control = 0;
  chip.SID_Voice[2].control = 0;
}

// A ringing triangle takes the voice before it as a factor, and that voice is heard no more.
void Ring(Sid6581& chip) {
  constexpr int kBits = SidRingBit | SidTriangle;
  for (int v = 0; v < kSidVoices; ++v) {
    if ((chip.SID_Voice[v].control & kBits) != kBits) continue;
    auto& own = chip.SidVoiceOut[v];
    auto& other = chip.SidVoiceOut[(v + kSidVoices - 1) % kSidVoices];
    for (int i = 0; i < kFrameSamples; ++i) own[i] *= other[i];
    other.fill(0.0F);
  }
}

void Sum(Sid6581& chip) {
  const auto& [a, b, c] = chip.SidVoiceOut;
  const double volume = chip.SidVolume;
  for (int i = 0; i < kFrameSamples; ++i) {
    const double sum = static_cast<double>(a[i]) + b[i] + c[i];
    chip.SidOut[i] = SidSample(sum * volume * 8.0 * 2.0);
  }
}

}  // namespace

void SidWrite(Sid6581& chip, uint8_t port, uint8_t value) {
  if ((port & 1) == 0) {
    chip.latch = value;
  } else if (chip.latch < kSidRegisters) {
    chip.SID_Reg[chip.latch] = value;
  }
}

void SidWriteDirect(Sid6581& chip, uint8_t port, uint8_t value) {
  if (port >= kFirstDirectPort && port <= kLastDirectPort) chip.SID_Reg[port - kFirstDirectPort] = value;
}

void SidReset(Sid6581& chip) {
  chip.SID_Reg.fill(0);
  chip.SidEnvState.fill(SidAttack);
  chip.SidGate.fill(0);
  chip.SidGateOld.fill(0);
  chip.SidPhase.fill(0.0F);
  chip.silent = 1;
}

void SidDecode(Sid6581& chip, const SidControls& controls) {
  for (int v = 0; v < kSidVoices; ++v) DecodeVoice(chip, v, controls);
  chip.SidCutoff = (Byte(chip, 21) & 7) + Byte(chip, 22) * 8;
  chip.SidRoute = static_cast<uint8_t>(Byte(chip, 23) & 15);
  chip.SidResonance = static_cast<uint8_t>(Byte(chip, 23) >> 4);
  chip.SidMode = static_cast<uint8_t>(Byte(chip, 24) >> 4);
  chip.SidVolume = static_cast<float>(Byte(chip, 24) & 15);
}

int32_t SidHertz(const Sid6581& chip, int voice) {
  const int frequency = Byte(chip, 7 * voice + 1) * 256 + Byte(chip, 7 * voice);
  return static_cast<int32_t>(std::nearbyint(frequency / kFrequencyScale));
}

void SidRender(Sid6581& chip, const SidControls& controls, Random& random) {
  SidDecode(chip, controls);
  chip.sweepRestarted = false;
  chip.silent = chip.SidVolume == 0.0F ? 1 : 0;
  if (chip.silent != 0) {
    chip.SidOut.fill(0);
    return;
  }
  if (controls.Check4) Sweep(chip, controls.Check5);
  SidVoicesFrame(chip, controls, random);
  if (controls.Check10) Ring(chip);
  if (controls.Check7) SidChipFilter(chip);
  Sum(chip);
  SidPostFilters(chip, controls);
}

double SidMean(const Sid6581& chip) {
  int sum = 0;
  for (const int16_t sample : chip.SidOut) sum += std::abs(sample);
  return sum / 440.0 * 2.0;
}

}  // namespace quoll
