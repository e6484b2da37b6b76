#include "devtools/SourceText.h"

#include <algorithm>
#include <array>

#include "devtools/CodePage.h"
#include "devtools/ToolText.h"

namespace quoll {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr uint32_t kName = 0xFF0000;       // labels and constants
constexpr uint32_t kDirective = 0xE119DE;  // red 222, green 25, blue 225
constexpr uint32_t kBlack = 0;

bool IsDirective(std::string_view trimmed) {
  const std::string large = UpperCase(trimmed.substr(0, 7));
  constexpr std::array<std::string_view, 5> kStarts = {"DB ", "DW ", "DS ", "INCBIN ", "ORG "};
  return std::any_of(kStarts.begin(), kStarts.end(),
                     [&](std::string_view s) { return large.starts_with(s); });
}

uint32_t LineColour(std::string_view line) {
  const std::string_view trimmed = Trim(line);
  if (line.find(": EQU") != std::string_view::npos || trimmed.ends_with(':')) return kName;
  if (trimmed.starts_with('*')) return asm_colour::kCommand;
  return IsDirective(trimmed) ? kDirective : kBlack;
}

// Blanks in the place of each ";" and what follows it in its line.
void BlankSemicolons(std::string& text) {
  for (size_t at = text.find(';'); at != std::string::npos; at = text.find(';', at)) {
    const size_t end = std::min(text.find(kLineEnd, at), text.size());
    std::fill(text.begin() + static_cast<ptrdiff_t>(at), text.begin() + static_cast<ptrdiff_t>(end), ' ');
  }
}

}  // namespace

ColouredText ColouredSource(std::string_view source) {
  ColouredText result;
  for (size_t start = 0; start <= source.size();) {
    const size_t end = std::min(source.find(kLineEnd, start), source.size());
    const std::string_view line = source.substr(start, end - start);
    const size_t comment = std::min(line.find('\''), line.size());
    if (comment > 0) result.Append(LineColour(line), line.substr(0, comment));
    if (comment < line.size()) result.Append(asm_colour::kComment, line.substr(comment));
    if (end == source.size()) break;
    result.text += kLineEnd;
    start = end + kLineEnd.size();
  }
  return result;
}

std::string ConvertTvcasm(std::string_view source) {
  std::string text(source);
  BlankSemicolons(text);

  for (const size_t blanks : {13, 5, 5, 4, 4, 3, 2, 2}) {
    if (blanks == 13) text = ReplaceText(text, "\t", " ");
    text = ReplaceText(text, std::string(blanks, ' '), " ");
  }

  // In this order, each over what the ones before have left.
  struct Replacement {
    std::string_view from, to;
  };
  constexpr auto kReplacements = std::to_array<Replacement>({
      {"\r\n ", "\r\n"},
      {";", "     '"},
      {"call ", "call @"},
      {"jr ", "jr @"},
      {"CALL ", "call @"},
      {"JR Z,", "jr Z,@"},
      {"JR NZ,", "jr nz,@"},
      {"JR C,", "jr c,@"},
      {"JR nc,", "jr nc,@"},
      {"JP Z,", "jp z,@"},
      {"JP NZ,", "jp nz,@"},
      {"JP ", "jp @"},
      {" EQU ", ": EQU "},
      {":\r\nDB ", " DB "},
      {":\r\nDW ", " DW "},
  });
  for (const auto& [from, to] : kReplacements) text = ReplaceText(text, from, to);
  return text;
}

std::string WithBothLineEnds(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\r' && text[at] != '\n') {
      result += text[at];
      continue;
    }
    if (text.substr(at).starts_with(kLineEnd)) ++at;
    result += kLineEnd;
  }
  return result;
}

std::string SourceOfFile(std::string_view bytes) {
  const std::optional<std::string> text = Cp1250FromUtf8(bytes);
  return WithBothLineEnds(text ? *text : bytes);
}

}  // namespace quoll
