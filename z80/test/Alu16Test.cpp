// The 16-bit arithmetic on a dense sample of values with all borders.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "z80/Alu.h"
#include "z80/test/PassBench.h"
#include "z80/test/PlainAlu.h"

namespace quoll::z80test {
namespace {

// Borders of the bytes, the half carry, the sign and the word, and steps between that hit no period.
const std::vector<int32_t>& Words() {
  static const std::vector<int32_t> words = [] {
    std::vector<int32_t> all;
    for (const int32_t border : {0x0000, 0x0010, 0x0080, 0x0100, 0x0800, 0x1000, 0x4000, 0x7000, 0x8000,
                                 0x9000, 0xC000, 0xF000, 0xFF00, 0x10000})
      for (int32_t near = -2; near <= 2; ++near) all.push_back((border + near) & 0xFFFF);
    for (int32_t v = 0; v < 0x10000; v += 397) all.push_back(v);
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
  }();
  return words;
}

// Over all pairs of words, with clear and set flags and either carry; place puts the first word.
template <class Fast, class Plain, class Place>
void Compare(Fast fast, Plain slow, Place place) {
  for (const int32_t flags : {0, 1})
    for (const int32_t carry : {0, 1})
      for (const int32_t pair : Words())
        for (const int32_t v : Words()) {
          Z80State start{};
          start.FlagS = start.FlagZ = start.FlagY = start.FlagH = start.FlagX = start.FlagPV = start.FlagN =
              flags;
          start.FlagC = carry;
          start.A = 0x12, start.H = 0x0F, start.L = 0xFF, start.IX = 0x0ABC, start.IY = 0x0DEF;
          place(start, pair);
          Z80State got = start, want = start;
          fast(got, v);
          slow(want, v);
          if (got != want)
            FAIL() << pair << " and " << v << " carry " << carry << ": " << SameState(got, want).message();
        }
}

void PlaceHL(Z80State& s, int32_t v) { plain::PutHl(s, v); }
void PlaceIX(Z80State& s, int32_t v) { s.IX = v; }
void PlaceIY(Z80State& s, int32_t v) { s.IY = v; }

TEST(Z80Alu16, AddHLFollowsItsRule) { Compare(AddHL, plain::AddHL, PlaceHL); }
TEST(Z80Alu16, AdcHLFollowsItsRule) { Compare(AdcHL, plain::AdcHL, PlaceHL); }
TEST(Z80Alu16, SbcHLFollowsItsRule) { Compare(SbcHL, plain::SbcHL, PlaceHL); }
TEST(Z80Alu16, AddIXFollowsItsRule) { Compare(AddIX, plain::AddIX, PlaceIX); }
TEST(Z80Alu16, AddIYFollowsItsRuleWithAnyIY) { Compare(AddIY, plain::AddIY, PlaceIY); }
TEST(Z80Alu16, AddIYFollowsItsRuleWithAnyIX) { Compare(AddIY, plain::AddIY, PlaceIX); }

TEST(Z80Alu16, AddIYTakesItsHalfCarryFromIX) {
  Z80State s{};
  s.IX = 0x0FFF, s.IY = 0x0000;
  AddIY(s, 1);
  EXPECT_EQ(s.IY, 1);
  EXPECT_EQ(s.FlagH, 1);
  s.IX = 0x0000, s.IY = 0x0FFF;
  AddIY(s, 1);
  EXPECT_EQ(s.IY, 0x1000);
  EXPECT_EQ(s.FlagH, 0);
}

TEST(Z80Alu16, HalfCarriesAreMadeWithTheNewCarry) {
  struct Case {
    void (*operation)(Z80State&, int32_t);
    int32_t hl, carry, operand, result, newCarry, half;
  };
  for (const auto& [operation, hl, carry, operand, result, newCarry, half] : {
           Case{AdcHL, 0x0FFF, 1, 0, 0x1000, 0, 0},
           // 0xF001 + 0x1FFE carries out of bit 15 only, and the new carry brings bit 11 over.
           Case{AdcHL, 0xF001, 0, 0x1FFE, 0x0FFF, 1, 1},
           Case{SbcHL, 0x1000, 1, 0, 0x0FFF, 0, 0},       // no new carry
           Case{SbcHL, 0x1000, 0, 0x2000, 0xF000, 1, 1},  // below 0: the new carry borrows from bit 12
       }) {
    Z80State s{};
    s.H = hl / 256, s.L = hl % 256, s.FlagC = carry, s.FlagH = 1 - half;
    operation(s, operand);
    EXPECT_EQ(plain::HlOf(s), result);
    EXPECT_EQ(s.FlagC, newCarry) << hl;
    EXPECT_EQ(s.FlagH, half) << hl;
  }
}

TEST(Z80Alu16, PairsStepThroughBothBytesAndWrap) {
  for (int32_t v = 0; v < 0x10000; ++v) {
    Z80State s{};
    s.B = s.D = s.H = v / 256, s.C = s.E = s.L = v % 256, s.SP = v;
    s.FlagZ = 1;
    IncBC(s), IncDE(s), IncHL(s), IncSP(s);
    const int32_t up = v == 0xFFFF ? 0 : v + 1;
    ASSERT_EQ(s.B * 256 + s.C, up);
    ASSERT_EQ(s.D * 256 + s.E, up);
    ASSERT_EQ(s.H * 256 + s.L, up);
    ASSERT_EQ(s.SP, up);
    s.B = s.D = s.H = v / 256, s.C = s.E = s.L = v % 256, s.SP = v;
    DecBC(s), DecDE(s), DecHL(s), DecSP(s);
    const int32_t down = v == 0 ? 0xFFFF : v - 1;
    ASSERT_EQ(s.B * 256 + s.C, down);
    ASSERT_EQ(s.D * 256 + s.E, down);
    ASSERT_EQ(s.H * 256 + s.L, down);
    ASSERT_EQ(s.SP, down);
    Z80State flags{};
    flags.FlagZ = 1;
    flags.B = s.B, flags.C = s.C, flags.D = s.D, flags.E = s.E, flags.H = s.H, flags.L = s.L, flags.SP = s.SP;
    ASSERT_TRUE(SameState(s, flags));
  }
}

}  // namespace
}  // namespace quoll::z80test
