// T-states, PC step and R step of every unprefixed opcode and of the CB page.
#include <vector>

#include "z80/test/OpcodeRows.h"

namespace quoll::z80test {
namespace {

// The condition in bits 3 to 5 of an opcode: a flag and the value that it must have.
std::pair<int32_t Z80State::*, int32_t> ConditionOf(int opcode) {
  constexpr int32_t Z80State::*kFlags[] = {&Z80State::FlagZ, &Z80State::FlagC, &Z80State::FlagPV,
                                           &Z80State::FlagS};
  return {kFlags[opcode / 16 % 4], opcode / 8 % 2};
}

// One row taken, one not taken, for each opcode.
void AddConditional(std::vector<Row>& rows, const std::vector<int>& opcodes, const Row& taken,
                    const Row& notTaken) {
  for (const int opcode : opcodes) {
    // The relative jumps have only the first four, from 0x20 on.
    const auto [flag, value] = ConditionOf(opcode < 0x40 ? opcode - 0x20 : opcode);
    rows.push_back({{opcode}, taken.t, taken.pc, taken.r, Alone(flag, value)});
    rows.push_back({{opcode}, notTaken.t, notTaken.pc, notTaken.r, Alone(flag, 1 - value)});
  }
}

std::vector<Row> BaseRows() {
  const int32_t jr = Goto(kOrigin + 2 + 0x22);
  std::vector<Row> rows = {
      {{0x00, 0x40, 0x49, 0x52, 0x5B, 0x64, 0x6D, 0x7F}, 4, 1, 1},
      {{0x01, 0x11, 0x21, 0x31}, 10, 3, 1},
      {{0x02, 0x12}, 7, 1, 1},
      {{0x0A, 0x1A}, 7, 1, 1},
      {{0x03, 0x13, 0x23, 0x33}, 6, 1, 1},
      {{0x0B, 0x1B, 0x2B, 0x3B}, 6, 1, 1},
      {{0x04, 0x0C, 0x14, 0x1C, 0x24, 0x2C, 0x3C}, 4, 1, 1},
      {{0x05, 0x0D, 0x15, 0x1D, 0x25, 0x2D, 0x3D}, 4, 1, 1},
      {{0x34, 0x35}, 11, 1, 1},
      {{0x06, 0x0E, 0x16, 0x1E, 0x26, 0x2E, 0x3E}, 7, 2, 1},
      {{0x36}, 10, 2, 1},
      {{0x07, 0x0F, 0x17, 0x1F}, 4, 1, 1},
      {{0x08}, 4, 1, 1},
      {{0x09, 0x19, 0x29, 0x39}, 11, 1, 1},
      {{0x10}, 13, jr, 1, [](Z80State& s) { s.B = 2; }},
      {{0x10}, 13, jr, 1, [](Z80State& s) { s.B = 0; }},
      {{0x10}, 8, 2, 1, [](Z80State& s) { s.B = 1; }},
      {{0x18}, 12, jr, 1},
      {{0x22, 0x2A}, 16, 3, 1},
      {{0x27}, 7, 1, 1},
      {{0x2F, 0x37, 0x3F}, 4, 1, 1},
      {{0x32, 0x3A}, 13, 3, 1},
      // LD r,r', without those of a register to itself and HALT.
      {{0x41, 0x42, 0x43, 0x44, 0x45, 0x47, 0x48, 0x4A, 0x4B, 0x4C, 0x4D, 0x4F, 0x50, 0x51,
        0x53, 0x54, 0x55, 0x57, 0x58, 0x59, 0x5A, 0x5C, 0x5D, 0x5F, 0x60, 0x61, 0x62, 0x63,
        0x65, 0x67, 0x68, 0x69, 0x6A, 0x6B, 0x6C, 0x6F, 0x78, 0x79, 0x7A, 0x7B, 0x7C, 0x7D},
       4,
       1,
       1},
      {{0x46, 0x4E, 0x56, 0x5E, 0x66, 0x6E, 0x7E}, 7, 1, 1},
      {{0x70, 0x71, 0x72, 0x73, 0x74, 0x75, 0x77}, 7, 1, 1},
      {{0x76}, 4, 0, 1},
      {Registers({0x80, 0x88, 0x90, 0x98, 0xA0, 0xA8, 0xB0, 0xB8}), 4, 1, 1},
      {{0x86, 0x8E, 0x96, 0x9E, 0xA6, 0xAE, 0xB6, 0xBE}, 7, 1, 1},
      {{0xC6, 0xCE, 0xD6, 0xE6, 0xFE}, 7, 2, 1},
      {{0xDE}, 4, 2, 1},
      {{0xEE, 0xF6}, 2, 2, 1},
      {{0xC1, 0xD1, 0xE1, 0xF1}, 10, 1, 1},
      {{0xC3}, 10, Goto(kNn), 1},
      {{0xCD}, 17, Goto(kNn), 1},
      {{0xC5, 0xD5, 0xE5, 0xF5}, 11, 1, 1},
      {{0xC9}, 10, Goto(kOnStack), 1},
      {{0xD3}, 11, 2, 1},
      {{0xDB}, 11, 2, 3},
      {{0xD9}, 4, 1, 1},
      {{0xE3}, 19, 1, 2},
      {{0xE9}, 4, Goto(0x6029), 1},
      {{0xEB}, 4, 1, 1},
      {{0xF3, 0xFB}, 4, 1, 1},
      {{0xF9}, 10, 1, 1},
  };
  for (int rst = 0; rst < 0x40; rst += 8) rows.push_back({{0xC7 + rst}, 11, Goto(rst), rst == 0x38 ? 1 : 2});
  AddConditional(rows, {0x20, 0x28, 0x30, 0x38}, {{}, 12, jr, 1}, {{}, 7, 2, 1});
  AddConditional(rows, {0xC0, 0xC8, 0xD0, 0xD8, 0xE0, 0xE8, 0xF0, 0xF8}, {{}, 10, Goto(kOnStack), 2},
                 {{}, 5, 1, 2});
  AddConditional(rows, {0xC2}, {{}, 10, Goto(kNn), 0}, {{}, 10, 3, 1});
  AddConditional(rows, {0xDA}, {{}, 0, Goto(kNn), 1}, {{}, 6, 3, 1});
  AddConditional(rows, {0xCA, 0xD2, 0xE2, 0xEA, 0xF2, 0xFA}, {{}, 10, Goto(kNn), 1}, {{}, 6, 3, 1});
  AddConditional(rows, {0xC4, 0xCC, 0xD4, 0xDC, 0xE4, 0xEC, 0xF4, 0xFC}, {{}, 17, Goto(kNn), 1},
                 {{}, 10, 3, 1});
  return rows;
}

TEST(Z80OpcodeTable, EveryUnprefixedOpcodeTakesItsTimeAndSteps) {
  WalkPage({{}, 0, {0xCB, 0xDD, 0xED, 0xFD}}, BaseRows());
}

TEST(Z80OpcodeTable, EveryCbOpcodeTakesItsTimeAndSteps) {
  WalkPage({{0xCB}, 1, {}}, {
                                {Registers({0x00}), 2, 1, 1},
                                {{0x06}, 4, 1, 1},
                                {Registers({0x08, 0x10, 0x18, 0x20, 0x28}), 8, 1, 1},
                                {{0x0E, 0x16, 0x1E, 0x26, 0x2E}, 15, 1, 1},
                                {Registers({0x30}), 8, 1, 1, nullptr, true, true},
                                {{0x36}, 15, 1, 1, nullptr, true, true},
                                {Range(0x38, 0x3F), 8, 1, 1},
                                {Registers({0x40, 0x48, 0x50, 0x58, 0x60, 0x68, 0x70, 0x78}), 4, 1, 1},
                                {{0x46, 0x4E, 0x56, 0x5E, 0x66, 0x6E, 0x76}, 12, 1, 1},
                                {{0x7E}, 4, 1, 1},
                                {Range(0x80, 0xBF), 2, 1, 1},
                                {Registers({0xC0, 0xC8, 0xD0, 0xD8, 0xE0, 0xE8, 0xF0, 0xF8}), 8, 1, 1},
                                {{0xC6, 0xCE, 0xD6, 0xDE, 0xE6, 0xEE, 0xF6, 0xFE}, 15, 1, 1},
                            });
}

TEST(Z80OpcodeTable, XorWithANumberIsFasterThanXorWithARegister) {
  Bench b;
  b.Pass({0xEE, 0x55});
  EXPECT_EQ(b.Taken(), 2);
  b.Restart();
  b.Pass({0xA8});
  EXPECT_EQ(b.Taken(), 4);
}

TEST(Z80OpcodeTable, SbcWithANumberIsFasterThanAdcWithANumber) {
  Bench b;
  b.Pass({0xDE, 1});
  EXPECT_EQ(b.Taken(), 4);
  b.Restart();
  b.Pass({0xCE, 1});
  EXPECT_EQ(b.Taken(), 7);
}

TEST(Z80OpcodeTable, ALoopOfJumpsOnCarryTakesNoTime) {
  Bench b;
  b.s.FlagC = 1;
  b.Poke(kOrigin, {0xDA, 0x00, 0x40});
  for (int i = 0; i < 1000; ++i) b.Pass();
  EXPECT_EQ(b.Taken(), 0);
  EXPECT_EQ(b.run.FrameClock, kStartCycles);
  EXPECT_EQ(b.s.PC, kOrigin);
  EXPECT_EQ(b.s.R, (kStartR + 1000) & 0xFF);
}

TEST(Z80OpcodeTable, ARepeatedJumpOnNotZeroLeavesR) {
  Bench b;
  b.s.FlagZ = 0;
  b.Poke(kOrigin, {0xC2, 0x00, 0x40});
  for (int i = 0; i < 10; ++i) b.Pass();
  EXPECT_EQ(b.s.R, kStartR);
  EXPECT_EQ(b.Taken(), 100);
}

TEST(Z80OpcodeTable, RIsMaskedAtTheEndOfThePass) {
  Bench b;
  b.s.R = 0xFF;
  b.Pass({0x00});
  EXPECT_EQ(b.s.R, 0);
  b.s.R = 0xFE;
  b.Pass({0xDB, kQuietPort});
  EXPECT_EQ(b.s.R, 1);
}

}  // namespace
}  // namespace quoll::z80test
