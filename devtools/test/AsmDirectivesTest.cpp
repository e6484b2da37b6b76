#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "devtools/AsmDirectives.h"
#include "devtools/test/AsmMachine.h"

namespace quoll {
namespace {

struct Org {
  const char* line;
  int32_t result;
  int32_t AsmPC;
};

TEST(AsmDirectives, Org) {
  for (const Org& c : {Org{"ORG 10000", 0, 10000},
                       {"ORG $2710", 0, 10000},
                       {"ORG 65535", 0, 65535},
                       {"ORG 65536", -2, 65536},
                       {"ORG $FFFFF", 0, 65535},
                       {"ORG -1", -2, -1},
                       {"ORG 12AB", 0, 12},
                       {"ORG FOO", 0, 0},
                       {"ORG 12.9", 0, 12},
                       {"ORG .5", -1, 77},
                       {"ORG $", -10, 77},
                       {"ORG $XY", -10, 77},
                       {"ORG 99999999999", -10, 77},
                       {"ORG", -10, 77}}) {
    AsmMachine m;
    m.a.AsmPC = 77;
    EXPECT_EQ(Pass1Line(m.a, m.host, c.line, c.line), c.result) << c.line;
    EXPECT_EQ(m.a.AsmPC, c.AsmPC) << c.line;
    if (c.result == -1) continue;
    m.a.AsmPC = 77;
    EXPECT_EQ(Pass2Line(m.a, m.host, c.line, c.line), c.result) << c.line;
    EXPECT_EQ(m.a.AsmPC, c.AsmPC) << c.line;
  }
}

TEST(AsmDirectives, ThePageRegisterIsSetInTheSecondPass) {
  AsmMachine m;
  EXPECT_TRUE(m.Assemble("PMEM=112|PMEM=$B0|PMEM= 5|PMEM=|PMEM=3.5"));
  EXPECT_EQ(m.pages, (std::vector<int32_t>{112, 176, 5, 0, 4}));
  EXPECT_EQ(m.a.AsmPC, 0);
  for (const char* line : {"PMEM=256", "PMEM=-1", "PMEM=$100", "PMEM=$", "PMEM=255.5"}) {
    AsmMachine bad;
    EXPECT_EQ(bad.Outcome(line), kInternal2) << line;
    EXPECT_TRUE(bad.pages.empty());
  }
}

TEST(AsmDirectives, DbLists) {
  Check({
      {"DB 1", "01"},
      {"db 1,2,3", "01 02 03"},
      {"DB 1 , $FF ,10", "01 FF 0A"},
      {"\tDB\t7", "07"},
      {"DB $123", "12"},  // two digits are taken
      {"DB 256", kOverflow},
      {"DB -1", kOverflow},
      {"DB 1,2,256", kOverflow},
      {"DB 99999999999", kOverflow},
      {"DB $", kInternal1},
      {"DB 1,$XY", kInternal1},
      {"DB 1,", "01 00"},
      {"DB 1,,2", "01 00 02"},
      {"DB FOO", "00"},
      {"DB 5X", "05"},
      {"DB", kInternal1},
      {"DB 1.5,2.5", "02 02"},  // to the nearest, ties to the even one
      {"DB @X", "00"},
  });
}

TEST(AsmDirectives, DbTexts) {
  Check({
      {"DB \"Ab, c  ,d\"", "41 62 2C 20 63 20 20 2C 64"},
      {"  db   \"x\"  'comment", "78"},
      {"DB \"\"|NOP", "00"},
      {"DB \"|NOP", "00"},  // one character is both quotes
      {"DB \"\"\"", "22"},
      {"DB \"AB", kSyntax},
      {"DB \"AB\",5", kSyntax},
      {"DB \"IT'S\"", kSyntax},  // the apostrophe begins a comment
      {"DB \"A;B\"", "41 3B 42"},
      {"DB \"A: EQU 1\"", kSyntax},  // a constant whose name has a blank
      {"DB \"A\tB\"", "41 09 42"},
      // The text is looked for in column 4 of the source's line.
      {"\t\tDB \"A\"", "00"},
  });
}

TEST(AsmDirectives, HungarianLettersBecomeTheMachines) {
  const std::string letters = "\xC1\xC9\xCD\xD3\xD6\xD5\xDA\xDC\xDB\xE1\xE9\xED\xF3\xF6\xF5\xFA\xFC\xFB";
  EXPECT_EQ(AsmMachine().Outcome("DB \"" + letters + "\""),
            "80 81 82 83 84 85 86 87 88 90 91 92 93 94 95 96 97 98");
  int changed = 0;
  for (int code = 0; code < 256; ++code) changed += TVCASC(static_cast<uint8_t>(code)) == code ? 0 : 1;
  EXPECT_EQ(changed, 18);
  // The first pass writes the letters as they are.
  AsmMachine m;
  EXPECT_EQ(Pass1Line(m.a, m.host, "DB \"\xC1\"", "DB \"\xC1\""), 1);
  EXPECT_EQ(m.Bytes(0), "C1");
}

TEST(AsmDirectives, WordsOfAListOverlap) {
  Check({
      {"DW $1234", "34 12"},
      {"DW 65535|NOP", "FF FF 00"},
      {"DW 1,2", "01 02 00"},
      {"DW 1,2|NOP", "01 02 00"},
      {"DW $1234,$5678,$9ABC", "34 78 BC 9A"},
      {"DW 65536", kOverflow},
      {"DW -1", kOverflow},
      {"DW $12345", "34 12"},
      {"DW $", kInternal1},
  });
  AsmMachine m;
  EXPECT_TRUE(m.Assemble("DW 1,2|NOP"));
  EXPECT_EQ(m.a.AsmPC, 5);
  EXPECT_FALSE(m.memory.contains(3));
  EXPECT_TRUE(m.memory.contains(4));
}

TEST(AsmDirectives, Ds) {
  Check({
      {"DS 3,7", "07 07 07"},
      {"DS 2,$FF", "FF FF"},
      {"DS 2,$0FF", "FF FF"},
      {"DS 2,$0FF0", "FF FF"},  // three digits are taken
      {"ds 2,5 'comment", "05 05"},
      {"DS 0,255", kSyntax},
      {"DS \"x\",255", kSyntax},
      {"DS -1,0", kSyntax},
      {"DS 1,256", kOverflow},
      {"DS 1,-1", kOverflow},
      {"DS 0,256", kSyntax},
      {"DS 1,$XY", kInternal1},
      {"DS 0,$", kInternal1},
      {"DS 1", kInternal1},
      {"DS $10,1", kSyntax},
      {"DS 99999999999,1", kInternal1},
      // It is read from column 4 of the source's line.
      {" DS 2,1", "01 01"},
      {"  DS 2,1", kSyntax},
      {"DS  2,1", "01 01"},
      {"DS 1, 9", "09"},
  });
  AsmMachine m;
  EXPECT_TRUE(m.Assemble("DS 255,0"));
  EXPECT_EQ(m.memory.size(), 255U);
}

// Nothing has memory there, and nobody has to wait for it.
TEST(AsmDirectives, HugeBlocksAreCutAtTheEndOfAllMemory) {
  AsmMachine m;
  EXPECT_TRUE(m.Assemble("ORG 65535|DS 2000000000,1|NOP"));
  EXPECT_EQ(m.a.AsmPC, 2000065536);
  EXPECT_EQ(m.memory.rbegin()->first, kAsmAddressEnd - 1);
  EXPECT_EQ(m.Outcome("DS 2000000000,1|DS 2000000000,1"), kInternal1);
}

TEST(AsmDirectives, DebuggerCommands) {
  Check({
      {"*INT", "FD F0"},
      {"*nmi", "FD F1"},
      {"*RESET", "FD F2"},
      {"*BREAK 'here", "FD F3"},
      {"  *BREAK|NOP", "FD F3 00"},
  });
}

TEST(AsmDirectives, AnUnknownCommandTakesTwoBytesInTheFirstPassOnly) {
  AsmMachine m;
  EXPECT_TRUE(m.Assemble("*FOO|L:|JP @L"));
  EXPECT_EQ(m.Bytes(0), "C3 02 00");
  EXPECT_EQ(m.a.AsmPC, 3);
}

TEST(AsmDirectives, IncBin) {
  AsmMachine m;
  m.files["Data.bin"] = {1, 2, 3};
  EXPECT_EQ(m.Outcome("incbin \"Data.bin\" 'comment|L:|JP @L"), "01 02 03 C3 03 00");
  EXPECT_EQ(AsmMachine().Outcome("INCBIN \"Data.bin\""), kInternal1);
  m.files["it, is"] = {9};
  EXPECT_EQ(m.Outcome("\tINCBIN \t \"it, is\""), "09 02 03 C3 03 00");
  for (const char* line :
       {"INCBIN Data.bin", "INCBIN \"Data.bin", "INCBIN Data.bin\"", "INCBIN \"Data.bin\",1"}) {
    EXPECT_EQ(m.Outcome(line), kSyntax) << line;
  }
  EXPECT_EQ(m.Outcome("INCBIN \""), kInternal1);
  EXPECT_EQ(m.Outcome("INCBIN"), kInternal1);
}

TEST(AsmDirectives, IncBinLengths) {
  AsmMachine m;
  m.files["empty"] = {};
  m.files["full"].assign(65536, 5);
  m.files["long"].assign(65537, 5);
  EXPECT_EQ(m.Outcome("INCBIN \"empty\"|NOP"), "00");
  EXPECT_TRUE(m.Assemble("INCBIN \"full\""));
  EXPECT_EQ(m.a.AsmPC, 65536);
  EXPECT_EQ(m.memory.size(), 65536U);
  EXPECT_EQ(m.Outcome("INCBIN \"long\""), kOverflow);
}

// A file that vanishes between the passes.
TEST(AsmDirectives, IncBinFailsInTheSecondPass) {
  AsmMachine m;
  int reads = 0;
  m.host.ReadFile = [&](const std::string&) -> std::optional<std::vector<uint8_t>> {
    if (++reads > 1) return std::nullopt;
    return std::vector<uint8_t>{1};
  };
  EXPECT_EQ(m.Outcome("INCBIN \"x\""), kInternal2);
}

TEST(AsmDirectives, ThereIsNoDn) { Check({{"DN 5", kInternal1}}); }

}  // namespace
}  // namespace quoll
