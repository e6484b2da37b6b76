// The plain assembler against sources worked out by hand.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "devtools/test/model/PlainAssembler.h"

namespace quoll::plain {
namespace {

struct Result {
  Assembler assembler;
  std::map<int32_t, int> memory;
  int page = -1;
};

Result Compiled(const std::string& source) {
  Result result;
  Bus bus;
  bus.write = [&](int32_t address, uint8_t value) { result.memory[address] = value; };
  bus.setPage = [&](uint8_t value) { result.page = value; };
  bus.file = [](const std::string& name) -> std::optional<std::string> {
    if (name == "Two.bin") return "\x01\x02";
    return std::nullopt;
  };
  std::string text;
  for (const char c : source) text += c == '\n' ? std::string("\r\n") : std::string(1, c);
  Compile(result.assembler, bus, text);
  return result;
}

std::string Status(const std::string& source) { return Compiled(source).assembler.Text13; }

// The bytes from the lowest address written on; "." for one left out.
std::string Bytes(const std::string& source) {
  const Result result = Compiled(source);
  EXPECT_EQ(result.assembler.Text13, "Completed: ") << source;
  std::string text;
  if (result.memory.empty()) return text;
  for (int32_t at = result.memory.begin()->first; at <= result.memory.rbegin()->first; ++at) {
    char buffer[8];
    const auto byte = result.memory.find(at);
    snprintf(buffer, sizeof buffer, byte == result.memory.end() ? "." : "%02X", byte->second);
    text += (text.empty() ? "" : " ") + std::string(buffer);
  }
  return text;
}

struct Example {
  const char* source;
  const char* expected;
};

TEST(PlainAssembler, Bytes) {
  const Example examples[] = {
      {"org 10000\njp @l\nl:", "C3 13 27"},
      {"L:\nJR @L", "18 FE"},
      {"jr 5", "18 05"},
      {"ld a, 15 'comment", "3E 0F"},
      {"ex af,af'", "08"},
      {"LD HL,@L\nL:", "21 03 00"},
      {"LD A,(@L)\nL:", "3A 03 00"},
      {"LD (@X),BC\nX: EQU 258", "ED 43 02 01"},
      {"LD (IX+5),7", "DD 36 05 07"},
      {"LD (IX+$10),$20", "DD 36 10 20"},
      {"LD (IX+$1),$10", "DD 36 01 0A"},
      {"BIT 7,(IX+5)", "DD CB 05 7E"},
      {"LD A,SET 7,(IX+5)*", "DD CB 05 FF"},
      {"LD IXH,5*", "DD 26 05"},
      {"NEG*", "ED 4C"},
      {"LD HL,(5)", "2A 05 00"},
      {"RST $10\nRST 8H", "D7 CF"},
      {"DB \"A\xE9\"\nDB 1,$1f", "41 91 01 1F"},
      {"DW 1,2", "01 02 00"},
      {"DS 3,$FF", "FF FF FF"},
      {"*INT\n*FOO\n*BREAK", "FD F0 FD F3"},
      {"INCBIN \"Two.bin\"\nNOP", "01 02 00"},
      {"RLA7\nNOP", "00"},
      {"ddcb", "DD CB"},
  };
  for (const Example& example : examples) {
    EXPECT_EQ(Bytes(example.source), example.expected) << example.source;
  }
}

TEST(PlainAssembler, Errors) {
  const Example examples[] = {
      {"LOOP:\nLOOP:", "Existing name!"},
      {"A: EQU 1\nA:", "Existing name!"},
      {"A:\nA: EQU 1", "Completed: "},
      {"X: EQU 1+1", "Syntax Error!"},
      {"LD A,256", "OverFlow Error!"},
      {"FOO", "Internal Error P1!"},
      {"RST 8", "Internal Error P1!"},
      {"DB \"it's\"", "Syntax Error!"},
      {"LD A,", "Syntax Error!"},
      {"LD IXH,5", "Internal Error P2!"},
      {"LD A,SET 7,(IX+5)", "Internal Error P2!"},
      {"JP @L", "Syntax Error!"},
      {"XOR @X\nX: EQU 1", "OverFlow Error!"},
      {"LD C,@X\nX: EQU 1", "Internal Error P1!"},
      {"JR @L\nDS 128,0\nL:", "OverFlow Error!"},
      {"DS 0,255", "Syntax Error!"},
      {" DS 3,1", "Completed: "},
      {"  DS 3,1", "Syntax Error!"},
      {"DB $G", "Internal Error P1!"},
      {"INCBIN \"none\"", "Internal Error P1!"},
      {"INCBIN none", "Syntax Error!"},
      {"ORG .5", "Syntax Error!"},
      {"ORG 65536", "OverFlow Error!"},
      {"PMEM=256", "Internal Error P2!"},
  };
  for (const Example& example : examples)
    EXPECT_EQ(Status(example.source), example.expected) << example.source;
}

TEST(PlainAssembler, SymbolsListingAndSelection) {
  const Result good = Compiled("org 10000 'start\n'all\nLoop:\n ld a,1\n*int\npmem=$B0\n");
  EXPECT_EQ(good.assembler.List1, (std::vector<std::string>{"10000  LOOP:"}));
  EXPECT_EQ(good.assembler.List3, (std::vector<std::string>{"LOOP:                 10000"}));
  EXPECT_EQ(good.assembler.Label2, "10004");
  EXPECT_EQ(good.page, 0xB0);
  const std::vector<Span> listing = {{0xFF0000, "ORG 10000 'START\r\n"},
                                     {0x379B37, "'ALL\r\n"},
                                     {0xFF0000, "LOOP:\r\n"},
                                     {0x6E1478, "0x2710"},
                                     {0, "\tLD A,1\r\n"},
                                     {0x1919DE, "*INT\r\n"},
                                     {0xFF0000, "PMEM=$B0\r\n"},
                                     {0xFF0000, "\r\n"}};
  EXPECT_EQ(good.assembler.RText2, listing);

  const Result bad = Compiled("nop\n  foo ");
  EXPECT_EQ(bad.assembler.selStart, 5);
  EXPECT_EQ(bad.assembler.selLength, 6);
  EXPECT_EQ(bad.assembler.Text14, "Pass1");
  EXPECT_EQ(bad.assembler.statusColour, 0x8080FF);
}

// A failing line keeps the bytes that it had written.
TEST(PlainAssembler, BytesOfAFailingLineStay) {
  EXPECT_EQ(Compiled("DB 1,2,300").memory, (std::map<int32_t, int>{{0, 1}, {1, 2}}));
  EXPECT_EQ(Compiled("X: EQU 300\nLD B,@X").memory, (std::map<int32_t, int>{{0, 6}}));
}

}  // namespace
}  // namespace quoll::plain
