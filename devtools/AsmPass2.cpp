// The second pass over a line: all symbols are known, the bytes are written.
#include <string_view>
#include <utility>

#include "devtools/AsmDirectives.h"
#include "devtools/AsmLine.h"
#include "devtools/Assembler.h"
#include "devtools/ToolText.h"

namespace quoll {

namespace {

constexpr std::string_view kDigits = "0123456789%";  // with a percent sign, for whatever reason

int32_t StoreExactRow(const AsmPass& pass, const AsmRow& row) {
  if (row.type != ' ') return kAsmSyntax;
  for (int32_t i = 0; i < row.keyBytes; ++i) AsmStore(pass, i, row.key[static_cast<size_t>(i)]);
  return row.keyBytes;
}

// The key's bytes are written before the operand is looked at, so they stay when it does not fit.
int32_t StoreRow(const AsmPass& pass, const AsmRow& row, int32_t operand) {
  const int32_t last = row.keyBytes - 1;
  if (last == 1) AsmStore(pass, 0, row.key[0]);
  AsmStore(pass, last, row.key[static_cast<size_t>(last)]);
  const int32_t size = OperandSize(row, operand);
  if (size <= 0) return size;

  const auto low = static_cast<uint8_t>(operand & 0xFF);
  if (row.type == 'd' && last == 2) {
    AsmStore(pass, 0, row.key[0]);
    AsmStore(pass, 1, row.key[1]);
    AsmStore(pass, 2, low);
    AsmStore(pass, 3, row.key[2]);
    return size;
  }
  AsmStore(pass, last + 1, low);
  if (row.type == 'm') AsmStore(pass, last + 2, static_cast<uint8_t>(operand >> 8));
  return size;
}

// "LD (IX+),7" with the displacement cut out.
int32_t StoreIndexImmediate(const AsmPass& pass, const std::string& line, int32_t displacement) {
  if (displacement < 0 || displacement > 0xFF) return kAsmOverflow;
  AsmStore(pass, 0, line.starts_with("LD (IX") ? 0xDD : 0xFD);
  AsmStore(pass, 1, 0x36);
  AsmStore(pass, 2, static_cast<uint8_t>(displacement));
  const double value = NumberValue(std::string_view(line).substr(line.find(',') + 1));
  if (value > 0xFF || value < 0) return kAsmOverflow;
  AsmStore(pass, 3, static_cast<uint8_t>(AsmWhole(value)));
  return 4;
}

bool IsRelativeJump(std::string_view line) { return line.starts_with("DJNZ ") || line.starts_with("JR "); }
bool IsJump(std::string_view line) {
  return line.starts_with("CALL ") || line.starts_with("JP ") || IsRelativeJump(line);
}

// Puts the value for the line's first reference. False when the name is not known.
bool ResolveReference(const AsmPass& pass, std::string& line, size_t at) {
  const size_t last = line.find_last_of(") ");
  const size_t end = last == std::string::npos || last < at ? line.size() : last;
  const int32_t value = cimh(pass.a.Symbols, std::string_view(line).substr(at + 1, end - at - 1));
  if (value == -1) return false;
  line.replace(at, end - at, std::to_string(value));
  return true;
}

// The same for a jump, whose reference ends the line. 0 or an error.
int32_t ResolveJump(const AsmPass& pass, std::string& line) {
  if (!IsJump(line)) return kAsmInternal;
  const size_t at = line.find('@');
  constexpr size_t kNameMost = 40;
  const int32_t target = cimh(pass.a.Symbols, std::string_view(line).substr(at + 1, kNameMost));
  if (target == -1) return kAsmSyntax;
  int64_t value = target;
  if (IsRelativeJump(line)) {
    value -= int64_t{pass.a.AsmPC} + 2;
    if (value > 127 || value < -128) return kAsmOverflow;
    if (value < 0) value += 256;
  }
  line = line.substr(0, at) + std::to_string(value);
  return 0;
}

int32_t StoreInstruction(const AsmPass& pass, std::string line) {
  for (;;) {
    if (const AsmRow* row = FindAsmRow(line)) return StoreExactRow(pass, *row);
    const size_t at = line.find('@');
    if (at != std::string::npos && !IsJump(line) && !ResolveReference(pass, line, at)) return kAsmSyntax;

    const bool refers = line.find('@') != std::string::npos;
    int32_t operand = 0;
    if (!refers) {
      const size_t column = NumberColumn(line);
      // Once for the displacement, once for the number behind it.
      if (!DecimalForHex(line)) return kAsmSyntax;
      if (!DecimalForHex(line)) return kAsmSyntax;
      operand = CutNumber(line, column, kDigits);
      if (const AsmRow* row = FindAsmRow(line)) return StoreRow(pass, *row, operand);
    }
    if (line.starts_with("LD (IX+),") || line.starts_with("LD (IY+),")) {
      return StoreIndexImmediate(pass, line, operand);
    }
    if (!refers) return kAsmInternal;
    if (const int32_t error = ResolveJump(pass, line)) return error;
  }
}

// The first pass has entered them.
std::optional<int32_t> PassSymbol(Assembler& /*a*/, const std::string& line) {
  if (line.ends_with(':') || line.find(": EQU ") != std::string::npos) return 0;
  return std::nullopt;
}

}  // namespace

int32_t Pass2Line(Assembler& a, const AsmHost& host, std::string line, std::string raw) {
  return AsmStatement({a, host, 2}, {PassSymbol, StoreInstruction}, std::move(line), std::move(raw));
}

}  // namespace quoll
