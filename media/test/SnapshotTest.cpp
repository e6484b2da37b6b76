// Snapshot files: the layout byte for byte, and what cut, foreign and missing files do.
#include <algorithm>

#include "media/Snapshot.h"
#include "media/test/SnapshotFields.h"

namespace quoll::test {

namespace {

using SnapshotTest = FolderTest;

constexpr size_t kSize = 246'360;
constexpr size_t kMemory = 599;

// Puts a file of the name together by the layout alone.
Bytes FileOf(Machine& m) {
  Bytes file(kSize, 0);
  const std::string magic = "QUOLLEMU02";
  std::ranges::copy(magic, file.begin());
  const auto put = [&](size_t offset, size_t size, int32_t value) {
    for (size_t i = 0; i < size; ++i) file[offset + i] = static_cast<uint8_t>(value >> (8 * i));
  };
  for (const Number& n : Numbers()) put(n.offset, n.size, n.field(m));
  for (size_t i = 0; i < 256; ++i) file[99 + i] = m.PortShadow[i];
  file[415] = m.run.CpuRunning;
  for (size_t i = 0; i < 19; ++i) put(499 + 4 * i, 4, m.crtc.CrtcRegs[i]);
  for (size_t i = 0; i < 0x3C001; ++i) file[kMemory + i] = m.MemImage[i];
  return file;
}

TEST_F(SnapshotTest, TheFileIsLaidOutAsOthersReadIt) {
  Fill(m, 1);
  EXPECT_TRUE(SaveSnapshot(m, Path("game")));
  const Bytes file = ReadAll("game.tvs");
  ASSERT_EQ(file.size(), kSize);
  EXPECT_TRUE(file == FileOf(m));
  EXPECT_TRUE(host.messages.empty());
}

// A few places with plain numbers, so that the layout does not hang on the table above alone.
TEST_F(SnapshotTest, SomePlacesOfTheFile) {
  m.z80.A = 0x11;
  m.z80.L = 0x22;
  m.z80.A2 = 0x33;
  m.z80.L2 = 0x44;
  m.z80.FlagS = m.z80.FlagC = m.z80.AltFlagS = m.z80.AltFlagC = 0;
  m.z80.FlagZ = m.z80.FlagN = m.z80.AltFlagY = m.z80.AltFlagPV = 1;
  m.z80.FlagY = m.z80.FlagH = m.z80.FlagX = m.z80.FlagPV = 0;
  m.z80.AltFlagZ = m.z80.AltFlagH = m.z80.AltFlagX = m.z80.AltFlagN = 0;
  m.z80.IX = 0x1234;
  m.z80.PC = 0x12345;
  m.z80.IM = 1;
  m.PortShadow[0] = 0x55;
  m.PortShadow[255] = 0x66;
  m.run.ResetRequest = 1;
  m.z80.IrqLine = 1;
  m.run.CpuRunning = 1;
  m.crtc.CrtcRegs[0] = 0x01020304;
  m.crtc.CrtcRegs[18] = -1;
  m.MemImage[0] = 0x77;
  m.MemImage[0x3C000] = 0x88;
  SaveSnapshot(m, Path("a"));
  const Bytes f = ReadAll("a.tvs");
  ASSERT_EQ(f.size(), kSize);
  const auto part = [&](size_t from, size_t size) {
    return Bytes(f.begin() + static_cast<ptrdiff_t>(from), f.begin() + static_cast<ptrdiff_t>(from + size));
  };
  EXPECT_EQ(part(0, 19),
            (Bytes{'Q', 'U', 'O', 'L', 'L', 'E', 'M', 'U', '0', '2', 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(f[19], 0x11);
  EXPECT_EQ(f[25], 0x22);
  EXPECT_EQ(f[26], 0x33);
  EXPECT_EQ(f[32], 0x44);
  EXPECT_EQ(part(33, 8), (Bytes{0, 0, 1, 0, 0, 1, 0, 0}));
  EXPECT_EQ(part(41, 8), (Bytes{0, 1, 0, 0, 0, 0, 1, 0}));
  EXPECT_EQ(part(49, 4), (Bytes{0x34, 0x12, 0, 0}));
  EXPECT_EQ(part(61, 4), (Bytes{0x45, 0x23, 0x01, 0}));
  EXPECT_EQ(part(81, 4), (Bytes{1, 0, 0, 0}));
  EXPECT_EQ(part(85, 14), Bytes(14, 0));
  EXPECT_EQ(f[99], 0x55);
  EXPECT_EQ(f[354], 0x66);
  EXPECT_EQ(part(355, 48), Bytes(48, 0));
  EXPECT_EQ(part(403, 13), (Bytes{1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1}));
  EXPECT_EQ(part(416, 83), Bytes(83, 0));
  EXPECT_EQ(part(499, 4), (Bytes{4, 3, 2, 1}));
  EXPECT_EQ(part(571, 4), (Bytes{0xFF, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(part(575, 24), Bytes(24, 0));
  EXPECT_EQ(f[599], 0x77);
  EXPECT_EQ(f[246359], 0x88);
}

TEST_F(SnapshotTest, LoadingGivesBackWhatWasSaved) {
  Fill(m, 1);
  SaveSnapshot(m, Path("a"));
  TestMachine other;
  Fill(*other, 2);
  EXPECT_TRUE(LoadSnapShot(*other, Path("a.tvs")));
  ExpectSameHeld(m, *other);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(SnapshotTest, PendingRequestsComeBack) {
  m.run.ResetRequest = 1;
  m.z80.IrqLine = 1;
  m.run.NmiRequest = 1;
  SaveSnapshot(m, Path("a"));
  m.run.ResetRequest = m.z80.IrqLine = m.run.NmiRequest = 0;
  LoadSnapShot(m, Path("a.tvs"));
  EXPECT_EQ(m.run.ResetRequest, 1);
  EXPECT_EQ(m.z80.IrqLine, 1);
  EXPECT_EQ(m.run.NmiRequest, 1);
}

TEST_F(SnapshotTest, TheRestOfTheMachineGoesOnAsItIs) {
  SaveSnapshot(m, Path("a"));
  m.keyboard.KeyMatrix[3] = 0x12;
  m.palette.PalHistory[1][7] = 0x45;
  m.palette.BorderLines[9] = 77;
  m.pen.LpenLow = 5;
  m.tape.Level = 1;
  m.run.FrameClock = 1234;
  m.run.ToneItCounter = 99;
  m.tone.toggle = 1;
  m.CartName = "x.crt";
  m.screen.x32KB = true;
  const auto before = CopyOf(m);
  LoadSnapShot(m, Path("a.tvs"));
  EXPECT_EQ(m.keyboard, before->keyboard);
  EXPECT_EQ(m.palette, before->palette);
  EXPECT_EQ(m.pen, before->pen);
  EXPECT_EQ(m.tape, before->tape);
  EXPECT_EQ(m.tone, before->tone);
  EXPECT_EQ(m.mixer, before->mixer);
  EXPECT_EQ(m.random, before->random);
  EXPECT_EQ(m.run.FrameClock, 1234);
  EXPECT_EQ(m.run.ToneItCounter, 99);
  EXPECT_EQ(m.CartName, "x.crt");
  EXPECT_TRUE(m.screen.x32KB);
}

// Numbers that no machine writes: bytes and flags are brought into range, wide ones taken whole.
TEST_F(SnapshotTest, StrangeNumbersAreBroughtIntoRange) {
  Bytes file = FileOf(m);
  for (size_t at = 33; at < 49; ++at) file[at] = static_cast<uint8_t>(at);  // bit 0 counts
  for (size_t at = 49; at < 85; ++at) file[at] = 0xFF;
  for (size_t at = 499; at < 575; ++at) file[at] = 0x80;
  file[415] = 7;
  WriteAll("a.tvs", file);
  EXPECT_TRUE(LoadSnapShot(m, "a.tvs"));
  EXPECT_EQ(m.z80.AltFlagS, 1);
  EXPECT_EQ(m.z80.AltFlagZ, 0);
  EXPECT_EQ(m.z80.FlagS, 1);
  EXPECT_EQ(m.z80.FlagC, 0);
  for (const Number& n : Numbers()) {
    const bool wide = n.offset >= 49 && n.offset < 85;
    EXPECT_TRUE(!wide || n.field(m) == -1) << n.offset;
  }
  EXPECT_EQ(m.crtc.CrtcRegs[18], static_cast<int32_t>(0x80808080U));
  EXPECT_EQ(m.run.CpuRunning, 7);
}

// All 32 bits of the nine wide numbers and of the interrupt request, and of the CRTC: what is saved again is
// the very file.
TEST_F(SnapshotTest, AFileComesBackByteForByte) {
  Fill(m, 1);
  int32_t value = 0x12345678;
  for (const Number& n : Numbers()) {
    if (n.size == 4) n.field(m) = value ^= 0x5A5A5A5A << n.offset % 7;
  }
  const Bytes file = FileOf(m);
  WriteAll("a.tvs", file);
  TestMachine other;
  EXPECT_TRUE(LoadSnapShot(*other, Path("a.tvs")));
  EXPECT_TRUE(SnapshotBytes(*other) == file);
}

// A register that no instruction has written is as wide as it was loaded.
TEST_F(SnapshotTest, WideRegistersOutliveARun) {
  m.z80.IX = 0x12345;
  m.z80.IY = -2;
  m.z80.SP = 0x7FFFFFFF;
  m.z80.I = 0x400;
  m.z80.IFF2 = 0x100;
  const Bytes file = SnapshotBytes(m);
  TestMachine other;
  ApplySnapshot(*other, file);
  other.host.framesAllowed = 3;
  Program(*other, 0x4000, {0x18, 0xFE});  // JR to itself
  RunOn(*other);
  EXPECT_EQ(other->z80.IX, 0x12345);
  EXPECT_EQ(other->z80.IY, -2);
  EXPECT_EQ(other->z80.SP, 0x7FFFFFFF);
  EXPECT_EQ(other->z80.I, 0x400);
  EXPECT_EQ(other->z80.IFF2, 0x100);
}

// The loaded paging holds for the very next instruction, also when the machine ran on other pages before.
TEST_F(SnapshotTest, TheLoadedPagingHoldsAtOnce) {
  m.PortShadow[2] = 0xB0;
  m.MemImage[0x0010] = 0xAA;
  SaveSnapshot(m, Path("a"));
  m.PortShadow[2] = 0x00;
  m.MemImage[0x0010] = 0xBB;
  RenewPages(m);
  LoadSnapShot(m, Path("a.tvs"));
  EXPECT_EQ(*reinterpret_cast<const uint8_t*>(m.pages.read[PageMap::kBelow] + 0x10), 0xAA);
}

// Foreign files touch nothing and say so.
struct Foreign {
  const char* name;
  Bytes content;
};

class ForeignSnapshotTest : public FolderTest, public testing::WithParamInterface<int> {
 public:
  static Foreign Make(int which) {
    const Bytes first = {'Q', 'U', 'O', 'L', 'L', 'E', 'M', 'U', '0'};
    Bytes older(kSize, 1), small(kSize, 1), lower(kSize, 1);
    const std::string names[] = {"QUOLLEMU01", "quollemu02", "TS01CPU \x09"};
    std::ranges::copy(names[0], older.begin());
    std::ranges::copy(names[1], lower.begin());
    std::ranges::copy(names[2], small.begin());
    switch (which) {
      case 0: return {"older", older};
      case 1: return {"small letters", lower};
      case 2: return {"the other format", small};
      case 3: return {"nine bytes", first};
      case 4: return {"empty", {}};
      default: return {"noise", Pattern(kSize)};
    }
  }
};

TEST_P(ForeignSnapshotTest, IsRefused) {
  const Foreign foreign = Make(GetParam());
  SCOPED_TRACE(foreign.name);
  WriteAll("a.tvs", foreign.content);
  Fill(m, 3);
  m.z80.Halted = 1;
  const auto before = CopyOf(m);
  EXPECT_FALSE(LoadSnapShot(m, Path("a.tvs")));
  ExpectSameHeld(m, *before);
  EXPECT_EQ(m.z80, before->z80);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text, "Snapshot not valid!");
  EXPECT_EQ(host.messages[0].title, "Error");
}

INSTANTIATE_TEST_SUITE_P(Kinds, ForeignSnapshotTest, testing::Range(0, 6));

TEST_F(SnapshotTest, AMissingFileIsRefusedAndNotMade) {
  Fill(m, 3);
  const auto before = CopyOf(m);
  EXPECT_FALSE(LoadSnapShot(m, Path("none.tvs")));
  EXPECT_FALSE(LoadSnapShot(m, folder.string()));
  EXPECT_FALSE(LoadSnapShot(m, ""));
  ExpectSameHeld(m, *before);
  ASSERT_EQ(host.messages.size(), 3U);
  EXPECT_EQ(host.messages[0].text, Path("none.tvs") + ": No such file or directory");
  EXPECT_EQ(host.messages[1].text, folder.string() + ": it is a directory");
  EXPECT_EQ(host.messages[2].text, ": No such file or directory");
  for (const auto& box : host.messages) EXPECT_EQ(box.title, "Error");
  EXPECT_TRUE(Names().empty());
}

TEST_F(SnapshotTest, WhatFollowsTheLayoutIsNotLookedAt) {
  Fill(m, 1);
  Bytes file = FileOf(m);
  file.resize(kSize + 100'000, 0xEE);
  WriteAll("a.tvs", file);
  TestMachine other;
  EXPECT_TRUE(LoadSnapShot(*other, Path("a.tvs")));
  ExpectSameHeld(m, *other);
  EXPECT_TRUE(host.messages.empty());
}

// Every length from the bare name on past the CRTC, and some in the memory: a number comes from the file when
// all of it is there, ports and memory as far as they go.
TEST_F(SnapshotTest, ACutFileGivesWhatIsThere) {
  Fill(m, 1);
  const Bytes file = FileOf(m);
  TestMachine older;
  Fill(*older, 2);
  older->z80.Halted = 1;
  std::vector<size_t> lengths = {1000, 100'000, kSize - 1};
  for (size_t length = 10; length <= kMemory + 2; ++length) lengths.push_back(length);
  for (const size_t length : lengths) {
    SCOPED_TRACE(length);
    const auto got = CopyOf(*older);
    EXPECT_EQ(ApplySnapshot(*got, std::span(file).first(length)), SnapshotResult::CutShort);
    const auto whole = [&](size_t offset, size_t size) { return offset + size <= length; };
    for (const Number& n : Numbers()) {
      EXPECT_EQ(n.field(*got), n.field(whole(n.offset, n.size) ? m : *older)) << n.offset;
    }
    const auto mixed = [&](const auto& bytes, const auto& olderBytes, const auto& now, size_t offset) {
      const size_t there = std::clamp(length, offset, offset + bytes.size()) - offset;
      return std::equal(now.begin(), now.begin() + there, bytes.begin()) &&
             std::equal(now.begin() + there, now.end(), olderBytes.begin() + there);
    };
    EXPECT_TRUE(mixed(m.PortShadow, older->PortShadow, got->PortShadow, 99));
    EXPECT_EQ(got->run.CpuRunning, (whole(415, 1) ? m : *older).run.CpuRunning);
    EXPECT_TRUE(mixed(m.MemImage, older->MemImage, got->MemImage, kMemory));
    EXPECT_EQ(got->z80.Halted, whole(61, 4) ? 0 : 1);
    if (HasFailure()) return;
  }
  EXPECT_EQ(ApplySnapshot(*older, file), SnapshotResult::Whole);
  ExpectSameHeld(*older, m);
}

TEST_F(SnapshotTest, TheUserIsToldOfACutFile) {
  Bytes file = FileOf(m);
  file.resize(5000);
  WriteAll("a.tvs", file);
  EXPECT_TRUE(LoadSnapShot(m, Path("a.tvs")));
  ExpectBox(Path("a.tvs"), "the file was cut short: it has 5000 of 246360 bytes");
}

TEST_F(SnapshotTest, TheExtensionIsAppendedOnce) {
  SaveSnapshot(m, Path("one"));
  SaveSnapshot(m, Path("two.tvs"));
  SaveSnapshot(m, "three.cas");
  EXPECT_EQ(Names(), (std::vector<std::string>{"one.tvs", "three.cas.tvs", "two.tvs"}));
}

TEST_F(SnapshotTest, AFailedSaveKeepsTheOldFileAndIsTold) {
  WriteAll("a.tvs", {1, 2, 3});
  {
    const FullDisk full(100'000);
    EXPECT_FALSE(SaveSnapshot(m, Path("a")));
  }
  ExpectBox(Path("a.tvs"), "File too large");
  EXPECT_EQ(ReadAll("a.tvs"), (Bytes{1, 2, 3}));
  host.messages.clear();
  EXPECT_FALSE(SaveSnapshot(m, Path("a.tvs/b")));
  ExpectBox(Path("a.tvs/b.tvs"), "Not a directory");
  host.messages.clear();
  {
    const ReadOnlyFolder readOnly(folder);
    EXPECT_FALSE(SaveSnapshot(m, Path("a")));
  }
  ExpectBox(Path("a.tvs"), "Permission denied");
  EXPECT_EQ(ReadAll("a.tvs"), (Bytes{1, 2, 3}));
  EXPECT_EQ(Names(), (std::vector<std::string>{"a.tvs"}));
}

}  // namespace

}  // namespace quoll::test
