#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>

#include "core/Random.h"
#include "sound/Ym2413.h"

namespace quoll {
namespace {

void Set(Ym2413& chip, int reg, int value) {
  OpllWrite(chip, 0x3C, static_cast<uint8_t>(reg));
  OpllWrite(chip, 0x3D, static_cast<uint8_t>(value));
}

void Play(Ym2413& chip, int channel, int number, int block, int volume, bool key = true) {
  Set(chip, 0x10 + channel, number & 0xFF);
  Set(chip, 0x20 + channel, (key ? 0x10 : 0) | block << 1 | number >> 8);
  Set(chip, 0x30 + channel, volume);
}

TEST(Ym2413, EvenPortsLatchSixBitsOddPortsWrite) {
  Ym2413 chip;
  for (int reg = 0; reg < 64; ++reg) Set(chip, 0xC0 + reg, reg + 100);
  for (int reg = 0; reg < 64; ++reg) EXPECT_EQ(chip.OPLL_Reg[reg], reg + 100);
  EXPECT_EQ(chip.latch, 63);
}

TEST(Ym2413, ResetClearsRegistersOnly) {
  Ym2413 chip;
  Play(chip, 0, 300, 4, 9);
  OpllRender(chip, {});
  const auto phase = chip.phase;
  OpllReset(chip);
  EXPECT_EQ(chip.OPLL_Reg, (std::array<uint8_t, 64>{}));
  EXPECT_EQ(chip.silent, 1);
  EXPECT_EQ(chip.phase, phase);
}

TEST(Ym2413, DecodesEveryChannel) {
  for (int c = 0; c < 9; ++c) {
    for (int block = 0; block < 8; ++block) {
      Ym2413 chip;
      Play(chip, c, 0x1A5, block, 0xE7, block % 2 == 1);
      chip.OPLL_Chan = OpllDecode(chip);
      const OpllChannel& channel = chip.OPLL_Chan[c];
      EXPECT_EQ(channel.frequency, static_cast<float>(421.0 * (1 << block) / 21.276595)) << c << " " << block;
      EXPECT_EQ(channel.key, static_cast<float>(block % 2));
      EXPECT_EQ(channel.volume, 7.0F);
    }
  }
}

TEST(Ym2413, WithoutVolumeIsSilentWithKeysOn) {
  Ym2413 chip;
  for (int c = 0; c < 9; ++c) Play(chip, c, 300, 4, 0xF0);
  chip.Ym2413Out.fill(3);
  OpllRender(chip, {});
  EXPECT_EQ(chip.silent, 1);
  EXPECT_EQ(chip.Ym2413Out, FrameSamples{});
  EXPECT_EQ(chip.phase, (std::array<float, 9>{}));
}

TEST(Ym2413, KeyClearRunsOnUnheard) {
  Ym2413 chip;
  Play(chip, 0, 300, 4, 9, false);
  OpllRender(chip, {});
  EXPECT_EQ(chip.silent, 0);
  EXPECT_EQ(chip.Ym2413Out, FrameSamples{});
  EXPECT_GT(chip.phase[0], 0.0F);
}

TEST(Ym2413, NoFrequencyStandsAtItsPhase) {
  for (const auto& [phase, value] : {std::pair{0.0F, 0}, {0.25F, 9}, {0.75F, -9}, {0.5F, 0}}) {
    Ym2413 chip;
    Play(chip, 4, 0, 7, 9);
    chip.phase[4] = phase;
    OpllRender(chip, {});
    EXPECT_EQ(chip.phase[4], phase);
    for (const int16_t sample : chip.Ym2413Out) EXPECT_EQ(sample, value) << phase;
  }
}

// The wave of one channel told by the sine itself, with a state of its own.
void ExpectWave(const Ym2413& chip, int channel, float& phase, double step, int high, int low) {
  for (int i = 0; i < kFrameSamples; ++i) {
    phase = static_cast<float>(phase + step);
    if (phase >= 1.0F) phase -= 1.0F;
    const int sine = static_cast<int>(std::nearbyint(std::sin(phase * 6.28)));
    const int expected = sine > 0 ? high : sine < 0 ? low : 0;
    ASSERT_EQ(chip.work[channel][i], expected) << channel << " " << i;
  }
  ASSERT_EQ(chip.phase[channel], phase);
}

TEST(Ym2413, EachChannelIsARoundedSine) {
  for (const int register3 : {0x00, 0xEF, 0x10, 0xFF}) {
    Ym2413 chip;
    Set(chip, 3, register3);
    std::array<float, 9> phase{};
    for (int c = 0; c < 9; ++c) Play(chip, c, 130 + 40 * c, c % 8, 15 - c);
    for (int frame = 0; frame < 20; ++frame) {
      OpllRender(chip, {});
      FrameSamples sum{};
      for (int c = 0; c < 9; ++c) {
        const double step = static_cast<float>((130 + 40 * c) * (1 << c % 8) / 21.276595) / 11025.0;
        const bool positiveOnly = (register3 & 0x10) != 0;
        ExpectWave(chip, c, phase[c], step, 15 - c, positiveOnly ? 0 : c - 15);
        for (int i = 0; i < kFrameSamples; ++i) sum[i] = static_cast<int16_t>(sum[i] + chip.work[c][i]);
      }
      EXPECT_EQ(chip.Ym2413Out, sum);
    }
  }
}

TEST(Ym2413, NineChannelsReach135) {
  Ym2413 chip;
  for (int c = 0; c < 9; ++c) {
    Play(chip, c, 0, 0, 15);
    chip.phase[c] = 0.25F;
  }
  OpllRender(chip, {});
  for (const int16_t sample : chip.Ym2413Out) EXPECT_EQ(sample, 135);
}

TEST(Ym2413, AClearedBoxMutesItsChannel) {
  for (int c = 0; c < 9; ++c) {
    Ym2413 chip;
    Play(chip, c, 300, 4, 9);
    OpllControls controls;
    controls.Check7[c] = false;
    OpllRender(chip, controls);
    EXPECT_EQ(chip.Ym2413Out, FrameSamples{});
    EXPECT_NE(chip.phase[c], 0.0F);
    OpllRender(chip, {});
    EXPECT_NE(chip.Ym2413Out, FrameSamples{});
  }
}

// The highest pitch that the registers can make is 3074 Hz; the limit of 11000 is beyond it.
TEST(Ym2413, HighestPitch) {
  Ym2413 chip;
  Play(chip, 0, 511, 7, 15);
  OpllRender(chip, {});
  EXPECT_NEAR(chip.OPLL_Chan[0].frequency, 3074.2, 0.1);
  float phase = 0.0F;
  ExpectWave(chip, 0, phase, static_cast<float>(511 * 128 / 21.276595) / 11025.0, 15, -15);
}

// The borders are places between two neighbouring floats. All floats around them and a walk over the rest.
TEST(Ym2413, RoundedSineIsTheSineRounded) {
  const auto expected = [](float phase) { return static_cast<int>(std::nearbyint(std::sin(phase * 6.28))); };
  int changes = 0;
  for (uint32_t bits = 0; bits < std::bit_cast<uint32_t>(1.0F); bits += 997) {
    const auto phase = std::bit_cast<float>(bits);
    ASSERT_EQ(OpllRoundedSine(phase), expected(phase)) << phase;
    if (bits < 997 || expected(std::bit_cast<float>(bits - 997)) == expected(phase)) continue;
    ++changes;
    for (uint32_t near = bits - 1994; near < bits + 997; ++near) {
      const auto p = std::bit_cast<float>(near);
      ASSERT_EQ(OpllRoundedSine(p), expected(p)) << p;
    }
  }
  EXPECT_EQ(changes, 4);
}

TEST(Ym2413, PhasesFilledFromOutsideDoNoHarm) {
  Ym2413 chip;
  for (int c = 0; c < 9; ++c) Play(chip, c, 300, 4, 9);
  chip.phase.fill(std::nanf(""));
  OpllRender(chip, {});
  for (const float phase : chip.phase) EXPECT_TRUE(phase >= 0.0F && phase < 1.0F);
}

TEST(Ym2413, InstrumentNames) {
  EXPECT_EQ(kOpllInstruments[0], "original");
  EXPECT_EQ(kOpllInstruments[10], "shynt");
  EXPECT_EQ(kOpllInstruments[15], "elec guitar");
}

}  // namespace
}  // namespace quoll
