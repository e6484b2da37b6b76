#include "devtools/AsmSymbols.h"

#include "devtools/ToolText.h"

namespace quoll {

namespace {

constexpr size_t kNameColumn = 8;
constexpr size_t kNameCompared = 25;    // by references, colon included
constexpr size_t kLabelCompared = 255;  // by label definitions
constexpr size_t kNameShown = 60;
constexpr size_t kNameWidth = 22;

std::string_view ValueColumns(std::string_view entry) { return entry.substr(0, 5); }

void Pad(std::string& text, size_t columns) {
  if (text.size() < columns) text.resize(columns, ' ');
}

}  // namespace

void ClearSymbols(AsmSymbols& symbols) { symbols = AsmSymbols(); }

void AddSymbol(AsmSymbols& symbols, std::string_view value, std::string_view name) {
  std::string entry(value);
  Pad(entry, kNameColumn - 1);
  entry += name;
  symbols.byName.try_emplace(std::string(Mid(entry, kNameColumn, kNameCompared)), symbols.List1.size());
  symbols.names.emplace(Mid(entry, kNameColumn, kLabelCompared));
  symbols.List1.push_back(std::move(entry));
}

bool HasSymbol(const AsmSymbols& symbols, const std::string& name) { return symbols.names.contains(name); }

int32_t cimh(const AsmSymbols& symbols, std::string_view name) {
  const auto found = symbols.byName.find(std::string(name) + ":");
  if (found == symbols.byName.end()) return -1;
  return RoundedToInt32(NumberValue(ValueColumns(symbols.List1[found->second]))).value_or(-1);
}

std::vector<std::string> SymbolDisplay(const AsmSymbols& symbols) {
  std::vector<std::string> shown;
  shown.reserve(symbols.List1.size());
  for (const std::string& entry : symbols.List1) {
    std::string line(Mid(entry, kNameColumn, kNameShown));
    Pad(line, kNameWidth);
    shown.push_back(line.append(ValueColumns(entry)));
  }
  return shown;
}

}  // namespace quoll
