// The walk over the lines, what is reported, the listing.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "devtools/Assembler.h"
#include "devtools/test/AsmMachine.h"

namespace quoll {
namespace {

TEST(Assembler, ACompleteSource) {
  AsmMachine m;
  EXPECT_TRUE(m.Assemble("ORG 10000|L:|JP @L"));
  EXPECT_EQ(m.a.Text13, "Completed: 7 msec");
  EXPECT_EQ(m.a.Text14, "Pass2");
  EXPECT_EQ(m.a.Label2, "10003");
  EXPECT_EQ(m.a.StatusColor, 0xC0FFC0U);
  EXPECT_EQ(m.a.RText1Color, 0xFFFFFFU);
  EXPECT_EQ(m.a.ErrorLine, 0);
  EXPECT_FALSE(m.a.CutOff);
  EXPECT_EQ(m.shown, (std::vector<std::string>{"/", "Pass1/", "Pass2/", "Pass2/Completed: 7 msec"}));
}

TEST(Assembler, TheHostNeedsNoClockAndNoPages) {
  AsmMachine m;
  m.host.Milliseconds = nullptr;
  m.host.Refresh = nullptr;
  m.host.SetPage = nullptr;
  EXPECT_TRUE(m.Assemble("PMEM=5|NOP"));
  EXPECT_EQ(m.a.Text13, "Completed: 0 msec");
}

struct Failing {
  const char* source;
  const char* Text13;
  const char* Text14;
  int32_t line, start, length;
};

TEST(Assembler, AnErrorNamesItsLine) {
  for (const Failing& c : {Failing{"NOP|LD A,256", "OverFlow Error!", "Pass1", 2, 5, 8},
                           Failing{"LOOP:|  loop: 'again|NOP", "Existing name!", "Pass1", 2, 7, 14},
                           Failing{"||\tFOO\t|", "Internal Error P1!", "Pass1", 3, 4, 5},
                           Failing{"DB \"a", "Syntax Error!", "Pass1", 1, 0, 5},
                           Failing{"NOP|JP @X", "Syntax Error!", "Pass2", 2, 5, 5},
                           Failing{"L:|DS 200,0|JR @L|NOP", "OverFlow Error!", "Pass2", 3, 14, 5},
                           Failing{"LD IXH,5", "Internal Error P2!", "Pass2", 1, 0, 8}}) {
    AsmMachine m;
    m.a.Label2 = "before";
    EXPECT_FALSE(m.Assemble(c.source)) << c.source;
    EXPECT_EQ(m.a.Text13, c.Text13) << c.source;
    EXPECT_EQ(m.a.Text14, c.Text14) << c.source;
    EXPECT_EQ(m.a.ErrorLine, c.line) << c.source;
    EXPECT_EQ(m.a.SelStart, c.start) << c.source;
    EXPECT_EQ(m.a.SelLength, c.length) << c.source;
    EXPECT_EQ(m.a.Label2, "before");
    EXPECT_EQ(m.a.StatusColor, 0x8080FFU);
    EXPECT_EQ(m.a.RText1Color, 0xFFFFFFU);
  }
}

TEST(Assembler, TheNextCompilationBeginsAnew) {
  AsmMachine m;
  EXPECT_FALSE(m.Assemble("ORG 500|A:|FOO"));
  EXPECT_EQ(m.a.AsmPC, 500);
  EXPECT_TRUE(m.Assemble("B:"));
  EXPECT_EQ(m.a.Symbols.List1, (std::vector<std::string>{"0      B:"}));
  EXPECT_EQ(m.a.List3.size(), 1U);
  EXPECT_EQ(m.a.ErrorLine, 0);
  EXPECT_EQ(m.a.StatusColor, 0xC0FFC0U);
  EXPECT_EQ(m.a.Text13, "Completed: 7 msec");
}

TEST(Assembler, WhatAFailedCompilationWroteStays) {
  AsmMachine m;
  EXPECT_FALSE(m.Assemble("DB 1,2,300"));
  EXPECT_EQ(m.Bytes(0), "01 02");
  // The key's byte of the failing line too.
  AsmMachine second;
  EXPECT_FALSE(second.Assemble("X: EQU 300|NOP|LD A,@X"));
  EXPECT_EQ(second.Bytes(0), "00 3E");
  EXPECT_EQ(second.a.AsmPC, 1);
  AsmMachine third;
  EXPECT_FALSE(third.Assemble("X: EQU 300|LD (IX+5),@X"));
  EXPECT_EQ(third.Bytes(0), "DD 36 05");
}

// The first pass has written data before the second writes it again; instructions it does not write.
TEST(Assembler, TheFirstPassWritesDataOnly) {
  AsmMachine m;
  EXPECT_FALSE(m.Assemble("NOP|DB 1|DW 2|DS 2,3|FOO"));
  EXPECT_EQ(m.memory, (std::map<int32_t, uint8_t>{{1, 1}, {2, 2}, {3, 0}, {4, 3}, {5, 3}}));
  EXPECT_EQ(m.a.RText2.text, "");
}

TEST(Assembler, Listing) {
  AsmMachine m;
  EXPECT_TRUE(
      m.Assemble("'Comment|org 10000 'here|loop:|  ld   a , $5 'five||*break| 'more|db \"Aa\"|jp @loop"));
  EXPECT_EQ(m.a.RText2.text,
            AsmMachine::Lines("'COMMENT|ORG 10000 'HERE|LOOP:|0x2710\tLD A,$5 'FIVE||*BREAK|'MORE|"
                              "0x2714\tDB \"AA\"|0x2716\tJP @LOOP|"));
  const std::vector<ColouredText::Run> runs = {
      {0, 0x379B37},   // the comment
      {10, 0xFF0000},  // ORG and label
      {34, 0x6E1478},  // the address
      {40, 0},         // the instruction
      {56, 0xFF0000},  // the empty line
      {58, 0x1919DE},  // the command
      {66, 0xFF0000},  // an indented comment
      {73, 0x6E1478}, {79, 0}, {89, 0x6E1478}, {95, 0},
  };
  EXPECT_EQ(m.a.RText2.runs, runs);
}

TEST(Assembler, TheListingEndsAtTheFailingLine) {
  AsmMachine m;
  EXPECT_FALSE(m.Assemble("NOP|JP @X|NOP"));
  EXPECT_EQ(m.a.RText2.text, "0x0000\tNOP\r\n");
  // A first pass that fails leaves the listing as it was.
  EXPECT_FALSE(m.Assemble("FOO"));
  EXPECT_EQ(m.a.RText2.text, "0x0000\tNOP\r\n");
}

TEST(Assembler, LinesEndInBothCharacters) {
  for (const auto& [source, listing] : {std::pair("", "\r\n"), {"NOP|", "0x0000\tNOP\r\n\r\n"}}) {
    AsmMachine m;
    EXPECT_TRUE(m.Assemble(source));
    EXPECT_EQ(m.a.RText2.text, listing);
  }
  EXPECT_EQ(AsmMachine().Outcome("NOP\nNOP"), kInternal1);
}

// The last line is the one that crosses column 100000; what is behind it is not read.
TEST(Assembler, LongSources) {
  std::string nops;
  for (int i = 0; i < 20000; ++i) nops += "NOP\r\n";
  ASSERT_EQ(nops.size(), 100000U);
  AsmMachine m;
  EXPECT_TRUE(Compile(m.a, m.host, nops));
  EXPECT_EQ(m.a.AsmPC, 20000);
  EXPECT_FALSE(m.a.CutOff);
  // The next line begins behind the column. Without a line end it is not read, with one it is.
  EXPECT_TRUE(Compile(m.a, m.host, nops + "FOO"));
  EXPECT_EQ(m.a.AsmPC, 20000);
  EXPECT_TRUE(m.a.CutOff);
  EXPECT_TRUE(Compile(m.a, m.host, nops + "NOP\r\n"));
  EXPECT_EQ(m.a.AsmPC, 20001);
  EXPECT_FALSE(m.a.CutOff);
  EXPECT_TRUE(Compile(m.a, m.host, nops + "NOP\r\nFOO"));
  EXPECT_EQ(m.a.AsmPC, 20001);
  EXPECT_TRUE(m.a.CutOff);
  // A line without an end is cut at the column.
  const std::string blanks(99990, ' ');
  EXPECT_TRUE(Compile(m.a, m.host, blanks + "'456789"));
  EXPECT_FALSE(m.a.CutOff);
  EXPECT_TRUE(Compile(m.a, m.host, blanks + "DB 1,2,3456"));
  EXPECT_TRUE(m.a.CutOff);
  EXPECT_EQ(m.Bytes(0).substr(0, 8), "01 02 22");
  EXPECT_FALSE(Compile(m.a, m.host, blanks + "DB 1,2,3456\r\n"));
}

// What the editor's help offers as its example.
TEST(Assembler, TheHelpsExample) {
  AsmMachine m;
  EXPECT_TRUE(m.Assemble("'program neve|org 10000   'innen indul|*break|di|ee:|ld a,r|out (0),a|jr @ee"));
  EXPECT_EQ(m.Bytes(10000), "FD F3 F3 ED 5F D3 00 18 FA");
}

// Text of any bytes gives code or a message.
TEST(Assembler, AnyBytes) {
  uint32_t state = 12345;
  const auto next = [&] { return (state = state * 1664525 + 1013904223) >> 16; };
  const std::vector<std::string> words = {"LD ",  "A,",   "@",       "X",    "$",           "(IX+",   "),",
                                          "5",    "\"",   "DB ",     "DS ",  "ORG ",        ": EQU ", ":",
                                          "'",    "\t",   "INCBIN ", "*INT", "PMEM=",       "RST $",  "%",
                                          "SET ", "BIT ", "JR ",     "-",    "99999999999", "."};
  for (int i = 0; i < 3000; ++i) {
    std::string source;
    for (uint32_t n = next() % 12; n > 0; --n) {
      source +=
          next() % 4 == 0 ? std::string(1, static_cast<char>(next() & 0xFF)) : words[next() % words.size()];
      if (next() % 6 == 0) source += "\r\n";
    }
    AsmMachine m;
    const bool complete = Compile(m.a, m.host, source);
    EXPECT_EQ(complete, m.a.ErrorLine == 0) << source;
    EXPECT_EQ(m.a.Text13.ends_with(" msec"), complete) << source;
    EXPECT_TRUE(complete || m.a.Text13.ends_with("Error!") ||
                m.a.Text13.find(" Error P") != std::string::npos || m.a.Text13 == "Existing name!")
        << source;
  }
}

}  // namespace
}  // namespace quoll
