// The opcode tables taken apart, for their tests.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace quoll {

using Strings = std::vector<std::string>;

// Lines of a table without their line ends; what follows the last line end counts as one if there is any.
inline Strings LinesOf(std::string_view table) {
  Strings lines;
  while (!table.empty()) {
    const size_t end = table.find("\r\n");
    lines.emplace_back(table.substr(0, end));
    table.remove_prefix(end == std::string_view::npos ? table.size() : end + 2);
  }
  return lines;
}

struct Row {
  std::string key;
  std::string text;
  char type = ' ';

  bool Starred() const { return text.ends_with('*'); }
};

inline std::string WithoutPadding(std::string text) { return text.substr(0, text.find(' ')); }

// Rows of a table whose instructions stand in column 14, without the end line. Columns of the key as stated.
inline std::vector<Row> RowsOf(std::string_view table, size_t keyColumns) {
  std::vector<Row> rows;
  for (const std::string& line : LinesOf(table)) {
    if (line.starts_with(">end")) continue;
    EXPECT_EQ(line.substr(0, 1), ">") << line;
    const std::string between = line.substr(1 + keyColumns, 12 - keyColumns);
    Row row{WithoutPadding(line.substr(1, keyColumns)), line.substr(13), ' '};
    if (keyColumns == 6) {
      row.type = between[1];
      EXPECT_EQ(between.substr(0, 1) + between.substr(2), "     ") << line;
    }
    EXPECT_EQ(line.substr(1 + row.key.size(), keyColumns - row.key.size()),
              std::string(keyColumns - row.key.size(), ' '));
    rows.push_back(row);
  }
  return rows;
}

}  // namespace quoll
