// The processor's record: registers and flags unpacked, one plain integer each. Everybody may read
// and write it between two passes: opcode pages, snapshots, monitors, scripts.
#pragma once

#include <cstdint>

namespace quoll {

struct Z80State {
  // Main and alternate registers, 0 to 255.
  int32_t A, B, C, D, E, H, L;
  int32_t A2, B2, C2, D2, E2, H2, L2;
  // Index registers and stack pointer, 0 to 65535; a snapshot may bring wider ones, which stay until an
  // instruction writes them. So do I, R and the flip-flops.
  int32_t IX, IY, SP;
  // Program counter: not masked to 16 bits, so that a program can run past 0xFFFF.
  int32_t PC;
  int32_t I;           // interrupt vector register, 0 to 255
  int32_t R;           // refresh counter; counts up freely inside a pass; after it 0 to 255, or 256
                       // when an interrupt was accepted
  int32_t IM;          // interrupt mode, 0 to 2
  int32_t IFF1, IFF2;  // interrupt flip-flops, 0 or 1
  // Flags, 0 or 1, in the order of FlagRows.h. FlagY is bit 5 of the F byte, FlagX bit 3.
  int32_t FlagS, FlagZ, FlagH, FlagPV, FlagC, FlagN, FlagY, FlagX;
  int32_t AltFlagS, AltFlagZ, AltFlagH, AltFlagPV, AltFlagC, AltFlagN, AltFlagY, AltFlagX;
  int32_t Halted;        // set by HALT, cleared when a request or an interrupt is accepted
  int32_t IrqLine;       // 1 = maskable interrupt pending
  int32_t PrefixState;   // prefix bytes of the instruction under way: 0, 0xCB, 0xDD ... 0xDDCB, 0xFDCB
  int32_t CurOpcode;     // byte dispatched last
  int32_t IndexDisp;     // displacement of the last index instruction, -128 to 127
  int32_t UnDocEnabled;  // 1 = undocumented instructions are executed

  bool operator==(const Z80State&) const = default;
};

// Power-on values: registers and flags all ones, PC, I, R, IM and the flip-flops 0.
void CpuInit(Z80State& z80);

// Brings every register that the opcode pages look up tables with back into the range that its comment
// states: those of a byte and the flags. Snapshots, monitors and scripts may leave anything behind. The other
// registers stay whole; the pages cut them where they use them.
void KeepBytes(Z80State& z80);

// The same for every register of which a range is stated.
void KeepRanges(Z80State& z80);

}  // namespace quoll
