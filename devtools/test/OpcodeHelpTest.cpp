#include <gtest/gtest.h>

#include <algorithm>

#include "devtools/OpcodeHelp.h"

namespace quoll {
namespace {

using Rows = std::vector<std::string>;

TEST(OpcodeHelp, Records) {
  EXPECT_EQ(FindOpcodeRecord("NOP"), (OpcodeRecord{"------", "1", "4", "No operation is performed."}));
  EXPECT_EQ(FindOpcodeRecord("DJNZ (PC+e)")->clock, "13/8");
  EXPECT_EQ(FindOpcodeRecord("SLL B*")->flags, "+0P0++");
  EXPECT_EQ(FindOpcodeRecord("LD IXH,n*")->size, "3");
  EXPECT_EQ(FindOpcodeRecord("EX AF,AF\x92")->flags, "++++++");
  EXPECT_EQ(FindOpcodeRecord("EX AF,AF")->size, "1");
  for (const char* none : {"RST 0H", "RST 8H", "CB", "LD B,RLC (IX+d)*", "FOO", ""}) {
    EXPECT_EQ(FindOpcodeRecord(none), std::nullopt) << none;
  }
}

TEST(OpcodeHelp, ListOfABeginning) {
  EXPECT_EQ(OpcodesBeginningWith("djnz", false), (Rows{"DJNZ (PC+e)"}));
  EXPECT_EQ(OpcodesBeginningWith("NEG", false), (Rows{"NEG"}));
  EXPECT_EQ(OpcodesBeginningWith("NEG", true),
            Rows({"NEG", "NEG*", "NEG*", "NEG*", "NEG*", "NEG*", "NEG*", "NEG*"}));
  EXPECT_EQ(OpcodesBeginningWith("JR", false).size(), 5U);
  EXPECT_EQ(OpcodesBeginningWith("FOO", true), Rows());
  EXPECT_EQ(OpcodesBeginningWith("EX AF", false), (Rows{"EX AF,AF\x92"}));
}

TEST(OpcodeHelp, LineOfTheCaret) {
  const std::string source = "NOP\r\nLD A,B\r\n";
  const SourceLine second = LineOfCaret(source, 7);
  EXPECT_EQ(second.start, 5U);
  EXPECT_EQ(second.length, 6U);
  EXPECT_EQ(LineOfCaret(source, 0).length, 3U);
  EXPECT_EQ(LineOfCaret(source, 5).start, 5U);
  EXPECT_EQ(LineOfCaret(source, source.size()).length, 0U);
  EXPECT_EQ(LineOfCaret(source, 999).start, source.size());
  EXPECT_EQ(LineOfCaret(std::string(1000, 'A'), 400).length, 255U);
  EXPECT_EQ(LineOfCaret("", 0).length, 0U);
}

TEST(OpcodeHelp, ListOfTheCaret) {
  EXPECT_EQ(OpcodeHelpList("djnz", 0, false), std::nullopt);
  EXPECT_EQ(OpcodeHelpList("djnz", 2, false), (Rows{"DJNZ (PC+e)"}));
  EXPECT_EQ(OpcodeHelpList("NOP\r\n  djnz 'loop", 8, false), (Rows{"DJNZ (PC+e)"}));
  EXPECT_EQ(OpcodeHelpList("NOP\r\n'djnz", 8, false), std::nullopt);
  EXPECT_EQ(OpcodeHelpList("NOP\r\n   \r\n", 7, false), std::nullopt);
  // Nothing begins like the line: what stands before the caret counts.
  EXPECT_EQ(OpcodeHelpList("djnz @loop", 4, false), (Rows{"DJNZ (PC+e)"}));
  EXPECT_EQ(OpcodeHelpList("foo", 3, false), Rows());
}

TEST(OpcodeHelp, WordsOfTheFlags) {
  EXPECT_EQ(WordOfFlag(' ').word, "unknown");
  EXPECT_EQ(WordOfFlag(' ').colour, std::nullopt);
  struct Want {
    char flag;
    const char* word;
    uint32_t colour;
  };
  for (const Want& want : {Want{'-', "unaffected", 0xFFFFFF},
                           {'+', "affected as defined", 65280},
                           {'P', "detects parity", 65280},
                           {'V', "detects overflow", 65280},
                           {'1', "set", 65280},
                           {'0', "reset", 65280},
                           {'*', "exceptional", 255}}) {
    EXPECT_EQ(WordOfFlag(want.flag).word, want.word);
    EXPECT_EQ(WordOfFlag(want.flag).colour, want.colour);
  }
  EXPECT_EQ(WordOfFlag('X').word, "");
}

}  // namespace
}  // namespace quoll
