// The unprefixed opcodes, and the four prefixes.
//
// Legend: Byte(n), Word(n) operand at pc + n; Next(T-states, length, steps of R), both 1 when left out;
// Jump(target, T-states, steps of R); AtHL, ToHL the byte at (HL).
#pragma once

#include <array>
#include <cstring>
#include <utility>

#include "z80/Alu.h"
#include "z80/OpcodesCB.h"
#include "z80/OpcodesED.h"
#include "z80/OpcodesIndex.h"

namespace quoll {

// Swaps two rows of neighbouring fields.
template <size_t kFields>
void SwapFields(Z80State& s, size_t first, size_t second) {
  std::array<int32_t, kFields> a;
  std::array<int32_t, kFields> b;
  auto* bytes = reinterpret_cast<unsigned char*>(&s);
  std::memcpy(a.data(), bytes + first, sizeof a);
  std::memcpy(b.data(), bytes + second, sizeof b);
  std::memcpy(bytes + first, b.data(), sizeof b);
  std::memcpy(bytes + second, a.data(), sizeof a);
}

inline void ExchangeAF(Z80State& s) {
  std::swap(s.A, s.A2);
  SwapFields<8>(s, offsetof(Z80State, FlagS), offsetof(Z80State, AltFlagS));
}

inline void ExchangeAll(Z80State& s) { SwapFields<6>(s, offsetof(Z80State, B), offsetof(Z80State, B2)); }

static_assert(offsetof(Z80State, AltFlagS) == offsetof(Z80State, FlagX) + sizeof(int32_t));
static_assert(offsetof(Z80State, A2) == offsetof(Z80State, L) + sizeof(int32_t));

template <class Core>
void PopAF(Core& c) {
  const int32_t af = c.Pop();
  c.s.A = High(af);
  UnpackF(c.s, Low(af));
  c.Next(10);
}

// EX (SP),HL: two bytes at SP and SP + 1; SP stays.
template <class Core>
void ExchangeStack(Core& c) {
  const int32_t word = c.ReadWord(c.s.SP);
  c.WriteWord(c.s.SP, HL(c.s));
  SetHL(c.s, word);
  c.Next(19, 1, 2);
}

template <class Core>
void JumpRel(Core& c) {
  const int32_t e = c.Byte(1);
  c.Jump(c.pc + 2 + SignByte(e), 12);
}

template <class Core>
void JumpRelIf(Core& c, bool condition) {
  if (condition) {
    JumpRel(c);
  } else {
    c.Next(7, 2);
  }
}

template <class Core>
void DecrementJump(Core& c) {
  c.s.B = (c.s.B - 1) & 0xFF;
  if (c.s.B != 0) {
    c.Jump(c.pc + 2 + SignByte(c.Byte(1)), 13);
  } else {
    c.Next(8, 2);
  }
}

template <class Core>
void JumpIf(Core& c, bool condition) {
  if (condition) {
    c.Jump(c.Word(1), 10);
  } else {
    c.Next(6, 3);
  }
}

// JP NZ leaves R alone when it jumps and takes its full time when it doesn't.
template <class Core>
void JumpIfNZ(Core& c) {
  if (c.s.FlagZ == 0) {
    c.Jump(c.Word(1), 10, 0);
  } else {
    c.Next(10, 3);
  }
}

// JP C takes no time when it jumps: a loop built on it alone never reaches the frame's end.
template <class Core>
void JumpIfC(Core& c) {
  if (c.s.FlagC == 1) {
    c.Jump(c.Word(1), 0);
    c.NoTime();
  } else {
    c.Next(6, 3);
  }
}

template <class Core>
void CallIf(Core& c, bool condition) {
  if (condition) {
    c.CallTo(c.Word(1), 17, 3, 1);
  } else {
    c.Next(10, 3);
  }
}

template <class Core>
void ReturnIf(Core& c, bool condition) {
  if (condition) {
    c.Jump(c.Pop(), 10, 2);
  } else {
    c.Next(5, 1, 2);
  }
}

// PC rests on the HALT. Until the slice ends nothing can change, so that all its passes are done at once.
template <class Core>
void Halt(Core& c) {
  c.s.Halted = 1;
  c.Next(4, 0);
  if (c.left <= 0) return;
  const int32_t more = (c.left + 3) / 4;
  c.RepeatPasses(more);
  c.Next(4 * more, 0, more);
}

template <class Core>
void xx(Core& c) {
  auto& s = c.s;
  // clang-format off
  switch (c.Fetch()) {
    case 0x00: c.Next(4); break;
    case 0x01: SetBC(s, c.Word(1)); c.Next(10, 3); break;
    case 0x02: c.Write(c.Address(BC(s)), s.A); c.Next(7); break;
    case 0x03: IncBC(s); c.Next(6); break;
    case 0x04: s.B = Inc8(s, s.B); c.Next(4); break;
    case 0x05: s.B = Dec8(s, s.B); c.Next(4); break;
    case 0x06: s.B = c.Byte(1); c.Next(7, 2); break;
    case 0x07: Rlca(s); c.Next(4); break;
    case 0x08: ExchangeAF(s); c.Next(4); break;
    case 0x09: AddHL(s, BC(s)); c.Next(11); break;
    case 0x0A: s.A = c.Read(c.Address(BC(s))); c.Next(7); break;
    case 0x0B: DecBC(s); c.Next(6); break;
    case 0x0C: s.C = Inc8(s, s.C); c.Next(4); break;
    case 0x0D: s.C = Dec8(s, s.C); c.Next(4); break;
    case 0x0E: s.C = c.Byte(1); c.Next(7, 2); break;
    case 0x0F: Rrca(s); c.Next(4); break;
    case 0x10: DecrementJump(c); break;
    case 0x11: SetDE(s, c.Word(1)); c.Next(10, 3); break;
    case 0x12: c.Write(c.Address(DE(s)), s.A); c.Next(7); break;
    case 0x13: IncDE(s); c.Next(6); break;
    case 0x14: s.D = Inc8(s, s.D); c.Next(4); break;
    case 0x15: s.D = Dec8(s, s.D); c.Next(4); break;
    case 0x16: s.D = c.Byte(1); c.Next(7, 2); break;
    case 0x17: Rla(s); c.Next(4); break;
    case 0x18: JumpRel(c); break;
    case 0x19: AddHL(s, DE(s)); c.Next(11); break;
    case 0x1A: s.A = c.Read(c.Address(DE(s))); c.Next(7); break;
    case 0x1B: DecDE(s); c.Next(6); break;
    case 0x1C: s.E = Inc8(s, s.E); c.Next(4); break;
    case 0x1D: s.E = Dec8(s, s.E); c.Next(4); break;
    case 0x1E: s.E = c.Byte(1); c.Next(7, 2); break;
    case 0x1F: Rra(s); c.Next(4); break;
    case 0x20: JumpRelIf(c, s.FlagZ == 0); break;
    case 0x21: SetHL(s, c.Word(1)); c.Next(10, 3); break;
    case 0x22: c.WriteWord(c.Word(1), HL(s)); c.Next(16, 3); break;
    case 0x23: IncHL(s); c.Next(6); break;
    case 0x24: s.H = Inc8(s, s.H); c.Next(4); break;
    case 0x25: s.H = Dec8(s, s.H); c.Next(4); break;
    case 0x26: s.H = c.Byte(1); c.Next(7, 2); break;
    case 0x27: Daa(s); c.Next(7); break;
    case 0x28: JumpRelIf(c, s.FlagZ == 1); break;
    case 0x29: AddHL(s, HL(s)); c.Next(11); break;
    case 0x2A: SetHL(s, c.ReadWord(c.Word(1))); c.Next(16, 3); break;
    case 0x2B: DecHL(s); c.Next(6); break;
    case 0x2C: s.L = Inc8(s, s.L); c.Next(4); break;
    case 0x2D: s.L = Dec8(s, s.L); c.Next(4); break;
    case 0x2E: s.L = c.Byte(1); c.Next(7, 2); break;
    case 0x2F: Cpl(s); c.Next(4); break;
    case 0x30: JumpRelIf(c, s.FlagC == 0); break;
    case 0x31: s.SP = c.Word(1); c.Next(10, 3); break;
    case 0x32: c.Write(c.Word(1), s.A); c.Next(13, 3); break;
    case 0x33: IncSP(s); c.Next(6); break;
    case 0x34: c.ToHL(Inc8(s, c.AtHL())); c.Next(11); break;
    case 0x35: c.ToHL(Dec8(s, c.AtHL())); c.Next(11); break;
    case 0x36: c.ToHL(c.Byte(1)); c.Next(10, 2); break;
    case 0x37: Scf(s); c.Next(4); break;
    case 0x38: JumpRelIf(c, s.FlagC == 1); break;
    case 0x39: AddHL(s, Low16(s.SP)); c.Next(11); break;
    case 0x3A: s.A = c.Read(c.Word(1)); c.Next(13, 3); break;
    case 0x3B: DecSP(s); c.Next(6); break;
    case 0x3C: s.A = Inc8(s, s.A); c.Next(4); break;
    case 0x3D: s.A = Dec8(s, s.A); c.Next(4); break;
    case 0x3E: s.A = c.Byte(1); c.Next(7, 2); break;
    case 0x3F: Ccf(s); c.Next(4); break;
    case 0x40: c.Next(4); break;
    case 0x41: s.B = s.C; c.Next(4); break;
    case 0x42: s.B = s.D; c.Next(4); break;
    case 0x43: s.B = s.E; c.Next(4); break;
    case 0x44: s.B = s.H; c.Next(4); break;
    case 0x45: s.B = s.L; c.Next(4); break;
    case 0x46: s.B = c.AtHL(); c.Next(7); break;
    case 0x47: s.B = s.A; c.Next(4); break;
    case 0x48: s.C = s.B; c.Next(4); break;
    case 0x49: c.Next(4); break;
    case 0x4A: s.C = s.D; c.Next(4); break;
    case 0x4B: s.C = s.E; c.Next(4); break;
    case 0x4C: s.C = s.H; c.Next(4); break;
    case 0x4D: s.C = s.L; c.Next(4); break;
    case 0x4E: s.C = c.AtHL(); c.Next(7); break;
    case 0x4F: s.C = s.A; c.Next(4); break;
    case 0x50: s.D = s.B; c.Next(4); break;
    case 0x51: s.D = s.C; c.Next(4); break;
    case 0x52: c.Next(4); break;
    case 0x53: s.D = s.E; c.Next(4); break;
    case 0x54: s.D = s.H; c.Next(4); break;
    case 0x55: s.D = s.L; c.Next(4); break;
    case 0x56: s.D = c.AtHL(); c.Next(7); break;
    case 0x57: s.D = s.A; c.Next(4); break;
    case 0x58: s.E = s.B; c.Next(4); break;
    case 0x59: s.E = s.C; c.Next(4); break;
    case 0x5A: s.E = s.D; c.Next(4); break;
    case 0x5B: c.Next(4); break;
    case 0x5C: s.E = s.H; c.Next(4); break;
    case 0x5D: s.E = s.L; c.Next(4); break;
    case 0x5E: s.E = c.AtHL(); c.Next(7); break;
    case 0x5F: s.E = s.A; c.Next(4); break;
    case 0x60: s.H = s.B; c.Next(4); break;
    case 0x61: s.H = s.C; c.Next(4); break;
    case 0x62: s.H = s.D; c.Next(4); break;
    case 0x63: s.H = s.E; c.Next(4); break;
    case 0x64: c.Next(4); break;
    case 0x65: s.H = s.L; c.Next(4); break;
    case 0x66: s.H = c.AtHL(); c.Next(7); break;
    case 0x67: s.H = s.A; c.Next(4); break;
    case 0x68: s.L = s.B; c.Next(4); break;
    case 0x69: s.L = s.C; c.Next(4); break;
    case 0x6A: s.L = s.D; c.Next(4); break;
    case 0x6B: s.L = s.E; c.Next(4); break;
    case 0x6C: s.L = s.H; c.Next(4); break;
    case 0x6D: c.Next(4); break;
    case 0x6E: s.L = c.AtHL(); c.Next(7); break;
    case 0x6F: s.L = s.A; c.Next(4); break;
    case 0x70: c.ToHL(s.B); c.Next(7); break;
    case 0x71: c.ToHL(s.C); c.Next(7); break;
    case 0x72: c.ToHL(s.D); c.Next(7); break;
    case 0x73: c.ToHL(s.E); c.Next(7); break;
    case 0x74: c.ToHL(s.H); c.Next(7); break;
    case 0x75: c.ToHL(s.L); c.Next(7); break;
    case 0x76: Halt(c); break;
    case 0x77: c.ToHL(s.A); c.Next(7); break;
    case 0x78: s.A = s.B; c.Next(4); break;
    case 0x79: s.A = s.C; c.Next(4); break;
    case 0x7A: s.A = s.D; c.Next(4); break;
    case 0x7B: s.A = s.E; c.Next(4); break;
    case 0x7C: s.A = s.H; c.Next(4); break;
    case 0x7D: s.A = s.L; c.Next(4); break;
    case 0x7E: s.A = c.AtHL(); c.Next(7); break;
    case 0x7F: c.Next(4); break;
    case 0x80: AddA(s, s.B); c.Next(4); break;
    case 0x81: AddA(s, s.C); c.Next(4); break;
    case 0x82: AddA(s, s.D); c.Next(4); break;
    case 0x83: AddA(s, s.E); c.Next(4); break;
    case 0x84: AddA(s, s.H); c.Next(4); break;
    case 0x85: AddA(s, s.L); c.Next(4); break;
    case 0x86: AddA(s, c.AtHL()); c.Next(7); break;
    case 0x87: AddA(s, s.A); c.Next(4); break;
    case 0x88: AdcA(s, s.B); c.Next(4); break;
    case 0x89: AdcA(s, s.C); c.Next(4); break;
    case 0x8A: AdcA(s, s.D); c.Next(4); break;
    case 0x8B: AdcA(s, s.E); c.Next(4); break;
    case 0x8C: AdcA(s, s.H); c.Next(4); break;
    case 0x8D: AdcA(s, s.L); c.Next(4); break;
    case 0x8E: AdcA(s, c.AtHL()); c.Next(7); break;
    case 0x8F: AdcA(s, s.A); c.Next(4); break;
    case 0x90: SubA(s, s.B); c.Next(4); break;
    case 0x91: SubA(s, s.C); c.Next(4); break;
    case 0x92: SubA(s, s.D); c.Next(4); break;
    case 0x93: SubA(s, s.E); c.Next(4); break;
    case 0x94: SubA(s, s.H); c.Next(4); break;
    case 0x95: SubA(s, s.L); c.Next(4); break;
    case 0x96: SubA(s, c.AtHL()); c.Next(7); break;
    case 0x97: SubA(s, s.A); c.Next(4); break;
    case 0x98: SbcA(s, s.B); c.Next(4); break;
    case 0x99: SbcA(s, s.C); c.Next(4); break;
    case 0x9A: SbcA(s, s.D); c.Next(4); break;
    case 0x9B: SbcA(s, s.E); c.Next(4); break;
    case 0x9C: SbcA(s, s.H); c.Next(4); break;
    case 0x9D: SbcA(s, s.L); c.Next(4); break;
    case 0x9E: SbcA(s, c.AtHL()); c.Next(7); break;
    case 0x9F: SbcA(s, s.A); c.Next(4); break;
    case 0xA0: AndA(s, s.B); c.Next(4); break;
    case 0xA1: AndA(s, s.C); c.Next(4); break;
    case 0xA2: AndA(s, s.D); c.Next(4); break;
    case 0xA3: AndA(s, s.E); c.Next(4); break;
    case 0xA4: AndA(s, s.H); c.Next(4); break;
    case 0xA5: AndA(s, s.L); c.Next(4); break;
    case 0xA6: AndA(s, c.AtHL()); c.Next(7); break;
    case 0xA7: AndA(s, s.A); c.Next(4); break;
    case 0xA8: XorA(s, s.B); c.Next(4); break;
    case 0xA9: XorA(s, s.C); c.Next(4); break;
    case 0xAA: XorA(s, s.D); c.Next(4); break;
    case 0xAB: XorA(s, s.E); c.Next(4); break;
    case 0xAC: XorA(s, s.H); c.Next(4); break;
    case 0xAD: XorA(s, s.L); c.Next(4); break;
    case 0xAE: XorA(s, c.AtHL()); c.Next(7); break;
    case 0xAF: XorA(s, s.A); c.Next(4); break;
    case 0xB0: OrA(s, s.B); c.Next(4); break;
    case 0xB1: OrA(s, s.C); c.Next(4); break;
    case 0xB2: OrA(s, s.D); c.Next(4); break;
    case 0xB3: OrA(s, s.E); c.Next(4); break;
    case 0xB4: OrA(s, s.H); c.Next(4); break;
    case 0xB5: OrA(s, s.L); c.Next(4); break;
    case 0xB6: OrA(s, c.AtHL()); c.Next(7); break;
    case 0xB7: OrA(s, s.A); c.Next(4); break;
    case 0xB8: CpA(s, s.B); c.Next(4); break;
    case 0xB9: CpA(s, s.C); c.Next(4); break;
    case 0xBA: CpA(s, s.D); c.Next(4); break;
    case 0xBB: CpA(s, s.E); c.Next(4); break;
    case 0xBC: CpA(s, s.H); c.Next(4); break;
    case 0xBD: CpA(s, s.L); c.Next(4); break;
    case 0xBE: CpA(s, c.AtHL()); c.Next(7); break;
    case 0xBF: CpA(s, s.A); c.Next(4); break;
    case 0xC0: ReturnIf(c, s.FlagZ == 0); break;
    case 0xC1: SetBC(s, c.Pop()); c.Next(10); break;
    case 0xC2: JumpIfNZ(c); break;
    case 0xC3: c.Jump(c.Word(1), 10); break;
    case 0xC4: CallIf(c, s.FlagZ == 0); break;
    case 0xC5: c.Push2(s.B, s.C); c.Next(11); break;
    case 0xC6: AddA(s, c.Byte(1)); c.Next(7, 2); break;
    case 0xC7: c.CallTo(0x00, 11, 1, 2); break;
    case 0xC8: ReturnIf(c, s.FlagZ == 1); break;
    case 0xC9: c.Jump(c.Pop(), 10); break;
    case 0xCA: JumpIf(c, s.FlagZ == 1); break;
    case 0xCB: ++c.pc; xxCB(c); break;
    case 0xCC: CallIf(c, s.FlagZ == 1); break;
    case 0xCD: c.CallTo(c.Word(1), 17, 3, 1); break;
    case 0xCE: AdcA(s, c.Byte(1)); c.Next(7, 2); break;
    case 0xCF: c.CallTo(0x08, 11, 1, 2); break;
    case 0xD0: ReturnIf(c, s.FlagC == 0); break;
    case 0xD1: SetDE(s, c.Pop()); c.Next(10); break;
    case 0xD2: JumpIf(c, s.FlagC == 0); break;
    case 0xD3: c.Out(c.Byte(1), s.A); c.Next(11, 2); break;
    case 0xD4: CallIf(c, s.FlagC == 0); break;
    case 0xD5: c.Push2(s.D, s.E); c.Next(11); break;
    case 0xD6: SubA(s, c.Byte(1)); c.Next(7, 2); break;
    case 0xD7: c.CallTo(0x10, 11, 1, 2); break;
    case 0xD8: ReturnIf(c, s.FlagC == 1); break;
    case 0xD9: ExchangeAll(s); c.Next(4); break;
    case 0xDA: JumpIfC(c); break;
    case 0xDB: s.A = c.In(c.Byte(1)); c.Next(11, 2, 3); break;
    case 0xDC: CallIf(c, s.FlagC == 1); break;
    case 0xDD: ++c.pc; xxIndex<IXPage>(c); break;
    case 0xDE: SbcA(s, c.Byte(1)); c.Next(4, 2); break;
    case 0xDF: c.CallTo(0x18, 11, 1, 2); break;
    case 0xE0: ReturnIf(c, s.FlagPV == 0); break;
    case 0xE1: SetHL(s, c.Pop()); c.Next(10); break;
    case 0xE2: JumpIf(c, s.FlagPV == 0); break;
    case 0xE3: ExchangeStack(c); break;
    case 0xE4: CallIf(c, s.FlagPV == 0); break;
    case 0xE5: c.Push2(s.H, s.L); c.Next(11); break;
    case 0xE6: AndA(s, c.Byte(1)); c.Next(7, 2); break;
    case 0xE7: c.CallTo(0x20, 11, 1, 2); break;
    case 0xE8: ReturnIf(c, s.FlagPV == 1); break;
    case 0xE9: c.Jump(HL(s), 4); break;
    case 0xEA: JumpIf(c, s.FlagPV == 1); break;
    case 0xEB: std::swap(s.D, s.H); std::swap(s.E, s.L); c.Next(4); break;
    case 0xEC: CallIf(c, s.FlagPV == 1); break;
    case 0xED: ++c.pc; xxED(c); break;
    case 0xEE: XorA(s, c.Byte(1)); c.Next(2, 2); break;
    case 0xEF: c.CallTo(0x28, 11, 1, 2); break;
    case 0xF0: ReturnIf(c, s.FlagS == 0); break;
    case 0xF1: PopAF(c); break;
    case 0xF2: JumpIf(c, s.FlagS == 0); break;
    case 0xF3: s.IFF1 = s.IFF2 = 0; c.Next(4); break;
    case 0xF4: CallIf(c, s.FlagS == 0); break;
    case 0xF5: c.Push2(s.A, PackF(s)); c.Next(11); break;
    case 0xF6: OrA(s, c.Byte(1)); c.Next(2, 2); break;
    case 0xF7: c.CallTo(0x30, 11, 1, 2); break;
    case 0xF8: ReturnIf(c, s.FlagS == 1); break;
    case 0xF9: s.SP = HL(s); c.Next(10); break;
    case 0xFA: JumpIf(c, s.FlagS == 1); break;
    case 0xFB: s.IFF1 = s.IFF2 = 1; c.Next(4); c.Cut(); break;
    case 0xFC: CallIf(c, s.FlagS == 1); break;
    case 0xFD: ++c.pc; xxIndex<IYPage>(c); break;
    case 0xFE: CpA(s, c.Byte(1)); c.Next(7, 2); break;
    case 0xFF: c.CallTo(0x38, 11, 1, 1); break;
  }
  // clang-format on
}

}  // namespace quoll
