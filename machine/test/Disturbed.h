// For the tests of what leaves a machine as it is.
#pragma once

#include "testkit/Files.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

// The processor's registers after power-on and after a reset.
inline Z80State PowerOnState() {
  Z80State s{};
  for (const auto reg : {&Z80State::A, &Z80State::B, &Z80State::C, &Z80State::D, &Z80State::E, &Z80State::H,
                         &Z80State::L, &Z80State::A2, &Z80State::B2, &Z80State::C2, &Z80State::D2,
                         &Z80State::E2, &Z80State::H2, &Z80State::L2})
    s.*reg = 255;
  s.IX = s.IY = s.SP = 65535;
  for (const auto flag :
       {&Z80State::FlagS, &Z80State::FlagZ, &Z80State::FlagY, &Z80State::FlagH, &Z80State::FlagX,
        &Z80State::FlagPV, &Z80State::FlagN, &Z80State::FlagC, &Z80State::AltFlagS, &Z80State::AltFlagZ,
        &Z80State::AltFlagY, &Z80State::AltFlagH, &Z80State::AltFlagX, &Z80State::AltFlagPV,
        &Z80State::AltFlagN, &Z80State::AltFlagC, &Z80State::UnDocEnabled})
    s.*flag = 1;
  return s;
}

// Puts something into every part of the machine.
inline void Disturb(Machine& m) {
  std::ranges::copy(Pattern(m.MemImage.size()), m.MemImage.begin());
  m.MexPages.resize(kMexPageCount);
  m.MexPages[200][0x3FFF] = 0x42;
  m.VideoReadNoise = true;
  m.z80.Halted = m.z80.IrqLine = 1;
  m.z80.UnDocEnabled = 0;
  m.z80.CurOpcode = 0x21;
  m.z80.PrefixState = 0xDD;
  m.z80.IndexDisp = -5;
  m.run.CpuRunning = m.run.BreakArmed = 1;
  m.run.Cycles = 9;
  m.run.FrameClock = 10;
  m.run.LastCursorIrq = 11;
  m.run.TotalCycles = 62500;
  m.run.ToneItCounter = 13;
  m.run.ResetRequest = m.run.NmiRequest = 1;
  m.run.PrevPc = 15;
  m.run.PcHistory[9] = 16;
  m.PortShadow.fill(0x77);
  m.keyboard.KeyMatrix.fill(0x77);
  m.crtc.CrtcRegs.fill(21);
  m.tone = {.phase = 0.5F, .toggle = 1, .lastLevel = 35};
  m.tone.DacSlots.fill(17);
  m.mixer.FrameInBlock = 3;
  m.printer.printed = "printed";
  m.pen = {12, 34};
  m.palette.PalNextLine = 77;
  m.palette.BorderLines.fill(128);
  m.tape.Level = 1;
  m.random.state = 99;
  m.picture.Left = 5;
  m.screen.x32KB = m.screen.xio1 = true;
  m.screen.Label1 = "label";
  LogPortRead(m.screen.List1, 9);
  m.cpumon.Text5 = "&H1234";
  m.ttape.Label3 = "a.wav";
}

}  // namespace quoll::test
