#include "devtools/AsmLine.h"

#include <array>
#include <limits>

#include "devtools/CodePage.h"
#include "devtools/ToolText.h"

namespace quoll {

std::string TabTrim(std::string_view text) { return ReplaceText(text, "\t", " "); }

std::string Strim(std::string_view text) {
  std::string result;
  for (const char c : UpperCase(Trim(text))) {
    if (c != ' ' || !result.ends_with(' ')) result += c;
  }
  return ReplaceText(ReplaceText(result, ", ", ","), " ,", ",");
}

bool CutComment(std::string& line, std::string& raw) {
  if (line.empty() || line.front() == '\'') return false;
  if (const size_t at = line.find('\''); at != std::string::npos) {
    line = Trim(line.substr(0, at));
    raw = raw.substr(0, raw.find('\''));
  }
  if (line == "EX AF,AF") line += '\'';
  return true;
}

void AsmStore(const AsmPass& pass, int64_t offset, uint8_t value) {
  const int64_t address = pass.a.AsmPC + offset;
  if (address >= 0 && address < kAsmAddressEnd) pass.host.Write(static_cast<int32_t>(address), value);
}

void AsmAdvance(const AsmPass& pass, int32_t bytes) {
  if (int64_t{pass.a.AsmPC} + bytes > std::numeric_limits<int32_t>::max()) throw AsmFailure();
  pass.a.AsmPC += bytes;
}

int32_t AsmWhole(double value) {
  const std::optional<int32_t> whole = RoundedToInt32(value);
  if (!whole) throw AsmFailure();
  return *whole;
}

double AsmNumber(std::string_view text, size_t hexDigits) {
  if (!text.starts_with('$')) return NumberValue(text);
  const std::optional<int32_t> value = HexValue(text.substr(1, hexDigits));
  if (!value) throw AsmFailure();
  return *value;
}

bool DecimalForHex(std::string& line) {
  const size_t at = line.find('$');
  if (at == std::string::npos) return true;
  const size_t end = line.find_first_not_of("0123456789ABCDEF", at + 1);
  const std::string text = line.substr(at, end == std::string::npos ? end : end - at);
  if (text.size() < 2) return false;
  const std::optional<int32_t> value = HexValue(text.substr(1));
  if (!value) throw AsmFailure();
  line = ReplaceText(line, text, std::to_string(*value));
  return true;
}

namespace {

bool IsBitInstruction(std::string_view text) {
  return text.starts_with("BIT ") || text.starts_with("SET ") || text.starts_with("RES ");
}

}  // namespace

bool LoadsAndHandlesBit(std::string_view line) {
  return line.starts_with("LD ") && IsBitInstruction(Mid(line, 6));
}

size_t NumberColumn(std::string_view line) {
  if (IsBitInstruction(line)) return 6;
  return LoadsAndHandlesBit(line) ? 16 : 4;
}

int32_t CutNumber(std::string& line, size_t column, std::string_view digits) {
  const size_t start = line.find_first_of(digits, column - 1);
  if (start == std::string::npos) return 0;
  const size_t end = line.find_first_not_of(digits, start);
  const size_t length = (end == std::string::npos ? line.size() : end) - start;
  const int32_t value = AsmWhole(NumberValue(std::string_view(line).substr(start, length)));
  constexpr size_t kKept = 255;
  line = line.substr(0, start) + line.substr(start + length, kKept);
  return value;
}

void RewriteRst(std::string& line) {
  constexpr std::array<std::string_view, 8> kVectors = {"0", "8", "10", "18", "20", "28", "30", "38"};
  constexpr std::string_view kStart = "RST $";
  if (!line.starts_with(kStart)) return;
  for (const std::string_view vector : kVectors) {
    if (std::string_view(line).substr(kStart.size()) != vector) continue;
    line = "RST " + std::string(vector) + "H";
    return;
  }
}

int32_t OperandSize(const AsmRow& row, int32_t operand) {
  const int32_t prefixBytes = row.keyBytes - 1;
  const bool isByte = operand >= 0 && operand <= 0xFF;
  switch (row.type) {
    case 'n':
    case 'e':
    case 'd': return isByte ? prefixBytes + 2 : kAsmOverflow;
    case 'm': return operand >= 0 && operand <= 0xFFFF ? prefixBytes + 3 : kAsmOverflow;
    default: return 0;
  }
}

}  // namespace quoll
