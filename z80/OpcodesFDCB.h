// The FD CB page. pc stands at the CB byte, displacement and opcode follow it.
//
// Legend: Byte(n), Word(n) operand at pc + n; Next(T-states, length, steps of R), both 1 when left out;
// Jump(target, T-states, steps of R); AtHL, ToHL the byte at (HL).
#pragma once

#include "z80/Alu.h"
#include "z80/IndexForms.h"

namespace quoll {

template <class Core>
void xxFDCB(Core& c) {
  auto& s = c.s;
  s.IndexDisp = SignByte(c.Byte(1));
  // clang-format off
  switch (c.Fetch(2)) {
    case 0x06: Modify(c, Rlc, s.IY); c.Next(20, 3); break;
    case 0x0E: Modify(c, Rrc, s.IY); c.Next(23, 3, 6); break;
    case 0x16: Modify(c, Rl, s.IY); c.Next(23, 3); break;
    case 0x1E: Modify(c, Rr, s.IY); c.Next(23, 3); break;
    case 0x26: Modify(c, Sla, s.IY); c.Next(23, 3); break;
    case 0x2E: Modify(c, Sra, s.IY); c.Next(23, 3); break;
    case 0x30: if (c.UnDoc()) { s.B = Modify(c, Sll, s.IY); c.Next(23, 3); } break;
    case 0x31: if (c.UnDoc()) { s.C = Modify(c, Sll, s.IY); c.Next(23, 3); } break;
    case 0x32: if (c.UnDoc()) { s.D = Modify(c, Sll, s.IY); c.Next(23, 3); } break;
    case 0x33: if (c.UnDoc()) { s.E = Modify(c, Sll, s.IY); c.Next(23, 3); } break;
    case 0x34: if (c.UnDoc()) { s.H = Modify(c, Sll, s.IY); c.Next(23, 3); } break;
    case 0x35: if (c.UnDoc()) { s.L = Modify(c, Sll, s.IY); c.Next(23, 3); } break;
    case 0x36: if (c.UnDoc()) { Modify(c, Sll, s.IY); c.Next(23, 3); } break;
    case 0x37: if (c.UnDoc()) { s.A = Modify(c, Sll, s.IY); c.Next(23, 3); } break;
    case 0x3E: Modify(c, Srl, s.IY); c.Next(23, 3); break;
    case 0x46: TestBit(s, c.Read(s.IY + s.IndexDisp), 0); c.Next(20, 3); break;
    case 0x4E: TestBit(s, c.Read(s.IY + s.IndexDisp), 1); c.Next(20, 3); break;
    case 0x56: TestBit(s, c.Read(s.IY + s.IndexDisp), 2); c.Next(20, 3); break;
    case 0x5E: TestBit(s, c.Read(s.IY + s.IndexDisp), 3); c.Next(20, 3); break;
    case 0x66: TestBit(s, c.Read(s.IY + s.IndexDisp), 4); c.Next(20, 3); break;
    case 0x6E: TestBit(s, c.Read(s.IY + s.IndexDisp), 5); c.Next(20, 3); break;
    case 0x76: TestBit(s, c.Read(s.IY + s.IndexDisp), 6); c.Next(20, 3); break;
    case 0x7E: TestBit(s, c.Read(s.IY + s.IndexDisp), 7); c.Next(20, 3); break;
    case 0x86: ModifyBit(c, ResBit, s.IY, 0); c.Next(20, 3); break;
    case 0x8E: ModifyBit(c, ResBit, s.IY, 1); c.Next(20, 3); break;
    case 0x96: ModifyBit(c, ResBit, s.IY, 2); c.Next(20, 3); break;
    case 0x9E: ModifyBit(c, ResBit, s.IY, 3); c.Next(20, 3); break;
    case 0xA6: ModifyBit(c, ResBit, s.IY, 4); c.Next(20, 3); break;
    case 0xAE: ModifyBit(c, ResBit, s.IY, 5); c.Next(20, 3); break;
    case 0xB6: ModifyBit(c, ResBit, s.IY, 6); c.Next(20, 3); break;
    case 0xBE: ModifyBit(c, ResBit, s.IY, 7); c.Next(20, 3); break;
    case 0xC6: ModifyBit(c, SetBit, s.IY, 0); c.Next(20, 3); break;
    case 0xCE: ModifyBit(c, SetBit, s.IY, 1); c.Next(20, 3); break;
    case 0xD6: ModifyBit(c, SetBit, s.IY, 2); c.Next(20, 3); break;
    case 0xDE: ModifyBit(c, SetBit, s.IY, 3); c.Next(20, 3); break;
    case 0xE6: ModifyBit(c, SetBit, s.IY, 4); c.Next(20, 3); break;
    case 0xEE: ModifyBit(c, SetBit, s.IY, 5); c.Next(20, 3); break;
    case 0xF6: ModifyBit(c, SetBit, s.IY, 6); c.Next(20, 3); break;
    case 0xFE: ModifyBit(c, SetBit, s.IY, 7); c.Next(20, 3); break;
    // Both ends of the range stand here so that the jump table needs no range check.
    case 0x00: case 0xFF: c.Missing(); break;
    default: c.Missing(); break;
  }
  // clang-format on
}

}  // namespace quoll
