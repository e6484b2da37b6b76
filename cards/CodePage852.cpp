#include "cards/CodePage852.h"

#include <array>

namespace quoll {

namespace {

constexpr uint8_t kFirstForeign = 0x80;

// The page's upper half, from 0x80 on.
constexpr std::array<char16_t, 128> kUpperHalf = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x016F, 0x0107, 0x00E7,  // 0x80
    0x0142, 0x00EB, 0x0150, 0x0151, 0x00EE, 0x0179, 0x00C4, 0x0106,  // 0x88
    0x00C9, 0x0139, 0x013A, 0x00F4, 0x00F6, 0x013D, 0x013E, 0x015A,  // 0x90
    0x015B, 0x00D6, 0x00DC, 0x0164, 0x0165, 0x0141, 0x00D7, 0x010D,  // 0x98
    0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x0104, 0x0105, 0x017D, 0x017E,  // 0xA0
    0x0118, 0x0119, 0x00AC, 0x017A, 0x010C, 0x015F, 0x00AB, 0x00BB,  // 0xA8
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x00C1, 0x00C2, 0x011A,  // 0xB0
    0x015E, 0x2563, 0x2551, 0x2557, 0x255D, 0x017B, 0x017C, 0x2510,  // 0xB8
    0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x0102, 0x0103,  // 0xC0
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x00A4,  // 0xC8
    0x0111, 0x0110, 0x010E, 0x00CB, 0x010F, 0x0147, 0x00CD, 0x00CE,  // 0xD0
    0x011B, 0x2518, 0x250C, 0x2588, 0x2584, 0x0162, 0x016E, 0x2580,  // 0xD8
    0x00D3, 0x00DF, 0x00D4, 0x0143, 0x0144, 0x0148, 0x0160, 0x0161,  // 0xE0
    0x0154, 0x00DA, 0x0155, 0x0170, 0x00FD, 0x00DD, 0x0163, 0x00B4,  // 0xE8
    0x00AD, 0x02DD, 0x02DB, 0x02C7, 0x02D8, 0x00A7, 0x00F7, 0x00B8,  // 0xF0
    0x00B0, 0x00A8, 0x02D9, 0x0171, 0x0158, 0x0159, 0x25A0, 0x00A0,  // 0xF8
};

// All of the page lies below 0x10000.
void AppendUtf8(std::string& text, char32_t code) {
  const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (code < 0x80) return append(code);
  if (code < 0x800) {
    append(0xC0 | code >> 6);
  } else {
    append(0xE0 | code >> 12);
    append(0x80 | (code >> 6 & 0x3F));
  }
  append(0x80 | (code & 0x3F));
}

bool IsControl(uint8_t byte) { return byte < 0x20 || byte == 0x7F; }

// before: the byte ahead of these, and then the last of them.
void AppendPrinted(std::string& text, std::string_view printed, char& before) {
  for (const char c : printed) {
    const auto byte = static_cast<uint8_t>(c);
    if (c == '\n' || c == '\r') {
      if (c != '\n' || before != '\r') text.push_back('\n');
    } else if (c == '\t' || c == '\f') {
      text.push_back(c);
    } else {
      AppendUtf8(text, IsControl(byte) ? U'.' : CodePage852(byte));
    }
    before = c;
  }
}

}  // namespace

char32_t CodePage852(uint8_t byte) { return byte < kFirstForeign ? byte : kUpperHalf[byte - kFirstForeign]; }

std::string PrintedText(std::string_view printed) {
  std::string text;
  text.reserve(printed.size() + printed.size() / 8);
  char before = 0;
  AppendPrinted(text, printed, before);
  return text;
}

PrintedPiece FollowPrinted(PrintedFollower& follower, const Printer& printer, size_t most) {
  PrintedPiece piece;
  if (follower.beginnings != printer.beginnings || printer.printed.size() < follower.taken) {
    follower = {.beginnings = printer.beginnings};
    piece.fromStart = true;
  }
  const std::string_view fresh = std::string_view(printer.printed).substr(follower.taken, most);
  AppendPrinted(piece.text, fresh, follower.before);
  follower.taken += fresh.size();
  return piece;
}

}  // namespace quoll
