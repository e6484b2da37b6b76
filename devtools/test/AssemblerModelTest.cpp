// The assembler against a plain one that was written without knowing it: bytes, symbols, listing, status and
// the marked line must be equal for random sources, for every row of the instruction set and for every line
// known to be odd or wrong.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "devtools/Assembler.h"
#include "devtools/test/model/EdgeLines.h"
#include "devtools/test/model/PlainAssembler.h"
#include "devtools/test/model/PlainTables.h"
#include "devtools/test/model/PlainText.h"
#include "devtools/test/model/RandomLines.h"
#include "devtools/test/model/RandomSource.h"

namespace quoll {
namespace {

// All that a compilation leaves behind.
struct Outcome {
  std::string status;
  std::string pass;
  std::vector<std::string> symbols;
  std::vector<std::string> shown;
  std::vector<plain::Span> listing;
  std::map<std::pair<int, int32_t>, int> bytes;  // by page image and address
  std::string end;
  int32_t AsmPC = 0;
  uint32_t statusColour = 0;
  uint32_t editorColour = 0;
  int32_t selStart = 0;
  int32_t selLength = 0;
};

// Neighbours of one colour are one stretch.
void Append(std::vector<plain::Span>& listing, int32_t colour, const std::string& text) {
  if (text.empty()) return;
  if (!listing.empty() && listing.back().colour == colour) {
    listing.back().text += text;
  } else {
    listing.push_back({colour, text});
  }
}

std::optional<std::string> File(const std::string& name) {
  if (name == plain::kRandomSourceFile) return plain::RandomSourceFileBytes();
  if (name == "full.bin") return std::string(65536, 'f');
  if (name == "big.bin") return std::string(65537, 'b');
  return std::nullopt;
}

Outcome Real(const std::string& source) {
  Outcome outcome;
  int page = 0xB0;
  AsmHost host;
  host.Write = [&](int32_t address, uint8_t value) { outcome.bytes[{page, address}] = value; };
  host.SetPage = [&](uint8_t value) { page = value; };
  host.ReadFile = [](const std::string& name) -> std::optional<std::vector<uint8_t>> {
    const std::optional<std::string> bytes = File(name);
    if (!bytes) return std::nullopt;
    return std::vector<uint8_t>(bytes->begin(), bytes->end());
  };
  host.Milliseconds = [] { return 7; };
  host.Refresh = [] {};
  Assembler a;
  const bool good = Compile(a, host, source);
  EXPECT_EQ(good, a.Text13 == "Completed: 0 msec") << a.Text13;
  outcome.status = good ? "Completed: " : a.Text13;
  outcome.pass = a.Text14;
  outcome.symbols = a.Symbols.List1;
  outcome.shown = a.List3;
  for (size_t i = 0; i < a.RText2.runs.size(); ++i) {
    const size_t start = a.RText2.runs[i].start;
    const size_t end = i + 1 < a.RText2.runs.size() ? a.RText2.runs[i + 1].start : a.RText2.text.size();
    Append(outcome.listing, static_cast<int32_t>(a.RText2.runs[i].colour),
           a.RText2.text.substr(start, end - start));
  }
  outcome.end = a.Label2;
  outcome.AsmPC = a.AsmPC;
  outcome.statusColour = a.StatusColor;
  outcome.editorColour = a.RText1Color;
  outcome.selStart = good ? -1 : a.SelStart;
  outcome.selLength = a.SelLength;
  return outcome;
}

Outcome Model(const std::string& source) {
  Outcome outcome;
  int page = 0xB0;
  plain::Bus bus;
  bus.write = [&](int32_t address, uint8_t value) {
    if (address >= 0 && address < kAsmAddressEnd) outcome.bytes[{page, address}] = value;
  };
  bus.setPage = [&](uint8_t value) { page = value; };
  bus.file = File;
  plain::Assembler a;
  plain::Compile(a, bus, source);
  outcome.status = a.Text13;
  outcome.pass = a.Text14;
  outcome.symbols = a.List1;
  outcome.shown = a.List3;
  for (const plain::Span& span : a.RText2) Append(outcome.listing, span.colour, span.text);
  outcome.end = a.Label2;
  outcome.AsmPC = a.AsmPC;
  outcome.statusColour = static_cast<uint32_t>(a.statusColour);
  outcome.editorColour = static_cast<uint32_t>(a.editorColour);
  outcome.selStart = a.selStart;
  outcome.selLength = a.selLength;
  return outcome;
}

std::string ListingText(const std::vector<plain::Span>& listing) {
  std::string text;
  for (const plain::Span& span : listing) text += span.text;
  return text;
}

std::string Joined(std::initializer_list<std::string> lines) {
  std::string source;
  for (const std::string& line : lines) source += (source.empty() ? "" : "\r\n") + line;
  return source;
}

Outcome ExpectSame(const std::string& source, const std::string& about) {
  SCOPED_TRACE(about);
  const Outcome real = Real(source);
  Outcome model = Model(source);
  const std::string marked =
      model.selStart < 0 ? "" : plain::Mid(source, model.selStart + 1, model.selLength);
  EXPECT_EQ(real.status, model.status) << marked;
  EXPECT_EQ(real.pass, model.pass) << marked;
  EXPECT_EQ(real.symbols, model.symbols);
  EXPECT_EQ(real.shown, model.shown);
  EXPECT_EQ(ListingText(real.listing), ListingText(model.listing));
  EXPECT_TRUE(real.listing == model.listing) << "colours";
  EXPECT_TRUE(real.bytes == model.bytes) << "bytes";
  EXPECT_EQ(real.end, model.end);
  EXPECT_EQ(real.AsmPC, model.AsmPC) << marked;
  EXPECT_EQ(real.statusColour, model.statusColour);
  EXPECT_EQ(real.editorColour, model.editorColour);
  EXPECT_EQ(real.selStart, model.selStart) << marked;
  EXPECT_EQ(real.selLength, model.selLength) << marked;
  return model;
}

int Lines(const std::string& source) {
  int lines = 0;
  for (int at = 1; at > 0; ++lines) {
    at = plain::InStr(source, "\r\n", at);
    if (at > 0) at += 2;
  }
  return lines;
}

struct Batch {
  const char* name;
  int sources;
  plain::SourceShape shape;
};

void PrintTo(const Batch& batch, std::ostream* stream) { *stream << batch.name; }

class AssemblerModel : public testing::TestWithParam<Batch> {};

TEST_P(AssemblerModel, RandomSources) {
  const Batch& batch = GetParam();
  int lines = 0;
  int complete = 0;
  for (int i = 0; i < batch.sources && !HasFailure(); ++i) {
    const std::string source = plain::RandomSource(static_cast<uint64_t>(i) + 1, batch.shape);
    lines += Lines(source);
    const Outcome model = ExpectSame(source, batch.name + std::string(", seed ") + std::to_string(i + 1));
    complete += model.status == "Completed: " ? 1 : 0;
  }
  RecordProperty("lines", lines);
  // Sources without damage are compared to their last line; damaged ones stop at every kind of line.
  EXPECT_EQ(complete == batch.sources, batch.shape.bad == 0.0);
}

INSTANTIATE_TEST_SUITE_P(All, AssemblerModel,
                         testing::Values(Batch{"sound", 20, {300, 0.0, 0.0}},
                                         Batch{"odd", 5, {240, 0.05, 0.0}},
                                         Batch{"damaged", 400, {8, 0.05, 0.3}}),
                         [](const auto& test) { return test.param.name; });

const std::string kNames = "BY: EQU 5\r\nWO: EQU 1234\r\nORG 12000";

std::string Named(const std::string& line) {
  return plain::ReplaceAll(plain::ReplaceAll(line, "#w", "WO"), "#b", "BY");
}

TEST(AssemblerModelLines, OddAndBadOnes) {
  for (const char* line : plain::kOdd) {
    const Outcome model = ExpectSame(Joined({kNames, Named(line), "NOP"}), line);
    EXPECT_EQ(model.status, "Completed: ") << line;
  }
  for (const char* line : plain::kBad) {
    const Outcome model = ExpectSame(Joined({kNames, Named(line), "NOP"}), line);
    EXPECT_NE(model.status, "Completed: ") << line;
  }
}

TEST(AssemblerModelLines, StatementsAtTheEdges) {
  std::string rest = plain::ReplaceAll(plain::kEdgeStatements, "\n", "") + "|";
  rest = plain::ReplaceAll(plain::ReplaceAll(rest, "~", "\r\n"), "^", "\t");
  int statements = 0;
  for (int bar = plain::InStr(rest, "|"); bar > 0; bar = plain::InStr(rest, "|"), ++statements) {
    const std::string statement = plain::Left(rest, bar - 1);
    ExpectSame(Joined({kNames, statement, "NOP", "END:", ""}), statement);
    rest = plain::Mid(rest, bar + 1);
  }
  EXPECT_GT(statements, 200);
}

// Code page 1250 in names, which are put in capitals, and in strings, which are put in the machine's
// characters.
TEST(AssemblerModelLines, EveryCharacter) {
  for (int code = 1; code < 256; ++code) {
    const std::string character(1, static_cast<char>(code));
    ExpectSame(Joined({character + "X:", "JP @" + character + "X"}), "name with " + std::to_string(code));
    ExpectSame("DB \"a" + character + "b\"", "string with " + std::to_string(code));
    ExpectSame("LD A," + character + "5", "number behind " + std::to_string(code));
  }
}

// Every row that has holes, with numbers on both sides of what the holes take, and with references.
TEST(AssemblerModelLines, EveryRowWithOperands) {
  const std::array<const char*, 8> kOperands = {"0", "7", "255", "256", "$FF", "$10000", "@BY", "@WO"};
  for (const plain::Row& row : plain::DisAsmRows()) {
    for (const char* operand : kOperands) {
      std::string line = plain::ReplaceFirst(row.text, "(PC+e)", operand);
      line = plain::ReplaceFirst(line, "+d", std::string("+") + operand);
      line = plain::ReplaceFirst(line, plain::InStr(line, "nn") > 0 ? "nn" : "n", operand);
      const bool hole = line != row.text;
      ExpectSame(Joined({kNames, line, "NOP"}), line);
      if (line.back() == '*') {
        line.pop_back();
        ExpectSame(Joined({kNames, line, "NOP"}), line);
      }
      if (!hole) break;
    }
  }
}

// Relative jumps on both sides of how far they reach.
TEST(AssemblerModelLines, ReachOfRelativeJumps) {
  for (int gap = 120; gap <= 135; ++gap) {
    const std::string space = "DS " + std::to_string(gap) + ",0";
    ExpectSame(Joined({"JR @L", space, "L:"}), space);
    ExpectSame(Joined({"L:", space, "DJNZ @L"}), space);
  }
}

TEST(AssemblerModelLines, NamesOfAllLengths) {
  for (size_t length = 1; length <= 70; ++length) {
    const std::string name(length, 'N');
    ExpectSame(Joined({name + ":", "JP @" + name}), name);
    ExpectSame(Joined({name + ": EQU 5", "LD A,@" + name}), name);
    ExpectSame(Joined({name + ":", name + ":"}), name);
  }
  for (const size_t length : {253U, 254U, 255U, 256U, 300U}) {
    const std::string name(length, 'N');
    ExpectSame(Joined({name + ":", name + ":"}), name);
  }
}

// Values of all widths; the table keeps seven columns and five of them are read.
TEST(AssemblerModelLines, ValuesOfAllWidths) {
  std::string value;
  for (int width = 1; width <= 7; ++width) {
    value += static_cast<char>('0' + width);
    ExpectSame(Joined({"X: EQU " + value, "LD HL,@X"}), value);
    ExpectSame(Joined({"X: EQU " + value + "ABC", "LD HL,@X"}), value);
  }
}

TEST(AssemblerModelLines, IncludedFiles) {
  for (const char* line :
       {"INCBIN \"full.bin\"", "INCBIN \"big.bin\"", " incbin   \"Data.bin\"  'note", "INCBIN \"data.bin\"",
        "INCBIN \"Data.bin\" x", "ORG 60000\r\nINCBIN \"full.bin\""}) {
    ExpectSame(Joined({line, "L:", "NOP"}), line);
  }
}

// The source is read to column 100000 and the end of the line there.
TEST(AssemblerModelLines, EndOfALongSource) {
  const std::string filler = std::string("'") + std::string(97, '-') + "\r\n";  // 100 columns
  std::string source;
  while (source.size() < 99900) source += filler;
  for (int length = 90; length <= 104; ++length) {
    const std::string line = "'" + std::string(static_cast<size_t>(length - 1), '-');
    ExpectSame(Joined({source + line, "NOP", "L:", ""}), std::to_string(length));
    ExpectSame(Joined({source + line, "NOP"}), std::to_string(length));
    ExpectSame(source + line, std::to_string(length));
  }
  ExpectSame(source + "LD A,5\r\n" + std::string(300, ' ') + "LD A,6\r\nFOO", "line over the end");
}

}  // namespace
}  // namespace quoll
