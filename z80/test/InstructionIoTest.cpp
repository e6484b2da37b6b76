// Input and output instructions. Ports 0x70 to 0x77 are the CRTC's; its register 13 is stored as it is and
// can be read back, which makes it a port whose value a test can choose.
#include <cstdint>
#include <vector>

#include "z80/test/PassBench.h"
#include "z80/test/PlainAlu.h"

namespace quoll::z80test {
namespace {

constexpr size_t kSelect = 18;  // place of the selected register's number

TEST(Z80Io, InThroughCSetsFlagsAndIgnoresB) {
  Bench b;
  for (size_t r = 0; r < 8; ++r) {
    if (r == 6) continue;
    for (int32_t v = 0; v < 256; ++v) {
      b.Restart();
      b.m->crtc.CrtcRegs[kSelect] = 13, b.m->crtc.CrtcRegs[13] = v;
      b.s.B = v, b.s.C = 0x71, b.s.FlagC = v & 1, b.s.FlagX = 1, b.s.FlagN = 1;
      Z80State want = b.s;
      b.Pass({0xED, static_cast<int>(0x40 + r * 8)});
      want.*kRegisters[r] = v;
      plain::ByteFlags(want, v);
      want.PC += 2, want.R += 1, want.CurOpcode = static_cast<int32_t>(0x40 + r * 8);
      ASSERT_TRUE(SameState(b.s, want)) << r << " " << v;
    }
  }
}

TEST(Z80Io, InThroughCReadsTheKeyboardWhateverBIs) {
  Bench b;
  b.m->PortShadow[3] = 0x07;
  b.m->keyboard.KeyMatrix[7] = 0x21;
  b.s.B = 0x12, b.s.C = 0x58;
  b.Pass({0xED, 0x78});
  EXPECT_EQ(b.s.A, 0xDE);
}

TEST(Z80Io, InThroughANumberSetsNoFlags) {
  Bench b;
  for (int32_t v = 0; v < 256; ++v) {
    b.Restart();
    b.m->crtc.CrtcRegs[kSelect] = 13, b.m->crtc.CrtcRegs[13] = v;
    b.s.FlagZ = v & 1;
    Z80State want = b.s;
    b.Pass({0xDB, 0x73});
    want.A = v, want.PC += 2, want.R += 3, want.CurOpcode = 0xDB;
    ASSERT_TRUE(SameState(b.s, want)) << v;
  }
}

TEST(Z80Io, APortWithoutAFunctionReads255) {
  Bench b;
  b.Pass({0xDB, kQuietPort});
  EXPECT_EQ(b.s.A, 255);
  b.s.C = kQuietPort;
  b.Pass({0xED, 0x50});
  EXPECT_EQ(b.s.D, 255);
}

TEST(Z80Io, OutSendsTheRegisterToThePort) {
  Bench b;
  b.Pass({0xD3, kQuietPort});
  EXPECT_EQ(b.m->PortShadow[kQuietPort], 0x55);
  for (size_t r = 0; r < 8; ++r) {
    if (r == 6) continue;
    b.Restart();
    b.s.A = 0xA7, b.s.B = 0xB6;
    Z80State want = b.s;
    const int32_t value = b.s.*kRegisters[r];
    b.m->PortShadow[kQuietPort] = 0;
    b.Pass({0xED, static_cast<int>(0x41 + r * 8)});
    EXPECT_EQ(b.m->PortShadow[kQuietPort], value) << r;
    want.PC += 2, want.R += 1, want.CurOpcode = static_cast<int32_t>(0x41 + r * 8);
    EXPECT_TRUE(SameState(b.s, want)) << r;
  }
}

TEST(Z80Io, OutToTheCrtcSelectionLeavesFiveBitsInTheRegister) {
  Bench b;
  for (const int port : {0x70, 0x72, 0x74, 0x76}) {
    b.Restart();
    b.s.A = 0xFF;
    b.Pass({0xD3, port});
    EXPECT_EQ(b.s.A, 0x1F) << port;
    EXPECT_EQ(b.m->crtc.CrtcRegs[kSelect], 0x1F) << port;
    for (size_t r = 0; r < 8; ++r) {
      if (r == 6 || r == 1) continue;
      b.Restart();
      b.s.C = port, b.s.*kRegisters[r] = 0xEE;
      Z80State want = b.s;
      b.Pass({0xED, static_cast<int>(0x41 + r * 8)});
      want.*kRegisters[r] = 0x0E;
      want.PC += 2, want.R += 1, want.CurOpcode = static_cast<int32_t>(0x41 + r * 8);
      EXPECT_TRUE(SameState(b.s, want)) << port << " " << r;
      EXPECT_EQ(b.m->crtc.CrtcRegs[kSelect], 0x0E) << port << " " << r;
    }
  }
}

TEST(Z80Io, OutOfCToItsOwnPortMasksC) {
  Bench b;
  b.s.C = 0x72;
  b.Pass({0xED, 0x49});
  EXPECT_EQ(b.s.C, 0x12);
  EXPECT_EQ(b.m->crtc.CrtcRegs[kSelect], 0x12);
}

TEST(Z80Io, OutToACrtcRegisterLeavesItsBitsInTheRegister) {
  const std::pair<size_t, int32_t> masks[] = {{0, 0xFF},  {1, 0xFF},  {2, 0xFF},  {3, 0xFF},  {4, 0x7F},
                                              {5, 0x1F},  {6, 0x7F},  {7, 0x7F},  {8, 0xF3},  {9, 0x1F},
                                              {10, 0x7F}, {11, 0x1F}, {12, 0x3F}, {13, 0xFF}, {14, 0x3F},
                                              {15, 0xFF}, {16, 0x3F}, {17, 0xFF}};
  Bench b;
  for (const int port : {0x71, 0x73, 0x75, 0x77})
    for (const auto& [reg, mask] : masks) {
      b.Restart();
      b.m->crtc.CrtcRegs[kSelect] = static_cast<int32_t>(reg);
      b.s.A = 0xFF;
      b.Pass({0xD3, port});
      EXPECT_EQ(b.s.A, mask) << port << " " << reg;
      EXPECT_EQ(b.m->crtc.CrtcRegs[reg], mask) << port << " " << reg;
      b.Restart();
      b.s.C = port, b.s.E = 0xFF;
      b.Pass({0xED, 0x59});
      EXPECT_EQ(b.s.E, mask) << port << " " << reg;
      EXPECT_EQ(b.s.A, 0x55);
    }
}

TEST(Z80Io, OutOfABlockMasksNoRegisterAndNoMemory) {
  Bench b;
  b.s.C = 0x70;
  b.Poke(0x6029, {0xEE});
  b.Pass({0xED, 0xA3});
  EXPECT_EQ(b.m->crtc.CrtcRegs[kSelect], 0x0E);
  EXPECT_EQ(b.Peek(0x6029), 0xEE);
  EXPECT_EQ(b.s.C, 0x70);
}

TEST(Z80Io, OutiAndOutdSendStepAndCountB) {
  Bench b;
  for (const bool up : {true, false})
    for (const int32_t hl : {0x6000, 0x60FF, 0x0000, 0xFFFF})
      for (int32_t count = 0; count < 256; ++count)
        for (const int32_t flags : {0, 1}) {
          b.Restart();
          b.Poke(hl, {0x9D});
          b.m->PortShadow[kQuietPort] = 0;
          b.s.B = count, b.s.H = hl / 256, b.s.L = hl % 256;
          b.s.FlagS = b.s.FlagZ = b.s.FlagY = b.s.FlagH = b.s.FlagX = b.s.FlagPV = b.s.FlagN = b.s.FlagC =
              flags;
          Z80State want = b.s;
          b.Pass({0xED, up ? 0xA3 : 0xAB});
          want.B = plain::Dec8(want, count);
          want.FlagZ = count == 1 ? 1 : 0, want.FlagN = 1;
          const int32_t next = ((up ? hl + 1 : hl - 1) + 0x10000) % 0x10000;
          want.H = next / 256, want.L = next % 256;
          want.PC += 2, want.CurOpcode = up ? 0xA3 : 0xAB;
          ASSERT_TRUE(SameState(b.s, want)) << hl << " " << count;
          ASSERT_EQ(b.m->PortShadow[kQuietPort], 0x9D);
          b.m->screen.List1.count = 0;
        }
}

TEST(Z80Io, OutiOfTheLastByteSetsZAndN) {
  Bench b;
  b.s.B = 1, b.s.FlagZ = 0, b.s.FlagN = 0;
  b.Pass({0xED, 0xA3});
  EXPECT_EQ(b.s.B, 0);
  EXPECT_EQ(b.s.FlagZ, 1);
  EXPECT_EQ(b.s.FlagN, 1);
}

TEST(Z80Io, EdSeventyAndSeventyOneAreNotPresent) {
  Bench b;
  for (const int op : {0x70, 0x71}) {
    b.Restart();
    b.m->PortShadow[kQuietPort] = 0x66;
    b.Pass({0xED, op});
    EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
    EXPECT_EQ(b.m->PortShadow[kQuietPort], 0x66);
    EXPECT_EQ(b.Taken(), 0);
  }
}

}  // namespace
}  // namespace quoll::z80test
