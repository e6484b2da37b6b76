#include "sound/Mixer.h"

#include <cmath>

namespace quoll {
namespace {

constexpr double kSilence = 128.0;

// The conversion keeps the low 8 bits: a mix that is too loud wraps, as it always has on this machine.
uint8_t OutputByte(double sum) { return static_cast<uint8_t>(std::lrint(sum)); }

// A frame of zeros: what a silent chip renders.
constexpr FrameSamples kSilentFrame{};

bool ChipsAreSilent(const SoundCard& card) {
  return card.saa.SaaOutL == kSilentFrame && card.saa.SaaOutR == kSilentFrame &&
         card.sn.SnOut == kSilentFrame && card.opl.Ym3812Out == kSilentFrame &&
         card.opll.Ym2413Out == kSilentFrame && card.sid.SidOut == kSilentFrame &&
         card.ay.AyOut == kSilentFrame;
}

// Half of a sample, ties to even.
int32_t RoundedHalf(int32_t sample) {
  const int32_t half = sample >> 1;
  return half + (sample & half & 1);
}

// With all chips silent, which is how the machine mostly runs, the mix is the tone alone.
void MixTone(uint8_t* out, const FrameSamples& toneOut) {
  for (const int16_t sample : toneOut) {
    const auto byte = static_cast<uint8_t>(RoundedHalf(sample) + static_cast<int32_t>(kSilence));
    *out++ = byte;
    *out++ = byte;
  }
}

}  // namespace

void MixFrame(Mixer& mixer, const FrameSamples& toneOut, const SoundCard& card) {
  if (mixer.FrameInBlock < 0 || mixer.FrameInBlock >= kFramesPerBlock) return;
  uint8_t* out = &mixer.BlockBuffer[2 * kFrameSamples * mixer.FrameInBlock];
  if (ChipsAreSilent(card)) return MixTone(out, toneOut);
  for (int i = 0; i < kFrameSamples; ++i) {
    // A sum of tenths depends on the order of its terms: the chips stand in the same one on both sides.
    const double opl = 0.5 * card.opl.Ym3812Out[i] + 0.5 * card.opll.Ym2413Out[i];
    const double sn = 0.1 * card.sn.SnOut[i];
    const double tone = 0.5 * toneOut[i];
    const double sid = 0.1 * card.sid.SidOut[i];
    const double ay = card.ay.AyOut[i];
    *out++ = OutputByte(opl + card.saa.SaaOutL[i] + sn + tone + sid + ay + kSilence);
    *out++ = OutputByte(opl + card.saa.SaaOutR[i] + sn + tone + sid + ay + kSilence);
  }
}

}  // namespace quoll
