#include "devtools/test/model/RandomSource.h"

#include <array>
#include <vector>

#include "core/Random.h"
#include "devtools/test/model/PlainTables.h"
#include "devtools/test/model/PlainText.h"
#include "devtools/test/model/RandomLines.h"

namespace quoll::plain {
namespace {

struct Writer {
  Random random;
  SourceShape shape;
  std::vector<std::string> lines;
  std::vector<std::string> bytes;  // names of constants that fit a byte
  std::vector<std::string> words;  // names of labels and other constants
};

int Below(Writer& writer, int limit) { return static_cast<int>(RandomNext(writer.random) * limit); }

bool Chance(Writer& writer, double share) { return RandomNext(writer.random) < share; }

template <class List>
auto OneOf(Writer& writer, const List& list) {
  return list[static_cast<size_t>(Below(writer, static_cast<int>(list.size())))];
}

// A number below a limit in one of its forms, with hexadecimal digits up to so many.
std::string NumberText(Writer& writer, int limit, int digits) {
  const int value = Chance(writer, 0.2) ? OneOf(writer, std::array{0, 1, limit - 1}) : Below(writer, limit);
  if (Chance(writer, 0.5)) return std::string(Below(writer, 10) == 0 ? "00" : "") + std::to_string(value);
  const bool padded = Chance(writer, 0.5);
  return "$" + Hex(value, padded ? digits : 1);
}

std::string ByteText(Writer& writer) { return NumberText(writer, 256, 2); }

std::string WordText(Writer& writer) { return NumberText(writer, 65536, 4); }

std::string ConstantText(Writer& writer, int limit) {
  const int value = Below(writer, limit);
  return Chance(writer, 0.5) ? std::to_string(value) : "$" + Hex(value, 1 + Below(writer, 4));
}

// Something before the part that makes a name its own. Now and then the name gets as long as one may be.
std::string Name(Writer& writer) {
  static const std::string kSigns = "ABCDEFGHIXYLZ0123456789_.%$#!?\xC1\xF5";
  std::string name(1, OneOf(writer, std::string("ABCDHILMNXYZ_")));
  const int length = Chance(writer, 0.05) ? 17 : Below(writer, 8);
  for (int i = 0; i < length; ++i) name += OneOf(writer, kSigns);
  return name + "_" + std::to_string(writer.lines.size());
}

std::string Instruction(Writer& writer) {
  static const std::vector<Row> kRows = DisAsmRows();
  const Row row = OneOf(writer, kRows);
  if (row.key == "08") return "EX AF,AF'";
  if (row.key == "ED70") return "IN (C)*";
  std::string text = ReplaceFirst(row.text, "nn", WordText(writer));
  if (text == row.text) text = ReplaceFirst(text, "n", ByteText(writer));
  text = ReplaceFirst(text, "(PC+e)", ByteText(writer));
  return ReplaceFirst(text, "+d", "+" + ByteText(writer));
}

std::string WithReferences(Writer& writer, std::string text) {
  while (InStr(text, "#w") > 0) text = ReplaceFirst(text, "#w", OneOf(writer, writer.words));
  while (InStr(text, "#b") > 0) text = ReplaceFirst(text, "#b", OneOf(writer, writer.bytes));
  return text;
}

std::string List(Writer& writer, std::string (*number)(Writer&)) {
  std::string text = number(writer);
  for (int i = Below(writer, 6); i > 0; --i) text += "," + number(writer);
  return text;
}

std::string String(Writer& writer) {
  static const std::string kSigns =
      "ABC xyz,;:0123@$*()\xC1\xC9\xCD\xD3\xD6\xD5\xDA\xDC\xDB\xE1\xE9\xED\xF3"
      "\xF6\xF5\xFA\xFC\xFB\xF0\x80";
  std::string text;
  for (int i = Below(writer, 12); i > 0; --i) text += OneOf(writer, kSigns);
  return "\"" + text + "\"";
}

std::string Directive(Writer& writer) {
  switch (Below(writer, 8)) {
    case 0: return "DB " + String(writer);
    case 1: return "DB " + List(writer, ByteText);
    case 2: return "DW " + List(writer, WordText);
    case 3: return "DS " + std::to_string(1 + Below(writer, 20)) + "," + ByteText(writer);
    case 4: return std::string("INCBIN \"") + kRandomSourceFile + "\"";
    case 5: return OneOf(writer, std::array{"*INT", "*NMI", "*RESET", "*BREAK"});
    case 6: return "PMEM=" + ByteText(writer);
    default: return "ORG " + NumberText(writer, 60000, 4);
  }
}

// Cases, blanks and tabs as people type them. What stands in quotes keeps its case; "DS" its column.
std::string Typed(Writer& writer, const std::string& statement) {
  const bool lower = Chance(writer, 0.5);
  const bool wide = Chance(writer, 0.3);
  bool quoted = false;
  std::string text;
  for (const char c : statement) {
    if (c == '"') quoted = !quoted;
    const std::string gap = wide && !quoted ? std::string(static_cast<size_t>(Below(writer, 3)), ' ') : "";
    if (c == ',') {
      text += gap + c + (Below(writer, 5) == 0 ? "\t" : gap);
    } else if (c == ' ') {
      text += c + gap;
    } else {
      text += lower && !quoted && c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
  }
  // "DS" reads its operands where they stand.
  if (Begins(statement, "DS")) return Chance(writer, 0.8) ? statement : " " + statement;
  // A string is read from the line as it stands, where a tab behind it would be part of it.
  if (Begins(statement, "DB \"")) return Chance(writer, 0.5) ? statement : " " + statement + " 'note";
  if (Chance(writer, 0.5)) text = OneOf(writer, std::array{" ", "\t", "        "}) + text;
  if (Chance(writer, 0.2)) text += OneOf(writer, std::array{" ", "\t", "   "});
  if (Chance(writer, 0.1)) text += OneOf(writer, std::array{"'note", "  'it's: $5 @x \"", "\t'"});
  return text;
}

std::string Damaged(Writer& writer, std::string line) {
  static const std::string kSigns = " ,()+-*/@$%'\":;.0123456789ABDEFGHIXYLZNn\t\xE9";
  for (int edits = 1 + Below(writer, 2); edits > 0; --edits) {
    const size_t at = static_cast<size_t>(Below(writer, static_cast<int>(line.size()) + 1));
    const char sign = OneOf(writer, kSigns);
    switch (Below(writer, 4)) {
      case 0: line.insert(at, 1, sign); break;
      case 1:
        if (at < line.size()) line[at] = sign;
        break;
      case 2:
        if (at < line.size()) line.erase(at, 1);
        break;
      default: line = line.substr(0, at);
    }
  }
  return line;
}

void Add(Writer& writer, const std::string& line) {
  writer.lines.push_back(Chance(writer, writer.shape.bad / 2) ? Damaged(writer, line) : line);
}

void AddTyped(Writer& writer, const std::string& statement) { Add(writer, Typed(writer, statement)); }

// A relative jump to a place near by, forward or backward.
void AddLoop(Writer& writer) {
  const std::string name = Name(writer) + "R";
  const std::string jump =
      OneOf(writer, std::array{"JR @", "JR NZ,@", "JR Z,@", "JR NC,@", "JR C,@", "DJNZ @"}) + name;
  const bool back = Chance(writer, 0.5);
  AddTyped(writer, back ? name + ":" : jump);
  for (int i = Below(writer, 20); i > 0; --i) AddTyped(writer, Instruction(writer));
  AddTyped(writer, back ? jump : name + ":");
}

void AddStatement(Writer& writer) {
  if (Chance(writer, writer.shape.bad / 2)) return Add(writer, WithReferences(writer, OneOf(writer, kBad)));
  if (Chance(writer, writer.shape.odd)) return Add(writer, WithReferences(writer, OneOf(writer, kOdd)));
  const int kind = Below(writer, 100);
  if (kind < 55) return AddTyped(writer, Instruction(writer));
  if (kind < 75) return AddTyped(writer, WithReferences(writer, OneOf(writer, kReferences)));
  if (kind < 90) return AddTyped(writer, Directive(writer));
  if (kind < 95) return Add(writer, OneOf(writer, std::array{"", "   ", "\t", "'", "'a comment", "  'note"}));
  AddLoop(writer);
}

// Names first, so that lines can refer to what comes later. Their definitions, in any order.
std::vector<std::string> MakeNames(Writer& writer) {
  std::vector<std::string> definitions;
  const int count = 2 + writer.shape.lines / 20;
  for (int i = 0; i < count; ++i) {
    writer.bytes.push_back(Name(writer) + "B" + std::to_string(i));
    writer.words.push_back(Name(writer) + "W" + std::to_string(i));
    definitions.push_back(writer.bytes.back() + ": EQU " + ConstantText(writer, 256));
    const bool label = Chance(writer, 0.7);
    definitions.push_back(writer.words.back() + (label ? ":" : ": EQU " + ConstantText(writer, 65536)));
  }
  for (size_t i = definitions.size() - 1; i > 0; --i) {
    std::swap(definitions[i], definitions[static_cast<size_t>(Below(writer, static_cast<int>(i) + 1))]);
  }
  return definitions;
}

}  // namespace

std::string RandomSource(uint64_t seed, const SourceShape& shape) {
  Writer writer;
  RandomSeed(writer.random, seed);
  writer.shape = shape;
  std::vector<std::string> definitions = MakeNames(writer);
  const double share = 1.2 * static_cast<double>(definitions.size()) / shape.lines;
  while (static_cast<int>(writer.lines.size() + definitions.size()) < shape.lines) {
    if (!definitions.empty() && Chance(writer, share)) {
      AddTyped(writer, definitions.back());
      definitions.pop_back();
    } else {
      AddStatement(writer);
    }
  }
  for (const std::string& definition : definitions) AddTyped(writer, definition);

  std::string source;
  for (const std::string& line : writer.lines) source += line + "\r\n";
  if (Chance(writer, 0.5)) source.resize(source.size() - 2);
  return source;
}

std::string RandomSourceFileBytes() { return "\x01\xFE\x80 file\r\n"; }

}  // namespace quoll::plain
