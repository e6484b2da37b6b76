#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "devtools/OpcodeTables.h"
#include "devtools/test/TableRows.h"

namespace quoll {
namespace {

const Strings kPrefixes = {"CB", "ED", "DD", "FD", "DDCB", "FDCB"};

bool IsPrefixRow(const Row& row) { return row.text == row.key; }

// CB, ED, DD, FD, DDCB and FDCB, or nothing for an unprefixed key.
std::string ClassOf(const std::string& key) {
  if (key.size() > 4) return key.substr(0, 4);
  return key.size() > 2 ? key.substr(0, 2) : "";
}

std::vector<Row> Instructions(std::vector<Row> rows) {
  std::erase_if(rows, IsPrefixRow);
  return rows;
}

TEST(OpcodeText, HasItsRowsOfEachClass) {
  const std::vector<Row> rows = RowsOf(OpcodeText(), 12);
  EXPECT_EQ(rows.size(), 1274U);
  std::map<std::string, int> all, starred;
  for (const Row& row : Instructions(rows)) {
    ++all[ClassOf(row.key)];
    starred[ClassOf(row.key)] += row.Starred() ? 1 : 0;
  }
  const std::map<std::string, int> wantAll = {{"", 252},  {"CB", 256},   {"ED", 78},   {"DD", 85},
                                              {"FD", 85}, {"DDCB", 256}, {"FDCB", 256}};
  const std::map<std::string, int> wantStarred = {{"", 0},    {"CB", 8},     {"ED", 20},   {"DD", 46},
                                                  {"FD", 46}, {"DDCB", 225}, {"FDCB", 225}};
  EXPECT_EQ(all, wantAll);
  EXPECT_EQ(starred, wantStarred);
}

TEST(OpcodeText, BeginsWithThePrefixesAndThenAscends) {
  const std::vector<Row> rows = RowsOf(OpcodeText(), 12);
  for (size_t i = 0; i < kPrefixes.size(); ++i) {
    EXPECT_EQ(rows[i].key, kPrefixes[i]);
    EXPECT_EQ(rows[i].text, kPrefixes[i]);
  }
  EXPECT_TRUE(std::is_sorted(rows.begin() + 6, rows.end(), [](Row a, Row b) {
    // The misprinted key stands where the right one would.
    for (Row* row : {&a, &b}) row->key = row->key == "DDCBB" ? "DDCBFB" : row->key;
    return a.key < b.key;
  }));
}

TEST(OpcodeText, EndsWithItsEndLineAndThreeZeros) {
  EXPECT_TRUE(OpcodeText().ends_with(std::string_view("RST 38H\r\n>end of file\0\0\0", 24)));
}

TEST(OpcodeText, HasItsSlips) {
  for (const auto& [key, text] : {
           std::pair("DDCBFB", ""),
           {"DDCBB", "LD E,SET 7,(IX+d)*"},
           {"FDCB64", "BIT 4,(IY+d)*"},
           {"FDCB65", "BIT 4,(IY+d)*"},
           {"08", "EX AF,AF\x92"},
           {"ED70", "IN F,(C)* / IN (C)*"},
           {"ED71", "OUT (C),0*"},
           {"ED4E", "IM 0/1*"},
           {"DD26", "LD IXH,n*"},
           {"CB30", "SLL B*"},
           {"DDCB00", "LD B,RLC (IX+d)*"},
           {"CB", "CB"},
           {"ED77", ""},
           {"ED00", ""},
           {"", ""},
           {"end", ""},
       }) {
    EXPECT_EQ(OpcodeRow(key), text) << key;
  }
}

TEST(OpcodeText, OnlyPlaceholdersAreSmallAndOneByteIsNoAscii) {
  for (const Row& row : RowsOf(OpcodeText(), 12)) {
    for (const char c : row.text) {
      const bool small = c >= 'a' && c <= 'z';
      EXPECT_TRUE(!small || c == 'n' || c == 'd' || c == 'e') << row.text;
    }
  }
  const std::string_view table = OpcodeText();
  EXPECT_EQ(std::count_if(table.begin(), table.end(), [](char c) { return (c & 0x80) != 0; }), 1);
}

TEST(OpcodeText, IsFoundByItsFixedPattern) {
  const std::string_view table = OpcodeText();
  const size_t hit = table.find(">CB ");
  EXPECT_EQ(table.substr(hit, 17), ">CB          CB\r\n");
  // 40 characters from the hit plus 7 hold the text of every row.
  for (const Row& row : RowsOf(table, 12)) {
    const size_t p = table.find(">" + row.key + " ");
    std::string text(table.substr(p + 7, 40));
    text = text.substr(0, text.find('\r'));
    EXPECT_EQ(text.substr(text.find_first_not_of(' ')), row.text);
  }
}

TEST(AsmOpcodeText, HasItsRowsAndLetters) {
  const std::vector<Row> rows = RowsOf(AsmOpcodeText(), 6);
  EXPECT_EQ(rows.size(), 1281U);
  std::map<char, int> letters;
  for (const Row& row : rows) ++letters[row.type];
  const std::map<char, int> want = {{' ', 652}, {'n', 23}, {'m', 40}, {'e', 6},
                                    {'d', 557}, {'x', 2},  {'y', 1}};
  EXPECT_EQ(letters, want);
  EXPECT_TRUE(AsmOpcodeText().ends_with("\r\n>end of file\r\n"));
}

TEST(AsmOpcodeText, DocumentedRowsComeFirstTheOthersInBlocks) {
  const std::vector<Row> rows = RowsOf(AsmOpcodeText(), 6);
  Strings documented;
  for (const Row& row : RowsOf(OpcodeText(), 12)) {
    if (!row.Starred()) documented.push_back(row.key);
  }
  ASSERT_EQ(documented.size(), 704U);
  Strings keys;
  for (const Row& row : rows) keys.push_back(row.key);
  EXPECT_EQ(Strings(keys.begin(), keys.begin() + 704), documented);

  struct Block {
    std::string name, first, last;
    size_t rows;
  };
  size_t at = 704;
  for (const Block& block : {Block{"CB", "CB30", "CB37", 8}, Block{"DD", "DD24", "DDBD", 46},
                             Block{"DDCB", "DDCB00", "DDCBFF", 225}, Block{"ED", "ED4C", "ED7E", 20},
                             Block{"FD", "FD24", "FDBD", 53}, Block{"FDCB", "FDCB00", "FDCBFF", 225}}) {
    EXPECT_EQ(keys[at], block.first);
    EXPECT_EQ(keys[at + block.rows - 1], block.last);
    EXPECT_TRUE(std::is_sorted(keys.begin() + static_cast<ptrdiff_t>(at),
                               keys.begin() + static_cast<ptrdiff_t>(at + block.rows)));
    for (size_t i = at; i < at + block.rows; ++i) EXPECT_EQ(ClassOf(keys[i]), block.name);
    at += block.rows;
  }
  EXPECT_EQ(at, rows.size());
}

TEST(AsmOpcodeText, TheSecondFdBlockHasItsSlips) {
  const std::vector<Row> rows = RowsOf(AsmOpcodeText(), 6);
  Strings slips;
  for (size_t i = 704 + 8 + 46 + 225 + 20; i < rows.size(); ++i) {
    if (ClassOf(rows[i].key) == "FD" && !rows[i].Starred()) {
      slips.push_back(rows[i].key + " " + rows[i].type + " " + rows[i].text);
    }
  }
  const Strings want = {"FD29   ADD IY,IY",  "FD29   ADD IY,IY", "FD2A n LD IY,()",   "FD34   INC (IY+d)",
                        "FD35   DEC (IY+d)", "FD36 x LD (IY+),", "FD46   LD B,(IY+d)"};
  EXPECT_EQ(slips, want);
}

struct Cut {
  const char* source;
  const char* key;
  char type;
};

TEST(AsmOpcodeText, HasNoPlaceholders) {
  const std::vector<Row> rows = RowsOf(AsmOpcodeText(), 6);
  for (const Cut& cut :
       {Cut{"LD BC,", "01", 'm'}, Cut{"LD (),HL", "22", 'm'}, Cut{"LD A,", "3E", 'n'},
        Cut{"LD A,()", "3A", 'm'}, Cut{"JP NZ,", "C2", 'm'}, Cut{"DJNZ ", "10", 'e'},
        Cut{"JR NZ,", "20", 'e'}, Cut{"JR ", "18", 'e'}, Cut{"OUT (),A", "D3", 'n'},
        Cut{"LD (IX+),B", "DD70", 'd'}, Cut{"LD (IX+),", "DD36", 'x'}, Cut{"LD (IY+),", "FD36", 'y'},
        Cut{"BIT 0,(IX+)", "DDCB46", 'd'}, Cut{"EX AF,AF'", "08", ' '}, Cut{"IN (C)*", "ED70", ' '},
        Cut{"JP ", "C3", 'm'}, Cut{"LD IXH,*", "DD26", 'n'}, Cut{"CP ", "FE", 'n'},
        Cut{"LD E,SET 7,(IX+)*", "DDCBFB", 'd'}}) {
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.text == cut.source; });
    ASSERT_NE(found, rows.end()) << cut.source;
    EXPECT_EQ(found->key, cut.key) << cut.source;
    EXPECT_EQ(found->type, cut.type) << cut.source;
  }
}

TEST(AsmOpcodeText, TheFirstRowOfATextIsFound) {
  for (const Cut& cut :
       {Cut{"LD (),HL", "22", 'm'}, Cut{"LD HL,()", "2A", 'm'}, Cut{"BIT 0,(IX+)*", "DDCB40", 'd'},
        Cut{"BIT 4,(IY+)*", "FDCB60", 'd'}, Cut{"NEG", "ED44", ' '}, Cut{"NEG*", "ED4C", ' '},
        Cut{"RETN*", "ED55", ' '}, Cut{"IM 0/1*", "ED4E", ' '}, Cut{"ADD IY,IY", "FD29", ' '},
        Cut{"DDCB", "DDCB", ' '}}) {
    const AsmRow* row = FindAsmRow(cut.source);
    ASSERT_NE(row, nullptr) << cut.source;
    std::string key;
    for (int32_t i = 0; i < row->keyBytes; ++i) {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      key += kDigits[row->key[static_cast<size_t>(i)] >> 4];
      key += kDigits[row->key[static_cast<size_t>(i)] & 15];
    }
    EXPECT_EQ(key, cut.key);
    EXPECT_EQ(row->type, cut.type);
  }
  EXPECT_EQ(FindAsmRow("JP"), nullptr);
  EXPECT_EQ(FindAsmRow(""), nullptr);
  EXPECT_EQ(FindAsmRow("nop"), nullptr);
  EXPECT_EQ(FindAsmRow("of file"), nullptr);
}

// The hash finds what a search of the whole text for two blanks, the text and a line end finds.
TEST(AsmOpcodeText, EveryTextIsFoundAsASearchWouldFindIt) {
  const std::string_view table = AsmOpcodeText();
  for (const Row& row : RowsOf(table, 6)) {
    const size_t p = table.find("  " + row.text + "\r\n");
    const std::string key = WithoutPadding(std::string(table.substr(p - 10, 6)));
    const AsmRow* found = FindAsmRow(row.text);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->type, table.substr(p - 10)[7]) << row.text;
    EXPECT_EQ(static_cast<size_t>(found->keyBytes), key.size() / 2);
    for (size_t i = 0; i < key.size() / 2; ++i) {
      EXPECT_EQ(found->key[i], std::stoi(key.substr(2 * i, 2), nullptr, 16)) << row.text;
    }
  }
}

}  // namespace
}  // namespace quoll
