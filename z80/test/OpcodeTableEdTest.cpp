// T-states, PC step and R step of every opcode of the ED page.
#include <vector>

#include "z80/test/OpcodeRows.h"

namespace quoll::z80test {
namespace {

// BC, and a byte in A that (HL), where memory is 0, equals or not.
Setup Block(int32_t b, int32_t c, int32_t a = 0x55) {
  return [=](Z80State& s) { s.B = b, s.C = c, s.A = a, s.H = 0x3F, s.L = 0xF0; };
}

TEST(Z80EdTable, EveryEdOpcodeTakesItsTimeAndSteps) {
  const int32_t again = -1;  // PC back on the prefix
  WalkPage({{0xED}, 1, {}},
           {
               {{0x40, 0x48, 0x50, 0x58, 0x60, 0x68, 0x78}, 12, 1, 1},
               {{0x41, 0x49, 0x51, 0x59, 0x61, 0x69, 0x79}, 12, 1, 1},
               {{0x42, 0x52, 0x62, 0x72}, 15, 1, 1},
               {{0x4A, 0x5A, 0x6A}, 15, 1, 1},
               {{0x7A}, 11, 1, 1},
               {{0x43, 0x53, 0x63, 0x73}, 20, 3, 2},
               {{0x4B, 0x5B, 0x6B, 0x7B}, 20, 3, 1},
               {{0x44}, 8, 1, 1},
               {{0x45}, 14, Goto(kOnStack), 1},
               {{0x4D}, 14, Goto(kOnStack), 1},
               {{0x46, 0x56, 0x5E}, 8, 1, 2},
               {{0x47}, 9, 1, 0},
               {{0x4F}, 9, 1, 0x55 + 1 - kStartR},
               {{0x57}, 9, 1, 1},
               {{0x5F}, 9, 1, 2},
               {{0x67, 0x6F}, 18, 1, 5},
               {{0xA0, 0xA8}, 21, 1, 1, Block(0, 2)},
               {{0xA0, 0xA8}, 21, 1, 1, Block(0, 0)},
               {{0xA0, 0xA8}, 21, 1, 1, Block(1, 1)},
               {{0xA0, 0xA8}, 16, 1, 1, Block(0, 1)},
               {{0xB0, 0xB8}, 21, again, 1, Block(0, 2)},
               {{0xB0, 0xB8}, 21, again, 1, Block(0, 0)},
               {{0xB0, 0xB8}, 21, again, 1, Block(1, 1)},
               {{0xB0, 0xB8}, 16, 1, 1, Block(0, 1)},
               {{0xA1, 0xA9}, 16, 1, 0, Block(0, 2)},
               {{0xA1, 0xA9}, 16, 1, 0, Block(0, 1)},
               {{0xA1, 0xA9}, 16, 1, 0, Block(0, 2, 0)},
               {{0xB1, 0xB9}, 21, again, 0, Block(0, 2)},
               {{0xB1, 0xB9}, 21, again, 0, Block(0, 0)},
               {{0xB1, 0xB9}, 21, again, 0, Block(1, 1)},
               {{0xB1, 0xB9}, 16, 1, 0, Block(0, 1)},
               {{0xB1, 0xB9}, 16, 1, 0, Block(0, 2, 0)},
               {{0xB1, 0xB9}, 16, 1, 0, Block(0, 1, 0)},
               {{0xA3, 0xAB}, 16, 1, 0},
               {{0xA3, 0xAB}, 16, 1, 0, [](Z80State& s) { s.B = 1; }},
               {{0x4C, 0x4E, 0x54, 0x55, 0x5C, 0x5D, 0x64, 0x65, 0x66, 0x6C, 0x6D, 0x6E, 0x70, 0x71},
                0,
                1,
                0,
                nullptr,
                false},
               {Ranges({{0x74, 0x77}, {0x7C, 0x7F}}), 0, 1, 0, nullptr, false},
               {{0xA2, 0xAA, 0xB2, 0xBA, 0xB3, 0xBB}, 0, 1, 0, nullptr, false},
               {Ranges({{0x00, 0x3F}, {0x80, 0x9F}, {0xBC, 0xFF}}), 0, 1, 0, nullptr, false},
               {Ranges({{0xA4, 0xA7}, {0xAC, 0xAF}, {0xB4, 0xB7}}), 0, 1, 0, nullptr, false},
           });
}

}  // namespace
}  // namespace quoll::z80test
