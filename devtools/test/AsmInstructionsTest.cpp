// Lines that are instructions.
#include <gtest/gtest.h>

#include "devtools/test/AsmMachine.h"

namespace quoll {
namespace {

TEST(AsmInstructions, WithoutOperand) {
  Check({
      {"NOP", "00"},
      {"  nop  ", "00"},
      {"\tld\ta,b\t", "78"},
      {"LD  A ,  B", "78"},
      {"neg", "ED 44"},
      {"NEG*", "ED 4C"},
      {"SLL B*", "CB 30"},
      {"BIT 7,A", "CB 7F"},
      {"LD A,IXH*", "DD 7C"},
      {"LD A,IXH", kInternal1},
      {"RETN*", "ED 55"},
      {"IM 0/1*", "ED 4E"},
      {"IM 2", "ED 5E"},
      {"IN (C)*", "ED 70"},
      {"OUT (C),0*", "ED 71"},
      {"JP (HL)", "E9"},
      {"EX AF,AF'", "08"},
      {"ex af, af' 'swap", "08"},
      {"EX AF,AF", "08"},
      {"ADD IY,IY", "FD 29"},
      // Prefixes are rows of the table too.
      {"CB", "CB"},
      {"DDCB", "DD CB"},
      // No row.
      {"FOO", kInternal1},
      {"MOV A,B", kInternal1},
      {"SLL B", kInternal1},
      {"NOP;", kInternal1},
      // What wants an operand fails without one.
      {"LD A,", kSyntax},
      {"JP NZ,", kSyntax},
      {"JP", kInternal1},
      {"LD HL,()", kSyntax},
  });
}

TEST(AsmInstructions, WithANumber) {
  Check({
      {"LD A,15", "3E 0F"},
      {"LD A,$15", "3E 15"},
      {"ld a,$fe", "3E FE"},
      {"LD A,0", "3E 00"},
      {"LD A,255", "3E FF"},
      {"LD A,256", kOverflow},
      {"LD A,$100", kOverflow},
      {"LD A,0005", "3E 05"},
      {"LD A,-1", kInternal1},
      {"LD A,+1", kInternal1},
      {"LD A,1+1", kInternal1},
      {"LD A,$", kSyntax},
      {"LD A,$G", kSyntax},
      {"LD A,99999999999", kInternal1},
      {"LD A,$123456789", kInternal1},
      {"LD A,$FFFFFFFF", kInternal1},  // -1, whose sign stays
      {"LD BC,$1234", "01 34 12"},
      {"LD BC,65535", "01 FF FF"},
      {"LD BC,65536", kOverflow},
      {"LD (1000),A", "32 E8 03"},
      {"LD (1000),HL", "22 E8 03"},
      {"LD HL,($4000)", "2A 00 40"},
      {"LD (1000),BC", "ED 43 E8 03"},
      {"LD IX,513", "DD 21 01 02"},
      {"LD (513),IY", "FD 22 01 02"},
      {"LD (HL),7", "36 07"},
      {"OUT (2),A", "D3 02"},
      {"OUT (256),A", kOverflow},
      {"IN A,($58)", "DB 58"},
      {"CALL NZ,$1234", "C4 34 12"},
      {"JP 5", "C3 05 00"},
      {"JR 5", "18 05"},
      {"JR NZ,254", "20 FE"},
      {"JR 256", kOverflow},
      {"DJNZ $80", "10 80"},
      {"LD IXH,5*", "DD 26 05"},
      {"LD IYL,$FF*", "FD 2E FF"},
      {"CP 3", "FE 03"},
      {"LD A,(5)", "3A 05 00"},
      // Only the first number is cut out.
      {"LD A,5 6", kInternal1},
  });
}

TEST(AsmInstructions, WithADisplacement) {
  Check({
      {"LD (IX+5),B", "DD 70 05"},
      {"LD B,(IY+$80)", "FD 46 80"},
      {"INC (IX+0)", "DD 34 00"},
      {"ADD A,(IX+255)", "DD 86 FF"},
      {"SUB (IX+256)", kOverflow},
      {"LD B,(IX-1)", kInternal1},
      {"LD (IX+5),7", "DD 36 05 07"},
      {"LD (IY+5),7", "FD 36 05 07"},
      {"LD (IX+$10),$20", "DD 36 10 20"},
      {"LD (IX+16),$20", "DD 36 10 20"},
      {"LD (IX+$10),32", "DD 36 10 20"},
      {"LD (IX+$1),$12", "DD 36 01 0C"},  // "$1" is 1 wherever it stands: 12 is left
      {"LD (IX+256),7", kOverflow},
      {"LD (IX+5),256", kOverflow},
      {"LD (IX+5),FOO", "DD 36 05 00"},
      {"BIT 7,(IX+5)", "DD CB 05 7E"},
      {"RES 0,(IY+$12)", "FD CB 12 86"},
      {"SET 3,(IX+255)", "DD CB FF DE"},
      {"SET 3,(IX+256)", kOverflow},
      {"RLC (IX+5)", "DD CB 05 06"},
      {"SLL (IX+5)*", "DD CB 05 36"},
      {"BIT 4,(IY+5)*", "FD CB 05 60"},
      {"BIT 0,(IX+5)*", "DD CB 05 40"},
      {"LD B,RLC (IX+5)*", "DD CB 05 00"},
      {"LD A,SET 7,(IX+5)*", "DD CB 05 FF"},
      {"LD E,SET 7,(IX+5)*", "DD CB 05 FB"},
      {"LD C,RES 1,(IY+$22)*", "FD CB 22 89"},
  });
}

// Of "LD (),7" and the like the first pass is content with the beginning; what the second one makes of them
// differs.
TEST(AsmInstructions, WhatOnlyTheFirstPassTakes) {
  Check({
      {"LD IXH,5", kInternal2},
      {"LD IYL,5", kInternal2},
      {"LD IXL,FOO", kInternal2},
      {"LD A,SET 7,(IX+5)", kInternal2},
      {"LD B,BIT 0,(IX+5)", kInternal2},
      {"LD (IX+5),7,8", "DD 36 05 07"},
  });
}

TEST(AsmInstructions, TheFirstPassSizesSuchLinesAsFourBytes) {
  for (const char* line : {"LD IXH,5", "LD IYH,FOO", "LD (IX+5),7", "LD (IY+5),@X", "LD A,SET 7,(IX+5)",
                           "LD B,RES 0,(HL)", "LD C,BIT 1,(IX+@X)"}) {
    AsmMachine m;
    EXPECT_EQ(Pass1Line(m.a, m.host, line, line), 4) << line;
  }
}

// Rows that take no operand: the number is dropped, the key is written but counts nothing, and the next line
// writes over it.
TEST(AsmInstructions, ANumberTooMuchMakesAnInstructionOfNoSize) {
  Check({
      {"INC A5|NOP", "00"},
      {"INC A5", "3C"},
      {"LD A,10H|NOP", "00"},  // "LD A,H"
      {"LD A,10H", "7C"},
      {"LD (IX+),5", "DD 36"},
      {"LD (IY+),5|NOP", "00 36"},
      {"LD (IX+5),|NOP", "00 36"},
  });
}

TEST(AsmInstructions, Restarts) {
  Check({
      {"RST 0H", "C7"},       {"RST 8H", "CF"},        {"RST 10H", "D7"},      {"RST 18H", "DF"},
      {"RST 20H", "E7"},      {"RST 28H", "EF"},       {"RST 30H", "F7"},      {"RST 38H", "FF"},
      {"RST $0", "C7"},       {"RST $8", "CF"},        {"RST $10", "D7"},      {"rst $18", "DF"},
      {"RST $20", "E7"},      {"RST $28", "EF"},       {"RST $30", "F7"},      {"RST $38", "FF"},
      {"RST 8", kInternal1},  {"RST $08", kInternal1}, {"RST $9", kInternal1}, {"RST $", kSyntax},
      {"RST 16", kInternal1}, {"RST 10", kInternal1},
  });
}

// Only the second pass counts the percent sign as a digit, where the first has not looked.
TEST(AsmInstructions, PercentSigns) {
  Check({
      {"LD A,5%", kInternal1},
      {"LD A,%5", kInternal1},
      {"LD IXH,5%*", "DD 26 05"},
      {"LD IXH,%*", "DD 26 00"},
  });
}

}  // namespace
}  // namespace quoll
