// A machine on the bench for tests of the processor: RAM in all four pages, interrupts off, registers that
// differ from each other, code at 0x4000, and a host that writes down what it is asked for.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "testkit/TestMachine.h"
#include "z80/Z80Fields.h"

namespace quoll::z80test {

using test::TestHost;
using test::TestMachine;

inline constexpr int32_t kOrigin = 0x4000;      // where the code stands
inline constexpr int32_t kStack = 0x7800;       // SP at the start
inline constexpr int32_t kStartCycles = 1000;   // Cycles and FrameClock at the start
inline constexpr int32_t kStartR = 0x10;        // R at the start
inline constexpr int32_t kQuietPort = 0x40;     // a port without a function: reads give 255
inline constexpr int32_t kNoTone = 1000000000;  // tone counter that no test reaches

struct Bench {
  TestMachine m;
  TestHost& host = m.host;
  Z80State& s = m->z80;
  RunState& run = m->run;

  Bench() {
    host.framesAllowed = 20;  // a run that has lost its way ends here
    Restart();
  }
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  // Processor, clocks and texts as at the beginning of a test; memory stays.
  void Restart() {
    s = Z80State{};
    s.A = 0x55, s.B = 0x64, s.C = kQuietPort, s.D = 0x68, s.E = 0x11, s.H = 0x60, s.L = 0x29;
    s.A2 = 0xA1, s.B2 = 0xB1, s.C2 = 0xC1, s.D2 = 0xD1, s.E2 = 0xE1, s.H2 = 0xF1, s.L2 = 0x91;
    s.IX = 0x7012, s.IY = 0x71F4, s.SP = kStack, s.PC = kOrigin;
    s.I = 0x3C, s.R = kStartR, s.IM = 1;
    s.FlagS = 1, s.FlagH = 1, s.FlagY = 1, s.FlagN = 1;
    s.AltFlagZ = 1, s.AltFlagX = 1, s.AltFlagPV = 1, s.AltFlagC = 1;
    s.UnDocEnabled = 1;
    run = RunState{};
    run.Cycles = kStartCycles, run.FrameClock = kStartCycles, run.ToneItCounter = kNoTone;
    m->PortShadow[0x59] = 0xFF;
    m->screen.Label1 = "before";
    host.messages.clear();
    host.beeps.clear();
  }

  void Poke(int32_t offset, const std::vector<int>& bytes) {
    for (const int byte : bytes) m->MemImage.at(static_cast<size_t>(offset++)) = static_cast<uint8_t>(byte);
  }
  int32_t Peek(int32_t offset) const { return m->MemImage.at(static_cast<size_t>(offset)); }

  // One pass of the run loop.
  void Pass() { test::Step(*m); }
  // One pass with this code at PC.
  void Pass(const std::vector<int>& code) {
    Poke(s.PC, code);
    Pass();
  }
  // The word below the given stack pointer: what the last push left when the pointer was there before.
  int32_t OnStack(int32_t sp = kStack) const {
    return Peek((sp + 0xFFFE) % 0x10000) + 256 * Peek((sp + 0xFFFF) % 0x10000);
  }
  int32_t Taken() const { return run.Cycles - kStartCycles; }
};

// An interrupt waits and may come.
inline void Enable(Bench& b) { b.s.IFF1 = b.s.IFF2 = 1, b.s.IrqLine = 1; }

// Compares field by field and names those that differ.
inline testing::AssertionResult SameState(const Z80State& got, const Z80State& want) {
  if (got == want) return testing::AssertionSuccess();
  auto result = testing::AssertionFailure();
  for (const auto& [name, field] : kZ80Fields)
    if (got.*field != want.*field) result << name << " is " << got.*field << ", not " << want.*field << "; ";
  return result;
}

// Runs one instruction and compares processor and memory as a whole with what change makes of them. PC is
// taken to move on by the length of the code unless change says otherwise. R, CurOpcode and IndexDisp,
// which have tests of their own, are left out.
template <class Change>
void ExpectEffect(Bench& b, const std::vector<int>& code, Change change) {
  b.Poke(b.s.PC, code);
  Z80State want = b.s;
  const auto memory = std::make_unique<std::array<uint8_t, kMemImageSize>>(b.m->MemImage);
  want.PC += static_cast<int32_t>(code.size());
  change(want, *memory);
  b.Pass();
  want.R = b.s.R, want.CurOpcode = b.s.CurOpcode, want.IndexDisp = b.s.IndexDisp;
  EXPECT_TRUE(SameState(b.s, want)) << testing::PrintToString(code);
  if (*memory == b.m->MemImage) return;
  for (size_t i = 0; i < memory->size(); ++i)
    if ((*memory)[i] != b.m->MemImage[i]) {
      ADD_FAILURE() << testing::PrintToString(code) << " leaves " << int{b.m->MemImage[i]} << " at " << i
                    << ", not " << int{(*memory)[i]};
      return;
    }
}

using Memory = std::array<uint8_t, kMemImageSize>;

// Where (HL) leads at the start.
inline constexpr int32_t kHl = 0x6029;

// The operand order of the opcodes: place 6 is memory and has no register.
inline constexpr std::array<int32_t Z80State::*, 8> kRegisters = {&Z80State::B, &Z80State::C, &Z80State::D,
                                                                  &Z80State::E, &Z80State::H, &Z80State::L,
                                                                  nullptr,      &Z80State::A};

// Sets the operand of that place, a register or memory.
inline void SetOperand(Z80State& s, Memory& memory, size_t place, int32_t value) {
  if (place == 6) {
    memory[kHl] = static_cast<uint8_t>(value);
  } else {
    s.*kRegisters[place] = value;
  }
}

}  // namespace quoll::z80test
