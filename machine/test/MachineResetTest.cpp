// The reset, and the menu items that build a new machine under a running one.
#include <algorithm>

#include "forms/Forms.h"
#include "machine/MachineInit.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

TEST(MachineResetTest, PortsKeysAndCrtc) {
  CoreHost host;
  const auto m = RamMachine(host);
  m->PortShadow.fill(0x77);
  m->keyboard.KeyMatrix.fill(0x77);
  m->crtc.CrtcRegs.fill(0x77);
  MachineReset(*m);
  for (size_t i = 0; i < 256; ++i) EXPECT_EQ(m->PortShadow[i], i == 0x59 ? 0xBF : i == 5 ? 0xFF : 0) << i;
  for (const uint8_t row : m->keyboard.KeyMatrix) EXPECT_EQ(row, 0);
  for (size_t i = 0; i < 19; ++i) EXPECT_EQ(m->crtc.CrtcRegs[i], i == 10 ? 32 : 0) << i;
}

TEST(MachineResetTest, Processor) {
  CoreHost host;
  const auto m = RamMachine(host);
  m->z80 = Z80State{};
  m->z80.PC = 0x2BFFF;
  m->z80.IM = 1;
  m->z80.IFF1 = m->z80.IFF2 = m->z80.Halted = m->z80.IrqLine = 1;
  m->z80.I = m->z80.R = 9;
  m->run.ResetRequest = m->run.NmiRequest = 1;
  m->run.Cycles = 100;
  MachineReset(*m);
  for (const int32_t reg : {m->z80.A, m->z80.B, m->z80.C, m->z80.D, m->z80.E, m->z80.H, m->z80.L, m->z80.A2,
                            m->z80.B2, m->z80.C2, m->z80.D2, m->z80.E2, m->z80.H2, m->z80.L2}) {
    EXPECT_EQ(reg, 255);
  }
  for (const int32_t pair : {m->z80.IX, m->z80.IY, m->z80.SP}) EXPECT_EQ(pair, 65535);
  for (const int32_t flag :
       {m->z80.FlagS, m->z80.FlagZ, m->z80.FlagY, m->z80.FlagH, m->z80.FlagX, m->z80.FlagPV, m->z80.FlagN,
        m->z80.FlagC, m->z80.AltFlagS, m->z80.AltFlagZ, m->z80.AltFlagY, m->z80.AltFlagH, m->z80.AltFlagX,
        m->z80.AltFlagPV, m->z80.AltFlagN, m->z80.AltFlagC}) {
    EXPECT_EQ(flag, 1);
  }
  for (const int32_t cleared : {m->z80.PC, m->z80.I, m->z80.R, m->z80.IM, m->z80.IFF1, m->z80.IFF2,
                                m->z80.Halted, m->z80.IrqLine, m->run.ResetRequest, m->run.NmiRequest}) {
    EXPECT_EQ(cleared, 0);
  }
  EXPECT_EQ(m->run.Cycles, 103);
  MachineReset(*m);
  EXPECT_EQ(m->run.Cycles, 106);
}

TEST(MachineResetTest, WhatItLeavesAlone) {
  CoreHost host;
  const auto m = RamMachine(host);
  const auto image = RomBytes(m->MemImage.size(), 1);
  std::ranges::copy(image, m->MemImage.begin());
  m->CartName = "mex4mb.crt";
  m->MexPages.resize(256);
  m->MexPages[200][0x3FFF] = 0x42;
  m->z80.UnDocEnabled = 0;
  m->z80.CurOpcode = 0x21;
  m->z80.PrefixState = 0xDD;
  m->z80.IndexDisp = -5;
  m->run.CpuRunning = m->run.BreakArmed = 1;
  m->run.FrameClock = 10;
  m->run.LastCursorIrq = 11;
  m->run.TotalCycles = 62500;
  m->run.ToneItCounter = 13;
  m->run.PrevPc = 15;
  m->run.PcHistory[9] = 16;
  m->tone.phase = 0.5F;
  m->tone.toggle = 1;
  m->tone.lastLevel = 35;
  m->tone.DacSlots.fill(17);
  m->mixer.FrameInBlock = 3;
  m->printer.printed = "printed";
  m->pen = {12, 34};
  m->palette.PalNextLine = 77;
  m->tape.Level = 1;
  m->VideoReadNoise = true;
  m->screen.xio0 = true;
  const auto before = std::make_unique<Machine>(*m);
  MachineReset(*m);
  EXPECT_TRUE(m->MemImage == before->MemImage);
  EXPECT_TRUE(m->MexPages == before->MexPages);
  EXPECT_EQ(m->CartName, "mex4mb.crt");
  EXPECT_EQ(m->z80.UnDocEnabled, 0);
  EXPECT_EQ(m->z80.CurOpcode, 0x21);
  EXPECT_EQ(m->z80.PrefixState, 0xDD);
  EXPECT_EQ(m->z80.IndexDisp, -5);
  EXPECT_EQ(m->run.CpuRunning, 1);
  EXPECT_EQ(m->run.BreakArmed, 1);
  EXPECT_EQ(m->run.FrameClock, 10);
  EXPECT_EQ(m->run.LastCursorIrq, 11);
  EXPECT_EQ(m->run.TotalCycles, 62500);
  EXPECT_EQ(m->run.ToneItCounter, 13);
  EXPECT_EQ(m->run.PrevPc, 15);
  EXPECT_EQ(m->run.PcHistory[9], 16);
  EXPECT_TRUE(m->tone == before->tone);
  EXPECT_TRUE(m->mixer == before->mixer);
  EXPECT_TRUE(m->printer == before->printer);
  EXPECT_TRUE(m->pen == before->pen);
  EXPECT_TRUE(m->palette == before->palette);
  EXPECT_EQ(m->tape.Level, 1);
  EXPECT_TRUE(m->VideoReadNoise);
  EXPECT_TRUE(m->screen.xio0);
}

TEST(MachineResetTest, StatusReadAfterAReset) {
  struct Case {
    bool monochrome;
    int level, value;
  };
  constexpr Case kCases[] = {{true, 1, 0xBF}, {true, 0, 0x9F}, {false, 1, 0xFF}, {false, 0, 0xDF}};
  for (const auto& [monochrome, level, value] : kCases) {
    CoreHost host;
    const auto m = RamMachine(host);
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
    for (const char* name : {"TVC22_D6.rom", "TVC22_D4.rom", "TVC22_D7.rom"}) Add(name, 0x22);
    for (const char* name : {"TVC12_D4.rom", "TVC12_D3.rom", "TVC12_D7.rom"}) Add(name, 0x12);
    for (const char* name : {"hbf.rom", "io3.rom", "sndmx.rom", "game.crt"}) Add(name, 0x33);
  }
  void Add(const std::string& name, uint8_t version) const {
    folder.Write(name, {0x3E, version, 0xFD, 0xF3});
  }
};

std::unique_ptr<Machine> SystemMachine(const System& system, Host& host) {
  auto m = std::make_unique<Machine>(host);
  m->programFolder = system.folder.path.string();
  MachineInit(*m);
  MachineReset(*m);
  m->run.ToneItCounter = kNoToneSoon;
  return m;
}

void Click(Machine& m, const char* name) { Press(m, TheControl("TScreen", name)); }

TEST(MachineResetTest, TheFirstInstructionIsThatOfTheSystemRom) {
  const System system;
  CoreHost host;
  const auto m = SystemMachine(system, host);
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
  CoreHost host;
  host.framesAllowed = 3;
  const auto m = SystemMachine(system, host);
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
    CoreHost host;
    const auto m = SystemMachine(system, host);
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
  CoreHost host;
  host.ticks = 1000;
  host.framesAllowed = 2;
  const auto m = SystemMachine(system, host);
  m->PortShadow[2] = kAllRam;
  m->z80.PC = 0x1000;
  m->run.FrameClock = 62498;
  host.onPump = [](Machine& machine) { Click(machine, "xBasic"); };
  RunOn(*m);
  // The ROM's two instructions ran after the pump, from the new ROM at 0.
  EXPECT_EQ(m->z80.A, 0x12);
  EXPECT_EQ(m->z80.PC, 4);
  EXPECT_EQ(host.frames, 1);
}

TEST(MachineResetTest, ResetKeepsMemoryAndReset2SpoilsTheMark) {
  const System system;
  for (const bool second : {false, true}) {
    CoreHost host;
    const auto m = SystemMachine(system, host);
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
