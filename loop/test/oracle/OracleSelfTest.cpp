// Tests of the plain model by itself: the helpers and the base and CB pages.
// Every expected value was worked out by hand.
#include "loop/test/oracle/OracleSelfTest.h"

namespace oracle {

TEST_F(LiteralMachineTest, PowerOnRegisters) {
  LiteralMachine fresh;
  EXPECT_EQ(fresh.A, 255);
  EXPECT_EQ(fresh.L2, 255);
  EXPECT_EQ(fresh.IX, 65535);
  EXPECT_EQ(fresh.SP, 65535);
  EXPECT_EQ(fresh.PC, 0);
  EXPECT_EQ(fresh.FlagByte(), 255);
  EXPECT_EQ(fresh.AltFlagX, 1);
  EXPECT_EQ(fresh.UnDocEnabled, 1);
  EXPECT_EQ(fresh.ParityTable[0], 1);
  EXPECT_EQ(fresh.ParityTable[7], 0);
  EXPECT_EQ(fresh.BitValue[15], 32768);
  fresh.MachineReset();
  EXPECT_EQ(fresh.Cycles, 3);
  EXPECT_EQ(fresh.PortShadow[0x59], 0xBF);
  EXPECT_EQ(fresh.PortShadow[5], 0xFF);
  EXPECT_EQ(fresh.CrtcRegs[10], 32);
}

TEST_F(LiteralMachineTest, CountedBytesSetTheirFlags) {
  struct Case {
    int32_t (LiteralMachine::*operation)(int32_t);
    int32_t value, result, flags;  // the carry was set and stays
  };
  for (const auto& [operation, value, result, flags] : {
           Case{&LiteralMachine::Dec8, 0, 255, 0x80 + 0x10 + 0x02 + 0x01},
           Case{&LiteralMachine::Inc8, 255, 0, 0x40 + 0x10 + 0x01},
           Case{&LiteralMachine::Inc8, 127, 128, 0x80 + 0x10 + 0x04 + 0x01},
           Case{&LiteralMachine::Dec8, 128, 127, 0x10 + 0x04 + 0x02 + 0x01},
       }) {
    m.SetFlagByte(0x01);
    EXPECT_EQ((m.*operation)(value), result);
    EXPECT_EQ(m.FlagByte(), flags) << value;
  }
}

TEST_F(LiteralMachineTest, ArithmeticSetsItsFlags) {
  struct Case {
    void (LiteralMachine::*operation)(int32_t);
    int32_t a, carry, operand, result, flags;
  };
  for (const auto& [operation, a, carry, operand, result, flags] : {
           Case{&LiteralMachine::AddA, 0x7F, 0, 0x01, 0x80, 0x80 + 0x10 + 0x04},
           Case{&LiteralMachine::AddA, 0xFF, 0, 0x01, 0x00, 0x40 + 0x10 + 0x01},
           Case{&LiteralMachine::SbcA, 0x00, 1, 0x00, 0xFF, 0x80 + 0x10 + 0x02 + 0x01},
           Case{&LiteralMachine::SbcA, 0x80, 0, 0x01, 0x7F, 0x10 + 0x04 + 0x02},
           // A comparison takes its spare flags from the operand.
           Case{&LiteralMachine::CpA, 0x28, 0, 0x28, 0x28, 0x40 + 0x20 + 0x08 + 0x02},
           Case{&LiteralMachine::CpA, 0x28, 0, 0x00, 0x28, 0x02},
       }) {
    m.SetFlagByte(carry);
    m.A = a;
    (m.*operation)(operand);
    EXPECT_EQ(m.A, result) << a;
    EXPECT_EQ(m.FlagByte(), flags) << a;
  }
}

TEST_F(LiteralMachineTest, RlcCarries) {
  EXPECT_EQ(m.Rlc(0x80), 1);
  EXPECT_EQ(m.FlagC, 1);
  EXPECT_EQ(m.Rlc(0xFF), 0xFF);
  EXPECT_EQ(m.FlagC, 1);
}

TEST_F(LiteralMachineTest, BitKeepsSignForBitsBelowSeven) {
  m.TestBit(0xFF, 3);
  EXPECT_EQ(m.FlagS, 0);
  EXPECT_EQ(m.FlagZ, 0);
  EXPECT_EQ(m.FlagH, 1);
  EXPECT_EQ(m.FlagPV, 0);
  m.TestBit(0x80, 7);
  EXPECT_EQ(m.FlagS, 1);
  m.TestBit(0x7F, 7);
  EXPECT_EQ(m.FlagS, 0);
  EXPECT_EQ(m.FlagZ, 1);
  EXPECT_EQ(m.FlagPV, 1);
}

TEST_F(LiteralMachineTest, HalfCarriesOf16BitsUseTheNewCarry) {
  struct Case {
    void (LiteralMachine::*operation)(int32_t);
    int32_t hl, carry, operand, result, half, newCarry;
  };
  for (const auto& [operation, hl, carry, operand, result, half, newCarry] : {
           Case{&LiteralMachine::AdcHL, 0x0FFF, 1, 0x0000, 0x1000, 0, 0},
           Case{&LiteralMachine::AdcHL, 0xFFFF, 0, 0x1000, 0x0FFF, 1,
                1},  // 0x10FFF; 0xFFF + 0 + 1 reaches bit 12
           Case{&LiteralMachine::SbcHL, 0x1000, 1, 0x0000, 0x0FFF, 0,
                0},  // a real borrow, but the new carry is 0
           Case{&LiteralMachine::SbcHL, 0x0000, 0, 0x1000, 0xF000, 1, 1},
       }) {
    m.SetHL(hl);
    m.FlagC = carry;
    (m.*operation)(operand);
    EXPECT_EQ(m.HL(), result);
    EXPECT_EQ(m.FlagC, newCarry);
    EXPECT_EQ(m.FlagH, half);
    EXPECT_EQ(m.FlagS, result >> 15);
    EXPECT_EQ(m.FlagN, operation == &LiteralMachine::SbcHL ? 1 : 0);
  }
}

TEST_F(LiteralMachineTest, SllFlags) {
  EXPECT_EQ(m.Sll(0x7F), 0xFF);
  EXPECT_EQ(m.FlagByte(), 0x80 + 0x04);
  EXPECT_EQ(m.Sll(0x80), 1);
  EXPECT_EQ(m.FlagByte(), 0x01);  // of odd parity
}

TEST_F(LiteralMachineTest, SrlOfZero) {
  m.FlagS = 1;
  EXPECT_EQ(m.Srl(0), 0);
  EXPECT_EQ(m.FlagByte(), 0x40 + 0x04);
  EXPECT_EQ(m.Srl(0xFF), 0x7F);
  EXPECT_EQ(m.FlagByte(), 0x01);
}

TEST_F(LiteralMachineTest, DecimalAdjust) {
  m.A = 0x15;
  m.AddA(0x27);  // 0x3C
  m.Daa();
  EXPECT_EQ(m.A, 0x42);
  EXPECT_EQ(m.FlagC, 0);
  m.A = 0x99;
  m.AddA(0x01);  // 0x9A
  m.Daa();       // above 0x8F with a low digit above 9: 0x66 is added
  EXPECT_EQ(m.A, 0x00);
  EXPECT_EQ(m.FlagC, 1);
  EXPECT_EQ(m.FlagZ, 1);
  m.A = 0x42;
  m.SubA(0x13);  // 0x2F, half borrow
  m.Daa();
  EXPECT_EQ(m.A, 0x29);
  EXPECT_EQ(m.FlagC, 0);
  EXPECT_EQ(m.FlagPV, 0);  // three bits set
}

TEST_F(LiteralMachineTest, PopAfSpreadsTheFlags) {
  Poke(0x9000, {0xFF, 0x12});
  EXPECT_EQ(Run({0xF1}), 10);
  EXPECT_EQ(m.FlagS + m.FlagZ + m.FlagY + m.FlagH + m.FlagX + m.FlagPV + m.FlagN + m.FlagC, 8);
  EXPECT_EQ(m.A, 0x12);
  EXPECT_EQ(m.SP, 0x9002);
}

TEST_F(LiteralMachineTest, PushAfStoresHighFirst) {
  m.A = 0x34;
  m.SetFlagByte(0x81);
  EXPECT_EQ(Run({0xF5}), 11);
  EXPECT_EQ(Peek(0x8FFF), 0x34);
  EXPECT_EQ(Peek(0x8FFE), 0x81);
  EXPECT_EQ(m.SP, 0x8FFE);
}

TEST_F(LiteralMachineTest, JumpCarryTakesNoTime) {
  m.FlagC = 1;
  EXPECT_EQ(Run({0xDA, 0x34, 0x12}), 0);
  EXPECT_EQ(m.PC, 0x1234);
  EXPECT_EQ(m.R, 1);
  EXPECT_EQ(m.FrameClock, 0);
  m.FlagC = 0;
  EXPECT_EQ(Run({0xDA, 0x34, 0x12}), 6);
  EXPECT_EQ(m.PC, kCode + 3);
}

TEST_F(LiteralMachineTest, JumpNotZeroLeavesR) {
  EXPECT_EQ(Run({0xC2, 0x34, 0x12}), 10);
  EXPECT_EQ(m.R, 0);
  EXPECT_EQ(m.PC, 0x1234);
  m.FlagZ = 1;
  EXPECT_EQ(Run({0xC2, 0x34, 0x12}), 10);
  EXPECT_EQ(m.R, 1);
  EXPECT_EQ(m.PC, kCode + 3);
}

TEST_F(LiteralMachineTest, ConditionalReturn) {
  m.FlagZ = 1;
  EXPECT_EQ(Run({0xC0}), 5);
  EXPECT_EQ(m.PC, kCode + 1);
  EXPECT_EQ(m.R, 2);
  Poke(0x9000, {0x78, 0x56});
  m.FlagZ = 0;
  EXPECT_EQ(Run({0xC0}), 10);
  EXPECT_EQ(m.PC, 0x5678);
  EXPECT_EQ(m.R, 2);
}

TEST_F(LiteralMachineTest, ImmediateOperationTimes) {
  EXPECT_EQ(Run({0xEE, 0x55}), 2);
  EXPECT_EQ(Run({0xF6, 0x55}), 2);
  EXPECT_EQ(Run({0xA8}), 4);
  EXPECT_EQ(Run({0xDE, 0x01}), 4);
  EXPECT_EQ(Run({0xCE, 0x01}), 7);
  EXPECT_EQ(m.PC, kCode + 2);
  EXPECT_EQ(Run({0x27}), 7);
}

TEST_F(LiteralMachineTest, CallAndRestart) {
  EXPECT_EQ(Run({0xCD, 0x00, 0x20}), 17);
  EXPECT_EQ(m.PC, 0x2000);
  EXPECT_EQ(Peek(0x8FFF), 0x10);
  EXPECT_EQ(Peek(0x8FFE), 0x03);
  EXPECT_EQ(Run({0xCF}), 11);
  EXPECT_EQ(m.PC, 0x08);
  EXPECT_EQ(m.R, 2);
  EXPECT_EQ(Peek(0x8FFC), 0x01);
  EXPECT_EQ(Run({0xFF}), 11);
  EXPECT_EQ(m.PC, 0x38);
  EXPECT_EQ(m.R, 1);
}

TEST_F(LiteralMachineTest, RelativeJumps) {
  EXPECT_EQ(Run({0x18, 0xFE}), 12);
  EXPECT_EQ(m.PC, kCode);
  EXPECT_EQ(Run({0x18, 0x7F}), 12);
  EXPECT_EQ(m.PC, kCode + 129);
  m.B = 1;
  EXPECT_EQ(Run({0x10, 0x10}), 8);
  EXPECT_EQ(m.B, 0);
  EXPECT_EQ(m.PC, kCode + 2);
  EXPECT_EQ(Run({0x10, 0x10}), 13);
  EXPECT_EQ(m.B, 255);
  EXPECT_EQ(m.PC, kCode + 18);
}

TEST_F(LiteralMachineTest, CbTimes) {
  m.SetHL(0x5000);
  EXPECT_EQ(Run({0xCB, 0x7E}), 4);
  EXPECT_EQ(Run({0xCB, 0x76}), 12);
  EXPECT_EQ(Run({0xCB, 0x00}), 2);
  EXPECT_EQ(Run({0xCB, 0x06}), 4);
  EXPECT_EQ(Run({0xCB, 0x0E}), 15);
  EXPECT_EQ(Run({0xCB, 0x3E}), 8);
  EXPECT_EQ(Run({0xCB, 0xC6}), 15);
  EXPECT_EQ(Peek(0x5000), 1);
  EXPECT_EQ(Run({0xCB, 0x86}), 2);
  EXPECT_EQ(Peek(0x5000), 0);
  EXPECT_EQ(m.PC, kCode + 2);
  EXPECT_EQ(m.R, 1);
}

TEST_F(LiteralMachineTest, CbThirtyWithoutUndocumented) {
  m.UnDocEnabled = 0;
  m.B = 5;
  EXPECT_EQ(Run({0xCB, 0x30}), 0);
  EXPECT_EQ(m.Label1, "Unknown Opcode!");
  EXPECT_EQ(m.PC, kCode + 2);
  EXPECT_EQ(m.R, 0);
  EXPECT_EQ(m.B, 5);
  m.UnDocEnabled = 1;
  EXPECT_EQ(Run({0xCB, 0x30}), 8);
  EXPECT_EQ(m.B, 11);
}

TEST_F(LiteralMachineTest, RefreshOfPortAndStackSwap) {
  EXPECT_EQ(Run({0xDB, 0x5A}), 11);
  EXPECT_EQ(m.R, 3);
  Poke(0x9000, {0x11, 0x22});
  m.SetHL(0x3344);
  EXPECT_EQ(Run({0xE3}), 19);
  EXPECT_EQ(m.R, 2);
  EXPECT_EQ(m.HL(), 0x2211);
  EXPECT_EQ(Peek(0x9000), 0x44);
  EXPECT_EQ(Peek(0x9001), 0x33);
}

TEST_F(LiteralMachineTest, AccumulatorRotates) {
  m.A = 0x80;
  m.FlagZ = 1;
  EXPECT_EQ(Run({0x07}), 4);
  EXPECT_EQ(m.A, 1);
  EXPECT_EQ(m.FlagC, 1);
  EXPECT_EQ(m.FlagZ, 1);
  Run({0x17});
  EXPECT_EQ(m.A, 3);
  EXPECT_EQ(m.FlagC, 0);
  Run({0x1F});
  EXPECT_EQ(m.A, 1);
  EXPECT_EQ(m.FlagC, 1);
  Run({0x0F});
  EXPECT_EQ(m.A, 0x80);
  Run({0x3F});
  EXPECT_EQ(m.FlagC, 0);
  EXPECT_EQ(m.FlagH, 1);
}

// T-states of every base opcode, all flags 0 and B = 2; -1 marks the prefixes.
TEST_F(LiteralMachineTest, BaseTimesWithFlagsClear) {
  static const int kTimes[256] = {
      4,  10, 7,  6,  4,  4,  7,  4,  4,  11, 7,  6,  4,  4,  7, 4,   // 00
      13, 10, 7,  6,  4,  4,  7,  4,  12, 11, 7,  6,  4,  4,  7, 4,   // 10
      12, 10, 16, 6,  4,  4,  7,  7,  7,  11, 16, 6,  4,  4,  7, 4,   // 20
      12, 10, 13, 6,  11, 11, 10, 4,  7,  11, 13, 6,  4,  4,  7, 4,   // 30
      4,  4,  4,  4,  4,  4,  7,  4,  4,  4,  4,  4,  4,  4,  7, 4,   // 40
      4,  4,  4,  4,  4,  4,  7,  4,  4,  4,  4,  4,  4,  4,  7, 4,   // 50
      4,  4,  4,  4,  4,  4,  7,  4,  4,  4,  4,  4,  4,  4,  7, 4,   // 60
      7,  7,  7,  7,  7,  7,  4,  7,  4,  4,  4,  4,  4,  4,  7, 4,   // 70
      4,  4,  4,  4,  4,  4,  7,  4,  4,  4,  4,  4,  4,  4,  7, 4,   // 80
      4,  4,  4,  4,  4,  4,  7,  4,  4,  4,  4,  4,  4,  4,  7, 4,   // 90
      4,  4,  4,  4,  4,  4,  7,  4,  4,  4,  4,  4,  4,  4,  7, 4,   // A0
      4,  4,  4,  4,  4,  4,  7,  4,  4,  4,  4,  4,  4,  4,  7, 4,   // B0
      10, 10, 10, 10, 17, 11, 7,  11, 5,  10, 6,  -1, 10, 17, 7, 11,  // C0
      10, 10, 10, 11, 17, 11, 7,  11, 5,  4,  6,  11, 10, -1, 4, 11,  // D0
      10, 10, 10, 19, 17, 11, 7,  11, 5,  4,  6,  4,  10, -1, 2, 11,  // E0
      10, 10, 10, 4,  17, 11, 2,  11, 5,  10, 6,  4,  10, -1, 7, 11,  // F0
  };
  for (int32_t opcode = 0; opcode < 256; opcode++) {
    if (kTimes[opcode] < 0) {
      continue;
    }
    m.SetFlagByte(0);
    m.B = 2;
    m.SetHL(0x5000);
    m.SetDE(0x5100);
    m.SP = 0x9000;
    m.IrqLine = 0;
    m.PortShadow[0x59] = 0xBF;
    EXPECT_EQ(Run({opcode, 0x60, 0x60}), kTimes[opcode]) << opcode;
  }
}

// With all flags set the conditional opcodes take the other branch.
TEST_F(LiteralMachineTest, BaseTimesWithFlagsSet) {
  struct Row {
    int32_t opcode, time, rStep;
  };
  static const Row kRows[] = {{0x20, 7, 1},  {0x28, 12, 1}, {0x30, 7, 1},  {0x38, 12, 1}, {0xC0, 5, 2},
                              {0xC8, 10, 2}, {0xD0, 5, 2},  {0xD8, 10, 2}, {0xE0, 5, 2},  {0xE8, 10, 2},
                              {0xF0, 5, 2},  {0xF8, 10, 2}, {0xC2, 10, 1}, {0xCA, 10, 1}, {0xD2, 6, 1},
                              {0xDA, 0, 1},  {0xE2, 6, 1},  {0xEA, 10, 1}, {0xF2, 6, 1},  {0xFA, 10, 1},
                              {0xC4, 10, 1}, {0xCC, 17, 1}, {0xD4, 10, 1}, {0xDC, 17, 1}, {0xE4, 10, 1},
                              {0xEC, 17, 1}, {0xF4, 10, 1}, {0xFC, 17, 1}};
  for (const Row& row : kRows) {
    m.SetFlagByte(0xFF);
    m.SP = 0x9000;
    EXPECT_EQ(Run({row.opcode, 0x60, 0x60}), row.time) << row.opcode;
    EXPECT_EQ(m.R, row.rStep) << row.opcode;
  }
}

}  // namespace oracle
