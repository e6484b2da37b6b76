// The loop entered again from its own pump, and machines that change under it.
#include <gtest/gtest.h>

#include "forms/Forms.h"
#include "machine/MachineInit.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

// One NOP away from the frame's end, with one T-state left over; each frame is drawn and pumped.
TestMachine PumpedMachine() {
  TestMachine m;
  m->z80.PC = 0x1000;
  m->run.FrameClock = m->run.Cycles = 62497;
  m.host.ticks = 1000;
  m.host.frameTicks = 20;
  m.host.framesAllowed = 100;
  return m;
}

void Click(Machine& m, const char* name) { Press(m, TheControl("TScreen", name)); }

TEST(NestedRunTest, StepInsideARunEndsIt) {
  TestMachine m = PumpedMachine();
  m.host.onPump = [](Machine& machine) {
    EXPECT_EQ(machine.run.PcHistory[9], 0);
    CPUmon_Command7_Click(machine);
    EXPECT_EQ(machine.z80.PC, 0x1002);
    EXPECT_EQ(machine.run.PcHistory[9], 0x1001);
    EXPECT_EQ(machine.run.Cycles, 5);  // the inner pass has folded what the outer one had counted
    EXPECT_EQ(machine.cpumon.Command1Look.back, kRed);
  };
  RunOn(*m);
  EXPECT_EQ(m->z80.PC, 0x1002);
  EXPECT_EQ(m->run.FrameClock, 5);
  EXPECT_EQ(m->run.Cycles, 5);
  EXPECT_EQ(m->run.TotalCycles, 62500);
  EXPECT_EQ(m.host.frames, 1);
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_EQ(Redraws(*m), 2U);
  // PrevPc is one for both loops: the outer pass finds that of the inner one.
  EXPECT_EQ(m->run.PcHistory[9], 0x1001);
  EXPECT_EQ(m->run.PcHistory[8], 0x1001);
  EXPECT_EQ(m->run.PcHistory[7], 0);
}

TEST(NestedRunTest, TheLoopsOnTheStackAreCounted) {
  TestMachine m = PumpedMachine();
  int outer = 0, inner = 0;
  EXPECT_EQ(m->loops, 0);
  m.host.onPump = [&](Machine& machine) {
    int& seen = outer == 0 ? outer : inner;
    seen = machine.loops;
    if (&seen == &inner) throw ProgramEnd{};
    machine.run.FrameClock = machine.run.Cycles = 62497;
    m.host.ticks += 1000;
    RunOn(machine);
  };
  EXPECT_TRUE(EndsProgram([&] { RunOn(*m); }));
  EXPECT_EQ(outer, 1);
  EXPECT_EQ(inner, 2);
  EXPECT_EQ(m->loops, 0);
}

// An error of the processor is remembered until it runs again; a single step does not count.
TEST(NestedRunTest, AProcessorErrorIsRememberedUntilARun) {
  TestMachine m;
  m->run.CpuError = 1;
  Step(*m);
  EXPECT_EQ(m->run.CpuError, 1);
  m.host.framesAllowed = 1;
  RunOn(*m);
  EXPECT_EQ(m->run.CpuError, 0);
}

TEST(NestedRunTest, PauseInThePumpEndsTheRun) {
  TestMachine m = PumpedMachine();
  m.host.onPump = [](Machine& machine) { Click(machine, "xS1"); };
  RunOn(*m);
  EXPECT_EQ(m.host.frames, 1);
  EXPECT_EQ(m->z80.PC, 0x1001);
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_TRUE(m->screen.xS1);
  EXPECT_EQ(Redraws(*m), 1U);
  // Taking the tick off enters the loop, which goes on from there until somebody stops it.
  m.host.onPump = nullptr;
  m.host.framesAllowed = 3;
  Click(*m, "xS1");
  EXPECT_EQ(m.host.frames, 3);
  EXPECT_FALSE(m->screen.xS1);
  EXPECT_TRUE(m->screen.xS3);
  EXPECT_EQ(m->run.TotalCycles, 3 * 62500);
}

TEST(NestedRunTest, PauseAndOnInOnePumpRunsOnTopOfTheOuterLoop) {
  TestMachine m = PumpedMachine();
  int depth = 0;
  m.host.framesAllowed = 4;
  m.host.onPump = [&](Machine& machine) {
    if (++depth > 1) return;
    Click(machine, "xS1");
    Click(machine, "xS1");
    // Three frames of the inner loop; the outer one has not ended its first yet.
    EXPECT_EQ(m.host.frames, 3);
    EXPECT_EQ(machine.run.CpuRunning, 0);
  };
  m.host.onFrameEnded = [&](Machine& machine) {
    if (m.host.frames == 2) machine.run.CpuRunning = 0;
  };
  RunOn(*m);
  EXPECT_EQ(m.host.frames, 4);
  EXPECT_EQ(m->run.TotalCycles, 4 * 62500);
  EXPECT_EQ(Redraws(*m), 2U);
  // From 1 on 15625 NOPs fill each of the three inner frames exactly.
  EXPECT_EQ(m->run.FrameClock, 1);
  EXPECT_EQ(m->z80.PC, 0x1001 + 3 * 15625);
}

TEST(NestedRunTest, RunInsideARun) {
  TestMachine m = PumpedMachine();
  int depth = 0;
  m.host.onPump = [&](Machine& machine) {
    ++depth;
    if (depth == 1) {
      CPUmon_Command1_Click(machine);
      EXPECT_EQ(machine.run.TotalCycles, 62500);  // of the inner loop: Run starts the count anew
    } else {
      CPUmon_Command6_Click(machine);  // Stop: ends both
      machine.run.TotalCycles = 62500;
    }
  };
  RunOn(*m);
  EXPECT_EQ(depth, 2);
  EXPECT_EQ(m.host.frames, 2);
  EXPECT_EQ(Redraws(*m), 2U);
  EXPECT_EQ(m->cpumon.Command1Look.back, kRed);
}

// The inner loop has its own memory of when it drew: at the same millisecond it draws again.
TEST(NestedRunTest, TheInnerLoopDrawsAtOnce) {
  TestMachine m = PumpedMachine();
  m.host.frameTicks = 0;
  m.host.framesAllowed = 3;
  int depth = 0;
  m.host.onPump = [&](Machine& machine) {
    if (++depth == 1) RunLoop(machine);
  };
  RunOn(*m);
  EXPECT_EQ(depth, 2);
}

TEST(NestedRunTest, AResetRequestInThePumpIsServedAfterOneMoreInstruction) {
  TestMachine m = PumpedMachine();
  Put(*m, 0x1001, {0x3E, 0x5A, 0x32, 0x00, 0x80});  // LD A,5A only
  Put(*m, 0x18000, {0xFD, 0xF3});
  m.host.onPump = [](Machine& machine) { machine.run.ResetRequest = 1; };
  RunOn(*m);
  EXPECT_EQ(m->z80.PC, 2);
  EXPECT_EQ(m->run.FrameClock, 1 + 7 + 3);
  EXPECT_EQ(m->run.Cycles, 1 + 7 + 3);
  EXPECT_EQ(m->run.PcHistory[8], 0x1001);
  EXPECT_EQ(m->run.PcHistory[9], 0);
  EXPECT_EQ(m->z80.A, 255);
  EXPECT_EQ(m->MemImage[0x8000], 0);
}

TEST(NestedRunTest, AnNmiRequestInThePump) {
  TestMachine m = PumpedMachine();
  m->z80.SP = 0x9000;
  Put(*m, 0x0066, {0xFD, 0xF3});
  m.host.onPump = [](Machine& machine) { machine.run.NmiRequest = 1; };
  RunOn(*m);
  EXPECT_EQ(Word(*m, 0x8FFE), 0x1002);
  EXPECT_EQ(m->run.FrameClock, 1 + 4 + 11 + 11);
}

TEST(NestedRunTest, StoppingInThePumpEndsTheLoopWithThisPass) {
  TestMachine m = PumpedMachine();
  m.host.onPump = [](Machine& machine) { machine.run.CpuRunning = 0; };
  RunOn(*m);
  EXPECT_EQ(m->z80.PC, 0x1001);
  EXPECT_EQ(m.host.frames, 1);
}

// Whatever a handler changes holds for the next instruction.
TEST(NestedRunTest, PagingModelAndProcessorChangeInThePump) {
  TestMachine m = PumpedMachine();
  m->MemImage[0x8000] = 0x44;
  Put(*m, 0xC000, {0x3A, 0x00, 0x80, 0x47, 0xFD, 0xF3});  // LD A,(8000)  LD B,A  (stop): U3, at 0 as well
  m.host.onPump = [](Machine& machine) {
    machine.PortShadow[2] = 0xB8;
    machine.screen.x32KB = true;
    machine.z80.PC = 0x0000;
    machine.run.FrameClock = 40000;
  };
  RunOn(*m);
  EXPECT_EQ(m->z80.B, 0);
  EXPECT_EQ(m->z80.PC, 6);
  EXPECT_EQ(m->run.FrameClock, 40017);
}

TEST(NestedRunTest, ReadNoiseSwitchedOnInThePump) {
  TestMachine m = PumpedMachine();
  m->PortShadow[2] = 0x90;
  Put(*m, 0x1001, {0x3A, 0x00, 0x80, 0xFD, 0xF3});
  m->MemImage[0x10000] = 0x80;
  m.host.onPump = [](Machine& machine) { machine.VideoReadNoise = true; };
  RunOn(*m);
  EXPECT_EQ(m->z80.A, 0xB7);
  EXPECT_EQ(m->MemImage[0x10000], 0xB7);
}

// FrameEnded comes last, with the machine free to be changed as well.
TEST(NestedRunTest, AChangeInFrameEndedHolds) {
  TestMachine m = PumpedMachine();
  m.host.ticks = 0;
  m.host.frameTicks = 0;
  Put(*m, 0x10000, {0x3E, 0x77, 0xFD, 0xF3});  // in VID0, at 0x4000 once it is paged in
  m.host.onFrameEnded = [](Machine& machine) {
    machine.PortShadow[2] = 0xB4;
    machine.z80.PC = 0x4000;
  };
  RunOn(*m);
  EXPECT_EQ(m->z80.A, 0x77);
  EXPECT_EQ(m->z80.PC, 0x4004);
}

TEST(NestedRunTest, AFatalStoreInsideTheInnerLoopEndsBoth) {
  TestMachine m = PumpedMachine();
  m->PortShadow[2] = 0xF0;
  m->PortShadow[3] = 0x40;
  Put(*m, 0x1001, {0x32, 0x00, 0xC0});
  m.host.onPump = [](Machine& machine) { RunLoop(machine); };
  EXPECT_TRUE(EndsProgram([&] { RunOn(*m); }));
  EXPECT_EQ(m.host.messages.size(), 1U);
}

}  // namespace

}  // namespace quoll::test
