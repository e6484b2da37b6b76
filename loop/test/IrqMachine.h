// A machine for the tests of interrupts and requests.
#pragma once

#include <ostream>

#include "testkit/TestMachine.h"

namespace quoll::test {

inline constexpr int32_t kIrqEntry = 0x0038, kNmiEntry = 0x0066;

// Stack in U2, mode 1, stop at the interrupt's and the NMI's entry.
inline TestMachine IrqMachine(int32_t start = 0x1000) {
  TestMachine m;
  m->z80.PC = start;
  m->z80.SP = 0x9000;
  m->z80.IM = 1;
  Put(*m, kIrqEntry, {0xFD, 0xF3});
  Put(*m, kNmiEntry, {0xFD, 0xF3});
  return m;
}

// Where the processor stands and what it lets in.
struct Standing {
  int32_t PC, SP, IFF1, IFF2, IrqLine, FrameClock;
  bool operator==(const Standing&) const = default;
};
inline Standing StandingOf(const Machine& m) {
  return {m.z80.PC, m.z80.SP, m.z80.IFF1, m.z80.IFF2, m.z80.IrqLine, m.run.FrameClock};
}
inline void PrintTo(const Standing& s, std::ostream* out) {
  *out << "PC " << s.PC << " SP " << s.SP << " IFF " << s.IFF1 << s.IFF2 << " line " << s.IrqLine << " clock "
       << s.FrameClock;
}

// What the first acceptance has pushed.
inline int32_t Pushed(const Machine& m) { return Word(m, 0x8FFE); }

}  // namespace quoll::test
