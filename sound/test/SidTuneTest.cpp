#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sound/SidTune.h"

namespace quoll {
namespace {

std::span<const uint8_t> BytesOf(const std::string& text) {
  return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

// A line in which nothing changes.
std::string DotLine() { return std::string(120, '.'); }

// The line with a text from a column on, counted from 1.
std::string With(std::string line, size_t column, const std::string& text) {
  return line.replace(column - 1, text.size(), text);
}

Sid6581 Filled() {
  Sid6581 chip;
  chip.SID_Reg.fill(0x5A);
  return chip;
}

struct FieldRow {
  size_t column;
  const char* text;
  int reg, value;
};
const FieldRow kFieldRows[] = {
    {11, "12", 1, 0x12},  {13, "34", 0, 0x34},  {25, "41", 4, 0x41},  {28, "9", 5, 0x9A},
    {29, "9", 5, 0x59},   {30, "9", 6, 0x9A},   {31, "9", 6, 0x59},   {33, "8", 3, 0x08},
    {34, "C7", 2, 0xC7},  {39, "12", 8, 0x12},  {41, "34", 7, 0x34},  {53, "41", 11, 0x41},
    {56, "9", 12, 0x9A},  {57, "9", 12, 0x59},  {58, "9", 13, 0x9A},  {59, "9", 13, 0x59},
    {61, "8", 10, 0x08},  {62, "C7", 9, 0xC7},  {67, "12", 15, 0x12}, {69, "34", 14, 0x34},
    {81, "41", 18, 0x41}, {84, "9", 19, 0x9A},  {85, "9", 19, 0x59},  {86, "9", 20, 0x9A},
    {87, "9", 20, 0x59},  {89, "8", 17, 0x08},  {90, "C7", 16, 0xC7}, {95, "3e", 22, 0x3E},
    {97, "07", 21, 0x07}, {100, "F", 23, 0xFA}, {101, "3", 23, 0x53}, {107, "C", 24, 0x0C}};

TEST(Sidx, EveryFieldHasItsColumns) {
  for (const auto& row : kFieldRows) {
    Sid6581 chip = Filled();
    EXPECT_EQ(SidxLine(With(DotLine(), row.column, row.text), chip), "");
    Sid6581 expected = Filled();
    expected.SID_Reg[row.reg] = row.value;
    EXPECT_EQ(chip, expected) << row.column;
  }
}

TEST(Sidx, DotsLeaveEverything) {
  Sid6581 chip = Filled();
  EXPECT_EQ(SidxLine(DotLine(), chip), "");
  EXPECT_EQ(chip, Filled());
}

struct WordRow {
  const char* word;
  int value;
};
const WordRow kWordRows[] = {{"Low", 16}, {"Bnd", 32}, {"L+B", 48}, {"L+H", 80}, {"B+H", 96}, {"LBH", 112},
                             {"Off", 0},  {"Hi ", 0},  {"...", 0},  {"Typ", 0},  {"---", 0}};

TEST(Sidx, FilterWordIsAddedToTheVolume) {
  for (const auto& row : kWordRows) {
    Sid6581 chip = Filled();
    EXPECT_EQ(SidxLine(With(With(DotLine(), 103, row.word), 107, "D"), chip), "") << row.word;
    EXPECT_EQ(chip.SID_Reg[24], row.value + 13) << row.word;
    chip = Filled();
    EXPECT_EQ(SidxLine(With(DotLine(), 103, row.word), chip), "") << row.word;
    EXPECT_EQ(chip.SID_Reg[24], 0x5A) << row.word;
  }
}

TEST(Sidx, AnUnknownFilterWordIsReportedAndCountsAsNone) {
  Sid6581 chip = Filled();
  EXPECT_EQ(SidxLine(With(With(DotLine(), 103, "low"), 107, "D"), chip), "low");
  EXPECT_EQ(chip.SID_Reg[24], 13);
}

TEST(Sidx, MissingAndBadFieldsLeaveTheirRegisters) {
  for (const std::string& line :
       {std::string{}, std::string(10, ' '), With(DotLine(), 11, "..zz").substr(0, 26)}) {
    Sid6581 chip = Filled();
    EXPECT_EQ(SidxLine(line, chip), "") << line;
    EXPECT_EQ(chip, Filled()) << line;
  }
  Sid6581 chip = Filled();
  SidxLine(With(DotLine(), 25, "4").substr(0, 25), chip);  // cut within the field
  EXPECT_EQ(chip, Filled());
}

std::string Header() { return "1\n2\r\n3\r4\n\n6\n7\n"; }

TEST(SidTune, SidxPlaysALineAFrameAfterSevenLines) {
  SidTune tune;
  const std::string file = Header() + With(DotLine(), 25, "11") + "\r\n" + With(DotLine(), 25, "22") + "\n" +
                           With(DotLine(), 25, "33");
  EXPECT_TRUE(SidTuneOpen(tune, SidTuneFormat::Sidx, BytesOf(file)).opened);
  Sid6581 chip;
  for (const int control : {0x11, 0x22, 0x33, 0x33}) {
    EXPECT_EQ(SidTuneStep(tune, SidTuneFormat::Sidx, chip), "");
    EXPECT_EQ(chip.SID_Reg[4], control);
  }
}

TEST(SidTune, DmpPlaysARecordAFrame) {
  std::vector<uint8_t> bytes;
  for (int i = 0; i < 50; ++i) bytes.push_back(static_cast<uint8_t>(i + 1));
  SidTune tune;
  const SidTuneResult result = SidTuneOpen(tune, SidTuneFormat::Dmp, bytes);
  EXPECT_TRUE(result.opened);
  EXPECT_EQ(result.message, "");
  Sid6581 chip = Filled();
  for (const int first : {1, 26, 26}) {
    SidTuneStep(tune, SidTuneFormat::Dmp, chip);
    for (int i = 0; i < 25; ++i) EXPECT_EQ(chip.SID_Reg[i], first + i);
    for (int i = 25; i < 29; ++i) EXPECT_EQ(chip.SID_Reg[i], 0x5A);
  }
}

TEST(SidTune, ARecordCutShortIsToldAndNotPlayed) {
  std::vector<uint8_t> bytes(49, 7);
  SidTune tune;
  const SidTuneResult result = SidTuneOpen(tune, SidTuneFormat::Dmp, bytes);
  EXPECT_TRUE(result.opened);
  EXPECT_NE(result.message, "");
  Sid6581 chip;
  SidTuneStep(tune, SidTuneFormat::Dmp, chip);
  EXPECT_EQ(chip.SID_Reg[24], 7);
  chip = Filled();
  SidTuneStep(tune, SidTuneFormat::Dmp, chip);
  EXPECT_EQ(chip, Filled());
}

TEST(SidTune, BadFilesAreRefusedAndTheOpenOneStays) {
  SidTune tune;
  ASSERT_TRUE(SidTuneOpen(tune, SidTuneFormat::Dmp, std::vector<uint8_t>(25, 7)).opened);
  const SidTune before = tune;
  const std::vector<uint8_t> huge(kSidTuneMostBytes + 1, '.');
  const std::string sixLines = "1\n2\n3\n4\n5\n6\n";
  const std::string longLine(100, 'x');
  struct Row {
    SidTuneFormat format;
    std::span<const uint8_t> bytes;
  };
  const std::string header = Header();
  for (const Row& row :
       {Row{SidTuneFormat::Dmp, {}}, Row{SidTuneFormat::Sidx, {}}, Row{SidTuneFormat::Dmp, huge},
        Row{SidTuneFormat::Sidx, huge}, Row{SidTuneFormat::Sidx, BytesOf(sixLines)},
        Row{SidTuneFormat::Sidx, BytesOf(header)}, Row{SidTuneFormat::Sidx, BytesOf(longLine)},
        Row{SidTuneFormat::Dmp, BytesOf(longLine).first(24)}}) {
    const SidTuneResult result = SidTuneOpen(tune, row.format, row.bytes);
    EXPECT_FALSE(result.opened) << row.bytes.size();
    EXPECT_NE(result.message, "");
    EXPECT_EQ(tune, before);
  }
}

TEST(SidTune, ClosedAndNoneDoNothing) {
  SidTune tune;
  Sid6581 chip = Filled();
  for (const SidTuneFormat format : {SidTuneFormat::None, SidTuneFormat::Sidx, SidTuneFormat::Dmp}) {
    EXPECT_EQ(SidTuneStep(tune, format, chip), "");
  }
  ASSERT_TRUE(SidTuneOpen(tune, SidTuneFormat::Dmp, std::vector<uint8_t>(25, 7)).opened);
  EXPECT_EQ(SidTuneStep(tune, SidTuneFormat::None, chip), "");
  EXPECT_EQ(tune.place, 0U);
  SidTuneClose(tune);
  SidTuneStep(tune, SidTuneFormat::Dmp, chip);
  EXPECT_EQ(chip, Filled());
}

// A tune moves on in a frame whose volume is 0: reading and rendering are two calls.
TEST(SidTune, AdvancesWhileSilent) {
  std::vector<uint8_t> bytes(50, 0);
  bytes[49] = 15;
  SidTune tune;
  ASSERT_TRUE(SidTuneOpen(tune, SidTuneFormat::Dmp, bytes).opened);
  Sid6581 chip;
  Random random;
  for (const int silent : {1, 0}) {
    SidTuneStep(tune, SidTuneFormat::Dmp, chip);
    SidRender(chip, {}, random);
    EXPECT_EQ(chip.silent, silent);
  }
}

}  // namespace
}  // namespace quoll
