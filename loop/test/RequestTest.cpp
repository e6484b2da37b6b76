// Requests for an NMI or a reset, and the instructions by which a program makes them.
#include <gtest/gtest.h>

#include "loop/test/IrqMachine.h"

namespace quoll::test {

namespace {

TEST(RequestTest, NmiIsTakenAfterEveryInstruction) {
  TestMachine m = IrqMachine();
  Put(*m, 0x0066, {0x00});
  m->z80.IFF1 = 1;
  m->run.NmiRequest = 1;
  Step(*m);
  EXPECT_EQ(StandingOf(*m), (Standing{0x66, 0x8FFE, 0, 1, 0, 15}));
  EXPECT_EQ(Pushed(*m), 0x1001);
  EXPECT_EQ(m->z80.R, 2);
  EXPECT_EQ(m->run.NmiRequest, 1);
  for (int i = 2; i <= 5; ++i) {
    Step(*m);
    EXPECT_EQ(StandingOf(*m), (Standing{0x66, 0x9000 - 2 * i, 0, 0, 0, 15 * i}));
  }
  EXPECT_EQ(m->MemImage[0x8FFC], 0x67);
  m->run.ResetRequest = 1;
  Step(*m);
  EXPECT_EQ(m->run.NmiRequest, 0);
  EXPECT_EQ(m->z80.PC, 0);
}

TEST(RequestTest, NmiGoesBeforeTheInterruptAndLeavesHalt) {
  TestMachine m = IrqMachine();
  Put(*m, 0x1000, {0x76});
  m->z80.IFF1 = m->z80.IFF2 = m->z80.IrqLine = 1;
  m->run.NmiRequest = 1;
  Step(*m);
  EXPECT_EQ(StandingOf(*m), (Standing{0x66, 0x8FFE, 0, 1, 1, 15}));  // one acceptance
  EXPECT_EQ(Pushed(*m), 0x1001);
  EXPECT_EQ(m->z80.Halted, 0);
}

TEST(RequestTest, ResetWinsAndCountsThreeTStates) {
  for (const bool nmi : {false, true}) {
    for (const bool halted : {false, true}) {
      TestMachine m = IrqMachine();
      if (halted) Put(*m, 0x1000, {0x76});
      m->z80.IFF1 = m->z80.IrqLine = 1;
      m->run.ResetRequest = 1;
      m->run.NmiRequest = nmi ? 1 : 0;
      const auto image = m->MemImage;
      Step(*m);
      EXPECT_EQ(StandingOf(*m), (Standing{0, 0xFFFF, 0, 0, 0, 7}));
      EXPECT_EQ(m->z80.R, 0);
      EXPECT_EQ(m->z80.Halted, 0);
      EXPECT_EQ(m->run.ResetRequest, 0);
      EXPECT_EQ(m->run.NmiRequest, 0);
      EXPECT_EQ(m->run.Cycles, 7);
      EXPECT_EQ(m->run.ToneItCounter, kNoToneSoon - 7);
      EXPECT_EQ(m->PortShadow[2], 0);
      EXPECT_EQ(m->PortShadow[kStatusPort], 0xBF);
      EXPECT_EQ(m->run.PcHistory[9], 0x1000);
      EXPECT_TRUE(m->MemImage == image);
    }
  }
}

// The reset's pitch is what the tone counter is reloaded with when both fall into one pass.
TEST(RequestTest, AToneCounterThatEndsWithTheReset) {
  TestMachine m = IrqMachine();
  m->PortShadow[5] = 0x00;
  m->run.ToneItCounter = 7;
  m->run.ResetRequest = 1;
  Step(*m);
  EXPECT_EQ(m->run.ToneItCounter, 4096);        // port 5 is 0xFF, port 4 is 0
  EXPECT_EQ(m->PortShadow[kStatusPort], 0xAF);  // 0xBF with the flag down
}

TEST(RequestTest, ProgramsDriveTheEmulator) {
  for (const bool inARun : {false, true}) {
    TestMachine m = IrqMachine();
    Put(*m, 0x1000, {0x00, 0xFD, 0xF0, 0x00, 0x00});
    m->z80.IFF1 = 1;
    RunOrStep(*m, inARun, 2);
    EXPECT_EQ(Pushed(*m), 0x1003);  // let in at the end of its own pass
    EXPECT_EQ(m->run.FrameClock, 4 + 0 + 11);
    EXPECT_EQ(m->z80.R, 2);
  }
}

TEST(RequestTest, FDF0DoesNothingWhileInterruptsAreDisabled) {
  TestMachine m = IrqMachine();
  Put(*m, 0x1000, {0xFD, 0xF0});
  Step(*m);
  EXPECT_EQ(m->z80.IrqLine, 0);
  EXPECT_EQ(m->z80.PC, 0x1002);
}

TEST(RequestTest, FDF1RequestsAnNmi) {
  for (const bool inARun : {false, true}) {
    TestMachine m = IrqMachine();
    Put(*m, 0x1000, {0x00, 0xFD, 0xF1, 0x00, 0x00});
    RunOrStep(*m, inARun, 2);
    EXPECT_EQ(Pushed(*m), 0x1003);
    EXPECT_EQ(m->run.NmiRequest, 1);
    EXPECT_EQ(m.host.beeps[0], std::make_pair(600, 500));
    EXPECT_EQ(m->run.FrameClock, inARun ? 4 + 11 + 11 : 4 + 11);  // taken again after the stop
  }
}

TEST(RequestTest, FDF2RequestsAReset) {
  for (const bool inARun : {false, true}) {
    TestMachine m = IrqMachine();
    Put(*m, 0x1000, {0x00, 0xFD, 0xF2, 0x00, 0x00});
    Put(*m, 0x18000, {0xFD, 0xF3});  // the system ROM's first instruction stops
    RunOrStep(*m, inARun, 2);
    EXPECT_EQ(m->z80.PC, inARun ? 2 : 0);
    EXPECT_EQ(m->run.FrameClock, 4 + 3);
    EXPECT_EQ(m->run.PcHistory[inARun ? 8 : 9], 0x1001);
    EXPECT_EQ(m.host.beeps[0], std::make_pair(600, 500));
  }
}

TEST(RequestTest, FDF3StopsAtTheEndOfItsPass) {
  TestMachine m = IrqMachine();
  Put(*m, 0x1000, {0x00, 0xFD, 0xF3, 0x3C});
  RunOn(*m);
  EXPECT_EQ(m->z80.PC, 0x1003);
  EXPECT_EQ(m->z80.A, 255);
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_EQ(m->run.FrameClock, 4);
  EXPECT_EQ(m.host.beeps, (std::vector<std::pair<int, int>>{{600, 200}}));
}

}  // namespace

}  // namespace quoll::test
