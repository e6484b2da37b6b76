#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "sound/Ay38910.h"

namespace quoll {
namespace {

constexpr uint8_t kAddress = 0x3A, kData = 0x3B;
using Writes = std::vector<std::pair<int, int>>;

void Write(Ay38910& ay, const Writes& writes) {
  for (const auto& [reg, value] : writes) {
    AyWrite(ay, kAddress, static_cast<uint8_t>(reg));
    AyWrite(ay, kData, static_cast<uint8_t>(value));
  }
}

Ay38910 With(const Writes& writes) {
  Ay38910 ay;
  AyInit(ay);
  Write(ay, writes);
  return ay;
}

// Renders with numbers of its own.
void Render(Ay38910& ay, int frames = 1) {
  Random random;
  for (int frame = 0; frame < frames; ++frame) AyRender(ay, random);
}

float Volume(int level) { return level == 0 ? 0.0F : static_cast<float>(std::pow(0.75, 15 - level)); }

// The chain of sums of a phase, a frame or more of it.
struct Chain {
  double step;
  float phase = 0;
  bool Next() {
    phase = static_cast<float>(phase + step);
    const bool wrapped = phase >= 1.0F;
    if (wrapped) phase -= 1.0F;
    return wrapped;
  }
};

TEST(AyVol, ThreeQuartersALevel) {
  for (int level = 0; level < 16; ++level) EXPECT_EQ(AY_Vol[level], Volume(level)) << level;
  EXPECT_EQ(AY_Vol[0], 0.0F);
  EXPECT_EQ(AY_Vol[15], 1.0F);
}

TEST(AyWrite, EveryRegisterAndLatch) {
  for (int latch = 0; latch < 256; ++latch) {
    Ay38910 ay = With({});
    Ay38910 expected = ay;
    expected.latch = static_cast<uint8_t>(latch);
    if (latch < 16) expected.AY_Reg[latch] = 0xA5;
    Write(ay, {{latch, 0xA5}});
    EXPECT_EQ(ay, expected) << latch;
  }
}

TEST(AyWrite, OnlyBit0OfThePortCounts) {
  Ay38910 ay = With({});
  AyWrite(ay, 0xFE, 4);
  AyWrite(ay, 0x01, 0x77);
  EXPECT_EQ(ay.latch, 4);
  EXPECT_EQ(ay.AY_Reg[4], 0x77);
}

TEST(AyReset, ShutsTheMixerAndKeepsTheState) {
  Ay38910 ay = With({{0, 100}, {7, 0x30}, {8, 15}, {13, 8}});
  Render(ay);
  Ay38910 expected = ay;
  expected.AY_Reg = {};
  expected.AY_Reg[7] = 255;
  AyReset(ay);
  EXPECT_EQ(ay, expected);
}

TEST(AyRender, MasksAreWrittenBack) {
  Ay38910 ay = With({});
  for (int reg = 0; reg < 16; ++reg) Write(ay, {{reg, 0xFF}});
  EXPECT_EQ(ay.AY_Reg[1], 0xFF) << "as written until the frame";
  Render(ay);
  for (int reg = 0; reg < 16; ++reg)
    EXPECT_EQ(ay.AY_Reg[reg], reg == 1 || reg == 3 || reg == 5 ? 15 : reg == 6 ? 31 : 255) << reg;
  EXPECT_EQ(ay.AY_State.tone[0].period, 8190);
  EXPECT_EQ(ay.AY_State.noisePeriod, 62);
  EXPECT_EQ(ay.AY_State.envelopePeriod, 131070);
  EXPECT_EQ(ay.AY_State.envelopeShape, 15);
}

TEST(AyRender, SilentWhenTheMixerIsShut) {
  for (const int mixer : {0x3F, 0x7F, 0xBF, 0xFF}) {
    Ay38910 ay = With({{0, 100}, {6, 3}, {7, 0}, {8, 15}, {13, 10}});
    Random random;
    AyRender(ay, random);
    EXPECT_EQ(ay.silent, 0);
    EXPECT_NE(ay.AyOut, FrameSamples{});
    Write(ay, {{7, mixer}});
    const std::array<float, 5> phase = ay.AY_Phase;
    const Random before = random;
    AyRender(ay, random);
    EXPECT_EQ(ay.silent, 1);
    EXPECT_EQ(ay.AyOut, FrameSamples{});
    EXPECT_EQ(ay.AY_Phase, phase);
    EXPECT_EQ(random, before);
  }
}

TEST(AyRender, TonesFollowTheirSums) {
  struct Row {
    int period, hertz, frames;
  };
  // 111861 / (2 x period), ties to the even one: 81 x 1381 is the clock.
  for (const Row row : {Row{0, 11000, 20}, Row{1, 11000, 20}, Row{5, 11000, 20}, Row{6, 9322, 20},
                        Row{9, 6214, 50},       // 6214.5
                        Row{27, 2072, 50},      // 2071.5
                        Row{81, 690, 50},       // 690.5
                        Row{1381, 40, 50},      // 40.5
                        Row{4095, 14, 50},      // 13.66
                        Row{127, 440, 10000}})  // 440.4
  {
    for (int tone = 0; tone < 3; ++tone) {
      Ay38910 ay = With({{2 * tone, row.period & 255},
                         {2 * tone + 1, 0xF0 | row.period >> 8},
                         {7, ~(1 << tone)},
                         {8 + tone, 0x2F}});
      Random random;
      Chain chain{.step = row.hertz / 11025.0};
      for (int frame = 0; frame < row.frames; ++frame) {
        AyRender(ay, random);
        for (int i = 0; i < kFrameSamples; ++i) {
          chain.Next();
          const int sample = chain.phase < 0.5F ? -16 : 16;
          ASSERT_EQ(ay.AyOut[i], sample) << row.period << ' ' << frame << ' ' << i;
          ASSERT_EQ(ay.AY_Rows[i][tone], static_cast<float>(sample));
        }
      }
      EXPECT_EQ(ay.AY_State.tone[tone].frequency, row.hertz);
      EXPECT_EQ(ay.AY_Phase[tone], chain.phase);
      if (row.frames > 1000) break;
    }
  }
}

TEST(AyRender, PeriodZeroIsNotStoredAsOne) {
  Ay38910 ay = With({{7, 0}, {8, 16}, {13, 12}});
  Render(ay);
  const float phase = ay.AY_Phase[kAyEnvelope];
  EXPECT_EQ(ay.AY_State.tone[0].period, 0);
  EXPECT_EQ(ay.AY_State.noisePeriod, 0);
  EXPECT_EQ(ay.AY_State.envelopePeriod, 0);
  EXPECT_EQ(ay.AY_State.envelopeFrequency, 6991);  // 111861 / 16 = 6991.3
  Render(ay);
  EXPECT_NE(ay.AY_Phase[kAyEnvelope], phase) << "not started anew in each frame";
}

TEST(AyLevels, EveryLevelOfATone) {
  for (int tone = 0; tone < 3; ++tone) {
    for (int level = 0; level < 16; ++level) {
      Ay38910 ay = With({{2 * tone, 200}, {7, ~(1 << tone)}, {8 + tone, level}});
      Render(ay);
      EXPECT_EQ(ay.AY_State.tone[tone].level, Volume(level) * 16);
      EXPECT_EQ(ay.AY_Rows[0][tone], -Volume(level) * 16);
      EXPECT_EQ(ay.AyOut[0],
                static_cast<int>(std::nearbyint(-16 * std::pow(0.75, 15 - level) * (level > 0))));
    }
  }
}

TEST(AyMixer, AllSixtyFourSettings) {
  for (int mixer = 0; mixer < 64; ++mixer) {
    Ay38910 ay = With({{0, 100}, {2, 55}, {4, 31}, {6, 3}, {7, mixer}, {8, 15}, {9, 12}, {10, 7}});
    Render(ay, 2);
    if (mixer == 63) continue;
    Chain chain[3] = {{.step = 559 / 11025.0}, {.step = 1017 / 11025.0}, {.step = 1804 / 11025.0}};
    for (Chain& c : chain)
      for (int i = 0; i < kFrameSamples; ++i) c.Next();
    const int levels[3] = {15, 12, 7};
    for (int i = 0; i < kFrameSamples; ++i) {
      const float noise = ay.AY_Rows[i][kAyNoise];
      double sum = 0;
      for (int tone = 0; tone < 3; ++tone) {
        chain[tone].Next();
        float value = 0;
        if ((mixer >> tone) % 2 == 0) value += chain[tone].phase < 0.5F ? -1.0F : 1.0F;
        if ((mixer >> (tone + 3)) % 2 == 0) value += noise;
        value *= Volume(levels[tone]) * 16;
        ASSERT_EQ(ay.AY_Rows[i][tone], value) << mixer << ' ' << tone << ' ' << i;
        sum += value;
      }
      ASSERT_EQ(ay.AyOut[i], static_cast<int>(std::nearbyint(sum))) << mixer << ' ' << i;
    }
  }
}

TEST(AyMixer, BitsOfTheState) {
  for (int mixer = 0; mixer < 256; ++mixer) {
    Ay38910 ay = With({{7, mixer}});
    Render(ay);
    const int on = 255 - mixer;
    EXPECT_EQ(ay.AY_State.tone[0].mixer, on & 9);
    EXPECT_EQ(ay.AY_State.tone[1].mixer, on & 0x12);
    EXPECT_EQ(ay.AY_State.tone[2].mixer, on & 0x24);
  }
}

TEST(AyNoise, FollowsTheNumbers) {
  struct Row {
    int period, hertz;
  };
  // 111861 / (2 x period)
  for (const Row row : {Row{0, 11000}, Row{1, 11000}, Row{6, 9322}, Row{9, 6214}, Row{31, 1804}}) {
    Ay38910 ay = With({{6, 0xE0 | row.period}, {7, 7}, {8, 15}});
    Random random{7}, same{7};
    Chain chain{.step = row.hertz / 11025.0};
    float value = 0;
    for (int frame = 0; frame < 5; ++frame) {
      AyRender(ay, random);
      for (int i = 0; i < kFrameSamples; ++i) {
        if (chain.Next()) value = static_cast<float>(2 * RandomNext(same) - 1);
        ASSERT_EQ(ay.AY_Rows[i][kAyNoise], value);
        ASSERT_EQ(ay.AY_Rows[i][0], value * 16);
      }
    }
    EXPECT_EQ(random, same);
    EXPECT_EQ(ay.AY_State.noiseFrequency, row.hertz);
    EXPECT_EQ(ay.AY_State.noiseValue, value);
  }
}

// Height of a shape after u turns from its start, told as a picture. Holding shapes stay what they are at
// their end.
double Height(int shape, double u) {
  const double half = std::fmod(u, 0.5), turn = std::fmod(u, 1.0);
  switch (shape) {
    case 8: return 1 - 2 * half;
    case 10: return std::abs(1 - 2 * turn);
    case 11: return u < 0.5 ? 1 - 2 * u : 1;
    case 12: return 2 * half;
    case 13: return std::min(2 * u, 1.0);
    case 14: return 1 - std::abs(1 - 2 * turn);
    case 4:
    case 5:
    case 6:
    case 7:
    case 15: return u < 0.5 ? 2 * u : 0;
    default: return std::max(1 - 2 * u, 0.0);
  }
}

// The saws jump at each half turn, where the sums' rounding decides.
bool NearJump(double u) { return std::abs(u * 2 - std::nearbyint(u * 2)) < 1e-3; }

TEST(AyEnvelope, EveryShape) {
  // 111861 / 2000 / 16 = 3.496: 3 Hz; and 37.9: 38 Hz, one and a half turns a frame.
  for (const std::array<int, 2> row : {std::array{1000, 3}, std::array{92, 38}}) {
    for (int shape = 0; shape < 16; ++shape) {
      Ay38910 ay = With({{7, 0x3E}, {8, 16}, {11, row[0] & 255}, {12, row[0] >> 8}, {13, 0xF0 | shape}});
      Render(ay);
      EXPECT_EQ(ay.AY_State.envelopeFrequency, row[1]);
      int compared = 0;
      for (int i = 0; i < kFrameSamples; ++i) {
        const double u = row[1] / 11025.0 * (i + 1);
        if (NearJump(u)) continue;
        ++compared;
        ASSERT_NEAR(ay.AY_Rows[i][kAyEnvelope], Height(shape, u), 1e-3) << shape << ' ' << i;
      }
      EXPECT_GT(compared, 400);
    }
  }
}

TEST(AyEnvelope, NextFrameGoesOnHoldsOrStartsAgain) {
  constexpr double kTurns = 441 * 38 / 11025.0;  // 1.52 in a frame
  for (int shape = 0; shape < 16; ++shape) {
    Ay38910 ay = With({{7, 0x3E}, {8, 16}, {11, 92}, {13, shape}});
    Render(ay, 2);
    const bool startsAgain = (shape >= 4 && shape <= 7) || shape == 11 || shape == 15;
    for (int i = 0; i < kFrameSamples; ++i) {
      const double u = 38 / 11025.0 * (i + 1) + (startsAgain ? 0 : kTurns);
      if (NearJump(u)) continue;
      ASSERT_NEAR(ay.AY_Rows[i][kAyEnvelope], Height(shape, u), 2e-3) << shape << ' ' << i;
    }
  }
}

TEST(AyEnvelope, Shape12RunsAwayAtTheHighestRate) {
  Ay38910 ay = With({{7, 0x3E}, {8, 16}, {13, 12}});
  Render(ay, 4);
  // Each sample adds 6991 / 11025 and takes away a half.
  EXPECT_NEAR(ay.AY_Phase[kAyEnvelope], 4 * 441 * (6991 / 11025.0 - 0.5), 0.6);
  EXPECT_EQ(ay.AY_Rows[0][kAyEnvelope], ay.AY_Rows[440][kAyEnvelope]);
  for (const auto& row : ay.AY_Rows) EXPECT_LE(row[kAyEnvelope], 1.0F);
}

// A rising saw with the phase well inside of it; the write is followed by a frame.
bool Restarts(const Writes& before, const Writes& write) {
  Ay38910 ay = With({{0, 90}, {7, 0x3E}, {8, 16}, {9, 0}, {11, 0xE8}, {12, 3}, {13, 12}});
  Write(ay, before);
  Render(ay, 2);
  const float phase = ay.AY_Phase[kAyEnvelope];
  EXPECT_GT(phase, 0.15F);
  Write(ay, write);
  Render(ay);
  return ay.AY_Phase[kAyEnvelope] < phase;
}

TEST(AyEnvelope, WhatStartsItAnew) {
  EXPECT_FALSE(Restarts({}, {}));
  EXPECT_FALSE(Restarts({}, {{13, 12}})) << "the same shape";
  EXPECT_FALSE(Restarts({}, {{13, 0x1C}})) << "only four bits of the shape count";
  EXPECT_TRUE(Restarts({}, {{13, 14}}));
  EXPECT_TRUE(Restarts({}, {{11, 0xE7}}));
  EXPECT_TRUE(Restarts({}, {{12, 2}}));
  EXPECT_TRUE(Restarts({}, {{9, 16}})) << "one more channel takes the envelope";
  EXPECT_FALSE(Restarts({{9, 16}}, {{9, 15}})) << "one less";
  EXPECT_FALSE(Restarts({}, {{8, 0}, {9, 16}})) << "another one, the sum being the same";
  EXPECT_TRUE(Restarts({}, {{7, 0x3C}})) << "channel B is opened";
  EXPECT_TRUE(Restarts({}, {{7, 0x36}})) << "noise is added to A";
  EXPECT_FALSE(Restarts({{7, 0x36}}, {{7, 0x3E}})) << "noise is taken from A";
  EXPECT_TRUE(Restarts({}, {{7, 0x37}})) << "A changes from tone to noise: 1 to 8";
  EXPECT_FALSE(Restarts({{7, 0x37}}, {{7, 0x3E}})) << "and back";
  EXPECT_FALSE(Restarts({}, {{0, 91}, {8, 31}, {14, 1}, {15, 2}}));
}

TEST(AyEnvelope, ChangesWhileSilentCountToo) {
  Ay38910 ay = With({{7, 0x3E}, {8, 16}, {11, 0xE8}, {12, 3}, {13, 12}});
  Render(ay);
  Write(ay, {{7, 0xFF}, {13, 14}});
  Render(ay);
  EXPECT_EQ(ay.silent, 1);
  EXPECT_EQ(ay.AY_Phase[kAyEnvelope], 0.0F);
  EXPECT_EQ(ay.AY_State.envelopeShape, 14);
  EXPECT_EQ(ay.AY_State.tone[0].mixer, 0);
}

TEST(AyEnvelope, GivesTheLevelInSixteenSteps) {
  Ay38910 ay = With({{0, 200}, {7, 0x3E}, {8, 0x1F}, {11, 92}, {13, 14}});
  Render(ay);
  bool nothing = false;
  for (const auto& row : ay.AY_Rows) {
    const auto level = static_cast<int>(std::nearbyint(row[kAyEnvelope] * 15.0));
    ASSERT_EQ(std::abs(row[0]), Volume(level) * 16);
    nothing = nothing || level == 0;
  }
  EXPECT_TRUE(nothing);
}

TEST(AyEnvelope, AtZeroThereIsNothing) {
  Ay38910 ay = With({{0, 100}, {7, 0x3E}, {8, 16}, {11, 1}, {13, 0}});
  Render(ay, 2);
  for (int i = 0; i < kFrameSamples; ++i) {
    EXPECT_EQ(ay.AY_Rows[i][kAyEnvelope], 0.0F);
    EXPECT_EQ(ay.AyOut[i], 0);
  }
}

TEST(AyRender, RegistersOfThePortsHaveNoEffect) {
  Ay38910 ay = With({{0, 100}, {7, 0x3E}, {8, 15}}), other = ay;
  Write(other, {{14, 0x12}, {15, 0x34}});
  Render(ay);
  Render(other);
  EXPECT_EQ(ay.AyOut, other.AyOut);
  EXPECT_EQ(other.AY_Reg[14], 0x12);
  EXPECT_EQ(other.AY_Reg[15], 0x34);
}

TEST(AyLabels, HertzAndScope) {
  const Ay38910 ay = With({{0, 254}, {2, 0}, {4, 0xFF}, {5, 0x0F}});
  EXPECT_NEAR(AyToneHertz(ay, 0), 440.4, 0.01);
  EXPECT_EQ(AyToneHertz(ay, 1), 223722.0);
  EXPECT_NEAR(AyToneHertz(ay, 2), 27.32, 0.01);
  for (int tone = 0; tone < 3; ++tone) EXPECT_EQ(AyScopeY(tone, 12.0F), 20.0F);
  EXPECT_EQ(AyScopeY(kAyNoise, -0.5F), 40.0F);
  EXPECT_EQ(AyScopeY(kAyEnvelope, 1.0F), 16.0F);
}

}  // namespace
}  // namespace quoll
