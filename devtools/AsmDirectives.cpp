#include "devtools/AsmDirectives.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "devtools/ToolText.h"

namespace quoll {

namespace {

constexpr size_t kOperandColumn = 4;  // of ORG, DB, DW and DS
constexpr int32_t kAddressMost = 0xFFFF;

int32_t Org(const AsmPass& pass, const std::string& line) {
  if (pass.number == 1 && line.starts_with("ORG .")) return kAsmSyntax;
  const double value = std::trunc(AsmNumber(Trim(Mid(line, kOperandColumn)), 4));
  pass.a.AsmPC = AsmWhole(value);
  return pass.a.AsmPC > kAddressMost || pass.a.AsmPC < 0 ? kAsmOverflow : 0;
}

int32_t PageRegister(const AsmPass& pass, const std::string& line) {
  if (pass.number == 1) return 0;
  const int32_t value = AsmWhole(AsmNumber(Trim(Mid(line, 6)), 4));
  if (value < 0 || value > 0xFF) throw AsmFailure();
  if (pass.host.SetPage) pass.host.SetPage(static_cast<uint8_t>(value));
  return 0;
}

// A quoted text, as it stands in the source. The quotes may be one and the same character.
bool IsQuoted(std::string_view text) { return text.starts_with('"') && text.ends_with('"'); }
std::string_view Unquoted(std::string_view text) {
  return text.size() < 2 ? std::string_view() : text.substr(1, text.size() - 2);
}

int32_t DbText(const AsmPass& pass, std::string_view text) {
  if (!IsQuoted(text)) return kAsmSyntax;
  int32_t size = 0;
  for (const char c : Unquoted(text)) {
    const auto code = static_cast<uint8_t>(c);
    // The first pass writes too, but what counts is what the second leaves.
    AsmStore(pass, size++, pass.number == 1 ? code : TVCASC(code));
  }
  return size;
}

// A number of a list or of DS; kAsmOverflow when it is not 0 to most.
int32_t Limited(double value, int32_t most) {
  return value > most || value < 0 ? static_cast<int32_t>(kAsmOverflow) : AsmWhole(value);
}

int32_t Db(const AsmPass& pass, const std::string& line, const std::string& raw) {
  const std::string_view text = Trim(Mid(Trim(raw), kOperandColumn));
  if (text.starts_with('"')) return DbText(pass, text);
  int32_t size = 0;
  for (const std::string& piece : SplitText(Mid(line, kOperandColumn), ",")) {
    const int32_t value = Limited(AsmNumber(piece, 2), 0xFF);
    if (value < 0) return value;
    AsmStore(pass, size++, static_cast<uint8_t>(value));
  }
  return size;
}

// The words of a list overlap: each begins one byte behind the last, though each counts as two. Sources that
// were written for this assembler give one word a line.
int32_t Dw(const AsmPass& pass, const std::string& line) {
  int32_t index = 0;
  for (const std::string& piece : SplitText(Mid(line, kOperandColumn), ",")) {
    const int32_t value = Limited(AsmNumber(piece, 4), 0xFFFF);
    if (value < 0) return value;
    AsmStore(pass, index, static_cast<uint8_t>(value & 0xFF));
    AsmStore(pass, index + 1, static_cast<uint8_t>(value >> 8));
    ++index;
  }
  return 2 * index;
}

// Reads the raw line, so it wants to stand in the first column.
int32_t Ds(const AsmPass& pass, const std::string& raw) {
  const std::vector<std::string> parts = SplitText(raw, ",", 2);
  if (parts.size() < 2) throw AsmFailure();
  const int32_t count = AsmWhole(NumberValue(Mid(parts[0], kOperandColumn)));
  const double number = AsmNumber(parts[1], 3);
  if (count < 1) return kAsmSyntax;
  const int32_t value = Limited(number, 0xFF);
  if (value < 0) return value;
  const int32_t stored = std::min(count, kAsmAddressEnd);
  for (int32_t i = 0; i < stored; ++i) AsmStore(pass, i, static_cast<uint8_t>(value));
  return count;
}

// Bytes that the processor takes as a wish to the machine. They move AsmPC but count as no size.
int32_t Command(const AsmPass& pass, const std::string& line) {
  if (pass.number == 1) {
    AsmAdvance(pass, 2);
    return 0;
  }
  constexpr std::array<std::string_view, 4> kCommands = {"*INT", "*NMI", "*RESET", "*BREAK"};
  const auto* found = std::find(kCommands.begin(), kCommands.end(), line);
  if (found == kCommands.end()) return 0;
  AsmStore(pass, 0, 0xFD);
  AsmStore(pass, 1, static_cast<uint8_t>(0xF0 + (found - kCommands.begin())));
  AsmAdvance(pass, 2);
  return 0;
}

int32_t IncBin(const AsmPass& pass, const std::string& line, const std::string& raw) {
  if (!IsQuoted(Mid(line, 8))) return kAsmSyntax;
  // The name as it was typed, since files tell large from small letters.
  const size_t start = raw.find('"');
  const std::string name(Unquoted(raw.substr(start, raw.rfind('"') + 1 - start)));
  const std::optional<std::vector<uint8_t>> bytes = pass.host.ReadFile(name);
  if (!bytes) throw AsmFailure();
  if (bytes->size() > kAsmFileLimit) return kAsmOverflow;
  if (pass.number == 2) {
    for (size_t i = 0; i < bytes->size(); ++i) AsmStore(pass, static_cast<int64_t>(i), (*bytes)[i]);
  }
  AsmAdvance(pass, static_cast<int32_t>(bytes->size()));
  return 0;
}

}  // namespace

std::optional<int32_t> AsmDirective(const AsmPass& pass, const std::string& line, const std::string& raw) {
  if (line.starts_with("ORG ")) return Org(pass, line);
  if (line.starts_with("PMEM=")) return PageRegister(pass, line);
  if (line.starts_with("DB ")) return Db(pass, line, raw);
  if (line.starts_with("DW ")) return Dw(pass, line);
  if (line.starts_with("DS ")) return Ds(pass, raw);
  if (line.starts_with("*")) return Command(pass, line);
  if (line.starts_with("INCBIN ")) return IncBin(pass, line, raw);
  return std::nullopt;
}

int32_t AsmStatement(const AsmPass& pass, const AsmSteps& steps, std::string line, std::string raw) {
  try {
    if (!CutComment(line, raw)) return 0;
    if (const std::optional<int32_t> entered = steps.symbol(pass.a, line)) return *entered;
    if (const std::optional<int32_t> size = AsmDirective(pass, line, raw)) return *size;
    RewriteRst(line);
    return steps.instruction(pass, std::move(line));
  } catch (const AsmFailure&) {
    return kAsmInternal;
  }
}

uint8_t TVCASC(uint8_t code) {
  // In the machine's order, large letters from 128, small ones from 144.
  constexpr std::array<uint8_t, 9> kLarge = {193, 201, 205, 211, 214, 213, 218, 220, 219};
  constexpr std::array<uint8_t, 9> kSmall = {225, 233, 237, 243, 246, 245, 250, 252, 251};
  for (size_t i = 0; i < kLarge.size(); ++i) {
    if (code == kLarge[i]) return static_cast<uint8_t>(128 + i);
    if (code == kSmall[i]) return static_cast<uint8_t>(144 + i);
  }
  return code;
}

}  // namespace quoll
