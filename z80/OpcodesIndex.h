// The DD and FD pages, P says which: IX, or IY with the instructions that drive the emulator.
//
// Legend: Byte(n), Word(n) operand at pc + n; Next(T-states, length, steps of R), both 1 when left out;
// Jump(target, T-states, steps of R); AtHL, ToHL the byte at (HL).
#pragma once

#include "z80/Alu.h"
#include "z80/IndexForms.h"
#include "z80/IndexPages.h"
#include "z80/OpcodesIndexCB.h"

namespace quoll {

template <class P, class Core>
void xxIndex(Core& c) {
  auto& s = c.s;
  int32_t& index = P::Pair(s);
  s.IndexDisp = SignByte(c.Byte(1));
  // clang-format off
  switch (c.Fetch()) {
    case 0x09: P::Add(s, BC(s)); c.Next(15); break;
    case 0x19: P::Add(s, DE(s)); c.Next(15); break;
    case 0x21: index = c.Word(1); c.Next(19, 3); break;
    case 0x22: c.WriteWord(c.Word(1), index); c.Next(20, 3, 2); break;
    case 0x23: IncPair(index); c.Next(6); break;
    case 0x24: if (c.UnDoc()) { SetHigh(index, Inc8(s, High(index))); c.Next(8, 1, 2); } break;
    case 0x25: if (c.UnDoc()) { SetHigh(index, Dec8(s, High(index))); c.Next(8, 1, 2); } break;
    case 0x26: if (c.UnDoc()) { SetHigh(index, c.Byte(1)); c.Next(11, 2, 2); } break;
    case 0x29: P::Add(s, Low16(index)); c.Next(15, 1, P::kAddPairR); break;
    case 0x2A: index = c.ReadWord(c.Word(1)); c.Next(20, 3); break;
    case 0x2B: DecPair(index); c.Next(P::kDecT, 1, P::kDecR); break;
    case 0x2C: if (c.UnDoc()) { SetLow(index, Inc8(s, Low(index))); c.Next(8, 1, 2); } break;
    case 0x2D: if (c.UnDoc()) { SetLow(index, Dec8(s, Low(index))); c.Next(8, 1, 2); } break;
    case 0x2E: if (c.UnDoc()) { SetLow(index, c.Byte(1)); c.Next(11, 2, 2); } break;
    case 0x34: Modify(c, Inc8, index); c.Next(23, 2, P::kCountR); break;
    case 0x35: Modify(c, Dec8, index); c.Next(23, 2, P::kCountR); break;
    case 0x36: c.Write(At(index, s.IndexDisp), c.Byte(2)); c.Next(19, 3); break;
    case 0x39: P::Add(s, Low16(s.SP)); c.Next(15, 1, P::kAddPairR); break;
    case 0x44: if (c.UnDoc()) { s.B = High(index); c.Next(8, 1, 2); } break;
    case 0x45: if (c.UnDoc()) { s.B = Low(index); c.Next(8, 1, 2); } break;
    case 0x46: s.B = c.Read(At(index, s.IndexDisp)); c.Next(19, 2, P::kLoadR); break;
    case 0x4C: if (c.UnDoc()) { s.C = High(index); c.Next(8, 1, 2); } break;
    case 0x4D: if (c.UnDoc()) { s.C = Low(index); c.Next(8, 1, 2); } break;
    case 0x4E: s.C = c.Read(At(index, s.IndexDisp)); c.Next(19, 2, P::kLoadR); break;
    case 0x54: if (c.UnDoc()) { s.D = High(index); c.Next(8, 1, 2); } break;
    case 0x55: if (c.UnDoc()) { s.D = Low(index); c.Next(8, 1, 2); } break;
    case 0x56: s.D = c.Read(At(index, s.IndexDisp)); c.Next(19, 2, P::kLoadR); break;
    case 0x5C: if (c.UnDoc()) { s.E = High(index); c.Next(8, 1, 2); } break;
    case 0x5D: if (c.UnDoc()) { s.E = Low(index); c.Next(8, 1, 2); } break;
    case 0x5E: s.E = c.Read(At(index, s.IndexDisp)); c.Next(19, 2, P::kLoadR); break;
    case 0x60: if (c.UnDoc()) { SetHigh(index, s.B); c.Next(8, 1, 2); } break;
    case 0x61: if (c.UnDoc()) { SetHigh(index, s.C); c.Next(8, 1, 2); } break;
    case 0x62: if (c.UnDoc()) { SetHigh(index, s.D); c.Next(8, 1, 2); } break;
    case 0x63: if (c.UnDoc()) { SetHigh(index, s.E); c.Next(8, 1, 2); } break;
    case 0x64: if (c.UnDoc()) { c.Next(8, 1, 2); } break;
    case 0x65: if (c.UnDoc()) { SetHigh(index, Low(index)); c.Next(8, 1, 2); } break;
    case 0x66: s.H = c.Read(At(index, s.IndexDisp)); c.Next(19, 2, 2); break;
    case 0x67: if (c.UnDoc()) { SetHigh(index, s.A); c.Next(8, 1, 2); } break;
    case 0x68: if (c.UnDoc()) { SetLow(index, s.B); c.Next(8, 1, 2); } break;
    case 0x69: if (c.UnDoc()) { SetLow(index, s.C); c.Next(8, 1, 2); } break;
    case 0x6A: if (c.UnDoc()) { SetLow(index, s.D); c.Next(8, 1, 2); } break;
    case 0x6B: if (c.UnDoc()) { SetLow(index, s.E); c.Next(8, 1, 2); } break;
    case 0x6C: if (c.UnDoc()) { SetLow(index, High(index)); c.Next(8, 1, 2); } break;
    case 0x6D: if (c.UnDoc()) { c.Next(8, 1, 2); } break;
    case 0x6E: s.L = c.Read(At(index, s.IndexDisp)); c.Next(19, 2, P::kLoadR); break;
    case 0x6F: if (c.UnDoc()) { SetLow(index, s.A); c.Next(8, 1, 2); } break;
    case 0x70: c.Write(At(index, s.IndexDisp), s.B); c.Next(P::kStoreT, 2); break;
    case 0x71: c.Write(At(index, s.IndexDisp), s.C); c.Next(P::kStoreT, 2); break;
    case 0x72: c.Write(At(index, s.IndexDisp), s.D); c.Next(P::kStoreT, 2); break;
    case 0x73: c.Write(At(index, s.IndexDisp), s.E); c.Next(P::kStoreT, 2); break;
    case 0x74: c.Write(At(index, s.IndexDisp), s.H); c.Next(P::kStoreT, 2); break;
    case 0x75: c.Write(At(index, s.IndexDisp), s.L); c.Next(P::kStoreT, 2); break;
    case 0x77: c.Write(At(index, s.IndexDisp), s.A); c.Next(P::kStoreT, 2); break;
    case 0x7C: if (c.UnDoc()) { s.A = High(index); c.Next(8, 1, 2); } break;
    case 0x7D: if (c.UnDoc()) { s.A = Low(index); c.Next(8, 1, 2); } break;
    case 0x7E: s.A = c.Read(At(index, s.IndexDisp)); c.Next(19, 2, 2); break;
    case 0x84: if (c.UnDoc()) { AddA(s, High(index)); c.Next(8, 1, 2); } break;
    case 0x85: if (c.UnDoc()) { AddA(s, Low(index)); c.Next(8, 1, 2); } break;
    case 0x86: AddA(s, c.Read(At(index, s.IndexDisp))); c.Next(19, 2); break;
    case 0x8C: if (c.UnDoc()) { AdcA(s, High(index)); c.Next(8, 1, 2); } break;
    case 0x8D: if (c.UnDoc()) { AdcA(s, Low(index)); c.Next(8, 1, 2); } break;
    case 0x8E: AdcA(s, c.Read(At(index, s.IndexDisp))); c.Next(19, 2, P::kAdcR); break;
    case 0x94: if (c.UnDoc()) { SubA(s, High(index)); c.Next(8, 1, 2); } break;
    case 0x95: if (c.UnDoc()) { SubA(s, Low(index)); c.Next(8, 1, 2); } break;
    case 0x96: SubA(s, c.Read(At(index, s.IndexDisp))); c.Next(19, 2); break;
    case 0x9C: if (c.UnDoc()) { SbcA(s, High(index)); c.Next(8, 1, 2); } break;
    case 0x9D: if (c.UnDoc()) { SbcA(s, Low(index)); c.Next(8, 1, 2); } break;
    case 0x9E: SbcA(s, c.Read(At(index, s.IndexDisp))); c.Next(19, 2, P::kSbcR); break;
    case 0xA4: if (c.UnDoc()) { AndA(s, High(index)); c.Next(8, 1, 2); } break;
    case 0xA5: if (c.UnDoc()) { AndA(s, Low(index)); c.Next(8, 1, 2); } break;
    case 0xA6: AndA(s, c.Read(At(index, s.IndexDisp))); c.Next(19, 2); break;
    case 0xAC: if (c.UnDoc()) { XorA(s, High(index)); c.Next(8, 1, 2); } break;
    case 0xAD: if (c.UnDoc()) { XorA(s, Low(index)); c.Next(8, 1, 2); } break;
    case 0xAE: XorA(s, c.Read(At(index, s.IndexDisp))); c.Next(19, 2); break;
    case 0xB4: if (c.UnDoc()) { OrA(s, High(index)); c.Next(8, 1, 2); } break;
    case 0xB5: if (c.UnDoc()) { OrA(s, Low(index)); c.Next(8, 1, 2); } break;
    case 0xB6: OrA(s, c.Read(At(index, s.IndexDisp))); c.Next(19, 2); break;
    case 0xBC: if (c.UnDoc()) { CpA(s, High(index)); c.Next(8, 1, 2); } break;
    case 0xBD: if (c.UnDoc()) { CpA(s, Low(index)); c.Next(8, 1, 2); } break;
    case 0xBE: CpA(s, c.Read(At(index, s.IndexDisp))); c.Next(19, 2); break;
    case 0xCB: c.pc += P::kCbStep; xxIndexCB<P>(c); break;
    case 0xE1: index = c.Pop(); c.Next(10); break;
    case 0xE3: ExchangeStack(c, index); break;
    case 0xE5: c.Push2(High(index), Low(index)); c.Next(15); break;
    case 0xE9: c.Jump(index, 8); break;
    case 0xF0: P::RaiseIrq(c); break;
    case 0xF1: P::RaiseNmi(c); break;
    case 0xF2: P::RaiseReset(c); break;
    case 0xF3: P::StopRun(c); break;
    case 0xF9: s.SP = index; c.Next(10, 1, 2); break;
    // Both ends of the range stand here so that the jump table needs no range check.
    case 0x00: case 0xFF: c.Missing(); break;
    default: c.Missing(); break;
  }
  // clang-format on
}

}  // namespace quoll
