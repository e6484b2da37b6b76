// Building the machine from its ROM files.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "machine/MachineInit.h"
#include "machine/test/Disturbed.h"
#include "testkit/Files.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

constexpr size_t k8 = 0x2000;
constexpr size_t k16 = 0x4000;

// Bytes that differ from place to place and from salt to salt, never 0.
Bytes RomBytes(size_t size, uint32_t salt) {
  Bytes bytes = Pattern(size, salt * 2654435761U + 12345U);
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(byte % 255U + 1U);
  return bytes;
}

// A program folder with every file that any setting asks for, each with bytes of its own.
struct RomFolder {
  TempFolder folder;
  std::map<std::string, Bytes> files;

  RomFolder() {
    uint32_t salt = 1;
    for (const RomFile& rom : kRomFiles) Add(rom.name, RomBytes(rom.size, salt++));
    Add("game.crt", RomBytes(k16, salt));
  }
  void Add(const std::string& name, const Bytes& bytes) {
    files[name] = bytes;
    folder.Write(name, bytes);
  }
  void Remove(const std::string& name) const { std::filesystem::remove(folder.path / name); }
};

TestMachine MachineIn(const RomFolder& roms) {
  TestMachine m;
  m->programFolder = roms.folder.path.string();
  m->MemImage.fill(0xEE);
  return m;
}

using Image = decltype(Machine::MemImage);

// An empty image with the system's ROMs.
Image SystemImage(const RomFolder& roms, bool basic22) {
  Image image{};
  std::ranges::copy(roms.files.at(basic22 ? "TVC22_D6.rom" : "TVC12_D4.rom"), image.begin() + 0x18000);
  std::ranges::copy(roms.files.at(basic22 ? "TVC22_D4.rom" : "TVC12_D3.rom"), image.begin() + 0x1A000);
  std::ranges::copy(roms.files.at(basic22 ? "TVC22_D7.rom" : "TVC12_D7.rom"), image.begin() + 0x1E000);
  return image;
}

// The rows of the ROM table, in all combinations of the menu's ticks.
TEST(MachineInitTest, EverySettingLoadsItsFiles) {
  const RomFolder roms;
  for (int setting = 0; setting < 64; ++setting) {
    SCOPED_TRACE(testing::Message() << "setting " << setting);
    TestMachine m = MachineIn(roms);
    m->screen.xBasic = (setting & 1) != 0;
    m->screen.xio0 = (setting & 2) != 0;
    m->screen.xio1 = (setting & 4) != 0;
    m->screen.xio2 = (setting & 8) != 0;
    m->screen.xio3 = (setting & 16) != 0;
    if ((setting & 32) != 0) m->CartName = "game.crt";
    Image expected = SystemImage(roms, m->screen.xBasic);
    if (m->screen.xio0) std::ranges::copy(roms.files.at("hbf.rom"), expected.begin() + 0x38000);
    if (m->screen.xio2) {
      std::copy_n(roms.files.at("sndmx.rom").begin() + 0x6000, k8, expected.begin() + 0x30000);
    }
    if (m->screen.xio3) std::ranges::copy(roms.files.at("io3.rom"), expected.begin() + 0x32000);
    if (!m->CartName.empty()) std::ranges::copy(roms.files.at("game.crt"), expected.begin() + 0x14000);
    MachineInit(*m);
    EXPECT_TRUE(m->MemImage == expected);
    EXPECT_TRUE(m->MexPages.empty());
    EXPECT_TRUE(m.host.messages.empty());
  }
}

TEST(MachineInitTest, FilesThatNoSettingAsksForNeedNotExist) {
  RomFolder roms;
  for (const char* name :
       {"TVC12_D4.rom", "TVC12_D3.rom", "TVC12_D7.rom", "hbf.rom", "sndmx.rom", "io3.rom"}) {
    roms.Remove(name);
  }
  TestMachine m = MachineIn(roms);
  m->screen.xio1 = true;  // has no ROM
  MachineInit(*m);
  EXPECT_TRUE(m->MemImage == SystemImage(roms, true));
}

TEST(MachineInitTest, ShortFilesEndInZerosAndLongOnesAreCut) {
  struct Case {
    const char* name;
    size_t offset, size;
  };
  constexpr Case kCases[] = {{"TVC22_D6.rom", 0x18000, k8}, {"TVC22_D4.rom", 0x1A000, k8},
                             {"TVC22_D7.rom", 0x1E000, k8}, {"hbf.rom", 0x38000, k16},
                             {"io3.rom", 0x32000, k8},      {"game.crt", 0x14000, k16}};
  for (const auto& [name, offset, size] : kCases) {
    for (const size_t length : {size_t{0}, size_t{1}, size - 1, size, size + 1, 2 * size}) {
      SCOPED_TRACE(testing::Message() << name << " of " << length);
      RomFolder roms;
      roms.Add(name, RomBytes(length, 99));
      TestMachine m = MachineIn(roms);
      m->screen.xio0 = m->screen.xio3 = true;
      m->CartName = "game.crt";
      MachineInit(*m);
      auto expected = RomBytes(length, 99);
      expected.resize(size);
      EXPECT_TRUE(
          std::equal(expected.begin(), expected.end(), m->MemImage.begin() + static_cast<int>(offset)));
      // What follows the area belongs to the next one. No file of these stands right behind another but D4.
      const uint8_t behind = m->MemImage[offset + size];
      EXPECT_EQ(behind, std::string_view(name) == "TVC22_D6.rom" ? roms.files.at("TVC22_D4.rom")[0]
                        : std::string_view(name) == "game.crt"   ? roms.files.at("TVC22_D6.rom")[0]
                                                                 : 0);
      EXPECT_TRUE(m.host.messages.empty());
    }
  }
}

TEST(MachineInitTest, AShortSoundRomLeavesZeros) {
  for (const size_t length : {size_t{0}, size_t{0x6000}, size_t{0x6010}}) {
    RomFolder roms;
    roms.Add("sndmx.rom", RomBytes(length, 5));
    TestMachine m = MachineIn(roms);
    m->screen.xio2 = true;
    MachineInit(*m);
    auto expected = RomBytes(length, 5);
    expected.resize(0x8000);
    for (size_t i = 0; i < k8; ++i) ASSERT_EQ(m->MemImage[0x30000 + i], expected[0x6000 + i]) << i;
  }
}

void ExpectEnd(TestMachine& m, const std::string& text) {
  m.host.messages.clear();
  EXPECT_TRUE(EndsProgram([&] { MachineInit(*m); }));
  ASSERT_EQ(m.host.messages.size(), 1U);
  EXPECT_EQ(m.host.messages[0].text, text);
  EXPECT_EQ(m.host.messages[0].title, "Error");
}

TEST(MachineInitTest, AMissingSystemRomEndsTheProgram) {
  for (const bool basic22 : {false, true}) {
    const std::vector<const char*> names = basic22
                                               ? std::vector{"TVC22_D6.rom", "TVC22_D4.rom", "TVC22_D7.rom"}
                                               : std::vector{"TVC12_D4.rom", "TVC12_D3.rom", "TVC12_D7.rom"};
    constexpr size_t kOffsets[] = {0x18000, 0x1A000, 0x1E000};
    for (size_t missing = 0; missing < 3; ++missing) {
      SCOPED_TRACE(names[missing]);
      const RomFolder roms;
      roms.Remove(names[missing]);
      TestMachine m = MachineIn(roms);
      m->screen.xBasic = basic22;
      ExpectEnd(m, "Rom File error: ");
      EXPECT_EQ(m.host.messages[0].icon, MessageIcon::Stop);
      // Those before it have been loaded, those after it have not.
      for (size_t i = 0; i < 3; ++i) EXPECT_EQ(m->MemImage[kOffsets[i]] != 0, i < missing) << i;
    }
  }
}

TEST(MachineInitTest, AFolderInTheFilesPlaceCannotBeRead) {
  for (const char* name : {"TVC22_D6.rom", "TVC22_D4.rom", "TVC22_D7.rom"}) {
    const RomFolder roms;
    roms.Remove(name);
    std::filesystem::create_directory(roms.folder.path / name);
    TestMachine m = MachineIn(roms);
    ExpectEnd(m, "Rom File error: ");
    EXPECT_EQ(m.host.messages[0].icon, MessageIcon::Stop);
  }
}

TEST(MachineInitTest, AMissingCardRomOrCartridgeEndsTheProgram) {
  for (const std::string name : {"hbf.rom", "sndmx.rom", "io3.rom", "game.crt", "mex4mb.crt"}) {
    for (const bool folderInstead : {false, true}) {
      SCOPED_TRACE(name);
      const RomFolder roms;
      roms.Remove(name);
      if (folderInstead) std::filesystem::create_directory(roms.folder.path / name);
      TestMachine m = MachineIn(roms);
      m->screen.xio0 = name == "hbf.rom";
      m->screen.xio2 = name == "sndmx.rom";
      m->screen.xio3 = name == "io3.rom";
      if (name.ends_with(".crt")) m->CartName = name;
      ExpectEnd(m, "CRT Rom File error: ");
    }
  }
}

TEST(MachineInitTest, TheWholeProgramFolderMayBeMissing) {
  TestMachine m;
  m->programFolder = "/nonexistent/quoll";
  ExpectEnd(m, "Rom File error: ");
}

TEST(MachineInitTest, MexCartridgeFillsItsPages) {
  RomFolder roms;
  roms.Add("mex4mb.crt", RomBytes(256 * k16, 3));
  TestMachine m = MachineIn(roms);
  m->CartName = "mex4mb.crt";
  MachineInit(*m);
  const auto& file = roms.files.at("mex4mb.crt");
  ASSERT_EQ(m->MexPages.size(), 256U);
  for (size_t page = 0; page < 256; ++page) {
    EXPECT_TRUE(std::ranges::equal(m->MexPages[page], std::span(file).subspan(page * k16, k16))) << page;
  }
  EXPECT_TRUE(m->MemImage == SystemImage(roms, true));  // the window of a plain cartridge stays empty
}

TEST(MachineInitTest, AShortMexFileLeavesZeros) {
  RomFolder roms;
  roms.Add("mex4mb.crt", RomBytes(k16 + 10, 3));
  TestMachine m = MachineIn(roms);
  m->CartName = "mex4mb.crt";
  m->MexPages.resize(256);
  for (auto& page : m->MexPages) page.fill(0x99);
  MachineInit(*m);
  auto expected = RomBytes(k16 + 10, 3);
  expected.resize(256 * k16);
  ASSERT_EQ(m->MexPages.size(), 256U);
  for (size_t page = 0; page < 256; ++page) {
    EXPECT_TRUE(std::ranges::equal(m->MexPages[page], std::span(expected).subspan(page * k16, k16))) << page;
  }
}

TEST(MachineInitTest, OtherSpellingsArePlainCartridges) {
  RomFolder roms;
  roms.Add("MEX4MB.CRT", RomBytes(2 * k16, 4));
  TestMachine m = MachineIn(roms);
  m->CartName = "MEX4MB.CRT";
  m->MexPages.resize(256);
  MachineInit(*m);
  EXPECT_TRUE(m->MexPages.empty());
  Image expected = SystemImage(roms, true);
  std::copy_n(roms.files.at("MEX4MB.CRT").begin(), k16, expected.begin() + 0x14000);
  EXPECT_TRUE(m->MemImage == expected);
}

TEST(MachineInitTest, TakingTheCartridgeOutClearsItsWindow) {
  RomFolder roms;
  roms.Add("mex4mb.crt", RomBytes(256 * k16, 3));
  TestMachine m = MachineIn(roms);
  for (const char* name : {"game.crt", "mex4mb.crt"}) {
    m->CartName = name;
    MachineInit(*m);
    m->CartName.clear();
    MachineInit(*m);
    EXPECT_TRUE(m->MexPages.empty());
    EXPECT_TRUE(m->MemImage == SystemImage(roms, true));
  }
}

TEST(MachineInitTest, CartridgeWritesLastUntilTheNextInit) {
  RomFolder roms;
  roms.Add("mex4mb.crt", RomBytes(256 * k16, 3));
  for (const char* name : {"game.crt", "mex4mb.crt"}) {
    TestMachine m = MachineIn(roms);
    m->CartName = name;
    MachineInit(*m);
    const uint8_t own = roms.files.at(name)[5];
    m->PortShadow[2] = 0x08;
    MemWrite(*m, 5, static_cast<uint8_t>(own ^ 0xFF));
    MachineReset(*m);
    m->PortShadow[2] = 0x08;
    EXPECT_EQ(MemRead(*m, 5), own ^ 0xFF);
    MachineInit(*m);
    m->PortShadow[2] = 0x08;
    EXPECT_EQ(MemRead(*m, 5), own);
  }
}

TEST(MachineInitTest, TheMachineItBuilds) {
  const RomFolder roms;
  TestMachine m = MachineIn(roms);
  m->PortShadow.fill(0x77);
  m->keyboard.KeyMatrix.fill(0x77);
  m->z80 = Z80State{};
  m->z80.PC = 0x1234;
  m->z80.IM = 2;
  m->z80.IFF1 = m->z80.IFF2 = 1;
  m->z80.I = m->z80.R = 7;
  m->z80.CurOpcode = 0x76;
  m->z80.PrefixState = 0xDD;
  m->z80.UnDocEnabled = 0;
  m->screen.xUnDoc = false;  // the tick is not asked
  m->run.Cycles = 5;
  m->run.FrameClock = 6;
  m->run.ResetRequest = 1;
  MachineInit(*m);
  for (const uint8_t port : m->PortShadow) EXPECT_EQ(port, 0);
  for (const uint8_t row : m->keyboard.KeyMatrix) EXPECT_EQ(row, 0);
  Z80State expected = PowerOnState();
  EXPECT_TRUE(m->z80 == expected);
  EXPECT_EQ(m->run.Cycles, 0);
  EXPECT_EQ(m->run.FrameClock, 0);
  EXPECT_EQ(m->run.ResetRequest, 0);
  EXPECT_FALSE(m->screen.xUnDoc);
}

TEST(MachineInitTest, WhatItLeavesAlone) {
  const RomFolder roms;
  TestMachine m = MachineIn(roms);
  Disturb(*m);
  const auto expected = CopyOf(*m);
  MachineInit(*m);
  // The image, the ports, the keys, the registers and what belongs to a new machine.
  expected->MemImage = m->MemImage;
  expected->MexPages.clear();
  expected->PortShadow.fill(0);
  expected->keyboard = {};
  expected->card = m->card;  // has tests of its own
  expected->z80 = PowerOnState();
  expected->z80.Halted = expected->z80.IrqLine = 1;
  expected->z80.UnDocEnabled = 1;
  expected->z80.IndexDisp = -5;  // belongs to the instruction under way
  expected->run.Cycles = expected->run.FrameClock = expected->run.ResetRequest = 0;
  EXPECT_TRUE(static_cast<MachineState&>(*m) == *expected);
}

}  // namespace

}  // namespace quoll::test
