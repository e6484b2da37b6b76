// The ED page. INI, IND, their repeats, OTIR and OTDR do not exist on this processor.
//
// Legend: Byte(n), Word(n) operand at pc + n; Next(T-states, length, steps of R), both 1 when left out;
// Jump(target, T-states, steps of R); AtHL, ToHL the byte at (HL).
#pragma once

#include <algorithm>

#include "z80/Alu.h"

namespace quoll {

// IN r,(C): the port number is C alone.
template <class Core>
int32_t InFromC(Core& c) {
  const int32_t value = c.In(c.s.C);
  FlagsParity(c.s, value);
  return value;
}

// LD A,I and LD A,R.
inline void LoadFlagged(Z80State& s, int32_t value) {
  s.A = value;
  FlagsSZ(s, value);
  s.FlagH = 0;
  s.FlagPV = s.IFF2 & 1;
  s.FlagN = 0;
}

template <class Core>
void Rrd(Core& c) {
  const int32_t memory = c.AtHL();
  const int32_t low = c.s.A & 15;
  c.s.A = (c.s.A & 0xF0) | (memory & 15);
  c.ToHL(memory >> 4 | low << 4);
  FlagsParity(c.s, c.s.A);
}

template <class Core>
void Rld(Core& c) {
  const int32_t memory = c.AtHL();
  const int32_t low = c.s.A & 15;
  c.s.A = (c.s.A & 0xF0) | memory >> 4;
  c.ToHL(((memory << 4) & 0xFF) | low);
  FlagsParity(c.s, c.s.A);
}

// One transfer of LDI and kin; true while BC is not 0.
template <int kStep, class Core>
bool MoveByte(Core& c) {
  auto& s = c.s;
  const int32_t from = HL(s);
  const int32_t to = DE(s);
  const int32_t count = BC(s) - 1;
  c.Write(c.Address(to), c.Read(c.Address(from)));
  SetDE(s, to + kStep);
  SetHL(s, from + kStep);
  SetBC(s, count);
  s.FlagH = 0;
  s.FlagN = 0;
  s.FlagPV = count != 0;
  return count != 0;
}

template <int kStep, class Core>
void LoadBlock(Core& c) {
  const bool more = MoveByte<kStep>(c);
  c.Next(more ? 21 : 16);
}

// A repeat goes back to the prefix, to be run again as the next pass. While the slice lasts and the two
// opcode bytes are still there, that pass is begun right here; false when the run loop has to do it.
template <class Core>
bool RepeatHere(Core& c) {
  if (c.left <= 0 || c.Byte(0) != 0xED || c.Byte(1) != c.s.CurOpcode) return false;
  c.BeginPass();
  ++c.pc;
  return true;
}

// How many bytes lie from an address to the end of its granule, going in steps of kStep.
template <int kStep>
int32_t GranuleRest(int32_t address) {
  return kStep > 0 ? 0x1000 - (address & 0xFFF) : (address & 0xFFF) + 1;
}

// Does at once as many of the repeating passes as fit: up to the end of the slice, of the block but its last
// byte, and of the granules read and written. None when the block would overwrite the instruction itself.
template <int kStep, class Core>
void MoveAhead(Core& c) {
  auto& s = c.s;
  const int32_t from = HL(s);
  const int32_t to = DE(s);
  const int32_t passes =
      std::min({(c.left + 20) / 21, BC(s) - 1, GranuleRest<kStep>(from), GranuleRest<kStep>(to)});
  const uint8_t* source = c.ReadPointer(from);
  uint8_t* target = c.WritePointer(to);
  if (passes <= 1 || target == nullptr || c.Byte(0) != 0xED || c.Byte(1) != c.s.CurOpcode) return;
  const auto inTarget = [&](const uint8_t* code) {
    const auto distance =
        static_cast<intptr_t>(reinterpret_cast<uintptr_t>(code) - reinterpret_cast<uintptr_t>(target));
    return distance * kStep >= 0 && distance * kStep < passes;
  };
  if (inTarget(c.ReadPointer(c.pc)) || inTarget(c.ReadPointer(c.pc + 1))) return;
  for (int32_t i = 0; i < passes; ++i) target[i * kStep] = source[i * kStep];
  SetHL(s, from + passes * kStep);
  SetDE(s, to + passes * kStep);
  SetBC(s, BC(s) - passes);
  c.RepeatPasses(passes);
  c.Next(21 * passes, 0, passes);
}

// The repeating forms stand apart from the page: they work on a copy, so that the run loop's own stays in
// host registers.
template <int kStep, class Core>
[[gnu::noinline]] Core LoadBlockRepeat(Core c) {
  do {
    if (!MoveByte<kStep>(c)) {
      c.Next(16);
      break;
    }
    c.Next(21, -1);
    if constexpr (Core::kMappedMemory) MoveAhead<kStep>(c);
  } while (RepeatHere(c));
  return c;
}

// One comparison of CPI and kin; true while BC is not 0 and nothing matched.
template <int kStep, class Core>
bool CompareByte(Core& c) {
  auto& s = c.s;
  const int32_t carry = s.FlagC;
  CpA(s, c.AtHL());
  s.FlagC = carry;
  SetHL(s, HL(s) + kStep);
  DecBC(s);
  s.FlagPV = s.B + s.C != 0;
  return s.FlagZ == 0 && s.FlagPV != 0;
}

template <int kStep, class Core>
void CompareBlock(Core& c) {
  CompareByte<kStep>(c);
  c.Next(16, 1, 0);
}

template <int kStep, class Core>
[[gnu::noinline]] Core CompareBlockRepeat(Core c) {
  do {
    if (!CompareByte<kStep>(c)) {
      c.Next(16, 1, 0);
      break;
    }
    c.Next(21, -1, 0);
  } while (RepeatHere(c));
  return c;
}

template <int kStep, class Core>
void OutBlock(Core& c) {
  auto& s = c.s;
  int32_t value = c.AtHL();
  c.Out(s.C, value);
  SetHL(s, HL(s) + kStep);
  s.B = Dec8(s, s.B);
  s.FlagZ = s.B == 0;
  s.FlagN = 1;
  c.Next(16, 1, 0);
}

template <class Core>
void xxED(Core& c) {
  auto& s = c.s;
  // clang-format off
  switch (c.Fetch()) {
    case 0x40: s.B = InFromC(c); c.Next(12); break;
    case 0x41: c.Out(s.C, s.B); c.Next(12); break;
    case 0x42: SbcHL(s, BC(s)); c.Next(15); break;
    case 0x43: c.WriteWord(c.Word(1), BC(s)); c.Next(20, 3, 2); break;
    case 0x44: Neg(s); c.Next(8); break;
    case 0x45: s.IFF1 = s.IFF2; c.Jump(c.Pop(), 14); c.Cut(); break;
    case 0x46: s.IM = 0; c.Next(8, 1, 2); break;
    case 0x47: s.I = s.A; c.Next(9, 1, 0); break;
    case 0x48: s.C = InFromC(c); c.Next(12); break;
    case 0x49: c.Out(s.C, s.C); c.Next(12); break;
    case 0x4A: AdcHL(s, BC(s)); c.Next(15); break;
    case 0x4B: SetBC(s, c.ReadWord(c.Word(1))); c.Next(20, 3); break;
    case 0x4D: c.Jump(c.Pop(), 14); break;
    case 0x4F: c.refresh = s.A; c.Next(9); break;
    case 0x50: s.D = InFromC(c); c.Next(12); break;
    case 0x51: c.Out(s.C, s.D); c.Next(12); break;
    case 0x52: SbcHL(s, DE(s)); c.Next(15); break;
    case 0x53: c.WriteWord(c.Word(1), DE(s)); c.Next(20, 3, 2); break;
    case 0x56: s.IM = 1; c.Next(8, 1, 2); break;
    case 0x57: LoadFlagged(s, s.I & 0xFF); c.Next(9); break;
    case 0x58: s.E = InFromC(c); c.Next(12); break;
    case 0x59: c.Out(s.C, s.E); c.Next(12); break;
    case 0x5A: AdcHL(s, DE(s)); c.Next(15); break;
    case 0x5B: SetDE(s, c.ReadWord(c.Word(1))); c.Next(20, 3); break;
    case 0x5E: s.IM = 2; c.Next(8, 1, 2); break;
    case 0x5F: LoadFlagged(s, c.refresh & 0xFF); c.refresh = s.A; c.Next(9, 1, 2); break;
    case 0x60: s.H = InFromC(c); c.Next(12); break;
    case 0x61: c.Out(s.C, s.H); c.Next(12); break;
    case 0x62: SbcHL(s, HL(s)); c.Next(15); break;
    case 0x63: c.WriteWord(c.Word(1), HL(s)); c.Next(20, 3, 2); break;
    case 0x67: Rrd(c); c.Next(18, 1, 5); break;
    case 0x68: s.L = InFromC(c); c.Next(12); break;
    case 0x69: c.Out(s.C, s.L); c.Next(12); break;
    case 0x6A: AdcHL(s, HL(s)); c.Next(15); break;
    case 0x6B: SetHL(s, c.ReadWord(c.Word(1))); c.Next(20, 3); break;
    case 0x6F: Rld(c); c.Next(18, 1, 5); break;
    case 0x72: SbcHL(s, Low16(s.SP)); c.Next(15); break;
    case 0x73: c.WriteWord(c.Word(1), s.SP); c.Next(20, 3, 2); break;
    case 0x78: s.A = InFromC(c); c.Next(12); break;
    case 0x79: c.Out(s.C, s.A); c.Next(12); break;
    case 0x7A: AdcHL(s, Low16(s.SP)); c.Next(11); break;
    case 0x7B: s.SP = c.ReadWord(c.Word(1)); c.Next(20, 3); break;
    case 0xA0: LoadBlock<1>(c); break;
    case 0xA1: CompareBlock<1>(c); break;
    case 0xA3: OutBlock<1>(c); break;
    case 0xA8: LoadBlock<-1>(c); break;
    case 0xA9: CompareBlock<-1>(c); break;
    case 0xAB: OutBlock<-1>(c); break;
    case 0xB0: c = LoadBlockRepeat<1>(c); break;
    case 0xB1: c = CompareBlockRepeat<1>(c); break;
    case 0xB8: c = LoadBlockRepeat<-1>(c); break;
    case 0xB9: c = CompareBlockRepeat<-1>(c); break;
    // Both ends of the range stand here so that the jump table needs no range check.
    case 0x00: case 0xFF: c.Missing(); break;
    default: c.Missing(); break;
  }
  // clang-format on
}

}  // namespace quoll
