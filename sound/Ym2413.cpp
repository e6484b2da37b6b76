#include "sound/Ym2413.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "sound/Lanes.h"
#include "sound/Oscillators.h"

namespace quoll {
namespace {

constexpr double kFrequencyScale = 21.276595;
constexpr double kHighestHertz = 11000.0;
constexpr double kHertzPerStep = 11025.0;  // half the sample rate: a step of 1 is a turn in every sample
constexpr double kTurn = 6.28;             // not quite 2 pi
constexpr int kPositiveOnly = 0x10;        // in register 3, for all channels

int SineSign(float phase) { return static_cast<int>(std::nearbyint(std::sin(phase * kTurn))); }

// The smallest float from `below` to `above` where the rounded sine is no longer the one at `below`.
float Border(float below, float above) {
  const int before = SineSign(below);
  auto low = std::bit_cast<uint32_t>(below);
  auto high = std::bit_cast<uint32_t>(above);
  while (high - low > 1) {
    const uint32_t middle = low + (high - low) / 2;
    (SineSign(std::bit_cast<float>(middle)) == before ? low : high) = middle;
  }
  return std::bit_cast<float>(high);
}

// Where the rounded sine is 1 and -1: from each first phase to below the second. Between a quarter turn and
// the next the sine only rises or only falls, and from one float to the next there by far more than the error
// of std::sin: each border is a single place, and comparing with it gives what the sine would.
struct Borders {
  float up, upEnd, down, downEnd;
};

const Borders& SineBorders() {
  static const Borders borders{.up = Border(0.01F, 0.25F),
                               .upEnd = Border(0.25F, 0.49F),
                               .down = Border(0.51F, 0.75F),
                               .downEnd = Border(0.75F, 0.99F)};
  return borders;
}

// Adds a channel's frame to the sum, and leaves it in its row of the work table.
void AddChannel(std::array<int32_t, kFrameSamples + 3>& sum, FrameSamples& row, const PaddedFrame& phases,
                int level, bool positiveOnly) {
  const Borders& borders = SineBorders();
  const QuadBits high = QuadBits{} + level;
  const QuadBits low = QuadBits{} - (positiveOnly ? 0 : level);
  for (int i = 0; i < kFrameSamples; i += 4) {
    const Quad phase = LoadQuad(&phases[i]);
    const QuadBits up = (phase >= All(borders.up)) & (phase < All(borders.upEnd));
    const QuadBits down = (phase >= All(borders.down)) & (phase < All(borders.downEnd));
    const QuadBits value = (up & high) | (down & low);
    QuadBits total;
    std::memcpy(&total, &sum[i], sizeof total);
    total += value;
    std::memcpy(&sum[i], &total, sizeof total);
    const int count = std::min(4, kFrameSamples - i);
    for (int k = 0; k < count; ++k) row[i + k] = static_cast<int16_t>(value[k]);
  }
}

using PhaseFrames = std::array<PaddedFrame, kOpllChannels>;

void AdvanceChannels(Ym2413& chip, PhaseFrames& frames, PaddedFrame& unread) {
  std::array<PhaseQuad, (kOpllChannels + 3) / 4> quads{};
  for (PhaseQuad& quad : quads) quad.out.fill(unread.data());
  for (int c = 0; c < kOpllChannels; ++c) {
    PhaseQuad& quad = quads[c / 4];
    const int lane = c % 4;
    const double hertz = std::min<double>(chip.OPLL_Chan[c].frequency, kHighestHertz);
    quad.phase[lane] = ValidPhase(chip.phase[c], 0.0F);
    quad.step[lane / 2][lane % 2] = hertz / kHertzPerStep;
    quad.out[lane] = frames[c].data();
  }
  AdvancePhases<false, false>(quads, static_cast<int>(quads.size()));
  for (int c = 0; c < kOpllChannels; ++c) chip.phase[c] = frames[c][kFrameSamples - 1];
}

}  // namespace

void OpllWrite(Ym2413& chip, uint8_t port, uint8_t value) {
  if ((port & 1) == 0) {
    chip.latch = value & 63;
  } else {
    chip.OPLL_Reg[chip.latch & 63] = value;
  }
}

void OpllReset(Ym2413& chip) {
  chip.OPLL_Reg.fill(0);
  chip.silent = 1;
}

std::array<OpllChannel, kOpllChannels> OpllDecode(const Ym2413& chip) {
  std::array<OpllChannel, kOpllChannels> channels;
  for (int c = 0; c < kOpllChannels; ++c) {
    const int high = chip.OPLL_Reg[0x20 + c];
    const int number = (high & 1) * 256 + chip.OPLL_Reg[0x10 + c];
    const int block = (high >> 1) & 7;
    channels[c] = {.frequency = static_cast<float>((number << block) / kFrequencyScale),
                   .key = static_cast<float>((high >> 4) & 1),
                   .volume = static_cast<float>(chip.OPLL_Reg[0x30 + c] & 15)};
  }
  return channels;
}

void OpllRender(Ym2413& chip, const OpllControls& controls) {
  chip.OPLL_Chan = OpllDecode(chip);
  float volumes = 0.0F;
  for (const OpllChannel& channel : chip.OPLL_Chan) volumes += channel.volume;
  chip.silent = volumes == 0.0F ? 1 : 0;
  if (chip.silent != 0) {
    chip.Ym2413Out.fill(0);
    return;
  }
  PhaseFrames frames;
  PaddedFrame unread;
  AdvanceChannels(chip, frames, unread);
  std::array<int32_t, kFrameSamples + 3> sum{};
  const bool positiveOnly = (chip.OPLL_Reg[3] & kPositiveOnly) != 0;
  for (int c = 0; c < kOpllChannels; ++c) {
    const int level = static_cast<int>(chip.OPLL_Chan[c].volume * chip.OPLL_Chan[c].key);
    if (level != 0 && controls.Check7[c]) {
      AddChannel(sum, chip.work[c], frames[c], level, positiveOnly);
    } else {
      chip.work[c].fill(0);
    }
  }
  for (int i = 0; i < kFrameSamples; ++i) chip.Ym2413Out[i] = static_cast<int16_t>(sum[i]);
}

int OpllRoundedSine(float phase) {
  const Borders& borders = SineBorders();
  if (phase >= borders.up && phase < borders.upEnd) return 1;
  return phase >= borders.down && phase < borders.downEnd ? -1 : 0;
}

}  // namespace quoll
