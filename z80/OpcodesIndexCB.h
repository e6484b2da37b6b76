// The DD CB and FD CB pages, P says which. pc stands at the displacement, or at the CB byte before it; the
// opcode follows.
//
// Legend: Byte(n), Word(n) operand at pc + n; Next(T-states, length, steps of R), both 1 when left out;
// Jump(target, T-states, steps of R); AtHL, ToHL the byte at (HL).
#pragma once

#include "z80/Alu.h"
#include "z80/IndexForms.h"
#include "z80/IndexPages.h"

namespace quoll {

template <class P, class Core>
void xxIndexCB(Core& c) {
  auto& s = c.s;
  const int32_t& index = P::Pair(s);
  s.IndexDisp = SignByte(c.Byte(P::kCbLength - 2));
  // clang-format off
  switch (c.Fetch(P::kCbLength - 1)) {
    case 0x06: Modify(c, Rlc, index); c.Next(P::kCbRlcT, P::kCbLength); break;
    case 0x0E: Modify(c, Rrc, index); c.Next(23, P::kCbLength, P::kCbRrcR); break;
    case 0x16: Modify(c, Rl, index); c.Next(23, P::kCbLength); break;
    case 0x1E: Modify(c, Rr, index); c.Next(23, P::kCbLength); break;
    case 0x26: Modify(c, Sla, index); c.Next(P::kCbShiftT, P::kCbLength); break;
    case 0x2E: Modify(c, Sra, index); c.Next(P::kCbShiftT, P::kCbLength); break;
    case 0x30: if (c.UnDoc()) { s.B = Modify(c, Sll, index); c.Next(23, P::kCbLength); } break;
    case 0x31: if (c.UnDoc()) { s.C = Modify(c, Sll, index); c.Next(23, P::kCbLength); } break;
    case 0x32: if (c.UnDoc()) { s.D = Modify(c, Sll, index); c.Next(23, P::kCbLength); } break;
    case 0x33: if (c.UnDoc()) { s.E = Modify(c, Sll, index); c.Next(23, P::kCbLength); } break;
    case 0x34: if (c.UnDoc()) { s.H = Modify(c, Sll, index); c.Next(23, P::kCbLength); } break;
    case 0x35: if (c.UnDoc()) { s.L = Modify(c, Sll, index); c.Next(23, P::kCbLength); } break;
    case 0x36: if (c.UnDoc()) { Modify(c, Sll, index); c.Next(23, P::kCbLength); } break;
    case 0x37: if (c.UnDoc()) { s.A = Modify(c, Sll, index); c.Next(23, P::kCbLength); } break;
    case 0x3E: Modify(c, Srl, index); c.Next(P::kCbShiftT, P::kCbLength); break;
    case 0x46: TestBit(s, c.Read(At(index, s.IndexDisp)), 0); c.Next(20, P::kCbLength); break;
    case 0x4E: TestBit(s, c.Read(At(index, s.IndexDisp)), 1); c.Next(20, P::kCbLength); break;
    case 0x56: TestBit(s, c.Read(At(index, s.IndexDisp)), 2); c.Next(20, P::kCbLength); break;
    case 0x5E: TestBit(s, c.Read(At(index, s.IndexDisp)), 3); c.Next(20, P::kCbLength); break;
    case 0x66: TestBit(s, c.Read(At(index, s.IndexDisp)), 4); c.Next(20, P::kCbLength); break;
    case 0x6E: TestBit(s, c.Read(At(index, s.IndexDisp)), 5); c.Next(20, P::kCbLength); break;
    case 0x76: TestBit(s, c.Read(At(index, s.IndexDisp)), 6); c.Next(20, P::kCbLength); break;
    case 0x7E: TestBit(s, c.Read(At(index, s.IndexDisp)), 7); c.Next(20, P::kCbLength); break;
    case 0x86: ModifyBit(c, ResBit, index, 0); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0x8E: ModifyBit(c, ResBit, index, 1); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0x96: ModifyBit(c, ResBit, index, 2); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0x9E: ModifyBit(c, ResBit, index, 3); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xA6: ModifyBit(c, ResBit, index, 4); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xAE: ModifyBit(c, ResBit, index, 5); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xB6: ModifyBit(c, ResBit, index, 6); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xBE: ModifyBit(c, ResBit, index, 7); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xC6: ModifyBit(c, SetBit, index, 0); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xCE: ModifyBit(c, SetBit, index, 1); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xD6: ModifyBit(c, SetBit, index, 2); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xDE: ModifyBit(c, SetBit, index, 3); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xE6: ModifyBit(c, SetBit, index, 4); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xEE: ModifyBit(c, SetBit, index, 5); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xF6: ModifyBit(c, SetBit, index, 6); c.Next(P::kCbBitT, P::kCbLength); break;
    case 0xFE: ModifyBit(c, SetBit, index, 7); c.Next(P::kCbBitT, P::kCbLength); break;
    // Both ends of the range stand here so that the jump table needs no range check.
    case 0x00: case 0xFF: c.Missing(); break;
    default: c.Missing(); break;
  }
  // clang-format on
}

}  // namespace quoll
