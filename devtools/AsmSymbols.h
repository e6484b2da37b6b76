// The assembler's symbol table: entries of text in the order of the source, and an index of their names.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quoll {

struct AsmSymbols {
  // Value in decimal, padded to seven columns, then the name with its colon: "10000  LOOP:".
  std::vector<std::string> List1;

  // What the look-ups compare, the first 25 and 255 columns of the names; by the former the first entry's
  // number.
  std::unordered_map<std::string, size_t> byName;
  std::unordered_set<std::string> names;
};

void ClearSymbols(AsmSymbols& symbols);

// Enters a name, which ends in a colon, behind the others; it may be there already.
void AddSymbol(AsmSymbols& symbols, std::string_view value, std::string_view name);

// The name, with its colon, has an entry. Names of more than 255 characters never have.
bool HasSymbol(const AsmSymbols& symbols, const std::string& name);

// Value of the first entry of this name, given without colon: what its first five columns hold, so a larger
// value loses its last digits. -1 when there is none, as always for names of more than 24 characters.
int32_t cimh(const AsmSymbols& symbols, std::string_view name);

// The entries as users see them: name, blanks up to column 22, the entry's first five columns.
std::vector<std::string> SymbolDisplay(const AsmSymbols& symbols);

}  // namespace quoll
