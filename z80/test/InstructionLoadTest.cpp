// Loads and exchanges: every addressing form moves what it says and nothing else.
#include <cstdint>
#include <vector>

#include "z80/test/PassBench.h"

namespace quoll::z80test {
namespace {

const auto kNoChange = [](Z80State&, Memory&) {};

TEST(Z80Loads, BetweenRegistersAndMemoryAtHL) {
  Bench b;
  for (size_t to = 0; to < 8; ++to)
    for (size_t from = 0; from < 8; ++from) {
      if (to == 6 && from == 6) continue;  // HALT
      b.Restart();
      b.Poke(0x6029, {0x77});
      ExpectEffect(b, {static_cast<int>(0x40 + to * 8 + from)}, [&](Z80State& want, Memory& memory) {
        const int32_t value = from == 6 ? 0x77 : b.s.*kRegisters[from];
        if (to == 6)
          memory[0x6029] = static_cast<uint8_t>(value);
        else
          want.*kRegisters[to] = value;
      });
    }
}

TEST(Z80Loads, NumbersIntoRegistersAndMemoryAtHL) {
  Bench b;
  for (size_t to = 0; to < 8; ++to) {
    b.Restart();
    ExpectEffect(b, {static_cast<int>(0x06 + to * 8), 0xC9}, [&](Z80State& want, Memory& memory) {
      if (to == 6)
        memory[0x6029] = 0xC9;
      else
        want.*kRegisters[to] = 0xC9;
    });
  }
}

TEST(Z80Loads, WordsIntoPairs) {
  Bench b;
  ExpectEffect(b, {0x01, 0x34, 0x12}, [](Z80State& want, Memory&) { want.B = 0x12, want.C = 0x34; });
  ExpectEffect(b, {0x11, 0x35, 0x13}, [](Z80State& want, Memory&) { want.D = 0x13, want.E = 0x35; });
  ExpectEffect(b, {0x21, 0x36, 0x14}, [](Z80State& want, Memory&) { want.H = 0x14, want.L = 0x36; });
  ExpectEffect(b, {0x31, 0xFE, 0xFF}, [](Z80State& want, Memory&) { want.SP = 0xFFFE; });
  ExpectEffect(b, {0xDD, 0x21, 0xFE, 0xCA}, [](Z80State& want, Memory&) { want.IX = 0xCAFE; });
  ExpectEffect(b, {0xFD, 0x21, 0xEF, 0xBE}, [](Z80State& want, Memory&) { want.IY = 0xBEEF; });
}

TEST(Z80Loads, AThroughBCAndDEAndNn) {
  Bench b;
  b.Poke(0x6440, {0x10});
  b.Poke(0x6811, {0x20});
  b.Poke(0x5A22, {0x30});
  ExpectEffect(b, {0x0A}, [](Z80State& want, Memory&) { want.A = 0x10; });
  ExpectEffect(b, {0x1A}, [](Z80State& want, Memory&) { want.A = 0x20; });
  ExpectEffect(b, {0x3A, 0x22, 0x5A}, [](Z80State& want, Memory&) { want.A = 0x30; });
  ExpectEffect(b, {0x02}, [](Z80State&, Memory& memory) { memory[0x6440] = 0x30; });
  ExpectEffect(b, {0x12}, [](Z80State&, Memory& memory) { memory[0x6811] = 0x30; });
  ExpectEffect(b, {0x32, 0x23, 0x5A}, [](Z80State&, Memory& memory) { memory[0x5A23] = 0x30; });
}

struct PairForm {
  std::vector<int> store, load;  // opcodes before the address
  int32_t value;                 // what the pair holds on the bench
  void (*set)(Z80State&, int32_t);
};

const PairForm kPairForms[] = {
    {{0x22}, {0x2A}, 0x6029, [](Z80State& s, int32_t v) { s.H = v / 256, s.L = v % 256; }},
    {{0xED, 0x43}, {0xED, 0x4B}, 0x6440, [](Z80State& s, int32_t v) { s.B = v / 256, s.C = v % 256; }},
    {{0xED, 0x53}, {0xED, 0x5B}, 0x6811, [](Z80State& s, int32_t v) { s.D = v / 256, s.E = v % 256; }},
    {{0xED, 0x63}, {0xED, 0x6B}, 0x6029, [](Z80State& s, int32_t v) { s.H = v / 256, s.L = v % 256; }},
    {{0xED, 0x73}, {0xED, 0x7B}, kStack, [](Z80State& s, int32_t v) { s.SP = v; }},
    {{0xDD, 0x22}, {0xDD, 0x2A}, 0x7012, [](Z80State& s, int32_t v) { s.IX = v; }},
    {{0xFD, 0x22}, {0xFD, 0x2A}, 0x71F4, [](Z80State& s, int32_t v) { s.IY = v; }},
};

std::vector<int> WithAddress(std::vector<int> code, int32_t address) {
  code.push_back(address & 0xFF);
  code.push_back(address >> 8);
  return code;
}

// At 0xFFFF the second byte lies at 0x10000: addresses are not cut to 16 bits.
TEST(Z80Loads, PairsThroughNnWithTheLowByteFirst) {
  Bench b;
  for (const int32_t address : {0x5A22, 0xFFFF})
    for (const PairForm& form : kPairForms) {
      b.Restart();
      b.Poke(address, {0, 0});
      ExpectEffect(b, WithAddress(form.store, address), [&](Z80State&, Memory& memory) {
        memory[static_cast<size_t>(address)] = static_cast<uint8_t>(form.value & 0xFF);
        memory[static_cast<size_t>(address) + 1] = static_cast<uint8_t>(form.value >> 8);
      });
      b.Poke(address, {0xCD, 0xAB});
      ExpectEffect(b, WithAddress(form.load, address),
                   [&](Z80State& want, Memory&) { form.set(want, 0xABCD); });
    }
}

TEST(Z80Loads, StackPointerFromHLAndIXAndIY) {
  Bench b;
  ExpectEffect(b, {0xF9}, [](Z80State& want, Memory&) { want.SP = 0x6029; });
  ExpectEffect(b, {0xDD, 0xF9}, [](Z80State& want, Memory&) { want.SP = 0x7012; });
  ExpectEffect(b, {0xFD, 0xF9}, [](Z80State& want, Memory&) { want.SP = 0x71F4; });
}

TEST(Z80Loads, IndexedRegistersWithEveryKindOfDisplacement) {
  Bench b;
  for (const int prefix : {0xDD, 0xFD})
    for (const int d : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      const int32_t base = prefix == 0xDD ? 0x7012 : 0x71F4;
      const auto place = static_cast<size_t>(base + (d >= 0x80 ? d - 0x100 : d));
      for (size_t r = 0; r < 8; ++r) {
        b.Restart();
        b.Poke(static_cast<int32_t>(place), {0x99});
        if (r == 6) {
          ExpectEffect(b, {prefix, 0x36, d, 0x9A}, [&](Z80State&, Memory& memory) { memory[place] = 0x9A; });
          continue;
        }
        ExpectEffect(b, {prefix, static_cast<int>(0x46 + r * 8), d},
                     [&](Z80State& want, Memory&) { want.*kRegisters[r] = 0x99; });
        b.s.*kRegisters[r] = 0x3D;
        ExpectEffect(b, {prefix, static_cast<int>(0x70 + r), d},
                     [&](Z80State&, Memory& memory) { memory[place] = 0x3D; });
      }
    }
}

TEST(Z80Loads, IndexedAddressesRunPast16Bits) {
  Bench b;
  b.s.IX = b.s.IY = 0xFFF0;
  b.Poke(0x1006F, {0x42});
  b.Poke(0x006F, {0x24});
  for (const int prefix : {0xDD, 0xFD}) {
    ExpectEffect(b, {prefix, 0x7E, 0x7F}, [](Z80State& want, Memory&) { want.A = 0x42; });
    ExpectEffect(
        b, {prefix, 0x36, 0x7F, static_cast<int>(0x40 + prefix % 2)},
        [&](Z80State&, Memory& memory) { memory[0x1006F] = static_cast<uint8_t>(0x40 + prefix % 2); });
    b.Poke(0x1006F, {0x42});
  }
}

TEST(Z80Loads, IndexedAddressesBelowZeroReadZeroAndStoreNothing) {
  Bench b;
  b.s.IX = b.s.IY = 0x0010;
  b.Poke(0xFF90, {0x42});
  for (const int prefix : {0xDD, 0xFD}) {
    ExpectEffect(b, {prefix, 0x7E, 0x80}, [](Z80State& want, Memory&) { want.A = 0; });
    ExpectEffect(b, {prefix, 0x36, 0x80, 0x55}, kNoChange);
    ExpectEffect(b, {prefix, 0x70, 0x80}, kNoChange);
  }
}

// Register places of the index pages: H and L stand for the halves.
TEST(Z80Loads, IndexHalvesLikeRegisters) {
  Bench b;
  for (const int prefix : {0xDD, 0xFD}) {
    const auto index = prefix == 0xDD ? &Z80State::IX : &Z80State::IY;
    const auto get = [&](const Z80State& s, size_t r) {
      return r == 4 ? s.*index / 256 : r == 5 ? s.*index % 256 : s.*kRegisters[r];
    };
    const auto set = [&](Z80State& s, size_t r, int32_t v) {
      if (r == 4)
        s.*index = v * 256 + s.*index % 256;
      else if (r == 5)
        s.*index = s.*index / 256 * 256 + v;
      else
        s.*kRegisters[r] = v;
    };
    for (size_t to = 0; to < 8; ++to)
      for (size_t from = 0; from < 8; ++from) {
        const bool half = to == 4 || to == 5 || from == 4 || from == 5;
        if (to == 6 || from == 6 || !half) continue;
        b.Restart();
        ExpectEffect(b, {prefix, static_cast<int>(0x40 + to * 8 + from)},
                     [&](Z80State& want, Memory&) { set(want, to, get(b.s, from)); });
      }
    for (const size_t to : {size_t{4}, size_t{5}}) {
      b.Restart();
      ExpectEffect(b, {prefix, static_cast<int>(0x06 + to * 8), 0xE7},
                   [&](Z80State& want, Memory&) { set(want, to, 0xE7); });
    }
  }
}

TEST(Z80Loads, ALoadOfAHalfIntoItselfChangesNothing) {
  Bench b;
  for (const int op : {0x64, 0x6D}) {
    ExpectEffect(b, {0xDD, op}, kNoChange);
    ExpectEffect(b, {0xFD, op}, kNoChange);
  }
}

TEST(Z80Loads, ExchangeOfDEAndHL) {
  Bench b;
  ExpectEffect(b, {0xEB},
               [](Z80State& want, Memory&) { want.D = 0x60, want.E = 0x29, want.H = 0x68, want.L = 0x11; });
}

TEST(Z80Loads, ExchangeOfAAndAllEightFlags) {
  Bench b;
  ExpectEffect(b, {0x08}, [](Z80State& want, Memory&) {
    want.A = 0xA1, want.A2 = 0x55;
    want.FlagS = want.FlagH = want.FlagY = want.FlagN = 0;
    want.FlagZ = want.FlagX = want.FlagPV = want.FlagC = 1;
    want.AltFlagS = want.AltFlagH = want.AltFlagY = want.AltFlagN = 1;
    want.AltFlagZ = want.AltFlagX = want.AltFlagPV = want.AltFlagC = 0;
  });
}

// The flags of the bench come in two groups; here each stands alone.
TEST(Z80Loads, ExchangeOfEachFlagWithItsOwnAlternate) {
  const std::pair<int32_t Z80State::*, int32_t Z80State::*> flags[] = {
      {&Z80State::FlagS, &Z80State::AltFlagS}, {&Z80State::FlagZ, &Z80State::AltFlagZ},
      {&Z80State::FlagY, &Z80State::AltFlagY}, {&Z80State::FlagH, &Z80State::AltFlagH},
      {&Z80State::FlagX, &Z80State::AltFlagX}, {&Z80State::FlagPV, &Z80State::AltFlagPV},
      {&Z80State::FlagN, &Z80State::AltFlagN}, {&Z80State::FlagC, &Z80State::AltFlagC}};
  Bench b;
  for (const auto& [flag, alternate] : flags) {
    for (const auto& [f, a] : flags) b.s.*f = 0, b.s.*a = 0;
    b.s.*flag = 1;
    ExpectEffect(b, {0x08}, [flag = flag, alternate = alternate](Z80State& want, Memory&) {
      std::swap(want.A, want.A2);
      want.*flag = 0, want.*alternate = 1;
    });
    ExpectEffect(b, {0x08}, [flag = flag, alternate = alternate](Z80State& want, Memory&) {
      std::swap(want.A, want.A2);
      want.*flag = 1, want.*alternate = 0;
    });
  }
}

TEST(Z80Loads, ExxExchangesThreePairsAndNotA) {
  Bench b;
  ExpectEffect(b, {0xD9}, [](Z80State& want, Memory&) {
    want.B = 0xB1, want.C = 0xC1, want.D = 0xD1, want.E = 0xE1, want.H = 0xF1, want.L = 0x91;
    want.B2 = 0x64, want.C2 = kQuietPort, want.D2 = 0x68, want.E2 = 0x11, want.H2 = 0x60, want.L2 = 0x29;
  });
}

TEST(Z80Loads, IntoAndOutOfI) {
  Bench b;
  ExpectEffect(b, {0xED, 0x47}, [](Z80State& want, Memory&) { want.I = 0x55; });
  for (int32_t i = 0; i < 256; ++i)
    for (const int32_t iff2 : {0, 1}) {
      b.Restart();
      b.s.I = i, b.s.IFF2 = iff2, b.s.IFF1 = 0, b.s.FlagC = i & 1, b.s.FlagX = 1;
      Z80State want = b.s;
      b.Pass({0xED, 0x57});
      want.A = i, want.FlagS = i > 127 ? 1 : 0, want.FlagZ = i == 0 ? 1 : 0;
      want.FlagH = want.FlagN = 0, want.FlagPV = iff2;
      want.PC += 2, want.R += 1, want.CurOpcode = 0x57;
      ASSERT_TRUE(SameState(b.s, want)) << i;
    }
}

TEST(Z80Loads, OutOfRComesBeforeItsStep) {
  Bench b;
  for (int32_t r = 0; r < 256; ++r)
    for (const int32_t iff2 : {0, 1}) {
      b.Restart();
      b.s.R = r, b.s.IFF2 = iff2, b.s.FlagC = r & 1, b.s.FlagX = 1;
      Z80State want = b.s;
      b.Pass({0xED, 0x5F});
      want.A = r, want.FlagS = r > 127 ? 1 : 0, want.FlagZ = r == 0 ? 1 : 0;
      want.FlagH = want.FlagN = 0, want.FlagPV = iff2;
      want.PC += 2, want.R = (r + 2) & 255, want.CurOpcode = 0x5F;
      ASSERT_TRUE(SameState(b.s, want)) << r;
    }
}

TEST(Z80Loads, IntoRStepsOnceMore) {
  Bench b;
  for (int32_t a = 0; a < 256; ++a) {
    b.Restart();
    b.s.A = a;
    Z80State want = b.s;
    b.Pass({0xED, 0x4F});
    want.PC += 2, want.R = a == 255 ? 0 : a + 1, want.CurOpcode = 0x4F;
    ASSERT_TRUE(SameState(b.s, want)) << a;
  }
}

}  // namespace
}  // namespace quoll::z80test
