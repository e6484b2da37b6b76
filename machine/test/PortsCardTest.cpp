// The sound card's ports: which chip each one reaches, mirrors included.
#include <gtest/gtest.h>

#include <initializer_list>

#include "machine/MachineInit.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

struct PortsCardTest : testing::Test {
  TestMachine m;

  void Out(std::initializer_list<std::pair<int, int>> writes) {
    for (const auto& [port, value] : writes) {
      int32_t variable = value;
      PortOut(*m, port, variable);
      EXPECT_EQ(variable, value);
    }
  }
};

TEST_F(PortsCardTest, Sn76489) {
  for (const int port : {0x30, 0xFD}) {
    m->card.sn = Sn76489{};
    Out({{port, 0xA7}, {port, 0x2B}, {port, 0xB4}});
    EXPECT_EQ(m->card.sn.SN_Reg[4], 7);
    EXPECT_EQ(m->card.sn.SN_Reg[3], 0x2B);
    EXPECT_EQ(m->card.sn.SN_Reg[5], 4);
  }
}

TEST_F(PortsCardTest, Saa1099) {
  for (const int address : {0x33, 0xFF}) {
    for (const int data : {0x32, 0xFE}) {
      m->card.saa = Saa1099{};
      Out({{address, 0x0A}, {data, 0xC3}});
      EXPECT_EQ(m->card.saa.SAA_Freq[2].frequency, 0xC3);
      Out({{address, 0xFF}});
      EXPECT_EQ(m->card.saa.latch, 31);
    }
  }
}

TEST_F(PortsCardTest, ChipsWithAnAddressAndADataPort) {
  struct Case {
    int address;
    int (*reg)(Machine&, int);
    int last;   // register that there is
    int limit;  // the latch wraps here
  };
  for (const Case& each :
       {Case{0x34, [](Machine&machine, int r) -> int { return machine.card.opl.OPL_Reg[r]; }, 255, 256},
        Case{0x38, [](Machine&machine, int r) -> int { return machine.card.sid.SID_Reg[r]; }, 28, 256},
        Case{0x3A, [](Machine&machine, int r) -> int { return machine.card.ay.AY_Reg[r]; }, 15, 256},
        Case{0x3C, [](Machine&machine, int r) -> int { return machine.card.opll.OPLL_Reg[r]; }, 63, 64}}) {
    SCOPED_TRACE(each.address);
    for (int latch = 0; latch < 256; ++latch) {
      m->card = SoundCard{};
      Out({{each.address, latch}, {each.address + 1, 0x5C}});
      const int stored = latch % each.limit;
      for (int reg = 0; reg <= each.last; ++reg) {
        const int before = each.address == 0x3A && reg == 7 ? 255 : 0;
        ASSERT_EQ(each.reg(*m, reg), reg == stored ? 0x5C : before) << latch << ' ' << reg;
      }
    }
  }
}

TEST_F(PortsCardTest, TheOlderSidCardsPorts) {
  for (int port = 0xE0; port <= 0xF8; ++port) {
    m->card.sid = Sid6581{};
    m->card.sid.latch = 3;
    Out({{port, 0x9D}});
    for (int reg = 0; reg < 29; ++reg)
      ASSERT_EQ(m->card.sid.SID_Reg[reg], reg == port - 0xE0 ? 0x9D : 0) << port;
    EXPECT_EQ(m->card.sid.latch, 3);
  }
}

TEST_F(PortsCardTest, TheChipsListenWithTheCardOff) {
  m->screen.xio2 = false;
  Out({{0x30, 0x83}, {0x38, 24}, {0x39, 15}});
  EXPECT_EQ(m->card.sn.SN_Reg[1], 3);
  EXPECT_EQ(m->card.sid.SID_Reg[24], 15);
}

TEST_F(PortsCardTest, AResetReachesEveryChip) {
  Out({{0x30, 0x90}, {0x33, 3}, {0x32, 0xFF}, {0x34, 0x20}, {0x35, 0xFF}, {0x38, 0}, {0x39, 1}});
  Out({{0x3A, 0}, {0x3B, 1}, {0x3C, 0}, {0x3D, 1}});
  m->card.sid.SidPhase[0] = 0.5F;
  MachineReset(*m);
  EXPECT_EQ(SnAttenuation(m->card.sn, 0), 15);
  EXPECT_EQ(m->card.saa.SAA_Amp, (std::array<uint8_t, 12>{}));
  EXPECT_EQ(m->card.opl.OPL_Reg, (std::array<uint8_t, 256>{}));
  EXPECT_EQ(m->card.sid.SID_Reg, (std::array<int32_t, 29>{}));
  EXPECT_EQ(m->card.sid.SidPhase[0], 0);
  EXPECT_EQ(m->card.ay.AY_Reg, Ay38910{}.AY_Reg);
  EXPECT_EQ(m->card.opll.OPLL_Reg, (std::array<uint8_t, 64>{}));
}

}  // namespace

}  // namespace quoll::test
