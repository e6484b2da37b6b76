// A table of what each opcode of a page adds to Cycles, PC and R, and the walk that holds it against the
// processor: every opcode of the page must have a row.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "z80/test/PassBench.h"

namespace quoll::z80test {

using Setup = std::function<void(Z80State&)>;

struct Row {
  std::vector<int> opcodes;
  int32_t t;   // T-states of the whole instruction
  int32_t pc;  // step from the opcode page's own PC, or Goto(address)
  int32_t r;   // step
  Setup when = nullptr;
  bool known = true;          // false: ends in MissingOP
  bool undocumented = false;  // true: ends in MissingOP while UnDocEnabled is 0
};

inline constexpr int32_t kGoto = 0x1000000;
constexpr int32_t Goto(int32_t address) { return kGoto + address; }

// Bytes that follow each opcode, and where the operands made of them and of the registers lead.
inline constexpr int32_t kNn = 0x5A22;
inline constexpr int32_t kOnStack = 0x5C2B;

struct Page {
  std::vector<int> before;    // bytes before the opcode
  int32_t pcAtOpcode;         // PC less the address of the first byte when the page's routine starts
  std::vector<int> prefixes;  // opcodes that lead to another page and have no row
};

// Opcodes from first to last.
inline std::vector<int> Range(int first, int last) {
  std::vector<int> all;
  for (int op = first; op <= last; ++op) all.push_back(op);
  return all;
}

// Several ranges in a row; a pair of equal numbers is a single opcode.
inline std::vector<int> Ranges(const std::vector<std::pair<int, int>>& ranges) {
  std::vector<int> all;
  for (const auto& [first, last] : ranges)
    for (const int op : Range(first, last)) all.push_back(op);
  return all;
}

// The seven register forms of a block of eight, without the (HL) form.
inline std::vector<int> Registers(const std::vector<int>& blocks) {
  std::vector<int> all;
  for (const int first : blocks)
    for (const int op : {first, first + 1, first + 2, first + 3, first + 4, first + 5, first + 7})
      all.push_back(op);
  return all;
}

// Sets one flag and gives all others the opposite value, so that a test of a wrong flag shows.
inline Setup Alone(int32_t Z80State::*flag, int32_t value) {
  return [flag, value](Z80State& s) {
    for (const auto other : {&Z80State::FlagS, &Z80State::FlagZ, &Z80State::FlagY, &Z80State::FlagH,
                             &Z80State::FlagX, &Z80State::FlagPV, &Z80State::FlagN, &Z80State::FlagC})
      s.*other = 1 - value;
    s.*flag = value;
  };
}

inline void WalkRow(Bench& b, const Page& page, const Row& row, int op, int32_t unDocEnabled) {
  SCOPED_TRACE("opcode " + testing::PrintToString(page.before) + " " + std::to_string(op) + " UnDocEnabled " +
               std::to_string(unDocEnabled));
  b.Restart();
  b.Poke(kStack, {kOnStack & 0xFF, kOnStack >> 8});
  std::vector<int> code = page.before;
  code.insert(code.end(), {op, kNn & 0xFF, kNn >> 8});
  b.Poke(kOrigin, code);
  b.s.UnDocEnabled = unDocEnabled;
  if (row.when) row.when(b.s);
  const bool missing = !row.known || (row.undocumented && unDocEnabled == 0);
  const Z80State before = b.s;
  b.Pass();
  const int32_t step = missing ? 1 : row.pc;
  const int32_t pc = step >= kGoto ? step - kGoto : kOrigin + page.pcAtOpcode + step;
  EXPECT_EQ(b.Taken(), missing ? 0 : row.t);
  EXPECT_EQ(b.run.FrameClock, kStartCycles + (missing ? 0 : row.t));
  EXPECT_EQ(b.s.PC, pc);
  EXPECT_EQ(b.s.R, (before.R + (missing ? 0 : row.r)) & 0xFF);
  EXPECT_EQ(b.s.PrefixState, 0);
  EXPECT_EQ(b.s.CurOpcode, op);
  EXPECT_EQ(b.m->screen.Label1, missing ? "Unknown Opcode!" : "before");
  EXPECT_TRUE(b.host.messages.empty());
  if (missing) {  // nothing else happens
    Z80State want = before;
    want.PC = pc, want.CurOpcode = op, want.IndexDisp = b.s.IndexDisp;
    EXPECT_TRUE(SameState(b.s, want));
  }
}

// Walks over all 256 opcodes with UnDocEnabled 0 and 1.
inline void WalkPage(const Page& page, const std::vector<Row>& rows) {
  Bench b;
  std::array<int, 256> walked{};
  for (const Row& row : rows)
    for (const int op : row.opcodes) {
      ++walked.at(static_cast<size_t>(op));
      for (const int32_t unDocEnabled : {0, 1}) WalkRow(b, page, row, op, unDocEnabled);
    }
  for (const int op : page.prefixes) {
    EXPECT_EQ(walked.at(static_cast<size_t>(op)), 0) << "prefix " << op;
    ++walked.at(static_cast<size_t>(op));
  }
  for (int op = 0; op < 256; ++op)
    EXPECT_GE(walked.at(static_cast<size_t>(op)), 1) << "opcode " << op << " has no row";
}

}  // namespace quoll::z80test
