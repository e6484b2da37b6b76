// Cassette files: where the program lands, the pointers that BASIC finds, and the header that a save writes.
#include "media/Cas.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

using CasTest = FolderTest;

constexpr size_t kHeader = 144;
constexpr size_t kStart = 0x19EF;
constexpr size_t kMemoryEnd = 0x3C001;

// U0, U1, U2 and SYS at their places: as BASIC has it.
constexpr uint8_t kBasicPages = 0x70;

void FillMemory(Machine& m, uint32_t seed) {
  std::ranges::copy(Pattern(kMemoryEnd, seed), m.MemImage.begin());
}

int Word(const Machine& m, size_t address) { return m.MemImage[address] + 256 * m.MemImage[address + 1]; }

// A file with noise for a header and the program behind it.
Bytes FileWith(const Bytes& program, uint32_t headerSeed = 5) {
  Bytes file = Pattern(kHeader, headerSeed);
  file.resize(kHeader + program.size());
  std::ranges::copy(program, file.begin() + kHeader);
  return file;
}

// The header that a save writes: blocks of 128 bytes in the file and the rest, then the program's length.
Bytes Header(int blocks, int rest, int length) {
  Bytes header(kHeader, 0);
  header[0] = 0x11;
  header[2] = static_cast<uint8_t>(blocks & 0xFF);
  header[3] = static_cast<uint8_t>(blocks >> 8);
  header[4] = static_cast<uint8_t>(rest);
  header[129] = 1;
  header[130] = static_cast<uint8_t>(length & 0xFF);
  header[131] = static_cast<uint8_t>(length >> 8);
  return header;
}

// Memory differs from what was there in the program's place and the two pointers alone.
void ExpectPlaced(const Machine& m, const Machine& before, const Bytes& program, int end) {
  auto expected = before.MemImage;
  std::ranges::copy(program, expected.begin() + kStart);
  expected[0x1722] = 0xEF;
  expected[0x1723] = 0x19;
  expected[0x1726] = static_cast<uint8_t>(end & 0xFF);
  expected[0x1727] = static_cast<uint8_t>((end >> 8) & 0xFF);
  EXPECT_TRUE(m.MemImage == expected);
  EXPECT_EQ(m.z80, before.z80);
  EXPECT_EQ(m.PortShadow, before.PortShadow);
}

TEST_F(CasTest, AProgramLandsWhereBasicExpectsIt) {
  FillMemory(m, 1);
  const auto before = CopyOf(m);
  const Bytes program = Pattern(1000, 2);
  WriteAll("a.cas", FileWith(program));
  m.PortShadow[2] = before->PortShadow[2] = kBasicPages;
  EXPECT_TRUE(LoadCAS(m, Path("a.cas")));
  ExpectPlaced(m, *before, program, 0x19EF + 1000);
  EXPECT_EQ(host.Count("Pump"), 0);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(CasTest, TheHeaderDoesNotMatter) {
  const Bytes program = Pattern(300, 2);
  for (uint32_t seed = 0; seed < 5; ++seed) {
    WriteAll("a.cas", FileWith(program, seed));
    FillMemory(m, 1);
    const auto before = CopyOf(m);
    LoadCAS(m, Path("a.cas"));
    ExpectPlaced(m, *before, program, 0x19EF + 300);
  }
}

// Whatever is paged in, the program goes to RAM; the user is served once when BASIC's pages are not in.
TEST_F(CasTest, OtherPagesOnlyServeTheUserFirst) {
  const Bytes program = Pattern(30, 2);
  WriteAll("a.cas", FileWith(program));
  for (int port2 = 0; port2 < 256; ++port2) {
    host.events.clear();
    m.PortShadow[2] = static_cast<uint8_t>(port2);
    m.MemImage[kStart + 29] = static_cast<uint8_t>(program[29] ^ 1);
    LoadCAS(m, Path("a.cas"));
    EXPECT_EQ(m.MemImage[kStart + 29], program[29]);
    EXPECT_EQ(Word(m, 0x1726), 0x19EF + 30);
    const bool basic = port2 == 0x70 || port2 == 0x71 || port2 == 0x72 || port2 == 0x73;
    EXPECT_EQ(host.Count("Pump"), basic ? 0 : 1) << port2;
  }
}

TEST_F(CasTest, AFileOfTheHeaderAloneIsAnEmptyProgram) {
  FillMemory(m, 1);
  const auto before = CopyOf(m);
  WriteAll("a.cas", Pattern(kHeader));
  EXPECT_TRUE(LoadCAS(m, Path("a.cas")));
  ExpectPlaced(m, *before, {}, 0x19EF);
}

TEST_F(CasTest, AShorterFileLeavesTheEndBelowTheStart) {
  for (const int size : {0, 1, 10, 143}) {
    FillMemory(m, 1);
    const auto before = CopyOf(m);
    WriteAll("a.cas", Pattern(static_cast<size_t>(size)));
    EXPECT_TRUE(LoadCAS(m, Path("a.cas")));
    ExpectPlaced(m, *before, {}, 0x19EF - 144 + size);
  }
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(CasTest, AFileThatCannotBeReadSetsThePointersSilently) {
  for (const std::string& name : {Path("none.cas"), folder.string(), Path("none/a.cas"), std::string()}) {
    FillMemory(m, 1);
    const auto before = CopyOf(m);
    EXPECT_FALSE(LoadCAS(m, name));
    ExpectPlaced(m, *before, {}, 0x19EF - 144);
  }
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(Names().empty());
}

// From 0x19EF to the end of the memory array there is room for 0x3C001 - 0x19EF = 239122 bytes.
TEST_F(CasTest, ALongFileRunsOnToTheEndOfMemoryAndNoFurther) {
  constexpr size_t kRoom = 239'122;
  for (const size_t size : {kRoom - 1, kRoom, kRoom + 1, size_t{1'000'000}}) {
    SCOPED_TRACE(size);
    FillMemory(m, 1);
    const auto before = CopyOf(m);
    const Bytes program = Pattern(size, 9);
    WriteAll("a.cas", FileWith(program));
    EXPECT_TRUE(LoadCAS(m, Path("a.cas")));
    const Bytes stored(program.begin(), program.begin() + static_cast<ptrdiff_t>(std::min(size, kRoom)));
    ExpectPlaced(m, *before, stored, 0x19EF + static_cast<int>(size));
  }
}

TEST_F(CasTest, TheSaveWritesHeaderAndProgram) {
  m.PortShadow[2] = kBasicPages;
  FillMemory(m, 1);
  // 1000 bytes: 1144 in all, 8 blocks of 128 and 120 bytes.
  EXPECT_TRUE(SaveCAS(m, Path("a"), 0x2000, 0x2000 + 1000));
  const Bytes file = ReadAll("a.cas");
  ASSERT_EQ(file.size(), 1144U);
  const Bytes header = Header(8, 120, 1000);
  EXPECT_EQ(Bytes(file.begin(), file.begin() + kHeader), header);
  EXPECT_TRUE(std::equal(file.begin() + kHeader, file.end(), m.MemImage.begin() + 0x2000));
}

// The largest program: 0xFFFF - 0x19EF = 0xE610 bytes, 0xE6A0 in all: 461 (0x1CD) blocks and 32 bytes.
TEST_F(CasTest, TheLargestProgram) {
  m.PortShadow[2] = kBasicPages;
  FillMemory(m, 1);
  EXPECT_TRUE(SaveCAS(m, Path("a"), -5, 0x7FFFFFFF));
  const Bytes file = ReadAll("a.cas");
  ASSERT_EQ(file.size(), 0xE6A0U);
  EXPECT_EQ(Bytes(file.begin(), file.begin() + kHeader), Header(461, 32, 0xE610));
  // The last page is ROM with these pages in, and that is what is saved.
  EXPECT_EQ(file[kHeader + 0xC000 - 0x19EF], m.MemImage[0x18000]);
  EXPECT_EQ(file.back(), m.MemImage[0x18000 + 0x3FFE]);
}

TEST_F(CasTest, TheSaveReadsThroughThePages) {
  FillMemory(m, 1);
  m.PortShadow[2] = 0x00;  // page 0 is the system ROM, page 2 video RAM
  EXPECT_TRUE(SaveCAS(m, Path("a"), 0x3FFE, 0x8002));
  const Bytes file = ReadAll("a.cas");
  ASSERT_EQ(file.size(), kHeader + 0x4004);
  EXPECT_EQ(file[kHeader], m.MemImage[0x18000 + 0x3FFE]);
  EXPECT_EQ(file[kHeader + 2], m.MemImage[0x4000]);
  EXPECT_EQ(file[kHeader + 0x4002], m.MemImage[0x10000]);
}

TEST_F(CasTest, AnEndBelowTheStartSavesTheHeaderAlone) {
  // s = 0x19EF, e = 0: -0x19EF is 0xE611; with 144 more -6495, which is 50 blocks and 95 bytes below 0.
  EXPECT_TRUE(SaveCAS(m, Path("a"), 0, 0));
  EXPECT_EQ(ReadAll("a.cas"), Header(0xFFCE, 0xA1, 0xE611));
  EXPECT_TRUE(SaveCAS(m, Path("b"), 0x4000, 0x4000));
  EXPECT_EQ(ReadAll("b.cas").size(), kHeader);
  EXPECT_TRUE(SaveCAS(m, Path("c"), 0x7FFFFFFF, static_cast<int32_t>(0x80000000)));
  EXPECT_EQ(ReadAll("c.cas").size(), kHeader);
}

TEST_F(CasTest, NumbersAreBroughtIntoRange) {
  EXPECT_EQ(ClampCasRange(0x1000, 0x2000), (CasRange{0x19EF, 0x2000}));
  EXPECT_EQ(ClampCasRange(0x19EE, 0x1000), (CasRange{0x19EF, 0x1000}));
  EXPECT_EQ(ClampCasRange(0x19EF, 0xFFFF), (CasRange{0x19EF, 0xFFFF}));
  EXPECT_EQ(ClampCasRange(0x10000, 0x10000), (CasRange{0xFFFF, 0xFFFF}));
  EXPECT_EQ(ClampCasRange(-1, -1), (CasRange{0x19EF, -1}));
}

TEST_F(CasTest, TheBoxesShowThePointers) {
  m.PortShadow[2] = kBasicPages;
  m.MemImage[0x1720] = 0x34;
  m.MemImage[0x1721] = 0x12;
  m.MemImage[0x1722] = 0xEF;
  m.MemImage[0x1723] = 0x19;
  m.MemImage[0x1726] = 0xFF;
  m.MemImage[0x1727] = 0xFF;
  std::string start, end, word;
  ReadCasBoxes(m, start, end, word);
  EXPECT_EQ(start, "6639");
  EXPECT_EQ(end, "65535");
  EXPECT_EQ(word, "4660");
  // With the ROM at that place it is the ROM that is read.
  m.PortShadow[2] = 0x00;
  ReadCasBoxes(m, start, end, word);
  EXPECT_EQ(start, "0");
}

TEST_F(CasTest, TheBoxesAreReadAndWrittenBack) {
  struct Case {
    const char *start, *end;
    CasRange range;
    const char *startAfter, *endAfter;
  };
  const std::vector<Case> cases = {
      {"6639", "7000", {6639, 7000}, "6639", "7000"},
      {"&H19EF", "&h2000", {0x19EF, 0x2000}, "6639", "8192"},
      {"&H1000", "&HFFFF", {0x19EF, 0xFFFF}, "6639", "65535"},
      {"4096", "99999999999", {0x19EF, 0xFFFF}, "6639", "65535"},
      {"", "", {0x19EF, 0}, "6639", "0"},
      {"70000", "-5", {0xFFFF, -5}, "65535", "-5"},
      {" 8192", "9000x", {8192, 9000}, "8192", "9000"},
      {"program", "&H", {0x19EF, 0}, "6639", "0"},
  };
  for (const Case& c : cases) {
    std::string start = c.start, end = c.end;
    EXPECT_EQ(UseCasBoxes(start, end), c.range) << c.start << " " << c.end;
    EXPECT_EQ(start, c.startAfter);
    EXPECT_EQ(end, c.endAfter);
  }
}

TEST_F(CasTest, WhatIsSavedLoadsAgain) {
  m.PortShadow[2] = kBasicPages;
  FillMemory(m, 1);
  EXPECT_TRUE(SaveCAS(m, Path("a"), 0x19EF, 0x5000));
  TestMachine before;
  FillMemory(*before, 2);
  const auto other = CopyOf(*before);
  EXPECT_TRUE(LoadCAS(*other, Path("a.cas")));
  ExpectPlaced(*other, *before, Bytes(m.MemImage.begin() + 0x19EF, m.MemImage.begin() + 0x5000), 0x5000);
}

TEST_F(CasTest, TheExtensionIsAppendedOnce) {
  SaveCAS(m, Path("one"), 0, 0);
  SaveCAS(m, Path("two.cas"), 0, 0);
  EXPECT_EQ(Names(), (std::vector<std::string>{"one.cas", "two.cas"}));
}

TEST_F(CasTest, AFailedSaveKeepsTheOldFileAndIsTold) {
  WriteAll("a.cas", {1, 2, 3});
  {
    const FullDisk full(1000);
    EXPECT_FALSE(SaveCAS(m, Path("a"), 0x4000, 0x8000));
  }
  ExpectBox(Path("a.cas"), "File too large");
  host.messages.clear();
  {
    const ReadOnlyFolder readOnly(folder);
    EXPECT_FALSE(SaveCAS(m, Path("a"), 0x4000, 0x8000));
  }
  ExpectBox(Path("a.cas"), "Permission denied");
  host.messages.clear();
  EXPECT_FALSE(SaveCAS(m, Path("none/a"), 0x4000, 0x8000));
  ExpectBox(Path("none/a.cas"), "No such file or directory");
  EXPECT_EQ(ReadAll("a.cas"), (Bytes{1, 2, 3}));
  EXPECT_EQ(Names(), (std::vector<std::string>{"a.cas"}));
}

}  // namespace

}  // namespace quoll::test
