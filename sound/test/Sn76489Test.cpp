#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "sound/Sn76489.h"

namespace quoll {
namespace {

Sn76489 Fresh() {
  Sn76489 sn;
  SnInit(sn);
  return sn;
}

void Write(Sn76489& sn, std::initializer_list<int> values) {
  for (const int value : values) SnRegisterWrite(sn, static_cast<uint8_t>(value));
}

void SetTone(Sn76489& sn, int tone, int period, int attenuation) {
  Write(sn, {0x80 | tone << 5 | (period & 15), period >> 4, 0x90 | tone << 5 | attenuation});
}

// Numbers drawn from a source since it was at before; up to two frames' worth.
int Drawn(Random before, const Random& after) {
  for (int count = 0; count < 1000; ++count) {
    if (before == after) return count;
    RandomNext(before);
  }
  return -1;
}

int Flips(const Sn76489& sn, int channel) {
  int flips = 0;
  for (int i = 1; i < kFrameSamples; ++i) flips += sn.voices[i][channel] != sn.voices[i - 1][channel] ? 1 : 0;
  return flips;
}

TEST(SnWrite, LatchBytesOfThePeriods) {
  for (int tone = 0; tone < 3; ++tone) {
    for (int low = 0; low < 16; ++low) {
      Sn76489 sn = Fresh();
      sn.SN_Latch = static_cast<uint8_t>((tone + 1) % 3);
      Sn76489 expected = sn;
      expected.SN_Reg[3 * tone + 1] = low;
      expected.SN_Latch = static_cast<uint8_t>(tone);
      Write(sn, {0x80 + 0x20 * tone + low});
      EXPECT_EQ(sn, expected) << tone << ' ' << low;
    }
  }
}

TEST(SnWrite, DataBytesGoToTheLatchedTone) {
  for (int tone = 0; tone < 3; ++tone) {
    for (int value = 0; value < 0x80; ++value) {
      Sn76489 sn = Fresh();
      sn.SN_Latch = static_cast<uint8_t>(tone);
      Sn76489 expected = sn;
      expected.SN_Reg[3 * tone] = value % 64;
      Write(sn, {value});
      EXPECT_EQ(sn, expected) << tone << ' ' << value;
    }
  }
}

TEST(SnWrite, AttenuationsOfTheTonesMoveTheLatch) {
  for (int tone = 0; tone < 3; ++tone) {
    for (int level = 0; level < 16; ++level) {
      Sn76489 sn = Fresh();
      sn.SN_Latch = static_cast<uint8_t>((tone + 2) % 3);
      Write(sn, {0x90 + 0x20 * tone + level});
      EXPECT_EQ(sn.SN_Reg[3 * tone + 2], level);
      EXPECT_EQ(sn.SN_Latch, tone);
      Write(sn, {0x2A});
      EXPECT_EQ(sn.SN_Reg[3 * tone], 0x2A);
    }
  }
}

TEST(SnWrite, NoiseWritesLeaveTheLatch) {
  for (int latch = 0; latch < 3; ++latch) {
    for (int low = 0; low < 16; ++low) {
      Sn76489 sn = Fresh();
      sn.SN_Latch = static_cast<uint8_t>(latch);
      Write(sn, {0xE0 + low, 0xF0 + (15 - low), 0x11});
      EXPECT_EQ(sn.SN_Reg[9], low % 4);
      EXPECT_EQ(sn.SN_Reg[11], (15 - low) + (low / 4 % 2) * 4 * 256);
      EXPECT_EQ(sn.SN_Latch, latch);
      EXPECT_EQ(sn.SN_Reg[3 * latch], 0x11) << "a data byte goes to the tone latched last";
    }
  }
}

TEST(SnWrite, FirstDataByteGoesToTone0) {
  Sn76489 sn = Fresh();
  Write(sn, {0x7F});
  EXPECT_EQ(sn.SN_Reg[0], 63);
}

TEST(SnWrite, ManualModeShutsTheMachineOut) {
  Sn76489 sn = Fresh();
  SnWrite(sn, {.manual = true}, 0x95);
  EXPECT_EQ(sn, Fresh());
  SnWrite(sn, {.manual = false}, 0x95);
  EXPECT_EQ(SnAttenuation(sn, 0), 5);
}

TEST(SnReset, SilencesAndKeepsTheRest) {
  Sn76489 sn = Fresh();
  SetTone(sn, 2, 0x155, 3);
  Write(sn, {0xE5, 0xF2});
  Random random;
  SnRender(sn, random);
  Sn76489 expected = sn;
  for (const int word : {2, 5, 8}) expected.SN_Reg[word] = 15;
  expected.SN_Reg[11] = 0x40F;
  expected.silent = 1;
  SnReset(sn);
  EXPECT_EQ(sn, expected);
}

TEST(SnRender, SilentLeavesEverythingStanding) {
  Sn76489 sn = Fresh();
  SetTone(sn, 0, 100, 4);
  Write(sn, {0xE4});
  Random random;
  SnRender(sn, random);
  EXPECT_EQ(sn.silent, 0);
  EXPECT_NE(sn.SnOut, FrameSamples{});
  SetTone(sn, 0, 100, 15);
  const Sn76489 before = sn;
  const Random randomBefore = random;
  SnRender(sn, random);
  EXPECT_EQ(sn.silent, 1);
  EXPECT_EQ(sn.SnOut, FrameSamples{});
  EXPECT_EQ(sn.phase, before.phase);
  EXPECT_EQ(sn.toggle, before.toggle);
  EXPECT_EQ(sn.reseedCount, before.reseedCount);
  EXPECT_EQ(random, randomBefore);
}

TEST(SnHertz, ClockOverPeriodOver32) {
  struct Row {
    int period, hertz;
  };
  for (const Row row : {Row{0, 111860}, Row{1, 111860}, Row{2, 55930}, Row{10, 11186}, Row{11, 10169},
                        Row{254, 440}, Row{1023, 109}, Row{4047, 27}})
    EXPECT_EQ(SnHertz(row.period), row.hertz) << row.period;
}

TEST(SnPeriod, TonesTakeTenBits) {
  for (int period = 0; period < 1024; ++period) {
    Sn76489 sn = Fresh();
    SetTone(sn, 1, period, 15);
    EXPECT_EQ(SnTonePeriod(sn, 1), std::max(period, 1));
  }
}

TEST(SnPeriod, NoiseRates) {
  Sn76489 sn = Fresh();
  for (const std::array<int, 2> row : {std::array{0, 20}, std::array{1, 40}, std::array{2, 80}}) {
    Write(sn, {0xE0 | row[0]});
    EXPECT_EQ(SnNoisePeriod(sn), row[1]);
  }
  Write(sn, {0xE3});
  EXPECT_EQ(SnNoisePeriod(sn), 1) << "the third tone's words are 0";
  Write(sn, {0xC5, 0x03});
  EXPECT_EQ(SnNoisePeriod(sn), 3 * 64 + 5);
  EXPECT_EQ(SnTonePeriod(sn, 2), 3 * 16 + 5);
  Write(sn, {0xCF, 0x3F});
  EXPECT_EQ(SnNoisePeriod(sn), 4047);
}

// A held tone beside its plain chain of sums, for many frames.
TEST(SnRender, TonesFollowTheirSums) {
  struct Row {
    int period, hertz, attenuation, frames;
  };
  for (const Row row :
       {Row{0, 11000, 0, 50}, Row{1, 11000, 1, 50}, Row{10, 11000, 7, 50}, Row{11, 10169, 14, 50},
        Row{254, 440, 15, 50}, Row{1023, 109, 2, 50}, Row{339, 329, 0, 10000}}) {
    for (int tone = 0; tone < 3; ++tone) {
      Sn76489 sn = Fresh();
      SetTone(sn, tone, row.period, row.attenuation);
      Write(sn, {0x90 | ((tone + 1) % 3) << 5 | 9});  // something to hear in any case
      Random random;
      float phase = 0;
      bool up = false;
      const int amplitude = 300 - 20 * row.attenuation;
      for (int frame = 0; frame < row.frames; ++frame) {
        SnRender(sn, random);
        for (int i = 0; i < kFrameSamples; ++i) {
          phase = static_cast<float>(phase + row.hertz / 11025.0);
          if (phase >= 1.0F) {
            phase -= 1.0F;
            up = !up;
          }
          ASSERT_EQ(sn.voices[i][tone], up ? amplitude : -amplitude)
              << row.period << ' ' << frame << ' ' << i;
        }
      }
      EXPECT_EQ(sn.phase[tone], phase);
      if (row.frames > 1000) break;
    }
  }
}

TEST(SnRender, SumsTheFourChannels) {
  Sn76489 sn = Fresh();
  SetTone(sn, 0, 100, 0);
  SetTone(sn, 1, 77, 3);
  SetTone(sn, 2, 50, 8);
  Write(sn, {0xE5, 0xF1});
  Random random;
  for (int frame = 0; frame < 5; ++frame) {
    SnRender(sn, random);
    for (int i = 0; i < kFrameSamples; ++i) {
      const auto& row = sn.voices[i];
      ASSERT_EQ(sn.SnOut[i], row[0] + row[1] + row[2] + row[3]);
      ASSERT_EQ(std::abs(row[0]), 300);
      ASSERT_EQ(std::abs(row[1]), 240);
      ASSERT_EQ(std::abs(row[2]), 140);
      ASSERT_EQ(std::abs(row[3]), 280);
    }
  }
}

TEST(SnRender, AllAtFullVolumeReach1200) {
  Sn76489 sn = Fresh();
  for (int tone = 0; tone < 3; ++tone) SetTone(sn, tone, 1000, 0);
  Write(sn, {0xF0});
  Random random;
  for (int frame = 0; frame < 3; ++frame) SnRender(sn, random);
  for (const int16_t sample : sn.SnOut) EXPECT_LE(std::abs(sample), 1200);
  // No noise number has come up yet that differs: at the start all four are down.
  sn = Fresh();
  for (int tone = 0; tone < 3; ++tone) SetTone(sn, tone, 1000, 0);
  Write(sn, {0xF0});
  SnRender(sn, random);
  EXPECT_EQ(sn.SnOut[0], -1200);
}

TEST(SnRender, ChangesAreHeardAtTheNextFrame) {
  Sn76489 sn = Fresh();
  SetTone(sn, 0, 200, 5);
  Random random;
  SnRender(sn, random);
  const FrameSamples heard = sn.SnOut;
  SetTone(sn, 0, 200, 0);
  EXPECT_EQ(sn.SnOut, heard);
  SnRender(sn, random);
  EXPECT_EQ(std::abs(sn.voices[0][0]), 300);
}

// Turns of the noise in one frame: 441 steps of hertz / 11025 from phase 0. Each draws one number.
TEST(SnNoise, DrawsOneNumberATurn) {
  struct Row {
    int rate, turns;
  };
  for (const Row row :
       {Row{0, 223},     // 5593 Hz: 441 x 5593 / 11025 = 223.7
        Row{1, 111},     // 2796 Hz: 111.8
        Row{2, 55},      // 1398 Hz: 55.9
        Row{3, 439}}) {  // period 1, 11000 Hz: 440 less the rounding of 441 sums, or exactly 440
    Sn76489 sn = Fresh();
    Write(sn, {0xE0 | row.rate, 0xF0});
    Random random{123};
    SnRender(sn, random);
    const int drawn = Drawn(Random{123}, random);
    if (row.rate == 3) {
      EXPECT_GE(drawn, row.turns);
      EXPECT_LE(drawn, row.turns + 1);
    } else {
      EXPECT_EQ(drawn, row.turns);
    }
  }
}

TEST(SnNoise, LevelFollowsTheNumbers) {
  Sn76489 sn = Fresh();
  Write(sn, {0xE2, 0xF5});
  Random random{99}, same{99};
  float phase = 0;
  bool up = false;
  for (int frame = 0; frame < 20; ++frame) {
    SnRender(sn, random);
    for (int i = 0; i < kFrameSamples; ++i) {
      phase = static_cast<float>(phase + 1398 / 11025.0);
      if (phase >= 1.0F) {
        phase -= 1.0F;
        up = RandomNext(same) > 0.5;
      }
      ASSERT_EQ(sn.voices[i][3], up ? 200 : -200);
    }
  }
  EXPECT_EQ(random, same);
}

TEST(SnNoise, WhiteNoiseRepeatsEveryTenFramesAndDisturbsNobody) {
  Sn76489 sn = Fresh();
  Write(sn, {0xE4, 0xF0});
  Random random{5};
  std::vector<Random> sources;
  for (int frame = 0; frame < 30; ++frame) {
    Random expected = sn.whiteNoise;
    if (frame % 10 == 0) RandomSeed(expected, kSnNoiseSeed);
    EXPECT_EQ(sn.reseedCount, frame % 10 == 0 ? 10 : frame % 10);
    const std::array<float, 4> phase = sn.phase;
    SnRender(sn, random);
    sources.push_back(expected);
    const int turns = Drawn(expected, sn.whiteNoise);
    EXPECT_NEAR(turns, 223.7, 1.0) << frame << " from phase " << phase[3];
  }
  EXPECT_EQ(sources[0], sources[10]);
  EXPECT_EQ(sources[10], sources[20]);
  EXPECT_NE(sources[1], sources[0]);
  EXPECT_EQ(random, Random{5});
}

TEST(SnNoise, PeriodicNoiseIsNotRestartedButCounts) {
  Sn76489 sn = Fresh();
  Write(sn, {0xE0, 0xF0});
  Random random{5};
  const Random white = sn.whiteNoise;
  for (int frame = 0; frame < 12; ++frame) {
    EXPECT_EQ(sn.reseedCount, frame == 0 ? 10 : (frame - 1) % 10 + 1);
    SnRender(sn, random);
  }
  EXPECT_EQ(sn.whiteNoise, white);
  EXPECT_NE(random, Random{5});
}

TEST(SnNoise, HasBothLevels) {
  Sn76489 sn = Fresh();
  Write(sn, {0xE4, 0xF0});
  Random random;
  SnRender(sn, random);
  EXPECT_GT(Flips(sn, 3), 70);
  EXPECT_LT(Flips(sn, 3), 160);
}

TEST(SnManualWrite, SendsTheSliders) {
  Sn76489 sn = Fresh();
  Write(sn, {0xE2});
  SnManual manual;
  manual.period = {1024 - 0x2A5, 1023, 0};
  manual.attenuation = {1, 2, 3, 4};
  SnManualWrite(sn, manual);
  // The period's bits above the sixth go to the low part, the six below to the high part.
  EXPECT_EQ(sn.SN_Reg[1], 0x2A5 / 64);
  EXPECT_EQ(sn.SN_Reg[0], 0x2A5 % 64);
  EXPECT_EQ(sn.SN_Reg[4], 0);
  EXPECT_EQ(sn.SN_Reg[3], 1);
  EXPECT_EQ(sn.SN_Reg[7], 0) << "1024 is 16 x 64, of which four bits go";
  EXPECT_EQ(sn.SN_Reg[6], 0);
  for (int channel = 0; channel < 4; ++channel) EXPECT_EQ(SnAttenuation(sn, channel), channel + 1);
  EXPECT_EQ(sn.SN_Reg[9], 2) << "the rate stays";
  EXPECT_EQ(sn.SN_Reg[11] >> 8, 4);
  manual.periodicNoise = true;
  SnManualWrite(sn, manual);
  EXPECT_EQ(sn.SN_Reg[11] >> 8, 0);
}

TEST(SnScopeY, TwentiethsTruncatedAboutTheMiddle) {
  struct Row {
    int sample, y;
  };
  for (const Row row : {Row{0, 32}, Row{300, 47}, Row{-300, 17}, Row{19, 32}, Row{-19, 32}, Row{-39, 31}})
    EXPECT_EQ(SnScopeY(static_cast<int16_t>(row.sample)), row.y) << row.sample;
}

}  // namespace
}  // namespace quoll
