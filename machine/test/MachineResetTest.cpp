// The reset, and the menu items that build a new machine under a running one.
#include <gtest/gtest.h>

#include <algorithm>

#include "forms/Forms.h"
#include "machine/MachineInit.h"
#include "machine/test/Disturbed.h"
#include "testkit/Files.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

TEST(MachineResetTest, PortsKeysAndCrtc) {
  TestMachine m;
  m->PortShadow.fill(0x77);
  m->keyboard.KeyMatrix.fill(0x77);
  m->crtc.CrtcRegs.fill(0x77);
  MachineReset(*m);
  for (size_t i = 0; i < 256; ++i) EXPECT_EQ(m->PortShadow[i], i == 0x59 ? 0xBF : i == 5 ? 0xFF : 0) << i;
  for (const uint8_t row : m->keyboard.KeyMatrix) EXPECT_EQ(row, 0);
  for (size_t i = 0; i < 19; ++i) EXPECT_EQ(m->crtc.CrtcRegs[i], i == 10 ? 32 : 0) << i;
}

TEST(MachineResetTest, Processor) {
  TestMachine m;
  m->z80 = Z80State{};
  m->z80.PC = 0x2BFFF;
  m->z80.IM = 1;
  m->z80.IFF1 = m->z80.IFF2 = m->z80.Halted = m->z80.IrqLine = 1;
  m->z80.I = m->z80.R = 9;
  m->run.ResetRequest = m->run.NmiRequest = 1;
  m->run.Cycles = 100;
  MachineReset(*m);
  Z80State expected = PowerOnState();
  expected.UnDocEnabled = 0;  // the machine's, not the processor's
  EXPECT_EQ(m->z80, expected);
  EXPECT_EQ(m->run.ResetRequest, 0);
  EXPECT_EQ(m->run.NmiRequest, 0);
  EXPECT_EQ(m->run.Cycles, 103);
  MachineReset(*m);
  EXPECT_EQ(m->run.Cycles, 106);
}

TEST(MachineResetTest, AnUnknownOpcodeIsForgotten) {
  TestMachine m;
  m->screen.window.caption = "Unknown Opcode!";
  m->screen.Label1 = "Unknown Opcode!";
  MachineReset(*m);
  EXPECT_EQ(m->screen.window.caption, "QUOLLEMU");
  EXPECT_EQ(m->screen.Label1, "");
  m->screen.window.caption = "something else";
  m->screen.Label1 = "No sound device: Timer2";
  MachineReset(*m);
  EXPECT_EQ(m->screen.window.caption, "something else");
  EXPECT_EQ(m->screen.Label1, "No sound device: Timer2");
}

TEST(MachineResetTest, WhatItLeavesAlone) {
  TestMachine m;
  Disturb(*m);
  const auto expected = CopyOf(*m);
  MachineReset(*m);
  expected->PortShadow = m->PortShadow;  // these have tests of their own
  expected->keyboard = m->keyboard;
  expected->crtc = m->crtc;
  expected->card = m->card;
  expected->z80 = PowerOnState();
  expected->z80.UnDocEnabled = 0;
  expected->z80.CurOpcode = 0x21;
  expected->z80.PrefixState = 0xDD;
  expected->z80.IndexDisp = -5;
  expected->run.Cycles += 3;
  expected->run.ResetRequest = expected->run.NmiRequest = 0;
  EXPECT_TRUE(static_cast<MachineState&>(*m) == *expected);
}

TEST(MachineResetTest, StatusReadAfterAReset) {
  struct Case {
    bool monochrome;
    int level, value;
  };
  constexpr Case kCases[] = {{true, 1, 0xBF}, {true, 0, 0x9F}, {false, 1, 0xFF}, {false, 0, 0xDF}};
  for (const auto& [monochrome, level, value] : kCases) {
    TestMachine m;
    MachineReset(*m);
    m->screen.xScreenBW = monochrome;
    PutTape(*m, level);
    EXPECT_EQ(PortIn(*m, 0x59), value);
  }
}

// A folder with a system whose first bytes tell its version: LD A,n  (stop)
struct System {
  TempFolder folder;

  System() {
    for (const RomFile& rom : kRomFiles) {
      const std::string name = rom.name;
      Add(name, name.starts_with("TVC22") ? 0x22 : name.starts_with("TVC12") ? 0x12 : 0x33);
    }
    Add("game.crt", 0x33);
  }
  void Add(const std::string& name, uint8_t version) const {
    folder.Write(name, {0x3E, version, 0xFD, 0xF3});
  }
};

TestMachine SystemMachine(const System& system) {
  TestMachine m;
  m->programFolder = system.folder.path.string();
  MachineInit(*m);
  MachineReset(*m);
  return m;
}

void Click(Machine& m, const char* name) { Press(m, TheControl("TScreen", name)); }

TEST(MachineResetTest, TheFirstInstructionIsThatOfTheSystemRom) {
  const System system;
  TestMachine m = SystemMachine(system);
  EXPECT_EQ(m->run.Cycles, 3);
  EXPECT_EQ(m->run.FrameClock, 0);
  RunOn(*m);
  EXPECT_EQ(m->z80.A, 0x22);
  EXPECT_EQ(m->z80.PC, 4);
  EXPECT_EQ(m->run.Cycles, 10);  // three ahead of the frame clock from now on
  EXPECT_EQ(m->run.FrameClock, 7);
}

TEST(MachineResetTest, CyclesStayThreeAheadOverFrames) {
  const System system;
  TestMachine m = SystemMachine(system);
  m.host.framesAllowed = 3;
  m->PortShadow[2] = kAllRam;  // NOPs everywhere
  RunOn(*m);
  // 15626 NOPs make 62504 T-states, 15625 further ones 62500: the clock stands at 4 after each.
  EXPECT_EQ(m->run.FrameClock, 4);
  EXPECT_EQ(m->run.Cycles, 7);
  EXPECT_EQ(m->run.TotalCycles, 187500);
}

TEST(MachineResetTest, ModelAndVersionMakeANewMachine) {
  const System system;
  for (const char* item : {"x32KB", "xBasic", "xio0", "xio1", "xio2", "xio3"}) {
    SCOPED_TRACE(item);
    TestMachine m = SystemMachine(system);
    m->CartName = "game.crt";
    m->MemImage.fill(0x99);
    m->z80.PC = 0x4000;
    m->run.Cycles = 1000;
    m->crtc.CrtcRegs.fill(9);
    Click(*m, item);
    for (size_t i = 0; i < 0x14000; ++i) ASSERT_EQ(m->MemImage[i], 0) << i;
    EXPECT_EQ(m->MemImage[0x14001], 0x33);  // the cartridge is loaded again
    EXPECT_EQ(m->MemImage[0x18001], std::string_view(item) == "xBasic" ? 0x12 : 0x22);
    EXPECT_EQ(m->MemImage[0x38001], std::string_view(item) == "xio0" ? 0x33 : 0x00);
    EXPECT_EQ(m->MemImage[0x32001], std::string_view(item) == "xio3" ? 0x33 : 0x00);
    EXPECT_EQ(m->z80.PC, 0);
    EXPECT_EQ(m->run.Cycles, 3);
    EXPECT_EQ(m->crtc.CrtcRegs[10], 32);
    EXPECT_EQ(m->PortShadow[kStatusPort], 0xBF);
    EXPECT_TRUE(m->screen.focusPicD);
  }
}

TEST(MachineResetTest, ANewMachineUnderTheRunningLoop) {
  const System system;
  TestMachine m = SystemMachine(system);
  m.host.ticks = 1000;
  m.host.framesAllowed = 2;
  m->PortShadow[2] = kAllRam;
  m->z80.PC = 0x1000;
  m->run.FrameClock = 62498;
  m.host.onPump = [](Machine& machine) { Click(machine, "xBasic"); };
  RunOn(*m);
  // The ROM's two instructions ran after the pump, from the new ROM at 0.
  EXPECT_EQ(m->z80.A, 0x12);
  EXPECT_EQ(m->z80.PC, 4);
  EXPECT_EQ(m.host.frames, 1);
}

TEST(MachineResetTest, ResetKeepsMemoryAndReset2SpoilsTheMark) {
  const System system;
  for (const bool second : {false, true}) {
    TestMachine m = SystemMachine(system);
    std::fill_n(m->MemImage.begin(), 0x14000, uint8_t{0x00});
    m->MemImage[0x0B22] = 0x5A;
    m->MemImage[0x0B23] = 0x5B;
    m->PortShadow[2] = kAllRam;
    m->z80.PC = 0x1000;
    Click(*m, second ? "xReset2" : "xReset");
    EXPECT_EQ(m->run.ResetRequest, 1);
    EXPECT_EQ(m->z80.PC, 0x1000);  // the run loop does it
    Step(*m);
    EXPECT_EQ(m->z80.PC, 0);
    EXPECT_EQ(m->PortShadow[2], 0);
    EXPECT_EQ(m->MemImage[0x0B22], second ? 0xFF : 0x5A);
    EXPECT_EQ(m->MemImage[0x0B23], 0x5B);
    EXPECT_EQ(m->run.ResetRequest, 0);
    RunOn(*m);
    EXPECT_EQ(m->z80.A, 0x22);
  }
}

}  // namespace

}  // namespace quoll::test
