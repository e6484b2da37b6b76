// The first pass over a line: enters symbols and finds each line's size.
#include <array>
#include <optional>
#include <string_view>

#include "devtools/AsmDirectives.h"
#include "devtools/AsmLine.h"
#include "devtools/Assembler.h"
#include "devtools/ToolText.h"

namespace quoll {

namespace {

constexpr std::string_view kDigits = "0123456789";

int32_t DefineLabel(Assembler& a, const std::string& line) {
  if (line.find(' ') != std::string::npos) return kAsmSyntax;
  const bool known = HasSymbol(a.Symbols, line);
  AddSymbol(a.Symbols, std::to_string(a.AsmPC), line);
  return known ? kAsmExists : 0;
}

// at: place of ": EQU " in the line. Constants may bear a name that is taken; the first one counts.
int32_t DefineConstant(Assembler& a, const std::string& line, size_t at) {
  const std::string name = line.substr(0, at);
  std::string value = line.substr(at + 6);
  if (value.starts_with('$')) value = std::to_string(AsmWhole(AsmNumber(value, 4)));
  if (name.find(' ') != std::string::npos) return kAsmSyntax;
  if (value.find_first_of("+-*/ ") != std::string::npos) return kAsmSyntax;
  if (value.empty() || value.front() < '0' || value.front() > '9') return kAsmSyntax;
  AddSymbol(a.Symbols, value, name + ":");
  return 0;
}

// Bits of the number that a reference stands for, by the line's beginning. A later row overrides an earlier
// one unless that one ends the search.
struct Guess {
  std::string_view start;
  int32_t bits;
  bool ends;
};
constexpr auto kGuesses = std::to_array<Guess>({
    {"CALL ", 16, false}, {"DJNZ ", 8, false},  {"JP ", 16, false},   {"JR ", 8, false},
    {"SUB ", 8, true},    {"SBC ", 8, true},    {"ADC ", 8, true},    {"ADD ", 8, true},
    {"AND ", 8, true},    {"BIT ", 8, true},    {"CP ", 8, true},     {"DEC ", 8, true},
    {"IM ", 8, true},     {"IN ", 8, true},     {"INC ", 8, true},    {"LD A,(I", 8, true},
    {"LD A,(", 16, true}, {"LD A,", 8, true},   {"LD (", 8, true},    {"LD BC,", 16, true},
    {"LD DE,", 16, true}, {"LD HL,", 16, true}, {"LD IX,", 16, true}, {"LD IY,", 16, true},
    {"LD SP,", 16, true}, {"OR ", 8, true},     {"OUT ", 8, true},    {"RES ", 8, true},
    {"RL ", 8, true},     {"RLC ", 8, true},    {"RR ", 8, true},     {"RRC ", 8, true},
    {"SET ", 8, true},    {"SLA ", 8, true},    {"SRA ", 8, true},    {"SRL ", 8, true},
    {"XOR ", 16, true},   {"LD B,", 8, false},
});

// What follows a reference is forgotten; by the line's beginning this takes its place. The first row counts.
struct Ending {
  std::string_view start;
  std::string_view appended;
};
constexpr auto kEndings = std::to_array<Ending>({
    {"IN A,(", ")"},
    {"LD A,(", ")"},
    {"LD (HL),", ""},
    {"LD (BC),", ""},
    {"LD (DE),", ""},
    {"LD (", "),A"},
    {"LD A,", ""},
    {"LD B,", ""},
    {"LD C,", ""},
    {"LD D,", ""},
    {"LD HL,(", ")"},
    {"LD HL,", ""},
    {"LD BC,(", ")"},
    {"LD DE,(", ")"},
    {"OUT (", "),A"},
});

// Puts a number of the likely width for the reference, whose label may not be known yet. The line is then
// sized by the row that this finds, which need not be its own. False when no width is likely.
bool GuessReference(std::string& line) {
  int32_t bits = 0;
  for (const Guess& guess : kGuesses) {
    if (!line.starts_with(guess.start)) continue;
    bits = guess.bits;
    if (guess.ends) break;
  }
  if (bits == 0) return false;
  line = line.substr(0, line.find('@')) + (bits == 16 ? "1111" : "11");
  for (const Ending& ending : kEndings) {
    if (!line.starts_with(ending.start)) continue;
    line += ending.appended;
    break;
  }
  return true;
}

// Lines whose first number is gone and whose second one keeps them from being found.
bool HasTwoNumbers(std::string_view line) {
  for (const std::string_view start :
       {"LD (IX+),", "LD (IY+),", "LD IXH,", "LD IXL,", "LD IYH,", "LD IYL,"}) {
    if (line.starts_with(start)) return true;
  }
  return LoadsAndHandlesBit(line);
}

int32_t InstructionSize(const AsmPass& /*pass*/, std::string line) {
  for (;;) {
    if (const AsmRow* row = FindAsmRow(line)) return row->type == ' ' ? row->keyBytes : kAsmSyntax;
    const bool refers = line.find('@') != std::string::npos;
    int32_t operand = 0;
    if (!refers) {
      const size_t column = NumberColumn(line);
      if (!DecimalForHex(line)) return kAsmSyntax;
      operand = CutNumber(line, column, kDigits);
      if (const AsmRow* row = FindAsmRow(line)) return OperandSize(*row, operand);
    }
    if (HasTwoNumbers(line)) return 4;
    if (!refers || !GuessReference(line)) return kAsmInternal;
  }
}

std::optional<int32_t> EnterSymbol(Assembler& a, const std::string& line) {
  if (line.ends_with(':')) return DefineLabel(a, line);
  if (const size_t at = line.find(": EQU "); at != std::string::npos) return DefineConstant(a, line, at);
  return std::nullopt;
}

}  // namespace

int32_t Pass1Line(Assembler& a, const AsmHost& host, std::string line, std::string raw) {
  return AsmStatement({a, host, 1}, {EnterSymbol, InstructionSize}, std::move(line), std::move(raw));
}

}  // namespace quoll
