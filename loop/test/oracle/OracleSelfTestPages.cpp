// Tests of the plain model by itself: the index and ED pages.
// Every expected value was worked out by hand.
#include "loop/test/oracle/OracleSelfTest.h"

namespace oracle {

TEST_F(LiteralMachineTest, UnknownIndexOpcodePassesOneByte) {
  EXPECT_EQ(Run({0xDD, 0x00}), 0);
  EXPECT_EQ(m.PC, kCode + 2);
  EXPECT_EQ(m.Label1, "Unknown Opcode!");
  EXPECT_EQ(m.R, 0);
  EXPECT_EQ(Run({0xDD, 0xFD}), 0);
  EXPECT_EQ(m.PC, kCode + 2);
  EXPECT_EQ(m.PrefixState, 0);
}

TEST_F(LiteralMachineTest, IndexHalfLoads) {
  EXPECT_EQ(Run({0xDD, 0x64}), 8);
  EXPECT_EQ(m.R, 2);
  EXPECT_EQ(m.Label1, "");
  m.IX = 0x1234;
  EXPECT_EQ(Run({0xDD, 0x26, 0xAB}), 11);
  EXPECT_EQ(m.IX, 0xAB34);
  EXPECT_EQ(m.PC, kCode + 3);
  Run({0xDD, 0x65});
  EXPECT_EQ(m.IX, 0x3434);
  m.UnDocEnabled = 0;
  EXPECT_EQ(Run({0xDD, 0x64}), 0);
  EXPECT_EQ(m.Label1, "Unknown Opcode!");
  EXPECT_EQ(m.PC, kCode + 2);
}

TEST_F(LiteralMachineTest, IndexPagesHoldTheirLists) {
  int32_t knownDd = 0;
  int32_t knownFd = 0;
  for (int32_t opcode = 0; opcode < 256; opcode++) {
    m.IX = m.IY = 0x5000;
    m.SP = 0x9000;
    m.Label1.clear();
    Run({0xDD, opcode, 0x00, 0x00});
    knownDd += m.Label1.empty() ? 1 : 0;
    m.Label1.clear();
    Run({0xFD, opcode, 0x00, 0x00});
    knownFd += m.Label1.empty() ? 1 : 0;
    m.NmiRequest = 0;
    m.PortShadow[2] = 0xB0;
  }
  // 39 documented and 46 on halves; CB 00 00 ends as unknown in the next page.
  EXPECT_EQ(knownDd, 39 + 46);
  EXPECT_EQ(knownFd, 39 + 46 + 4);
}

TEST_F(LiteralMachineTest, IndexCbPagesHoldTheirLists) {
  int32_t unknown = 0;
  for (int32_t opcode = 0; opcode < 256; opcode++) {
    m.IX = m.IY = 0x5000;
    m.Label1.clear();
    Run({0xDD, 0xCB, 0x00, opcode});
    unknown += m.Label1.empty() ? 0 : 1;
    m.Label1.clear();
    Run({0xFD, 0xCB, 0x00, opcode});
    unknown += m.Label1.empty() ? 0 : 1;
  }
  EXPECT_EQ(unknown, 2 * 217);
}

TEST_F(LiteralMachineTest, IndexCbRlcDiffersByPage) {
  m.IX = 0x5000;
  m.IY = 0x5000;
  Poke(0x5002, {0x81});
  EXPECT_EQ(Run({0xDD, 0xCB, 0x02, 0x06}), 23);
  EXPECT_EQ(Peek(0x5002), 0x03);
  EXPECT_EQ(m.PC, kCode + 4);
  EXPECT_EQ(m.R, 1);
  EXPECT_EQ(Run({0xFD, 0xCB, 0x02, 0x06}), 20);
  EXPECT_EQ(Peek(0x5002), 0x06);
  EXPECT_EQ(m.PC, kCode + 4);
  EXPECT_EQ(Run({0xFD, 0xCB, 0x02, 0x0E}), 23);
  EXPECT_EQ(m.R, 6);
  EXPECT_EQ(Run({0xDD, 0xCB, 0x02, 0x26}), 6);
  EXPECT_EQ(Run({0xDD, 0xCB, 0x02, 0x46}), 20);
  EXPECT_EQ(Run({0xFD, 0xCB, 0x02, 0x86}), 20);
  EXPECT_EQ(Run({0xDD, 0xCB, 0x02, 0x86}), 23);
}

TEST_F(LiteralMachineTest, UnknownIndexCbResumesInside) {
  EXPECT_EQ(Run({0xDD, 0xCB, 0x02, 0x04}), 0);
  EXPECT_EQ(m.PC, kCode + 3);  // on the opcode byte
  m.B = 1;
  EXPECT_EQ(Again(), 4);  // run as INC B
  EXPECT_EQ(m.B, 2);
  EXPECT_EQ(Run({0xFD, 0xCB, 0x02, 0x04}), 0);
  EXPECT_EQ(m.PC, kCode + 2);  // on the displacement byte
}

TEST_F(LiteralMachineTest, IndexSllCopiesIntoRegister) {
  m.IX = 0x5000;
  Poke(0x4FFF, {0x10});
  EXPECT_EQ(Run({0xDD, 0xCB, 0xFF, 0x31}), 23);
  EXPECT_EQ(m.C, 0x21);
  EXPECT_EQ(Peek(0x4FFF), 0x21);
  EXPECT_EQ(m.IndexDisp, -1);
}

TEST_F(LiteralMachineTest, AddIyTakesHalfFromIx) {
  m.IX = 0x0FFF;
  m.IY = 0x0000;
  m.SetBC(1);
  EXPECT_EQ(Run({0xFD, 0x09}), 15);
  EXPECT_EQ(m.IY, 1);
  EXPECT_EQ(m.FlagH, 1);
  m.IX = 0;
  m.IY = 0x0FFF;
  Run({0xFD, 0x09});
  EXPECT_EQ(m.IY, 0x1000);
  EXPECT_EQ(m.FlagH, 0);
}

TEST_F(LiteralMachineTest, IndexPageConstants) {
  struct Row {
    int32_t opcode, timeDd, timeFd, pcStep, rDd, rFd;
  };
  static const Row kRows[] = {
      {0x09, 15, 15, 1, 1, 1}, {0x19, 15, 15, 1, 1, 1}, {0x29, 15, 15, 1, 1, 4}, {0x39, 15, 15, 1, 1, 4},
      {0x21, 19, 19, 3, 1, 1}, {0x22, 20, 20, 3, 2, 2}, {0x2A, 20, 20, 3, 1, 1}, {0x23, 6, 6, 1, 1, 1},
      {0x2B, 6, 10, 1, 1, 2},  {0x34, 23, 23, 2, 1, 2}, {0x35, 23, 23, 2, 1, 2}, {0x36, 19, 19, 3, 1, 1},
      {0x46, 19, 19, 2, 1, 2}, {0x4E, 19, 19, 2, 1, 2}, {0x56, 19, 19, 2, 1, 2}, {0x5E, 19, 19, 2, 1, 2},
      {0x66, 19, 19, 2, 2, 2}, {0x6E, 19, 19, 2, 1, 2}, {0x7E, 19, 19, 2, 2, 2}, {0x70, 19, 20, 2, 1, 1},
      {0x75, 19, 20, 2, 1, 1}, {0x77, 19, 20, 2, 1, 1}, {0x86, 19, 19, 2, 1, 1}, {0x8E, 19, 19, 2, 1, 4},
      {0x96, 19, 19, 2, 1, 1}, {0x9E, 19, 19, 2, 1, 5}, {0xA6, 19, 19, 2, 1, 1}, {0xAE, 19, 19, 2, 1, 1},
      {0xB6, 19, 19, 2, 1, 1}, {0xBE, 19, 19, 2, 1, 1}, {0xE1, 10, 10, 1, 1, 1}, {0xE3, 23, 23, 1, 2, 2},
      {0xE5, 15, 15, 1, 1, 1}, {0xF9, 10, 10, 1, 2, 2}};
  for (const Row& row : kRows) {
    m.IX = m.IY = 0x5000;
    m.SP = 0x9000;
    EXPECT_EQ(Run({0xDD, row.opcode, 0x10, 0x60}), row.timeDd) << row.opcode;
    EXPECT_EQ(m.PC, kCode + 1 + row.pcStep) << row.opcode;
    EXPECT_EQ(m.R, row.rDd) << row.opcode;
    m.IX = m.IY = 0x5000;
    m.SP = 0x9000;
    EXPECT_EQ(Run({0xFD, row.opcode, 0x10, 0x60}), row.timeFd) << row.opcode;
    EXPECT_EQ(m.PC, kCode + 1 + row.pcStep) << row.opcode;
    EXPECT_EQ(m.R, row.rFd) << row.opcode;
  }
  EXPECT_EQ(Run({0xDD, 0xE9}), 8);
  EXPECT_EQ(m.PC, 0x5000);
}

TEST_F(LiteralMachineTest, NegativeIndexAddressReadsZero) {
  m.IX = 0x0002;
  m.PortShadow[2] = 0xB0;
  m.A = 0x77;
  EXPECT_EQ(Run({0xDD, 0x77, 0x80}), 19);
  EXPECT_EQ(Run({0xDD, 0x46, 0x80}), 19);
  EXPECT_EQ(m.B, 0);
  m.PortShadow[2] = 0x18;  // U3 in page 0: an offset would land inside the image
  EXPECT_EQ(m.MemRead(-1), 0);
  m.MemImage[0xBFFF] = 0x5A;
  EXPECT_EQ(m.MemRead(-1), 0);
}

TEST_F(LiteralMachineTest, LdirRepeatsPerPass) {
  m.SetHL(0x5000);
  m.SetDE(0x6000);
  m.SetBC(3);
  Poke(0x5000, {1, 2, 3});
  EXPECT_EQ(Run({0xED, 0xB0}), 21);
  EXPECT_EQ(m.PC, kCode);
  EXPECT_EQ(m.FlagPV, 1);
  EXPECT_EQ(Again(), 21);
  EXPECT_EQ(Again(), 16);
  EXPECT_EQ(m.PC, kCode + 2);
  EXPECT_EQ(m.R, 3);
  EXPECT_EQ(Peek(0x6002), 3);
  EXPECT_EQ(m.FlagPV, 0);
  m.SetBC(2);
  EXPECT_EQ(Run({0xED, 0xA0}), 21);
  EXPECT_EQ(Run({0xED, 0xA8}), 16);
}

TEST_F(LiteralMachineTest, CpirStopsOnMatch) {
  m.SetHL(0x5000);
  m.SetBC(5);
  m.A = 2;
  m.FlagC = 1;
  Poke(0x5000, {1, 2, 3});
  EXPECT_EQ(Run({0xED, 0xB1}), 21);
  EXPECT_EQ(m.R, 0);
  EXPECT_EQ(m.PC, kCode);
  EXPECT_EQ(Again(), 16);
  EXPECT_EQ(m.FlagZ, 1);
  EXPECT_EQ(m.FlagC, 1);
  EXPECT_EQ(m.FlagPV, 1);
  EXPECT_EQ(m.PC, kCode + 2);
  EXPECT_EQ(m.BC(), 3);
}

TEST_F(LiteralMachineTest, OutiWithLastCount) {
  m.B = 1;
  m.C = 0x04;
  m.SetHL(0x5000);
  Poke(0x5000, {0x99});
  EXPECT_EQ(Run({0xED, 0xA3}), 16);
  EXPECT_EQ(m.B, 0);
  EXPECT_EQ(m.FlagZ, 1);
  EXPECT_EQ(m.FlagN, 1);
  EXPECT_EQ(m.R, 0);
  EXPECT_EQ(m.PortShadow[4], 0x99);
  EXPECT_EQ(m.HL(), 0x5001);
}

// T-states and R steps of the ED page for one set of registers; what is not listed is unknown.
TEST_F(LiteralMachineTest, EdPageHoldsItsList) {
  struct Row {
    int32_t opcode, time, rStep, length;
  };
  static const Row kRows[] = {
      {0x40, 12, 1, 1}, {0x48, 12, 1, 1},  {0x50, 12, 1, 1},  {0x58, 12, 1, 1},  {0x60, 12, 1, 1},
      {0x68, 12, 1, 1}, {0x78, 12, 1, 1},  {0x41, 12, 1, 1},  {0x49, 12, 1, 1},  {0x51, 12, 1, 1},
      {0x59, 12, 1, 1}, {0x61, 12, 1, 1},  {0x69, 12, 1, 1},  {0x79, 12, 1, 1},  {0x42, 15, 1, 1},
      {0x52, 15, 1, 1}, {0x62, 15, 1, 1},  {0x72, 15, 1, 1},  {0x4A, 15, 1, 1},  {0x5A, 15, 1, 1},
      {0x6A, 15, 1, 1}, {0x7A, 11, 1, 1},  {0x43, 20, 2, 3},  {0x53, 20, 2, 3},  {0x63, 20, 2, 3},
      {0x73, 20, 2, 3}, {0x4B, 20, 1, 3},  {0x5B, 20, 1, 3},  {0x6B, 20, 1, 3},  {0x7B, 20, 1, 3},
      {0x44, 8, 1, 1},  {0x46, 8, 2, 1},   {0x56, 8, 2, 1},   {0x5E, 8, 2, 1},   {0x47, 9, 0, 1},
      {0x4F, 9, 4, 1},  {0x57, 9, 1, 1},   {0x5F, 9, 2, 1},   {0x67, 18, 5, 1},  {0x6F, 18, 5, 1},
      {0xA0, 21, 1, 1}, {0xA8, 21, 1, 1},  {0xB0, 21, 1, -1}, {0xB8, 21, 1, -1}, {0xA1, 16, 0, 1},
      {0xA9, 16, 0, 1}, {0xB1, 21, 0, -1}, {0xB9, 21, 0, -1}, {0xA3, 16, 0, 1},  {0xAB, 16, 0, 1}};
  for (int32_t opcode = 0; opcode < 256; opcode++) {
    if (opcode == 0x45 || opcode == 0x4D) {
      continue;
    }
    int32_t time = 0;
    int32_t rStep = 0;
    int32_t length = 1;
    bool known = false;
    for (const Row& row : kRows) {
      if (row.opcode == opcode) {
        time = row.time;
        rStep = row.rStep;
        length = row.length;
        known = true;
      }
    }
    m.A = 3;
    m.SetBC(0x0404);
    m.SetHL(0x5000);
    m.SetDE(0x5100);
    m.SP = 0x9000;
    Poke(0x5000, {0});
    m.Label1.clear();
    EXPECT_EQ(Run({0xED, opcode, 0x00, 0x60}), time) << opcode;
    EXPECT_EQ(m.R, rStep) << opcode;
    EXPECT_EQ(m.PC, kCode + 1 + length) << opcode;
    EXPECT_EQ(m.Label1.empty(), known) << opcode;
  }
}

TEST_F(LiteralMachineTest, ReturnsFromInterrupts) {
  Poke(0x9000, {0x34, 0x12, 0x78, 0x56});
  m.IFF1 = 0;
  m.IFF2 = 1;
  EXPECT_EQ(Run({0xED, 0x4D}), 14);
  EXPECT_EQ(m.PC, 0x1234);
  EXPECT_EQ(m.IFF1, 0);
  EXPECT_EQ(Run({0xED, 0x45}), 14);
  EXPECT_EQ(m.PC, 0x5678);
  EXPECT_EQ(m.IFF1, 1);
  EXPECT_EQ(m.R, 1);
}

TEST_F(LiteralMachineTest, NegFlags) {
  m.A = 0x80;
  EXPECT_EQ(Run({0xED, 0x44}), 8);
  EXPECT_EQ(m.A, 0x80);
  EXPECT_EQ(m.FlagByte(), 0x80 + 0x04 + 0x02 + 0x01);
  m.A = 0;
  Run({0xED, 0x44});
  EXPECT_EQ(m.A, 0);
  EXPECT_EQ(m.FlagByte(), 0x40 + 0x02);
}

TEST_F(LiteralMachineTest, RefreshRegisterLoads) {
  m.A = 0x20;
  EXPECT_EQ(Run({0xED, 0x4F}), 9);
  EXPECT_EQ(m.R, 0x21);
  m.A = 0xFF;
  Run({0xED, 0x4F});
  EXPECT_EQ(m.R, 0);  // 256, masked at the end of the pass
  Poke(kCode, {0xED, 0x5F});
  m.PC = kCode;
  m.R = 0x80;
  m.IFF2 = 1;
  EXPECT_EQ(Again(), 9);
  EXPECT_EQ(m.A, 0x80);
  EXPECT_EQ(m.R, 0x82);
  EXPECT_EQ(m.FlagByte() & 0x84, 0x84);  // S and PV
  EXPECT_EQ(Run({0xED, 0x47}), 9);
  EXPECT_EQ(m.R, 0);
  EXPECT_EQ(m.I, 0x80);
}

TEST_F(LiteralMachineTest, PseudoInstructionStops) {
  m.CpuRunning = 1;
  EXPECT_EQ(Run({0xFD, 0xF3}), 0);
  EXPECT_EQ(m.CpuRunning, 0);
  EXPECT_EQ(m.PC, kCode + 2);
  EXPECT_EQ(m.Beeps, 1);
  EXPECT_EQ(m.R, 0);
  EXPECT_EQ(Run({0xDD, 0xF3}), 0);
  EXPECT_EQ(m.Beeps, 1);
  EXPECT_EQ(m.Label1, "Unknown Opcode!");
}

TEST_F(LiteralMachineTest, PseudoInstructionReset) {
  m.MemImage[0x5000] = 0x77;
  EXPECT_EQ(Run({0xFD, 0xF2}), 3);
  EXPECT_EQ(m.PC, 0);
  EXPECT_EQ(m.ResetRequest, 0);
  EXPECT_EQ(m.PortShadow[2], 0);
  EXPECT_EQ(m.MemImage[0x5000], 0x77);
  EXPECT_EQ(m.FrameClock, 3);
  EXPECT_EQ(m.ToneItCounter, 1000000 - 3);
}

}  // namespace oracle
