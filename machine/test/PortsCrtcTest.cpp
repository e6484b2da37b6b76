// The CRTC's registers through the ports, and what an OUT leaves in the processor's register.
#include <gtest/gtest.h>

#include "testkit/Files.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

constexpr int kSelectPorts[] = {0x70, 0x72, 0x74, 0x76};
constexpr int kDataPorts[] = {0x71, 0x73, 0x75, 0x77};

// What each register keeps of a byte.
constexpr int kMasks[18] = {0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0x1F, 0x7F, 0x7F, 0xF3,
                            0x1F, 0x7F, 0x1F, 0x3F, 0xFF, 0x3F, 0xFF, 0x3F, 0xFF};

int32_t Out(Machine& m, int port, int value) {
  int32_t variable = value;
  PortOut(m, port, variable);
  return variable;
}

TEST(PortsCrtcTest, SelectMasksStoresAndHandsBack) {
  for (const int port : kSelectPorts) {
    for (int value = 0; value < 256; ++value) {
      TestMachine m;
      m->PortShadow[static_cast<size_t>(port)] = 0xEE;
      ASSERT_EQ(Out(*m, port, value), value % 32);
      ASSERT_EQ(m->PortShadow[static_cast<size_t>(port)], value % 32);
      ASSERT_EQ(m->crtc.CrtcRegs[18], value % 32);
      ASSERT_EQ(PortIn(*m, port), 255);
    }
  }
}

TEST(PortsCrtcTest, EveryRegisterKeepsItsBits) {
  for (const int port : kDataPorts) {
    for (int reg = 0; reg < 18; ++reg) {
      for (int value = 0; value < 256; ++value) {
        TestMachine m;
        m->crtc.CrtcRegs.fill(-1);
        m->crtc.CrtcRegs[18] = reg;
        auto expected = m->crtc.CrtcRegs;
        expected[static_cast<size_t>(reg)] = value & kMasks[reg];
        ASSERT_EQ(Out(*m, port, value), value & kMasks[reg]) << "register " << reg;
        ASSERT_EQ(m->crtc.CrtcRegs, expected) << "register " << reg << " value " << value;
        ASSERT_EQ(m->PortShadow[static_cast<size_t>(port)], 0);
        ASSERT_EQ(PortIn(*m, port), reg >= 12 ? value & kMasks[reg] : 255) << "register " << reg;
        ASSERT_EQ(m->screen.List1.count, 0U);
      }
    }
  }
}

TEST(PortsCrtcTest, RegisterEighteenIsTheSelection) {
  TestMachine m;
  Out(*m, 0x70, 18);
  EXPECT_EQ(PortIn(*m, 0x71), 18);
  EXPECT_EQ(Out(*m, 0x71, 14), 14);
  EXPECT_EQ(m->crtc.CrtcRegs[18], 14);
  Out(*m, 0x71, 0xFF);
  EXPECT_EQ(m->crtc.CrtcRegs[14], 0x3F);
  EXPECT_EQ(PortIn(*m, 0x71), 0x3F);
}

TEST(PortsCrtcTest, SelectionsBeyondTheRegistersStoreNothing) {
  for (int reg = 19; reg < 32; ++reg) {
    TestMachine m;
    Out(*m, 0x70, reg);
    const Crtc before = m->crtc;
    const auto ports = m->PortShadow;
    EXPECT_EQ(Out(*m, 0x71, 0xFF), 0xFF);
    EXPECT_TRUE(m->crtc == before) << reg;
    EXPECT_EQ(m->PortShadow, ports) << reg;
  }
}

TEST(PortsCrtcTest, ASelectionOfMoreThan18WrittenThroughRegister18StaysHarmless) {
  TestMachine m;
  Out(*m, 0x70, 18);
  Out(*m, 0x71, 0xFF);  // unmasked
  EXPECT_EQ(m->crtc.CrtcRegs[18], 0xFF);
  const Crtc before = m->crtc;
  Out(*m, 0x71, 0x12);
  EXPECT_TRUE(m->crtc == before);
  PortIn(*m, 0x71);
  Out(*m, 0x70, 1);
  Out(*m, 0x71, 0x40);
  EXPECT_EQ(m->crtc.CrtcRegs[1], 0x40);
}

TEST(PortsCrtcTest, OutLeavesTheMaskedValueInA) {
  for (const bool inARun : {false, true}) {
    TestMachine m;
    m->z80.PC = 0x1000;
    m->z80.A = 0xFF;
    // OUT (0x70),A  LD B,A  LD A,5  OUT (0x76),A  LD A,0xFF  OUT (0x73),A  (stop)
    Put(*m, 0x1000, {0xD3, 0x70, 0x47, 0x3E, 0x05, 0xD3, 0x76, 0x3E, 0xFF, 0xD3, 0x73, 0xFD, 0xF3});
    RunOrStep(*m, inARun, 6);
    EXPECT_EQ(m->z80.B, 0x1F);
    EXPECT_EQ(m->z80.A, 0x1F);
    EXPECT_EQ(m->crtc.CrtcRegs[5], 0x1F);
    EXPECT_EQ(m->crtc.CrtcRegs[18], 5);
    EXPECT_EQ(m->PortShadow[0x70], 0x1F);
    EXPECT_EQ(m->PortShadow[0x76], 5);
    EXPECT_EQ(m->PortShadow[0x73], 0);
  }
}

TEST(PortsCrtcTest, OutThroughCLeavesTheMaskedValueInItsRegister) {
  struct Case {
    int opcode;
    int32_t Z80State::*reg;
  };
  constexpr Case kCases[] = {{0x41, &Z80State::B}, {0x51, &Z80State::D}, {0x59, &Z80State::E},
                             {0x61, &Z80State::H}, {0x69, &Z80State::L}, {0x79, &Z80State::A}};
  for (const auto& [opcode, reg] : kCases) {
    for (const bool inARun : {false, true}) {
      TestMachine m;
      Program(*m, 0x1000, {0xED, opcode, 0xFD, 0xF3});
      m->z80.C = 0x77;
      m->crtc.CrtcRegs[18] = 8;
      m->z80.*reg = 0xFF;
      RunOrStep(*m, inARun, 1);
      EXPECT_EQ(m->z80.*reg, 0xF3) << opcode;
      EXPECT_EQ(m->crtc.CrtcRegs[8], 0xF3) << opcode;
      EXPECT_EQ(m->z80.C, 0x77) << opcode;
    }
  }
}

TEST(PortsCrtcTest, OutOfCItselfMasksThePortNumberThatItHolds) {
  TestMachine m;
  m->z80.C = 0x70;
  Program(*m, 0x1000, {0xED, 0x49});  // OUT (C),C
  Step(*m);
  EXPECT_EQ(m->z80.C, 0x10);
  EXPECT_EQ(m->crtc.CrtcRegs[18], 0x10);
  EXPECT_EQ(m->PortShadow[0x70], 0x10);
}

TEST(PortsCrtcTest, InOfTheStatusAndOfTheCursorAddress) {
  TestMachine m;
  m->z80.PC = 0x1000;
  m->crtc.CrtcRegs[10] = 0x12;
  m->crtc.CrtcRegs[14] = 0x0B;
  // LD A,10  OUT (70),A  IN A,(71)  LD B,A  LD A,14  OUT (70),A  IN A,(71)  (stop)
  Put(*m, 0x1000, {0x3E, 10, 0xD3, 0x70, 0xDB, 0x71, 0x47, 0x3E, 14, 0xD3, 0x70, 0xDB, 0x71, 0xFD, 0xF3});
  RunOn(*m);
  EXPECT_EQ(m->z80.B, 255);
  EXPECT_EQ(m->z80.A, 0x0B);
}

// Devices see the clock as it stood when the instruction began, also in the midst of a run.
TEST(PortsCrtcTest, ARunTellsDevicesTheTime) {
  for (int nops = 0; nops < 80; ++nops) {
    TestMachine m;
    m->z80.PC = 0x1000;
    m->z80.A = 0xBC;  // amplitude 15, no strobe
    Put(*m, 0x1000 + nops, {0xD3, 0x06, 0xFD, 0xF3});
    m->run.FrameClock = 3;
    RunOn(*m);
    const size_t slot = static_cast<size_t>((3 + 4 * nops) / 142);
    for (size_t i = 0; i < 441; ++i) ASSERT_EQ(m->tone.DacSlots[i], i == slot ? 31 : 0) << nops << " " << i;
    ASSERT_EQ(m->run.FrameClock, 3 + 4 * nops + 11);
  }
}

TEST(PortsCrtcTest, ARunSetsPaletteAndBorderAtTheirTime) {
  TestMachine m;
  m->z80.PC = 0x1000;
  m->z80.A = 0x02;
  // 54 NOPs: 216 T-states, band 0. OUT (0),A takes 11. 5 NOPs: 247, slot 1. OUT (60),A
  Put(*m, 0x1000 + 54, {0xD3, 0x00, 0, 0, 0, 0, 0, 0xD3, 0x60, 0xFD, 0xF3});
  m->PortShadow[0x60] = 0x44;
  RunOn(*m);
  EXPECT_EQ(m->palette.BorderLines[0], 128 * 65536);
  EXPECT_EQ(m->palette.PalNextLine, 1);
  EXPECT_EQ(m->palette.PalHistory[0][1], 0x44);
  EXPECT_EQ(m->PortShadow[0x60], 0x02);
}

TEST(PortsCrtcTest, InOf5BStartsTheToneCounterAnew) {
  for (const bool inARun : {false, true}) {
    TestMachine m;
    m->z80.PC = 0x1000;
    m->PortShadow[4] = 0x80;
    m->PortShadow[5] = 0x07;                                      // 34816
    Put(*m, 0x1000, {0x00, 0x00, 0xDB, 0x5B, 0x00, 0xFD, 0xF3});  // NOP NOP IN A,(5B) NOP (stop)
    m->run.ToneItCounter = 50000;
    RunOrStep(*m, inARun, 5);
    EXPECT_EQ(m->run.ToneItCounter, 34816 - 11 - 4);
    EXPECT_EQ(m->z80.A, 255);
  }
}

// The sound card's ROM window.
struct SoundRom {
  TempFolder folder;
  std::vector<uint8_t> rom = Pattern(0x8000, 7);
};

void ExpectWindow(const Machine& m, const std::vector<uint8_t>& rom, size_t first) {
  for (size_t i = 0; i < 0x2000; ++i) ASSERT_EQ(m.MemImage[0x30000 + i], rom[first + i]) << i;
}

TEST(PortsCrtcTest, SoundRomPages) {
  const SoundRom sound;
  sound.folder.Write("sndmx.rom", sound.rom);
  TestMachine m;
  m->programFolder = sound.folder.path.string();
  m->MemImage.fill(0);
  for (const int port : {0x36, 0x37}) {
    for (const int value : {0, 1, 2, 3, 4, 0x81, 0xFE, 0xFF}) {
      auto expected = m->MemImage;
      const auto ports = m->PortShadow;
      EXPECT_EQ(Out(*m, port, value), value);
      ExpectWindow(*m, sound.rom, static_cast<size_t>(value % 4) * 0x2000);
      std::copy_n(sound.rom.begin() + value % 4 * 0x2000, 0x2000, expected.begin() + 0x30000);
      EXPECT_TRUE(m->MemImage == expected);  // and nothing beside the window
      EXPECT_EQ(m->PortShadow, ports);
      EXPECT_EQ(m->screen.List1.count, 0U);
    }
  }
}

TEST(PortsCrtcTest, SoundRomIsReadAtEachWrite) {
  const SoundRom sound;
  sound.folder.Write("sndmx.rom", sound.rom);
  TestMachine m;
  m->programFolder = sound.folder.path.string();
  Out(*m, 0x36, 1);
  const auto other = Pattern(0x8000, 8);
  sound.folder.Write("sndmx.rom", other);
  ExpectWindow(*m, sound.rom, 0x2000);
  Out(*m, 0x36, 1);
  ExpectWindow(*m, other, 0x2000);
  sound.folder.Write("sndmx.rom", Pattern(0x3000, 9));  // a short file ends in zeros
  Out(*m, 0x36, 1);
  auto shortRom = Pattern(0x3000, 9);
  shortRom.resize(0x8000);
  ExpectWindow(*m, shortRom, 0x2000);
}

TEST(PortsCrtcTest, WithoutTheSoundRomNothingChanges) {
  const TempFolder folder;
  TestMachine m;
  m->programFolder = folder.path.string();
  m->MemImage.fill(0x42);
  const auto before = CopyOf(*m);
  for (const int port : {0x36, 0x37}) {
    for (int value = 0; value < 4; ++value) EXPECT_EQ(Out(*m, port, value), value);
  }
  EXPECT_TRUE(m->MemImage == before->MemImage);
  EXPECT_EQ(m->PortShadow, before->PortShadow);
  EXPECT_EQ(m->screen.List1.count, 0U);
  EXPECT_TRUE(m.host.messages.empty());
}

// A program sees the new page through the card's window at once.
TEST(PortsCrtcTest, SoundRomPageInARun) {
  const SoundRom sound;
  sound.folder.Write("sndmx.rom", sound.rom);
  TestMachine m;
  m->programFolder = sound.folder.path.string();
  m->PortShadow[2] = 0xF0;
  m->PortShadow[3] = 0x80;
  m->z80.PC = 0x1000;
  // LD A,1  OUT (36),A  LD A,(C005)  LD B,A  LD A,2  OUT (37),A  LD A,(DFFF)  (stop)
  Put(*m, 0x1000,
      {0x3E, 1, 0xD3, 0x36, 0x3A, 0x05, 0xC0, 0x47, 0x3E, 2, 0xD3, 0x37, 0x3A, 0xFF, 0xDF, 0xFD, 0xF3});
  RunOn(*m);
  EXPECT_EQ(m->z80.B, sound.rom[0x2005]);
  EXPECT_EQ(m->z80.A, sound.rom[0x5FFF]);
}

}  // namespace

}  // namespace quoll::test
