// The pass: an instruction with its prefixes, R, HALT, the cycle counts, the history, the breakpoint.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

TEST(RunLoopTest, WithoutCpuRunningItIsOnePass) {
  for (const int running : {0, 2, 255}) {  // only 1 keeps looping
    TestMachine m;
    m->z80.PC = 0x1000;
    m->run.CpuRunning = static_cast<uint8_t>(running);
    RunLoop(*m);
    EXPECT_EQ(m->z80.PC, 0x1001);
    EXPECT_EQ(m->z80.R, 1);
    EXPECT_EQ(m->run.Cycles, 4);
    EXPECT_EQ(m->run.FrameClock, 4);
    EXPECT_EQ(m->run.ToneItCounter, kNoToneSoon - 4);
    EXPECT_EQ(m->run.PrevPc, 0x1000);
    EXPECT_EQ(m->run.PcHistory[9], 0x1000);
    EXPECT_EQ(m->run.CpuRunning, running);
    EXPECT_TRUE(m.host.events.empty());
  }
}

TEST(RunLoopTest, ItsEndColoursTheRunButtonAndShowsTheProcessor) {
  TestMachine m;
  m->cpumon.Command1Look.back = kButtonFace;
  Step(*m);
  EXPECT_EQ(m->cpumon.Command1Look.back, 0xFF);
  EXPECT_EQ(Redraws(*m), 1U);
  m->cpumon.Command1Look.back = kButtonFace;
  RunOn(*m);
  EXPECT_EQ(m->cpumon.Command1Look.back, 0xFF);
  EXPECT_EQ(Redraws(*m), 2U);
}

TEST(RunLoopTest, RunZeroesTheCountsAndStepDoesNot) {
  TestMachine m;
  m->run.Cycles = 500;
  m->run.TotalCycles = 125000;
  m->run.FrameClock = 62490;
  CPUmon_Command7_Click(*m);
  EXPECT_EQ(m->run.Cycles, 504);
  EXPECT_EQ(m->run.TotalCycles, 125000);
  m.host.onFrameEnded = [](Machine& machine) {
    EXPECT_EQ(machine.cpumon.Command1Look.back, kButtonFace);
    EXPECT_EQ(machine.run.CpuRunning, 1);
  };
  CPUmon_Command1_Click(*m);  // from 62494 to 62502
  EXPECT_EQ(m->run.Cycles, 8);
  EXPECT_EQ(m->run.TotalCycles, 62500);
  EXPECT_EQ(m->cpumon.Command1Look.back, 0xFF);
}

TEST(RunLoopTest, RIsMaskedAfterEachPass) {
  TestMachine m;
  m->z80.R = 255;
  Step(*m);
  EXPECT_EQ(m->z80.R, 0);
  m->z80.R = 255;
  Program(*m, 0x1000, {0xDB, 0x5B});  // R +3
  Step(*m);
  EXPECT_EQ(m->z80.R, 2);
}

TEST(RunLoopTest, ARunsProgramSeesRMasked) {
  TestMachine m;
  m->z80.PC = 0x1000;
  Put(*m, 0x1000 + 300, {0xED, 0x5F, 0xFD, 0xF3});  // 300 NOPs  LD A,R  (stop)
  RunOn(*m);
  EXPECT_EQ(m->z80.A, 44);
  EXPECT_EQ(m->z80.R, 46);
}

TEST(RunLoopTest, APrefixAndItsInstructionAreOnePass) {
  struct Case {
    std::initializer_list<int> code;
    int length, tStates, refresh;
  };
  const Case cases[] = {{{0xCB, 0x07}, 2, 2, 1},
                        {{0xED, 0x44}, 2, 8, 1},
                        {{0xDD, 0x21, 0x34, 0x12}, 4, 19, 1},
                        {{0xFD, 0x2B}, 2, 10, 2},
                        {{0xDD, 0xCB, 0x05, 0xC6}, 4, 23, 1},
                        {{0xFD, 0xCB, 0x05, 0xC6}, 4, 20, 1},
                        {{0xDD, 0xDD}, 2, 0, 0},
                        {{0xDD, 0x00}, 2, 0, 0},
                        {{0xDD, 0xCB, 0x05, 0x00}, 3, 0, 0},
                        {{0xFD, 0xCB, 0x05, 0x00}, 2, 0, 0}};
  for (const auto& [code, length, tStates, refresh] : cases) {
    TestMachine m;
    m->z80.PC = 0x1000;
    m->z80.IX = m->z80.IY = 0x2000;
    Put(*m, 0x1000, code);
    Step(*m);
    EXPECT_EQ(m->z80.PC, 0x1000 + length);
    EXPECT_EQ(m->run.FrameClock, tStates);
    EXPECT_EQ(m->z80.R, refresh);
    EXPECT_EQ(m->z80.PrefixState, 0);
    EXPECT_EQ(m->run.PcHistory[9], 0x1000);
  }
}

TEST(RunLoopTest, AnUnknownOpcodeOnlyMovesOn) {
  TestMachine m;
  m->z80.UnDocEnabled = 0;
  Program(*m, 0x1000, {0xCB, 0x30});
  Step(*m);
  EXPECT_EQ(m->z80.PC, 0x1002);
  EXPECT_EQ(m->run.FrameClock, 0);
  EXPECT_EQ(m->z80.R, 0);
  EXPECT_EQ(m->screen.Label1, "Unknown Opcode!");
  EXPECT_TRUE(m.host.messages.empty());
}

// A snapshot may have been taken in the midst of an instruction.
TEST(RunLoopTest, AnInstructionIsResumedAfterItsPrefix) {
  struct Case {
    int32_t prefix;
    std::initializer_list<int> code;
    int length, tStates;
  };
  const Case cases[] = {{0xCB, {0x07}, 1, 2},
                        {0xED, {0x44}, 1, 8},
                        {0xDD, {0x21, 0x34, 0x12}, 3, 19},
                        {0xFD, {0x21, 0x34, 0x12}, 3, 19},
                        {0xDD, {0xCB, 0x05, 0xC6}, 3, 23},
                        {0xFD, {0xCB, 0x05, 0xC6}, 3, 20},
                        {0xDDCB, {0x05, 0xC6}, 2, 23},         // displacement at PC
                        {0xFDCB, {0xCB, 0x05, 0xC6}, 3, 20}};  // displacement at PC + 1
  for (const bool inARun : {false, true}) {
    for (const auto& [prefix, code, length, tStates] : cases) {
      SCOPED_TRACE(testing::Message() << "prefix " << std::hex << prefix);
      TestMachine m;
      m->z80.PC = 0x1000;
      m->z80.A = 0x81;
      m->z80.IX = 0x2000;
      m->z80.IY = 0x3000;
      m->z80.PrefixState = prefix;
      Put(*m, 0x1000, code);
      Put(*m, 0x1000 + length, {0xFD, 0xF3});
      RunOrStep(*m, inARun, 1);
      EXPECT_EQ(m->z80.PC, 0x1000 + length + (inARun ? 2 : 0));
      EXPECT_EQ(m->run.FrameClock, tStates);
      EXPECT_EQ(m->z80.R, 1);
      EXPECT_EQ(m->z80.PrefixState, 0);
      const bool bitPage = length != 1 && *code.begin() != 0x21;
      const bool indexX = prefix == 0xDD || prefix == 0xDDCB;
      EXPECT_EQ(m->MemImage[0x2005], bitPage && indexX ? 1 : 0);
      EXPECT_EQ(m->MemImage[0x3005], bitPage && !indexX ? 1 : 0);
      EXPECT_EQ(m->z80.A, prefix == 0xCB ? 0x03 : prefix == 0xED ? 0x7F : 0x81);
      EXPECT_EQ(m->z80.IX, prefix == 0xDD && !bitPage ? 0x1234 : 0x2000);
      EXPECT_EQ(m->z80.IY, prefix == 0xFD && !bitPage ? 0x1234 : 0x3000);
    }
  }
}

TEST(RunLoopTest, AnUnknownPrefixEndsTheProgram) {
  for (const int32_t prefix : {1, 0xCC, 0xDDFD, 0xCBCB, 0xEDCB, 0x10000, INT_MAX, -5}) {
    for (const bool inARun : {false, true}) {
      TestMachine m;
      m->z80.PC = 0x1000;
      m->z80.PrefixState = prefix;
      EXPECT_TRUE(EndsProgram([&] { inARun ? RunOn(*m) : Step(*m); }));
      ASSERT_EQ(m.host.messages.size(), 1U);
      EXPECT_EQ(m.host.messages[0].text, std::to_string(prefix) + "=Unknown prefix");
      EXPECT_EQ(m.host.messages[0].title, "CPU ERROR!");
      EXPECT_EQ(m->run.FrameClock, 0);
    }
  }
}

TEST(RunLoopTest, HaltRestsOnItsOpcode) {
  TestMachine m;
  Program(*m, 0x1000, {0x76});
  for (int pass = 1; pass <= 3; ++pass) {
    Step(*m);
    EXPECT_EQ(m->z80.PC, 0x1000);
    EXPECT_EQ(m->z80.Halted, 1);
    EXPECT_EQ(m->z80.R, pass);
    EXPECT_EQ(m->run.FrameClock, 4 * pass);
    EXPECT_EQ(m->run.PcHistory[9], 0x1000);
  }
  EXPECT_EQ(m->run.PcHistory[6], 0);
}

TEST(RunLoopTest, HaltInARunCountsEveryPass) {
  TestMachine m;
  m.host.framesAllowed = 2;
  Program(*m, 0x1000, {0x76});
  RunOn(*m);
  // 125000 T-states and the excess: 31251 passes.
  EXPECT_EQ(m->run.FrameClock, 4);
  EXPECT_EQ(m->run.Cycles, 4);
  EXPECT_EQ(m->run.TotalCycles, 125000);
  EXPECT_EQ(m->z80.R, 31251 % 256);
  EXPECT_EQ(m->run.ToneItCounter, kNoToneSoon - 125004);
  EXPECT_EQ(m->z80.PC, 0x1000);
  for (size_t i = 0; i < 10; ++i) EXPECT_EQ(m->run.PcHistory[i], 0x1000);
}

TEST(RunLoopTest, CyclesFoldByThemselves) {
  struct Case {
    int32_t before, after;
  };
  constexpr Case kCases[] = {{62496, 62500}, {62497, 1}, {62500, 4}, {100000, 37504}, {0, 4}, {-10, -6}};
  for (const auto& [before, after] : kCases) {
    TestMachine m;
    m->run.Cycles = before;
    Step(*m);
    EXPECT_EQ(m->run.Cycles, after);
    EXPECT_EQ(m->run.FrameClock, 4);
    EXPECT_EQ(m.host.frames, 0);
  }
}

TEST(RunLoopTest, CyclesFoldInTheMidstOfAFrame) {
  TestMachine m;
  m->run.Cycles = 30000;
  RunOn(*m);  // 62504 T-states
  EXPECT_EQ(m->run.FrameClock, 4);
  EXPECT_EQ(m->run.Cycles, 30004);
}

TEST(RunLoopTest, HistoryHoldsTheLastTenAddresses) {
  for (const bool inARun : {false, true}) {
    TestMachine m;
    m->z80.PC = 0x1000;
    // JP 2000; at 2000 LD A,n, 7 NOPs, INC IX (two bytes), NOP, (stop)
    Put(*m, 0x1000, {0xC3, 0x00, 0x20});
    Put(*m, 0x2000, {0x3E, 0x01, 0, 0, 0, 0, 0, 0, 0, 0xDD, 0x23, 0x00, 0xFD, 0xF3});
    RunOrStep(*m, inARun, 12);
    constexpr int32_t kTrail[] = {0x2002, 0x2003, 0x2004, 0x2005, 0x2006,
                                  0x2007, 0x2008, 0x2009, 0x200B, 0x200C};
    for (size_t i = 0; i < 10; ++i) EXPECT_EQ(m->run.PcHistory[i], kTrail[i]) << i;
    EXPECT_EQ(m->run.PrevPc, 0x200C);
  }
}

TEST(RunLoopTest, RepeatedBlockInstructionsStandInTheHistoryAsOftenAsTheyRun) {
  TestMachine m;
  m->z80.PC = 0x1000;
  m->z80.H = m->z80.D = 0x40;
  m->z80.L = 0x00;
  m->z80.E = 0x80;
  m->z80.B = 0;
  m->z80.C = 3;
  Put(*m, 0x0FFE, {0x00, 0x00});
  Put(*m, 0x1000, {0xED, 0xB0, 0xFD, 0xF3});
  RunOn(*m);
  EXPECT_EQ(m->run.FrameClock, 58);
  EXPECT_EQ(m->run.PcHistory[9], 0x1002);
  EXPECT_EQ(m->run.PcHistory[8], 0x1000);
  EXPECT_EQ(m->run.PcHistory[7], 0x1000);
  EXPECT_EQ(m->run.PcHistory[6], 0x1000);
  EXPECT_EQ(m->run.PcHistory[5], 0);
}

// A run with the breakpoint armed, over NOPs and a stop at 0x1010.
int32_t StopsAt(const std::string& text, bool armed, bool address, int32_t start = 0x1000) {
  TestMachine m;
  m->z80.PC = start;
  m->run.BreakArmed = armed ? 1 : 0;
  m->cpumon.Check4 = armed;
  m->cpumon.Check2 = address;
  m->cpumon.Text5 = text;
  Put(*m, start + 0x10, {0xFD, 0xF3});
  RunOn(*m);
  const bool hit = m->z80.PC != start + 0x12;
  EXPECT_EQ(Redraws(*m), hit ? 2U : 1U);  // at the hit, and at the end of the loop
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_EQ(m->run.PcHistory[9], m->z80.PC - (hit ? 1 : 2));  // the pass that reached it is in the history
  return m->z80.PC;
}

TEST(RunLoopTest, BreakpointStopsBeforeItsAddress) {
  EXPECT_EQ(StopsAt("4104", true, true), 0x1008);
  EXPECT_EQ(StopsAt("&H1008", true, true), 0x1008);
  EXPECT_EQ(StopsAt("&H100f", true, true), 0x100F);
  EXPECT_EQ(StopsAt("1008", true, true), 0x1012);  // decimal: 0x3F0
  EXPECT_EQ(StopsAt("4096", true, true), 0x1012);  // where it starts: the test comes after the instruction
  EXPECT_EQ(StopsAt("4104", false, true), 0x1012);
  EXPECT_EQ(StopsAt("4104", true, false), 0x1012);
  EXPECT_EQ(StopsAt("", true, true), 0x1012);
  EXPECT_EQ(StopsAt("&H10003", true, true, 0xFFFF), 0x10003);
  EXPECT_EQ(StopsAt("65539", true, true, 0xFFFF), 0x10003);
}

TEST(RunLoopTest, ABadTextBreaksAtZero) {
  EXPECT_EQ(StopsAt("xyz", true, true, -4), 0);
  EXPECT_EQ(StopsAt("", true, true, -4), 0);
  EXPECT_EQ(StopsAt("&HZ", true, true, -4), 0);
  EXPECT_EQ(StopsAt("xyz", true, false, -4), 14);
}

TEST(RunLoopTest, BreakpointAtAnInterruptsEntry) {
  TestMachine m;
  m->z80.PC = 0x1000;
  m->z80.SP = 0x8000;
  m->z80.IM = 1;
  m->z80.IFF1 = m->z80.IrqLine = 1;
  m->run.BreakArmed = 1;
  m->cpumon.Check2 = true;
  m->cpumon.Text5 = "&H38";
  RunOn(*m);
  EXPECT_EQ(m->z80.PC, 0x38);
  EXPECT_EQ(m->run.PcHistory[9], 0x1000);
  EXPECT_EQ(m->run.FrameClock, 15);
}

TEST(RunLoopTest, ABreakpointCanBeArmedInARun) {
  TestMachine m;
  m.host.ticks = 1000;
  m->z80.PC = 0x1000;
  m->run.FrameClock = 62480;
  m.host.framesAllowed = 2;
  m.host.onPump = [](Machine& machine) {
    machine.cpumon.Check2 = true;
    machine.cpumon.Text5 = std::to_string(machine.z80.PC + 3);
    machine.run.BreakArmed = 1;
  };
  RunOn(*m);
  EXPECT_EQ(m->z80.PC, 0x1000 + 6 + 3);  // the frame ends with the sixth NOP
  EXPECT_EQ(m.host.frames, 1);
}

}  // namespace

}  // namespace quoll::test
