// What a snapshot holds, for its tests: each field with its place in the file.
#pragma once

#include <functional>
#include <random>
#include <vector>

#include "testkit/FolderTest.h"

namespace quoll::test {

// Every number that the file holds apart from ports and memory: its place and width there.
struct Number {
  size_t offset, size;
  std::function<int32_t&(Machine&)> field;
};

inline const std::vector<Number>& Numbers() {
  using M = Machine;
  static const std::vector<Number> kNumbers = [] {
    std::vector<Number> numbers = {
        {19, 1, [](M& m) -> int32_t& { return m.z80.A; }},
        {20, 1, [](M& m) -> int32_t& { return m.z80.B; }},
        {21, 1, [](M& m) -> int32_t& { return m.z80.C; }},
        {22, 1, [](M& m) -> int32_t& { return m.z80.D; }},
        {23, 1, [](M& m) -> int32_t& { return m.z80.E; }},
        {24, 1, [](M& m) -> int32_t& { return m.z80.H; }},
        {25, 1, [](M& m) -> int32_t& { return m.z80.L; }},
        {26, 1, [](M& m) -> int32_t& { return m.z80.A2; }},
        {27, 1, [](M& m) -> int32_t& { return m.z80.B2; }},
        {28, 1, [](M& m) -> int32_t& { return m.z80.C2; }},
        {29, 1, [](M& m) -> int32_t& { return m.z80.D2; }},
        {30, 1, [](M& m) -> int32_t& { return m.z80.E2; }},
        {31, 1, [](M& m) -> int32_t& { return m.z80.H2; }},
        {32, 1, [](M& m) -> int32_t& { return m.z80.L2; }},
        {33, 1, [](M& m) -> int32_t& { return m.z80.AltFlagS; }},
        {34, 1, [](M& m) -> int32_t& { return m.z80.AltFlagZ; }},
        {35, 1, [](M& m) -> int32_t& { return m.z80.AltFlagY; }},
        {36, 1, [](M& m) -> int32_t& { return m.z80.AltFlagH; }},
        {37, 1, [](M& m) -> int32_t& { return m.z80.AltFlagX; }},
        {38, 1, [](M& m) -> int32_t& { return m.z80.AltFlagPV; }},
        {39, 1, [](M& m) -> int32_t& { return m.z80.AltFlagN; }},
        {40, 1, [](M& m) -> int32_t& { return m.z80.AltFlagC; }},
        {41, 1, [](M& m) -> int32_t& { return m.z80.FlagS; }},
        {42, 1, [](M& m) -> int32_t& { return m.z80.FlagZ; }},
        {43, 1, [](M& m) -> int32_t& { return m.z80.FlagY; }},
        {44, 1, [](M& m) -> int32_t& { return m.z80.FlagH; }},
        {45, 1, [](M& m) -> int32_t& { return m.z80.FlagX; }},
        {46, 1, [](M& m) -> int32_t& { return m.z80.FlagPV; }},
        {47, 1, [](M& m) -> int32_t& { return m.z80.FlagN; }},
        {48, 1, [](M& m) -> int32_t& { return m.z80.FlagC; }},
        {49, 4, [](M& m) -> int32_t& { return m.z80.IX; }},
        {53, 4, [](M& m) -> int32_t& { return m.z80.IY; }},
        {57, 4, [](M& m) -> int32_t& { return m.z80.SP; }},
        {61, 4, [](M& m) -> int32_t& { return m.z80.PC; }},
        {65, 4, [](M& m) -> int32_t& { return m.z80.I; }},
        {69, 4, [](M& m) -> int32_t& { return m.z80.R; }},
        {73, 4, [](M& m) -> int32_t& { return m.z80.IFF1; }},
        {77, 4, [](M& m) -> int32_t& { return m.z80.IFF2; }},
        {81, 4, [](M& m) -> int32_t& { return m.z80.IM; }},
        {403, 4, [](M& m) -> int32_t& { return m.run.ResetRequest; }},
        {407, 4, [](M& m) -> int32_t& { return m.z80.IrqLine; }},
        {411, 4, [](M& m) -> int32_t& { return m.run.NmiRequest; }},
    };
    for (size_t i = 0; i < 19; ++i)
      numbers.push_back({499 + 4 * i, 4, [i](M& m) -> int32_t& { return m.crtc.CrtcRegs[i]; }});
    return numbers;
  }();
  return kNumbers;
}

inline bool IsFlag(const Number& n) {
  return (n.offset >= 33 && n.offset <= 48) || n.offset == 73 || n.offset == 77 || n.offset == 407;
}

// Different values in everything that a snapshot holds; flags alternate, with the sense of parity.
inline void Fill(Machine& m, uint32_t seed) {
  std::minstd_rand dice(seed + 1);
  for (const Number& n : Numbers()) {
    if (IsFlag(n)) {
      n.field(m) = static_cast<int32_t>((n.offset + seed) & 1);
    } else if (n.size == 1) {
      n.field(m) = static_cast<int32_t>((n.offset * 7 + seed * 100) & 0xFF);
    } else {
      n.field(m) = static_cast<int32_t>((n.offset * 211 + seed * 3001) & 0xFFFF);
    }
  }
  m.z80.I &= 0xFF;
  m.z80.R &= 0xFF;
  for (uint8_t& port : m.PortShadow) port = static_cast<uint8_t>(dice());
  for (int32_t& reg : m.crtc.CrtcRegs) reg = static_cast<int32_t>(dice());
  for (uint8_t& byte : m.MemImage) byte = static_cast<uint8_t>(dice() >> 8);
  m.run.CpuRunning = seed & 1;
}

// What a snapshot holds, of two machines.
inline void ExpectSameHeld(Machine& a, Machine& b) {
  for (const Number& n : Numbers()) EXPECT_EQ(n.field(a), n.field(b)) << "offset " << n.offset;
  EXPECT_EQ(a.PortShadow, b.PortShadow);
  EXPECT_EQ(a.crtc, b.crtc);
  EXPECT_EQ(a.run.CpuRunning, b.run.CpuRunning);
  EXPECT_TRUE(a.MemImage == b.MemImage);
}

}  // namespace quoll::test
