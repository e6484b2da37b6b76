// The plain disassembler and its tables against counts and lines worked out by hand.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "devtools/test/model/PlainDisAsm.h"
#include "devtools/test/model/PlainTables.h"

namespace quoll::plain {
namespace {

bool Starred(const Row& row) { return row.text.back() == '*'; }

std::string Page(const Row& row) { return row.key.substr(0, row.key.size() - 2); }

std::string At(int32_t address, const std::vector<int>& bytes, int32_t count = 1, int32_t mode = 0) {
  const auto read = [&](int32_t at) {
    const int32_t index = at - address;
    return index >= 0 && index < static_cast<int32_t>(bytes.size()) ? bytes[static_cast<size_t>(index)] : 0;
  };
  return DisAsm(read, address, count, mode);
}

TEST(PlainTables, DisAsmRowsHaveTheirCounts) {
  std::map<std::string, int> rows;
  int starred = 0;
  for (const Row& row : DisAsmRows()) {
    ++rows[Page(row)];
    starred += Starred(row) ? 1 : 0;
  }
  // The prefix lines count as rows of the page that they are written like: CB, ED, DD, FD and DDCB, FDCB.
  const std::map<std::string, int> expected = {{"", 252 + 4},  {"CB", 256},   {"ED", 78},    {"DD", 85 + 1},
                                               {"FD", 85 + 1}, {"DDCB", 255}, {"FDCB", 256}, {"DDC", 1}};
  EXPECT_EQ(rows, expected);
  EXPECT_EQ(DisAsmRows().size(), 1274U);
  EXPECT_EQ(starred, 570);
}

TEST(PlainTables, AsmRowsHaveTheirLetters) {
  std::map<char, int> letters;
  const std::vector<Row> rows = AsmRows();
  for (const Row& row : rows) ++letters[row.letter];
  EXPECT_EQ(letters, (std::map<char, int>{
                         {' ', 652}, {'n', 23}, {'m', 40}, {'e', 6}, {'d', 557}, {'x', 2}, {'y', 1}}));
  EXPECT_EQ(rows.size(), 1281U);
  for (size_t i = 0; i < 704; ++i) EXPECT_FALSE(Starred(rows[i])) << rows[i].key;
  EXPECT_EQ(rows[704].text, "SLL B*");
}

struct Line {
  std::vector<int> bytes;
  const char* text;
};

TEST(PlainDisAsm, Lines) {
  const Line lines[] = {
      {{0x00}, "NOP"},
      {{0x08}, "EX AF,AF\x92"},
      {{0x01, 0x34, 0x12}, "LD BC,1234"},
      {{0x32, 0x34, 0x12}, "LD (1234),A"},
      {{0x06, 0x0A}, "LD B,0A"},
      {{0xD3, 0x05}, "OUT (05),A"},
      {{0x18, 0xFE}, "JR 1000"},
      {{0x20, 0x10}, "JR NZ,1012"},
      {{0xDD, 0x70, 0x05}, "LD (IX+05)B"},
      {{0xDD, 0x36, 0x05, 0x0A}, "LD IX+05),0A"},
      {{0xFD, 0x36, 0x85, 0x0A}, "LD IY+85),0A"},
      {{0xFD, 0xCB, 0x05, 0x46}, "BIT 0,(IY+05)"},
      {{0xDD, 0xCB, 0x05, 0x40}, "BIT 0,(IX+05)"},
      {{0xDD, 0xCB, 0x05, 0x36}, "SLL (IX+05)"},
      {{0xDD, 0x26, 0x07}, "LD IXH,07*"},
      {{0xED, 0x43, 0x34, 0x12}, "LD (1234),BC"},
      {{0xED, 0x70}, "IN F,(C)* / IN (C)*"},
      {{0xED, 0x00}, ">ED00 Unknown!"},
      {{0xFD, 0x00}, ">FD00 Unknown!"},
      {{0xDD, 0xCB, 0x05, 0xFB}, ">DDCBFB Unknown!"},
  };
  for (const Line& line : lines) EXPECT_EQ(At(0x1000, line.bytes), line.text);
}

TEST(PlainDisAsm, StepsAndModes) {
  EXPECT_EQ(At(0x4000, {0xFD, 0x00, 0x3E, 0x05}, 2, 1), " 4000 >FD00 Unknown!\r\n 4002 LD A,05");
  // Three bytes only are stepped over, and the fourth is an instruction of its own.
  EXPECT_EQ(At(0, {0xDD, 0xCB, 0x05, 0xFB, 0xC9}, 3), ">DDCBFB Unknown!\r\nEI\r\nRET");
  EXPECT_EQ(At(0, {0xDD, 0xCB, 0x05, 0xFA, 0xC9}, 2), "LD D,SET 7,(IX+05)\r\nRET");
  EXPECT_EQ(At(0, {0xDD, 0x36, 0x05, 0x0A, 0xC9}, 2), "LD IX+05),0A\r\nRET");
  EXPECT_EQ(At(0, {0, 0, 0}, 3, 2), "\r\n\r\n");
  EXPECT_EQ(At(0, {}, 0), "");
  EXPECT_EQ(At(0, {0x18, 0xF0}), "JR FFFFFF");
  EXPECT_EQ(At(0xFFFF, {0x18, 0x00}, 1, 1), " FFFF JR 10001");
}

}  // namespace
}  // namespace quoll::plain
