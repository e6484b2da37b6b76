#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "sound/Saa1099.h"
#include "sound/Saat.h"

namespace quoll {
namespace {

using Writes = std::vector<std::pair<int, int>>;

void Write(Saa1099& saa, const Writes& writes) {
  for (const auto& [reg, value] : writes) {
    SaaRegisterWrite(saa, 0x33, static_cast<uint8_t>(reg));
    SaaRegisterWrite(saa, 0x32, static_cast<uint8_t>(value));
  }
}

Saa1099 With(const Writes& writes) {
  Saa1099 saa;
  Write(saa, writes);
  return saa;
}

// Sound enabled, then these.
Saa1099 On(const Writes& writes) {
  Saa1099 saa = With({{28, 1}});
  Write(saa, writes);
  return saa;
}

void Render(Saa1099& saa, int frames = 1, const SaaControls& controls = {}) {
  Random random;
  for (int frame = 0; frame < frames; ++frame) SaaRender(saa, controls, random);
}

int NearestByte(double value) { return static_cast<int>(std::nearbyint(value)); }

TEST(Saat, Rows) {
  struct Row {
    int setting, entry, hertz;
  };
  for (const Row row :
       {Row{0, 250489, 31}, Row{255, 500000, 61}, Row{1024, 4007828, 489}, Row{2047, 64000000, 7812}}) {
    EXPECT_EQ(SaatEntry(row.setting / 256, row.setting % 256), row.entry);
    EXPECT_EQ(SAAT[row.setting], row.hertz);
  }
}

TEST(Saat, EverySetting) {
  for (int octave = 0; octave < 8; ++octave) {
    for (int frequency = 0; frequency < 256; ++frequency) {
      const double entry = std::nearbyint(8192.0 * 15625.0 * std::exp2(octave) / (511 - frequency));
      ASSERT_EQ(SaatEntry(octave, frequency), entry);
      ASSERT_EQ(SAAT[octave * 256 + frequency], std::nearbyint(entry / 8192.0));
    }
  }
}

TEST(Saat, TheMiddleGoesToTheEvenOne) {
  // 64000000 / 8192 is 7812.5.
  EXPECT_EQ(SaatEntry(7, 255), 64000000);
  EXPECT_EQ(SAAT[2047], 7812);
  // 32000000 / 8192 is 3906.25; 16384000000 / 500 is 32768000, exactly 4000.
  EXPECT_EQ(SAAT[6 * 256 + 255], 3906);
  EXPECT_EQ(SAAT[7 * 256 + 11], 4000);
}

TEST(SaaWrite, AddressTakesFiveBits) {
  for (int value = 0; value < 256; ++value) {
    Saa1099 saa, expected;
    expected.latch = static_cast<uint8_t>(value % 32);
    SaaRegisterWrite(saa, value % 2 == 0 ? 0xFF : 0x33, static_cast<uint8_t>(value));
    EXPECT_EQ(saa, expected);
  }
}

// What a register's value stands for, told by arithmetic.
void Expect(Saa1099& saa, int reg, int value) {
  const auto bit = [value](int n) { return static_cast<uint8_t>(value / (1 << n) % 2); };
  const auto octave = [value](int shift) { return static_cast<uint8_t>(value / (1 << shift) % 8); };
  if (reg <= 5) {
    saa.SAA_Amp[reg] = static_cast<uint8_t>(value % 16);
    saa.SAA_Amp[6 + reg] = static_cast<uint8_t>(value / 16);
  } else if (reg >= 8 && reg <= 13) {
    saa.SAA_Freq[reg - 8].frequency = static_cast<uint8_t>(value);
  } else if (reg >= 16 && reg <= 18) {
    saa.SAA_Freq[2 * reg - 32].octave = octave(0);
    saa.SAA_Freq[2 * reg - 31].octave = octave(4);
  } else if (reg == 20 || reg == 21) {
    for (int c = 0; c < 6; ++c) (reg == 20 ? saa.SAA_Enable[c].tone : saa.SAA_Enable[c].noise) = bit(c);
  } else if (reg == 22) {
    saa.SAA_Noise = {static_cast<uint8_t>(value % 4), static_cast<uint8_t>(value / 16 % 4)};
  } else if (reg == 24 || reg == 25) {
    Saa1099::Envelope& envelope = saa.SAA_Env[reg - 24];
    envelope.enable = bit(7);
    envelope.invertRight = bit(0);
    envelope.externalClock = bit(5);
    envelope.threeBit = bit(4);
    envelope.mode = octave(1);
  } else if (reg == 28) {
    saa.soundEnable = bit(0);
    saa.resetRequest = bit(1);
  }
}

TEST(SaaWrite, EveryRegisterAndValue) {
  for (int reg = 0; reg < 32; ++reg) {
    for (int value = 0; value < 256; ++value) {
      Saa1099 saa = With({{reg, value}}), expected;
      expected.latch = static_cast<uint8_t>(reg);
      Expect(expected, reg, value);
      ASSERT_TRUE(saa == expected) << reg << ' ' << value;
      // And what was set before goes.
      Write(saa, {{reg, 255 - value}});
      Expect(expected, reg, 255 - value);
      ASSERT_TRUE(saa == expected) << reg << ' ' << value;
    }
  }
}

TEST(SaaWrite, ManualModeShutsTheMachineOut) {
  Saa1099 saa;
  SaaWrite(saa, {.manual = true}, 0x33, 9);
  EXPECT_EQ(saa, Saa1099{});
  SaaWrite(saa, {}, 0xFF, 9);
  SaaWrite(saa, {.manual = true}, 0x32, 77);
  EXPECT_EQ(saa.SAA_Freq[1].frequency, 0);
  SaaWrite(saa, {}, 0xFE, 77);
  EXPECT_EQ(saa.SAA_Freq[1].frequency, 77);
}

const Writes kBusy{{0, 0x9A},  {2, 0x77},  {5, 0x31}, {8, 200}, {10, 31},   {13, 99},   {16, 0x34},
                   {17, 0x56}, {18, 0x43}, {20, 63},  {21, 36}, {22, 0x12}, {24, 0x86}, {25, 0x8F}};

TEST(SaaReset, ClearsRegistersAndKeepsTheGenerators) {
  Saa1099 saa = On(kBusy);
  Render(saa, 2);
  Saa1099 expected = saa;
  expected.SAA_Env = {};
  expected.SAA_Enable = {};
  expected.SAA_Freq = {};
  expected.SAA_Amp = {};
  expected.latch = 0;
  expected.silent = 1;
  SaaReset(saa);
  EXPECT_EQ(saa, expected);
  EXPECT_EQ(saa.soundEnable, 1);
  EXPECT_EQ(saa.SAA_Noise[0], 2);
}

void ExpectQuiet(const Saa1099& saa) {
  EXPECT_EQ(saa.SaaOutL, FrameSamples{});
  EXPECT_EQ(saa.SaaOutR, FrameSamples{});
}

TEST(SaaRender, NoLevelIsSilent) {
  Saa1099 saa = On(kBusy);
  Random random;
  SaaRender(saa, {}, random);
  EXPECT_EQ(saa.silent, 0);
  EXPECT_NE(saa.SaaOutL, FrameSamples{});
  Write(saa, {{0, 0}, {2, 0}, {5, 0}, {28, 3}});
  const Saa1099 before = saa;
  const Random randomBefore = random;
  SaaRender(saa, {}, random);
  ExpectQuiet(saa);
  EXPECT_EQ(saa.silent, 1);
  EXPECT_EQ(saa.SAA_Tone, before.SAA_Tone);
  EXPECT_EQ(saa.SAA_EnvState, before.SAA_EnvState);
  EXPECT_EQ(random, randomBefore);
  EXPECT_EQ(saa.resetRequest, 1) << "a reset asked for meanwhile waits for a level";
  EXPECT_EQ(saa.SAA_Enable, before.SAA_Enable);
}

TEST(SaaRender, DisabledStandsStill) {
  Saa1099 saa = On(kBusy);
  Random random;
  SaaRender(saa, {}, random);
  Write(saa, {{28, 0}});
  const Saa1099 before = saa;
  const Random randomBefore = random;
  SaaRender(saa, {.manual = false, .patch2 = true, .patch5 = true}, random);
  ExpectQuiet(saa);
  EXPECT_EQ(saa.silent, 0);
  EXPECT_EQ(saa.SAA_Tone, before.SAA_Tone);
  EXPECT_EQ(saa.SAA_EnvState, before.SAA_EnvState);
  EXPECT_EQ(saa.SAA_Enable, before.SAA_Enable);
  EXPECT_EQ(random, randomBefore);
  EXPECT_EQ(saa.SaaRight, Saa1099::Channels{}) << "the scopes show nothing";
}

TEST(SaaRender, ResetRequestMakesASilentFrame) {
  Saa1099 saa = On(kBusy);
  Render(saa);
  Write(saa, {{28, 3}});
  const Saa1099::ToneState tone = saa.SAA_Tone;
  EXPECT_NE(saa.SAA_Amp[0], 0) << "not before the frame";
  Render(saa);
  ExpectQuiet(saa);
  EXPECT_EQ(saa.resetRequest, 0);
  EXPECT_EQ(saa.soundEnable, 1);
  EXPECT_EQ(saa.SAA_Amp, (std::array<uint8_t, 12>{}));
  EXPECT_EQ(saa.SAA_Tone, tone);
  Render(saa);
  EXPECT_EQ(saa.silent, 1);
}

TEST(SaaTone, FollowsItsSum) {
  struct Row {
    int octave, frequency, hertz, frames;
  };
  for (const Row row :
       {Row{0, 0, 31, 20}, Row{4, 0, 489, 20}, Row{7, 255, 7812, 20}, Row{3, 255, 488, 10000}}) {
    for (int c = 0; c < 6; ++c) {
      Saa1099 saa = On({{c, 0xFF}, {8 + c, row.frequency}, {16 + c / 2, row.octave * 0x11}, {20, 1 << c}});
      EXPECT_EQ(SaaHertz(saa, c), row.hertz);
      // 15 of 31 is 123.4, 15 of 30 is 127.5 and goes to 128; an eighth of each is heard.
      const int high = c < 3 ? 123 : 128, heard = c < 3 ? 15 : 16;
      double phase = 0;
      int level = 0;
      Random random;
      for (int frame = 0; frame < row.frames; ++frame) {
        SaaRender(saa, {}, random);
        for (int i = 0; i < kFrameSamples; ++i) {
          if (phase >= 1.0) {
            phase -= 1.0;
            level = 255 - level;
          }
          ASSERT_EQ(saa.SaaWave[c][i], level) << row.hertz << ' ' << frame << ' ' << i;
          ASSERT_EQ(saa.SaaLeft[c][i], level == 0 ? 0 : high);
          ASSERT_EQ(saa.SaaOutR[i], level == 0 ? 0 : heard);
          phase += row.hertz / 11000.0;
        }
      }
      EXPECT_EQ(saa.SAA_Tone.phase[c], phase);
      EXPECT_EQ(saa.SAA_Tone.level[c], level);
      if (row.frames > 1000) break;
    }
  }
}

TEST(SaaLevels, EveryLevelOnItsSide) {
  for (int c = 0; c < 6; ++c) {
    for (int level = 1; level < 16; ++level) {
      Saa1099 saa = On({{c, level}, {8 + c, 255}, {16 + c / 2, 0x77}, {20, 1 << c}});
      Render(saa);
      const int high = NearestByte(255.0 / (c < 3 ? 31 : 30) * level);
      EXPECT_EQ(*std::max_element(saa.SaaLeft[c].begin(), saa.SaaLeft[c].end()), high);
      EXPECT_EQ(*std::max_element(saa.SaaOutL.begin(), saa.SaaOutL.end()), NearestByte(high / 8.0));
      EXPECT_EQ(saa.SaaOutR, FrameSamples{});
      Write(saa, {{c, level * 16}});
      Render(saa);
      EXPECT_EQ(*std::max_element(saa.SaaRight[c].begin(), saa.SaaRight[c].end()), high);
      EXPECT_EQ(saa.SaaOutL, FrameSamples{});
    }
  }
}

TEST(SaaLevels, ToneAndNoiseOfEachChannel) {
  for (int c = 0; c < 6; ++c) {
    for (int enables = 0; enables < 4; ++enables) {
      for (int level = 1; level < 16; ++level) {
        Saa1099 saa = On({{c, level * 0x11},
                          {8 + c, 100},
                          {16 + c / 2, 0x66},
                          {20, (enables & 1) << c},
                          {21, (enables >> 1) << c},
                          {22, 0x21}});
        Render(saa);
        const auto& noise = c < 3 ? saa.SaaNoise0 : saa.SaaNoise1;
        for (int i = 0; i < kFrameSamples; ++i) {
          int x = 0;
          if ((enables & 1) != 0) x = NearestByte(saa.SaaWave[c][i] / (c < 3 ? 31.0 : 30.0) * level);
          if ((enables & 2) != 0) x = NearestByte(noise[i] / 31.0 * level + x);
          ASSERT_EQ(saa.SaaLeft[c][i], x) << c << ' ' << enables << ' ' << level << ' ' << i;
          ASSERT_EQ(saa.SaaRight[c][i], x);
        }
      }
    }
  }
}

// Places of a noise's fresh values in a frame: the first sample, and each at which the sum reached 1.
std::vector<int> Flips(double step) {
  std::vector<int> flips{0};
  double phase = 0;
  for (int i = 0; i < kFrameSamples; ++i) {
    if (phase >= 1.0) {
      phase -= 1.0;
      flips.push_back(i);
    }
    phase += step;
  }
  return flips;
}

void ExpectNoise(const Saa1099::Column& noise, double step, Random& random) {
  const std::vector<int> flips = Flips(step);
  size_t next = 0;
  int value = -1;
  for (int i = 0; i < kFrameSamples; ++i) {
    if (next < flips.size() && flips[next] == i) {
      value = NearestByte(RandomNext(random) * 255);
      ++next;
    }
    ASSERT_EQ(noise[i], value) << i << " of step " << step;
  }
}

TEST(SaaNoise, RatesOfAllClocks) {
  // Channel 0 at 489 Hz, channel 3 at 7812.
  for (int clocks = 0; clocks < 16; ++clocks) {
    const int clock0 = clocks % 4, clock1 = clocks / 4;
    Saa1099 saa = On({{0, 1}, {8, 0}, {11, 255}, {16, 4}, {17, 0x70}, {22, clock0 | clock1 << 4}});
    const double rates[3] = {10500, 6500, 4000};
    const double step0 = (clock0 == 3 ? 2 * 489 : rates[clock0]) / 11025.0;
    double step1 = (clock1 == 3 ? step0 : rates[clock1]) / 11025.0;
    if (clock0 == 3) step1 = 2 * 7812 / 11025.0;  // whatever noise 1 asks for
    Random random{31}, same{31};
    for (int frame = 0; frame < 3; ++frame) {
      SaaRender(saa, {}, random);
      ExpectNoise(saa.SaaNoise0, step0, same);
      ExpectNoise(saa.SaaNoise1, step1, same);
    }
    EXPECT_EQ(random, same) << clocks;
  }
}

TEST(SaaNoise, SomeCountsByHand) {
  EXPECT_EQ(Flips(4000 / 11025.0).size(), 160U);   // 441 x 0.3628 = 160, the last due after the frame
  EXPECT_EQ(Flips(6500 / 11025.0).size(), 260U);   // likewise
  EXPECT_EQ(Flips(15624 / 11025.0).size(), 441U);  // more than one a sample
}

// Height from 0 to 250 after u turns from the start of a frame in which a single shot began.
double SingleShot(int mode, double u) {
  if (u >= 1.0) return 0;
  if (mode == 2) return 250 * (1 - u);
  return mode == 6 ? 250 * u : 250 * (1 - std::abs(1 - 2 * u));
}

double Repeating(int mode, double u) {
  const double turn = u - std::floor(u);
  if (mode == 3) return 250 * (1 - turn);
  return mode == 7 ? 250 * turn : 250 * std::abs(1 - 2 * turn);
}

double Height(int mode, double inFrame, double inAll) {
  if (mode < 2) return 250.0 * mode;
  return mode == 3 || mode == 5 || mode == 7 ? Repeating(mode, inAll) : SingleShot(mode, inFrame);
}

void ExpectEnvelope(const Saa1099::Column& envelope, int mode, double step, int frame) {
  for (int i = 0; i < kFrameSamples; ++i) {
    const double u = step * i, all = step * (i + frame * kFrameSamples);
    // At a jump the sums' rounding decides.
    if (std::abs(all - std::nearbyint(all)) < 2e-3 || std::abs(u - 1) < 2e-3) continue;
    ASSERT_NEAR(envelope[i], Height(mode, u, all), 0.75) << mode << ' ' << frame << ' ' << i;
  }
}

TEST(SaaEnvelope, EveryModeOfBoth) {
  const Writes pitches{{0, 1}, {9, 11}, {12, 11}, {16, 0x50}, {18, 0x04}};
  for (int mode = 0; mode < 8; ++mode) {
    for (int speeds = 0; speeds < 4; ++speeds) {
      Saa1099 saa = On(pitches);
      const int three0 = speeds % 2, three1 = speeds / 2;
      Write(saa, {{24, mode << 1 | three0 << 4}, {25, mode << 1 | three1 << 4}});
      // 1000 and 500 Hz: 500000 / 500 and 250000 / 500.
      ASSERT_EQ(SaaHertz(saa, 1), 1000);
      ASSERT_EQ(SaaHertz(saa, 4), 500);
      const double own0 = 1000 / 4.0 / (three0 != 0 ? 1 : 2) / 11025;
      const double own1 = 500 / 4.0 / (three1 != 0 ? 1 : 2) / 11025;
      const bool borrowed = mode == 2 || mode == 6;
      for (int frame = 0; frame < 4; ++frame) {
        Render(saa);
        ExpectEnvelope(saa.SaaEnv0, mode, own0, frame);
        ExpectEnvelope(saa.SaaEnv1, mode, borrowed ? own0 : own1, frame);
      }
      const bool repeats = mode == 3 || mode == 5 || mode == 7;
      EXPECT_EQ(saa.SAA_EnvState.phase[0] != 0, repeats);
    }
  }
}

TEST(SaaEnvelope, RepeatingPhaseIsKeptAsAFloat) {
  Saa1099 saa = On({{0, 1}, {9, 77}, {16, 0x50}, {24, 3 << 1}});
  float phase = 0;
  const double step = SaaHertz(saa, 1) / 4.0 / 2.0 / 11025.0;
  for (int frame = 0; frame < 1000; ++frame) {
    Render(saa);
    for (int i = 0; i < kFrameSamples; ++i) {
      if (phase >= 1.0F) phase -= 1.0F;
      ASSERT_EQ(saa.SaaEnv0[i], NearestByte((1.0 - phase) * 250));
      phase = static_cast<float>(phase + step);
    }
  }
  EXPECT_EQ(saa.SAA_EnvState.phase[0], phase);
}

TEST(SaaEnvelope, SlowTriangleNeverComesDown) {
  // 31 / 4 / 2 Hz: a twelfth of a turn in a frame, begun anew in each.
  Saa1099 saa = On({{0, 1}, {24, 4 << 1}});
  for (int frame = 0; frame < 3; ++frame) {
    Render(saa);
    EXPECT_EQ(saa.SaaEnv0[0], 0);
    EXPECT_TRUE(std::is_sorted(saa.SaaEnv0.begin(), saa.SaaEnv0.begin() + kFrameSamples));
    EXPECT_EQ(saa.SaaEnv0[440], NearestByte(500 * 440 * 31 / 8.0 / 11025));
  }
}

TEST(SaaEnvelope, AppliedToChannels2And5) {
  for (int envelope = 0; envelope < 2; ++envelope) {
    for (int bits = 0; bits < 4; ++bits) {
      const bool enable = bits >= 2, invert = bits % 2 == 1;
      const int c = 3 * envelope + 2;
      Writes writes{{20, 63}, {21, 36}, {9, 200}, {12, 100}, {16, 0x50}, {17, 0x05}, {18, 0x55}};
      for (int channel = 0; channel < 6; ++channel) writes.push_back({channel, 0x9F});
      Saa1099 plain = On(writes);
      writes.push_back({24 + envelope, (enable ? 0x80 : 0) | (invert ? 1 : 0) | 5 << 1});
      Saa1099 saa = On(writes);
      Render(plain);
      Render(saa);
      const auto& shape = envelope == 0 ? saa.SaaEnv0 : saa.SaaEnv1;
      for (int channel = 0; channel < 6; ++channel) {
        for (int i = 0; i < kFrameSamples; ++i) {
          double left = plain.SaaLeft[channel][i], right = plain.SaaRight[channel][i];
          if (enable && channel == c) {
            left = left / 255 * (envelope == 1 && !invert ? 1 : shape[i]);
            right = right / 255 * (invert ? 255 - shape[i] : shape[i]);
          }
          ASSERT_EQ(saa.SaaLeft[channel][i], NearestByte(left)) << envelope << ' ' << bits << ' ' << channel;
          ASSERT_EQ(saa.SaaRight[channel][i], NearestByte(right))
              << envelope << ' ' << bits << ' ' << channel;
        }
      }
    }
  }
}

TEST(SaaEnvelope, Envelope1WithoutInversionAllButLosesItsLeftSide) {
  Saa1099 saa = On({{5, 0xFF}, {13, 255}, {18, 0x70}, {20, 32}, {25, 0x82}});
  Render(saa);
  EXPECT_EQ(*std::max_element(saa.SaaLeft[5].begin(), saa.SaaLeft[5].end()), 1);
  EXPECT_EQ(*std::max_element(saa.SaaRight[5].begin(), saa.SaaRight[5].end()),
            NearestByte(128 * 250 / 255.0));
}

TEST(SaaEnvelope, ExternalClockIsNotHeard) {
  Writes writes = kBusy;
  Saa1099 saa = On(writes);
  writes.insert(writes.end(), {{24, 0xA6}, {25, 0xAF}});
  Saa1099 external = On(writes);
  Render(saa, 3);
  Render(external, 3);
  EXPECT_EQ(external.SAA_Env[0].externalClock, 1);
  EXPECT_EQ(saa.SaaOutL, external.SaaOutL);
  EXPECT_EQ(saa.SaaOutR, external.SaaOutR);
}

TEST(SaaPatch, ForcesTheTonesUntilTheNextWrite) {
  for (const int c : {2, 5}) {
    Saa1099 saa = On({{c, 0x88}, {8 + c, 200}, {16 + c / 2, 0x66}, {20, 0}});
    const SaaControls controls{.manual = false, .patch2 = c == 2, .patch5 = c == 5};
    Render(saa, 1, controls);
    EXPECT_NE(saa.SaaOutL, FrameSamples{});
    Render(saa, 1);
    EXPECT_EQ(saa.SAA_Enable[c].tone, 1);
    EXPECT_EQ(saa.SAA_Enable[7 - c].tone, 0);
    EXPECT_NE(saa.SaaOutL, FrameSamples{}) << "also without the box";
    Write(saa, {{20, 0}});
    Render(saa, 1);
    ExpectQuiet(saa);
  }
}

TEST(SaaSum, EighthsOfTheSumLimited) {
  Writes writes{{20, 63}, {21, 63}, {22, 0x10}};
  for (int c = 0; c < 6; ++c) writes.insert(writes.end(), {{c, 0xBF}, {8 + c, 255 - 7 * c}});
  writes.insert(writes.end(), {{16, 0x77}, {17, 0x77}, {18, 0x77}});
  Saa1099 saa = On(writes);
  Random random;
  bool limited = false, tie = false;
  for (int frame = 0; frame < 40; ++frame) {
    SaaRender(saa, {}, random);
    for (int i = 0; i < kFrameSamples; ++i) {
      int left = 0, right = 0;
      for (int c = 0; c < 6; ++c) left += saa.SaaLeft[c][i], right += saa.SaaRight[c][i];
      ASSERT_EQ(saa.SaaOutL[i], std::min(NearestByte(left / 8.0), 120));
      ASSERT_EQ(saa.SaaOutR[i], std::min(NearestByte(right / 8.0), 120));
      limited = limited || left > 8 * 121;
      tie = tie || (left % 8 == 4 && left < 8 * 119);
    }
  }
  EXPECT_TRUE(limited);
  EXPECT_TRUE(tie);
}

TEST(SaaManualWrite, SendsEveryControl) {
  SaaManual manual;
  manual.channel = {{{true, false, 1, 2, 3, 4},
                     {false, true, 15, 0, 255, 7},
                     {true, true, 0, 15, 0, 0},
                     {false, false, 7, 8, 9, 1},
                     {false, true, 5, 5, 128, 2},
                     {true, false, 9, 10, 11, 6}}};
  manual.envelope = {{{true, false, true, false, 5}, {false, true, false, true, 2}}};
  manual.soundEnable = true;
  Saa1099 saa;
  SaaManualWrite(saa, manual);
  for (int c = 0; c < 6; ++c) {
    const SaaManual::Channel& channel = manual.channel[c];
    EXPECT_EQ(saa.SAA_Amp[c], channel.left);
    EXPECT_EQ(saa.SAA_Amp[c + 6], channel.right);
    EXPECT_EQ(saa.SAA_Freq[c].frequency, channel.frequency);
    EXPECT_EQ(saa.SAA_Freq[c].octave, channel.octave);
    EXPECT_EQ(saa.SAA_Enable[c].tone, channel.tone ? 1 : 0);
    EXPECT_EQ(saa.SAA_Enable[c].noise, channel.noise ? 1 : 0);
  }
  for (int e = 0; e < 2; ++e) {
    const SaaManual::Envelope& envelope = manual.envelope[e];
    EXPECT_EQ(saa.SAA_Env[e].enable != 0, envelope.enable);
    EXPECT_EQ(saa.SAA_Env[e].invertRight != 0, envelope.invertRight);
    EXPECT_EQ(saa.SAA_Env[e].externalClock != 0, envelope.externalClock);
    EXPECT_EQ(saa.SAA_Env[e].threeBit != 0, envelope.threeBit);
    EXPECT_EQ(saa.SAA_Env[e].mode, envelope.mode);
  }
  EXPECT_EQ(saa.soundEnable, 1);
  EXPECT_EQ(saa.resetRequest, 0);
  manual.soundEnable = false;
  manual.reset = true;
  SaaManualWrite(saa, manual);
  EXPECT_EQ(saa.soundEnable, 0);
  EXPECT_EQ(saa.resetRequest, 1);
}

TEST(SaaLabels, PicturesAndScope) {
  const char* const pictures[8] = {"_________",    "---------",    R"(\________)", R"(\|\|\|\|\)",
                                   R"(/\_______)", R"(/\/\/\/\/)", "/|_______",    "/|/|/|/|/"};
  for (int mode = 0; mode < 8; ++mode) EXPECT_EQ(std::string(SaaEnvelopePicture(mode)), pictures[mode]);
  struct Row {
    int sample, y;
  };
  for (const Row row : {Row{0, 32}, Row{5, 32}, Row{6, 33}, Row{15, 34}, Row{25, 34}, Row{251, 57}})
    EXPECT_EQ(SaaScopeY(static_cast<uint8_t>(row.sample)), row.y) << row.sample;
}

}  // namespace
}  // namespace quoll
