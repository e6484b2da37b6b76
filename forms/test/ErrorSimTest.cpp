#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>

#include "display/test/SlowPicture.h"
#include "forms/ErrorSim.h"
#include "forms/Forms.h"
#include "loop/Redraw.h"
#include "machine/Machine.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

enum Choice { kZero, kOne, kRandom };

ErrorSim Sim(int mask, Choice choice) {
  ErrorSim sim;
  for (int i = 0; i < 8; ++i) sim.CH0[i] = ((mask >> i) & 1) != 0;
  sim.Option1 = {choice == kZero, choice == kOne, choice == kRandom};
  return sim;
}

TEST(VidErr, MaskIsTheSumOfTheTicks) {
  EXPECT_EQ(VidErrMask(ErrorSim{}), 0);
  for (int mask = 0; mask < 256; ++mask) EXPECT_EQ(VidErrMask(Sim(mask, kZero)), mask);
}

TEST(VidErr, ZeroClearsAndOneSets) {
  Random random;
  const Random before = random;
  for (int mask = 0; mask < 256; ++mask) {
    const ErrorSim zero = Sim(mask, kZero), one = Sim(mask, kOne);
    for (int byte = 0; byte < 256; ++byte) {
      ASSERT_EQ(VidErr(zero, random, static_cast<uint8_t>(byte)), byte & ~mask);
      ASSERT_EQ(VidErr(one, random, static_cast<uint8_t>(byte)), byte | mask);
    }
  }
  EXPECT_EQ(random, before);
}

TEST(VidErr, RandomTakesANumberForEachBitOfTheMask) {
  Random random, follow;
  RandomSeed(random, 4711);
  RandomSeed(follow, 4711);
  int set = 0;
  for (int round = 0; round < 20000; ++round) {
    const int mask = (round * 73) & 255, byte = (round * 31) & 255;
    int expected = byte;
    for (int bit = 1; bit <= 128; bit *= 2) {
      if ((mask & bit) == 0) continue;
      if (std::nearbyint(RandomNext(follow)) == 0) {
        expected |= bit;
        ++set;
      } else {
        expected &= ~bit;
      }
    }
    ASSERT_EQ(VidErr(Sim(mask, kRandom), random, static_cast<uint8_t>(byte)), expected);
  }
  EXPECT_EQ(random, follow);
  EXPECT_NEAR(set, 40000, 1000);  // half of the 80000 or so bits
}

TEST(VidErr, NoOptionNoChange) {
  ErrorSim sim = Sim(255, kZero);
  sim.Option1 = {false, false, false};
  Random random;
  EXPECT_EQ(VidErr(sim, random, 0x5A), 0x5A);
}

struct ErrorRedraw : testing::Test {
  TestMachine machine;
  Machine& m = *machine;

  void SetUp() override {
    FillMemory(m, 3);
    SetCrtc(m, 64, 60, 0, 0);
  }
};

TEST_F(ErrorRedraw, DamagesThePageButItsLastBytes) {
  m.errorsim = Sim(0x0F, kOne);
  m.errorsim.Check1 = true;
  auto expected = m.MemImage;
  for (int32_t a = 0x10000; a <= 0x13FAC; ++a) expected[a] |= 0x0F;
  redraw(m);
  EXPECT_TRUE(m.MemImage == expected);

  m.errorsim = Sim(0xF0, kZero);
  m.errorsim.Check1 = true;
  for (int32_t a = 0x10000; a <= 0x13FAC; ++a) expected[a] &= 0x0F;
  redraw(m);
  EXPECT_TRUE(m.MemImage == expected);
}

TEST_F(ErrorRedraw, RandomBitsInOrderOfAddress) {
  m.errorsim = Sim(0x81, kRandom);
  m.errorsim.Check1 = true;
  RandomSeed(m.random, 77);
  Random follow = m.random;
  auto expected = m.MemImage;
  for (int32_t a = 0x10000; a <= 0x13FAC; ++a) {
    for (const int bit : {0x01, 0x80}) {
      const bool one = RandomNext(follow) <= 0.5;
      expected[a] = static_cast<uint8_t>(one ? expected[a] | bit : expected[a] & ~bit);
    }
  }
  redraw(m);
  EXPECT_TRUE(m.MemImage == expected);
  EXPECT_EQ(m.random, follow);
}

TEST_F(ErrorRedraw, NoMaskOrNotEnabled) {
  const auto before = m.MemImage;
  m.errorsim = Sim(0, kRandom);
  m.errorsim.Check1 = true;
  redraw(m);
  EXPECT_TRUE(m.MemImage == before);
  m.errorsim = Sim(255, kOne);
  redraw(m);
  EXPECT_TRUE(m.MemImage == before);
}

TEST_F(ErrorRedraw, AllBitsOneFillTheScreenAtOnce) {
  m.screen.xScreenDIB = false;
  m.errorsim = Sim(255, kOne);
  m.errorsim.Check1 = true;
  m.PortShadow[6] = 2;
  redraw(m);
  // 16 colours, 0xFF everywhere: bright white.
  for (size_t i = 0; i < 2048; ++i) ASSERT_EQ(m.picture.ScreenBits[i], i % 4 == 3 ? 0 : 255) << i;
}

TEST_F(ErrorRedraw, MissingSystemChips) {
  for (int ticks = 0; ticks < 16; ++ticks) {
    FillMemory(m, 11);
    auto expected = m.MemImage;
    m.errorsim = ErrorSim{};  // not enabled: these ticks stand for themselves
    m.errorsim.Check2 = (ticks & 1) != 0;
    m.errorsim.Check3 = (ticks & 2) != 0;
    m.errorsim.Check4 = (ticks & 4) != 0;
    m.errorsim.Check5 = (ticks & 8) != 0;
    for (int32_t a = 0; a < 0x10000; ++a)
      if (((ticks >> (a / 0x4000)) & 1) != 0) expected[a] = 0xAA;
    redraw(m);
    EXPECT_TRUE(m.MemImage == expected) << ticks;
    m.errorsim = ErrorSim{};
    redraw(m);
    EXPECT_TRUE(m.MemImage == expected) << ticks << ", damage lasts";
  }
}

TEST_F(ErrorRedraw, NotWithoutTheScreenTick) {
  const auto before = m.MemImage;
  m.errorsim = Sim(255, kOne);
  m.errorsim.Check1 = m.errorsim.Check2 = m.errorsim.Check5 = true;
  m.cpumon.Check5 = false;
  redraw(m);
  EXPECT_TRUE(m.MemImage == before);
}

TEST_F(ErrorRedraw, Controls) {
  EXPECT_EQ(kErrorSim.controls.size(), 7U);
  const auto field = [this](std::string_view name, int index = 0) {
    return FieldOf<bool>(m, TheControl("ErrorSim", name, index));
  };
  EXPECT_EQ(field("Check1"), &m.errorsim.Check1);
  EXPECT_EQ(field("Check2"), &m.errorsim.Check2);
  EXPECT_EQ(field("Check3"), &m.errorsim.Check3);
  EXPECT_EQ(field("Check4"), &m.errorsim.Check4);
  EXPECT_EQ(field("Check5"), &m.errorsim.Check5);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(field("CH0", i), &m.errorsim.CH0[static_cast<size_t>(i)]);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(field("Option1", i), &m.errorsim.Option1[static_cast<size_t>(i)]);
  EXPECT_EQ(field("CH0", 8), nullptr);
  EXPECT_EQ(field("Option1", 3), nullptr);
  EXPECT_EQ(TheControl("ErrorSim", "Option1").control->kind, ControlKind::Option);

  const auto choose = [this](int option, bool on) {
    SetTick(m, TheControl("ErrorSim", "Option1", option), on);
  };
  choose(2, true);
  EXPECT_EQ(m.errorsim.Option1, (std::array<bool, 3>{false, false, true}));
  choose(1, true);
  EXPECT_EQ(m.errorsim.Option1, (std::array<bool, 3>{false, true, false}));
  choose(0, false);  // not set: nothing was chosen
  choose(-1, true);
  choose(3, true);
  EXPECT_EQ(m.errorsim.Option1, (std::array<bool, 3>{false, true, false}));
}

}  // namespace
}  // namespace quoll::test
