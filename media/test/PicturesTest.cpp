// Pictures and dumps: what reaches ports, palette and video RAM, and what the files hold.
#include "media/Pictures.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

using PicturesTest = FolderTest;

constexpr size_t kVideo = 0x10000;
constexpr size_t kMemoryEnd = 0x3C001;

void FillMemory(Machine& m, uint32_t seed) {
  std::ranges::copy(Pattern(kMemoryEnd, seed), m.MemImage.begin());
}

// A picture file: the bytes that nobody reads are 0xEE.
Bytes Tim(uint8_t mode, const Bytes& screen) {
  Bytes file(16, 0xEE);
  file[3] = mode;
  for (size_t i = 4; i < 8; ++i) file[i] = static_cast<uint8_t>(0x10 * i + i);  // 0x44 0x55 0x66 0x77
  file.resize(16 + screen.size());
  std::ranges::copy(screen, file.begin() + 16);
  return file;
}

TEST_F(PicturesTest, ATimSetsModePaletteAndScreen) {
  FillMemory(m, 1);
  auto memory = m.MemImage;
  auto ports = m.PortShadow;
  ports[6] = 0x5C;
  m.PortShadow[6] = 0x5F;
  const Bytes screen = Pattern(0x3C00, 2);
  WriteAll("a.tim", Tim(0, screen));
  EXPECT_TRUE(LoadTIM(m, Path("a.tim")));
  std::ranges::copy(screen, memory.begin() + kVideo);
  ports[0x60] = 0x44;
  ports[0x61] = 0x55;
  ports[0x62] = 0x66;
  ports[0x63] = 0x77;
  EXPECT_TRUE(m.MemImage == memory);
  EXPECT_EQ(m.PortShadow, ports);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(PicturesTest, TheModeByteSetsTheTwoModeBits) {
  for (int mode = 0; mode < 256; ++mode) {
    for (const int before : {0x00, 0xFF, 0x81}) {
      m.PortShadow[6] = static_cast<uint8_t>(before);
      WriteAll("a.tim", Tim(static_cast<uint8_t>(mode), {}));
      LoadTIM(m, Path("a.tim"));
      const int bits = mode == 1 ? 1 : mode == 2 ? 2 : 0;
      EXPECT_EQ(m.PortShadow[6], (before & 0xFC) | bits) << mode;
    }
  }
}

// The palette goes through the ports: lines of the frame that are over keep the old colours.
TEST_F(PicturesTest, ThePaletteHistoryIsServed) {
  m.PortShadow[0x60] = 0x11;
  m.run.FrameClock = 245 * 100;
  WriteAll("a.tim", Tim(0, {}));
  LoadTIM(m, Path("a.tim"));
  EXPECT_EQ(m.palette.PalNextLine, 100);
  EXPECT_EQ(m.palette.PalHistory[0][99], 0x11);
  PALComplete(m.palette, m.PortShadow);
  EXPECT_EQ(m.palette.PalHistory[0][101], 0x44);
  EXPECT_EQ(m.palette.PalHistory[3][255], 0x77);
}

// No strobe to the printer and no sound sample: port 6 is only stored.
TEST_F(PicturesTest, ThePrinterAndTheSoundHearNothingOfTheMode) {
  m.PortShadow[1] = 'A';
  const Tone before = m.tone;
  WriteAll("a.tim", Tim(2, {}));
  LoadTIM(m, Path("a.tim"));
  EXPECT_EQ(m.printer.printed, "");
  EXPECT_EQ(m.tone, before);
}

// From video RAM to the end of the memory array there is room for 0x3C001 - 0x10000 = 180225 bytes.
TEST_F(PicturesTest, ALongTimRunsOnToTheEndOfMemoryAndNoFurther) {
  constexpr size_t kRoom = 180'225;
  for (const size_t size :
       {size_t{1}, size_t{16384}, size_t{16385}, kRoom - 1, kRoom, kRoom + 1, size_t{900'000}}) {
    SCOPED_TRACE(size);
    FillMemory(m, 1);
    auto memory = m.MemImage;
    const Bytes screen = Pattern(size, 7);
    WriteAll("a.tim", Tim(1, screen));
    EXPECT_TRUE(LoadTIM(m, Path("a.tim")));
    std::copy_n(screen.begin(), std::min(size, kRoom), memory.begin() + kVideo);
    EXPECT_TRUE(m.MemImage == memory);
  }
}

// Shorter than its header: the bytes that are there count, the screen stays.
TEST_F(PicturesTest, AShortTimGivesWhatItHas) {
  const Bytes whole = Tim(2, {});
  for (size_t size = 0; size <= 16; ++size) {
    SCOPED_TRACE(size);
    FillMemory(m, 1);
    const auto memory = m.MemImage;
    m.PortShadow[6] = 0x5F;
    for (size_t i = 0; i < 4; ++i) m.PortShadow[0x60 + i] = 0x99;
    WriteAll("a.tim", Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)));
    EXPECT_TRUE(LoadTIM(m, Path("a.tim")));
    EXPECT_TRUE(m.MemImage == memory);
    EXPECT_EQ(m.PortShadow[6], size > 3 ? 0x5E : 0x5C);
    for (size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(m.PortShadow[0x60 + i], size > 4 + i ? 0x44 + 0x11 * static_cast<int>(i) : 0x99);
    }
  }
}

TEST_F(PicturesTest, ATimThatCannotBeReadIsToldAndChangesNothing) {
  FillMemory(m, 1);
  const auto before = CopyOf(m);
  EXPECT_FALSE(LoadTIM(m, Path("none.tim")));
  ExpectBox(Path("none.tim"), "No such file or directory");
  EXPECT_FALSE(LoadTIM(m, folder.string()));
  EXPECT_EQ(host.messages.size(), 2U);
  EXPECT_TRUE(m.MemImage == before->MemImage);
  EXPECT_EQ(m.PortShadow, before->PortShadow);
  EXPECT_EQ(m.palette, before->palette);
  EXPECT_TRUE(Names().empty());
}

TEST_F(PicturesTest, TheScreenGoesOutAndComesBack) {
  FillMemory(m, 1);
  m.PortShadow[0x0F] = 0x35;  // whichever bank is shown or paged in
  EXPECT_TRUE(SaveScreen(m));
  const Bytes file = ReadAll("screen.bin");
  ASSERT_EQ(file.size(), 16'384U);
  EXPECT_TRUE(std::equal(file.begin(), file.end(), m.MemImage.begin() + kVideo));
  FillMemory(m, 2);
  auto memory = m.MemImage;
  std::ranges::copy(file, memory.begin() + kVideo);
  EXPECT_TRUE(LoadScreen(m));
  EXPECT_TRUE(m.MemImage == memory);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(PicturesTest, WhatTheScreenFileLacksIsBlack) {
  for (const size_t size :
       {size_t{0}, size_t{1}, size_t{16383}, size_t{16384}, size_t{16385}, size_t{100'000}}) {
    SCOPED_TRACE(size);
    FillMemory(m, 2);
    auto memory = m.MemImage;
    Bytes file = Pattern(size, 3);
    WriteAll("screen.bin", file);
    EXPECT_TRUE(LoadScreen(m));
    file.resize(16'384, 0);
    std::ranges::copy(file, memory.begin() + kVideo);
    EXPECT_TRUE(m.MemImage == memory);
    EXPECT_EQ(ReadAll("screen.bin").size(), size);
  }
}

TEST_F(PicturesTest, AMissingScreenFileIsMadeEmptyAndTheScreenBlack) {
  FillMemory(m, 2);
  auto memory = m.MemImage;
  std::fill_n(memory.begin() + kVideo, 16'384, uint8_t{0});
  EXPECT_TRUE(LoadScreen(m));
  EXPECT_TRUE(m.MemImage == memory);
  EXPECT_EQ(Names(), (std::vector<std::string>{"screen.bin"}));
  EXPECT_EQ(std::filesystem::file_size("screen.bin"), 0U);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(PicturesTest, AScreenFileThatCannotBeReadOrMadeIsToldAndChangesNothing) {
  FillMemory(m, 2);
  const auto memory = m.MemImage;
  {
    const ReadOnlyFolder readOnly(folder);
    EXPECT_FALSE(LoadScreen(m));
  }
  ExpectBox("screen.bin", "Permission denied");
  host.messages.clear();
  std::filesystem::create_directory("screen.bin");
  EXPECT_FALSE(LoadScreen(m));
  ExpectBox("screen.bin", "it is a directory");
  EXPECT_TRUE(m.MemImage == memory);
}

TEST_F(PicturesTest, TheDumpIsTheFourRamPages) {
  FillMemory(m, 4);
  EXPECT_TRUE(MemoryDump(m));
  const Bytes file = ReadAll("ramdump.bin");
  ASSERT_EQ(file.size(), 65'536U);
  EXPECT_TRUE(std::equal(file.begin(), file.end(), m.MemImage.begin()));
  EXPECT_EQ(Names(), (std::vector<std::string>{"ramdump.bin"}));
}

TEST_F(PicturesTest, FailedSavesKeepTheOldFilesAndAreTold) {
  using Save = bool (*)(Machine&);
  const std::vector<std::pair<std::string, Save>> saves = {{"screen.bin", SaveScreen},
                                                           {"ramdump.bin", MemoryDump}};
  for (const auto& [name, save] : saves) {
    WriteAll(name, {1, 2});
    host.messages.clear();
    {
      const FullDisk full(1000);
      EXPECT_FALSE(save(m));
    }
    ExpectBox(name, "File too large");
    host.messages.clear();
    {
      const ReadOnlyFolder readOnly(folder);
      EXPECT_FALSE(save(m));
    }
    ExpectBox(name, "Permission denied");
    EXPECT_EQ(ReadAll(name), (Bytes{1, 2}));
  }
  EXPECT_EQ(Names(), (std::vector<std::string>{"ramdump.bin", "screen.bin"}));
}

}  // namespace

}  // namespace quoll::test
