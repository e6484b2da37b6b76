// The sound path: each frame gives 441 samples of every source, five frames make a block. The block is
// also the machine's clock: at its end the machine waits until the output wants the next one.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sound/SoundCard.h"
#include "sound/Tone.h"

namespace quoll {

inline constexpr int kFramesPerBlock = 5;
inline constexpr int kBlockBytes = kFrameSamples * kFramesPerBlock * 2;  // stereo, one byte a channel

// What the output may take before the first frame.
constexpr std::array<uint8_t, kBlockBytes> SilentBlock() {
  std::array<uint8_t, kBlockBytes> block{};
  block.fill(128);
  return block;
}

struct Mixer {
  // Interleaved left and right bytes, unsigned, silence at 128.
  std::array<uint8_t, kBlockBytes> BlockBuffer = SilentBlock();
  int32_t FrameInBlock = 0;  // frames of the block mixed so far, 0 to 5
  int32_t NeedData = 0;      // 1 = the output has taken the block

  std::vector<uint8_t> WavImage;  // a wave file of silence, made at the start; read by nothing

  bool operator==(const Mixer&) const = default;
};

// Mixes the frame buffers of tone and chips into place FrameInBlock of the block. A sum outside 0 to 255
// wraps.
void MixFrame(Mixer& mixer, const FrameSamples& toneOut, const SoundCard& card);

}  // namespace quoll
