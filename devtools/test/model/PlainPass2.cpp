#include <array>

#include "devtools/test/model/PlainAssembler.h"
#include "devtools/test/model/PlainLine.h"
#include "devtools/test/model/PlainText.h"

namespace quoll::plain {
namespace {

uint8_t KeyByte(const std::string& key, int number) {
  return static_cast<uint8_t>(HexValue(Mid(key, 2 * number + 1, 2)));
}

int32_t PageImage(const Bus& bus, const std::string& line) {
  const int32_t value = Nearest(Number(WithoutDollar(Trim(Mid(line, 6)), 4)));
  if (value < 0 || value > 255) throw RuntimeError{};
  bus.setPage(static_cast<uint8_t>(value));
  return 0;
}

int32_t Command(Assembler& assembler, const Bus& bus, const std::string& line) {
  constexpr std::array<const char*, 4> kCommands = {"*INT", "*NMI", "*RESET", "*BREAK"};
  for (size_t i = 0; i < kCommands.size(); ++i) {
    if (line != kCommands[i]) continue;
    bus.write(assembler.AsmPC, 0xFD);
    bus.write(assembler.AsmPC + 1, static_cast<uint8_t>(0xF0 + i));
    assembler.AsmPC += 2;
  }
  return 0;
}

int32_t ExactRow(const Assembler& assembler, const Bus& bus, const Found& row) {
  if (row.letter != ' ') return kSyntaxError;
  const int bytes = static_cast<int>(row.key.size() / 2);
  for (int i = 0; i < bytes && i < 2; ++i) bus.write(assembler.AsmPC + i, KeyByte(row.key, i));
  return bytes;
}

int32_t RowWithOperand(const Assembler& assembler, const Bus& bus, const Found& row, int32_t v) {
  const int32_t pc = assembler.AsmPC;
  const int k = static_cast<int>(row.key.size() / 2) - 1;
  const uint8_t last = KeyByte(row.key, k);
  if (k == 1) bus.write(pc, KeyByte(row.key, 0));
  bus.write(pc + k, last);
  const bool byte = v >= 0 && v <= 255;
  switch (row.letter) {
    case 'n':
    case 'e':
      if (!byte) return kOverflowError;
      bus.write(pc + k + 1, static_cast<uint8_t>(v));
      return k + 2;
    case 'm':
      if (v < 0 || v > 65535) return kOverflowError;
      bus.write(pc + k + 1, static_cast<uint8_t>(v % 256));
      bus.write(pc + k + 2, static_cast<uint8_t>(v / 256));
      return k + 3;
    case 'd':
      if (!byte) return kOverflowError;
      if (k == 0) {
        bus.write(pc + 1, static_cast<uint8_t>(v));
        return 2;
      }
      if (k == 2) {
        bus.write(pc, KeyByte(row.key, 0));
        bus.write(pc + 1, 0xCB);
        bus.write(pc + 2, static_cast<uint8_t>(v));
        bus.write(pc + 3, last);
        return 4;
      }
      bus.write(pc + 2, static_cast<uint8_t>(v));
      return 3;
    default: return 0;
  }
}

// "LD (IX+),7" and the like: the displacement has been cut out, the immediate is still there.
int32_t IndexImmediate(const Assembler& assembler, const Bus& bus, const std::string& line, int32_t d) {
  if (d < 0 || d > 255) return kOverflowError;
  bus.write(assembler.AsmPC, Begins(line, "LD (IX") ? 0xDD : 0xFD);
  bus.write(assembler.AsmPC + 1, 0x36);
  bus.write(assembler.AsmPC + 2, static_cast<uint8_t>(d));
  const double immediate = Number(Mid(line, InStr(line, ",") + 1));
  if (immediate < 0 || immediate > 255) return kOverflowError;
  bus.write(assembler.AsmPC + 3, static_cast<uint8_t>(Nearest(immediate)));
  return 4;
}

// Puts a symbol's value in the place of its name; false if there is no such symbol.
bool ReplaceReference(const Assembler& assembler, std::string& line, int at) {
  int end = static_cast<int>(line.size()) + 1;
  for (int column = at + 1; column <= static_cast<int>(line.size()); ++column) {
    const std::string c = Mid(line, column, 1);
    if (c == ")" || c == " ") end = column;
  }
  const std::string name = Mid(line, at + 1, end - at - 1);
  const int32_t value = cimh(assembler, name);
  if (value == -1) return false;
  line = ReplaceFirst(line, "@" + name, std::to_string(value));
  return true;
}

int32_t Instruction(const Assembler& assembler, const Bus& bus, std::string line) {
  for (;;) {
    if (const std::optional<Found> row = Lookup(line)) return ExactRow(assembler, bus, *row);

    const bool relative = Begins(line, "DJNZ ") || Begins(line, "JR ");
    const bool absolute = Begins(line, "CALL ") || Begins(line, "JP ");
    int at = InStr(line, "@");
    if (relative || absolute) at = 0;
    if (at > 0 && !ReplaceReference(assembler, line, at)) return kSyntaxError;

    int32_t operand = 0;
    const int column = SearchColumn(line);
    if (InStr(line, "@") == 0) {
      for (int round = 0; round < 2; ++round) {
        if (const int32_t result = DollarStep(line); result < 0) return result;
      }
      CutNumber(line, column, "0123456789%", operand);
    }
    if (const std::optional<Found> row = Lookup(line)) return RowWithOperand(assembler, bus, *row, operand);
    if (Begins(line, "LD (IX+),") || Begins(line, "LD (IY+),")) {
      return IndexImmediate(assembler, bus, line, operand);
    }

    at = InStr(line, "@");
    if (at == 0 || !(relative || absolute)) return kInternalError;
    int32_t value = cimh(assembler, Mid(line, at + 1, 40));
    if (value == -1) return kSyntaxError;
    if (relative) {
      value = value - assembler.AsmPC - 2;
      if (value > 127 || value < -128) return kOverflowError;
      if (value < 0) value += 256;
    }
    line = Left(line, at - 1) + std::to_string(value);
  }
}

int32_t Line(Assembler& assembler, const Bus& bus, std::string& line, std::string& raw) {
  if (line.empty() || line[0] == '\'') return 0;
  CutComment(line, raw);
  if (line.back() == ':') return 0;
  if (InStr(line, ": EQU ") > 0) return 0;
  if (Begins(line, "ORG ")) return Org(assembler, line);
  if (Begins(line, "PMEM=")) return PageImage(bus, line);
  if (Begins(line, "DB ")) return DefineBytes(assembler, bus, line, raw, true);
  if (Begins(line, "DW ")) return DefineWords(assembler, bus, line);
  if (Begins(line, "DS ")) return DefineSpace(assembler, bus, raw);
  if (line[0] == '*') return Command(assembler, bus, line);
  if (Begins(line, "INCBIN ")) {
    const Included included = IncludedFile(bus, line, raw);
    for (const char c : included.bytes) bus.write(assembler.AsmPC++, static_cast<uint8_t>(c));
    return included.result;
  }
  return Instruction(assembler, bus, RewriteRst(line));
}

}  // namespace

int32_t Pass2Line(Assembler& assembler, const Bus& bus, std::string& line, std::string& raw) {
  return Guarded([&] { return Line(assembler, bus, line, raw); });
}

}  // namespace quoll::plain
