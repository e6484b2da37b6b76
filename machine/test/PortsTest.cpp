// The I/O bus: for each of the 256 ports what a write stores, what it logs and what it leaves of the caller's
// value, and what a read gives.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

using PortSet = std::set<int>;

PortSet Range(int first, int last) {
  PortSet ports;
  for (int port = first; port <= last; ++port) ports.insert(port);
  return ports;
}

PortSet Union(std::initializer_list<PortSet> sets) {
  PortSet all;
  for (const PortSet& set : sets) all.insert(set.begin(), set.end());
  return all;
}

// Ports whose byte is kept as it is written, with no line in the log.
const PortSet kKept = Union({Range(0x00, 0x06), {0x0F, 0x18, 0x21, 0xA0}, Range(0x60, 0x6F)});
// Kept after masking.
const PortSet kSelects{0x70, 0x72, 0x74, 0x76};
const PortSet kCrtcWrites{0x71, 0x73, 0x75, 0x77};
// The sound card's chips.
const PortSet kSnPorts{0x30, 0xFD}, kSaaPorts{0x32, 0x33, 0xFE, 0xFF}, kOplPorts{0x34, 0x35};
const PortSet kSidPorts = Union({{0x38, 0x39}, Range(0xE0, 0xF8)});
const PortSet kAyPorts{0x3A, 0x3B}, kOpllPorts{0x3C, 0x3D};
// Act, and keep nothing.
const PortSet kFloppy = Union({Range(0x0C, 0x0E), Range(0x10, 0x14)});
const PortSet kNotKept = Union({{0x07, 0x20, 0x36, 0x37},
                                kFloppy,
                                Range(0x50, 0x57),
                                Range(0x58, 0x5F),
                                kCrtcWrites,
                                kSnPorts,
                                kSaaPorts,
                                kOplPorts,
                                kSidPorts,
                                kAyPorts,
                                kOpllPorts});
const PortSet kNoFunction = Union({Range(0x08, 0x0B),
                                   Range(0x15, 0x17),
                                   Range(0x19, 0x1F),
                                   Range(0x22, 0x2F),
                                   {0x31},
                                   Range(0x3E, 0x4F),
                                   Range(0x78, 0x9F),
                                   Range(0xA1, 0xDF),
                                   Range(0xF9, 0xFC)});

// Reads with a function.
const PortSet kReads = Union({Range(0x10, 0x14), {0x20, 0x21}, Range(0x58, 0x5F), Range(0x70, 0x77)});

int32_t Out(Machine& m, int port, int value) {
  int32_t variable = value;
  PortOut(m, port, variable);
  return variable;
}

uint8_t Shadow(const Machine& m, int port) { return m.PortShadow.at(static_cast<size_t>(port)); }

TEST(PortsTest, TheListsCoverAllPortsOnce) {
  const PortSet lists[] = {kKept, kSelects, kNotKept, kNoFunction};
  size_t total = 0;
  for (const PortSet& list : lists) total += list.size();
  EXPECT_EQ(total, 256U);
  EXPECT_EQ(Union({kKept, kSelects, kNotKept, kNoFunction}).size(), 256U);
}

TEST(PortsTest, WritesKeepAndLogWhatTheyShould) {
  for (int port = 0; port < 256; ++port) {
    for (const int value : {0x00, 0x5A, 0xA5, 0xFF}) {
      SCOPED_TRACE(testing::Message() << "port " << port << " value " << value);
      TestMachine m;
      for (size_t i = 0; i < 256; ++i) m->PortShadow[i] = static_cast<uint8_t>(i ^ 0x33U);
      m->PortShadow[kStatusPort] = 0xE0;
      auto expected = m->PortShadow;
      const bool logged = kNoFunction.contains(port);
      if (kKept.contains(port) || logged) expected[static_cast<size_t>(port)] = static_cast<uint8_t>(value);
      if (kSelects.contains(port)) expected[static_cast<size_t>(port)] = static_cast<uint8_t>(value & 0x1F);
      if (port == 0x06 && (value & 0x80) == 0) expected[kStatusPort] = 0x60;
      if (port == 0x07) expected[kStatusPort] = 0xF0;
      if (port == 0x58 || port == 0x5C) expected[kStatusPort] = 0xE1;
      if (port == 0x59 || port == 0x5D) expected[kStatusPort] = 0xE2;
      if (port == 0x5A || port == 0x5E) expected[kStatusPort] = 0xE4;
      if (port == 0x5B || port == 0x5F) expected[kStatusPort] = 0xE8;
      const int32_t left = Out(*m, port, value);
      EXPECT_EQ(left, kSelects.contains(port) ? value & 0x1F : value);
      for (size_t i = 0; i < 256; ++i) EXPECT_EQ(m->PortShadow[i], expected[i]) << "shadow " << i;
      ASSERT_EQ(m->screen.List1.count, logged ? 1U : 0U);
      if (logged) {
        EXPECT_EQ(m->screen.List1.Entry(0), "W" + std::to_string(port));
      }
    }
  }
}

// A port without a function changes nothing else in the machine.
TEST(PortsTest, WritesTouchOnlyTheirOwnDevice) {
  for (int port = 0; port < 256; ++port) {
    SCOPED_TRACE(testing::Message() << "port " << port);
    TestMachine m;
    m->run.FrameClock = 30000;
    m->z80.IrqLine = 1;
    m->printer.printed = "x";
    m->crtc.CrtcRegs[18] = 5;
    const auto before = CopyOf(*m);
    Out(*m, port, 0x2A);
    const bool palette = port == 0x00 || (port & 0xF0) == 0x60;
    const bool crtc = (port & 0xF8) == 0x70;
    EXPECT_EQ(m->palette == before->palette, !palette);
    EXPECT_EQ(m->crtc == before->crtc, !crtc);
    const bool tape = (port & 0xF8) == 0x50;
    EXPECT_EQ(m->tone == before->tone, port != 0x06 && !tape);  // the tape is heard
    EXPECT_EQ(m->tape == before->tape, !tape);
    EXPECT_EQ(m->printer == before->printer, port != 0x06);
    EXPECT_EQ(m->floppy == before->floppy, !kFloppy.contains(port));
    EXPECT_EQ(m->serial == before->serial, port != 0x20);
    EXPECT_EQ(m->z80 == before->z80, port != 0x07);
    EXPECT_EQ(m->card.sn == before->card.sn, !kSnPorts.contains(port));
    EXPECT_EQ(m->card.saa == before->card.saa, !kSaaPorts.contains(port));
    EXPECT_EQ(m->card.opl == before->card.opl, !kOplPorts.contains(port));
    EXPECT_EQ(m->card.sid == before->card.sid, !kSidPorts.contains(port));
    EXPECT_EQ(m->card.ay == before->card.ay, !kAyPorts.contains(port));
    EXPECT_EQ(m->card.opll == before->card.opll, !kOpllPorts.contains(port));
    EXPECT_TRUE(m->MemImage == before->MemImage);
    EXPECT_EQ(m->run.ToneItCounter, before->run.ToneItCounter);
    EXPECT_EQ(m->run.FrameClock, 30000);
    EXPECT_TRUE(m->keyboard == before->keyboard);
    EXPECT_TRUE(m->mixer == before->mixer);
    EXPECT_TRUE(m.host.messages.empty());
  }
}

TEST(PortsTest, AcknowledgeSetsTheFlagAndDropsTheLine) {
  for (const int status : {0x00, 0x1F, 0x0F, 0xEF, 0xFF}) {
    TestMachine m;
    m->PortShadow[kStatusPort] = static_cast<uint8_t>(status);
    m->z80.IrqLine = 1;
    Out(*m, 0x07, 0x00);
    EXPECT_EQ(Shadow(*m, 0x59), status | 0x10);
    EXPECT_EQ(m->z80.IrqLine, 0);
  }
}

TEST(PortsTest, CardFlagsLeaveTheLineAlone) {
  TestMachine m;
  m->PortShadow[kStatusPort] = 0x00;
  m->z80.IrqLine = 1;
  for (int port = 0x58; port <= 0x5F; ++port) Out(*m, port, 0xFF);
  EXPECT_EQ(Shadow(*m, 0x59), 0x0F);
  EXPECT_EQ(m->z80.IrqLine, 1);
}

TEST(PortsTest, BorderAndPaletteAreSetAtTheFramesMoment) {
  TestMachine m;
  m->run.FrameClock = 218 * 100 - 1;
  Out(*m, 0x00, 0x02);  // blue, from band 99 on
  EXPECT_EQ(m->palette.BorderLines[98], 0);
  EXPECT_EQ(m->palette.BorderLines[99], 128 * 65536);
  EXPECT_EQ(m->palette.BorderLines[287], 128 * 65536);
  for (int port = 0x60; port <= 0x6F; ++port) {
    m->palette = Palette{};
    m->PortShadow[0x60] = 0x77;
    m->run.FrameClock = 245 * 10;
    Out(*m, port, 0x11);
    EXPECT_EQ(m->palette.PalHistory[0][10], 0x77) << port;  // what was in force before the write
    EXPECT_EQ(m->palette.PalHistory[0][11], 0x00) << port;
    EXPECT_EQ(m->palette.PalNextLine, 10) << port;
    EXPECT_EQ(Shadow(*m, port), 0x11);
  }
}

TEST(PortsTest, PortSixStrobesThePrinterAndTakesASample) {
  struct Case {
    int32_t clock;
    size_t slot;
  };
  constexpr Case kCases[] = {{0, 0},       {141, 0},     {142, 1},      {283, 1},
                             {284, 2},     {31240, 220}, {62479, 439},  {62480, 440},
                             {62621, 440}, {62622, 440}, {1000000, 440}};
  for (const auto& [clock, slot] : kCases) {
    for (const int value : {0x00, 0x3C, 0x80, 0xBC, 0xC3, 0x14, 0xFF}) {
      TestMachine m;
      m->run.FrameClock = clock;
      m->PortShadow[1] = 'Q';
      m->PortShadow[kStatusPort] = 0xFF;
      Out(*m, 0x06, value);
      for (size_t i = 0; i < m->tone.DacSlots.size(); ++i) {
        const int expected = i == slot ? (value / 4) % 16 + 16 : 0;
        ASSERT_EQ(m->tone.DacSlots[i], expected) << "clock " << clock << " value " << value << " slot " << i;
      }
      const bool strobe = value < 0x80;
      EXPECT_EQ(m->printer.printed, strobe ? "Q" : "");
      EXPECT_EQ(Shadow(*m, 0x59), strobe ? 0x7F : 0xFF);
      EXPECT_EQ(Shadow(*m, 0x06), value);
    }
  }
}

TEST(PortsTest, ThePrinterGetsTheLatchOncePerStrobe) {
  TestMachine m;
  for (const int byte : {0x41, 0x0A, 0x42, 0x0D, 0xA0}) {
    Out(*m, 0x01, byte);
    EXPECT_EQ(Shadow(*m, 0x01), byte);
    Out(*m, 0x06, 0x80);
    Out(*m, 0x06, 0x00);
    Out(*m, 0x06, 0x80);
  }
  EXPECT_EQ(m->printer.printed, "A\nB\r.");
}

TEST(PortsTest, ReadsWithoutAFunctionGive255AndAreLogged) {
  for (int port = 0; port < 256; ++port) {
    SCOPED_TRACE(testing::Message() << "port " << port);
    TestMachine m;
    m->PortShadow.fill(0x24);
    const auto before = CopyOf(*m);
    const int32_t value = PortIn(*m, port);
    const bool function = kReads.contains(port);
    ASSERT_EQ(m->screen.List1.count, function ? 0U : 1U);
    if (function) continue;
    EXPECT_EQ(value, 255);
    EXPECT_EQ(m->screen.List1.Entry(0), "R" + std::to_string(port));
    EXPECT_TRUE(m->PortShadow == before->PortShadow);
    EXPECT_TRUE(m->z80 == before->z80);
    EXPECT_TRUE(m->crtc == before->crtc);
    EXPECT_EQ(m->run.ToneItCounter, before->run.ToneItCounter);
  }
}

TEST(PortsTest, PortNumbersAbove255Read255) {
  TestMachine m;
  for (const int32_t port : {256, 0x158, 0x15B, 0x171, 0x10000, 0x7FFFFFFF}) {
    EXPECT_EQ(PortIn(*m, port), 255);
    EXPECT_EQ(m->run.ToneItCounter, kNoToneSoon);
  }
}

TEST(PortsTest, KeyboardRows) {
  TestMachine m;
  for (size_t row = 0; row <= 10; ++row) m->keyboard.KeyMatrix[row] = static_cast<uint8_t>(row * 16 + 3);
  for (int select = 0; select < 256; ++select) {
    m->PortShadow[3] = static_cast<uint8_t>(select);
    const int row = select % 16;
    const int expected = row <= 10 ? 255 - (row * 16 + 3) : 255;
    ASSERT_EQ(PortIn(*m, 0x58), expected) << select;
    ASSERT_EQ(PortIn(*m, 0x5C), expected) << select;
  }
  EXPECT_EQ(m->screen.List1.count, 0U);
}

TEST(PortsTest, StatusIsMadeUpAtTheReadAndKept) {
  for (const int port : {0x59, 0x5D}) {
    for (int before = 0; before < 256; ++before) {
      for (const bool monochrome : {false, true}) {
        for (const int level : {0, 1}) {
          TestMachine m;
          m->PortShadow[kStatusPort] = static_cast<uint8_t>(before);
          m->screen.xScreenBW = monochrome;
          PutTape(*m, level);
          m->z80.IrqLine = 1;
          const int expected = before % 32 + 128 + (monochrome ? 0 : 64) + 32 * level;
          ASSERT_EQ(PortIn(*m, port), expected) << before;
          ASSERT_EQ(Shadow(*m, 0x59), expected) << before;
          ASSERT_EQ(m->z80.IrqLine, 1);
        }
      }
    }
  }
}

TEST(PortsTest, CardsNameThemselves) {
  for (int cards = 0; cards < 16; ++cards) {
    TestMachine m;
    m->screen.xio0 = (cards & 1) != 0;
    m->screen.xio1 = (cards & 2) != 0;
    m->screen.xio2 = (cards & 4) != 0;
    m->screen.xio3 = (cards & 8) != 0;
    constexpr int kExpected[] = {0xFF, 0xFE, 0xF3, 0xF2};
    EXPECT_EQ(PortIn(*m, 0x5A), kExpected[cards & 3]);
    EXPECT_EQ(PortIn(*m, 0x5E), kExpected[cards & 3]);
  }
}

TEST(PortsTest, ToneCounterIsReloadedByARead) {
  struct Case {
    int port4, port5, counter;
  };
  constexpr Case kCases[] = {{0x00, 0x00, 65536}, {0xFF, 0x0F, 16},    {0x00, 0xFF, 4096},
                             {0x01, 0x00, 65520}, {0x80, 0x07, 34816}, {0xFF, 0xF0, 61456}};
  for (const auto& [port4, port5, counter] : kCases) {
    for (const int port : {0x5B, 0x5F}) {
      TestMachine m;
      m->PortShadow[4] = static_cast<uint8_t>(port4);
      m->PortShadow[5] = static_cast<uint8_t>(port5);
      m->run.ToneItCounter = -77;
      EXPECT_EQ(PortIn(*m, port), 255);
      EXPECT_EQ(m->run.ToneItCounter, counter);
      EXPECT_EQ(Shadow(*m, 0x59), 0xFF);
    }
  }
}

void ExpectLog(const Machine& m, uint32_t count, const std::string& last) {
  ASSERT_EQ(m.screen.List1.count, count);
  EXPECT_EQ(m.screen.List1.Entry(count - 1), last);
  EXPECT_EQ(m.screen.List1.Entry(count), "");
}

TEST(PortsTest, WritesEmptyTheLogPast35Lines) {
  TestMachine m;
  for (uint32_t i = 1; i <= 36; ++i) {
    Out(*m, 0x08, 0);
    ExpectLog(*m, i, "W8");
  }
  Out(*m, 0x09, 0);
  ExpectLog(*m, 1, "W9");
}

TEST(PortsTest, ReadsEmptyTheLogPast100Lines) {
  TestMachine m;
  for (uint32_t i = 1; i <= 101; ++i) {
    PortIn(*m, 0x00);
    ExpectLog(*m, i, "R0");
  }
  PortIn(*m, 0xFC);
  ExpectLog(*m, 1, "R252");
}

TEST(PortsTest, TheLogsLimitIsThatOfTheNewLine) {
  TestMachine m;
  for (int i = 0; i < 36; ++i) Out(*m, 0x40, 0);
  PortIn(*m, 0x40);
  ExpectLog(*m, 37, "R64");
  for (int i = 0; i < 20; ++i) PortIn(*m, 0x40);
  ExpectLog(*m, 57, "R64");
  Out(*m, 0x41, 0);
  ExpectLog(*m, 1, "W65");
}

}  // namespace

}  // namespace quoll::test
