#include "devtools/RichText.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "devtools/CodePage.h"

namespace quoll {

namespace {

std::string Parts(uint32_t colour) {
  return "\\red" + std::to_string(colour & 0xFF) + "\\green" + std::to_string(colour >> 8 & 0xFF) + "\\blue" +
         std::to_string(colour >> 16 & 0xFF) + ";";
}

std::string Escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '\\':
      case '{':
      case '}': result += std::string("\\") + c; break;
      case '\t': result += "\\tab "; break;
      case '\r': break;
      case '\n': result += "\\par\r\n"; break;
      default:
        if (static_cast<uint8_t>(c) >= 0x20 && static_cast<uint8_t>(c) < 0x80) {
          result += c;
        } else {
          char code[8];
          std::snprintf(code, sizeof code, "\\'%02x", static_cast<uint8_t>(c));
          result += code;
        }
    }
  }
  return result;
}

}  // namespace

std::string RichText(std::string_view utf8, std::span<const ColouredText::Run> runs) {
  std::vector<uint32_t> colours;
  for (const ColouredText::Run& run : runs)
    if (std::ranges::find(colours, run.colour) == colours.end()) colours.push_back(run.colour);

  std::string rich =
      "{\\rtf1\\ansi\\ansicpg1250\\deff0{\\fonttbl{\\f0\\fmodern Courier New;}}\r\n{\\colortbl ;";
  for (const uint32_t colour : colours) rich += Parts(colour);
  rich += "}\r\n\\f0\\fs18 ";

  const auto piece = [utf8](size_t from, size_t to) {
    return Escaped(Cp1250FromUtf8(utf8.substr(from, to - from)).value_or(std::string()));
  };
  rich += piece(0, runs.empty() ? utf8.size() : runs.front().start);
  for (size_t i = 0; i < runs.size(); ++i) {
    const auto colour = std::ranges::find(colours, runs[i].colour) - colours.begin();
    rich += "\\cf" + std::to_string(colour + 1) + " ";
    rich += piece(runs[i].start, i + 1 < runs.size() ? runs[i + 1].start : utf8.size());
  }
  return rich + "}\r\n";
}

}  // namespace quoll
