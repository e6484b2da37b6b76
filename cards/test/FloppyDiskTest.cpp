// Disk images from files and what their boot sectors say.
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "cards/Floppy.h"
#include "cards/test/PatternDisk.h"

namespace quoll {
namespace {

namespace fs = std::filesystem;
using test::Pattern;
using test::PatternImage;
using test::WithDisk;

class FloppyFile : public testing::Test {
 protected:
  FloppyFile() { fs::create_directories(folder); }
  ~FloppyFile() override { fs::remove_all(folder); }

  std::string Write(const std::string& name, const std::vector<uint8_t>& bytes) const {
    std::string file = (folder / name).string();
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return file;
  }

  const fs::path folder = fs::temp_directory_path() / ("quoll-floppy-" + std::to_string(getpid()));
};

TEST_F(FloppyFile, WholeImage) {
  Floppy floppy;
  floppy.Accesses = {"old"};
  EXPECT_EQ(LoadDisk(floppy, Write("whole.dsk", PatternImage())), "");
  EXPECT_EQ(floppy, WithDisk());
  EXPECT_EQ(floppy.DiskData.size(), 368640U);
}

TEST_F(FloppyFile, ShortOneLeavesTheRest) {
  Floppy floppy = WithDisk();
  EXPECT_EQ(LoadDisk(floppy, Write("short.dsk", std::vector<uint8_t>(1000, 0xAA))), "");
  for (size_t place = 0; place < kDiskSize; ++place) {
    EXPECT_EQ(floppy.DiskData[place],
              (DriveBytes{place < 1000 ? uint8_t{0xAA} : Pattern(place), 0, 0, 0, 0}));
  }
}

TEST_F(FloppyFile, LongOneIsCut) {
  Floppy floppy;
  EXPECT_EQ(LoadDisk(floppy, Write("long.dsk", PatternImage(kDiskSize + 5000))), "");
  EXPECT_EQ(floppy, WithDisk());
}

TEST_F(FloppyFile, WhatCannotBeReadLeavesTheDiskAndSaysWhy) {
  for (const std::string& file :
       {Write("empty.dsk", {}), folder.string(), (folder / "none.dsk").string(), std::string("/dev/zero")}) {
    Floppy floppy = WithDisk();
    const std::string error = LoadDisk(floppy, file);
    EXPECT_EQ(error.find(file + ": "), 0U) << error;
    EXPECT_GT(error.size(), file.size() + 2);
    EXPECT_EQ(floppy, WithDisk());
  }
}

TEST_F(FloppyFile, MissingOneAtTheStartLeavesZeros) {
  Floppy floppy;
  EXPECT_NE(LoadDisk(floppy, (folder / "default.dsk").string()), "");
  for (int i = 0; i < 600; ++i) EXPECT_EQ(FloppyRead(floppy, 0x13), 0);
}

TEST(FloppyBoot, EveryFieldHasItsPlace) {
  std::vector<uint8_t> image(512);
  for (size_t at = 0; at < image.size(); ++at) image[at] = static_cast<uint8_t>(at + 0x40);
  Floppy floppy;
  PlaceDisk(floppy, image);
  const BootSector boot = ReadBootSector(floppy);
  EXPECT_FALSE(boot.valid);
  EXPECT_EQ(boot.name, "CDEFGHI");
  EXPECT_EQ(boot.bytesPerSector, 0x4C4B);
  EXPECT_EQ(boot.sectorsPerCluster, 0x4D);
  EXPECT_EQ(boot.reservedSectors, 0x4F4E);
  EXPECT_EQ(boot.fats, 0x50);
  EXPECT_EQ(boot.rootEntries, 0x5C51);  // high byte from offset 28
  EXPECT_EQ(boot.media, 0x55);
  EXPECT_EQ(boot.sectorsPerFat, 0x5756);
  EXPECT_EQ(boot.sectorsPerTrack, 0x5958);
  EXPECT_EQ(boot.heads, 0x5B5A);
  EXPECT_EQ(boot.totalSectors, 0x63626160U);
  EXPECT_EQ(boot.driveNumber, 0x64);
}

TEST(FloppyBoot, ValidityLooksAtTwoBytes) {
  for (const int first : {0xEB, 0xEA, 0}) {
    for (int third = 0; third < 256; ++third) {
      Floppy floppy;
      PlaceDisk(floppy,
                std::array<uint8_t, 3>{static_cast<uint8_t>(first), 0x3C, static_cast<uint8_t>(third)});
      EXPECT_EQ(ReadBootSector(floppy).valid, first == 0xEB && third != 0x5A);
    }
  }
}

TEST(FloppyBoot, NoDiskNoFields) { EXPECT_EQ(ReadBootSector(Floppy{}), BootSector{}); }

// A 360 KB disk: two sides of 40 tracks with 9 sectors, two tables of two sectors, 112 names in the root.
TEST_F(FloppyFile, DiskFormattedByMtools) {
  const std::string file = (folder / "fat.dsk").string();
  ASSERT_EQ(std::system(("mformat -C -i '" + file + "' -f 360 ::").c_str()), 0);  // NOLINT: a test's own tool
  Floppy floppy;
  ASSERT_EQ(LoadDisk(floppy, file), "");
  const BootSector boot = ReadBootSector(floppy);
  EXPECT_TRUE(boot.valid);
  EXPECT_EQ(boot.name.substr(0, 4), "MTOO");
  EXPECT_EQ(boot.name.size(), 7U);
  EXPECT_EQ(boot.bytesPerSector, 512);
  EXPECT_EQ(boot.sectorsPerCluster, 2);
  EXPECT_EQ(boot.reservedSectors, 1);
  EXPECT_EQ(boot.fats, 2);
  EXPECT_EQ(boot.rootEntries, 112);
  EXPECT_EQ(boot.media, 0xFD);
  EXPECT_EQ(boot.sectorsPerFat, 2);
  EXPECT_EQ(boot.sectorsPerTrack, 9);
  EXPECT_EQ(boot.heads, 2);
  EXPECT_EQ(boot.totalSectors, 0U);  // 720 fits the 16-bit field
  EXPECT_EQ(boot.driveNumber, 0);
}

}  // namespace
}  // namespace quoll
