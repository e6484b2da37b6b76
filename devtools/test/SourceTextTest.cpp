#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "devtools/SourceText.h"
#include "devtools/ToolText.h"

namespace quoll {
namespace {

std::string Lines(const std::string& text) { return ReplaceText(text, "|", "\r\n"); }

using Coloured = std::vector<std::pair<uint32_t, std::string>>;

Coloured Parts(const ColouredText& text) {
  Coloured parts;
  for (size_t i = 0; i < text.runs.size(); ++i) {
    const size_t start = text.runs[i].start;
    const size_t end = i + 1 < text.runs.size() ? text.runs[i + 1].start : text.text.size();
    parts.emplace_back(text.runs[i].colour, ReplaceText(text.text.substr(start, end - start), "\r\n", "|"));
  }
  return parts;
}

constexpr uint32_t kBlue = 0xFF0000;
constexpr uint32_t kGreen = 55 + 155 * 256 + 55 * 65536;
constexpr uint32_t kRed = 222 + 25 * 256 + 25 * 65536;
constexpr uint32_t kViolet = 222 + 25 * 256 + 225 * 65536;

TEST(SourceText, Colours) {
  for (const auto& [line, colour] : std::vector<std::pair<const char*, uint32_t>>{{"X: EQU 5", kBlue},
                                                                                  {"  loop: ", kBlue},
                                                                                  {" *BREAK", kRed},
                                                                                  {"db 5", kViolet},
                                                                                  {" DW 5", kViolet},
                                                                                  {"Ds 5,5", kViolet},
                                                                                  {"IncBin \"x\"", kViolet},
                                                                                  {"org 5", kViolet},
                                                                                  {"NOP", 0},
                                                                                  {"DB", 0},
                                                                                  {"PMEM=5", 0}}) {
    EXPECT_EQ(Parts(ColouredSource(line)), (Coloured{{colour, line}})) << line;
  }
}

TEST(SourceText, CommentsAndLines) {
  EXPECT_EQ(Parts(ColouredSource(Lines("'all|NOP 'one|L: 'two|L:||"))), (Coloured{{kGreen, "'all|"},
                                                                                  {0, "NOP "},
                                                                                  {kGreen, "'one|"},
                                                                                  {0, "L: "},
                                                                                  {kGreen, "'two|"},
                                                                                  {kBlue, "L:||"}}));
  for (const char* text : {"", "|", "||", "A|", "A", "'|'"}) {
    EXPECT_EQ(ColouredSource(Lines(text)).text, Lines(text)) << text;
  }
}

TEST(SourceText, ConvertTvcasm) {
  for (const auto& [from, to] : std::vector<std::pair<const char*, const char*>>{
           {"ld a,b ;comment|nop", "ld a,b |nop"},
           {"\tnop\t\tret", " nop ret"},
           {"nop|   ret", "nop|ret"},
           {"call loop", "call @loop"},
           {"CALL loop", "call @loop"},
           {"jr loop", "jr @loop"},
           {"jr z,loop", "jr @z,loop"},
           {"JR loop", "JR loop"},
           {"JR Z,loop", "jr Z,@loop"},
           {"JR NZ,loop", "jr nz,@loop"},
           {"JR C,loop", "jr c,@loop"},
           {"JR nc,loop", "jr nc,@loop"},
           {"JR NC,loop", "JR NC,loop"},
           {"JP Z,loop", "jp z,@loop"},
           {"JP NZ,loop", "jp nz,@loop"},
           {"JP loop", "jp @loop"},
           {"JP NC,loop", "jp @NC,loop"},
           {"jp loop", "jp loop"},
           {"x EQU 5", "x: EQU 5"},
           {"text:|DB 5", "text DB 5"},
           {"text:| DW 5", "text DW 5"},
           {"text:|DS 5,0", "text:|DS 5,0"},
           {"", ""},
       }) {
    EXPECT_EQ(ConvertTvcasm(Lines(from)), Lines(to)) << from;
  }
}

// Runs of blanks shrink by the fixed row of replacements: 13, 5, 5, 4, 4, 3, 2, 2.
TEST(SourceText, ConvertTvcasmBlanks) {
  const auto model = [](int blanks) {
    for (const int run : {13, 5, 5, 4, 4, 3, 2, 2}) blanks = blanks / run + blanks % run;
    return blanks;
  };
  for (int blanks = 1; blanks < 200; ++blanks) {
    const std::string text = "a" + std::string(static_cast<size_t>(blanks), ' ') + "b";
    EXPECT_EQ(ConvertTvcasm(text), "a" + std::string(static_cast<size_t>(model(blanks)), ' ') + "b")
        << blanks;
  }
}

TEST(SourceText, ASemicolonAndItsRestBecomeBlanks) {
  EXPECT_EQ(ConvertTvcasm(";ab"), " ");
  EXPECT_EQ(ConvertTvcasm(Lines("nop;a;b|;c|ret")), Lines("nop |ret").replace(4, 2, "\r\n\r\n"));
}

TEST(SourceText, LineEnds) {
  EXPECT_EQ(WithBothLineEnds("a\nb\r\nc\rd\n\n"), "a\r\nb\r\nc\r\nd\r\n\r\n");
  EXPECT_EQ(WithBothLineEnds("\r\r\n"), "\r\n\r\n");
  EXPECT_EQ(SourceOfFile("DB \"\xC3\x81\"\n"), "DB \"\xC1\"\r\n");
  EXPECT_EQ(SourceOfFile("DB \"\xC1\"\n"), "DB \"\xC1\"\r\n");
}

}  // namespace
}  // namespace quoll
