// In what the pages of IX and IY differ: T-states and steps of R. Programs see the differences.
#pragma once

#include <cstdint>

#include "z80/Alu.h"

namespace quoll {

struct IXPage {
  static int32_t& Pair(Z80State& s) { return s.IX; }
  static void Add(Z80State& s, int32_t v) { AddIX(s, v); }

  static constexpr int32_t kAddPairR = 1;         // ADD index,index and ADD index,SP
  static constexpr int32_t kDecT = 6, kDecR = 1;  // DEC index
  static constexpr int32_t kCountR = 1;           // INC and DEC of memory
  static constexpr int32_t kLoadR = 1;            // LD r,(index + d) but for H and A
  static constexpr int32_t kStoreT = 19;          // LD (index + d),r
  static constexpr int32_t kAdcR = 1, kSbcR = 1;  // with memory
  static constexpr int32_t kCbStep = 1;           // of pc at the CB byte
  static constexpr int32_t kCbLength = 2;         // of an instruction of the CB page, counted from there
  static constexpr int32_t kCbRlcT = 23, kCbRrcR = 1;
  static constexpr int32_t kCbShiftT = 6;  // SLA, SRA, SRL
  static constexpr int32_t kCbBitT = 23;   // RES, SET

  // Where the other page drives the emulator, this one knows nothing.
  template <class Core>
  static void RaiseIrq(Core& c) {
    c.Missing();
  }
  template <class Core>
  static void RaiseNmi(Core& c) {
    c.Missing();
  }
  template <class Core>
  static void RaiseReset(Core& c) {
    c.Missing();
  }
  template <class Core>
  static void StopRun(Core& c) {
    c.Missing();
  }
};

struct IYPage {
  static int32_t& Pair(Z80State& s) { return s.IY; }
  static void Add(Z80State& s, int32_t v) { AddIY(s, v); }

  static constexpr int32_t kAddPairR = 4;
  static constexpr int32_t kDecT = 10, kDecR = 2;
  static constexpr int32_t kCountR = 2, kLoadR = 2, kStoreT = 20, kAdcR = 4, kSbcR = 5;
  static constexpr int32_t kCbStep = 0, kCbLength = 3;
  static constexpr int32_t kCbRlcT = 20, kCbRrcR = 6, kCbShiftT = 23, kCbBitT = 20;

  // Four instructions by which a program drives the emulator. They take no T-states and leave R.
  template <class Core>
  static void RaiseIrq(Core& c) {
    if (c.s.IFF1 == 1) c.s.IrqLine = 1;
    EndWithoutTime(c);
  }
  template <class Core>
  static void RaiseNmi(Core& c) {
    c.m.run.NmiRequest = 1;
    BeepAndEnd(c, 500);
  }
  template <class Core>
  static void RaiseReset(Core& c) {
    c.m.run.ResetRequest = 1;
    BeepAndEnd(c, 500);
  }
  template <class Core>
  static void StopRun(Core& c) {
    c.m.run.CpuRunning = 0;
    BeepAndEnd(c, 200);
  }

 private:
  template <class Core>
  static void BeepAndEnd(Core& c, int milliseconds) {
    c.m.host->Beep(600, milliseconds);
    EndWithoutTime(c);
  }
  template <class Core>
  static void EndWithoutTime(Core& c) {
    c.Next(0, 1, 0);
    c.NoTime();
    c.Cut();
  }
};

}  // namespace quoll
