#include "devtools/Assembler.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "devtools/AsmLine.h"
#include "devtools/ToolText.h"

namespace quoll {

namespace {

// Ends a pass at the line that failed.
void Fail(Assembler& a, int32_t error, int32_t pass) {
  switch (error) {
    case kAsmSyntax: a.Text13 = "Syntax Error!"; break;
    case kAsmOverflow: a.Text13 = "OverFlow Error!"; break;
    case kAsmTooFar: a.Text13 = "Jump too Big!"; break;
    case kAsmExists: a.Text13 = pass == 1 ? "Existing name!" : a.Text13; break;
    default: a.Text13 = pass == 1 ? "Internal Error P1!" : "Internal Error P2!"; break;
  }
}

// Calls use(line, raw) for each line until one gives an error; 0, or -1 when one did. The last line is the
// one that reaches column kAsmSourceEnd, or the one without a line end.
template <class Use>
int32_t ForEachLine(Assembler& a, int32_t pass, std::string_view source, Use use) {
  a.AsmPC = 0;
  a.ErrorLine = 0;
  a.CutOff = false;
  size_t p = 1;
  for (int32_t number = 1;; ++number) {
    const size_t found = source.find("\r\n", p - 1);
    const size_t end = found == std::string_view::npos ? size_t{kAsmSourceEnd} : found + 1;
    const std::string raw(end > p ? Mid(source, p, end - p) : std::string_view());
    const std::string line = Strim(TabTrim(raw));

    int32_t result = use(line, raw);
    if (int64_t{a.AsmPC} + result > std::numeric_limits<int32_t>::max()) result = kAsmInternal;
    if (result < 0) {
      Fail(a, result, pass);
      a.ErrorLine = number;
      a.SelStart = static_cast<int32_t>(p - 1);
      a.SelLength = static_cast<int32_t>(raw.size());
      return -1;
    }
    a.AsmPC += result;
    if (end >= size_t{kAsmSourceEnd}) {
      a.CutOff = source.size() > (found == std::string_view::npos ? std::max(p, end) - 1 : end + 1);
      return 0;
    }
    p = end + 2;
  }
}

// A line's part of the listing.
void List(Assembler& a, const std::string& line, const std::string& raw, int32_t size) {
  ColouredText& listing = a.RText2;
  if (size > 0) {
    listing.Append(asm_colour::kAddress, "0x" + Hex4(a.AsmPC));
    listing.Append(asm_colour::kCode, "\t" + line + "\r\n");
    return;
  }
  uint32_t colour = asm_colour::kNoCode;
  if (raw.starts_with('\'')) colour = asm_colour::kComment;
  if (raw.starts_with('*')) colour = asm_colour::kCommand;
  listing.Append(colour, line + "\r\n");
}

void Show(const AsmHost& host) {
  if (host.Refresh) host.Refresh();
}

bool Failed(Assembler& a, const AsmHost& host) {
  a.StatusColor = asm_colour::kFailed;
  a.RText1Color = asm_colour::kWhite;
  Show(host);
  return false;
}

}  // namespace

void ColouredText::Append(uint32_t colour, std::string_view what) {
  if (runs.empty() || runs.back().colour != colour) runs.push_back({text.size(), colour});
  text += what;
}

int32_t PreComp0(Assembler& a, const AsmHost& host, std::string_view source) {
  ClearSymbols(a.Symbols);
  a.List3.clear();
  return ForEachLine(a, 1, source, [&](const std::string& line, const std::string& raw) {
    return Pass1Line(a, host, line, raw);
  });
}

int32_t PreComp1(Assembler& a, const AsmHost& host, std::string_view source) {
  a.RText2 = ColouredText();
  return ForEachLine(a, 2, source, [&](const std::string& line, const std::string& raw) {
    const int32_t size = Pass2Line(a, host, line, raw);
    if (size >= 0) List(a, line, raw, size);
    return size;
  });
}

bool Compile(Assembler& a, const AsmHost& host, std::string_view source) {
  const auto now = [&] { return host.Milliseconds ? int64_t{host.Milliseconds()} : 0; };
  a.Text13.clear();
  a.Text14.clear();
  a.StatusColor = asm_colour::kBusy;
  a.RText1Color = asm_colour::kCompiling;
  Show(host);
  const int64_t start = now();

  a.Text14 = "Pass1";
  Show(host);
  const int32_t first = PreComp0(a, host, source);
  a.List3 = SymbolDisplay(a.Symbols);
  if (first != 0) return Failed(a, host);

  a.Text14 = "Pass2";
  Show(host);
  if (PreComp1(a, host, source) != 0) return Failed(a, host);

  a.Text13 = "Completed: " + std::to_string(now() - start) + " msec";
  a.Label2 = std::to_string(a.AsmPC);
  a.RText1Color = asm_colour::kWhite;
  Show(host);
  return true;
}

}  // namespace quoll
