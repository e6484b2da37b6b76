// Tests of the plain model by itself: interrupts and the run loop.
// Every expected value was worked out by hand.
#include "loop/test/oracle/OracleSelfTest.h"

namespace oracle {

TEST_F(LiteralMachineTest, HaltWaitsAndIsLeft) {
  m.IM = 1;
  EXPECT_EQ(Run({0x76}), 4);
  EXPECT_EQ(m.PC, kCode);
  EXPECT_EQ(m.R, 1);
  EXPECT_EQ(Again(), 4);
  EXPECT_EQ(m.R, 2);
  m.IFF1 = m.IFF2 = 1;
  m.IrqLine = 1;
  EXPECT_EQ(Again(), 15);
  EXPECT_EQ(m.PC, 0x38);
  EXPECT_EQ(m.Halted, 0);
  EXPECT_EQ(m.ReadWord(0x8FFE), 0x1001);
  EXPECT_EQ(m.IFF1 + m.IFF2, 0);
  EXPECT_EQ(m.IrqLine, 1);
  EXPECT_EQ(m.R, 4);
}

TEST_F(LiteralMachineTest, EnableWithPendingLineAcceptsAtOnce) {
  m.IM = 1;
  m.IrqLine = 1;
  EXPECT_EQ(Run({0xFB}), 15);
  EXPECT_EQ(m.PC, 0x38);
}

TEST_F(LiteralMachineTest, EnableWithFlagAloneAcceptsOnePassLater) {
  m.IM = 1;
  m.PortShadow[0x59] = 0xAF;
  EXPECT_EQ(Run({0xFB, 0x00}), 4);
  EXPECT_EQ(m.IrqLine, 1);
  EXPECT_EQ(m.PC, kCode + 1);
  EXPECT_EQ(Again(), 15);
  EXPECT_EQ(m.PC, 0x38);
}

TEST_F(LiteralMachineTest, WrongInterruptModeStops) {
  m.IM = 2;
  m.IFF1 = m.IFF2 = 1;
  m.IrqLine = 1;
  m.CpuRunning = 1;
  EXPECT_EQ(Run({0x00}), 4);
  ASSERT_EQ(m.Messages.size(), 1u);
  EXPECT_EQ(m.Messages[0], "IM MODE 0 or 2 not allowed!");
  EXPECT_EQ(m.CpuRunning, 0);
  EXPECT_EQ(m.PC, kCode + 1);
  EXPECT_EQ(m.IFF1 + m.IFF2, 0);
  EXPECT_EQ(m.SP, 0x9000);
}

TEST_F(LiteralMachineTest, WrongInterruptModeMovesPastHalt) {
  m.IM = 0;
  m.IFF1 = 1;
  m.IrqLine = 1;
  Run({0x76});
  EXPECT_EQ(m.PC, kCode + 1);
  EXPECT_EQ(m.Halted, 0);
}

TEST_F(LiteralMachineTest, NmiRepeatsUntilReset) {
  m.IFF1 = 1;
  Poke(0x66, {0x00, 0x00});
  EXPECT_EQ(Run({0xFD, 0xF1}), 11);
  EXPECT_EQ(m.PC, 0x66);
  EXPECT_EQ(std::pair(m.IFF1, m.IFF2), std::pair(0, 1));
  EXPECT_EQ(m.NmiRequest, 1);
  EXPECT_EQ(Again(), 15);
  EXPECT_EQ(m.PC, 0x66);
  EXPECT_EQ(m.SP, 0x9000 - 4);
  EXPECT_EQ(m.IFF2, 0);
}

TEST_F(LiteralMachineTest, ResetWinsOverNmi) {
  m.ResetRequest = 1;
  m.NmiRequest = 1;
  EXPECT_EQ(Run({0x00}), 7);
  EXPECT_EQ(m.PC, 0);
  EXPECT_EQ(m.SP, 65535);
  EXPECT_EQ(m.NmiRequest + m.ResetRequest, 0);
}

TEST_F(LiteralMachineTest, RequestShutsOutTheInterrupt) {
  m.IM = 1;
  m.IFF1 = 1;
  m.IrqLine = 1;
  m.NmiRequest = 1;
  Run({0x00});
  EXPECT_EQ(m.PC, 0x66);
  EXPECT_EQ(m.SP, 0x9000 - 2);
}

TEST_F(LiteralMachineTest, FrameEndWork) {
  m.FrameClock = 62490;
  m.Cycles = 62490;
  m.LpenHigh = 5;
  m.LpenLow = 255;
  m.DacSlots[3] = 9;
  m.PalNextLine = 100;
  m.PortShadow[0x62] = 0x44;
  m.BorderLines[287] = 0x123456;
  int calls = 0;
  m.OnFrameEnd = [&calls](LiteralMachine& machine) {
    calls++;
    EXPECT_EQ(machine.FrameClock, 7);
    EXPECT_EQ(machine.PalNextLine, 0);
  };
  Run({0xCD, 0x00, 0x20});  // 17 T-states
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(m.FrameClock, 7);
  EXPECT_EQ(m.LastCursorIrq, 7);
  EXPECT_EQ(m.Cycles, 7);
  EXPECT_EQ(m.TotalCycles, 62500);
  EXPECT_EQ(m.CrtcRegs[16], 5);
  EXPECT_EQ(m.CrtcRegs[17], 255);
  EXPECT_EQ(m.PalHistory[2][99], 0);
  EXPECT_EQ(m.PalHistory[2][100], 0x44);
  EXPECT_EQ(m.PalHistory[2][255], 0x44);
  EXPECT_EQ(m.PalHistory[2][256], 0);
  EXPECT_EQ(m.BorderLines[0], 0x123456);
  EXPECT_EQ(m.DacSlots[3], 0);
  EXPECT_EQ(m.FrameInBlock, 1);
  EXPECT_EQ(m.FramesEnded, 1);
}

TEST_F(LiteralMachineTest, FrameEndsOnlyAboveTheLimit) {
  m.FrameClock = 62496;
  Run({0x00});
  EXPECT_EQ(m.FrameClock, 62500);
  EXPECT_EQ(m.FramesEnded, 0);
  Run({0x00});
  EXPECT_EQ(m.FrameClock, 4);
  EXPECT_EQ(m.FramesEnded, 1);
}

TEST_F(LiteralMachineTest, FifthFrameClosesTheBlock) {
  m.FrameInBlock = 4;
  m.FrameClock = 62499;
  Run({0x00});
  EXPECT_EQ(m.FrameInBlock, 0);
  m.FrameInBlock = 5;
  m.DacSlots[0] = 1;
  m.FrameClock = 62499;
  Run({0x00});
  EXPECT_EQ(m.FrameInBlock, 0);
  EXPECT_EQ(m.DacSlots[0], 1);
  m.FrameInBlock = 6;
  m.FrameClock = 62499;
  Run({0x00});
  EXPECT_EQ(m.FrameInBlock, 6);
}

// Cursor at 392 + 608 = 1000: raised while F x 100 / 1360 is 1000 or 1001, F from 13600 to 13627.
TEST_F(LiteralMachineTest, CursorInterruptWindow) {
  m.CrtcRegs[6] = 60;
  m.CrtcRegs[10] = 3;
  m.CrtcRegs[14] = 0x32;  // only the low four bits take part
  m.CrtcRegs[15] = 608 - 512;
  m.FrameClock = 13595;
  Run({0x00});  // 13599: position 999
  EXPECT_EQ(m.PortShadow[0x59] & 0x10, 0x10);
  m.FrameClock = 13596;
  Run({0x00});  // 13600: position 1000
  EXPECT_EQ(m.PortShadow[0x59] & 0x10, 0);
  EXPECT_EQ(m.LastCursorIrq, 13600);
  m.PortShadow[0x59] = 0xBF;
  m.LastCursorIrq = 0;
  m.FrameClock = 13624;
  Run({0x00});  // 13628: position 1002
  EXPECT_EQ(m.PortShadow[0x59] & 0x10, 0x10);
  m.FrameClock = 13623;
  m.IFF1 = 1;
  Run({0x00});  // 13627: position 1001
  EXPECT_EQ(m.PortShadow[0x59] & 0x10, 0);
  EXPECT_EQ(m.IrqLine, 1);
}

TEST_F(LiteralMachineTest, CursorInterruptConditions) {
  m.CrtcRegs[14] = 2;
  m.CrtcRegs[15] = 96;
  m.CrtcRegs[10] = 4;
  m.CrtcRegs[6] = 60;
  m.FrameClock = 13600;
  Run({0x00});
  EXPECT_EQ(m.PortShadow[0x59] & 0x10, 0x10);
  m.CrtcRegs[10] = 0;
  m.CrtcRegs[6] = 0;
  m.FrameClock = 13600;
  Run({0x00});
  EXPECT_EQ(m.PortShadow[0x59] & 0x10, 0x10);
  m.CrtcRegs[6] = 10;  // F must stay below 13600
  m.FrameClock = 13600;
  Run({0x00});
  EXPECT_EQ(m.PortShadow[0x59] & 0x10, 0x10);
  m.CrtcRegs[6] = 11;
  m.FrameClock = 13600;
  m.LastCursorIrq = 13604;
  Run({0x00});
  EXPECT_EQ(m.PortShadow[0x59] & 0x10, 0x10);
  m.FrameClock = 13600;
  m.LastCursorIrq = 13603;
  Run({0x00});
  EXPECT_EQ(m.PortShadow[0x59] & 0x10, 0);
}

TEST_F(LiteralMachineTest, ToneCounterReloads) {
  m.PortShadow[5] = 0x2E;
  m.PortShadow[4] = 0x10;
  m.ToneItCounter = 5;
  Run({0x00});
  EXPECT_EQ(m.ToneItCounter, 1);
  EXPECT_EQ(m.PortShadow[0x59], 0xBF);
  Run({0x00});
  EXPECT_EQ(m.ToneItCounter, (2 * 256 - 16) * 16);
  EXPECT_EQ(m.PortShadow[0x59], 0xAF);
  m.PortShadow[0x59] = 0xBF;
  m.ToneItCounter = 4;
  m.ToneIntEnabled = false;
  Run({0x00});
  EXPECT_EQ(m.ToneItCounter, 7936);
  EXPECT_EQ(m.PortShadow[0x59], 0xBF);
}

TEST_F(LiteralMachineTest, BreakpointAndHistory) {
  m.CpuRunning = 1;
  m.BreakOnAddress = true;
  m.BreakAddress = kCode + 1;
  Run({0x00, 0x00});
  EXPECT_EQ(m.CpuRunning, 1);
  m.BreakArmed = 1;
  Run({0x00, 0x00});
  EXPECT_EQ(m.CpuRunning, 0);
  Again();
  EXPECT_EQ(m.PcHistory[9], kCode + 1);
  EXPECT_EQ(m.PcHistory[8], kCode);
  EXPECT_EQ(m.PcHistory[7], kCode);
  EXPECT_EQ(m.PcHistory[6], 0);
}

TEST_F(LiteralMachineTest, BadPrefixStateEndsTheProgram) {
  m.PrefixState = 5;
  try {
    m.Pass();
    FAIL();
  } catch (const ProgramEnd& end) {
    EXPECT_EQ(end.text, "5=Unknown prefix");
  }
}

}  // namespace oracle
