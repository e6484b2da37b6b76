#include "devtools/test/model/PlainAssembler.h"
#include "devtools/test/model/PlainLine.h"
#include "devtools/test/model/PlainText.h"

namespace quoll::plain {
namespace {

void AddSymbol(Assembler& assembler, const std::string& value, const std::string& name) {
  const size_t blanks = value.size() < 7 ? 7 - value.size() : 0;
  assembler.List1.push_back(value + std::string(blanks, ' ') + name);
}

int32_t Label(Assembler& assembler, const std::string& line) {
  if (InStr(line, " ") > 0) return kSyntaxError;
  int32_t result = 0;
  for (const std::string& entry : assembler.List1) {
    if (Mid(entry, 8, 255) == line) result = kExistingName;
  }
  AddSymbol(assembler, std::to_string(assembler.AsmPC), line);
  return result;
}

int32_t Equ(Assembler& assembler, const std::string& line, int at) {
  const std::string name = Left(line, at - 1);
  const std::string value = WithoutDollar(Mid(line, at + 6), 4);
  if (InStr(name, " ") > 0) return kSyntaxError;
  if (value.find_first_of("+-*/ ") != std::string::npos) return kSyntaxError;
  if (value[0] < '0' || value[0] > '9') return kSyntaxError;
  AddSymbol(assembler, value, name + ":");
  return 0;
}

// The first row whose beginning the line has.
struct Prefix {
  const char* begin;
  int bits;
};

// How wide the reference in a line is taken to be: 8, 16, or 0 for no idea.
int GuessedBits(const std::string& line) {
  static constexpr Prefix kGuesses[] = {
      {"CALL ", 16},  {"DJNZ ", 8},   {"JP ", 16},    {"JR ", 8},     {"SUB ", 8},    {"SBC ", 8},
      {"ADC ", 8},    {"ADD ", 8},    {"AND ", 8},    {"BIT ", 8},    {"CP ", 8},     {"DEC ", 8},
      {"IM ", 8},     {"IN ", 8},     {"INC ", 8},    {"LD A,(I", 8}, {"LD A,(", 16}, {"LD A,", 8},
      {"LD (", 8},    {"LD BC,", 16}, {"LD DE,", 16}, {"LD HL,", 16}, {"LD IX,", 16}, {"LD IY,", 16},
      {"LD SP,", 16}, {"OR ", 8},     {"OUT ", 8},    {"RES ", 8},    {"RL ", 8},     {"RLC ", 8},
      {"RR ", 8},     {"RRC ", 8},    {"SBC ", 8},    {"SET ", 8},    {"SLA ", 8},    {"SRA ", 8},
      {"SRL ", 8},    {"XOR ", 16},   {"LD B,", 8}};
  for (const Prefix& guess : kGuesses) {
    if (Begins(line, guess.begin)) return guess.bits;
  }
  return 0;
}

// What most likely stood behind the reference.
std::string GuessedTail(const std::string& line) {
  static constexpr struct {
    const char* begin;
    const char* tail;
  } kTails[] = {{"IN A,(", ")"},  {"LD A,(", ")"}, {"LD (HL),", ""}, {"LD (BC),", ""}, {"LD (DE),", ""},
                {"LD (", "),A"},  {"LD A,", ""},   {"LD B,", ""},    {"LD C,", ""},    {"LD D,", ""},
                {"LD HL,(", ")"}, {"LD HL,", ""},  {"LD BC,(", ")"}, {"LD DE,(", ")"}, {"OUT (", "),A"}};
  for (const auto& row : kTails) {
    if (Begins(line, row.begin)) return row.tail;
  }
  return "";
}

// Size of a row with this operand.
int32_t RowSize(const Found& row, int32_t v) {
  const int32_t k = static_cast<int32_t>(row.key.size()) / 2 - 1;
  const int32_t highest = row.letter == 'm' ? 65535 : 255;
  switch (row.letter) {
    case 'n':
    case 'd':
    case 'e':
    case 'm':
      if (v < 0 || v > highest) return kOverflowError;
      break;
    default: return 0;
  }
  if (row.letter == 'm') return k + 3;
  if (row.letter != 'd') return k + 2;
  return k == 0 ? 2 : k == 2 ? 4 : 3;
}

bool BeginsLikeAny(const std::string& line, std::initializer_list<const char*> begins) {
  for (const char* begin : begins) {
    if (Begins(line, begin)) return true;
  }
  return false;
}

int32_t Instruction(std::string line) {
  for (;;) {
    if (const std::optional<Found> row = Lookup(line)) {
      return row->letter == ' ' ? static_cast<int32_t>(row->key.size() / 2) : kSyntaxError;
    }
    int32_t operand = 0;
    if (InStr(line, "@") == 0) {
      const int column = SearchColumn(line);
      if (const int32_t result = DollarStep(line); result < 0) return result;
      CutNumber(line, column, "0123456789", operand);
    }
    if (const std::optional<Found> row = Lookup(line)) return RowSize(*row, operand);
    if (BeginsLikeAny(line, {"LD (IX+),", "LD (IY+),", "LD IXH,", "LD IXL,", "LD IYH,", "LD IYL,"})) return 4;
    if (SearchColumn(line) == 16) return 4;
    const int at = InStr(line, "@");
    if (at == 0) return kInternalError;
    const int bits = GuessedBits(line);
    if (bits == 0) return kInternalError;
    line = Left(line, at - 1) + (bits == 16 ? "1111" : "11") + GuessedTail(line);
  }
}

int32_t Line(Assembler& assembler, const Bus& bus, std::string& line, std::string& raw) {
  if (line.empty() || line[0] == '\'') return 0;
  CutComment(line, raw);
  if (line.back() == ':') return Label(assembler, line);
  if (const int at = InStr(line, ": EQU "); at > 0) return Equ(assembler, line, at);
  if (Begins(line, "ORG .")) return kSyntaxError;
  if (Begins(line, "PMEM=")) return 0;
  if (Begins(line, "ORG ")) return Org(assembler, line);
  if (Begins(line, "DB ")) return DefineBytes(assembler, bus, line, raw, false);
  if (Begins(line, "DW ")) return DefineWords(assembler, bus, line);
  if (Begins(line, "DS ")) return DefineSpace(assembler, bus, raw);
  if (line[0] == '*') {
    assembler.AsmPC += 2;
    return 0;
  }
  if (Begins(line, "INCBIN ")) {
    const Included included = IncludedFile(bus, line, raw);
    assembler.AsmPC += static_cast<int32_t>(included.bytes.size());
    return included.result;
  }
  line = RewriteRst(line);
  return Instruction(line);
}

}  // namespace

int32_t Pass1Line(Assembler& assembler, const Bus& bus, std::string& line, std::string& raw) {
  return Guarded([&] { return Line(assembler, bus, line, raw); });
}

}  // namespace quoll::plain
