#include <gtest/gtest.h>

#include <string>

#include "cards/CodePage852.h"
#include "cards/Printer.h"

namespace quoll {
namespace {

// The page's upper half as it looks, 16 characters a row from 0x80 on; 0xAA, 0xF0 and 0xFF, which look like
// nothing, and the hyphen that is none are written as their codes.
const std::string kUpperHalf =
    "ÇüéâäůćçłëŐőîŹÄĆ"
    "ÉĹĺôöĽľŚśÖÜŤťŁ×č"
    "áíóúĄąŽžĘę\u00ACźČş«»"
    "░▒▓│┤ÁÂĚŞ╣║╗╝Żż┐"
    "└┴┬├─┼Ăă╚╔╩╦╠═╬¤"
    "đĐĎËďŇÍÎě┘┌█▄ŢŮ▀"
    "ÓßÔŃńňŠšŔÚŕŰýÝţ´"
    "\u00AD˝˛ˇ˘§÷¸°¨˙űŘř■\u00A0";

std::string Printed(const std::string& machineText) {
  Printer printer;
  for (const char c : machineText) Senddata(printer, static_cast<uint8_t>(c));
  return PrintedText(printer.printed);
}

TEST(CodePage852, LowerHalfIsItself) {
  for (int byte = 0; byte < 0x80; ++byte) {
    EXPECT_EQ(CodePage852(static_cast<uint8_t>(byte)), static_cast<char32_t>(byte));
  }
  for (char c = 0x20; c < 0x7F; ++c) EXPECT_EQ(PrintedText({&c, 1}), std::string(1, c));
}

TEST(CodePage852, UpperHalf) {
  std::string page;
  for (int byte = 0x80; byte < 0x100; ++byte) page.push_back(static_cast<char>(byte));
  EXPECT_EQ(PrintedText(page), kUpperHalf);
}

TEST(CodePage852, LineEnds) {
  for (const auto& [page, text] : {std::pair("", ""),
                                   {"a\r\nb", "a\nb"},
                                   {"a\nb", "a\nb"},
                                   {"a\rb", "a\nb"},
                                   {"a\r\n\r\nb", "a\n\nb"},
                                   {"a\r\r\nb", "a\n\nb"},
                                   {"a\n\rb", "a\n\nb"}})
    EXPECT_EQ(PrintedText(page), text);
}

TEST(CodePage852, ControlCharacters) {
  for (int byte = 0; byte < 0x20; ++byte) {
    const std::string text = PrintedText(std::string(1, static_cast<char>(byte)));
    switch (byte) {
      case 9: EXPECT_EQ(text, "\t"); break;
      case 12: EXPECT_EQ(text, "\f"); break;
      case 10:
      case 13: EXPECT_EQ(text, "\n"); break;
      default: EXPECT_EQ(text, ".") << byte;
    }
  }
  EXPECT_EQ(PrintedText("\x7F"), ".");
}

// The machine's letters and frame pieces, on their way through the printer's table.
TEST(CodePage852, WhatTheMachinePrints) {
  for (const auto& [machine, text] : {
           std::pair("\x80\x81\x82\x83\x84\x85\x86\x87\x88", "ÁÉĺÓÖŐÚÜŰ"),
           {"\x90\x91\x92\x93\x94\x95\x96\x97\x98", "áéîóöőúüű"},
           {"\x7F\x89\x8A\x8B\x8C\x8D\x8E\x8F", "█┌└│├┬┼Ă"},
           {"\x99\x9A\x9B\x9C\x9D\x9E\x9F\xA0\xFF", "┐┘─┤┴ČŠ.."},
           {"10 PRINT \"\x91\"\r\n", "10 PRINT \"é\"\n"},
       })
    EXPECT_EQ(Printed(machine), text);
}

}  // namespace
}  // namespace quoll
