#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "cards/Floppy.h"
#include "cards/test/PatternDisk.h"

namespace quoll {
namespace {

using test::Pattern;
using test::WithDisk;
using Bytes = std::vector<uint8_t>;

std::string LastLine(const Floppy& floppy) { return floppy.Accesses.empty() ? "" : floppy.Accesses.back(); }

TEST(Floppy, StartsWithNothing) {
  Floppy floppy;
  EXPECT_EQ(FloppyRead(floppy, 0x10), 0);
  EXPECT_EQ(FloppyRead(floppy, 0x11), 0);
  EXPECT_EQ(FloppyRead(floppy, 0x12), 0);
  EXPECT_EQ(FloppyRead(floppy, 0x13), 0);
  EXPECT_EQ(FloppyRead(floppy, 0x14), 0);
}

// What each command leaves in the status registers; -1 where it leaves what was there.
struct CommandRow {
  int first, last;  // command bytes
  const char* log;
  bool logsByte;
  int status, hwStatus;
};
constexpr CommandRow kCommands[] = {
    {0x00, 0x0F, "CMD Restore: ", true, 0x80, 0x80},  //
    {0x10, 0x1F, "CMD Seek: ", true, 0, 0x80},        {0x20, 0x3F, "CMD Step", false, -1, -1},
    {0x40, 0x5F, "CMD Step-in", false, -1, -1},       {0x60, 0x7F, "CMD Step-out", false, -1, -1},
    {0x80, 0x9F, "CMD Read Sector", false, 2, 0x80},  {0xA0, 0xBF, "CMD Write Sector", false, -1, -1},
    {0xC0, 0xCF, "CMD Read Address", false, 0, 0x81}, {0xD0, 0xDF, "CMD Force Interrupt", false, -1, -1},
    {0xE0, 0xEF, "CMD Read Track", false, -1, -1},    {0xF0, 0xFF, "CMD Write Track", false, -1, -1},
};

std::string HexOf(int value) {
  std::array<char, 4> text{};
  std::snprintf(text.data(), text.size(), "%02X", static_cast<unsigned>(value));
  return text.data();
}

// All 256 commands on all five drives against the rows, told once more with plain numbers.
TEST(FloppyCommand, EveryByteDoesWhatItsRowSays) {
  int tried = 0;
  for (const CommandRow& row : kCommands) {
    for (int command = row.first; command <= row.last; ++command, ++tried) {
      for (uint8_t drive = 0; drive < kDrives; ++drive) {
        Floppy floppy;
        floppy.FdcDrive = drive;
        floppy.FdcTrack = 9;
        floppy.FdcSector = 3;
        floppy.FdcData = 0x77;
        floppy.FdcCount = 100;
        floppy.FdcStatus = 0x55;
        floppy.FdcHwStatus = 0x33;
        floppy.DriveTrack.fill(4);
        floppy.DriveSide.fill(1);
        floppy.DriveStepRate.fill(0x7E);
        Floppy expected = floppy;
        expected.FdcCommand = static_cast<uint8_t>(command);
        if (row.status >= 0) expected.FdcStatus = static_cast<uint8_t>(row.status);
        if (row.hwStatus >= 0) expected.FdcHwStatus = static_cast<uint8_t>(row.hwStatus);
        if (command < 0x20) {
          expected.DriveStepRate[drive] = static_cast<uint8_t>(command % 4);
          expected.DriveSide[drive] = command % 16 >= 8 ? 8 : 0;
          expected.DriveTrack[drive] = command < 0x10 ? 0 : 9;
        }
        if (command < 0x10) expected.FdcTrack = 0;
        expected.Accesses = {row.log + (row.logsByte ? HexOf(command) : "")};
        FloppyWrite(floppy, 0x10, static_cast<uint8_t>(command));
        EXPECT_EQ(floppy, expected) << "command " << command << " drive " << int{drive};
      }
    }
  }
  EXPECT_EQ(tried, 256);
}

TEST(FloppyCommand, ThreeMorePortsTakeCommands) {
  for (const uint8_t port : Bytes{0x0C, 0x0D, 0x0E, 0x10}) {
    Floppy floppy;
    floppy.FdcTrack = 5;
    FloppyWrite(floppy, port, 0x0F);
    EXPECT_EQ(floppy.FdcTrack, 0);
    EXPECT_EQ(LastLine(floppy), "CMD Restore: 0F");
    EXPECT_EQ(FloppyRead(floppy, 0x14), 0x80);
  }
}

TEST(FloppyPorts, OthersDoNothing) {
  Floppy floppy = WithDisk();
  for (int port = 0; port < 256; ++port) {
    if (port >= 0x0C && port <= 0x14 && port != 0x0F) continue;
    FloppyWrite(floppy, static_cast<uint8_t>(port), 0x01);
    EXPECT_EQ(FloppyRead(floppy, static_cast<uint8_t>(port)), 255) << port;
  }
  for (const uint8_t port : Bytes{0x0C, 0x0D, 0x0E}) EXPECT_EQ(FloppyRead(floppy, port), 255);
  EXPECT_EQ(floppy, WithDisk());
}

TEST(FloppyPorts, StatusPortGivesTheTrack) {
  Floppy floppy;
  FloppyWrite(floppy, 0x10, 0x03);
  EXPECT_EQ(floppy.FdcStatus, 0x80);
  EXPECT_EQ(FloppyRead(floppy, 0x10), 0);
  FloppyWrite(floppy, 0x11, 5);
  floppy.Accesses.clear();
  EXPECT_EQ(FloppyRead(floppy, 0x10), 5);
  EXPECT_EQ(floppy.Accesses, (std::vector<std::string>{"Read Status REG: 80", "Read Track:05"}));
}

TEST(FloppyPorts, RegistersKeepWhatIsWritten) {
  Floppy floppy;
  for (int value = 0; value < 256; ++value) {
    const auto byte = static_cast<uint8_t>(value);
    FloppyWrite(floppy, 0x11, byte);
    EXPECT_EQ(LastLine(floppy), "Write Track REG " + HexOf(value));
    EXPECT_EQ(FloppyRead(floppy, 0x11), byte);
    EXPECT_EQ(LastLine(floppy), "Read Track:" + HexOf(value));
    FloppyWrite(floppy, 0x12, byte);
    EXPECT_EQ(LastLine(floppy), "Write Sector REG: " + HexOf(value));
    EXPECT_EQ(FloppyRead(floppy, 0x12), byte);
    EXPECT_EQ(LastLine(floppy), "Read Sector:" + HexOf(value));
    FloppyWrite(floppy, 0x13, byte);
    EXPECT_EQ(LastLine(floppy), "Write Data: " + HexOf(value));
    EXPECT_EQ(floppy.FdcData, byte);
    floppy.FdcHwStatus = byte;
    EXPECT_EQ(FloppyRead(floppy, 0x14), byte);
    EXPECT_EQ(LastLine(floppy), "Read HW status REG:" + HexOf(value));
  }
}

TEST(FloppyParameter, HighestDriveBitWinsAndFlagsGoToIt) {
  for (int value = 0; value < 256; ++value) {
    Floppy floppy;
    floppy.FdcDrive = 2;
    for (DriveBytes* bytes :
         {&floppy.DriveSide, &floppy.DriveDensity, &floppy.DriveMotor, &floppy.DrivePrecomp}) {
      bytes->fill(0xEE);
    }
    FloppyWrite(floppy, 0x14, static_cast<uint8_t>(value));
    const int low = value % 16;
    const int drive = low == 0 ? 4 : low >= 8 ? 3 : low >= 4 ? 2 : low >= 2 ? 1 : 0;
    EXPECT_EQ(floppy.FdcDrive, drive) << value;
    EXPECT_EQ(LastLine(floppy), "Write Parameter REG: " + HexOf(value));
    for (int other = 0; other < 5; ++other) {
      const bool chosen = other == drive;
      EXPECT_EQ(floppy.DriveSide[other], chosen ? value / 16 % 2 : 0xEE);
      EXPECT_EQ(floppy.DriveDensity[other], chosen ? value / 32 % 2 : 0xEE);
      EXPECT_EQ(floppy.DriveMotor[other], chosen ? value / 64 % 2 : 0xEE);
      EXPECT_EQ(floppy.DrivePrecomp[other], chosen ? value / 128 : 0xEE);
    }
  }
}

TEST(FloppyData, SectorComesWholeAndThenAgain) {
  Floppy floppy = WithDisk();
  FloppyWrite(floppy, 0x14, 0x01);
  FloppyWrite(floppy, 0x10, 0x80);
  for (size_t i = 0; i < 511; ++i) {
    EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(i)) << i;
    EXPECT_EQ(floppy.FdcHwStatus, 0x80);
    EXPECT_EQ(floppy.FdcStatus, 2);
  }
  EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(511));
  EXPECT_EQ(floppy.FdcHwStatus, 1);
  EXPECT_EQ(floppy.FdcStatus, 0);
  EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(0));
  EXPECT_EQ(floppy.FdcData, Pattern(0));
}

TEST(FloppyData, BytesComeWithoutAnyCommand) {
  Floppy floppy = WithDisk();
  EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(0));
  EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(1));
  EXPECT_EQ(LastLine(floppy), "Read Data: 1-" + HexOf(Pattern(1)));
}

TEST(FloppyData, CountGoesOnOverCommands) {
  Floppy floppy = WithDisk();
  FloppyRead(floppy, 0x13);
  for (const uint8_t command : Bytes{0x00, 0x10, 0x80, 0xC0, 0xD0}) FloppyWrite(floppy, 0x10, command);
  EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(1));
}

TEST(FloppyData, SectorRegisterDoesNotMatter) {
  Floppy floppy = WithDisk();
  FloppyWrite(floppy, 0x12, 7);
  FloppyWrite(floppy, 0x10, 0x80);
  EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(0));
  EXPECT_EQ(floppy.DriveSector, DriveBytes{});
}

// Tracks 16 to 31 lie before the data, 32 to 47 are those from 0 on, and so forth.
TEST(FloppyData, PlaceOfEachTrack) {
  Floppy floppy = WithDisk();
  for (int track = 0; track < 256; ++track) {
    FloppyWrite(floppy, 0x14, 0x01);
    FloppyWrite(floppy, 0x11, static_cast<uint8_t>(track));
    FloppyWrite(floppy, 0x10, 0x10);
    const bool inside = track / 16 % 2 == 0;
    const auto start = static_cast<size_t>(track % 16 * 2048);
    for (const uint16_t count : std::array<uint16_t, 3>{0, 1, 511}) {
      floppy.FdcCount = count;
      EXPECT_EQ(FloppyRead(floppy, 0x13), inside ? Pattern(start + count) : 0) << track << " " << count;
    }
  }
}

TEST(FloppyData, SeekToTrackOneReads2048BytesOn) {
  Floppy floppy = WithDisk();
  FloppyWrite(floppy, 0x11, 1);
  FloppyWrite(floppy, 0x10, 0x1B);
  EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(2048));
}

TEST(FloppyData, OnlyDriveZeroHasADisk) {
  for (int drive = 0; drive < 5; ++drive) {
    Floppy floppy = WithDisk();
    FloppyWrite(floppy, 0x14, static_cast<uint8_t>(drive == 4 ? 0 : 1 << drive));
    EXPECT_EQ(FloppyRead(floppy, 0x13), drive == 0 ? Pattern(0) : 0) << drive;
    EXPECT_EQ(floppy.FdcCount, 1);
  }
}

TEST(FloppyData, EachDriveHasItsTrack) {
  Floppy floppy = WithDisk();
  FloppyWrite(floppy, 0x14, 0x01);
  FloppyWrite(floppy, 0x11, 3);
  FloppyWrite(floppy, 0x10, 0x10);
  FloppyWrite(floppy, 0x14, 0x02);
  FloppyWrite(floppy, 0x10, 0x00);
  EXPECT_EQ(floppy.DriveTrack, (DriveBytes{3, 0, 0, 0, 0}));
  FloppyWrite(floppy, 0x14, 0x01);
  EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(3 * 2048));
}

TEST(FloppyData, WritesNeverReachTheDisk) {
  Floppy floppy = WithDisk();
  const auto before = floppy.DiskData;
  FloppyWrite(floppy, 0x10, 0xA0);
  for (int i = 0; i < 512; ++i) FloppyWrite(floppy, 0x13, 0xE5);
  EXPECT_EQ(floppy.DiskData, before);
  EXPECT_EQ(floppy.FdcCount, 0);
  EXPECT_EQ(FloppyRead(floppy, 0x13), Pattern(0));
}

// A record restored from outside may hold anything.
TEST(FloppyData, WildRegistersReadWithinTheDisk) {
  Floppy floppy = WithDisk();
  for (int drive = 0; drive < 256; drive += 5) {
    for (int sector = 0; sector < 256; sector += 3) {
      floppy.FdcDrive = static_cast<uint8_t>(drive);
      floppy.DriveSector.fill(static_cast<uint8_t>(sector));
      floppy.DriveTrack.fill(250);
      floppy.FdcCount = 0xFFFF;
      // Sector 250 x 4 + s; the count is -1 in 16 bits.
      const int place = static_cast<int16_t>((1000 + sector) * 512 - 1);
      const int expected = drive == 0 && place >= 0 ? Pattern(static_cast<size_t>(place)) : 0;
      EXPECT_EQ(FloppyRead(floppy, 0x13), expected) << drive << " " << sector;
      EXPECT_EQ(floppy.FdcCount, 0);
    }
  }
}

TEST(FloppyList, EmptiesItselfAbove500Lines) {
  Floppy floppy;
  for (int line = 0; line < 501; ++line) FloppyRead(floppy, 0x12);
  EXPECT_EQ(floppy.Accesses.size(), 501U);
  FloppyRead(floppy, 0x14);
  EXPECT_EQ(floppy.Accesses, std::vector<std::string>{"Read HW status REG:00"});
}

}  // namespace
}  // namespace quoll
