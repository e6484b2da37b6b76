// What happens at the end of a frame, and in which order.
#include <gtest/gtest.h>

#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

using Events = std::vector<std::string>;

// One NOP away from the frame's end, with one T-state left over.
TestMachine FrameMachine() {
  TestMachine m;
  m->z80.PC = 0x1000;
  m->run.FrameClock = 62497;
  return m;
}

TEST(FrameEndTest, TheFrameEndsAbove62500) {
  struct Case {
    int32_t before, after;
    bool ends;
  };
  constexpr Case kCases[] = {{62492, 62496, false}, {62496, 62500, false}, {62497, 1, true},
                             {62500, 4, true},      {62501, 5, true},      {100000, 37504, true}};
  for (const auto& [before, after, ends] : kCases) {
    TestMachine m;
    m->run.FrameClock = before;
    m->run.LastCursorIrq = 777;
    m->run.TotalCycles = 5;
    Step(*m);
    EXPECT_EQ(m->run.FrameClock, after);
    EXPECT_EQ(m.host.frames, ends ? 1 : 0);
    EXPECT_EQ(m->run.LastCursorIrq, ends ? after : 777);
    EXPECT_EQ(m->run.TotalCycles, ends ? 62505 : 5);
  }
}

TEST(FrameEndTest, TheExcessOfALongInstructionStays) {
  TestMachine m;
  m->z80.IX = 0x2000;
  m->run.FrameClock = 62500;
  m->run.NmiRequest = 1;
  m->z80.SP = 0x9000;
  Program(*m, 0x1000, {0xDD, 0x34, 0x00});
  Step(*m);
  EXPECT_EQ(m->run.FrameClock, 34);
  EXPECT_EQ(m->run.LastCursorIrq, 34);
}

TEST(FrameEndTest, AStepDoesAllOfItOnce) {
  TestMachine m = FrameMachine();
  m.host.ticks = 20;
  m->mixer.FrameInBlock = 4;
  Step(*m);
  EXPECT_EQ(m.host.events, (Events{"PerformanceCounter", "PerformanceCounter", "TickCount", "Pump",
                                   "TickCount", "BlockMixed", "WaitForBlock", "FrameEnded"}));
  EXPECT_EQ(m->run.TotalCycles, 62500);
  EXPECT_EQ(m->picture.borders, 1U);
  EXPECT_EQ(m->z80.PC, 0x1001);
}

TEST(FrameEndTest, ClockSpeedAndLightPenComeBeforeTheTimeIsAsked) {
  TestMachine m = FrameMachine();
  std::vector<int32_t> pen;
  std::vector<int64_t> total;
  std::vector<std::string> speed;
  m.host.onTicks = [&](Machine& machine) {
    pen.push_back(machine.crtc.CrtcRegs[16]);
    total.push_back(machine.run.TotalCycles);
    speed.push_back(machine.screen.Text1);
  };
  m->pen = {0x12, 0x34};
  Step(*m);  // at 0 ms: no picture
  EXPECT_EQ(m.host.events, (Events{"PerformanceCounter", "PerformanceCounter", "TickCount", "FrameEnded"}));
  EXPECT_EQ(pen, std::vector<int32_t>{0x12});
  EXPECT_EQ(total, std::vector<int64_t>{62500});
  EXPECT_EQ(speed, std::vector<std::string>{"0"});
  EXPECT_EQ(m->crtc.CrtcRegs[17], 0x34);
}

// The pen has moved, palette and block are under way, no picture has been placed.
TestMachine BusyMachine(uint32_t ticks) {
  TestMachine m = FrameMachine();
  m.host.ticks = ticks;
  m->pen = {0x12, 0x34};
  m->palette.PalNextLine = 200;
  m->mixer.FrameInBlock = 2;
  m->picture.Left = -1;
  return m;
}

TEST(FrameEndTest, PictureThenPaletteThenPumpThenSound) {
  TestMachine m = BusyMachine(20);
  for (auto& line : m->palette.PalHistory) line.fill(0x99);
  m->PortShadow[0x60] = 0x55;
  bool pumped = false;
  m.host.onPump = [&](Machine& machine) {
    pumped = true;
    EXPECT_EQ(machine.run.FrameClock, 1);
    EXPECT_EQ(machine.crtc.CrtcRegs[16], 0x12);
    EXPECT_EQ(machine.crtc.CrtcRegs[17], 0x34);
    EXPECT_EQ(machine.picture.Left, 664);  // the picture has been placed: (83 - 0) x 8
    EXPECT_EQ(machine.picture.borders, 1U);
    // The history was completed from line 200 on before it was started again.
    EXPECT_EQ(machine.palette.PalHistory[0][199], 0x99);
    EXPECT_EQ(machine.palette.PalHistory[0][200], 0x55);
    EXPECT_EQ(machine.palette.PalHistory[0][255], 0x55);
    EXPECT_EQ(machine.palette.PalNextLine, 0);
    EXPECT_EQ(machine.mixer.FrameInBlock, 2);
    machine.tone.DacSlots[0] = 31;  // heard in this very frame
  };
  m.host.onFrameEnded = [](Machine& machine) { EXPECT_EQ(machine.mixer.FrameInBlock, 3); };
  m->PortShadow[5] = 0x00;
  Step(*m);
  EXPECT_TRUE(pumped);
  EXPECT_EQ(m->tone.ToneOut[0], 75);
  EXPECT_EQ(m->tone.DacSlots[0], 0);
}

TEST(FrameEndTest, AFrameThatIsNotDrawnStillSoundsAndCounts) {
  TestMachine m = BusyMachine(19);
  Step(*m);
  EXPECT_EQ(m.host.Count("Pump"), 0);
  EXPECT_EQ(m.host.Count("FrameEnded"), 1);
  EXPECT_EQ(m->palette.PalNextLine, 200);
  EXPECT_EQ(m->picture.Left, -1);
  EXPECT_EQ(m->picture.borders, 0U);
  EXPECT_EQ(m->crtc.CrtcRegs[16], 0x12);
  EXPECT_EQ(m->mixer.FrameInBlock, 3);
  EXPECT_EQ(m->run.TotalCycles, 62500);
}

TEST(FrameEndTest, TheFirstPictureComesWhenTheClockIsPast19) {
  for (const uint32_t ticks : {0U, 1U, 18U, 19U, 20U, 21U, 1000U, 0x7FFFFFFFU}) {
    TestMachine m = FrameMachine();
    m.host.ticks = ticks;
    Step(*m);
    EXPECT_EQ(m.host.Count("Pump"), ticks > 19 ? 1 : 0) << ticks;
  }
}

int PumpsInRun(uint32_t frameTicks, int frames) {
  TestMachine m = FrameMachine();
  m.host.ticks = 1000;
  m.host.frameTicks = frameTicks;
  m.host.framesAllowed = frames;
  RunOn(*m);
  EXPECT_EQ(m.host.frames, frames);
  return m.host.Count("Pump");
}

TEST(FrameEndTest, APictureEvery20MillisecondsAtMost) {
  EXPECT_EQ(PumpsInRun(20, 10), 10);
  EXPECT_EQ(PumpsInRun(100, 10), 10);
  EXPECT_EQ(PumpsInRun(19, 10), 5);  // 0, 38, 76 ...
  EXPECT_EQ(PumpsInRun(10, 10), 5);  // 0, 20, 40 ...
  EXPECT_EQ(PumpsInRun(7, 10), 4);   // 0, 21, 42, 63
  EXPECT_EQ(PumpsInRun(1, 21), 2);   // 0, 20
  EXPECT_EQ(PumpsInRun(0, 10), 1);
}

TEST(FrameEndTest, TimeSpentInThePumpDoesNotCount) {
  TestMachine m = FrameMachine();
  m.host.ticks = 1000;
  m.host.frameTicks = 10;
  m.host.framesAllowed = 4;
  m.host.onPump = [&](Machine&) { m.host.ticks += 500; };
  RunOn(*m);
  EXPECT_EQ(m.host.Count("Pump"), 2);  // frames 1 and 3: 20 ms after the end of the first pump
}

TEST(FrameEndTest, EachEntryStartsFromZero) {
  TestMachine m = FrameMachine();
  m.host.ticks = 1000;
  for (int i = 1; i <= 3; ++i) {
    m->run.FrameClock = 62500;
    Step(*m);
    EXPECT_EQ(m.host.Count("Pump"), i);  // at the same millisecond
  }
}

TEST(FrameEndTest, SoundAndBlocks) {
  struct Case {
    int32_t before, after;
    bool frame, mixed, waits;
  };
  constexpr Case kCases[] = {
      {0, 1, true, false, false},  {1, 2, true, false, false},  {2, 3, true, false, false},
      {3, 4, true, false, false},  {4, 0, true, true, true},    {5, 0, false, false, true},
      {6, 6, false, false, false}, {7, 7, false, false, false}, {-1, 0, true, false, false}};
  for (const auto& [before, after, frame, mixed, waits] : kCases) {
    for (const bool maximum : {false, true}) {
      SCOPED_TRACE(testing::Message() << "FrameInBlock " << before << " Max " << maximum);
      TestMachine m = FrameMachine();
      m->screen.xS6 = maximum;
      m->mixer.FrameInBlock = before;
      m->tone.ToneOut.fill(99);
      Step(*m);
      EXPECT_EQ(m->mixer.FrameInBlock, after);
      EXPECT_EQ(m->tone.ToneOut[440], frame ? 0 : 99);
      EXPECT_EQ(m.host.Count("BlockMixed"), mixed ? 1 : 0);
      EXPECT_EQ(m.host.Count("WaitForBlock"), waits && !maximum ? 1 : 0);
      EXPECT_EQ(m.host.events.back(), "FrameEnded");
    }
  }
}

TEST(FrameEndTest, ABlockThatIsWantedAlreadyIsNotWaitedFor) {
  TestMachine m = FrameMachine();
  m->mixer.FrameInBlock = 4;
  m->mixer.NeedData = 1;
  Step(*m);
  EXPECT_EQ(m.host.Count("WaitForBlock"), 0);
  EXPECT_EQ(m->mixer.NeedData, 0);
}

TEST(FrameEndTest, EveryFifthFrameOfARun) {
  TestMachine m = FrameMachine();
  m.host.framesAllowed = 17;
  std::vector<int> blocks;
  m.host.onBlockMixed = [&](Machine&) { blocks.push_back(m.host.frames + 1); };
  RunOn(*m);
  EXPECT_EQ(blocks, (std::vector<int>{5, 10, 15}));
  EXPECT_EQ(m.host.Count("WaitForBlock"), 3);
  EXPECT_EQ(m->mixer.FrameInBlock, 2);
  EXPECT_EQ(m->run.TotalCycles, 17 * 62500);
}

// The rest of the pass comes after the frame's end.
TEST(FrameEndTest, FoldBreakpointAndHistoryComeLast) {
  TestMachine m = FrameMachine();
  m.host.ticks = 20;
  m->run.Cycles = 62497;
  m.host.onPump = [](Machine& machine) {
    EXPECT_EQ(machine.run.Cycles, 62501);
    EXPECT_EQ(machine.run.PcHistory[9], 0);
    machine.run.Cycles = 62510;
    machine.run.BreakArmed = 1;
    machine.cpumon.Check2 = true;
    machine.cpumon.Text5 = "&H1001";
  };
  Step(*m);
  EXPECT_EQ(m->run.Cycles, 10);
  EXPECT_EQ(m->run.PcHistory[9], 0x1000);
  EXPECT_EQ(Redraws(*m), 2);  // breakpoint and end of the loop
}

// An interrupt that the pass before the frame's end has let in belongs to that pass.
TEST(FrameEndTest, TheLineIsSetBeforeTheFrameEnds) {
  TestMachine m = FrameMachine();
  m.host.ticks = 20;
  m->z80.IFF1 = 1;
  m->PortShadow[kStatusPort] = 0xFE;
  m->run.ToneItCounter = 4;
  m->PortShadow[5] = 0x20;
  m.host.onPump = [](Machine& machine) {
    EXPECT_EQ(machine.z80.IrqLine, 1);
    EXPECT_EQ(machine.PortShadow[kStatusPort], 0xEE);
  };
  Step(*m);
  EXPECT_EQ(m.host.Count("Pump"), 1);
}

}  // namespace

}  // namespace quoll::test
