#include "z80/Z80State.h"

#include <array>
#include <initializer_list>

namespace quoll {

void CpuInit(Z80State& z80) {
  const Z80State before = z80;
  z80 = Z80State{};
  z80.A = z80.B = z80.C = z80.D = z80.E = z80.H = z80.L = 255;
  z80.A2 = z80.B2 = z80.C2 = z80.D2 = z80.E2 = z80.H2 = z80.L2 = 255;
  z80.IX = z80.IY = z80.SP = 65535;
  z80.FlagS = z80.FlagZ = z80.FlagY = z80.FlagH = z80.FlagX = z80.FlagPV = z80.FlagN = z80.FlagC = 1;
  z80.AltFlagS = z80.AltFlagZ = z80.AltFlagY = z80.AltFlagH = 1;
  z80.AltFlagX = z80.AltFlagPV = z80.AltFlagN = z80.AltFlagC = 1;
  // Not registers: they belong to the instruction under way, the run loop and the options.
  z80.Halted = before.Halted;
  z80.IrqLine = before.IrqLine;
  z80.PrefixState = before.PrefixState;
  z80.CurOpcode = before.CurOpcode;
  z80.IndexDisp = before.IndexDisp;
  z80.UnDocEnabled = before.UnDocEnabled;
}

void KeepBytes(Z80State& z80) {
  using Z = Z80State;
  static constexpr std::array kBytes{&Z::A,  &Z::B,  &Z::C,  &Z::D,  &Z::E,  &Z::H,  &Z::L,        &Z::A2,
                                     &Z::B2, &Z::C2, &Z::D2, &Z::E2, &Z::H2, &Z::L2, &Z::CurOpcode};
  static constexpr std::array kFlags{&Z::FlagS,    &Z::FlagZ,    &Z::FlagY,       &Z::FlagH,     &Z::FlagX,
                                     &Z::FlagPV,   &Z::FlagN,    &Z::FlagC,       &Z::AltFlagS,  &Z::AltFlagZ,
                                     &Z::AltFlagY, &Z::AltFlagH, &Z::AltFlagX,    &Z::AltFlagPV, &Z::AltFlagN,
                                     &Z::AltFlagC, &Z::Halted,   &Z::UnDocEnabled};
  for (const auto field : kBytes) z80.*field &= 0xFF;
  for (const auto field : kFlags) z80.*field &= 1;
}

void KeepRanges(Z80State& z80) {
  KeepBytes(z80);
  for (int32_t* pair : {&z80.IX, &z80.IY, &z80.SP}) *pair &= 0xFFFF;
  z80.I &= 0xFF;
  z80.R &= 0x1FF;  // an acceptance may have left 256 until the next pass
  for (int32_t* flag : {&z80.IFF1, &z80.IFF2, &z80.IrqLine}) *flag &= 1;
}

}  // namespace quoll
