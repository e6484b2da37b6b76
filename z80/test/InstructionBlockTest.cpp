// Block transfers and searches, step by step.
#include <cstdint>
#include <vector>

#include "z80/test/PassBench.h"
#include "z80/test/PlainAlu.h"

namespace quoll::z80test {
namespace {

void Place(Z80State& s, int32_t hl, int32_t de, int32_t bc) {
  s.H = hl / 256, s.L = hl % 256, s.D = de / 256, s.E = de % 256, s.B = bc / 256, s.C = bc % 256;
}

int32_t Step(int32_t v, bool up) { return up ? (v == 0xFFFF ? 0 : v + 1) : (v == 0 ? 0xFFFF : v - 1); }

void SetFlags(Z80State& s, int32_t value) {
  s.FlagS = s.FlagZ = s.FlagY = s.FlagH = s.FlagX = s.FlagPV = s.FlagN = s.FlagC = value;
}

TEST(Z80Block, TransfersMoveAByteAndStepTheirPairs) {
  Bench b;
  for (const int op : {0xA0, 0xA8, 0xB0, 0xB8})
    for (const int32_t flags : {0, 1})
      for (const auto& [hl, de] : {std::pair{0x6000, 0x6800},
                                   {0x60FF, 0x68FF},
                                   {0x6100, 0x6900},
                                   {0x0000, 0xFFFF},
                                   {0xFFFF, 0x0000}})
        for (const int32_t bc : {0x0001, 0x0002, 0x0100, 0x0101, 0x0000}) {
          b.Restart();
          b.Poke(hl, {0x9D});
          b.Poke(de, {0x00});
          Place(b.s, hl, de, bc);
          SetFlags(b.s, flags);
          ExpectEffect(b, {0xED, op}, [&, hl = hl, de = de](Z80State& want, Memory& memory) {
            const bool up = op == 0xA0 || op == 0xB0;
            const int32_t left = Step(bc, false);
            memory[static_cast<size_t>(de)] = 0x9D;
            Place(want, Step(hl, up), Step(de, up), left);
            want.FlagH = want.FlagN = 0, want.FlagPV = left != 0 ? 1 : 0;
            if (op >= 0xB0 && left != 0) want.PC = kOrigin;
          });
        }
}

TEST(Z80Block, LdirOfThreeBytesTakesThreePasses) {
  Bench b;
  b.Poke(0x6000, {0x11, 0x22, 0x33, 0x44});
  b.Poke(0x6800, {0, 0, 0, 0});
  Place(b.s, 0x6000, 0x6800, 3);
  b.Poke(kOrigin, {0xED, 0xB0});
  b.Pass();
  EXPECT_EQ(b.Taken(), 21);
  EXPECT_EQ(b.s.PC, kOrigin);
  EXPECT_EQ(b.s.FlagPV, 1);
  EXPECT_EQ(b.Peek(0x6800), 0x11);
  EXPECT_EQ(b.Peek(0x6801), 0);
  b.Pass();
  EXPECT_EQ(b.Taken(), 42);
  EXPECT_EQ(b.s.PC, kOrigin);
  b.Pass();
  EXPECT_EQ(b.Taken(), 58);
  EXPECT_EQ(b.s.PC, kOrigin + 2);
  EXPECT_EQ(b.s.FlagPV, 0);
  EXPECT_EQ(b.s.R, kStartR + 3);
  EXPECT_EQ(b.Peek(0x6802), 0x33);
  EXPECT_EQ(b.Peek(0x6803), 0);
  EXPECT_EQ(b.s.L, 0x03);
  EXPECT_EQ(b.s.E, 0x03);
}

TEST(Z80Block, AnOverlappingLdirFillsMemory) {
  Bench b;
  b.Poke(0x6000, {0x7E, 0, 0, 0, 0});
  Place(b.s, 0x6000, 0x6001, 3);
  b.Poke(kOrigin, {0xED, 0xB0});
  for (int i = 0; i < 3; ++i) b.Pass();
  EXPECT_EQ(b.Peek(0x6003), 0x7E);
  EXPECT_EQ(b.Peek(0x6004), 0x00);
}

TEST(Z80Block, AnLdirOverItselfRunsWhatItWrote) {
  Bench b;
  b.Poke(0x6000, {0x3C});  // INC A takes the place of the prefix
  Place(b.s, 0x6000, kOrigin, 2);
  b.Poke(kOrigin, {0xED, 0xB0});
  b.Pass();
  EXPECT_EQ(b.s.PC, kOrigin);
  b.Pass();
  EXPECT_EQ(b.s.A, 0x56);
  EXPECT_EQ(b.s.PC, kOrigin + 1);
}

TEST(Z80Block, AnInterruptComesBetweenTheRepeatsOfLdir) {
  Bench b;
  b.Poke(0x6000, {0x11, 0x22, 0x33});
  b.Poke(0x6800, {0, 0, 0});
  Place(b.s, 0x6000, 0x6800, 3);
  b.s.IFF1 = b.s.IFF2 = 1, b.s.IrqLine = 1;
  b.Poke(0x0038, {0xC9});  // RET
  b.Poke(kOrigin, {0xED, 0xB0});
  b.Pass();
  EXPECT_EQ(b.s.PC, 0x38);
  EXPECT_EQ(b.Taken(), 21 + 11);
  EXPECT_EQ(b.Peek(kStack - 2) + 256 * b.Peek(kStack - 1), kOrigin);
  EXPECT_EQ(b.s.C, 2);
  b.Pass();
  EXPECT_EQ(b.s.PC, kOrigin);
  b.Pass();
  b.Pass();
  EXPECT_EQ(b.s.PC, kOrigin + 2);
  EXPECT_EQ(b.Peek(0x6802), 0x33);
  EXPECT_EQ(b.Taken(), 21 + 11 + 10 + 21 + 16);
}

TEST(Z80Block, SearchesCompareStepAndKeepTheCarry) {
  Bench b;
  for (const int op : {0xA1, 0xA9, 0xB1, 0xB9})
    for (const int32_t flags : {0, 1})
      for (const int32_t hl : {0x6000, 0x60FF, 0xFFFF, 0x0000})
        for (const int32_t bc : {0x0001, 0x0002, 0x0100, 0x0000})
          for (const int32_t v : {0x00, 0x28, 0x55, 0x56, 0xD5, 0xFF}) {
            b.Restart();
            b.Poke(hl, {v});
            Place(b.s, hl, 0x6800, bc);
            SetFlags(b.s, flags);
            ExpectEffect(b, {0xED, op}, [&](Z80State& want, Memory&) {
              plain::CpA(want, v);
              want.FlagC = flags;
              const int32_t left = Step(bc, false);
              Place(want, Step(hl, op == 0xA1 || op == 0xB1), 0x6800, left);
              want.FlagPV = left != 0 ? 1 : 0;
              if (op >= 0xB0 && v != 0x55 && left != 0) want.PC = kOrigin;
            });
          }
}

// Two passes: the first goes on, the second finds a match or the end.
TEST(Z80Block, CpirAndCpdrStopOnAMatchOrWhenNothingIsLeft) {
  struct Case {
    int opcode;
    int32_t start, count;
    int match;    // Z at the end
    int32_t end;  // HL
  };
  for (const auto& [opcode, start, count, match, end] :
       {Case{0xB1, 0x6000, 3, 1, 0x6002}, Case{0xB9, 0x6001, 2, 0, 0x5FFF}}) {
    Bench b;
    b.Poke(0x6000, {0x11, opcode == 0xB1 ? 0x55 : 0x22, 0x33});
    Place(b.s, start, 0x6800, count);
    b.Poke(kOrigin, {0xED, opcode});
    b.Pass();
    EXPECT_EQ(b.Taken(), 21);
    EXPECT_EQ(b.s.PC, kOrigin);
    b.Pass();
    EXPECT_EQ(b.Taken(), 21 + 16);
    EXPECT_EQ(b.s.PC, kOrigin + 2);
    EXPECT_EQ(b.s.FlagZ, match);
    EXPECT_EQ(b.s.FlagPV, match);  // a byte is left in the one, none in the other
    EXPECT_EQ(b.s.C, count - 2);
    EXPECT_EQ(b.s.H * 256 + b.s.L, end);
    EXPECT_EQ(b.s.R, kStartR);
  }
}

}  // namespace
}  // namespace quoll::z80test
