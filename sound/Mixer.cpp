#include "sound/Mixer.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace quoll {
namespace {

constexpr double kSilence = 128.0;

// The conversion keeps the low 8 bits: a mix that is too loud wraps, as it always has on this machine.
uint8_t OutputByte(double sum) { return static_cast<uint8_t>(std::lrint(sum)); }

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

using Sums = std::array<double, kFrameSamples>;

void Add(Sums& sums, const FrameSamples& samples, double weight) {
  for (int i = 0; i < kFrameSamples; ++i) sums[i] += weight * samples[i];
}

bool IsSilent(const FrameSamples& samples) {
  constexpr FrameSamples kZeros{};
  return samples == kZeros;
}

}  // namespace

void MixFrame(Mixer& mixer, const FrameSamples& toneOut, const SoundCard& card) {
  if (mixer.FrameInBlock < 0 || mixer.FrameInBlock >= kFramesPerBlock) return;
  constexpr double kToneWeight = 0.5;
  const auto chips = SoundChips();
  const auto silent = [&](const SoundChip& chip) {
    return IsSilent(chip.left(card)) && IsSilent(chip.right(card));
  };
  uint8_t* out = &mixer.BlockBuffer[2 * kFrameSamples * mixer.FrameInBlock];
  if (std::ranges::all_of(chips, silent)) return MixTone(out, toneOut);
  Sums left{}, right{};
  // Zeros are left out: they change no sum.
  const auto add = [&](std::span<const SoundChip> some) {
    for (const SoundChip& chip : some) {
      if (silent(chip)) continue;
      Add(left, chip.left(card), chip.weight);
      Add(right, chip.right(card), chip.weight);
    }
  };
  add(chips.first(kChipsBeforeTone));
  Add(left, toneOut, kToneWeight);
  Add(right, toneOut, kToneWeight);
  add(chips.subspan(kChipsBeforeTone));
  for (int i = 0; i < kFrameSamples; ++i) {
    *out++ = OutputByte(left[i] + kSilence);
    *out++ = OutputByte(right[i] + kSilence);
  }
}

}  // namespace quoll
