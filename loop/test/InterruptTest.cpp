// The maskable interrupt as the pass serves it, in single passes and in runs.
#include <gtest/gtest.h>

#include "loop/test/IrqMachine.h"

namespace quoll::test {

namespace {

TEST(InterruptTest, AcceptancePushesJumpsAndTakesElevenTStates) {
  TestMachine m = IrqMachine();
  m->z80.IFF1 = m->z80.IFF2 = m->z80.IrqLine = 1;
  Step(*m);
  EXPECT_EQ(StandingOf(*m), (Standing{0x38, 0x8FFE, 0, 0, 1, 15}));
  EXPECT_EQ(Pushed(*m), 0x1001);
  EXPECT_EQ(m->z80.R, 2);
  EXPECT_EQ(m->run.Cycles, 15);
  EXPECT_EQ(m->run.ToneItCounter, kNoToneSoon - 15);
  EXPECT_EQ(m->run.PrevPc, 0x1000);
}

TEST(InterruptTest, NothingIsAcceptedWithoutTheFlipFlopOrTheLine) {
  for (const int pending : {0, 1, 2}) {
    TestMachine m = IrqMachine();
    m->z80.IFF1 = pending == 1 ? 1 : 0;
    m->z80.IFF2 = 1;
    m->z80.IrqLine = pending == 2 ? 1 : 0;
    Step(*m);
    EXPECT_EQ(m->z80.PC, 0x1001);
    EXPECT_EQ(m->run.FrameClock, 4);
  }
}

TEST(InterruptTest, HaltIsLeftBeforeTheAddressIsPushed) {
  for (const bool inARun : {false, true}) {
    TestMachine m = IrqMachine();
    Put(*m, 0x1000, {0x76});
    m->z80.IFF1 = m->z80.IrqLine = 1;
    RunOrStep(*m, inARun, 1);
    EXPECT_EQ(Pushed(*m), 0x1001);
    EXPECT_EQ(m->z80.Halted, 0);
    EXPECT_EQ(m->run.FrameClock, 15);
    EXPECT_EQ(m->z80.PC, inARun ? 0x3A : 0x38);
  }
}

TEST(InterruptTest, EiLetsAPendingLineInAtItsOwnEnd) {
  for (const bool inARun : {false, true}) {
    TestMachine m = IrqMachine();
    Put(*m, 0x1000, {0x00, 0xFB, 0x00, 0x00});  // NOP  EI  NOP  NOP
    m->z80.IrqLine = 1;
    RunOrStep(*m, inARun, 2);
    EXPECT_EQ(Pushed(*m), 0x1002);
    EXPECT_EQ(m->run.FrameClock, 4 + 4 + 11);
  }
}

TEST(InterruptTest, EiWithOnlyAFlagRaisesTheLineFirst) {
  for (const bool inARun : {false, true}) {
    for (const int flag : {0x01, 0x02, 0x04, 0x08, 0x10}) {
      TestMachine m = IrqMachine();
      Put(*m, 0x1000, {0x00, 0xFB, 0x00, 0x00});
      m->PortShadow[kStatusPort] = static_cast<uint8_t>(0xFF - flag);
      if (inARun) {
        RunOn(*m);
      } else {
        Step(*m);
        EXPECT_EQ(m->z80.IrqLine, 0);  // interrupts disabled: the line stays down
        Step(*m);
        EXPECT_EQ(m->z80.IrqLine, 1);
        EXPECT_EQ(m->z80.PC, 0x1002);
        Step(*m);
      }
      EXPECT_EQ(Pushed(*m), 0x1003);
      EXPECT_EQ(m->run.FrameClock, 4 + 4 + 4 + 11);
    }
  }
}

TEST(InterruptTest, BitsFiveToSevenOfTheStatusAreNoFlags) {
  TestMachine m = IrqMachine();
  m->z80.IFF1 = 1;
  m->PortShadow[kStatusPort] = 0x1F;
  Step(*m);
  EXPECT_EQ(m->z80.IrqLine, 0);
}

TEST(InterruptTest, RetnBringsInterruptsBackAtOnce) {
  for (const bool inARun : {false, true}) {
    TestMachine m = IrqMachine();
    Put(*m, 0x1000, {0x00, 0xED, 0x45});
    Put(*m, 0x9000, {0x00, 0x20});
    m->z80.IFF2 = 1;
    m->z80.IrqLine = 1;
    RunOrStep(*m, inARun, 2);
    EXPECT_EQ(m->z80.SP, 0x9000);
    EXPECT_EQ(Word(*m, 0x9000), 0x2000);
    EXPECT_EQ(m->run.FrameClock, 4 + 14 + 11);
  }
}

TEST(InterruptTest, TheLineStaysUntilPortSevenIsWritten) {
  TestMachine m = IrqMachine();
  Put(*m, 0x0038, {0xFB});  // a handler of EI alone: taken again and again
  m->z80.IFF1 = m->z80.IrqLine = 1;
  for (int i = 0; i < 4; ++i) Step(*m);
  EXPECT_EQ(m->z80.SP, 0x9000 - 8);
  EXPECT_EQ(m->z80.PC, 0x38);
  EXPECT_EQ(m->z80.IrqLine, 1);
}

TEST(InterruptTest, TheLineOutlivesTheFlag) {
  TestMachine m = IrqMachine();
  m->z80.IrqLine = 1;
  m->PortShadow[kStatusPort] = 0xFF;
  m->z80.A = 0;
  Put(*m, 0x1000, {0xD3, 0x58, 0xD3, 0x5B, 0x00});  // card flags are set: the line is not theirs
  for (int i = 0; i < 3; ++i) Step(*m);
  EXPECT_EQ(m->z80.IrqLine, 1);
}

TEST(InterruptTest, AHandlerThatWritesPortSevenIsDone) {
  for (const bool inARun : {false, true}) {
    TestMachine m = IrqMachine();
    Put(*m, 0x1000, {0x3E, 0x00, 0x3C, 0x3C, 0xFD, 0xF3});  // LD A,0  INC A  INC A  (stop)
    Put(*m, 0x0038, {0xD3, 0x07, 0xFB, 0xC9});              // OUT (7),A  EI  RET
    m->z80.IFF1 = 1;
    m->PortShadow[kStatusPort] = 0xEF;
    RunOrStep(*m, inARun, 6);
    // The line rises at the end of LD, INC lets it in, the handler runs once.
    EXPECT_EQ(m->z80.A, 2);
    EXPECT_EQ(m->z80.SP, 0x9000);
    EXPECT_EQ(Pushed(*m), 0x1003);
    EXPECT_EQ(m->PortShadow[kStatusPort], 0xFF);
    EXPECT_EQ(m->z80.IrqLine, 0);
    EXPECT_EQ(m->z80.IFF1, 1);
    EXPECT_EQ(m->run.FrameClock, 7 + 4 + 11 + 11 + 4 + 10 + 4);
  }
}

TEST(InterruptTest, ACardFlagComesBackAfterPortSeven) {
  TestMachine m = IrqMachine();
  Put(*m, 0x0038, {0xD3, 0x07, 0xFB, 0xC9});
  m->z80.IFF1 = 1;
  m->PortShadow[kStatusPort] = 0xFB;  // card 2
  Step(*m);                           // line up
  Step(*m);                           // accepted
  Step(*m);                           // OUT (7)
  EXPECT_EQ(m->z80.IrqLine, 0);
  EXPECT_EQ(m->PortShadow[kStatusPort], 0xFB);
  Step(*m);  // EI: the flag raises the line again
  EXPECT_EQ(m->z80.IrqLine, 1);
  Step(*m);  // RET lets it in
  EXPECT_EQ(m->z80.PC, 0x38);
  EXPECT_EQ(Pushed(*m), 0x1002);
}

TEST(InterruptTest, OtherModesStopTheRun) {
  for (const int mode : {0, 2}) {
    for (const bool halted : {false, true}) {
      for (const bool inARun : {false, true}) {
        TestMachine m = IrqMachine();
        m->z80.IM = mode;
        m->z80.IFF1 = m->z80.IFF2 = m->z80.IrqLine = 1;
        if (halted) Put(*m, 0x1000, {0x76});
        const auto image = m->MemImage;
        RunOrStep(*m, inARun, 1);
        ASSERT_EQ(m.host.messages.size(), 1U);
        EXPECT_EQ(m.host.messages[0].text, "IM MODE 0 or 2 not allowed!");
        EXPECT_EQ(m->run.CpuRunning, 0);
        EXPECT_EQ(StandingOf(*m), (Standing{0x1001, 0x9000, 0, 0, 1, 4}));
        EXPECT_EQ(m->z80.Halted, 0);
        EXPECT_EQ(m->z80.R, 1);
        EXPECT_TRUE(m->MemImage == image);
        Step(*m);  // once only
        EXPECT_EQ(m.host.messages.size(), 1U);
      }
    }
  }
}

// Interrupts come between the repeats of a block instruction.
TEST(InterruptTest, ABlockInstructionIsInterruptedAndGoesOn) {
  TestMachine m = IrqMachine();
  m->z80.H = 0x40;
  m->z80.D = 0x50;
  m->z80.L = m->z80.E = m->z80.B = 0;
  m->z80.C = 5;
  Put(*m, 0x1000, {0xED, 0xB0});
  Put(*m, 0x4000, {1, 2, 3, 4, 5});
  m->z80.IFF1 = 1;
  Step(*m);
  m->z80.IrqLine = 1;
  Step(*m);
  EXPECT_EQ(m->z80.PC, 0x38);
  EXPECT_EQ(Pushed(*m), 0x1000);  // back to the instruction
  EXPECT_EQ(m->MemImage[0x5001], 2);
  EXPECT_EQ(m->MemImage[0x5002], 0);
  EXPECT_EQ(m->run.FrameClock, 21 + 21 + 11);
}

}  // namespace

}  // namespace quoll::test
