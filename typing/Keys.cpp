#include "typing/Keys.h"

#include <array>

namespace quoll {

namespace {

struct Entry {
  std::string_view character;  // UTF-8
  TypedKey key;
};

constexpr TypedKey AltGr(int32_t code) { return {code, false, true}; }

constexpr std::array kKeys{
    Entry{"\n", {0x0D}},      Entry{" ", {0x20}},       Entry{"*", {0x6A}},      Entry{"'", {'1', true}},
    Entry{"\"", {'2', true}}, Entry{"+", {'3', true}},  Entry{"!", {'4', true}}, Entry{"%", {'5', true}},
    Entry{"/", {'6', true}},  Entry{"=", {'7', true}},  Entry{"(", {'8', true}}, Entry{")", {'9', true}},
    Entry{",", {0xBC}},       Entry{"?", {0xBC, true}}, Entry{".", {0xBE}},      Entry{":", {0xBE, true}},
    Entry{"-", {0xBD}},       Entry{"_", {0xBD, true}}, Entry{"á", {0xDE}},      Entry{"Á", {0xDE, true}},
    Entry{"é", {0xBA}},       Entry{"É", {0xBA, true}}, Entry{"í", {0xE2}},      Entry{"Í", {0xE2, true}},
    Entry{"ó", {0xBB}},       Entry{"Ó", {0xBB, true}}, Entry{"ö", {0xC0}},      Entry{"Ö", {0xC0, true}},
    Entry{"ő", {0xDB}},       Entry{"Ő", {0xDB, true}}, Entry{"ú", {0xDD}},      Entry{"Ú", {0xDD, true}},
    Entry{"ü", {0xBF}},       Entry{"Ü", {0xBF, true}}, Entry{"ű", {0xDC}},      Entry{"Ű", {0xDC, true}},
    Entry{";", AltGr(0xBC)},  Entry{"<", AltGr(0xE2)},  Entry{">", AltGr('Y')},  Entry{"$", AltGr(0xBA)},
    Entry{"@", AltGr('V')},   Entry{"#", AltGr('X')},   Entry{"&", AltGr('C')},  Entry{"[", AltGr('F')},
    Entry{"]", AltGr('G')},   Entry{"{", AltGr('B')},   Entry{"}", AltGr('N')},  Entry{"\\", AltGr('Q')},
    Entry{"|", AltGr('W')},   Entry{"~", AltGr('1')},   Entry{"^", AltGr('3')},  Entry{"`", AltGr('7')},
};

}  // namespace

std::string_view FirstCharacter(std::string_view text) {
  size_t length = 1;
  while (length < text.size() && (static_cast<uint8_t>(text[length]) & 0xC0U) == 0x80U) length++;
  return text.substr(0, length);
}

TypedKey KeyOfCharacter(std::string_view character) {
  const char c = character.front();
  if (character.size() == 1) {
    if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z')) return {c, c >= 'A'};
    if (c >= 'a' && c <= 'z') return {c - 'a' + 'A'};
  }
  for (const Entry& entry : kKeys) {
    if (entry.character == character) return entry.key;
  }
  return {};
}

}  // namespace quoll
