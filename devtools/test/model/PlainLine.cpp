#include "devtools/test/model/PlainLine.h"

#include "devtools/test/model/PlainTables.h"
#include "devtools/test/model/PlainText.h"

namespace quoll::plain {
namespace {

bool IsOneOf(char c, const std::string& set) { return set.find(c) != std::string::npos; }

// Pieces between the commas; one more than there are commas.
std::vector<std::string> SplitText(const std::string& text) {
  std::vector<std::string> pieces;
  std::string rest = text;
  for (int comma = InStr(rest, ","); comma > 0; comma = InStr(rest, ",")) {
    pieces.push_back(Left(rest, comma - 1));
    rest = Mid(rest, comma + 1);
  }
  pieces.push_back(rest);
  return pieces;
}

int32_t Length(const std::string& text) { return static_cast<int32_t>(text.size()); }

}  // namespace

void CutComment(std::string& line, std::string& raw) {
  if (const int at = InStr(line, "'", 2); at > 0) {
    line = Trim(Left(line, at - 1));
    raw = Left(raw, InStr(raw, "'") - 1);
  }
  if (line == "EX AF,AF") line = "EX AF,AF'";
}

int32_t Org(Assembler& assembler, const std::string& line) {
  assembler.AsmPC = Cut(Number(WithoutDollar(Trim(Mid(line, 4)), 4)));
  return assembler.AsmPC > 65535 || assembler.AsmPC < 0 ? kOverflowError : 0;
}

int32_t DefineBytes(const Assembler& assembler, const Bus& bus, const std::string& line,
                    const std::string& raw, bool machineCharacters) {
  const std::string text = Trim(Mid(Trim(raw), 4));
  int32_t written = 0;
  if (Begins(text, "\"")) {
    if (text.back() != '"') return kSyntaxError;
    for (int column = 2; column < Length(text); ++column) {
      const int32_t code = static_cast<unsigned char>(text[static_cast<size_t>(column - 1)]);
      bus.write(assembler.AsmPC + written, static_cast<uint8_t>(machineCharacters ? TVCASC(code) : code));
      ++written;
    }
    return written;
  }
  for (const std::string& piece : SplitText(Mid(line, 4))) {
    const double value = Number(WithoutDollar(piece, 2));
    if (value > 255 || value < 0) return kOverflowError;
    bus.write(assembler.AsmPC + written, static_cast<uint8_t>(Nearest(value)));
    ++written;
  }
  return written;
}

int32_t DefineWords(const Assembler& assembler, const Bus& bus, const std::string& line) {
  int32_t index = 0;
  for (const std::string& piece : SplitText(Mid(line, 4))) {
    const double value = Number(WithoutDollar(piece, 4));
    if (value > 65535 || value < 0) return kOverflowError;
    const int32_t word = Nearest(value);
    bus.write(assembler.AsmPC + index, static_cast<uint8_t>(word % 256));
    bus.write(assembler.AsmPC + index + 1, static_cast<uint8_t>(word / 256));
    ++index;  // one on, not two: the words of a list lie over each other
  }
  return 2 * index;
}

int32_t DefineSpace(const Assembler& assembler, const Bus& bus, const std::string& raw) {
  const int comma = InStr(raw, ",");
  if (comma == 0) throw RuntimeError{};
  const int32_t count = Nearest(Number(Mid(raw, 4, comma - 4)));
  const double value = Number(WithoutDollar(Mid(raw, comma + 1), 3));
  if (count < 1) return kSyntaxError;
  if (value > 255 || value < 0) return kOverflowError;
  for (int32_t i = 0; i < count; ++i) bus.write(assembler.AsmPC + i, static_cast<uint8_t>(Nearest(value)));
  return count;
}

Included IncludedFile(const Bus& bus, const std::string& line, const std::string& raw) {
  if (Mid(line, 8, 1) != "\"" || line.back() != '"') return {kSyntaxError, ""};
  // The line was put in capitals; the name as it was typed stands between the same quotes of the raw line.
  const int open = InStr(raw, "\"");
  int close = open;
  while (InStr(raw, "\"", close + 1) > 0) close = InStr(raw, "\"", close + 1);
  if (close == open) throw RuntimeError{};
  const std::optional<std::string> bytes = bus.file(Mid(raw, open + 1, close - open - 1));
  if (!bytes) throw RuntimeError{};
  if (bytes->size() > 65536) return {kOverflowError, ""};
  return {0, *bytes};
}

std::string RewriteRst(const std::string& line) {
  for (const char* digits : {"0", "8", "10", "18", "20", "28", "30", "38"}) {
    if (line == std::string("RST $") + digits) return std::string("RST ") + digits + "H";
  }
  return line;
}

std::optional<Found> Lookup(const std::string& line) {
  const int hit = InStr(AsmTable(), "  " + line + "\r\n");
  if (hit == 0) return std::nullopt;
  return Found{Trim(Mid(AsmTable(), hit - 10, 6)), Mid(AsmTable(), hit - 10 + 7, 1)[0]};
}

int SearchColumn(const std::string& line) {
  for (const char* bits : {"BIT ", "SET ", "RES "}) {
    if (Begins(line, bits)) return 6;
    if (Begins(line, "LD ") && Mid(line, 6, 4) == bits) return 16;
  }
  return 4;
}

int32_t DollarStep(std::string& line) {
  const int at = InStr(line, "$");
  if (at == 0) return 0;
  int end = at + 1;
  while (end <= Length(line) && IsOneOf(line[static_cast<size_t>(end - 1)], "0123456789ABCDEF")) ++end;
  if (end == at + 1) return kSyntaxError;
  const std::string digits = Mid(line, at + 1, end - at - 1);
  line = ReplaceAll(line, "$" + digits, std::to_string(HexValue(digits)));
  return 0;
}

void CutNumber(std::string& line, int column, const std::string& digits, int32_t& operand) {
  const auto isDigit = [&](int at) {
    return at <= Length(line) && IsOneOf(line[static_cast<size_t>(at - 1)], digits);
  };
  int begin = column;
  while (begin <= Length(line) && !isDigit(begin)) ++begin;
  if (begin > Length(line)) return;
  int end = begin;
  while (isDigit(end)) ++end;
  const std::string number = Mid(line, begin, end - begin);
  if (InStr(number, "%") > 0) throw RuntimeError{};
  operand = Nearest(Number(number));
  line = Left(line, begin - 1) + Mid(line, end, 255);
}

}  // namespace quoll::plain
