#include "devtools/test/model/PlainAssembler.h"

#include "devtools/test/model/PlainLine.h"
#include "devtools/test/model/PlainText.h"

namespace quoll::plain {
namespace {

constexpr int32_t Rgb(int32_t red, int32_t green, int32_t blue) { return red + 256 * green + 65536 * blue; }

constexpr int32_t kNoLineEnd = 100000;

using LineFunction = int32_t (*)(Assembler&, const Bus&, std::string&, std::string&);
using Lister = void (*)(Assembler&, int32_t result, const std::string& line, const std::string& raw);

std::string ErrorText(int32_t code, bool second) {
  switch (code) {
    case kSyntaxError: return "Syntax Error!";
    case kOverflowError: return "OverFlow Error!";
    case kExistingName: return second ? "" : "Existing name!";
    default: return second ? "Internal Error P2!" : "Internal Error P1!";
  }
}

void List(Assembler& assembler, int32_t result, const std::string& line, const std::string& raw) {
  if (result == 0) {
    int32_t colour = 0xFF0000;
    if (Begins(raw, "'")) colour = Rgb(55, 155, 55);
    if (Begins(raw, "*")) colour = Rgb(222, 25, 25);
    assembler.RText2.push_back({colour, line + "\r\n"});
    return;
  }
  assembler.RText2.push_back({Rgb(120, 20, 110), "0x" + Hex(assembler.AsmPC - result, 4)});
  assembler.RText2.push_back({0, "\t" + line + "\r\n"});
}

// Walks the text; 0 or -1.
int32_t Walk(Assembler& assembler, const Bus& bus, const std::string& source, LineFunction lineFunction,
             Lister lister) {
  int32_t p = 1;
  for (;;) {
    int32_t end = InStr(source, "\r\n", p);
    if (end == 0) end = kNoLineEnd;
    const std::string raw = Mid(source, p, end - p);
    const std::string line = Strim(TabTrim(raw));
    std::string lineToCut = line;
    std::string rawToCut = raw;
    const int32_t result = lineFunction(assembler, bus, lineToCut, rawToCut);
    if (result < 0) {
      assembler.Text13 = ErrorText(result, lister != nullptr);
      assembler.selStart = p - 1;
      assembler.selLength = static_cast<int32_t>(raw.size());
      return -1;
    }
    assembler.AsmPC += result;
    if (lister != nullptr) lister(assembler, result, line, raw);
    if (end >= kNoLineEnd) return 0;
    p = end + 2;
  }
}

std::string Shown(const std::string& entry) {
  std::string text = Mid(entry, 8, 60);
  while (text.size() < 22) text += ' ';
  return text + Left(entry, 5);
}

void Fail(Assembler& assembler) {
  assembler.statusColour = 0x8080FF;
  assembler.editorColour = 0xFFFFFF;
}

}  // namespace

void Compile(Assembler& assembler, const Bus& bus, const std::string& source) {
  assembler.Text13 = "";
  assembler.Text14 = "";
  assembler.statusColour = 0xC0FFC0;
  assembler.editorColour = Rgb(83, 83, 83);

  assembler.Text14 = "Pass1";
  assembler.List1.clear();
  assembler.List3.clear();
  assembler.AsmPC = 0;
  const int32_t first = Walk(assembler, bus, source, Pass1Line, nullptr);
  for (const std::string& entry : assembler.List1) assembler.List3.push_back(Shown(entry));
  if (first == -1) return Fail(assembler);

  assembler.Text14 = "Pass2";
  assembler.RText2.clear();
  assembler.AsmPC = 0;
  if (Walk(assembler, bus, source, Pass2Line, List) == -1) return Fail(assembler);

  assembler.Text13 = "Completed: ";
  assembler.Label2 = std::to_string(assembler.AsmPC);
  assembler.editorColour = 0xFFFFFF;
}

std::string ListingText(const Assembler& assembler) {
  std::string text;
  for (const Span& span : assembler.RText2) text += span.text;
  return text;
}

int32_t cimh(const Assembler& assembler, const std::string& name) {
  for (const std::string& entry : assembler.List1) {
    if (Mid(entry, 8, 25) == name + ":") return Nearest(Number(Left(entry, 5)));
  }
  return -1;
}

int32_t TVCASC(int32_t code) {
  switch (code) {
    case 193: return 128;
    case 201: return 129;
    case 205: return 130;
    case 211: return 131;
    case 214: return 132;
    case 213: return 133;
    case 218: return 134;
    case 220: return 135;
    case 219: return 136;
    case 225: return 144;
    case 233: return 145;
    case 237: return 146;
    case 243: return 147;
    case 246: return 148;
    case 245: return 149;
    case 250: return 150;
    case 252: return 151;
    case 251: return 152;
    default: return code;
  }
}

}  // namespace quoll::plain
