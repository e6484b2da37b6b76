// The assembler's opcode help.
#include "forms/test/AsseBench.h"

namespace quoll::test {
namespace {

using List = std::vector<std::string>;

constexpr int kDelay = 3;

struct AsseHelpTest : AsseBench {
  AsseHelp& help = form.help;

  // The list for a caret at the end of a source.
  List ListFor(std::string_view source) {
    Type("RText1", source);
    Caret(static_cast<int32_t>(source.size()));
    help.List2.Fill({"old"});
    Tick(kDelay);
    return help.List2.entries;
  }
};

TEST_F(AsseHelpTest, TheTimerWaitsAfterTheLastKey) {
  Type("RText1", "xxdjnz");
  Type("RText1", "djnz");
  Caret(4);
  Tick(kDelay - 1);
  Type("RText1", "djnz ");
  Tick(kDelay - 1);
  EXPECT_TRUE(help.List2.entries.empty());
  Caret(5);
  Tick(kDelay - 1);
  EXPECT_TRUE(help.List2.entries.empty());
  Tick();
  EXPECT_EQ(help.List2.entries, (List{"DJNZ (PC+e)"}));
  help.List2.Fill({});
  Tick(10);  // it has turned itself off
  EXPECT_TRUE(help.List2.entries.empty());
}

TEST_F(AsseHelpTest, WhatStopsTheTimer) {
  for (const char* entry : {"xFormat", "xOpen", "xSave"}) {
    Type("RText1", "djnz");
    Caret(4);
    Press(entry);
    Tick(10);
    EXPECT_TRUE(help.List2.entries.empty()) << entry;
  }
}

TEST_F(AsseHelpTest, RowsThatBeginLikeTheLine) {
  EXPECT_EQ(ListFor("ex a"), (List{"EX AF,AF\xE2\x80\x99"}));
  for (const std::string& row : ListFor("nop\r\n  ld   sp ,'text"))
    EXPECT_TRUE(row.starts_with("LD SP,")) << row;
  EXPECT_EQ(help.List2.entries.size(), 5U);
  EXPECT_EQ(ListFor("\xC3\xA1:\ndi"), (List{"DI"}));
}

TEST_F(AsseHelpTest, UndocumentedRowsWantTheirBox) {
  EXPECT_EQ(ListFor("sll"), List{});
  SetTick(m, Ref("Check1"), true);
  EXPECT_EQ(ListFor("sll b"), (List{"SLL B*"}));
}

TEST_F(AsseHelpTest, TheListStaysWhereThereIsNothingToAskFor) {
  EXPECT_EQ(ListFor(""), (List{"old"}));
  EXPECT_EQ(ListFor("nop\n"), (List{"old"}));
  EXPECT_EQ(ListFor("nop\n'djnz"), (List{"old"}));
  Type("RText1", "djnz");
  Caret(0);
  help.List2.Fill({"old"});
  Tick(kDelay);
  EXPECT_EQ(help.List2.entries, (List{"old"}));
}

// With the caret inside a line that no row begins like, what stands before the caret counts.
TEST_F(AsseHelpTest, ThenWhatStandsBeforeTheCaret) {
  Type("RText1", "djnz @loop");
  Caret(4);
  Tick(kDelay);
  EXPECT_EQ(help.List2.entries, (List{"DJNZ (PC+e)"}));
  EXPECT_EQ(help.List2.selected, -1);
}

TEST_F(AsseHelpTest, ASingleRowIsChosenAndExplained) {
  EXPECT_EQ(ListFor("djnz"), (List{"DJNZ (PC+e)"}));
  EXPECT_EQ(help.List2.selected, 0);
  EXPECT_EQ(help.Text7, "------");
  EXPECT_EQ(help.Text8, "2");
  EXPECT_EQ(help.Text10, "13/8");
  EXPECT_EQ(help.Text11,
            "The b register is decremented, and if not zero, the signed value n is added to pc. The jump is "
            "measured from the start of the instruction opcode.");
  for (size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(help.Label7[i], "unaffected");
    EXPECT_EQ(help.Label7Look[i].fore, 0xFFFFFF);
  }
}

TEST_F(AsseHelpTest, FlagsInWords) {
  help.List2.Fill({"INC B"});
  Choose("List2", "INC B");
  EXPECT_EQ(help.Text7, "-+V+++");
  EXPECT_EQ(help.Label7, (std::array<std::string, 6>{"unaffected", "affected as defined", "detects overflow",
                                                     "affected as defined", "affected as defined",
                                                     "affected as defined"}));
  EXPECT_EQ(help.Label7Look[0].fore, 0xFFFFFF);
  for (size_t i = 1; i < 6; ++i) EXPECT_EQ(help.Label7Look[i].fore, 65280);
}

TEST_F(AsseHelpTest, RowsWithoutARecordShowNothing) {
  help.List2.Fill({"INC B", "RST 8H", "SLL B*", "EX AF,AF\xE2\x80\x99"});
  Choose("List2", "INC B");
  Choose("List2", "RST 8H");
  EXPECT_EQ(help.Text7 + help.Text8 + help.Text10 + help.Text11, "");
  EXPECT_EQ(help.Label7[0], "");
  Choose("List2", "EX AF,AF\xE2\x80\x99");
  EXPECT_EQ(help.Text8, "1");
  Choose("List2", "SLL B*");
  EXPECT_EQ(help.Text8, "2");
  EXPECT_TRUE(desk.messages.empty());
}

TEST_F(AsseHelpTest, ADoubleClickCopies) {
  help.List2.Fill({"INC B", "SLL B*"});
  DoubleClickOn("List2", "SLL B*");
  EXPECT_EQ(desk.clipboard, "SLL B*");
}

}  // namespace
}  // namespace quoll::test
