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

Strings InfoRecords() {
  Strings records = LinesOf(OpcodeInfoText());
  std::erase(records, "");
  return records;
}

std::string KeyOf(const std::string& record) {
  const size_t start = record.rfind('>') + 1;
  return record.substr(start, record.size() - start - 1);
}

TEST(OpcodeInfoText, HasItsRecords) {
  const Strings lines = LinesOf(OpcodeInfoText());
  EXPECT_EQ(std::count(lines.begin(), lines.end(), ""), 127);
  std::set<std::string> keys;
  for (const std::string& record : InfoRecords()) keys.insert(KeyOf(record));
  EXPECT_EQ(InfoRecords().size(), 1268U);
  EXPECT_EQ(keys.size(), 1137U);
  EXPECT_TRUE(OpcodeInfoText().ends_with("<\r\n"));
}

TEST(OpcodeInfoText, GroupsHaveSixteenRecords) {
  const Strings lines = LinesOf(OpcodeInfoText());
  int records = 0;
  for (const std::string& line : lines) {
    if (line.empty()) {
      EXPECT_EQ(records % 16, 0);
    } else {
      ++records;
    }
  }
}

TEST(OpcodeInfoText, EachRecordHasItsForm) {
  for (const std::string& record : InfoRecords()) {
    EXPECT_EQ(std::count(record.begin(), record.end(), '|'), 3) << record;
    EXPECT_EQ(std::count(record.begin(), record.end(), '>'), 1) << record;
    EXPECT_EQ(record.find('|'), 6U) << record;
    EXPECT_EQ(record.substr(0, 6).find_first_not_of(" -+PV10*"), std::string::npos) << record;
    EXPECT_TRUE(record[7] >= '1' && record[7] <= '4' && record[8] == '|') << record;
    EXPECT_TRUE(record.ends_with('<')) << record;
    for (const char c : KeyOf(record)) EXPECT_FALSE(c >= 'A' && c <= 'Z') << record;
  }
}

TEST(OpcodeInfoText, ThreeRecordsWordForWord) {
  const Strings records = InfoRecords();
  for (const char* want : {"------|1|4|No operation is performed.>nop<", "-+V+++|1|4|Adds one to b.>inc b<",
                           "------|2|13/8|The b register is decremented, and if not zero, the signed value n "
                           "is added to pc. The jump "
                           "is measured from the start of the instruction opcode.>djnz (pc+e)<"}) {
    EXPECT_EQ(std::count(records.begin(), records.end(), want), 1) << want;
  }
}

TEST(OpcodeInfoText, RowsWithoutARecord) {
  std::set<std::string> keys;
  for (const std::string& record : InfoRecords()) keys.insert(KeyOf(record));
  Strings missing;
  for (const Row& row : RowsOf(OpcodeText(), 12)) {
    std::string name = row.text;
    if (row.Starred()) name.pop_back();
    for (char& c : name) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    if (!keys.contains(name)) missing.push_back(row.text);
  }
  EXPECT_EQ(missing.size(), 346U);
  for (const char* text : {"CB", "ED", "DD", "FD", "DDCB", "FDCB", "EX AF,AF\x92", "RST 0H", "RST 8H",
                           "LD B,RLC (IX+d)*", "LD A,SET 7,(IY+d)*"}) {
    EXPECT_EQ(std::count(missing.begin(), missing.end(), text), 1) << text;
  }
  for (const char* key : {"ex af,af'", "rst 00h", "rst 08h", "in f,(c)", "set 7,(iy+d),a", "rlc (ix+d),b"}) {
    EXPECT_TRUE(keys.contains(key)) << key;
  }
}

// Flags, size and clock cycles of each kind of instruction.
TEST(OpcodeInfoText, Figures) {
  std::map<std::string, std::string> figures;
  for (const std::string& record : InfoRecords()) {
    figures.emplace(KeyOf(record), record.substr(0, record.find('|', record.find('|', 7) + 1)));
  }
  const std::map<std::string, std::string> want = {
      {"ld b,c", "------|1|4"},
      {"ld (hl),n", "------|2|10"},
      {"ld a,(nn)", "------|3|13"},
      {"ld hl,(nn)", "------|3|16"},
      {"ld (nn),bc", "------|4|20"},
      {"ld ix,nn", "------|4|14"},
      {"ld (ix+d),n", "------|4|19"},
      {"ld ixh,n", "------|3|11"},
      {"inc (iy+d)", "-+V+++|3|23"},
      {"dec ixl", "-+V+++|2|8"},
      {"inc ix", "------|2|10"},
      {"add hl,bc", "++-+--|1|11"},
      {"add ix,sp", "++-+--|2|15"},
      {"sbc hl,de", "++V+++|2|15"},
      {"add a,(ix+d)", "++V+++|3|19"},
      {"cp n", "++V+++|2|7"},
      {"and (hl)", "00P1++|1|7"},
      {"xor a", "00P0++|1|4"},
      {"rlca", "+0-0--|1|4"},
      {"sll b", "+0P0++|2|8"},
      {"rlc (hl)", "+0P0++|2|15"},
      {"bit 3,(hl)", "-0 1+ |2|12"},
      {"bit 3,(ix+d)", "-0 1+ |4|20"},
      {"set 3,(ix+d)", "------|4|23"},
      {"res 0,(iy+d),l", "------|4|23"},
      {"rr (iy+d),d", "+0P0++|4|23"},
      {"daa", "+-P+++|1|4"},
      {"cpl", "-1-1--|1|4"},
      {"scf", "10-0--|1|4"},
      {"ccf", "+0-+--|1|4"},
      {"ld a,i", "-0*0++|2|9"},
      {"ld r,a", "------|2|9"},
      {"ldi", "-0*0--|2|16"},
      {"lddr", "-000--|2|21/16"},
      {"cpir", "-1*+++|2|21/16"},
      {"outi", "-1  + |2|16"},
      {"otdr", "-1  1 |2|21/16"},
      {"ex af,af'", "++++++|1|4"},
      {"pop af", "++++++|1|10"},
      {"pop iy", "------|2|14"},
      {"push bc", "------|1|11"},
      {"ex (sp),ix", "------|2|23"},
      {"jp nn", "------|3|10"},
      {"jp (hl)", "------|1|4"},
      {"jp (ix)", "------|2|8"},
      {"jr (pc+e)", "------|2|12"},
      {"jr z,(pc+e)", "------|2|12/7"},
      {"call nn", "------|3|17"},
      {"call c,nn", "------|3|17/10"},
      {"ret", "------|1|10"},
      {"ret m", "------|1|11/5"},
      {"retn", "------|2|14"},
      {"rst 38h", "------|1|11"},
      {"in a,(n)", "------|2|11"},
      {"in b,(c)", "-0P0++|2|12"},
      {"out (c),0", "------|2|12"},
      {"rld", "-0P0++|2|18"},
      {"neg", "++V+++|2|8"},
      {"im 0/1", "------|2|8"},
      {"ld sp,hl", "------|1|6"},
      {"in f,(c)", "-0P0++|2|12"},
      {"ld a,(de)", "------|1|7"},
      {"halt", "------|1|4"},
  };
  for (const auto& [key, figure] : want) EXPECT_EQ(figures[key], figure) << key;
}

}  // namespace
}  // namespace quoll
