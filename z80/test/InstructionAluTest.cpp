// Arithmetic through its opcodes: each opcode takes the right operand to the right operation. The operations
// themselves have their own tests.
#include <cstdint>
#include <vector>

#include "z80/test/PassBench.h"
#include "z80/test/PlainAlu.h"

namespace quoll::z80test {
namespace {

using OnA = void (*)(Z80State&, int32_t);
const OnA kOnA[] = {plain::AddA, plain::AdcA, plain::SubA, plain::SbcA,
                    plain::AndA, plain::XorA, plain::OrA,  plain::CpA};

using OnByte = int32_t (*)(Z80State&, int32_t);
const OnByte kShifts[] = {plain::Rlc, plain::Rrc, plain::Rl,  plain::Rr,
                          plain::Sla, plain::Sra, plain::Sll, plain::Srl};

const int32_t kBytes[] = {0x00, 0x01, 0x3F, 0x7F, 0x80, 0xA5, 0xFF};

uint8_t Byte(int32_t v) { return static_cast<uint8_t>(v); }

TEST(Z80AluForms, EightOperationsOnRegistersMemoryAndNumbers) {
  Bench b;
  for (size_t op = 0; op < 8; ++op)
    for (const int32_t carry : {0, 1})
      for (const int32_t v : kBytes) {
        for (size_t r = 0; r < 8; ++r) {
          b.Restart();
          b.s.FlagC = carry;
          SetOperand(b.s, b.m->MemImage, r, v);
          ExpectEffect(b, {static_cast<int>(0x80 + op * 8 + r)},
                       [&](Z80State& want, Memory&) { kOnA[op](want, v); });
        }
        b.Restart();
        b.s.FlagC = carry;
        ExpectEffect(b, {static_cast<int>(0xC6 + op * 8), v},
                     [&](Z80State& want, Memory&) { kOnA[op](want, v); });
      }
}

TEST(Z80AluForms, EightOperationsOnIndexedMemoryAndIndexHalves) {
  Bench b;
  for (const int prefix : {0xDD, 0xFD})
    for (size_t op = 0; op < 8; ++op)
      for (const int32_t carry : {0, 1})
        for (const int32_t v : kBytes) {
          b.Restart();
          b.s.FlagC = carry;
          b.Poke((prefix == 0xDD ? 0x7012 : 0x71F4) - 5, {v});
          ExpectEffect(b, {prefix, static_cast<int>(0x86 + op * 8), 0xFB},
                       [&](Z80State& want, Memory&) { kOnA[op](want, v); });
          for (const int half : {0, 1}) {
            b.Restart();
            b.s.FlagC = carry;
            (prefix == 0xDD ? b.s.IX : b.s.IY) = half == 0 ? v * 256 + 0x5C : 0x5C00 + v;
            ExpectEffect(b, {prefix, static_cast<int>(0x84 + op * 8) + half},
                         [&](Z80State& want, Memory&) { kOnA[op](want, v); });
          }
        }
}

TEST(Z80AluForms, IncAndDecOfRegistersAndMemory) {
  Bench b;
  for (const bool inc : {true, false})
    for (const int32_t carry : {0, 1})
      for (const int32_t v : kBytes)
        for (size_t r = 0; r < 8; ++r) {
          b.Restart();
          b.s.FlagC = carry;
          SetOperand(b.s, b.m->MemImage, r, v);
          ExpectEffect(b, {static_cast<int>(r * 8) + (inc ? 4 : 5)}, [&](Z80State& want, Memory& memory) {
            const int32_t result = inc ? plain::Inc8(want, v) : plain::Dec8(want, v);
            SetOperand(want, memory, r, result);
          });
        }
}

TEST(Z80AluForms, IncAndDecOfIndexedMemoryAndIndexHalves) {
  Bench b;
  for (const int prefix : {0xDD, 0xFD})
    for (const bool inc : {true, false})
      for (const int32_t v : kBytes) {
        const auto index = prefix == 0xDD ? &Z80State::IX : &Z80State::IY;
        const auto change = [&](Z80State& s) { return inc ? plain::Inc8(s, v) : plain::Dec8(s, v); };
        b.Restart();
        const auto place = static_cast<size_t>(b.s.*index + 0x7F);
        b.Poke(static_cast<int32_t>(place), {v});
        ExpectEffect(b, {prefix, inc ? 0x34 : 0x35, 0x7F},
                     [&](Z80State& want, Memory& memory) { memory[place] = Byte(change(want)); });
        b.Restart();
        b.s.*index = v * 256 + 0xFF;
        ExpectEffect(b, {prefix, inc ? 0x24 : 0x25},
                     [&](Z80State& want, Memory&) { want.*index = change(want) * 256 + 0xFF; });
        b.Restart();
        b.s.*index = 0xFF00 + v;
        ExpectEffect(b, {prefix, inc ? 0x2C : 0x2D},
                     [&](Z80State& want, Memory&) { want.*index = 0xFF00 + change(want); });
      }
}

// What a CB opcode makes of the byte; BIT gives the byte back.
int32_t CbResult(Z80State& s, int op, int32_t v) {
  const int n = op / 8 % 8;
  const int32_t weight = 1 << n;
  if (op < 0x40) return kShifts[n](s, v);
  if (op < 0x80) return plain::TestBit(s, v, n), v;
  if (op < 0xC0) return v - (plain::Bit(v, n) == 1 ? weight : 0);
  return v + (plain::Bit(v, n) == 1 ? 0 : weight);
}

TEST(Z80AluForms, TheWholeCbPage) {
  Bench b;
  for (int op = 0; op < 256; ++op)
    for (const int32_t carry : {0, 1})
      for (const int32_t v : kBytes) {
        const auto r = static_cast<size_t>(op % 8);
        b.Restart();
        b.s.FlagC = carry;
        SetOperand(b.s, b.m->MemImage, r, v);
        ExpectEffect(b, {0xCB, op}, [&](Z80State& want, Memory& memory) {
          const int32_t result = CbResult(want, op, v);
          SetOperand(want, memory, r, result);
        });
      }
}

TEST(Z80AluForms, TheMemoryFormsOfTheIndexedCbPages) {
  Bench b;
  for (const int prefix : {0xDD, 0xFD})
    for (const int d : {0x05, 0x7F, 0x80, 0xFB})
      for (int op = 0x06; op < 256; op += 8)
        for (const int32_t v : kBytes) {
          b.Restart();
          b.s.FlagC = v & 1;
          const int32_t place = (prefix == 0xDD ? 0x7012 : 0x71F4) + (d >= 0x80 ? d - 0x100 : d);
          b.Poke(place, {v});
          ExpectEffect(b, {prefix, 0xCB, d, op}, [&](Z80State& want, Memory& memory) {
            memory[static_cast<size_t>(place)] = Byte(CbResult(want, op, v));
          });
        }
}

TEST(Z80AluForms, IndexedSllCopiesItsResultIntoARegister) {
  Bench b;
  for (const int prefix : {0xDD, 0xFD})
    for (size_t r = 0; r < 8; ++r)
      for (const int32_t v : kBytes) {
        b.Restart();
        const int32_t place = (prefix == 0xDD ? 0x7012 : 0x71F4) - 1;
        b.Poke(place, {v});
        ExpectEffect(b, {prefix, 0xCB, 0xFF, static_cast<int>(0x30 + r)},
                     [&](Z80State& want, Memory& memory) {
                       const int32_t result = plain::Sll(want, v);
                       memory[static_cast<size_t>(place)] = Byte(result);
                       if (r != 6) want.*kRegisters[r] = result;
                     });
      }
}

TEST(Z80AluForms, ResOfMemoryWritesMemory) {
  Bench b;
  b.Poke(0x6029, {0xFF});
  ExpectEffect(b, {0xCB, 0x86}, [](Z80State&, Memory& memory) { memory[0x6029] = 0xFE; });
}

TEST(Z80AluForms, SingleByteOperationsOnA) {
  struct Form {
    std::vector<int> code;
    void (*change)(Z80State&);
  };
  const Form forms[] = {{{0x07}, plain::Rlca}, {{0x0F}, plain::Rrca}, {{0x17}, plain::Rla},
                        {{0x1F}, plain::Rra},  {{0x27}, plain::Daa},  {{0x2F}, plain::Cpl},
                        {{0x37}, plain::Scf},  {{0x3F}, plain::Ccf},  {{0xED, 0x44}, plain::Neg}};
  Bench b;
  for (const Form& form : forms)
    for (const int32_t v : kBytes)
      for (int32_t bits = 0; bits < 8; ++bits) {
        b.Restart();
        b.s.A = v, b.s.FlagC = bits & 1, b.s.FlagH = bits / 2 & 1, b.s.FlagN = bits / 4;
        ExpectEffect(b, form.code, [&](Z80State& want, Memory&) { form.change(want); });
      }
}

TEST(Z80AluForms, PairsAddedAndSubtracted) {
  struct Form {
    std::vector<int> code;
    void (*change)(Z80State&, int32_t);
    int32_t Z80State::*fixed;  // first operand when it is an index register
  };
  const Form forms[] = {{{0x09}, plain::AddHL, nullptr},
                        {{0xED, 0x4A}, plain::AdcHL, nullptr},
                        {{0xED, 0x42}, plain::SbcHL, nullptr},
                        {{0xDD, 0x09}, plain::AddIX, &Z80State::IX},
                        {{0xFD, 0x09}, plain::AddIY, &Z80State::IY}};
  Bench b;
  for (const Form& form : forms)
    for (int pair = 0; pair < 4; ++pair)
      for (const int32_t carry : {0, 1})
        for (const int32_t first : {0x0000, 0x0FFF, 0x7FFF, 0x8001, 0xFFFF})
          for (const int32_t second : {0x0000, 0x0001, 0x1001, 0x8000, 0xFFFF}) {
            b.Restart();
            b.s.FlagC = carry;
            if (form.fixed != nullptr)
              b.s.*form.fixed = first;
            else
              b.s.H = first / 256, b.s.L = first % 256;
            int32_t v = second;
            if (pair == 0) b.s.B = v / 256, b.s.C = v % 256;
            if (pair == 1) b.s.D = v / 256, b.s.E = v % 256;
            if (pair == 2) v = first;
            if (pair == 3) b.s.SP = v;
            std::vector<int> code = form.code;
            code.back() += pair * 16;
            ExpectEffect(b, code, [&](Z80State& want, Memory&) { form.change(want, v); });
          }
}

TEST(Z80AluForms, PairsStepAndWrapWithoutFlags) {
  struct Form {
    std::vector<int> inc, dec;
    void (*set)(Z80State&, int32_t);
  };
  const Form forms[] = {
      {{0x03}, {0x0B}, [](Z80State& s, int32_t v) { s.B = v / 256, s.C = v % 256; }},
      {{0x13}, {0x1B}, [](Z80State& s, int32_t v) { s.D = v / 256, s.E = v % 256; }},
      {{0x23}, {0x2B}, [](Z80State& s, int32_t v) { s.H = v / 256, s.L = v % 256; }},
      {{0x33}, {0x3B}, [](Z80State& s, int32_t v) { s.SP = v; }},
      {{0xDD, 0x23}, {0xDD, 0x2B}, [](Z80State& s, int32_t v) { s.IX = v; }},
      {{0xFD, 0x23}, {0xFD, 0x2B}, [](Z80State& s, int32_t v) { s.IY = v; }},
  };
  Bench b;
  for (const Form& form : forms)
    for (const int32_t v : {0x0000, 0x0001, 0x00FF, 0x0100, 0x7FFF, 0x8000, 0xFF00, 0xFFFF}) {
      b.Restart();
      form.set(b.s, v);
      ExpectEffect(b, form.inc, [&](Z80State& want, Memory&) { form.set(want, v == 0xFFFF ? 0 : v + 1); });
      form.set(b.s, v);
      ExpectEffect(b, form.dec, [&](Z80State& want, Memory&) { form.set(want, v == 0 ? 0xFFFF : v - 1); });
    }
}

TEST(Z80AluForms, DigitRotatesForAllValues) {
  Bench b;
  for (const bool right : {true, false}) {
    b.Restart();
    b.Poke(kOrigin, {0xED, right ? 0x67 : 0x6F});
    for (int32_t a = 0; a < 256; ++a)
      for (int32_t m = 0; m < 256; ++m) {
        b.s.PC = kOrigin, b.s.R = 0, b.s.A = a, b.s.FlagC = b.s.FlagY = m & 1, b.s.FlagX = a & 1;
        b.s.FlagH = b.s.FlagN = 1;
        b.Poke(0x6029, {m});
        Z80State want = b.s;
        b.Pass();
        const int32_t in = right ? m / 16 + a % 16 * 16 : (m * 16 + a % 16) & 255;
        want.A = a / 16 * 16 + (right ? m % 16 : m / 16);
        plain::ByteFlags(want, want.A);
        want.PC += 2, want.R = 5, want.CurOpcode = right ? 0x67 : 0x6F;
        ASSERT_TRUE(SameState(b.s, want)) << a << " " << m;
        ASSERT_EQ(b.Peek(0x6029), in) << a << " " << m;
      }
  }
}

}  // namespace
}  // namespace quoll::z80test
