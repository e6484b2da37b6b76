// What is typed into the Z80 monitor: limits, clamps, and what changes nothing.
#include <array>

#include "forms/CPUmonFields.h"
#include "forms/test/MonitorBench.h"
#include "testkit/FolderTest.h"

namespace quoll::test {
namespace {

using CPUmonEdit = MonitorBench;

struct Typed {
  const char* text;
  int32_t value;      // that the field has afterwards
  const char* shown;  // in the box
};
constexpr int32_t kBefore = 1;

void ExpectTyped(MonitorBench& bench, const char* box, int index, int32_t Z80State::*field,
                 std::span<const Typed> rows) {
  for (const Typed& row : rows) {
    SCOPED_TRACE(std::string(box) + "(" + std::to_string(index) + ") " + row.text);
    bench.m->z80.*field = kBefore;
    Z80State expected = bench.m->z80;
    expected.*field = row.value;
    const uint32_t redraws = bench.m->cpumon.shown.redraws;
    bench.Enter(box, row.text, index);
    EXPECT_EQ(bench.m->z80, expected);
    EXPECT_EQ(bench.m->cpumon.shown.redraws, redraws + 1);
    EXPECT_EQ(bench.Text(box, index), row.shown);
  }
}

TEST_F(CPUmonEdit, EightBitRegisters) {
  constexpr Typed kRows[] = {{"1FF", 255, "FF"},    {"100", 255, "FF"}, {"FF", 255, "FF"},
                             {"7f", 127, "7F"},     {"0", 0, "00"},     {"FFFFFFFF", 0, "00"},
                             {"80000000", 0, "00"}, {"", 1, "01"},      {"-1", 1, "01"},
                             {"G", 1, "01"},        {"0x10", 1, "01"}};
  for (int i = 0; i < 14; ++i)
    ExpectTyped(*this, "Text1", i, kMonitorRegisters[static_cast<size_t>(i)], kRows);
}

TEST_F(CPUmonEdit, WideAndSpecialRegisters) {
  constexpr Typed kWide[] = {{"12345", 65535, "FFFF"}, {"FFFF", 65535, "FFFF"}, {"abc", 0xABC, "0ABC"},
                             {"FFFFFFFF", 0, "0000"},  {"0", 0, "0000"},        {"x", 1, "0001"}};
  constexpr Typed kSpecial[] = {{"12345", 65535, "FFFF"}, {"1234", 0x1234, "1234"}, {"7F", 0x7F, "7F"},
                                {"FFFFFFFF", 0, "00"},    {"0", 0, "00"},           {"x", 1, "01"}};
  constexpr std::array kFields{&Z80State::IX, &Z80State::SP, &Z80State::IY,
                               &Z80State::PC, &Z80State::I,  &Z80State::R};
  for (int i = 0; i < 6; ++i) {
    const std::span<const Typed> rows = i < 4 ? std::span<const Typed>(kWide) : kSpecial;
    ExpectTyped(*this, "Text3", i, kFields[static_cast<size_t>(i)], rows);
  }
}

TEST_F(CPUmonEdit, InterruptFlipFlopsAndMode) {
  constexpr Typed kFlipFlop[] = {
      {"0", 0, "0"}, {"1", 1, "1"}, {"5", 5, "5"}, {"1F", 31, "31"}, {"?", 1, "1"}};
  constexpr Typed kMode[] = {{"0", 0, "0"}, {"2", 2, "2"},        {"3", 3, "3"},
                             {"4", 0, "0"}, {"FFFFFFFF", 3, "3"}, {"A", 2, "2"}};
  ExpectTyped(*this, "Text4", 0, &Z80State::IFF1, kFlipFlop);
  ExpectTyped(*this, "Text4", 1, &Z80State::IFF2, kFlipFlop);
  ExpectTyped(*this, "Text4", 2, &Z80State::IM, kMode);
}

TEST_F(CPUmonEdit, FlagsButThoseWithoutAName) {
  constexpr Typed kFlag[] = {
      {"0", 0, "0"}, {"1", 1, "1"}, {"2", 1, "1"}, {"FF", 1, "1"}, {"80000000", 0, "0"}};
  constexpr Typed kNameless[] = {{"0", 1, "1"}, {"1", 1, "1"}, {"FF", 1, "1"}};
  for (int i = 0; i < 16; ++i) {
    const bool nameless = i % 8 == 2 || i % 8 == 4;
    const std::span<const Typed> rows = nameless ? std::span<const Typed>(kNameless) : kFlag;
    ExpectTyped(*this, "Text2", i, kMonitorFlags[static_cast<size_t>(i)], rows);
  }
}

// Without Enter nothing of the machine changes, whatever is typed and wherever.
TEST_F(CPUmonEdit, TypingAloneChangesNothing) {
  const Z80State before = m->z80;
  for (const auto& [box, count] : {std::pair("Text1", 14), {"Text2", 16}, {"Text3", 6}, {"Text4", 3}}) {
    for (int i = 0; i < count; ++i) Type(box, "1", i);
  }
  EXPECT_EQ(m->z80, before);
  EXPECT_EQ(m->cpumon.shown.redraws, 0U);
}

TEST_F(CPUmonEdit, TheAccumulatorIsShownInBits) {
  Enter("Text1", "A5");
  std::string bits;
  for (int i = 0; i < 8; ++i) bits += Text("TextA", i);
  EXPECT_EQ(bits, "10100101");
}

TEST_F(CPUmonEdit, ViewAddressesAreDecimal) {
  struct Row {
    const char* typed;
    const char* address;
    int32_t memoryBar, portBar;
  };
  constexpr Row kRows[] = {{"4096", "4096", 4096, 255},
                           {"77", "77", 77, 77},
                           {"65534", "65534", 65534, 255},
                           {"65535", "65535", 65535, 255},
                           {"65536", "65535", 65535, 255},
                           {"99999999999999999999", "65535", 65535, 255},
                           {"-1", "0", 0, 0},
                           {"-99999999999999999999", "0", 0, 0},
                           {"", "0", 0, 0},
                           {"&H10", "0", 0, 0},
                           {"1A", "1", 1, 1},
                           {" 12 ", "12", 12, 12}};
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.typed);
    Enter("Text10", row.typed);
    EXPECT_EQ(Text("Text10"), row.address);
    EXPECT_EQ(m->cpumon.VScroll1.value, row.memoryBar);
    Enter("Text11", row.typed);
    EXPECT_EQ(Text("Text11"), row.address);
    EXPECT_EQ(m->cpumon.VScroll2.value, row.portBar);
  }
}

TEST_F(CPUmonEdit, TheScrollBarsMoveTheViews) {
  m->MemImage[0xABCD] = 0x5A;
  m->PortShadow[0x21] = 0x77;
  SetScroll(*m, Ref("VScroll1"), 0xABCD);
  SetScroll(*m, Ref("VScroll2"), 0x21);
  EXPECT_EQ(Text("Text10"), "43981");
  EXPECT_EQ(Text("Text11"), "33");
  EXPECT_TRUE(Text("Picture2").starts_with("ABCD: 5A "));
  EXPECT_TRUE(Text("Picture3").starts_with("0021: 77 "));
}

// A view follows its box at the next redraw, also one whose text was not entered.
TEST_F(CPUmonEdit, WhateverStandsInAnAddressBoxIsSafe) {
  for (const char* typed : {"-5", "-2147483648", "2147483647", "1e300", "inf", "nonsense"}) {
    Type("Text10", typed);
    Type("Text11", typed);
    Press("Command5");
    EXPECT_EQ(Text("Picture2").size(), 8 * (6 + 48 + 16) + 7 * 2 + (typed[0] == '2' ? 7U : 0U)) << typed;
    EXPECT_NE(Text("Picture3"), "");
  }
}

TEST_F(CPUmonEdit, PokeReadsDecimalAndHexadecimal) {
  struct Row {
    const char *address, *value;
    int32_t place;
    int expected;
  };
  constexpr Row kRows[] = {
      {"&H4321", "171", 0x4321, 171}, {"16384", "&Hff", 0x4000, 255}, {"&H4000", "257", 0x4000, 1}};
  for (const Row& row : kRows) {
    Type("Text12", row.address);
    Type("Text13", row.value);
    Press("Command3");
    EXPECT_EQ(m->MemImage[static_cast<size_t>(row.place)], row.expected) << row.address;
  }
  EXPECT_EQ(m->cpumon.shown.redraws, 3U);
}

// As a program's own store does.
TEST_F(CPUmonEdit, PokeIntoACardsWindowEndsTheProgram) {
  m->PortShadow[2] = 0xF0;
  m->PortShadow[3] = 0x40;
  Type("Text12", "&HC000");
  EXPECT_TRUE(EndsProgram([&] { Press("Command3"); }));
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text, " CTL 1-3 IOM write????");
}

struct LoadBin : FolderTest {
  ListBox& list = m.cpumon.File1;

  void Show() { quoll::Press(m, TheControl("TScreen", "xDebug")); }
  void Load(const std::string& name) {
    for (size_t i = 0; i < list.entries.size(); ++i) {
      if (list.entries[i] == name) ChooseEntry(m, TheControl("CPUmon", "File1"), static_cast<int32_t>(i));
    }
    quoll::Press(m, TheControl("CPUmon", "Command8"));
  }
};

TEST_F(LoadBin, ListsBinariesOnly) {
  for (const char* name : {"b.obj", "A.ROM", "c.Bin", "d.cas", "bin", "e.bin.txt"}) WriteAll(Path(name), {1});
  Show();
  EXPECT_TRUE(m.cpumon.window.visible);
  EXPECT_EQ(list.entries, (std::vector<std::string>{"A.ROM", "b.obj", "c.Bin"}));
}

TEST_F(LoadBin, StoresStraightIntoRam) {
  WriteAll(Path("three.bin"), {0xAA, 0xBB, 0xCC});
  m.PortShadow[2] = 0;  // ROM at address 0
  m.MemImage[3] = 0x11;
  Show();
  const uint32_t redraws = m.cpumon.shown.redraws;
  Load("three.bin");
  EXPECT_EQ(m.MemImage[0], 0xAA);
  EXPECT_EQ(m.MemImage[2], 0xCC);
  EXPECT_EQ(m.MemImage[3], 0x11);
  EXPECT_EQ(m.MemImage[kSysLow], 0);
  EXPECT_EQ(m.cpumon.shown.redraws, redraws + 1);
}

TEST_F(LoadBin, TakesNoMoreThan64KB) {
  Bytes bytes(0x10001, 0x33);
  WriteAll(Path("long.rom"), bytes);
  Show();
  Load("long.rom");
  EXPECT_EQ(m.MemImage[0xFFFF], 0x33);
  EXPECT_EQ(m.MemImage[0x10000], 0);
}

// The list's folder stays what it was when the window was asked for.
TEST_F(LoadBin, LoadsFromTheFolderThatIsListed) {
  std::filesystem::create_directory(folder / "there");
  WriteAll(folder / "there" / "x.bin", {0x44});
  WriteAll(Path("x.bin"), {0x55});
  m.panel.folder = (folder / "there").string();
  Show();
  m.panel.folder = folder.string();
  Load("x.bin");
  EXPECT_EQ(m.MemImage[0], 0x44);
}

TEST_F(LoadBin, TellsWhatWentWrong) {
  WriteAll(Path("gone.bin"), {1});
  Show();
  Load("no such entry");
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text, "Choose a file from the list.");
  std::filesystem::remove(Path("gone.bin"));
  host.messages.clear();
  const auto before = m.MemImage;
  Load("gone.bin");
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_NE(host.messages[0].text.find("gone.bin"), std::string::npos);
  EXPECT_EQ(m.MemImage, before);
}

}  // namespace
}  // namespace quoll::test
