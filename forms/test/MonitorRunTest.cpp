// Run, stop, step and breakpoints of the Z80 monitor in every nesting, and looking on while the machine runs.
#include <functional>

#include "core/FormTimers.h"
#include "forms/test/MonitorBench.h"
#include "machine/MachineHash.h"

namespace quoll::test {
namespace {

// Where a handler of the user can be called from, while the loop runs.
enum class Place { Pump, SoundWait, FrameEnd };

struct MonitorNesting : MonitorBench, testing::WithParamInterface<Place> {
  // A frame from the end of a block: the pump, the wait for sound and the end of the frame all come next.
  MonitorNesting() {
    m->z80.PC = 0x1000;
    m->run.FrameClock = m->run.Cycles = 62497;
    m->mixer.FrameInBlock = 4;
    host.ticks = 1000;
    host.frameTicks = 20;
  }

  // Runs, and at the first chance does this once, on the loop's stack; at the second chance what is next.
  void RunAndThere(const std::function<void()>& work, const std::function<void()>& next = {}) {
    int calls = 0;
    const auto chance = [&](Machine&) {
      const int call = ++calls;
      if (call == 1) work();
      if (call == 2 && next) next();
    };
    switch (GetParam()) {
      case Place::Pump: host.onPump = chance; break;
      case Place::SoundWait: host.onWait = chance; break;
      case Place::FrameEnd: host.onFrameEnded = chance; break;
    }
    RunOn(*m);
    EXPECT_GE(calls, next ? 2 : 1);
  }

  void BreakAt(int32_t address) { Type("Text5", std::to_string(address)); }
};

TEST_P(MonitorNesting, StepTwiceInARow) {
  RunAndThere([this] {
    EXPECT_EQ(m->z80.PC, 0x1001);
    Press("Command7");
    EXPECT_EQ(m->z80.PC, 0x1002);
    EXPECT_EQ(m->run.CpuRunning, 0);
    Press("Command7");
    EXPECT_EQ(m->z80.PC, 0x1003);
  });
  EXPECT_EQ(m->z80.PC, 0x1003);  // the outer pass had its instruction already
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_EQ(m->cpumon.shown.redraws, 3U);
  EXPECT_EQ(m->cpumon.Command1Look.back, kRed);
}

TEST_P(MonitorNesting, StopAndRunOn) {
  RunAndThere([this] {
    Press("Command6");
    EXPECT_EQ(m->run.CpuRunning, 0);
    EXPECT_EQ(m->run.Cycles, 0);
    EXPECT_EQ(m->run.TotalCycles, 0);
  });
  EXPECT_EQ(m->z80.PC, 0x1001);
  const int frames = host.frames;
  host.AllowFrames(1);
  Press("Command1");
  EXPECT_GE(frames, 1);
  EXPECT_EQ(host.frames, 1);
  EXPECT_EQ(m->run.TotalCycles, 62500);
}

// The loop that the handler starts ends at the breakpoint, and with it the one below.
TEST_P(MonitorNesting, BreakpointsOneAfterTheOther) {
  Tick("Check4");
  Tick("Check2");
  BreakAt(0x1010);
  RunAndThere([this] {
    Press("Command1");
    EXPECT_EQ(m->z80.PC, 0x1010);
    EXPECT_EQ(m->run.CpuRunning, 0);
    Press("Command7");
    EXPECT_EQ(m->z80.PC, 0x1011);
    BreakAt(0x1020);
    Press("Command1");
    EXPECT_EQ(m->z80.PC, 0x1020);
  });
  EXPECT_EQ(m->z80.PC, 0x1020);
  EXPECT_EQ(m->run.CpuRunning, 0);
}

// Three loops deep: the handler's loop comes to a handler of its own, which steps.
TEST_P(MonitorNesting, RunInsideARunInsideARun) {
  const auto run = [this] {
    EXPECT_EQ(m->z80.PC, 0x1001);
    m->run.FrameClock = 62497;
    m->mixer.FrameInBlock = 4;
    m->mixer.NeedData = 0;
    Press("Command1");
    EXPECT_EQ(m->z80.PC, 0x1003);
    EXPECT_EQ(m->run.CpuRunning, 0);
  };
  const auto step = [this] {
    EXPECT_EQ(m->z80.PC, 0x1002);
    EXPECT_EQ(m->run.CpuRunning, 1);
    Press("Command7");
    EXPECT_EQ(m->z80.PC, 0x1003);
  };
  RunAndThere(run, step);
  EXPECT_EQ(m->z80.PC, 0x1003);
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_EQ(m->cpumon.shown.redraws, 3U);  // each loop's end
}

TEST_P(MonitorNesting, ResetNmiAndIntBetweenSteps) {
  RunAndThere([this] {
    Press("Command5");
    Press("Command2");  // both: the reset alone is served
    Press("Command7");
    EXPECT_EQ(m->z80.PC, 0);
    EXPECT_EQ(m->run.ResetRequest + m->run.NmiRequest, 0);
    Press("Command7");
    EXPECT_EQ(m->z80.PC, 1);
    m->z80.SP = 0x9000;
    Press("Command2");
    for (int step = 0; step < 2; ++step) {  // only a reset takes the request back
      Press("Command7");
      EXPECT_EQ(m->z80.PC, 0x66);
      EXPECT_EQ(m->run.NmiRequest, 1);
    }
    Press("Command4");  // the NMI has shut interrupts out
    EXPECT_EQ(m->z80.IrqLine, 0);
    Press("Command5");
    Press("Command7");
    EXPECT_EQ(m->z80.PC, 0);
    EXPECT_EQ(m->run.NmiRequest, 0);
    m->z80.IFF1 = 1;
    m->z80.IM = 1;
    Press("Command4");
    EXPECT_EQ(m->z80.IrqLine, 1);
    Press("Command7");
    EXPECT_EQ(m->z80.PC, 0x38);
  });
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_EQ(m->z80.PC, 0x38);
}

// Whatever is edited while the loop waits holds for its next instruction.
TEST_P(MonitorNesting, EditingWhileRunning) {
  Put(*m, 0x4000, {0x3C, 0xFD, 0xF3});  // INC A  (stop)
  RunAndThere([this] {
    Enter("Text3", "4000", 3);
    Enter("Text1", "7F");
  });
  EXPECT_EQ(m->z80.PC, 0x4003);
  EXPECT_EQ(m->z80.A, 0x80);
}

INSTANTIATE_TEST_SUITE_P(Places, MonitorNesting,
                         testing::Values(Place::Pump, Place::SoundWait, Place::FrameEnd));

using MonitorBreakpoint = MonitorBench;

// The test comes after the instruction: a run that starts on the breakpoint leaves it, and comes back.
TEST_F(MonitorBreakpoint, StopsAtEachTurnOfALoop) {
  Program(*m, 0x100, {0x3C, 0x18, 0xFD});  // INC A  JR 0x100
  m->z80.A = 0;
  Tick("Check4");
  Tick("Check2");
  Type("Text5", "&H100");
  for (int turn = 1; turn <= 3; ++turn) {
    Press("Command1");
    EXPECT_EQ(m->z80.PC, 0x100);
    EXPECT_EQ(m->z80.A, turn);
    EXPECT_TRUE(Text("Picture1").starts_with(" 0100 INC A\r\n"));
    EXPECT_TRUE(Text("Picture4").ends_with("\r\n 0101 JR 0100"));
  }
}

TEST_F(MonitorBreakpoint, NeedsBothTicks) {
  Program(*m, 0x100, {0x00, 0x00, 0xFD, 0xF3});
  Type("Text5", "257");
  for (const auto& [debug, address, stop] :
       {std::tuple(false, false, 0x104), {false, true, 0x104}, {true, false, 0x104}, {true, true, 0x101}}) {
    m->z80.PC = 0x100;
    Tick("Check4", debug);
    Tick("Check2", address);
    Press("Command1");
    EXPECT_EQ(m->z80.PC, stop);
  }
}

// Adds 1 to bytes of video memory, reads the tape and changes the palette, for ever.
void LoadBusyProgram(Machine& m) {
  m.PortShadow[2] = 0x90;  // page 2 is video memory
  Program(m, 0x100, {0x2C, 0x26, 0x90, 0x7E, 0x3C, 0x77, 0xD3, 0x60, 0xDB, 0x59, 0x18, 0xF4});
  m.VideoReadNoise = true;
  m.tape.input.aheadCount = 1000;
  for (size_t i = 0; i < 1000; ++i) m.tape.input.ahead[i] = static_cast<uint8_t>(i * 7);
}

// Both windows open, looked at each frame and scrolled over the memory whose reading damages it: the machine
// goes the same way.
TEST(MonitorsOpen, FiveHundredFramesAreTheSame) {
  uint64_t hashes[2] = {};
  for (const bool open : {false, true}) {
    TestMachine m;
    LoadBusyProgram(*m);
    FormTimers timers = StartTimers(Forms(), 0);
    m.host.frameTicks = 20;
    m.host.framesAllowed = 500;
    int looks = 0;
    m.host.onFrameEnded = [&](Machine& machine) {
      RunTimers(machine, timers, m.host.frames * 20);
      if (!open) return;
      machine.cpumon.window.visible = machine.tvcmon.window.visible = true;
      RefreshForm(machine, kCPUmon);
      RefreshForm(machine, kTVCmon);
      looks += machine.cpumon.shown.Picture2.empty() ? 0 : 1;
    };
    m->cpumon.Text10 = "36736";  // 0x8F80
    RunOn(*m);
    EXPECT_EQ(looks, open ? 500 : 0);
    EXPECT_EQ(m.host.frames, 500);
    hashes[open ? 1 : 0] = MachineHash(*m);
    // Proof that reading would have been seen.
    if (!open) continue;
    MemRead(*m, 0x8F80);
    EXPECT_NE(MachineHash(*m), hashes[1]);
  }
  EXPECT_EQ(hashes[0], hashes[1]);
}

}  // namespace
}  // namespace quoll::test
