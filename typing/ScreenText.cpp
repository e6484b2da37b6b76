#include "typing/ScreenText.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <string_view>

#include "display/Compose.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr int32_t kCellWidth = 8, kCellHeight = 10, kFirstCode = 0x20;
using Glyph = std::array<uint8_t, kCellHeight>;

// The blank, the exclamation mark and the first rows of the quotation mark: where the font begins in the ROM.
constexpr std::array<uint8_t, 24> kFontBegins{0,    0,    0,    0,    0, 0,    0, 0, 0, 0,    0,    0x18,
                                              0x18, 0x18, 0x18, 0x18, 0, 0x18, 0, 0, 0, 0x6C, 0x6C, 0x6C};

// Codes 0x20 to 0x9F.
constexpr std::array<std::string_view, 33> kNational{"█", "Á", "É", "Í", "Ó", "Ö", "Ő", "Ú", "Ü", "Ű", "┌",
                                                     "└", "│", "├", "┬", "┼", "▀", "á", "é", "í", "ó", "ö",
                                                     "ő", "ú", "ü", "ű", "┐", "┘", "─", "┤", "┴", "▒", "▌"};
constexpr size_t kCharacters = 0x5F + kNational.size();
constexpr std::string_view kUnknown = "\uFFFD";

using Font = std::array<Glyph, kCharacters>;

bool FindFont(const Machine& m, Font& font) {
  const auto rom = std::span(m.MemImage).subspan(kVid0);
  const auto found = std::search(rom.begin(), rom.end(), kFontBegins.begin(), kFontBegins.end());
  if (rom.end() - found < static_cast<ptrdiff_t>(sizeof font)) return false;
  std::memcpy(font.data(), &*found, sizeof font);
  return true;
}

std::string Utf8(size_t place) {
  if (place < 0x5F) return {static_cast<char>(kFirstCode + place)};
  return std::string(kNational[place - 0x5F]);
}

// The pixels of a drawn picture, by points of the machine: a line is two rows of it.
struct Points {
  DrawnBox box;
  int32_t across;  // pixels to a point

  uint32_t At(int32_t x, int32_t y) const {
    uint32_t pixel = 0;
    std::memcpy(&pixel, box.bits + 2 * y * box.pitch + int64_t{x} * across * box.pixelBytes, 3);
    return pixel;
  }
};

// The cell's points that are not of its lower left one's colour. False when it has more than two colours.
bool ReadCell(const Points& points, int32_t left, int32_t top, Glyph& glyph) {
  const uint32_t ground = points.At(left, top + kCellHeight - 1);
  uint32_t ink = ground;
  for (int32_t y = 0; y < kCellHeight; ++y) {
    uint8_t bits = 0;
    for (int32_t x = 0; x < kCellWidth; ++x) {
      const uint32_t colour = points.At(left + x, top + y);
      if (colour == ground) continue;
      if (ink == ground) ink = colour;
      if (colour != ink) return false;
      bits |= static_cast<uint8_t>(0x80 >> x);
    }
    glyph[static_cast<size_t>(y)] = bits;
  }
  return true;
}

std::string Character(const Font& font, const Points& points, int32_t left, int32_t top) {
  Glyph glyph{};
  if (!ReadCell(points, left, top, glyph)) return std::string(kUnknown);
  for (const bool inverse : {false, true}) {
    const auto found = std::ranges::find(font, glyph);
    if (found != font.end() && !(inverse && glyph == Glyph{}))
      return Utf8(static_cast<size_t>(found - font.begin()));
    for (uint8_t& row : glyph) row = static_cast<uint8_t>(~row);
  }
  return std::string(kUnknown);
}

}  // namespace

std::vector<std::string> ScreenRows(const Machine& m) {
  Font font{};
  const int32_t mode = m.PortShadow[6] & 3;
  const Points points{DrawnPicture(m.picture), mode == 0 ? 1 : mode == 1 ? 2 : 4};
  if (points.box.bits == nullptr || !FindFont(m, font)) return {};
  std::vector<std::string> rows;
  for (int32_t top = 0; 2 * (top + kCellHeight) <= points.box.height; top += kCellHeight) {
    std::string row;
    for (int32_t left = 0; (left + kCellWidth) * points.across <= points.box.width; left += kCellWidth)
      row += Character(font, points, left, top);
    row.erase(row.find_last_not_of(' ') + 1);
    rows.push_back(row);
  }
  return rows;
}

std::string ScreenText(const Machine& m) {
  std::vector<std::string> rows = ScreenRows(m);
  while (!rows.empty() && rows.back().empty()) rows.pop_back();
  std::string text;
  for (const std::string& row : rows) text += row + '\n';
  return text;
}

}  // namespace quoll
