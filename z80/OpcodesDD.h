// The DD page: IX.
//
// Legend: Byte(n), Word(n) operand at pc + n; Next(T-states, length, steps of R), both 1 when left out;
// Jump(target, T-states, steps of R); AtHL, ToHL the byte at (HL).
// The two index pages differ in times and steps of R; programs see the differences, so each has its own rows.
#pragma once

#include "z80/Alu.h"
#include "z80/IndexForms.h"
#include "z80/OpcodesDDCB.h"

namespace quoll {

template <class Core>
void xxDD(Core& c) {
  auto& s = c.s;
  s.IndexDisp = SignByte(c.Byte(1));
  // clang-format off
  switch (c.Fetch()) {
    case 0x09: AddIX(s, BC(s)); c.Next(15); break;
    case 0x19: AddIX(s, DE(s)); c.Next(15); break;
    case 0x21: s.IX = c.Word(1); c.Next(19, 3); break;
    case 0x22: c.WriteWord(c.Word(1), s.IX); c.Next(20, 3, 2); break;
    case 0x23: s.IX = (s.IX + 1) & 0xFFFF; c.Next(6); break;
    case 0x24: if (c.UnDoc()) { SetHigh(s.IX, Inc8(s, High(s.IX))); c.Next(8, 1, 2); } break;
    case 0x25: if (c.UnDoc()) { SetHigh(s.IX, Dec8(s, High(s.IX))); c.Next(8, 1, 2); } break;
    case 0x26: if (c.UnDoc()) { SetHigh(s.IX, c.Byte(1)); c.Next(11, 2, 2); } break;
    case 0x29: AddIX(s, s.IX); c.Next(15); break;
    case 0x2A: s.IX = c.ReadWord(c.Word(1)); c.Next(20, 3); break;
    case 0x2B: s.IX = (s.IX - 1) & 0xFFFF; c.Next(6); break;
    case 0x2C: if (c.UnDoc()) { SetLow(s.IX, Inc8(s, Low(s.IX))); c.Next(8, 1, 2); } break;
    case 0x2D: if (c.UnDoc()) { SetLow(s.IX, Dec8(s, Low(s.IX))); c.Next(8, 1, 2); } break;
    case 0x2E: if (c.UnDoc()) { SetLow(s.IX, c.Byte(1)); c.Next(11, 2, 2); } break;
    case 0x34: Modify(c, Inc8, s.IX); c.Next(23, 2); break;
    case 0x35: Modify(c, Dec8, s.IX); c.Next(23, 2); break;
    case 0x36: c.Write(s.IX + s.IndexDisp, c.Byte(2)); c.Next(19, 3); break;
    case 0x39: AddIX(s, s.SP); c.Next(15); break;
    case 0x44: if (c.UnDoc()) { s.B = High(s.IX); c.Next(8, 1, 2); } break;
    case 0x45: if (c.UnDoc()) { s.B = Low(s.IX); c.Next(8, 1, 2); } break;
    case 0x46: s.B = c.Read(s.IX + s.IndexDisp); c.Next(19, 2); break;
    case 0x4C: if (c.UnDoc()) { s.C = High(s.IX); c.Next(8, 1, 2); } break;
    case 0x4D: if (c.UnDoc()) { s.C = Low(s.IX); c.Next(8, 1, 2); } break;
    case 0x4E: s.C = c.Read(s.IX + s.IndexDisp); c.Next(19, 2); break;
    case 0x54: if (c.UnDoc()) { s.D = High(s.IX); c.Next(8, 1, 2); } break;
    case 0x55: if (c.UnDoc()) { s.D = Low(s.IX); c.Next(8, 1, 2); } break;
    case 0x56: s.D = c.Read(s.IX + s.IndexDisp); c.Next(19, 2); break;
    case 0x5C: if (c.UnDoc()) { s.E = High(s.IX); c.Next(8, 1, 2); } break;
    case 0x5D: if (c.UnDoc()) { s.E = Low(s.IX); c.Next(8, 1, 2); } break;
    case 0x5E: s.E = c.Read(s.IX + s.IndexDisp); c.Next(19, 2); break;
    case 0x60: if (c.UnDoc()) { SetHigh(s.IX, s.B); c.Next(8, 1, 2); } break;
    case 0x61: if (c.UnDoc()) { SetHigh(s.IX, s.C); c.Next(8, 1, 2); } break;
    case 0x62: if (c.UnDoc()) { SetHigh(s.IX, s.D); c.Next(8, 1, 2); } break;
    case 0x63: if (c.UnDoc()) { SetHigh(s.IX, s.E); c.Next(8, 1, 2); } break;
    case 0x64: if (c.UnDoc()) { c.Next(8, 1, 2); } break;
    case 0x65: if (c.UnDoc()) { SetHigh(s.IX, Low(s.IX)); c.Next(8, 1, 2); } break;
    case 0x66: s.H = c.Read(s.IX + s.IndexDisp); c.Next(19, 2, 2); break;
    case 0x67: if (c.UnDoc()) { SetHigh(s.IX, s.A); c.Next(8, 1, 2); } break;
    case 0x68: if (c.UnDoc()) { SetLow(s.IX, s.B); c.Next(8, 1, 2); } break;
    case 0x69: if (c.UnDoc()) { SetLow(s.IX, s.C); c.Next(8, 1, 2); } break;
    case 0x6A: if (c.UnDoc()) { SetLow(s.IX, s.D); c.Next(8, 1, 2); } break;
    case 0x6B: if (c.UnDoc()) { SetLow(s.IX, s.E); c.Next(8, 1, 2); } break;
    case 0x6C: if (c.UnDoc()) { SetLow(s.IX, High(s.IX)); c.Next(8, 1, 2); } break;
    case 0x6D: if (c.UnDoc()) { c.Next(8, 1, 2); } break;
    case 0x6E: s.L = c.Read(s.IX + s.IndexDisp); c.Next(19, 2); break;
    case 0x6F: if (c.UnDoc()) { SetLow(s.IX, s.A); c.Next(8, 1, 2); } break;
    case 0x70: c.Write(s.IX + s.IndexDisp, s.B); c.Next(19, 2); break;
    case 0x71: c.Write(s.IX + s.IndexDisp, s.C); c.Next(19, 2); break;
    case 0x72: c.Write(s.IX + s.IndexDisp, s.D); c.Next(19, 2); break;
    case 0x73: c.Write(s.IX + s.IndexDisp, s.E); c.Next(19, 2); break;
    case 0x74: c.Write(s.IX + s.IndexDisp, s.H); c.Next(19, 2); break;
    case 0x75: c.Write(s.IX + s.IndexDisp, s.L); c.Next(19, 2); break;
    case 0x77: c.Write(s.IX + s.IndexDisp, s.A); c.Next(19, 2); break;
    case 0x7C: if (c.UnDoc()) { s.A = High(s.IX); c.Next(8, 1, 2); } break;
    case 0x7D: if (c.UnDoc()) { s.A = Low(s.IX); c.Next(8, 1, 2); } break;
    case 0x7E: s.A = c.Read(s.IX + s.IndexDisp); c.Next(19, 2, 2); break;
    case 0x84: if (c.UnDoc()) { AddA(s, High(s.IX)); c.Next(8, 1, 2); } break;
    case 0x85: if (c.UnDoc()) { AddA(s, Low(s.IX)); c.Next(8, 1, 2); } break;
    case 0x86: AddA(s, c.Read(s.IX + s.IndexDisp)); c.Next(19, 2); break;
    case 0x8C: if (c.UnDoc()) { AdcA(s, High(s.IX)); c.Next(8, 1, 2); } break;
    case 0x8D: if (c.UnDoc()) { AdcA(s, Low(s.IX)); c.Next(8, 1, 2); } break;
    case 0x8E: AdcA(s, c.Read(s.IX + s.IndexDisp)); c.Next(19, 2); break;
    case 0x94: if (c.UnDoc()) { SubA(s, High(s.IX)); c.Next(8, 1, 2); } break;
    case 0x95: if (c.UnDoc()) { SubA(s, Low(s.IX)); c.Next(8, 1, 2); } break;
    case 0x96: SubA(s, c.Read(s.IX + s.IndexDisp)); c.Next(19, 2); break;
    case 0x9C: if (c.UnDoc()) { SbcA(s, High(s.IX)); c.Next(8, 1, 2); } break;
    case 0x9D: if (c.UnDoc()) { SbcA(s, Low(s.IX)); c.Next(8, 1, 2); } break;
    case 0x9E: SbcA(s, c.Read(s.IX + s.IndexDisp)); c.Next(19, 2); break;
    case 0xA4: if (c.UnDoc()) { AndA(s, High(s.IX)); c.Next(8, 1, 2); } break;
    case 0xA5: if (c.UnDoc()) { AndA(s, Low(s.IX)); c.Next(8, 1, 2); } break;
    case 0xA6: AndA(s, c.Read(s.IX + s.IndexDisp)); c.Next(19, 2); break;
    case 0xAC: if (c.UnDoc()) { XorA(s, High(s.IX)); c.Next(8, 1, 2); } break;
    case 0xAD: if (c.UnDoc()) { XorA(s, Low(s.IX)); c.Next(8, 1, 2); } break;
    case 0xAE: XorA(s, c.Read(s.IX + s.IndexDisp)); c.Next(19, 2); break;
    case 0xB4: if (c.UnDoc()) { OrA(s, High(s.IX)); c.Next(8, 1, 2); } break;
    case 0xB5: if (c.UnDoc()) { OrA(s, Low(s.IX)); c.Next(8, 1, 2); } break;
    case 0xB6: OrA(s, c.Read(s.IX + s.IndexDisp)); c.Next(19, 2); break;
    case 0xBC: if (c.UnDoc()) { CpA(s, High(s.IX)); c.Next(8, 1, 2); } break;
    case 0xBD: if (c.UnDoc()) { CpA(s, Low(s.IX)); c.Next(8, 1, 2); } break;
    case 0xBE: CpA(s, c.Read(s.IX + s.IndexDisp)); c.Next(19, 2); break;
    case 0xCB: ++c.pc; xxDDCB(c); break;
    case 0xE1: s.IX = c.Pop(); c.Next(10); break;
    case 0xE3: ExchangeStack(c, s.IX); break;
    case 0xE5: c.Push2(High(s.IX), Low(s.IX)); c.Next(15); break;
    case 0xE9: c.Jump(s.IX, 8); break;
    case 0xF9: s.SP = s.IX; c.Next(10, 1, 2); break;
    // Both ends of the range stand here so that the jump table needs no range check.
    case 0x00: case 0xFF: c.Missing(); break;
    default: c.Missing(); break;
  }
  // clang-format on
}

}  // namespace quoll
