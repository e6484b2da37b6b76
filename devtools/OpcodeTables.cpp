#include "devtools/OpcodeTables.h"

#include <optional>
#include <unordered_map>

#include "devtools/ToolText.h"

// The files themselves become part of the program. The assembler looks for them in the folder of the
// includes.
asm(R"(
        .section .rodata
        .global quollOpcodeText, quollOpcodeTextEnd
quollOpcodeText:
        .incbin "devtools/tables/OpcodeText.txt"
quollOpcodeTextEnd:
        .global quollAsmOpcodeText, quollAsmOpcodeTextEnd
quollAsmOpcodeText:
        .incbin "devtools/tables/AsmOpcodeText.txt"
quollAsmOpcodeTextEnd:
        .global quollOpcodeInfoText, quollOpcodeInfoTextEnd
quollOpcodeInfoText:
        .incbin "devtools/tables/OpcodeInfoText.txt"
quollOpcodeInfoTextEnd:
        .text
)");

extern "C" {
extern const char quollOpcodeText[], quollOpcodeTextEnd[];
extern const char quollAsmOpcodeText[], quollAsmOpcodeTextEnd[];
extern const char quollOpcodeInfoText[], quollOpcodeInfoTextEnd[];
}

namespace quoll {

namespace {

using namespace std::string_view_literals;

// Key and text of a table's line without its line end; nothing for the end line.
struct Line {
  std::string_view key;
  std::string_view rest;  // from the column behind the key's
};

// Calls use(Line) for each row.
template <class Use>
void ForEachRow(std::string_view table, size_t keyColumns, Use use) {
  for (size_t start = 0; start < table.size();) {
    const size_t end = table.find("\r\n"sv, start);
    if (end == std::string_view::npos) return;  // the end line of OpcodeText has none
    const std::string_view line = table.substr(start, end - start);
    if (line.size() > 1 + keyColumns && !line.starts_with(">end"sv)) {
      use(Line{Trim(line.substr(1, keyColumns)), line.substr(1 + keyColumns)});
    }
    start = end + 2;
  }
}

// The first row of each name counts, as for one who searches from the beginning.
template <class Value>
using Index = std::unordered_map<std::string_view, Value>;

Index<std::string_view> IndexOfKeys() {
  Index<std::string_view> index;
  ForEachRow(OpcodeText(), 12, [&](const Line& line) { index.try_emplace(line.key, Trim(line.rest)); });
  return index;
}

Index<AsmRow> IndexOfTexts() {
  Index<AsmRow> index;
  ForEachRow(AsmOpcodeText(), 6, [&](const Line& line) {
    AsmRow row;
    row.type = line.rest[1];
    for (size_t at = 0; at < line.key.size(); at += 2) {
      row.key[static_cast<size_t>(row.keyBytes++)] =
          static_cast<uint8_t>(HexValue(line.key.substr(at, 2)).value_or(0));
    }
    index.try_emplace(line.rest.substr(6), row);
  });
  return index;
}

}  // namespace

std::string_view OpcodeText() {
  return {quollOpcodeText, static_cast<size_t>(quollOpcodeTextEnd - quollOpcodeText)};
}

std::string_view AsmOpcodeText() {
  return {quollAsmOpcodeText, static_cast<size_t>(quollAsmOpcodeTextEnd - quollAsmOpcodeText)};
}

std::string_view OpcodeInfoText() {
  return {quollOpcodeInfoText, static_cast<size_t>(quollOpcodeInfoTextEnd - quollOpcodeInfoText)};
}

std::string_view OpcodeRow(std::string_view key) {
  static const Index<std::string_view> index = IndexOfKeys();
  const auto found = index.find(key);
  return found == index.end() ? std::string_view() : found->second;
}

const AsmRow* FindAsmRow(std::string_view text) {
  static const Index<AsmRow> index = IndexOfTexts();
  const auto found = index.find(text);
  return found == index.end() ? nullptr : &found->second;
}

}  // namespace quoll
