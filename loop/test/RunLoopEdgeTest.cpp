// Programs that never reach a frame's end, and programs that leave the memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

constexpr int32_t kPasses = 65536;  // between two calls of Host::Stalled

TEST(NoTimeTest, AJumpOntoItselfComesUpForAir) {
  TestMachine m;
  m.host.stallsAllowed = 3;
  m->z80.R = 77;
  m->z80.CurOpcode = 0xDA;
  m->run.FrameClock = 1000;
  m->run.Cycles = 2000;
  Program(*m, 0x1000, {0xDA, 0x00, 0x10});  // JP C,1000
  const auto before = CopyOf(*m);
  m.host.onStalled = [&](Machine& machine) {
    EXPECT_TRUE(machine.z80 == before->z80);  // R has gone round as well
    EXPECT_EQ(machine.run.PcHistory[0], 0x1000);
  };
  RunOn(*m);
  EXPECT_EQ(m.host.stalls, 3);
  EXPECT_TRUE(m->z80 == before->z80);
  EXPECT_TRUE(m->MemImage == before->MemImage);
  EXPECT_TRUE(m->PortShadow == before->PortShadow);
  EXPECT_EQ(m->run.FrameClock, 1000);
  EXPECT_EQ(m->run.Cycles, 2000);
  EXPECT_EQ(m->run.TotalCycles, 0);
  EXPECT_EQ(m->run.ToneItCounter, kNoToneSoon);
  for (size_t i = 0; i < 10; ++i) EXPECT_EQ(m->run.PcHistory[i], 0x1000);
  EXPECT_TRUE(m.host.events.empty());  // no frame has passed, nothing was drawn
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_EQ(Redraws(*m), 1);
}

// A ring of jumps tells how many passes there were.
TEST(NoTimeTest, EveryTimeAfter65536Passes) {
  constexpr int32_t kRing = 9973;
  TestMachine m;
  m.host.stallsAllowed = 4;
  m->z80.PC = 0x1000;
  for (int32_t i = 0; i < kRing; ++i) {
    const int32_t target = i + 1 < kRing ? 0x1000 + 3 * (i + 1) : 0x1000;
    Put(*m, 0x1000 + 3 * i, {0xDA, target & 0xFF, target >> 8});
  }
  m.host.onStalled = [&](Machine& machine) {
    const int32_t place = static_cast<int32_t>(int64_t{m.host.stalls} * kPasses % kRing);
    EXPECT_EQ(machine.z80.PC, 0x1000 + 3 * place) << m.host.stalls;
  };
  RunOn(*m);
  EXPECT_EQ(m.host.stalls, 4);
}

TEST(NoTimeTest, UnknownOpcodesCountAsWell) {
  TestMachine m;
  m->z80.PC = 0x1000;
  // Two passes to a round: DD 00 is unknown, JP C,1000.
  Put(*m, 0x1000, {0xDD, 0x00, 0xDA, 0x00, 0x10});
  RunOn(*m);
  EXPECT_EQ(m.host.stalls, 1);
  EXPECT_EQ(m->z80.PC, 0x1000);
  EXPECT_EQ(m->z80.R, kPasses / 2 % 256);  // only the jump counts it up
  EXPECT_EQ(m->run.FrameClock, 0);
}

TEST(NoTimeTest, TheHostCanBreakTheLoopByChangingTheMachine) {
  struct Case {
    void (*change)(Machine&);
    int32_t pc, clock;
  };
  for (const auto& [change, pc, clock] : {
           Case{[](Machine& machine) { machine.z80.FlagC = 0; }, 0x1005, 6},
           Case{[](Machine& machine) { machine.run.ResetRequest = 1; }, 2, 3},  // served
       }) {
    TestMachine m;
    m.host.stallsAllowed = 100;
    Program(*m, 0x1000, {0xDA, 0x00, 0x10, 0xFD, 0xF3});
    Put(*m, 0x18000, {0xFD, 0xF3});
    m.host.onStalled = change;
    RunOn(*m);
    EXPECT_EQ(m.host.stalls, 1);
    EXPECT_EQ(m->z80.PC, pc);
    EXPECT_EQ(m->run.FrameClock, clock);
  }
}

TEST(NoTimeTest, AProgramThatTakesTimeReachesItsFrames) {
  TestMachine m;
  m.host.stallsAllowed = 1000000;
  Program(*m, 0x1000, {0xDA, 0x03, 0x10, 0x00, 0xDA, 0x00, 0x10});  // JP C  NOP  JP C
  RunOn(*m);
  EXPECT_EQ(m.host.frames, 1);
  EXPECT_EQ(m->run.FrameClock, 4);
  EXPECT_EQ(m->z80.R, (15626 * 3 - 1) % 256);  // the last NOP's jump is still to come
}

// Where the last page of each setting lies in the image, from 0x10000 on.
struct Slide {
  int port2;
  int32_t image;  // less the address
};
constexpr Slide kSlides[] = {{0x30, 0x8000}, {0x70, 0xC000}, {0xB0, 0x0000}, {0xF0, 0x10000}};

TEST(PcTest, NopsLeadPastTheMemoryAndOn) {
  for (const auto& [port2, image] : kSlides) {
    TestMachine m;
    m.host.framesAllowed = 60;  // 3.75 million T-states
    m->PortShadow[2] = static_cast<uint8_t>(port2);
    m->z80.PC = 0xFFF0;
    m->MemImage.fill(0x76);  // HALT wherever the slide must not look
    std::fill(m->MemImage.begin() + image + 0xFFF0, m->MemImage.begin() + image + 0x2C000, uint8_t{0});
    RunOn(*m);
    const int32_t passes = (60 * 62500 + 4) / 4;
    EXPECT_EQ(m->z80.PC, 0xFFF0 + passes) << std::hex << port2;
    EXPECT_EQ(m->z80.Halted, 0);
    EXPECT_EQ(m->z80.R, passes % 256);
    EXPECT_EQ(m->run.FrameClock, 4);
    EXPECT_EQ(m->run.PcHistory[9], m->z80.PC - 1);
    EXPECT_EQ(m->run.PcHistory[0], m->z80.PC - 10);
  }
}

TEST(PcTest, CodeAboveSixteenBitsRuns) {
  for (const bool inARun : {false, true}) {
    for (const auto& [port2, image] : kSlides) {
      TestMachine m;
      m->PortShadow[2] = static_cast<uint8_t>(port2);
      m->z80.PC = 0xFFFF;
      m->MemImage.fill(0x76);
      Put(*m, image + 0xFFFF, {0x3E, 0x12, 0x18, 0x7F});    // LD A,12  JR +127
      Put(*m, image + 0x10003 + 0x7F, {0x47, 0xFD, 0xF3});  // LD B,A  (stop)
      RunOrStep(*m, inARun, 3);
      EXPECT_EQ(m->z80.B, 0x12) << std::hex << port2;
      EXPECT_EQ(m->z80.PC, 0x10083 + (inARun ? 2 : 0));
    }
  }
}

TEST(PcTest, AnInstructionAcrossTheMemorysEnd) {
  for (const bool inARun : {false, true}) {
    TestMachine m;
    m->z80.PC = 0x2BFFE;
    m->MemImage.fill(0x76);
    Put(*m, 0x2BFFE, {0x18, 0x7F});  // JR to 0x2C07F, from where on there are NOPs
    if (inARun) {
      RunOn(*m);
      EXPECT_EQ(m->z80.PC, 0x2C07F + (62504 - 12) / 4);
      EXPECT_EQ(m->run.FrameClock, 4);
    } else {
      Step(*m);
      EXPECT_EQ(m->z80.PC, 0x2C07F);
    }
    m->run.FrameClock = 0;
    Program(*m, 0x2BFFF, {0x3E});  // LD A,n with nothing behind it
    m->z80.A = 0x55;
    Step(*m);
    EXPECT_EQ(m->z80.A, 0);
    EXPECT_EQ(m->z80.PC, 0x2C001);
  }
}

TEST(PcTest, AJumpBelowZeroReadsNops) {
  TestMachine m;
  m->MemImage.fill(0x76);
  m->z80.PC = 0;
  Put(*m, 0x0000, {0x18, 0x80});  // JR to -126, NOPs lead back to 0: 516 T-states a round
  RunOn(*m);
  // 121 rounds are 62436; the jump makes 62448, fourteen NOPs 62504.
  EXPECT_EQ(m->z80.PC, -126 + 14);
  EXPECT_EQ(m->run.FrameClock, 4);
}

TEST(PcTest, FarBelowZeroItClimbs) {
  TestMachine m;
  m.host.framesAllowed = 3;
  m->MemImage.fill(0x76);
  m->z80.PC = -50000;
  RunOn(*m);
  EXPECT_EQ(m->z80.PC, -50000 + 187504 / 4);
}

TEST(PcTest, PastTheHighestNumberItWraps) {
  for (const bool inARun : {false, true}) {
    TestMachine m;
    m->MemImage.fill(0x76);
    m->z80.PC = INT_MAX - 1;
    if (inARun) {
      RunOn(*m);
      EXPECT_EQ(m->z80.PC, INT_MIN + 15626 - 2);
      EXPECT_EQ(m->run.PcHistory[9], m->z80.PC - 1);
      EXPECT_EQ(m->z80.R, 15626 % 256);
    } else {
      Step(*m);
      EXPECT_EQ(m->z80.PC, INT_MAX);
      Step(*m);
      EXPECT_EQ(m->z80.PC, INT_MIN);
      EXPECT_EQ(m->run.PrevPc, INT_MAX);
      Step(*m);
      EXPECT_EQ(m->z80.PC, INT_MIN + 1);
    }
  }
}

TEST(PcTest, PrefixesAndHaltsAtTheHighestNumber) {
  for (const int prefix : {0xDD, 0xFD, 0xDDCB, 0xFDCB, 0xCB, 0xED}) {
    TestMachine m;
    m->z80.PC = INT_MAX;
    m->z80.PrefixState = prefix;
    Step(*m);  // reads zeros whichever way it goes
    EXPECT_EQ(m->z80.PrefixState, 0);
    EXPECT_LT(m->z80.PC, INT_MIN + 4);
  }
  TestMachine m;
  m->z80.PC = INT_MAX;
  m->z80.Halted = 1;
  m->run.NmiRequest = 1;
  m->z80.SP = 0x9000;
  Step(*m);
  EXPECT_EQ(m->z80.PC, 0x66);
  // INT_MIN, and one more for the halt
  EXPECT_EQ(Word(*m, 0x8FFE), 1);
}

TEST(PcTest, ALongPcIsPushedByItsLowSixteenBits) {
  for (const bool inARun : {false, true}) {
    TestMachine m;
    m->z80.SP = 0x9000;
    Program(*m, 0x1FFFE, {0xCD, 0x00, 0x50});  // CALL 5000
    Put(*m, 0x5000, {0xFD, 0xF3});
    RunOrStep(*m, inARun, 1);
    EXPECT_EQ(Word(*m, 0x8FFE), 0x0001);
    EXPECT_EQ(m->z80.PC, inARun ? 0x5002 : 0x5000);
  }
}

}  // namespace

}  // namespace quoll::test
