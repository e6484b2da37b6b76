#include "sound/Mixer.h"

#include <cmath>

#include "core/Host.h"
#include "machine/Machine.h"

namespace quoll {
namespace {

constexpr double kSilence = 128.0;

// The conversion keeps the low 8 bits: a mix that is too loud wraps, as it always has on this machine.
uint8_t OutputByte(double sum) { return static_cast<uint8_t>(std::lrint(sum)); }

// A frame of zeros: what a silent chip renders.
constexpr FrameSamples kSilentFrame{};

bool ChipsAreSilent(const Mixer& mixer) {
  return mixer.SaaOutL == kSilentFrame && mixer.SaaOutR == kSilentFrame && mixer.SnOut == kSilentFrame &&
         mixer.Ym3812Out == kSilentFrame && mixer.Ym2413Out == kSilentFrame && mixer.SidOut == kSilentFrame &&
         mixer.AyOut == kSilentFrame;
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

void MixFrame(Mixer& mixer, const FrameSamples& toneOut) {
  if (mixer.FrameInBlock < 0 || mixer.FrameInBlock >= kFramesPerBlock) return;
  uint8_t* out = &mixer.BlockBuffer[2 * kFrameSamples * mixer.FrameInBlock];
  if (ChipsAreSilent(mixer)) return MixTone(out, toneOut);
  for (int i = 0; i < kFrameSamples; ++i) {
    // A sum of tenths depends on the order of its terms: the chips stand in the same one on both sides.
    const double opl = 0.5 * mixer.Ym3812Out[i] + 0.5 * mixer.Ym2413Out[i];
    const double sn = 0.1 * mixer.SnOut[i];
    const double tone = 0.5 * toneOut[i];
    const double sid = 0.1 * mixer.SidOut[i];
    const double ay = mixer.AyOut[i];
    *out++ = OutputByte(opl + mixer.SaaOutL[i] + sn + tone + sid + ay + kSilence);
    *out++ = OutputByte(opl + mixer.SaaOutR[i] + sn + tone + sid + ay + kSilence);
  }
}

void SoundFrame(Machine& m) {
  ToneFrame(m.tone, m.PortShadow);
  if (m.tvcmon.Check1) TapeRecordFrame(m, m.tone.ToneOut);
  MixFrame(m.mixer, m.tone.ToneOut);
  // Counted without a sign, since a script may have put the highest number there.
  m.mixer.FrameInBlock = static_cast<int32_t>(static_cast<uint32_t>(m.mixer.FrameInBlock) + 1U);
  if (m.mixer.FrameInBlock == kFramesPerBlock) m.host->BlockMixed(m);
}

void SoundSync(Machine& m) {
  if (m.screen.xS6) return;
  // Only the flag ends the wait: choosing "Max" meanwhile counts from the next block on.
  while (m.mixer.NeedData == 0) m.host->WaitForBlock(m);
  // Written only when it changes, which it seldom does.
  if (m.mixer.FrameInBlock != kFramesPerBlock || m.fsaa.Label11 != "5")
    m.fsaa.Label11 = std::to_string(m.mixer.FrameInBlock);
  m.mixer.NeedData = 0;
  // The run loop comes with a full block; whoever comes with less gets what is missing.
  for (int frame = 0; frame < kFramesPerBlock && m.mixer.FrameInBlock < kFramesPerBlock; ++frame)
    SoundFrame(m);
  m.mixer.FrameInBlock = 0;
  FsaaBlockEnded(m);
}

// Without a sound device nobody has to be waited for.
void Host::WaitForBlock(Machine& m) { m.mixer.NeedData = 1; }

}  // namespace quoll
