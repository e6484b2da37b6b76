// The 8-bit arithmetic over all of its values, and the flags that it leaves alone.
#include <gtest/gtest.h>

#include <cstdint>
#include <tuple>

#include "z80/Alu.h"
#include "z80/test/PassBench.h"
#include "z80/test/PlainAlu.h"

namespace quoll::z80test {
namespace {

constexpr Z80State Filled(int32_t flags, int32_t carry) {
  Z80State s{};
  s.B = 0x12, s.C = 0x34, s.D = 0x56, s.E = 0x78, s.H = 0x9A, s.L = 0xBC, s.IX = 0x1234, s.IY = 0x5678;
  s.FlagS = s.FlagZ = s.FlagY = s.FlagH = s.FlagX = s.FlagPV = s.FlagN = flags;
  s.FlagC = carry;
  return s;
}

// Calls work with every start of the flags that matters: all clear and all set, with either carry.
template <class Work>
void ForFlags(Work work) {
  for (const int32_t flags : {0, 1})
    for (const int32_t carry : {0, 1})
      if (!testing::Test::HasFailure()) work(Filled(flags, carry));
}

// Over all A and v.
template <class Fast, class Plain>
void CompareOnA(Fast fast, Plain slow) {
  ForFlags([&](Z80State start) {
    for (int32_t a = 0; a < 256; ++a)
      for (int32_t v = 0; v < 256; ++v) {
        start.A = a;
        Z80State got = start, want = start;
        fast(got, v);
        slow(want, v);
        if (got != want) {
          FAIL() << "A " << a << " v " << v << " carry " << start.FlagC << ": "
                 << SameState(got, want).message();
        }
      }
  });
}

// Over all v; the result is returned.
template <class Fast, class Plain>
void CompareResult(Fast fast, Plain slow) {
  ForFlags([&](Z80State start) {
    start.A = 0x77;
    for (int32_t v = 0; v < 256; ++v) {
      Z80State got = start, want = start;
      ASSERT_EQ(fast(got, v), slow(want, v)) << v;
      ASSERT_TRUE(SameState(got, want)) << v;
    }
  });
}

// Over all A.
template <class Fast, class Plain>
void CompareA(Fast fast, Plain slow) {
  for (int32_t bits = 0; bits < 256; ++bits)
    for (int32_t a = 0; a < 256; ++a) {
      Z80State start = Filled(0, bits & 1);
      start.A = a;
      start.FlagN = plain::Bit(bits, 1), start.FlagPV = plain::Bit(bits, 2),
      start.FlagX = plain::Bit(bits, 3);
      start.FlagH = plain::Bit(bits, 4), start.FlagY = plain::Bit(bits, 5), start.FlagZ = plain::Bit(bits, 6);
      start.FlagS = plain::Bit(bits, 7);
      Z80State got = start, want = start;
      fast(got);
      slow(want);
      ASSERT_TRUE(SameState(got, want)) << "A " << a << " flags " << bits;
    }
}

TEST(Z80Alu, AddFollowsItsRuleForAllValues) { CompareOnA(AddA, plain::AddA); }
TEST(Z80Alu, AdcFollowsItsRuleForAllValues) { CompareOnA(AdcA, plain::AdcA); }
TEST(Z80Alu, SubFollowsItsRuleForAllValues) { CompareOnA(SubA, plain::SubA); }
TEST(Z80Alu, SbcFollowsItsRuleForAllValues) { CompareOnA(SbcA, plain::SbcA); }
TEST(Z80Alu, CpFollowsItsRuleForAllValues) { CompareOnA(CpA, plain::CpA); }
TEST(Z80Alu, AndFollowsItsRuleForAllValues) { CompareOnA(AndA, plain::AndA); }
TEST(Z80Alu, XorFollowsItsRuleForAllValues) { CompareOnA(XorA, plain::XorA); }
TEST(Z80Alu, OrFollowsItsRuleForAllValues) { CompareOnA(OrA, plain::OrA); }

TEST(Z80Alu, IncFollowsItsRuleForAllValues) { CompareResult(Inc8, plain::Inc8); }
TEST(Z80Alu, DecFollowsItsRuleForAllValues) { CompareResult(Dec8, plain::Dec8); }
TEST(Z80Alu, RlcFollowsItsRuleForAllValues) { CompareResult(Rlc, plain::Rlc); }
TEST(Z80Alu, RrcFollowsItsRuleForAllValues) { CompareResult(Rrc, plain::Rrc); }
TEST(Z80Alu, RlFollowsItsRuleForAllValues) { CompareResult(Rl, plain::Rl); }
TEST(Z80Alu, RrFollowsItsRuleForAllValues) { CompareResult(Rr, plain::Rr); }
TEST(Z80Alu, SlaFollowsItsRuleForAllValues) { CompareResult(Sla, plain::Sla); }
TEST(Z80Alu, SraFollowsItsRuleForAllValues) { CompareResult(Sra, plain::Sra); }
TEST(Z80Alu, SllFollowsItsRuleForAllValues) { CompareResult(Sll, plain::Sll); }
TEST(Z80Alu, SrlFollowsItsRuleForAllValues) { CompareResult(Srl, plain::Srl); }

TEST(Z80Alu, BitFollowsItsRuleForAllValuesAndBits) {
  for (int32_t n = 0; n < 8; ++n)
    CompareResult([n](Z80State& s, int32_t v) { return TestBit(s, v, n), 0; },
                  [n](Z80State& s, int32_t v) { return plain::TestBit(s, v, n), 0; });
}

TEST(Z80Alu, SingleBitsAreReadSetAndCleared) {
  for (int32_t n = 0; n < 8; ++n)
    for (int32_t v = 0; v < 256; ++v) {
      int32_t weight = 1;
      for (int32_t i = 0; i < n; ++i) weight *= 2;
      const bool set = v / weight % 2 == 1;
      ASSERT_EQ(BitOf(v, n), set);
      ASSERT_EQ(SetBit(v, n), set ? v : v + weight);
      ASSERT_EQ(ResBit(v, n), set ? v - weight : v);
    }
}

TEST(Z80Alu, DaaFollowsItsStepsForAllValuesAndFlags) { CompareA(Daa, plain::Daa); }
TEST(Z80Alu, NegFollowsItsRuleForAllValues) { CompareA(Neg, plain::Neg); }
TEST(Z80Alu, TheRotatesOfAFollowTheirRulesForAllValues) {
  CompareA(Rlca, plain::Rlca);
  CompareA(Rrca, plain::Rrca);
  CompareA(Rla, plain::Rla);
  CompareA(Rra, plain::Rra);
}
TEST(Z80Alu, CplScfAndCcfFollowTheirRulesForAllValues) {
  CompareA(Cpl, plain::Cpl);
  CompareA(Scf, plain::Scf);
  CompareA(Ccf, plain::Ccf);
}

TEST(Z80Alu, SignByteTurnsTheUpperHalfNegative) {
  for (int32_t v = 0; v < 256; ++v) ASSERT_EQ(SignByte(v), v >= 128 ? v - 256 : v);
}

TEST(Z80Alu, SomeResultsByHand) {
  struct Case {
    int32_t (*operation)(Z80State&, int32_t);
    int32_t value, result;
    int32_t Z80State::*flag;
    int32_t set;
  };
  for (const auto& [operation, value, result, flag, set] : {
           Case{Dec8, 0, 255, &Z80State::FlagZ, 0},
           Case{Dec8, 0, 255, &Z80State::FlagS, 1},
           Case{Inc8, 255, 0, &Z80State::FlagS, 0},
           Case{Inc8, 255, 0, &Z80State::FlagZ, 1},
           Case{Rlc, 0x80, 1, &Z80State::FlagC, 1},
           Case{Rlc, 0xFF, 0xFF, &Z80State::FlagC, 1},
       }) {
    Z80State s = Filled(0, 0);
    s.*flag = 1 - set;
    EXPECT_EQ(operation(s, value), result);
    EXPECT_EQ(s.*flag, set) << value;
  }
}

TEST(Z80Alu, BitBelow7NeverSetsSign) {
  for (int32_t n = 0; n < 7; ++n) {
    Z80State s = Filled(1, 0);
    TestBit(s, 0xFF, n);
    EXPECT_EQ(s.FlagS, 0) << n;
    EXPECT_EQ(s.FlagZ, 0) << n;
  }
  Z80State s = Filled(0, 0);
  TestBit(s, 0x80, 7);
  EXPECT_EQ(s.FlagS, 1);
}

TEST(Z80Alu, SllNeverSetsZero) {
  for (const auto& [value, result, sign, carry] :
       {std::tuple(0x7F, 0xFF, 1, 0), {0x00, 0x01, 0, 0}, {0x80, 0x01, 0, 1}}) {
    Z80State s = Filled(0, 0);
    s.FlagZ = 1;
    EXPECT_EQ(Sll(s, value), result);
    EXPECT_EQ(s.FlagZ, 0) << value;
    EXPECT_EQ(s.FlagS, sign) << value;
    EXPECT_EQ(s.FlagC, carry) << value;
  }
}

TEST(Z80Alu, SrlOfZeroGivesZeroEvenParityAndNoCarry) {
  Z80State s = Filled(0, 1);
  EXPECT_EQ(Srl(s, 0), 0);
  EXPECT_EQ(s.FlagZ, 1);
  EXPECT_EQ(s.FlagPV, 1);
  EXPECT_EQ(s.FlagC, 0);
}

// A few sums by hand, so that the plain rules themselves are held against something.
TEST(Z80Alu, KnownSumsAndDifferences) {
  Z80State s = Filled(0, 1);
  s.A = 0x7F;
  AddA(s, 0x01);  // overflow into the sign
  EXPECT_EQ(PackF(s), 0x80 | 0x10 | 0x04);
  EXPECT_EQ(s.A, 0x80);
  AddA(s, 0x80);  // 0x100: zero, carry, overflow
  EXPECT_EQ(PackF(s), 0x40 | 0x04 | 0x01);
  AdcA(s, 0x0F);  // 0x00 + 0x0F + 1
  EXPECT_EQ(PackF(s), 0x10);
  EXPECT_EQ(s.A, 0x10);
  SubA(s, 0x20);
  EXPECT_EQ(PackF(s), 0x80 | 0x02 | 0x01);
  EXPECT_EQ(s.A, 0xF0);
  SbcA(s, 0x00);  // takes the carry
  EXPECT_EQ(PackF(s), 0x80 | 0x10 | 0x02);
  EXPECT_EQ(s.A, 0xEF);
  CpA(s, 0xEF);  // bits 5 and 3 of the operand
  EXPECT_EQ(PackF(s), 0x40 | 0x20 | 0x08 | 0x02);
  EXPECT_EQ(s.A, 0xEF);
}

TEST(Z80Alu, TheFlagByteHasOnePlaceForEachFlag) {
  const int32_t Z80State::*const flags[] = {&Z80State::FlagC, &Z80State::FlagN, &Z80State::FlagPV,
                                            &Z80State::FlagX, &Z80State::FlagH, &Z80State::FlagY,
                                            &Z80State::FlagZ, &Z80State::FlagS};
  for (int32_t f = 0; f < 256; ++f) {
    Z80State s = Filled(1 - (f & 1), 1 - (f & 1));
    UnpackF(s, f);
    for (int32_t n = 0; n < 8; ++n) ASSERT_EQ(s.*flags[n], plain::Bit(f, n)) << f << " bit " << n;
    ASSERT_EQ(PackF(s), f);
  }
}

}  // namespace
}  // namespace quoll::z80test
