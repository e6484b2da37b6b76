// Tests of the plain model by itself: memory and ports.
// Every expected value was worked out by hand.
#include "loop/test/oracle/OracleSelfTest.h"

namespace oracle {

TEST_F(LiteralMachineTest, SmallMachineStoresButReadsZero) {
  m.x32KB = true;
  m.MemWrite(0x8000, 0x55);
  m.MemWrite(0xC000, 0x66);
  EXPECT_EQ(m.MemRead(0x8000), 0);
  EXPECT_EQ(m.MemRead(0xC000), 0);
  EXPECT_EQ(Peek(0x8000), 0x55);
  EXPECT_EQ(Peek(0xC000), 0x66);
  m.PortShadow[2] = 0x18;
  EXPECT_EQ(m.MemRead(0x0000), 0x66);  // U3 seen in page 0 still reads
}

TEST_F(LiteralMachineTest, U3InPageZero) {
  m.PortShadow[2] = 0x98;
  m.MemWrite(0x0010, 0x42);
  EXPECT_EQ(m.MemRead(0xC010), 0x42);
  EXPECT_EQ(Peek(0xC010), 0x42);
}

TEST_F(LiteralMachineTest, VideoBankInTwoPages) {
  m.PortShadow[2] = 0x14;
  m.PortShadow[0x0F] = 0x05;
  m.MemWrite(0x4000, 0x21);
  EXPECT_EQ(Peek(0x20000), 0x21);
  EXPECT_EQ(m.MemRead(0x8000), 0x21);
  m.PortShadow[0x0F] = 0x0E;  // page 1 bank 2, page 2 bank 3
  m.MemWrite(0x7FFF, 0x31);
  m.MemWrite(0xBFFF, 0x32);
  EXPECT_EQ(Peek(0x27FFF), 0x31);
  EXPECT_EQ(Peek(0x2BFFF), 0x32);
}

TEST_F(LiteralMachineTest, VideoReadNoiseDamagesBankZero) {
  m.PortShadow[2] = 0x10;
  m.PortShadow[0x0F] = 0x04;
  m.VideoReadNoise = true;
  m.MemImage[0x20005] = 0x80;
  m.MemImage[0x10005] = 0x40;
  EXPECT_EQ(m.MemRead(0x8005), 0x80);
  EXPECT_EQ(Peek(0x10005), 0x77);
  m.MemWrite(0x8006, 1);
  EXPECT_EQ(Peek(0x10006), 0);
}

TEST_F(LiteralMachineTest, ExtensionWindow) {
  m.PortShadow[2] = 0xC0;
  m.MemWrite(0xD000, 0x11);
  EXPECT_EQ(Peek(0x2E000), 0x11);
  EXPECT_EQ(m.MemRead(0xD000), 0x11);
  m.MemImage[0x38000] = 0x21;
  m.MemImage[0x39000] = 0x22;
  m.MemImage[0x3B000] = 0x24;
  EXPECT_EQ(m.MemRead(0xC000), 0x21);
  m.PortShadow[0x18] = 0x10;
  EXPECT_EQ(m.MemRead(0xC000), 0x22);
  m.PortShadow[0x18] = 0x30;
  EXPECT_EQ(m.MemRead(0xC000), 0x24);
  m.MemWrite(0xC000, 0x99);
  EXPECT_EQ(Peek(0x3B000), 0x24);
  m.MemImage[0x1E000] = 0x31;
  m.MemWrite(0xE000, 0x99);
  EXPECT_EQ(m.MemRead(0xE000), 0x31);
  m.PortShadow[3] = 0x80;
  m.MemImage[0x30000] = 0x41;
  EXPECT_EQ(m.MemRead(0xC000), 0x41);
  m.MemWrite(0xE000, 0x99);
  EXPECT_EQ(Peek(0x1E000), 0x31);
}

TEST_F(LiteralMachineTest, CardWindowWriteEndsTheProgram) {
  m.PortShadow[2] = 0xC0;
  m.PortShadow[3] = 0x40;
  try {
    m.MemWrite(0xC000, 1);
    FAIL();
  } catch (const ProgramEnd& end) {
    EXPECT_EQ(end.text, " CTL 1-3 IOM write????");
  }
}

TEST_F(LiteralMachineTest, CartridgeAndMexPages) {
  m.PortShadow[2] = 0x08;
  m.MemWrite(0xC001, 0x12);
  EXPECT_EQ(m.MemRead(0x0001), 0x12);
  EXPECT_EQ(Peek(0x14001), 0x12);
  m.CartName = "mex4mb.crt";
  m.MexPages.assign(256, std::vector<uint8_t>(0x4000, 0));
  m.PortShadow[0xA0] = 0xFF;
  m.MemWrite(0x0002, 0x34);
  EXPECT_EQ(m.MexPages[255][2], 0x34);
  EXPECT_EQ(m.MemRead(0xC002), 0x34);
  EXPECT_EQ(m.MemRead(0x0001), 0);
  EXPECT_EQ(m.MemRead(0x10000), 0);
}

TEST_F(LiteralMachineTest, AddressesAboveSixteenBits) {
  m.MemImage[0x1C000] = 0x5A;
  EXPECT_EQ(m.MemRead(0x1C000), 0x5A);  // U3 selected: the whole value is the offset
  m.PortShadow[2] = 0x40;
  EXPECT_EQ(m.MemRead(0x10000), 0x5A);  // SYS adds 0xC000
  EXPECT_EQ(m.MemRead(0x2C000), 0);
  m.PortShadow[2] = 0xB0;
  m.MemWrite(0x2C000, 1);
  EXPECT_EQ(Peek(0x2C000), 0);
}

TEST_F(LiteralMachineTest, SystemRomIsReadOnly) {
  m.PortShadow[2] = 0x40;
  m.MemImage[0x18000] = 0xC3;
  m.MemWrite(0x0000, 1);
  m.MemWrite(0xC000, 1);
  EXPECT_EQ(m.MemRead(0x0000), 0xC3);
  EXPECT_EQ(m.MemRead(0xC000), 0xC3);
}

// ---- Ports ----

TEST_F(LiteralMachineTest, CrtcSelectMasksTheRegister) {
  m.A = 0xFF;
  EXPECT_EQ(Run({0xD3, 0x70}), 11);
  EXPECT_EQ(m.A, 0x1F);
  EXPECT_EQ(m.CrtcRegs[18], 0x1F);
  EXPECT_EQ(m.PortShadow[0x70], 0x1F);
  m.CrtcRegs[18] = 5;
  m.A = 0xFF;
  Run({0xD3, 0x71});
  EXPECT_EQ(m.A, 0x1F);
  EXPECT_EQ(m.CrtcRegs[5], 0x1F);
  EXPECT_EQ(m.PortShadow[0x71], 0);
}

TEST_F(LiteralMachineTest, CrtcMasks) {
  static const int32_t kMasks[18] = {0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0x1F, 0x7F, 0x7F, 0xF3,
                                     0x1F, 0x7F, 0x1F, 0x3F, 0xFF, 0x3F, 0xFF, 0x3F, 0xFF};
  for (int32_t i = 0; i < 18; i++) {
    Out(0x70, i);
    EXPECT_EQ(Out(0x71, 0xFF), kMasks[i]);
    EXPECT_EQ(m.CrtcRegs[static_cast<size_t>(i)], kMasks[i]);
    EXPECT_EQ(m.PortIn(0x71), i < 12 ? 255 : kMasks[i]);
  }
  Out(0x70, 25);
  Out(0x71, 0x44);
  EXPECT_EQ(m.PortIn(0x71), 0);
  Out(0x70, 18);
  EXPECT_EQ(m.PortIn(0x73), 18);
  Out(0x71, 7);
  EXPECT_EQ(m.CrtcRegs[18], 7);
  EXPECT_EQ(m.PortIn(0x70), 255);
}

TEST_F(LiteralMachineTest, StatusPort) {
  LiteralMachine fresh;
  fresh.MachineReset();
  fresh.xScreenBW = true;
  fresh.TapeIn = {91, 90};
  EXPECT_EQ(fresh.PortIn(0x59), 0xBF);
  EXPECT_EQ(fresh.DacSlots[0], 0x11);
  EXPECT_EQ(fresh.PortIn(0x5D), 0x9F);
  EXPECT_EQ(fresh.PortShadow[0x59], 0x9F);
  fresh.xScreenBW = false;
  EXPECT_EQ(fresh.PortIn(0x59), 0xDF);
}

TEST_F(LiteralMachineTest, CardAndTonePorts) {
  EXPECT_EQ(m.PortIn(0x5A), 0xFF);
  m.xio1 = true;
  EXPECT_EQ(m.PortIn(0x5A), 0xF3);
  m.xio0 = true;
  EXPECT_EQ(m.PortIn(0x5E), 0xF2);
  m.PortShadow[5] = 0xFF;
  m.PortShadow[4] = 0x80;
  EXPECT_EQ(m.PortIn(0x5B), 255);
  EXPECT_EQ(m.ToneItCounter, 2048);
}

TEST_F(LiteralMachineTest, InterruptFlagPorts) {
  m.PortShadow[0x59] = 0xA0;
  m.IrqLine = 1;
  Out(7, 0);
  EXPECT_EQ(m.PortShadow[0x59], 0xB0);
  EXPECT_EQ(m.IrqLine, 0);
  Out(0x58, 0);
  EXPECT_EQ(m.PortShadow[0x59], 0xB1);
  Out(0x5D, 0);
  EXPECT_EQ(m.PortShadow[0x59], 0xB3);
  Out(0x5A, 0);
  Out(0x5F, 0);
  EXPECT_EQ(m.PortShadow[0x59], 0xBF);
  EXPECT_EQ(m.PortShadow[0x58], 0);
  EXPECT_TRUE(m.List1.empty());
}

TEST_F(LiteralMachineTest, KeyboardRows) {
  m.KeyMatrix[8] = 0x02;
  for (const auto& [select, port, keys] :
       {std::tuple(0x48, 0x58, 0xFD), {0x48, 0x5C, 0xFD}, {0x47, 0x58, 0xFF}, {0x0F, 0x58, 0xFF}}) {
    m.PortShadow[3] = static_cast<uint8_t>(select);
    EXPECT_EQ(m.PortIn(port), keys) << select;
  }
}

TEST_F(LiteralMachineTest, UnknownPortsAreLogged) {
  EXPECT_EQ(m.PortIn(0), 255);
  ASSERT_EQ(m.List1.size(), 1u);
  EXPECT_EQ(m.List1[0], "R0");
  Out(0x40, 0x12);
  EXPECT_EQ(m.List1[1], "W64");
  EXPECT_EQ(m.PortShadow[0x40], 0x12);
  for (int i = 0; i < 34; i++) {
    Out(0x40, 0);
  }
  EXPECT_EQ(m.List1.size(), 36u);
  Out(0x40, 0);
  EXPECT_EQ(m.List1.size(), 1u);
  for (int i = 0; i < 100; i++) {
    m.PortIn(0x40);
  }
  EXPECT_EQ(m.List1.size(), 101u);
  m.PortIn(0x40);
  EXPECT_EQ(m.List1.size(), 1u);
}

TEST_F(LiteralMachineTest, PrinterAndSample) {
  Out(1, 'Q');
  m.FrameClock = 284;
  Out(6, 0x3C);
  EXPECT_EQ(m.Printed, "Q");
  EXPECT_EQ(m.PortShadow[0x59], 0x3F);
  EXPECT_EQ(m.DacSlots[2], 0x1F);
  EXPECT_EQ(m.PortShadow[6], 0x3C);
  m.FrameClock = 62510;
  Out(6, 0x84);
  EXPECT_EQ(m.Printed, "Q");
  EXPECT_EQ(m.DacSlots[440], 0x11);
}

TEST_F(LiteralMachineTest, CardPorts) {
  Out(0x11, 5);
  EXPECT_EQ(m.PortIn(0x10), 5);
  Out(0x0D, 0x0F);
  EXPECT_EQ(m.PortIn(0x11), 0);
  EXPECT_EQ(m.PortIn(0x14), 0x80);
  for (int i = 0; i < 512; i++) {
    EXPECT_EQ(m.PortIn(0x13), 0);
  }
  EXPECT_EQ(m.PortIn(0x14), 1);
  Out(0x10, 0x2F);
  EXPECT_EQ(m.PortIn(0x14), 1);
  Out(0x10, 0xC5);
  EXPECT_EQ(m.PortIn(0x14), 0x81);
  Out(0x20, 'A');
  EXPECT_EQ(m.SerialTx, std::vector<uint8_t>{'A'});
  EXPECT_EQ(m.PortIn(0x20) + m.PortIn(0x21), 0);
  Out(0x21, 3);
  EXPECT_EQ(m.PortShadow[0x21], 3);
  EXPECT_EQ(m.PortShadow[0x10], 0);
  EXPECT_TRUE(m.List1.empty());
}

TEST_F(LiteralMachineTest, PaletteHistoryHoldsOldColours) {
  m.FrameClock = 490;
  Out(0x60, 0x11);
  EXPECT_EQ(m.PalHistory[0][2], 0);
  EXPECT_EQ(m.PalNextLine, 2);
  Out(0x60, 0x22);  // slot 2 is written again, with the value before this write
  EXPECT_EQ(m.PalHistory[0][2], 0x11);
  m.FrameClock = 245 * 4;
  Out(0x65, 0x33);
  EXPECT_EQ(m.PalHistory[0][4], 0x22);
  EXPECT_EQ(m.PortShadow[0x65], 0x33);
  m.FrameClock = 70000;
  Out(0x61, 0x44);
  EXPECT_EQ(m.PalHistory[0][256], 0x22);
  EXPECT_EQ(m.PalNextLine, 256);
}

TEST_F(LiteralMachineTest, BorderBands) {
  m.FrameClock = 218 * 10;
  Out(0, 0x02);
  EXPECT_EQ(m.BorderLines[9], 0);
  EXPECT_EQ(m.BorderLines[10], 128 * 65536);
  EXPECT_EQ(m.BorderLines[287], 128 * 65536);
  m.FrameClock = 0;
  Out(0, 0x08);
  EXPECT_EQ(m.BorderLines[0], 128);
  Out(0, 0x20);
  EXPECT_EQ(m.BorderLines[0], 128 * 256);
  Out(0, 0x80);
  EXPECT_EQ(m.BorderLines[0], 128 + 128 * 256 + 128 * 65536);
  Out(0, 0xAA);
  EXPECT_EQ(m.BorderLines[0], 0xFFFFFF);
  m.FrameClock = 218 * 288;
  Out(0, 0x00);
  EXPECT_EQ(m.BorderLines[287], 0xFFFFFF);
}

}  // namespace oracle
