// The FD page: IY, and the instructions that drive the emulator.
//
// Legend: Byte(n), Word(n) operand at pc + n; Next(T-states, length, steps of R), both 1 when left out;
// Jump(target, T-states, steps of R); AtHL, ToHL the byte at (HL).
// The two index pages differ in times and steps of R; programs see the differences, so each has its own rows.
#pragma once

#include "z80/Alu.h"
#include "z80/IndexForms.h"
#include "z80/OpcodesFDCB.h"

namespace quoll {

template <class Core>
void EndWithoutTime(Core& c) {
  c.Next(0, 1, 0);
  c.NoTime();
  c.Cut();
}

// Four instructions by which a program drives the emulator. They take no T-states and leave R.
template <class Core>
void RaiseIrq(Core& c) {
  if (c.s.IFF1 == 1) c.s.IrqLine = 1;
  EndWithoutTime(c);
}

template <class Core>
void RaiseNmi(Core& c) {
  c.m.run.NmiRequest = 1;
  c.m.host->Beep(600, 500);
  EndWithoutTime(c);
}

template <class Core>
void RaiseReset(Core& c) {
  c.m.run.ResetRequest = 1;
  c.m.host->Beep(600, 500);
  EndWithoutTime(c);
}

template <class Core>
void StopRun(Core& c) {
  c.m.run.CpuRunning = 0;
  c.m.host->Beep(600, 200);
  EndWithoutTime(c);
}

template <class Core>
void xxFD(Core& c) {
  auto& s = c.s;
  s.IndexDisp = SignByte(c.Byte(1));
  // clang-format off
  switch (c.Fetch()) {
    case 0x09: AddIY(s, BC(s)); c.Next(15); break;
    case 0x19: AddIY(s, DE(s)); c.Next(15); break;
    case 0x21: s.IY = c.Word(1); c.Next(19, 3); break;
    case 0x22: c.WriteWord(c.Word(1), s.IY); c.Next(20, 3, 2); break;
    case 0x23: s.IY = (s.IY + 1) & 0xFFFF; c.Next(6); break;
    case 0x24: if (c.UnDoc()) { SetHigh(s.IY, Inc8(s, High(s.IY))); c.Next(8, 1, 2); } break;
    case 0x25: if (c.UnDoc()) { SetHigh(s.IY, Dec8(s, High(s.IY))); c.Next(8, 1, 2); } break;
    case 0x26: if (c.UnDoc()) { SetHigh(s.IY, c.Byte(1)); c.Next(11, 2, 2); } break;
    case 0x29: AddIY(s, s.IY); c.Next(15, 1, 4); break;
    case 0x2A: s.IY = c.ReadWord(c.Word(1)); c.Next(20, 3); break;
    case 0x2B: s.IY = (s.IY - 1) & 0xFFFF; c.Next(10, 1, 2); break;
    case 0x2C: if (c.UnDoc()) { SetLow(s.IY, Inc8(s, Low(s.IY))); c.Next(8, 1, 2); } break;
    case 0x2D: if (c.UnDoc()) { SetLow(s.IY, Dec8(s, Low(s.IY))); c.Next(8, 1, 2); } break;
    case 0x2E: if (c.UnDoc()) { SetLow(s.IY, c.Byte(1)); c.Next(11, 2, 2); } break;
    case 0x34: Modify(c, Inc8, s.IY); c.Next(23, 2, 2); break;
    case 0x35: Modify(c, Dec8, s.IY); c.Next(23, 2, 2); break;
    case 0x36: c.Write(s.IY + s.IndexDisp, c.Byte(2)); c.Next(19, 3); break;
    case 0x39: AddIY(s, s.SP); c.Next(15, 1, 4); break;
    case 0x44: if (c.UnDoc()) { s.B = High(s.IY); c.Next(8, 1, 2); } break;
    case 0x45: if (c.UnDoc()) { s.B = Low(s.IY); c.Next(8, 1, 2); } break;
    case 0x46: s.B = c.Read(s.IY + s.IndexDisp); c.Next(19, 2, 2); break;
    case 0x4C: if (c.UnDoc()) { s.C = High(s.IY); c.Next(8, 1, 2); } break;
    case 0x4D: if (c.UnDoc()) { s.C = Low(s.IY); c.Next(8, 1, 2); } break;
    case 0x4E: s.C = c.Read(s.IY + s.IndexDisp); c.Next(19, 2, 2); break;
    case 0x54: if (c.UnDoc()) { s.D = High(s.IY); c.Next(8, 1, 2); } break;
    case 0x55: if (c.UnDoc()) { s.D = Low(s.IY); c.Next(8, 1, 2); } break;
    case 0x56: s.D = c.Read(s.IY + s.IndexDisp); c.Next(19, 2, 2); break;
    case 0x5C: if (c.UnDoc()) { s.E = High(s.IY); c.Next(8, 1, 2); } break;
    case 0x5D: if (c.UnDoc()) { s.E = Low(s.IY); c.Next(8, 1, 2); } break;
    case 0x5E: s.E = c.Read(s.IY + s.IndexDisp); c.Next(19, 2, 2); break;
    case 0x60: if (c.UnDoc()) { SetHigh(s.IY, s.B); c.Next(8, 1, 2); } break;
    case 0x61: if (c.UnDoc()) { SetHigh(s.IY, s.C); c.Next(8, 1, 2); } break;
    case 0x62: if (c.UnDoc()) { SetHigh(s.IY, s.D); c.Next(8, 1, 2); } break;
    case 0x63: if (c.UnDoc()) { SetHigh(s.IY, s.E); c.Next(8, 1, 2); } break;
    case 0x64: if (c.UnDoc()) { c.Next(8, 1, 2); } break;
    case 0x65: if (c.UnDoc()) { SetHigh(s.IY, Low(s.IY)); c.Next(8, 1, 2); } break;
    case 0x66: s.H = c.Read(s.IY + s.IndexDisp); c.Next(19, 2, 2); break;
    case 0x67: if (c.UnDoc()) { SetHigh(s.IY, s.A); c.Next(8, 1, 2); } break;
    case 0x68: if (c.UnDoc()) { SetLow(s.IY, s.B); c.Next(8, 1, 2); } break;
    case 0x69: if (c.UnDoc()) { SetLow(s.IY, s.C); c.Next(8, 1, 2); } break;
    case 0x6A: if (c.UnDoc()) { SetLow(s.IY, s.D); c.Next(8, 1, 2); } break;
    case 0x6B: if (c.UnDoc()) { SetLow(s.IY, s.E); c.Next(8, 1, 2); } break;
    case 0x6C: if (c.UnDoc()) { SetLow(s.IY, High(s.IY)); c.Next(8, 1, 2); } break;
    case 0x6D: if (c.UnDoc()) { c.Next(8, 1, 2); } break;
    case 0x6E: s.L = c.Read(s.IY + s.IndexDisp); c.Next(19, 2, 2); break;
    case 0x6F: if (c.UnDoc()) { SetLow(s.IY, s.A); c.Next(8, 1, 2); } break;
    case 0x70: c.Write(s.IY + s.IndexDisp, s.B); c.Next(20, 2); break;
    case 0x71: c.Write(s.IY + s.IndexDisp, s.C); c.Next(20, 2); break;
    case 0x72: c.Write(s.IY + s.IndexDisp, s.D); c.Next(20, 2); break;
    case 0x73: c.Write(s.IY + s.IndexDisp, s.E); c.Next(20, 2); break;
    case 0x74: c.Write(s.IY + s.IndexDisp, s.H); c.Next(20, 2); break;
    case 0x75: c.Write(s.IY + s.IndexDisp, s.L); c.Next(20, 2); break;
    case 0x77: c.Write(s.IY + s.IndexDisp, s.A); c.Next(20, 2); break;
    case 0x7C: if (c.UnDoc()) { s.A = High(s.IY); c.Next(8, 1, 2); } break;
    case 0x7D: if (c.UnDoc()) { s.A = Low(s.IY); c.Next(8, 1, 2); } break;
    case 0x7E: s.A = c.Read(s.IY + s.IndexDisp); c.Next(19, 2, 2); break;
    case 0x84: if (c.UnDoc()) { AddA(s, High(s.IY)); c.Next(8, 1, 2); } break;
    case 0x85: if (c.UnDoc()) { AddA(s, Low(s.IY)); c.Next(8, 1, 2); } break;
    case 0x86: AddA(s, c.Read(s.IY + s.IndexDisp)); c.Next(19, 2); break;
    case 0x8C: if (c.UnDoc()) { AdcA(s, High(s.IY)); c.Next(8, 1, 2); } break;
    case 0x8D: if (c.UnDoc()) { AdcA(s, Low(s.IY)); c.Next(8, 1, 2); } break;
    case 0x8E: AdcA(s, c.Read(s.IY + s.IndexDisp)); c.Next(19, 2, 4); break;
    case 0x94: if (c.UnDoc()) { SubA(s, High(s.IY)); c.Next(8, 1, 2); } break;
    case 0x95: if (c.UnDoc()) { SubA(s, Low(s.IY)); c.Next(8, 1, 2); } break;
    case 0x96: SubA(s, c.Read(s.IY + s.IndexDisp)); c.Next(19, 2); break;
    case 0x9C: if (c.UnDoc()) { SbcA(s, High(s.IY)); c.Next(8, 1, 2); } break;
    case 0x9D: if (c.UnDoc()) { SbcA(s, Low(s.IY)); c.Next(8, 1, 2); } break;
    case 0x9E: SbcA(s, c.Read(s.IY + s.IndexDisp)); c.Next(19, 2, 5); break;
    case 0xA4: if (c.UnDoc()) { AndA(s, High(s.IY)); c.Next(8, 1, 2); } break;
    case 0xA5: if (c.UnDoc()) { AndA(s, Low(s.IY)); c.Next(8, 1, 2); } break;
    case 0xA6: AndA(s, c.Read(s.IY + s.IndexDisp)); c.Next(19, 2); break;
    case 0xAC: if (c.UnDoc()) { XorA(s, High(s.IY)); c.Next(8, 1, 2); } break;
    case 0xAD: if (c.UnDoc()) { XorA(s, Low(s.IY)); c.Next(8, 1, 2); } break;
    case 0xAE: XorA(s, c.Read(s.IY + s.IndexDisp)); c.Next(19, 2); break;
    case 0xB4: if (c.UnDoc()) { OrA(s, High(s.IY)); c.Next(8, 1, 2); } break;
    case 0xB5: if (c.UnDoc()) { OrA(s, Low(s.IY)); c.Next(8, 1, 2); } break;
    case 0xB6: OrA(s, c.Read(s.IY + s.IndexDisp)); c.Next(19, 2); break;
    case 0xBC: if (c.UnDoc()) { CpA(s, High(s.IY)); c.Next(8, 1, 2); } break;
    case 0xBD: if (c.UnDoc()) { CpA(s, Low(s.IY)); c.Next(8, 1, 2); } break;
    case 0xBE: CpA(s, c.Read(s.IY + s.IndexDisp)); c.Next(19, 2); break;
    case 0xCB: xxFDCB(c); break;
    case 0xE1: s.IY = c.Pop(); c.Next(10); break;
    case 0xE3: ExchangeStack(c, s.IY); break;
    case 0xE5: c.Push2(High(s.IY), Low(s.IY)); c.Next(15); break;
    case 0xE9: c.Jump(s.IY, 8); break;
    case 0xF0: RaiseIrq(c); break;
    case 0xF1: RaiseNmi(c); break;
    case 0xF2: RaiseReset(c); break;
    case 0xF3: StopRun(c); break;
    case 0xF9: s.SP = s.IY; c.Next(10, 1, 2); break;
    // Both ends of the range stand here so that the jump table needs no range check.
    case 0x00: case 0xFF: c.Missing(); break;
    default: c.Missing(); break;
  }
  // clang-format on
}

}  // namespace quoll
