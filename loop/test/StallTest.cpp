// Programs that use no T-states reach no frame end; the host still gets its turn.
#include <gtest/gtest.h>

#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

constexpr int32_t kPassesToAStall = 65536;

TestMachine StallMachine() {
  TestMachine m;
  m->run.CpuRunning = 1;
  m.host.stallsAllowed = 3;
  return m;
}

// A ring of one instruction: the whole 64 KB filled with it, a taken JP C,0 at the end.
void FillWith(Machine& m, uint8_t first, uint8_t second) {
  for (size_t at = 0; at < 0xFFFC; at += 2) {
    m.MemImage[at] = first;
    m.MemImage[at + 1] = second;
  }
  m.MemImage[0xFFFC] = 0xDA;  // JP C,0000
  m.z80.FlagC = 1;
}

class StallTest : public testing::TestWithParam<std::pair<uint8_t, uint8_t>> {};

TEST_P(StallTest, TheHostComesEvery65536PassesWithoutTStates) {
  TestMachine m = StallMachine();
  FillWith(*m, GetParam().first, GetParam().second);
  const int32_t clock = m->run.FrameClock;
  const int32_t cycles = m->run.Cycles;
  RunLoop(*m);
  EXPECT_EQ(m.host.stalls, 3);
  EXPECT_EQ(m.host.frames, 0);
  EXPECT_EQ(m->run.FrameClock, clock);
  EXPECT_EQ(m->run.Cycles, cycles);
  // 32766 instructions of two bytes and the jump make a round; three stalls are 196608 passes.
  constexpr int32_t kRound = 32767;
  const int32_t inRound = 3 * kPassesToAStall % kRound;
  EXPECT_EQ(m->z80.PC, inRound * 2);
}

// An unknown index opcode, and the pseudo-instruction that finds interrupts off.
INSTANTIATE_TEST_SUITE_P(Instructions, StallTest,
                         testing::Values(std::pair<uint8_t, uint8_t>{0xDD, 0x00},
                                         std::pair<uint8_t, uint8_t>{0xFD, 0xF0}));

TEST(StallTest, AStallLeavesTheMachineAlone) {
  TestMachine m = StallMachine();
  m->MemImage[0] = 0xDA;  // JP C,0000
  m->z80.FlagC = 1;
  m->z80.R = 5;
  RunLoop(*m);
  EXPECT_EQ(m->z80.PC, 0);
  EXPECT_EQ(m->z80.R, 5);  // 3 x 65536 steps of R are whole rounds of 256
  EXPECT_EQ(m->run.PcHistory[9], 0);
}

// LDIR into a card's window: the machine stands on the instruction that could not be done.
TEST(ProgramEndTest, PCStandsOnThePrefixedInstruction) {
  TestMachine m = StallMachine();
  m->PortShadow[2] = 0xF0;  // EXT at 0xC000
  m->PortShadow[3] = 0x40;  // slot 1
  m->z80.PC = 0x4001;
  m->MemImage[0x4001] = 0xED;
  m->MemImage[0x4002] = 0xB0;
  m->z80.D = 0xC0, m->z80.E = 0x00;
  EXPECT_THROW(RunLoop(*m), ProgramEnd);
  EXPECT_EQ(m->z80.PC, 0x4001);
  EXPECT_EQ(m->run.PrevPc, 0x4001);
}

}  // namespace

}  // namespace quoll::test
