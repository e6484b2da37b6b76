#include "sound/Sn76489.h"

#include <algorithm>

#include "sound/Phase.h"

namespace quoll {
namespace {

constexpr int kTones = 3;
constexpr int kNoise = 3;           // channel number of the noise
constexpr int kSilentSum = 4 * 15;  // of the attenuations
constexpr int kAmplitudeStep = 20;
constexpr int kReseedFrames = 10;
constexpr int kWhite = 4;  // feedback flag of white noise

int32_t& NoiseWord(Sn76489& sn) { return sn.SN_Reg[11]; }

void SetAttenuation(Sn76489& sn, int channel, int attenuation) {
  int32_t& word = sn.SN_Reg[3 * channel + 2];
  word = (word & ~0xFF) | attenuation;
}

// A channel while its frame is rendered.
struct Oscillator {
  float phase;
  double step;
  int32_t toggle;
  int32_t amplitude;
};

Oscillator OscillatorOf(const Sn76489& sn, int channel) {
  const int32_t period = channel == kNoise ? SnNoisePeriod(sn) : SnTonePeriod(sn, channel);
  return {.phase = sn.phase[channel],
          .step = std::min(SnHertz(period), kHighestRate) / kRateDivisor,
          .toggle = sn.toggle[channel] == 1 ? 1 : 0,
          .amplitude = (15 - SnAttenuation(sn, channel)) * kAmplitudeStep};
}

void StepTone(Oscillator& tone) { tone.toggle ^= static_cast<int32_t>(PhaseStep(tone.phase, tone.step)); }

int16_t Level(const Oscillator& o) { return static_cast<int16_t>((2 * o.toggle - 1) * o.amplitude); }

// The random source of this frame's noise, restarted when its time has come.
Random& NoiseSource(Sn76489& sn, Random& random) {
  const bool white = SnNoiseIsWhite(sn);
  if (white && sn.reseedCount == kReseedFrames) RandomSeed(sn.whiteNoise, kSnNoiseSeed);
  sn.reseedCount = static_cast<uint8_t>(sn.reseedCount == kReseedFrames ? 1 : sn.reseedCount + 1);
  return white ? sn.whiteNoise : random;
}

}  // namespace

void SnInit(Sn76489& sn) {
  const FrameSamples heard = sn.SnOut;
  sn = Sn76489{};
  sn.SnOut = heard;
}

void SnReset(Sn76489& sn) {
  for (int channel = 0; channel <= kNoise; ++channel) SetAttenuation(sn, channel, 15);
  sn.silent = 1;
}

void SnWrite(Sn76489& sn, const SnControls& controls, uint8_t value) {
  if (!controls.manual) SnRegisterWrite(sn, value);
}

void SnRegisterWrite(Sn76489& sn, uint8_t value) {
  const int low = value & 15;
  const int tone = (value >> 5) & 3;
  if (value < 0x80) {
    sn.SN_Reg[3 * (sn.SN_Latch % kTones)] = value & 63;
    return;
  }
  // A tone's attenuation moves the latch too: the next data byte is that tone's. The noise never does.
  if (tone != kNoise) sn.SN_Latch = static_cast<uint8_t>(tone);
  if ((value & 0x10) != 0) {
    SetAttenuation(sn, tone, low);
  } else if (tone != kNoise) {
    sn.SN_Reg[3 * tone + 1] = low;
  } else {
    sn.SN_Reg[9] = value & 3;
    NoiseWord(sn) = (NoiseWord(sn) & ~0xFF00) | (value & kWhite) << 8;
  }
}

void SnManualWrite(Sn76489& sn, const SnManual& manual) {
  for (int tone = 0; tone < kTones; ++tone) {
    const auto period = static_cast<int32_t>(1024U - static_cast<uint32_t>(manual.period[tone]));
    // The slider's high bits go where the chip has the period's low ones. Whoever set a sound by ear with it
    // wants it back.
    SnRegisterWrite(sn, static_cast<uint8_t>(0x80 | tone << 5 | ((period >> 6) & 15)));
    SnRegisterWrite(sn, static_cast<uint8_t>(period & 63));
  }
  for (int channel = 0; channel <= kNoise; ++channel)
    SnRegisterWrite(sn, static_cast<uint8_t>(0x90 | channel << 5 | (manual.attenuation[channel] & 15)));
  SnRegisterWrite(sn, static_cast<uint8_t>(0xE0 | (manual.periodicNoise ? 0 : kWhite) | (sn.SN_Reg[9] & 3)));
}

void SnRender(Sn76489& sn, Random& random) {
  int sum = 0;
  for (int channel = 0; channel <= kNoise; ++channel) sum += SnAttenuation(sn, channel);
  sn.silent = (sum & 0xFF) == kSilentSum ? 1 : 0;
  if (sn.silent != 0) {
    sn.SnOut.fill(0);
    return;
  }

  Oscillator a = OscillatorOf(sn, 0), b = OscillatorOf(sn, 1), c = OscillatorOf(sn, 2);
  Oscillator noise = OscillatorOf(sn, kNoise);
  Random& source = NoiseSource(sn, random);
  // The four channels go side by side: each one's phase is a long chain of sums that waits for nothing else.
  for (int i = 0; i < kFrameSamples; ++i) {
    StepTone(a);
    StepTone(b);
    StepTone(c);
    // Rounded to the nearest whole number; the very middle goes to 0, the even one.
    if (PhaseStep(noise.phase, noise.step)) noise.toggle = RandomNext(source) > 0.5 ? 1 : 0;
    const std::array<int16_t, 4> row{Level(a), Level(b), Level(c), Level(noise)};
    sn.voices[i] = row;
    sn.SnOut[i] = static_cast<int16_t>(row[0] + row[1] + row[2] + row[3]);
  }
  sn.phase = {a.phase, b.phase, c.phase, noise.phase};
  sn.toggle = {a.toggle, b.toggle, c.toggle, noise.toggle};
}

int32_t SnHertz(int32_t period) { return kSnClock / std::clamp(period, 1, kSnClock) / 32; }

int32_t SnTonePeriod(const Sn76489& sn, int tone) {
  return std::max((sn.SN_Reg[3 * tone] & 63) * 16 + (sn.SN_Reg[3 * tone + 1] & 15), 1);
}

int32_t SnNoisePeriod(const Sn76489& sn) {
  const int rate = sn.SN_Reg[9] & 3;
  if (rate < 3) return 20 << rate;
  return std::max((sn.SN_Reg[6] & 63) * 64 + (sn.SN_Reg[7] & 15), 1);
}

bool SnNoiseIsWhite(const Sn76489& sn) { return ((sn.SN_Reg[11] >> 8) & 0xFF) == kWhite; }

int32_t SnAttenuation(const Sn76489& sn, int channel) { return sn.SN_Reg[3 * channel + 2] & 0xFF; }

int32_t SnScopeY(int16_t sample) { return sample / 20 + 32; }

}  // namespace quoll
