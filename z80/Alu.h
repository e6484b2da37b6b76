// The processor's arithmetic. Each helper writes just the flags that it changes, each flag an integer of
// its own; FlagY and FlagX are touched by CpA and POP AF alone. 8-bit operands are 0 to 255. Index registers
// and stack pointer may hold any 32 bits; what is worked out from them counts their low 16.
#pragma once

#include <cstdint>

#include "core/Wrap.h"
#include "z80/FlagRows.h"
#include "z80/Z80State.h"

namespace quoll {

constexpr int32_t SignByte(int32_t v) { return static_cast<int8_t>(v); }

inline int32_t BC(const Z80State& s) { return (s.B << 8) | s.C; }
inline int32_t DE(const Z80State& s) { return (s.D << 8) | s.E; }
inline int32_t HL(const Z80State& s) { return (s.H << 8) | s.L; }
inline void SetBC(Z80State& s, int32_t v) { s.B = (v >> 8) & 0xFF, s.C = v & 0xFF; }
inline void SetDE(Z80State& s, int32_t v) { s.D = (v >> 8) & 0xFF, s.E = v & 0xFF; }
inline void SetHL(Z80State& s, int32_t v) { s.H = (v >> 8) & 0xFF, s.L = v & 0xFF; }
inline void IncBC(Z80State& s) { SetBC(s, BC(s) + 1); }
inline void IncDE(Z80State& s) { SetDE(s, DE(s) + 1); }
inline void IncHL(Z80State& s) { SetHL(s, HL(s) + 1); }
inline void DecBC(Z80State& s) { SetBC(s, BC(s) - 1); }
inline void DecDE(Z80State& s) { SetDE(s, DE(s) - 1); }
inline void DecHL(Z80State& s) { SetHL(s, HL(s) - 1); }
constexpr int32_t Low16(int32_t pair) { return pair & 0xFFFF; }
inline void IncPair(int32_t& pair) { pair = Low16(WrappingAdd(pair, 1)); }
inline void DecPair(int32_t& pair) { pair = Low16(WrappingSub(pair, 1)); }
inline void IncSP(Z80State& s) { IncPair(s.SP); }
inline void DecSP(Z80State& s) { DecPair(s.SP); }

// The halves of the index registers have no fields of their own.
inline int32_t High(int32_t pair) { return (pair >> 8) & 0xFF; }
inline int32_t Low(int32_t pair) { return pair & 0xFF; }
inline void SetHigh(int32_t& pair, int32_t v) { pair = (v << 8) | Low(pair); }
inline void SetLow(int32_t& pair, int32_t v) { pair = (pair & 0xFF00) | v; }

inline void AddCarry(Z80State& s, int32_t v, int32_t c) {
  const int32_t sum = s.A + v + c;
  FlagsCarry(s, kAddRows[static_cast<uint32_t>(s.A ^ v ^ sum)]);
  s.A = sum & 0xFF;
  FlagsSZ(s, s.A);
}

// The difference's flags and the difference itself; A stays.
inline int32_t Subtract(Z80State& s, int32_t v, int32_t c) {
  const int32_t difference = s.A - v - c;
  FlagsCarry(s, kSubRows[static_cast<uint32_t>(s.A ^ v ^ (difference & 0x1FF))]);
  const int32_t r = difference & 0xFF;
  FlagsSZ(s, r);
  return r;
}

inline void AddA(Z80State& s, int32_t v) { AddCarry(s, v, 0); }
inline void AdcA(Z80State& s, int32_t v) { AddCarry(s, v, s.FlagC); }
inline void SubA(Z80State& s, int32_t v) { s.A = Subtract(s, v, 0); }
inline void SbcA(Z80State& s, int32_t v) { s.A = Subtract(s, v, s.FlagC); }

inline void CpA(Z80State& s, int32_t v) {
  Subtract(s, v, 0);
  s.FlagY = (v >> 5) & 1;
  s.FlagX = (v >> 3) & 1;
}

inline void AndA(Z80State& s, int32_t v) {
  s.A &= v;
  FlagsLogic(s, s.A);
  s.FlagH = 1;
}

inline void OrA(Z80State& s, int32_t v) {
  s.A |= v;
  FlagsLogic(s, s.A);
}

inline void XorA(Z80State& s, int32_t v) {
  s.A ^= v;
  FlagsLogic(s, s.A);
}

inline int32_t Inc8(Z80State& s, int32_t v) {
  CopyRow(s, offsetof(Z80State, FlagS), kIncRows[static_cast<uint8_t>(v)]);
  s.FlagN = 0;
  return (v + 1) & 0xFF;
}

inline int32_t Dec8(Z80State& s, int32_t v) {
  CopyRow(s, offsetof(Z80State, FlagS), kDecRows[static_cast<uint8_t>(v)]);
  s.FlagN = 1;
  return (v - 1) & 0xFF;
}

inline int32_t Rlc(Z80State& s, int32_t v) {
  s.FlagC = v >> 7;
  const int32_t r = ((v << 1) & 0xFF) | s.FlagC;
  FlagsParity(s, r);
  return r;
}

inline int32_t Rrc(Z80State& s, int32_t v) {
  s.FlagC = v & 1;
  const int32_t r = (v >> 1) | (s.FlagC << 7);
  FlagsParity(s, r);
  return r;
}

inline int32_t Rl(Z80State& s, int32_t v) {
  const int32_t r = ((v << 1) & 0xFF) | s.FlagC;
  s.FlagC = v >> 7;
  FlagsParity(s, r);
  return r;
}

inline int32_t Rr(Z80State& s, int32_t v) {
  const int32_t r = (v >> 1) | (s.FlagC << 7);
  s.FlagC = v & 1;
  FlagsParity(s, r);
  return r;
}

inline int32_t Sla(Z80State& s, int32_t v) {
  const int32_t r = (v << 1) & 0xFF;
  s.FlagC = v >> 7;
  FlagsParity(s, r);
  return r;
}

inline int32_t Sra(Z80State& s, int32_t v) {
  const int32_t r = (v >> 1) | (v & 0x80);
  s.FlagC = v & 1;
  FlagsParity(s, r);
  return r;
}

// S goes up already at a shifted value of 127 and Z never does: so this processor's SLL behaves.
inline int32_t Sll(Z80State& s, int32_t v) {
  const int32_t shifted = (v << 1) & 0xFF;
  s.FlagC = v >> 7;
  FlagsParity(s, shifted + 1);
  s.FlagS = shifted > 126;
  s.FlagZ = 0;
  return shifted + 1;
}

inline int32_t Srl(Z80State& s, int32_t v) {
  const int32_t r = v >> 1;
  s.FlagC = v & 1;
  FlagsParity(s, r);
  return r;
}

constexpr int32_t SetBit(int32_t v, int32_t n) { return v | (1 << n); }
constexpr int32_t ResBit(int32_t v, int32_t n) { return v & ~(1 << n); }
constexpr bool BitOf(int32_t v, int32_t n) { return (v & (1 << n)) != 0; }

// BIT n: S is set only by bit 7.
inline void TestBit(Z80State& s, int32_t v, int32_t n) {
  const int32_t clear = !BitOf(v, n);
  s.FlagS = n == 7 && clear == 0;
  s.FlagZ = clear;
  s.FlagH = 1;
  s.FlagPV = clear;
  s.FlagN = 0;
}

// ADD of 16 bits: the sum; half is what the half carry is worked out from.
inline int32_t Add16(Z80State& s, int32_t pair, int32_t half, int32_t v) {
  const int32_t sum = pair + v;
  s.FlagH = ((half & 0xFFF) + (v & 0xFFF)) >> 12;
  s.FlagN = 0;
  s.FlagC = sum >> 16;
  return sum & 0xFFFF;
}

inline void AddHL(Z80State& s, int32_t v) { SetHL(s, Add16(s, HL(s), HL(s), v)); }
inline void AddIX(Z80State& s, int32_t v) { s.IX = Add16(s, Low16(s.IX), s.IX, v); }
// The half carry of ADD IY comes from IX: this processor mixes the two registers up, and code sees it.
inline void AddIY(Z80State& s, int32_t v) { s.IY = Add16(s, Low16(s.IY), s.IX, v); }

// The half carry of ADC and SBC HL takes the new carry in, not the old one.
inline void AdcHL(Z80State& s, int32_t v) {
  const int32_t hl = HL(s);
  const int32_t sum = hl + v + s.FlagC;
  const int32_t r = sum & 0xFFFF;
  s.FlagC = sum >> 16;
  s.FlagS = r >> 15;
  s.FlagZ = r == 0;
  s.FlagH = ((hl & 0xFFF) + (v & 0xFFF) + s.FlagC) >> 12;
  s.FlagPV = ((~(v ^ hl) & (hl ^ r)) >> 15) & 1;
  s.FlagN = 0;
  SetHL(s, r);
}

inline void SbcHL(Z80State& s, int32_t v) {
  const int32_t hl = HL(s);
  const int32_t difference = hl - v - s.FlagC;
  const int32_t r = difference & 0xFFFF;
  s.FlagC = difference < 0;
  s.FlagS = r >> 15;
  s.FlagZ = r == 0;
  s.FlagH = (((hl & 0xFFF) - (v & 0xFFF) - s.FlagC) >> 12) & 1;
  s.FlagPV = ((v ^ hl) & (hl ^ r)) >> 15;
  s.FlagN = 1;
  SetHL(s, r);
}

// Accumulator rotates: H and N cleared, S, Z and PV kept.
inline void RotateA(Z80State& s, int32_t r, int32_t carry) {
  s.A = r;
  s.FlagC = carry;
  s.FlagH = 0;
  s.FlagN = 0;
}
inline void Rlca(Z80State& s) { RotateA(s, ((s.A << 1) & 0xFF) | (s.A >> 7), s.A >> 7); }
inline void Rrca(Z80State& s) { RotateA(s, (s.A >> 1) | ((s.A & 1) << 7), s.A & 1); }
inline void Rla(Z80State& s) { RotateA(s, ((s.A << 1) & 0xFF) | s.FlagC, s.A >> 7); }
inline void Rra(Z80State& s) { RotateA(s, (s.A >> 1) | (s.FlagC << 7), s.A & 1); }

inline void Cpl(Z80State& s) {
  s.A ^= 0xFF;
  s.FlagH = 1;
  s.FlagN = 1;
}

inline void Scf(Z80State& s) {
  s.FlagC = 1;
  s.FlagH = 0;
  s.FlagN = 0;
}

inline void Ccf(Z80State& s) {
  s.FlagH = s.FlagC;
  s.FlagC ^= 1;
  s.FlagN = 0;
}

inline void Neg(Z80State& s) {
  s.FlagC = s.A != 0;
  s.FlagPV = s.A == 0x80;
  s.A = (256 - s.A) & 0xFF;
  s.FlagH = (s.A & 15) != 0;
  s.FlagN = 1;
  FlagsSZ(s, s.A);
}

inline void Daa(Z80State& s) {
  const int32_t oldA = s.A;
  const int32_t oldC = s.FlagC;
  const bool lowAbove9 = (oldA & 15) > 9;
  int32_t adjust = s.FlagH == 1 || lowAbove9 ? 6 : 0;
  if (oldC == 1 || oldA > 0x9F || (oldA > 0x8F && lowAbove9)) adjust |= 0x60;
  if (s.FlagN == 1) {
    SubA(s, adjust);
  } else {
    AddA(s, adjust);
  }
  s.FlagC = oldA < 0x9A ? oldC : 1;
  s.FlagPV = kResultRows[static_cast<uint8_t>(s.A)].PV;
}

// The F byte exists only while it is pushed or popped.
inline int32_t PackF(const Z80State& s) {
  return s.FlagS << 7 | s.FlagZ << 6 | s.FlagY << 5 | s.FlagH << 4 | s.FlagX << 3 | s.FlagPV << 2 |
         s.FlagN << 1 | s.FlagC;
}

inline void UnpackF(Z80State& s, int32_t f) {
  CopyRow(s, offsetof(Z80State, FlagS), kFRows[static_cast<uint8_t>(f)]);
}

}  // namespace quoll
