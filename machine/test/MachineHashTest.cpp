// The machine as one value: compared, copied, hashed.
#include <gtest/gtest.h>

#include <vector>

#include "machine/Machine.h"
#include "machine/MachineHash.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

struct Hashed : testing::Test {
  TestMachine m, other;

  bool SameState() const { return static_cast<MachineState&>(*m) == static_cast<MachineState&>(*other); }
};

TEST_F(Hashed, EqualMachinesHaveEqualHashes) {
  EXPECT_TRUE(SameState());
  EXPECT_EQ(MachineHash(*m), MachineHash(*other));
  Host stranger;  // not part of the state
  other->host = &stranger;
  other->programFolder = "elsewhere";
  EXPECT_TRUE(SameState());
  EXPECT_EQ(MachineHash(*m), MachineHash(*other));
}

TEST_F(Hashed, EachPartCounts) {
  const std::vector<void (*)(MachineState&)> changes{
      [](MachineState& s) { s.z80.UnDocEnabled ^= 1; },
      [](MachineState& s) { s.run.PerfFreq = 7; },
      [](MachineState& s) { s.run.PcHistory.next = 3; },
      [](MachineState& s) { s.MemImage.back() = 1; },
      [](MachineState& s) { s.MexPages.resize(1); },
      [](MachineState& s) { s.CartName = "x"; },
      [](MachineState& s) { s.PortShadow[0xFF] = 1; },
      [](MachineState& s) { s.VideoReadNoise = true; },
      [](MachineState& s) { s.random.state = 1; },
      [](MachineState& s) { s.crtc.CrtcRegs[18] = 1; },
      [](MachineState& s) { s.palette.PalHistory[3][256] = 1; },
      [](MachineState& s) { s.keyboard.KeyMatrix[15] = 1; },
      [](MachineState& s) { s.pen.LpenLow = 1; },
      [](MachineState& s) { s.tone.phase = 0.5F; },
      [](MachineState& s) { s.mixer.BlockBuffer[4409] = 1; },
      [](MachineState& s) { s.tape.save.written = 1; },
      [](MachineState& s) { s.floppy.DiskData.resize(kDiskSize); },
      [](MachineState& s) {
        s.floppy.DiskData.resize(kDiskSize);
        s.floppy.DiskData.back()[4] = 1;
      },
      [](MachineState& s) { s.floppy.Accesses = {"CMD Step"}; },
      [](MachineState& s) { s.serial.SerialRx = {0}; },
      [](MachineState& s) { s.serial.SerialTx = {0}; },
      [](MachineState& s) { s.printer.printed = "a"; },
      [](MachineState& s) { s.screen.xS6 = true; },
      [](MachineState& s) { s.panel.Text8 = "1"; },
      [](MachineState& s) { s.ttape.File1.entries = {"a.wav"}; },
      [](MachineState& s) { s.errorsim.Option1[2] = true; },
      [](MachineState& s) { s.tools.Text1 = "1"; },
      [](MachineState& s) { s.tools.Held[0x10] = true; },
      [](MachineState& s) { s.tserial.Text2 = "AT"; },
      [](MachineState& s) { s.tfloppy.Label1 = "x.dsk"; },
  };
  const uint64_t before = MachineHash(*m);
  for (size_t i = 0; i < changes.size(); ++i) {
    *other = *m;
    changes[i](*other);
    EXPECT_FALSE(SameState()) << i;
    EXPECT_NE(MachineHash(*other), before) << i;
  }
}

TEST_F(Hashed, WhatWindowsShowDoesNotCount) {
  other->ttape.window = {.visible = true, .raise = true, .caption = "Deck"};
  other->cpumon.Command1Look.back = kRed;
  other->fdxf.PL.y = {1, 2, 3};
  EXPECT_FALSE(SameState());
  EXPECT_EQ(MachineHash(*m), MachineHash(*other));
}

// Two texts that follow each other must not flow into one.
TEST_F(Hashed, NeighboursAreKeptApart) {
  m->panel.Text6 = "12";
  other->panel.Text6 = "1";
  other->panel.Text7 = "2";
  EXPECT_NE(MachineHash(*m), MachineHash(*other));
}

}  // namespace
}  // namespace quoll::test
