// The tone interrupt: when the counter ends, what it is reloaded with, when the flag goes down.
#include <gtest/gtest.h>

#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

bool Raised(const Machine& m) { return (m.PortShadow[kStatusPort] & 0x10) == 0; }

TEST(ToneIrqTest, ReloadsBelowOne) {
  struct Case {
    int32_t before, after;
  };
  // Pitch 0x780: (16 - 7) x 256 - 0x80 = 2176, x 16 = 34816.
  constexpr Case kCases[] = {{6, 2}, {5, 1}, {4, 34816}, {3, 34816}, {1, 34816}, {0, 34816}, {-50, 34816}};
  for (const auto& [before, after] : kCases) {
    TestMachine m;
    m->PortShadow[4] = 0x80;
    m->PortShadow[5] = 0x27;
    m->run.ToneItCounter = before;
    Step(*m);
    EXPECT_EQ(m->run.ToneItCounter, after) << before;
    EXPECT_EQ(Raised(*m), after == 34816);
  }
}

TEST(ToneIrqTest, TheFlagNeedsTheBoxAndBitFive) {
  for (const bool box : {false, true}) {
    for (int high = 0; high < 256; high += 16) {
      TestMachine m;
      m->tvcmon.Check3 = box;
      m->PortShadow[5] = static_cast<uint8_t>(high);
      m->run.ToneItCounter = 4;
      Step(*m);
      EXPECT_EQ(m->run.ToneItCounter, 65536);
      EXPECT_EQ(m->PortShadow[kStatusPort], box && (high & 0x20) != 0 ? 0xEF : 0xFF) << high;
    }
  }
}

TEST(ToneIrqTest, TheBoxIsTickedAtFirst) { EXPECT_TRUE(TVCmon().Check3); }

TEST(ToneIrqTest, TheOtherBoxDoesNotCount) {
  TestMachine m;
  m->tvcmon.Check2 = false;
  m->PortShadow[5] = 0x20;
  m->run.ToneItCounter = 4;
  Step(*m);
  EXPECT_TRUE(Raised(*m));
}

// All NOPs, so that the clock is what the passes make it; the model counts pass by pass.
TEST(ToneIrqTest, ARunCountsLikeSinglePasses) {
  for (const int pitch : {0x000, 0x123, 0x780, 0xE00, 0xFF0, 0xFFE, 0xFFF}) {
    TestMachine m;
    m->PortShadow[4] = static_cast<uint8_t>(pitch);
    m->PortShadow[5] = static_cast<uint8_t>(0x20 | pitch >> 8);
    m->run.ToneItCounter = 7;
    const int32_t period = (4096 - pitch) * 16;
    int32_t counter = 7;
    for (int32_t clock = 0; clock <= 62500; clock += 4) {
      counter -= 4;
      if (counter < 1) counter = period;
    }
    RunOn(*m);
    EXPECT_EQ(m->run.ToneItCounter, counter) << pitch;
    EXPECT_TRUE(Raised(*m));
    EXPECT_EQ(m->run.FrameClock, 4);
  }
}

TEST(ToneIrqTest, ItInterruptsARunAtItsMoment) {
  for (int32_t counter = 1; counter < 40; ++counter) {
    TestMachine m;
    m->PortShadow[5] = 0x20;
    m->z80.PC = 0x4000;
    m->z80.SP = 0x9000;
    m->z80.IM = m->z80.IFF1 = 1;
    m->run.ToneItCounter = counter;
    Put(*m, 0x0038, {0xFD, 0xF3});
    RunOn(*m);
    const int32_t passes = (counter + 3) / 4;  // NOPs until the counter is below 1
    EXPECT_EQ(Word(*m, 0x8FFE), 0x4000 + passes + 1) << counter;
    EXPECT_EQ(m->run.FrameClock, 4 * passes + 4 + 11);
    EXPECT_EQ(m->run.ToneItCounter, 65536 - 4 - 11);
  }
}

// A pitch written in a run counts from the next reload on.
TEST(ToneIrqTest, ANewPitchWaitsForTheReload) {
  TestMachine m;
  m->z80.PC = 0x4000;
  // LD A,0FFh  OUT (4),A  LD A,2Eh  OUT (5),A: 36 T-states; period (4096 - 0xEFF) x 16 = 4112
  Put(*m, 0x4000, {0x3E, 0xFF, 0xD3, 0x04, 0x3E, 0x2E, 0xD3, 0x05});
  Put(*m, 0x4008 + 20, {0xFD, 0xF3});
  m->run.ToneItCounter = 60;
  RunOn(*m);
  // 36 + 24 = 60: six NOPs, the reload, fourteen NOPs more.
  EXPECT_EQ(m->run.ToneItCounter, 4112 - 56);
  EXPECT_TRUE(Raised(*m));
}

TEST(ToneIrqTest, ReadingPort5BPutsItOff) {
  TestMachine m;
  m->PortShadow[5] = 0x20;
  Program(*m, 0x4000, {0xDB, 0x5B});
  Put(*m, 0x4002 + 100, {0xFD, 0xF3});
  m->run.ToneItCounter = 20;
  RunOn(*m);
  EXPECT_EQ(m->run.ToneItCounter, 65536 - 11 - 400);
  EXPECT_FALSE(Raised(*m));
}

TEST(ToneIrqTest, ReadingPort5BCanAlsoBringItNearer) {
  TestMachine m;
  m->PortShadow[4] = 0xFE;
  m->PortShadow[5] = 0x2F;  // 32 T-states
  m->z80.SP = 0x9000;
  m->z80.IM = m->z80.IFF1 = 1;
  Program(*m, 0x4000, {0xDB, 0x5B});
  Put(*m, 0x0038, {0xFD, 0xF3});
  RunOn(*m);
  // 32 - 11 = 21: six NOPs, the seventh lets the interrupt in.
  EXPECT_EQ(Word(*m, 0x8FFE), 0x4009);
}

}  // namespace

}  // namespace quoll::test
