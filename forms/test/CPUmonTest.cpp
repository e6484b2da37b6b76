#include <gtest/gtest.h>

#include <limits>

#include "forms/CPUmon.h"
#include "forms/Forms.h"
#include "loop/MissingOP.h"
#include "machine/Machine.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

// A machine whose 64 KB are RAM, full of NOPs. No ROM is needed.
class Monitor : public testing::Test {
 protected:
  Monitor() { host.framesAllowed = 10; }

  void Press(std::string_view name) {
    const ControlRef button = TheControl("CPUmon", name);
    ASSERT_EQ(button.control->kind, ControlKind::Button) << name;
    quoll::Press(*m, button);
  }

  TestMachine m;
  TestHost& host = m.host;
};

TEST_F(Monitor, MissingOpSaysSoAndGoesOn) {
  m->z80.PC = 0x1233;
  m->z80.PrefixState = 0xCB;
  const Z80State before = m->z80;
  MissingOP(*m);
  EXPECT_EQ(m->screen.Label1, "Unknown Opcode!");
  EXPECT_EQ(m->screen.window.caption, "Unknown Opcode!");
  Z80State expected = before;
  expected.PC = 0x1234;
  expected.PrefixState = 0;
  EXPECT_EQ(m->z80, expected);
  EXPECT_EQ(m->run.Cycles, 0);

  m->z80.PC = 0xFFFF;
  MissingOP(*m);
  EXPECT_EQ(m->z80.PC, 0x10000);
  m->z80.PC = std::numeric_limits<int32_t>::max();
  MissingOP(*m);
  EXPECT_EQ(m->z80.PC, std::numeric_limits<int32_t>::min());
}

TEST_F(Monitor, MissingOpComesBackAfterAnotherText) {
  MissingOP(*m);
  m->screen.Label1 = "other";
  m->screen.window.caption = "another";
  MissingOP(*m);
  EXPECT_EQ(m->screen.Label1, "Unknown Opcode!");
  EXPECT_EQ(m->screen.window.caption, "Unknown Opcode!");
}

TEST_F(Monitor, RunZeroesTheCountsAndReturnsWhenTheLoopEnds) {
  m->run.Cycles = 777;
  m->run.TotalCycles = 888;
  m->cpumon.Command1Look.back = kRed;
  int32_t colour = 0;
  host.onFrameEnded = [&](Machine& machine) {
    colour = machine.cpumon.Command1Look.back;
    EXPECT_EQ(machine.run.CpuRunning, 1);
    if (host.frames == 2) machine.run.CpuRunning = 0;  // the third one is ending
  };
  Press("Command1");
  EXPECT_EQ(host.frames, 3);
  EXPECT_EQ(colour, 0xC0C0C0);
  EXPECT_EQ(m->cpumon.Command1Look.back, 0xFF);
  EXPECT_EQ(m->run.TotalCycles, 3 * 62500);
  // NOPs of 4 T-states from a count of 0: each frame ends with the first multiple of 4 above its end.
  EXPECT_EQ(m->run.FrameClock, m->run.Cycles);
}

TEST_F(Monitor, StopEndsTheLoopAndZeroesTheCounts) {
  host.onFrameEnded = [&](Machine&) { Press("Command6"); };
  Press("Command1");
  EXPECT_EQ(host.frames, 1);
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_EQ(m->run.Cycles, 0);
  EXPECT_EQ(m->run.TotalCycles, 0);
}

TEST_F(Monitor, StepMakesOnePassAndDrawsThePicture) {
  m->run.CpuRunning = 1;
  m->z80.PC = 0x100;
  const uint32_t pictures = m->picture.shown;
  const uint32_t redraws = Redraws(*m);
  Press("Command7");
  EXPECT_EQ(m->z80.PC, 0x101);
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_EQ(m->run.FrameClock, 4);
  EXPECT_EQ(m->picture.shown, pictures + 1);
  EXPECT_EQ(Redraws(*m), redraws + 1);  // the loop's end
  EXPECT_EQ(m->cpumon.Command1Look.back, 0xFF);
}

TEST_F(Monitor, RequestsAreOnlyStored) {
  Press("Command5");
  EXPECT_EQ(m->run.ResetRequest, 1);
  EXPECT_EQ(m->run.NmiRequest, 0);
  EXPECT_EQ(Redraws(*m), 1U);
  Press("Command2");
  EXPECT_EQ(m->run.NmiRequest, 1);

  m->z80.IFF1 = 0;
  Press("Command4");
  EXPECT_EQ(m->z80.IrqLine, 0);
  m->z80.IFF1 = 1;
  Press("Command4");
  EXPECT_EQ(m->z80.IrqLine, 1);
}

TEST_F(Monitor, DebugArmsTheBreakpoint) {
  const ControlRef debug = TheControl("CPUmon", "Check4");
  SetTick(*m, debug, true);
  EXPECT_EQ(m->run.BreakArmed, 1);
  SetTick(*m, debug, false);
  EXPECT_EQ(m->run.BreakArmed, 0);
}

TEST_F(Monitor, PokeStoresThroughTheBus) {
  m->cpumon.Text12 = "&H4321";
  m->cpumon.Text13 = "171";
  Press("Command3");
  EXPECT_EQ(m->MemImage[0x4321], 171);
  EXPECT_EQ(Redraws(*m), 1U);

  m->PortShadow[2] = 0x00;  // system ROM in page 0, which ignores it
  RenewPages(*m);
  m->cpumon.Text12 = "16";
  Press("Command3");
  EXPECT_EQ(m->MemImage[16], 0);
  EXPECT_EQ(m->MemImage[0x18010], 0);

  for (const char* address : {"-1", "9999999999", "&HFFFFFFFFF"}) {  // nowhere
    m->cpumon.Text12 = address;
    Press("Command3");
  }
  m->cpumon.Text12 = "&H4000";
  m->cpumon.Text13 = "257";  // a byte is stored, the rest is lost
  Press("Command3");
  EXPECT_EQ(m->MemImage[0x4000], 1);
}

TEST_F(Monitor, CountsItsRedraws) {
  m->cpumon.shown.redraws = std::numeric_limits<uint32_t>::max();
  CPUmon_redraw(m->cpumon);
  EXPECT_EQ(m->cpumon.shown.redraws, 0U);
}

}  // namespace
}  // namespace quoll::test
