#include "devtools/CodePage.h"

#include <algorithm>
#include <array>

namespace quoll {

namespace {

// Characters 0x80 to 0xFF as Unicode; 0 for the five places that are free.
constexpr std::array<uint16_t, 128> kUnicode = {
    0x20AC, 0,      0x201A, 0,      0x201E, 0x2026, 0x2020, 0x2021, 0,      0x2030, 0x0160, 0x2039, 0x015A,
    0x0164, 0x017D, 0x0179, 0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0,      0x2122,
    0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B, 0x00B0, 0x00B1, 0x02DB, 0x0142,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C, 0x0154,
    0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD,
    0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA,
    0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4,
    0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};

// How far the large letter stands before the small one; 0 for what is no small letter.
constexpr uint8_t LargeDistance(uint8_t c) {
  if (c >= 'a' && c <= 'z') return 0x20;
  if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return 0x20;
  switch (c) {
    case 0x9A:
    case 0x9C:
    case 0x9D:
    case 0x9E:
    case 0x9F:
    case 0xB3:
    case 0xBA:
    case 0xBF: return 0x10;
    case 0xB9: return 0x14;
    case 0xBE: return 2;
    default: return 0;
  }
}

using Letters = std::array<char, 256>;

constexpr Letters kLarge = [] {
  Letters large{};
  for (size_t c = 0; c < large.size(); ++c) {
    large[c] = static_cast<char>(c - LargeDistance(static_cast<uint8_t>(c)));
  }
  return large;
}();

constexpr Letters kSmall = [] {
  Letters small{};
  for (size_t c = 0; c < small.size(); ++c) small[c] = static_cast<char>(c);
  for (size_t c = 0; c < small.size(); ++c) {
    const size_t distance = LargeDistance(static_cast<uint8_t>(c));
    if (distance != 0) small[c - distance] = static_cast<char>(c);
  }
  return small;
}();

std::string Mapped(std::string_view text, const Letters& letters) {
  std::string result(text);
  for (char& c : result) c = letters[static_cast<uint8_t>(c)];
  return result;
}

void AppendUtf8(std::string& out, uint32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | c >> 6);
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | c >> 12);
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

char Cp1250Of(uint32_t c) {
  if (c < 0x80) return static_cast<char>(c);
  const auto* found = std::find(kUnicode.begin(), kUnicode.end(), c);
  if (found != kUnicode.end()) return static_cast<char>(0x80 + (found - kUnicode.begin()));
  // The free places keep their codes.
  const bool isFree = c < 0xA0 && kUnicode[c - 0x80] == 0;
  return isFree ? static_cast<char>(c) : '?';
}

}  // namespace

std::string UpperCase(std::string_view text) { return Mapped(text, kLarge); }

std::string LowerCase(std::string_view text) { return Mapped(text, kSmall); }

size_t FindIgnoringCase(std::string_view text, std::string_view what, size_t from) {
  if (from > text.size()) return std::string_view::npos;
  const auto same = [](char a, char b) {
    return kLarge[static_cast<uint8_t>(a)] == kLarge[static_cast<uint8_t>(b)];
  };
  const auto* const found =
      std::search(text.begin() + static_cast<ptrdiff_t>(from), text.end(), what.begin(), what.end(), same);
  const bool hit = found != text.end() || what.empty();
  return hit ? static_cast<size_t>(found - text.begin()) : std::string_view::npos;
}

std::optional<std::string> Cp1250FromUtf8(std::string_view utf8) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (utf8.starts_with(kMark)) utf8.remove_prefix(kMark.size());
  std::string result;
  for (size_t at = 0; at < utf8.size();) {
    const auto first = static_cast<uint8_t>(utf8[at]);
    const size_t length = first < 0x80 ? 1 : first >= 0xC2 && first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if ((first >= 0x80 && first < 0xC2) || first > 0xF4 || at + length > utf8.size()) return std::nullopt;
    uint32_t c = length == 1 ? first : first & (0x7FU >> length);
    for (size_t i = 1; i < length; ++i) {
      const auto next = static_cast<uint8_t>(utf8[at + i]);
      if ((next & 0xC0) != 0x80) return std::nullopt;
      c = c << 6 | (next & 0x3FU);
    }
    constexpr std::array<uint32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
    if (c < kLeast[length] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) return std::nullopt;
    result += Cp1250Of(c);
    at += length;
  }
  return result;
}

std::string Utf8FromCp1250(std::string_view text) {
  std::string result;
  for (const char letter : text) {
    const auto c = static_cast<uint8_t>(letter);
    const uint32_t unicode = c < 0x80 ? c : kUnicode[c - 0x80U];
    AppendUtf8(result, unicode == 0 && c >= 0x80 ? c : unicode);
  }
  return result;
}

}  // namespace quoll
