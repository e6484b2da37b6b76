// The opcode tables against tables made by other code from the processor's order of opcodes.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "devtools/OpcodeTables.h"
#include "devtools/test/model/PlainTables.h"
#include "devtools/test/model/PlainText.h"

namespace quoll {
namespace {

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  std::string rest(text);
  for (int end = plain::InStr(rest, "\r\n"); end > 0; end = plain::InStr(rest, "\r\n")) {
    lines.push_back(plain::Left(rest, end - 1));
    rest = plain::Mid(rest, end + 2);
  }
  lines.push_back(rest);
  return lines;
}

TEST(OpcodeTablesModel, RowsOfDisassemblerAndAssembler) {
  EXPECT_EQ(Lines(OpcodeText()), Lines(plain::DisAsmTable()));
  EXPECT_EQ(Lines(AsmOpcodeText()), Lines(plain::AsmTable()));
}

// How the help names a row: in small letters, without star, the register of an index copy behind.
std::string HelpKey(const plain::Row& row) {
  if (row.key == "08") return "ex af,af'";
  if (row.key == "C7") return "rst 00h";
  if (row.key == "CF") return "rst 08h";
  if (row.key == "ED70") return "in f,(c)";
  std::string text = row.text;
  if (text.back() == '*') text.pop_back();
  if (row.key.size() > 4 && plain::Begins(text, "LD ")) {
    text = plain::Mid(text, 6) + "," + plain::Mid(text, 4, 1);  // LD B,RLC (IX+d)
  }
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return text;
}

TEST(OpcodeTablesModel, HelpHasARecordForEveryRow) {
  std::vector<std::string> expected;
  for (const plain::Row& row : plain::DisAsmRows()) {
    if (row.key != row.text) expected.push_back(HelpKey(row));
  }
  std::vector<std::string> keys;
  int empty = 0;
  for (const std::string& line : Lines(OpcodeInfoText())) {
    if (line.empty()) {
      ++empty;
      continue;
    }
    const int open = plain::InStr(line, ">");
    keys.push_back(plain::Mid(line, open + 1, static_cast<int>(line.size()) - open - 1));
  }
  ASSERT_EQ(keys.size(), expected.size());
  for (size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(keys[i], expected[i]);
  EXPECT_EQ(empty, 127 + 1);  // and what follows the last line's end
}

}  // namespace
}  // namespace quoll
