// Jumps, calls, returns and the stack.
#include <cstdint>
#include <vector>

#include "z80/test/PassBench.h"

namespace quoll::z80test {
namespace {

const int32_t kStackPointers[] = {kStack, 0x0000, 0x0001, 0x0002, 0xFFFE, 0xFFFF};

int32_t Below(int32_t sp, int32_t steps) { return sp >= steps ? sp - steps : sp - steps + 0x10000; }

// High byte first, each below the one before; the pointer wraps between the two.
void Pushed(Z80State& want, Memory& memory, int32_t value) {
  memory[static_cast<size_t>(Below(want.SP, 1))] = static_cast<uint8_t>(value / 256 % 256);
  memory[static_cast<size_t>(Below(want.SP, 2))] = static_cast<uint8_t>(value % 256);
  want.SP = Below(want.SP, 2);
}

struct PairOpcode {
  std::vector<int> push, pop;
  int32_t value;  // on the bench
  void (*set)(Z80State&, int32_t);
};

const PairOpcode kPairs[] = {
    {{0xC5}, {0xC1}, 0x6440, [](Z80State& s, int32_t v) { s.B = v / 256, s.C = v % 256; }},
    {{0xD5}, {0xD1}, 0x6811, [](Z80State& s, int32_t v) { s.D = v / 256, s.E = v % 256; }},
    {{0xE5}, {0xE1}, 0x6029, [](Z80State& s, int32_t v) { s.H = v / 256, s.L = v % 256; }},
    {{0xDD, 0xE5}, {0xDD, 0xE1}, 0x7012, [](Z80State& s, int32_t v) { s.IX = v; }},
    {{0xFD, 0xE5}, {0xFD, 0xE1}, 0x71F4, [](Z80State& s, int32_t v) { s.IY = v; }},
};

template <class Check>
void ForEachPairAndPointer(Check check) {
  Bench b;
  for (const PairOpcode& pair : kPairs)
    for (const int32_t sp : kStackPointers) {
      b.Restart();
      b.s.SP = sp;
      check(b, pair, sp);
    }
}

TEST(Z80Stack, PushGoesDownFromHighToLowAndWraps) {
  ForEachPairAndPointer([](Bench& b, const PairOpcode& pair, int32_t) {
    ExpectEffect(b, pair.push, [&](Z80State& want, Memory& memory) { Pushed(want, memory, pair.value); });
  });
}

TEST(Z80Stack, PopGoesUpFromLowToHighAndWraps) {
  ForEachPairAndPointer([](Bench& b, const PairOpcode& pair, int32_t sp) {
    b.Poke(sp, {0xCD});
    b.Poke((sp + 1) % 0x10000, {0xAB});
    ExpectEffect(b, pair.pop, [&](Z80State& want, Memory&) {
      pair.set(want, 0xABCD);
      want.SP = (sp + 2) % 0x10000;
    });
  });
}

TEST(Z80Stack, PushAfBuildsTheFlagByte) {
  const std::pair<int32_t Z80State::*, int> bits[] = {{&Z80State::FlagS, 0x80}, {&Z80State::FlagZ, 0x40},
                                                      {&Z80State::FlagY, 0x20}, {&Z80State::FlagH, 0x10},
                                                      {&Z80State::FlagX, 0x08}, {&Z80State::FlagPV, 0x04},
                                                      {&Z80State::FlagN, 0x02}, {&Z80State::FlagC, 0x01}};
  Bench b;
  for (int f = 0; f < 256; ++f) {
    b.Restart();
    for (const auto& [flag, bit] : bits) b.s.*flag = (f & bit) != 0 ? 1 : 0;
    Z80State want = b.s;
    b.Pass({0xF5});
    want.PC += 1, want.R += 1, want.SP -= 2, want.CurOpcode = 0xF5;
    ASSERT_TRUE(SameState(b.s, want));
    ASSERT_EQ(b.Peek(kStack - 1), 0x55);
    ASSERT_EQ(b.Peek(kStack - 2), f);
  }
}

TEST(Z80Stack, PopAfGivesEachFlagItsBit) {
  Bench b;
  for (int f = 0; f < 256; ++f) {
    b.Restart();
    b.s.SP = 0xFFFF;
    b.Poke(0xFFFF, {f});
    b.Poke(0x0000, {0x9E});
    Z80State want = b.s;
    b.Pass({0xF1});
    want.PC += 1, want.R += 1, want.SP = 1, want.CurOpcode = 0xF1, want.A = 0x9E;
    want.FlagS = f / 128 % 2, want.FlagZ = f / 64 % 2, want.FlagY = f / 32 % 2, want.FlagH = f / 16 % 2;
    want.FlagX = f / 8 % 2, want.FlagPV = f / 4 % 2, want.FlagN = f / 2 % 2, want.FlagC = f % 2;
    ASSERT_TRUE(SameState(b.s, want)) << f;
  }
}

TEST(Z80Stack, ExchangeOfTheTopLeavesThePointer) {
  Bench b;
  const std::pair<std::vector<int>, void (*)(Z80State&)> forms[] = {
      {{0xE3}, [](Z80State& s) { s.H = 0xAB, s.L = 0xCD; }},
      {{0xDD, 0xE3}, [](Z80State& s) { s.IX = 0xABCD; }},
      {{0xFD, 0xE3}, [](Z80State& s) { s.IY = 0xABCD; }}};
  const int32_t before[] = {0x6029, 0x7012, 0x71F4};
  for (size_t i = 0; i < 3; ++i) {
    b.Restart();
    b.Poke(kStack, {0xCD, 0xAB});
    ExpectEffect(b, forms[i].first, [&](Z80State& want, Memory& memory) {
      forms[i].second(want);
      memory[kStack] = static_cast<uint8_t>(before[i] % 256);
      memory[kStack + 1] = static_cast<uint8_t>(before[i] / 256);
    });
  }
}

TEST(Z80Flow, JumpsOnEachConditionToNn) {
  Bench b;
  const std::pair<int, int32_t Z80State::*> jumps[] = {{0xC2, &Z80State::FlagZ},  {0xCA, &Z80State::FlagZ},
                                                       {0xD2, &Z80State::FlagC},  {0xDA, &Z80State::FlagC},
                                                       {0xE2, &Z80State::FlagPV}, {0xEA, &Z80State::FlagPV},
                                                       {0xF2, &Z80State::FlagS},  {0xFA, &Z80State::FlagS}};
  for (const auto& [op, flag] : jumps)
    for (const int32_t value : {0, 1}) {
      b.Restart();
      b.s.*flag = value;
      const bool taken = value == op / 8 % 2;
      ExpectEffect(b, {op, 0xFE, 0xFF}, [&](Z80State& want, Memory&) { want.PC = taken ? 0xFFFE : 0x4003; });
    }
  ExpectEffect(b, {0xC3, 0x34, 0x12}, [](Z80State& want, Memory&) { want.PC = 0x1234; });
}

TEST(Z80Flow, JumpsToRegisters) {
  Bench b;
  ExpectEffect(b, {0xE9}, [](Z80State& want, Memory&) { want.PC = 0x6029; });
  b.Restart();
  ExpectEffect(b, {0xDD, 0xE9}, [](Z80State& want, Memory&) { want.PC = 0x7012; });
  b.Restart();
  ExpectEffect(b, {0xFD, 0xE9}, [](Z80State& want, Memory&) { want.PC = 0x71F4; });
}

TEST(Z80Flow, RelativeJumpsReachFromMinus126ToPlus129) {
  Bench b;
  const std::pair<int, int32_t> offsets[] = {{0x00, 0x4002}, {0x7F, 0x4081}, {0x80, 0x3F82},
                                             {0xFE, 0x4000}, {0xFF, 0x4001}, {0xFD, 0x3FFF}};
  for (const auto& [e, target] : offsets) {
    for (const int op : {0x18, 0x20, 0x28, 0x30, 0x38}) {
      b.Restart();
      b.s.FlagZ = op == 0x28 ? 1 : 0, b.s.FlagC = op == 0x38 ? 1 : 0;
      ExpectEffect(b, {op, e}, [target = target](Z80State& want, Memory&) { want.PC = target; });
    }
    b.Restart();
    ExpectEffect(b, {0x10, e},
                 [target = target](Z80State& want, Memory&) { want.PC = target, want.B = 0x63; });
  }
}

TEST(Z80Flow, RelativeJumpsDoNotWrap) {
  Bench b;
  b.s.PC = 0xFFF0;
  ExpectEffect(b, {0x18, 0x7F}, [](Z80State& want, Memory&) { want.PC = 0x10071; });
  b.s.PC = 0xFFFE;
  ExpectEffect(b, {0x10, 0x00}, [](Z80State& want, Memory&) { want.PC = 0x10000, want.B = 0x63; });
  b.s.PC = 0x0001;
  ExpectEffect(b, {0x18, 0x80}, [](Z80State& want, Memory&) { want.PC = -125; });
}

TEST(Z80Flow, BelowAddressZeroThereAreOnlyNops) {
  Bench b;
  b.Poke(0, {0x3C});  // INC A
  b.s.PC = -2;
  b.Pass();
  b.Pass();
  EXPECT_EQ(b.s.PC, 0);
  EXPECT_EQ(b.Taken(), 8);
  EXPECT_EQ(b.s.A, 0x55);
  b.Pass();
  EXPECT_EQ(b.s.PC, 1);
  EXPECT_EQ(b.s.A, 0x56);
}

TEST(Z80Flow, TheProgramRunsOnPast16Bits) {
  Bench b;
  b.s.PC = 0xFFFF;
  ExpectEffect(b, {0x3E, 0x77}, [](Z80State& want, Memory&) { want.A = 0x77, want.PC = 0x10001; });
  b.Poke(0x0001, {0x00});
  ExpectEffect(b, {0x06, 0x12}, [](Z80State& want, Memory&) { want.B = 0x12, want.PC = 0x10003; });
}

TEST(Z80Flow, DjnzCountsWithoutFlags) {
  Bench b;
  const std::pair<int32_t, int32_t> counts[] = {{2, 1}, {0, 255}, {255, 254}, {128, 127}};
  for (const auto& [from, to] : counts) {
    b.Restart();
    b.s.B = from;
    ExpectEffect(b, {0x10, 0x10}, [to = to](Z80State& want, Memory&) { want.PC = 0x4012, want.B = to; });
  }
  b.Restart();
  b.s.B = 1;
  ExpectEffect(b, {0x10, 0x10}, [](Z80State& want, Memory&) { want.B = 0; });
}

TEST(Z80Flow, CallsPushTheNextAddress) {
  Bench b;
  for (const int32_t sp : kStackPointers) {
    b.Restart();
    b.s.SP = sp;
    ExpectEffect(b, {0xCD, 0x22, 0x5A}, [&](Z80State& want, Memory& memory) {
      Pushed(want, memory, 0x4003);
      want.PC = 0x5A22;
    });
  }
}

TEST(Z80Flow, CallsAndReturnsOnEachCondition) {
  Bench b;
  const std::pair<int, int32_t Z80State::*> conditions[] = {
      {0x00, &Z80State::FlagZ}, {0x08, &Z80State::FlagZ},  {0x10, &Z80State::FlagC},
      {0x18, &Z80State::FlagC}, {0x20, &Z80State::FlagPV}, {0x28, &Z80State::FlagPV},
      {0x30, &Z80State::FlagS}, {0x38, &Z80State::FlagS}};
  for (const auto& [place, flag] : conditions)
    for (const int32_t value : {0, 1}) {
      const bool taken = value == place / 8 % 2;
      b.Restart();
      b.s.*flag = value;
      ExpectEffect(b, {0xC4 + place, 0x22, 0x5A}, [&](Z80State& want, Memory& memory) {
        if (!taken) return;
        Pushed(want, memory, 0x4003);
        want.PC = 0x5A22;
      });
      b.Restart();
      b.Poke(kStack, {0x2B, 0x5C});
      b.s.*flag = value;
      ExpectEffect(b, {0xC0 + place}, [&](Z80State& want, Memory&) {
        if (taken) want.PC = 0x5C2B, want.SP = kStack + 2;
      });
    }
}

TEST(Z80Flow, RestartsPushTheNextAddress) {
  Bench b;
  for (int target = 0; target <= 0x38; target += 8)
    for (const int32_t sp : kStackPointers) {
      b.Restart();
      b.s.SP = sp;
      ExpectEffect(b, {0xC7 + target}, [&](Z80State& want, Memory& memory) {
        Pushed(want, memory, 0x4001);
        want.PC = target;
      });
    }
}

TEST(Z80Flow, PushedAddressesAreCutTo16Bits) {
  Bench b;
  b.s.PC = 0x10010;
  ExpectEffect(b, {0xCD, 0x22, 0x5A}, [](Z80State& want, Memory& memory) {
    Pushed(want, memory, 0x0013);
    want.PC = 0x5A22;
  });
  b.Restart();
  b.s.PC = 0x10FF0;
  ExpectEffect(b, {0xEF}, [](Z80State& want, Memory& memory) {
    Pushed(want, memory, 0x0FF1);
    want.PC = 0x28;
  });
  b.Restart();
  b.s.PC = 0xFFFE;
  b.s.FlagC = 1;
  ExpectEffect(b, {0xDC, 0x22, 0x5A}, [](Z80State& want, Memory& memory) {
    Pushed(want, memory, 0x0001);
    want.PC = 0x5A22;
  });
}

TEST(Z80Flow, ReturnsWrapTheStackPointer) {
  Bench b;
  for (const int32_t sp : kStackPointers) {
    b.Restart();
    b.s.SP = sp;
    b.Poke(sp, {0xCD});
    b.Poke((sp + 1) % 0x10000, {0xAB});
    ExpectEffect(b, {0xC9}, [&](Z80State& want, Memory&) {
      want.PC = 0xABCD;
      want.SP = (sp + 2) % 0x10000;
    });
  }
}

TEST(Z80Flow, RetnRestoresIff1AndRetiDoesNot) {
  Bench b;
  for (const int32_t iff1 : {0, 1})
    for (const int32_t iff2 : {0, 1}) {
      b.Restart();
      b.Poke(kStack, {0x2B, 0x5C});
      b.s.IFF1 = iff1, b.s.IFF2 = iff2;
      ExpectEffect(b, {0xED, 0x45}, [&](Z80State& want, Memory&) {
        want.PC = 0x5C2B, want.SP = kStack + 2, want.IFF1 = iff2;
      });
      b.Restart();
      b.s.IFF1 = iff1, b.s.IFF2 = iff2;
      ExpectEffect(b, {0xED, 0x4D}, [](Z80State& want, Memory&) { want.PC = 0x5C2B, want.SP = kStack + 2; });
    }
}

TEST(Z80Flow, InterruptModesAndFlipFlops) {
  Bench b;
  const std::pair<int, int32_t> modes[] = {{0x46, 0}, {0x56, 1}, {0x5E, 2}};
  for (const auto& [op, mode] : modes) {
    b.Restart();
    b.s.IM = mode == 1 ? 0 : 1;
    ExpectEffect(b, {0xED, op}, [mode = mode](Z80State& want, Memory&) { want.IM = mode; });
  }
  ExpectEffect(b, {0xFB}, [](Z80State& want, Memory&) { want.IFF1 = want.IFF2 = 1; });
  ExpectEffect(b, {0xF3}, [](Z80State& want, Memory&) { want.IFF1 = want.IFF2 = 0; });
}

TEST(Z80Flow, HaltStaysWhereItIs) {
  Bench b;
  ExpectEffect(b, {0x76}, [](Z80State& want, Memory&) { want.Halted = 1, want.PC = kOrigin; });
  for (int pass = 2; pass <= 5; ++pass) {
    b.Pass();
    EXPECT_EQ(b.s.PC, kOrigin);
    EXPECT_EQ(b.Taken(), 4 * pass);
    EXPECT_EQ(b.s.R, kStartR + pass);
  }
}

TEST(Z80Flow, NopDoesNothing) {
  Bench b;
  ExpectEffect(b, {0x00}, [](Z80State&, Memory&) {});
}

}  // namespace
}  // namespace quoll::z80test
