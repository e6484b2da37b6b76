// The arithmetic of the processor once more, slow and without tables, each flag by its own rule: what the
// tests hold the fast helpers against. Every function changes the flags that its rule names and no others.
#pragma once

#include <cstdint>

#include "z80/Z80State.h"

namespace quoll::z80test::plain {

// Bit n of v; a negative v has all its high bits set.
inline int32_t Bit(int32_t v, int32_t n) { return (v >> n) & 1; }

inline int32_t Parity(int32_t v) {
  int32_t ones = 0;
  for (int32_t n = 0; n < 8; ++n) ones += Bit(v, n);
  return ones % 2 == 0 ? 1 : 0;
}

inline int32_t IsZero(int32_t v) { return v == 0 ? 1 : 0; }

inline void Add(Z80State& s, int32_t v, int32_t c) {
  const int32_t sum = s.A + v + c;
  const int32_t r = sum & 255;
  s.FlagS = Bit(r, 7);
  s.FlagZ = IsZero(r);
  s.FlagH = Bit((s.A & 15) + (v & 15) + c, 4);
  s.FlagPV = Bit((~v ^ s.A) & (s.A ^ r), 7);
  s.FlagN = 0;
  s.FlagC = Bit(sum, 8);
  s.A = r;
}

inline void Sub(Z80State& s, int32_t v, int32_t c) {
  const int32_t difference = s.A - v - c;
  const int32_t r = difference & 255;
  s.FlagS = Bit(r, 7);
  s.FlagZ = IsZero(r);
  s.FlagH = Bit((s.A & 15) - (v & 15) - c, 4);
  s.FlagPV = Bit((s.A ^ v) & (s.A ^ r), 7);
  s.FlagN = 1;
  s.FlagC = Bit(difference, 8);
  s.A = r;
}

inline void AddA(Z80State& s, int32_t v) { Add(s, v, 0); }
inline void AdcA(Z80State& s, int32_t v) { Add(s, v, s.FlagC == 1 ? 1 : 0); }
inline void SubA(Z80State& s, int32_t v) { Sub(s, v, 0); }
inline void SbcA(Z80State& s, int32_t v) { Sub(s, v, s.FlagC == 1 ? 1 : 0); }

inline void CpA(Z80State& s, int32_t v) {
  const int32_t kept = s.A;
  Sub(s, v, 0);
  s.A = kept;
  s.FlagY = Bit(v, 5);
  s.FlagX = Bit(v, 3);
}

inline void Logic(Z80State& s, int32_t r, int32_t h) {
  s.A = r;
  s.FlagS = r > 127 ? 1 : 0;
  s.FlagZ = IsZero(r);
  s.FlagH = h;
  s.FlagPV = Parity(r);
  s.FlagN = 0;
  s.FlagC = 0;
}

inline void AndA(Z80State& s, int32_t v) { Logic(s, s.A & v, 1); }
inline void XorA(Z80State& s, int32_t v) { Logic(s, s.A ^ v, 0); }
inline void OrA(Z80State& s, int32_t v) { Logic(s, s.A | v, 0); }

inline int32_t Inc8(Z80State& s, int32_t v) {
  s.FlagS = Bit(v + 1, 7);
  s.FlagZ = IsZero((v + 1) & 255);
  s.FlagH = Bit((v & 15) + 1, 4);
  s.FlagPV = v == 127 ? 1 : 0;
  s.FlagN = 0;
  return (v + 1) & 255;
}

inline int32_t Dec8(Z80State& s, int32_t v) {
  s.FlagS = Bit(v - 1, 7);
  s.FlagZ = v == 1 ? 1 : 0;
  s.FlagH = Bit((v & 15) - 1, 4);
  s.FlagPV = v == 128 ? 1 : 0;
  s.FlagN = 1;
  return (v - 1) & 255;
}

inline int32_t Shifted(Z80State& s, int32_t r, int32_t out) {
  s.FlagS = r > 127 ? 1 : 0;
  s.FlagZ = IsZero(r);
  s.FlagH = 0;
  s.FlagPV = Parity(r);
  s.FlagN = 0;
  s.FlagC = out;
  return r;
}

inline int32_t Rlc(Z80State& s, int32_t v) {
  const int32_t r = 2 * v >= 256 ? 2 * v - 255 : 2 * v;
  return Shifted(s, r, 2 * v >= 256 ? 1 : 0);
}
inline int32_t Rrc(Z80State& s, int32_t v) { return Shifted(s, v / 2 + 128 * Bit(v, 0), Bit(v, 0)); }
inline int32_t Rl(Z80State& s, int32_t v) { return Shifted(s, (2 * v & 255) + s.FlagC, Bit(v, 7)); }
inline int32_t Rr(Z80State& s, int32_t v) { return Shifted(s, v / 2 + 128 * s.FlagC, Bit(v, 0)); }
inline int32_t Sla(Z80State& s, int32_t v) { return Shifted(s, 2 * v & 255, Bit(v, 7)); }
inline int32_t Sra(Z80State& s, int32_t v) { return Shifted(s, v / 2 + (v & 128), Bit(v, 0)); }
inline int32_t Srl(Z80State& s, int32_t v) {
  const int32_t r = Shifted(s, v / 2, Bit(v, 0));
  s.FlagS = 0;
  return r;
}
inline int32_t Sll(Z80State& s, int32_t v) {
  const int32_t r = Shifted(s, (2 * v & 255) + 1, Bit(v, 7));
  s.FlagS = (2 * v & 255) > 126 ? 1 : 0;
  s.FlagZ = 0;
  return r;
}

inline void TestBit(Z80State& s, int32_t v, int32_t n) {
  const int32_t set = Bit(v, n);
  s.FlagS = n == 7 && set == 1 ? 1 : 0;
  s.FlagZ = 1 - set;
  s.FlagH = 1;
  s.FlagPV = 1 - set;
  s.FlagN = 0;
}

// Adds to a pair; half is the pair of which the half carry is made.
inline int32_t AddPair(Z80State& s, int32_t pair, int32_t half, int32_t v) {
  s.FlagH = (half & 0xFFF) + (v & 0xFFF) >= 4096 ? 1 : 0;
  s.FlagC = Bit(pair + v, 16);
  s.FlagN = 0;
  return (pair + v) & 0xFFFF;
}

inline int32_t HlOf(const Z80State& s) { return s.H * 256 + s.L; }
inline void PutHl(Z80State& s, int32_t v) { s.H = v / 256, s.L = v % 256; }

inline void AddHL(Z80State& s, int32_t v) { PutHl(s, AddPair(s, HlOf(s), HlOf(s), v)); }
inline void AddIX(Z80State& s, int32_t v) { s.IX = AddPair(s, s.IX, s.IX, v); }
// The half carry is that of IX: the machine's own mistake.
inline void AddIY(Z80State& s, int32_t v) { s.IY = AddPair(s, s.IY, s.IX, v); }

// The half carry takes in the new carry, not the old one.
inline void AdcHL(Z80State& s, int32_t v) {
  const int32_t hl = HlOf(s), sum = hl + v + s.FlagC, r = sum & 0xFFFF;
  s.FlagS = Bit(r, 15);
  s.FlagZ = IsZero(r);
  s.FlagC = Bit(sum, 16);
  s.FlagN = 0;
  s.FlagPV = Bit((~v ^ hl) & (hl ^ r), 15);
  s.FlagH = Bit((hl & 0xFFF) + (v & 0xFFF) + s.FlagC, 12);
  PutHl(s, r);
}

inline void SbcHL(Z80State& s, int32_t v) {
  const int32_t hl = HlOf(s), difference = hl - v - s.FlagC, r = difference & 0xFFFF;
  s.FlagS = Bit(r, 15);
  s.FlagZ = IsZero(r);
  s.FlagC = Bit(difference, 16);
  s.FlagPV = Bit((v ^ hl) & (hl ^ r), 15);
  s.FlagH = Bit((hl & 0xFFF) - (v & 0xFFF) - s.FlagC, 12);
  s.FlagN = 1;
  PutHl(s, r);
}

inline void Daa(Z80State& s) {
  const int32_t a = s.A, h = s.FlagH, c = s.FlagC, n = s.FlagN;
  const int32_t t = h == 1 || (a & 15) > 9 ? 6 : 0;
  int32_t u = c == 1 || a > 0x9F ? (t | 0x60) : t;
  if (a > 0x8F && (a & 15) > 9) u = t | 0x60;
  if (n == 1)
    Sub(s, u, 0);
  else
    Add(s, u, 0);
  s.FlagC = a < 0x9A ? c : 1;
  s.FlagPV = Parity(s.A);
}

inline void Neg(Z80State& s) {
  s.FlagC = s.A != 0 ? 1 : 0;
  s.FlagPV = s.A == 0x80 ? 1 : 0;
  s.A = s.A == 0 ? 0 : 256 - s.A;
  s.FlagH = (s.A & 15) != 0 ? 1 : 0;
  s.FlagN = 1;
  s.FlagS = s.A > 127 ? 1 : 0;
  s.FlagZ = IsZero(s.A);
}

inline void RotatedA(Z80State& s, int32_t a, int32_t carry) {
  s.A = a;
  s.FlagC = carry;
  s.FlagH = 0;
  s.FlagN = 0;
}

inline void Rlca(Z80State& s) {
  const int32_t twice = 2 * s.A;
  RotatedA(s, twice > 255 ? twice - 255 : twice, twice > 255 ? 1 : 0);
}
inline void Rrca(Z80State& s) { RotatedA(s, s.A / 2 + (Bit(s.A, 0) == 1 ? 128 : 0), Bit(s.A, 0)); }
inline void Rla(Z80State& s) { RotatedA(s, (2 * s.A & 255) + s.FlagC, s.A > 127 ? 1 : 0); }
inline void Rra(Z80State& s) { RotatedA(s, s.A / 2 + (s.FlagC != 0 ? 128 : 0), Bit(s.A, 0)); }

inline void Cpl(Z80State& s) { s.A = s.A ^ 0xFF, s.FlagH = 1, s.FlagN = 1; }
inline void Scf(Z80State& s) { s.FlagC = 1, s.FlagH = 0, s.FlagN = 0; }
inline void Ccf(Z80State& s) {
  s.FlagH = s.FlagC;
  s.FlagC = s.FlagC != 1 ? 1 : 0;
  s.FlagN = 0;
}

// S, Z and parity of a byte; H and N cleared, carry kept.
inline void ByteFlags(Z80State& s, int32_t v) {
  s.FlagS = v > 127 ? 1 : 0;
  s.FlagZ = IsZero(v);
  s.FlagH = 0;
  s.FlagN = 0;
  s.FlagPV = Parity(v);
}

}  // namespace quoll::z80test::plain
