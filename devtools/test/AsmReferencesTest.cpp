// Labels, constants and what refers to them.
#include <gtest/gtest.h>

#include <string>

#include "devtools/test/AsmMachine.h"

namespace quoll {
namespace {

constexpr const char* kExists = "Existing name!";

using Entries = std::vector<std::string>;

TEST(AsmReferences, Labels) {
  AsmMachine m;
  EXPECT_TRUE(m.Assemble("ORG 10000|loop:|NOP| A1: 'a comment|:|ORG 5|Z:Z:"));
  EXPECT_EQ(m.a.Symbols.List1, (Entries{"10000  LOOP:", "10001  A1:", "10001  :", "5      Z:Z:"}));
  EXPECT_EQ(m.a.List3, (Entries{"LOOP:                 10000", "A1:                   10001",
                                ":                     10001", "Z:Z:                  5    "}));
  EXPECT_EQ(cimh(m.a.Symbols, "LOOP"), 10000);
  EXPECT_EQ(cimh(m.a.Symbols, "A1"), 10001);
  EXPECT_EQ(cimh(m.a.Symbols, "loop"), -1);
  EXPECT_EQ(cimh(m.a.Symbols, ""), 10001);
  EXPECT_EQ(cimh(m.a.Symbols, "LOO"), -1);
}

TEST(AsmReferences, LabelErrors) {
  Check({
      {"LOOP: NOP", kInternal1},
      {"A B:", kSyntax},
      {"DB 5:", kSyntax},
      {"LOOP:|LOOP:", kExists},
      {"LOOP:|loop :", kSyntax},
      {"X: EQU 5|X:", kExists},
  });
}

// The second entry is made all the same.
TEST(AsmReferences, ADoubleLabelIsEnteredTwice) {
  AsmMachine m;
  EXPECT_FALSE(m.Assemble("LOOP:|NOP|LOOP:"));
  EXPECT_EQ(m.a.Symbols.List1, (Entries{"0      LOOP:", "1      LOOP:"}));
  EXPECT_EQ(m.a.List3.size(), 2U);
}

TEST(AsmReferences, Constants) {
  Check({
      {"X: EQU 5|LD A,@X", "3E 05"},
      {"x: equ $1F|LD A,@x", "3E 1F"},
      {"X:   EQU   $1FFF|LD HL,@X", "21 FF 1F"},
      {"X: EQU $12345|LD HL,@X", "21 34 12"},  // four digits are taken
      {"LD HL,@X|X: EQU 258", "21 02 01"},
      {"X: EQU 1+1", kSyntax},
      {"X: EQU 2-1", kSyntax},
      {"X: EQU 2*1", kSyntax},
      {"X: EQU 2/1", kSyntax},
      {"X: EQU 1 1", kSyntax},
      {"X: EQU A", kSyntax},
      {"X: EQU -1", kSyntax},
      {"X Y: EQU 1", kSyntax},
      {"X: EQU $", kInternal1},
      {"X: EQU $1+1", kInternal1},
      {"X: EQU", kInternal1},
      {"X: EQU 5:", kSyntax},  // a label with blanks
      {"X:EQU 5", kInternal1},
      {"X EQU 5", kInternal1},
      {": EQU 5|LD A,@", "3E 05"},
      // Names may be taken; the first entry counts.
      {"X: EQU 5|X: EQU 6|LD A,@X", "3E 05"},
      {"X:|X: EQU 6|LD A,@X", "3E 00"},
      // Only a value's first five columns are read.
      {"X: EQU 123456|LD HL,@X", "21 39 30"},
      {"X: EQU 12AB|LD HL,@X", "21 0C 00"},
      {"X: EQU 000005|LD HL,@X", "21 00 00"},
  });
}

// A value of more than seven columns shifts its name out of the columns that are compared.
TEST(AsmReferences, ALongValueHidesItsName) {
  Check({{"X: EQU 12345678|LD HL,@X", kSyntax}, {"X: EQU 1234567|LD HL,@X", "21 39 30"}});
}

TEST(AsmReferences, NamesOfMoreThan24CharactersAreNotFound) {
  const std::string name24(24, 'N');
  const std::string name25(25, 'N');
  EXPECT_EQ(AsmMachine().Outcome(name24 + ":|JP @" + name24), "C3 00 00");
  EXPECT_EQ(AsmMachine().Outcome(name25 + ":|JP @" + name25), kSyntax);
  EXPECT_EQ(AsmMachine().Outcome(name25 + ":|LD HL,@" + name25), kSyntax);
  EXPECT_EQ(AsmMachine().Outcome(name25 + ":|" + name25 + ":"), kExists);
  // A colon in the right column ends a name for the look-up.
  EXPECT_EQ(AsmMachine().Outcome("NOP|" + name24 + ":REST:|JP @" + name24), "00 C3 01 00");
  // 255 columns are compared with a line of any length.
  const std::string name255(254, 'N');
  EXPECT_EQ(AsmMachine().Outcome(name255 + ":|" + name255 + ":"), kExists);
  EXPECT_EQ(AsmMachine().Outcome(name255 + "N:|" + name255 + "N:"), "");
}

TEST(AsmReferences, Jumps) {
  Check({
      {"LOOP:|JP @LOOP", "C3 00 00"},
      {"JP @L|L:", "C3 03 00"},
      {"JR @L|L:", "18 00"},
      {"NOP|L:|JR @L", "00 18 FE"},
      {"L:|DJNZ @L", "10 FE"},
      {"L:|JR NZ,@L", "20 FE"},
      {"CALL NC,@L|L:", "D4 03 00"},
      {"call @l|l:", "CD 03 00"},
      {"JP M,@L|L:", "FA 03 00"},
      {"JR C,@L|NOP|L:", "38 01 00"},
      {"JP @NIX", kSyntax},
      {"JR @NIX", kSyntax},
      {"JP LOOP", kInternal1},
      {"JP @LOOP @X|LOOP:", kSyntax},
      {"JP (@L)|L:", kInternal1},
  });
}

TEST(AsmReferences, AJumpAt10000) {
  AsmMachine m;
  EXPECT_TRUE(m.Assemble("ORG 10000|JP @L|L:"));
  EXPECT_EQ(m.Bytes(10000), "C3 13 27");
}

std::string JumpForward(const std::string& bytes) {
  AsmMachine m;
  return m.Assemble("JR @L|DS " + bytes + ",0|L:") ? Hex2(m.memory[1]) : m.a.Text13;
}

std::string JumpBack(const std::string& bytes) {
  AsmMachine m;
  return m.Assemble("L:|DS " + bytes + ",0|JR @L|X:|LD HL,@X") ? Hex2(m.memory[std::stoi(bytes) + 1])
                                                               : m.a.Text13;
}

TEST(AsmReferences, ReachOfRelativeJumps) {
  EXPECT_EQ(JumpForward("127"), "7F");
  EXPECT_EQ(JumpForward("128"), kOverflow);
  EXPECT_EQ(JumpBack("126"), "80");
  EXPECT_EQ(JumpBack("127"), kOverflow);
}

TEST(AsmReferences, EverywhereElse) {
  Check({
      {"X: EQU $1234|LD HL,@X", "21 34 12"},
      {"X: EQU $1234|LD A,(@X)", "3A 34 12"},
      {"X: EQU $1234|LD HL,(@X)", "2A 34 12"},
      {"X: EQU $1234|LD BC,(@X)", "ED 4B 34 12"},
      {"X: EQU $1234|LD (@X),A", "32 34 12"},
      {"X: EQU $1234|LD (@X),HL", "22 34 12"},
      {"X: EQU $1234|LD (@X),BC", "ED 43 34 12"},
      {"X: EQU $1234|LD IX,@X", "DD 21 34 12"},
      {"X: EQU $12|LD A,@X", "3E 12"},
      {"X: EQU $12|LD B,@X", "06 12"},
      {"X: EQU $12|LD (HL),@X", "36 12"},
      {"X: EQU $12|LD A,(IX+@X)", "DD 7E 12"},
      {"X: EQU $12|LD (IX+@X),A", "DD 77 12"},
      {"X: EQU $12|LD (IX+@X),5", "DD 36 12 05"},
      {"X: EQU $12|LD (IX+5),@X", "DD 36 05 12"},
      {"X: EQU $12|OUT (@X),A", "D3 12"},
      {"X: EQU $12|IN A,(@X)", "DB 12"},
      {"X: EQU $12|ADD A,@X", "C6 12"},
      {"X: EQU $12|SUB @X", "D6 12"},
      {"X: EQU $12|CP @X", "FE 12"},
      {"X: EQU $12|LD IXH,@X*", kSyntax},  // "X*" is the name
      {"X: EQU 256|LD A,@X", kOverflow},
      {"LD HL,@NIX", kSyntax},
      {"LD A,@NIX", kSyntax},
      {"LD A,@", kSyntax},
      // No width is likely for these.
      {"X: EQU 1|LD C,@X", kInternal1},
      {"X: EQU 1|LD D,@X", kInternal1},
      {"X: EQU 1|LD E,@X", kInternal1},
      {"X: EQU 1|LD H,@X", kInternal1},
      {"X: EQU 1|LD L,@X", kInternal1},
      {"X: EQU 1|PUSH @X", kInternal1},
      {"@X", kInternal1},
      // XOR is taken for one of 16 bits, which its row does not take.
      {"X: EQU 1|XOR @X", kOverflow},
      {"X: EQU 1|AND @X", "E6 01"},
      {"X: EQU 1|OR @X", "F6 01"},
      // What follows the reference counts only in the second pass.
      {"X: EQU 1|LD A,(@X)Y", kInternal2},
      {"X: EQU 1|LD B,(IX+@X)", kInternal1},
      {"X: EQU 5|LD A,@X 7", kInternal2},
      {"X: EQU 5|LD (IX+@X),@X", kInternal2},
  });
}

// The first pass takes "LD (@X),BC" for "LD (nn),A", so that the labels behind it come out one too low.
TEST(AsmReferences, SomeLinesAreSizedByAnotherRow) {
  Check({{"X: EQU $1234|LD (@X),BC|L:|JP @L", "ED 43 34 12 C3 03 00"}});
}

struct Sized {
  const char* line;
  int32_t size;
};

TEST(AsmReferences, SizesOfTheFirstPass) {
  for (const Sized& c :
       {Sized{"CALL @X", 3}, {"DJNZ @X", 2},       {"JP @X", 3},        {"JP PO,@X", 3},
        {"JR @X", 2},        {"JR Z,@X", 2},       {"SUB @X", 2},       {"SBC A,@X", 2},
        {"ADC A,@X", 2},     {"ADD A,@X", 2},      {"AND @X", 2},       {"CP @X", 2},
        {"IN A,(@X)", 2},    {"LD A,(IX+@X)", 3},  {"LD A,(@X)", 3},    {"LD A,@X", 2},
        {"LD (HL),@X", 2},   {"LD (@X),A", 3},     {"LD (@X),HL", 3},   {"LD (@X),DE", 3},
        {"LD (@X),IX", 3},   {"LD BC,@X", 3},      {"LD DE,@X", 3},     {"LD HL,@X", 3},
        {"LD IX,@X", 4},     {"LD IY,@X", 4},      {"LD SP,@X", 3},     {"LD HL,(@X)", 3},
        {"LD BC,(@X)", 4},   {"LD DE,(@X)", 4},    {"OR @X", 2},        {"OUT (@X),A", 2},
        {"LD B,@X", 2},      {"LD (IX+@X),A", 3},  {"LD (IX+@X),B", 3}, {"BIT @X,A", -10},
        {"DEC @X", -10},     {"IM @X", -10},       {"INC @X", -10},     {"RES 1,(IX+@X)", -10},
        {"RL @X", -10},      {"RLC (IX+@X)", -10}, {"SET @X", -10},     {"LD IX,(@X)", -10},
        {"LD SP,(@X)", -10}, {"XOR @X", -2},       {"LD C,@X", -10},    {"EX @X", -10}}) {
    AsmMachine m;
    EXPECT_EQ(Pass1Line(m.a, m.host, c.line, c.line), c.size) << c.line;
  }
}

}  // namespace
}  // namespace quoll
