#include "devtools/OpcodeHelp.h"

#include <algorithm>

#include "devtools/AsmLine.h"
#include "devtools/CodePage.h"
#include "devtools/OpcodeTables.h"
#include "devtools/ToolText.h"

namespace quoll {

namespace {

constexpr size_t kNone = std::string_view::npos;
constexpr size_t kLongest = 255;  // characters of a line or a row that are looked at

// Rows in which the pattern is found, letters large or small.
std::vector<std::string> Hits(std::string_view pattern, bool undocumented) {
  const std::string_view table = OpcodeText();
  std::vector<std::string> rows;
  for (size_t hit = FindIgnoringCase(table, pattern); hit != kNone;
       hit = FindIgnoringCase(table, pattern, hit + 3)) {
    const std::string_view text = table.substr(hit + 2, kLongest);
    const std::string_view row = Trim(text.substr(0, text.find('\r')));
    if (undocumented || !row.ends_with('*')) rows.emplace_back(row);
  }
  return rows;
}

}  // namespace

std::optional<OpcodeRecord> FindOpcodeRecord(std::string_view instruction) {
  std::string name(instruction);
  if (name.ends_with('*')) name.pop_back();
  name = name.starts_with("EX AF,AF") ? "ex af,af'" : LowerCase(name);

  const std::string_view table = OpcodeInfoText();
  const size_t hit = table.find(">" + name + "<");
  if (hit == kNone) return std::nullopt;
  const size_t before = table.rfind('\n', hit);
  const size_t start = before == kNone ? 0 : before + 1;
  const std::vector<std::string> parts = SplitText(table.substr(start, hit - start), "|", 4);
  if (parts.size() < 4) return std::nullopt;
  return OpcodeRecord{parts[0], parts[1], parts[2], parts[3]};
}

std::vector<std::string> OpcodesBeginningWith(std::string_view text, bool undocumented) {
  return Hits("   " + std::string(text), undocumented);
}

SourceLine LineOfCaret(std::string_view source, size_t caret) {
  caret = std::min(caret, source.size());
  const size_t before = caret == 0 ? kNone : source.rfind('\n', caret - 1);
  const size_t start = before == kNone ? 0 : before + 1;
  const size_t end = std::min(source.find('\r', caret), source.size());
  return {start, std::min(end - start, kLongest)};
}

std::optional<std::vector<std::string>> OpcodeHelpList(std::string_view source, size_t caret,
                                                       bool undocumented) {
  if (caret == 0) return std::nullopt;
  const SourceLine place = LineOfCaret(source, caret);
  std::string line = Strim(source.substr(place.start, place.length));
  line = Trim(line.substr(0, line.find('\'')));
  if (line.empty()) return std::nullopt;
  std::vector<std::string> rows = OpcodesBeginningWith(line, undocumented);
  if (!rows.empty()) return rows;
  const size_t typed = std::min(caret, source.size()) - place.start;
  return Hits("  " + Strim(source.substr(place.start, typed)), undocumented);
}

FlagWord WordOfFlag(char flag) {
  constexpr uint32_t kWhite = 0xFFFFFF;
  constexpr uint32_t kGreen = 65280;
  constexpr uint32_t kRed = 255;
  switch (flag) {
    case ' ': return {"unknown", std::nullopt};
    case '-': return {"unaffected", kWhite};
    case '+': return {"affected as defined", kGreen};
    case 'P': return {"detects parity", kGreen};
    case 'V': return {"detects overflow", kGreen};
    case '1': return {"set", kGreen};
    case '0': return {"reset", kGreen};
    case '*': return {"exceptional", kRed};
    default: return {"", std::nullopt};
  }
}

}  // namespace quoll
