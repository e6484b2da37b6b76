// `Type`: a text as the key presses of a user at a Hungarian keyboard, whose places the machine's own keys
// take. Which character a program makes of a key is the program's affair.
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "forms/PicD.h"
#include "script/Script.h"

namespace quoll {

namespace {

constexpr int64_t kHeldFrames = 4;
constexpr int64_t kReleasedFrames = 4;
constexpr int32_t kShiftCode = 0x10;
constexpr int32_t kCtrlCode = 0x11;
constexpr int32_t kAltCode = 0x12;

struct Key {
  int32_t code = 0;  // virtual key code, 0 for none
  bool shift = false;
  bool altGr = false;  // comes as Ctrl and Alt together
};

struct KeyOfCharacter {
  std::string_view character;  // UTF-8
  Key key;
};

constexpr Key AltGr(int32_t code) { return {code, false, true}; }

constexpr std::array kKeys{
    KeyOfCharacter{"\n", {0x0D}},      KeyOfCharacter{" ", {0x20}},       KeyOfCharacter{"*", {0x6A}},
    KeyOfCharacter{"'", {'1', true}},  KeyOfCharacter{"\"", {'2', true}}, KeyOfCharacter{"+", {'3', true}},
    KeyOfCharacter{"!", {'4', true}},  KeyOfCharacter{"%", {'5', true}},  KeyOfCharacter{"/", {'6', true}},
    KeyOfCharacter{"=", {'7', true}},  KeyOfCharacter{"(", {'8', true}},  KeyOfCharacter{")", {'9', true}},
    KeyOfCharacter{",", {0xBC}},       KeyOfCharacter{"?", {0xBC, true}}, KeyOfCharacter{".", {0xBE}},
    KeyOfCharacter{":", {0xBE, true}}, KeyOfCharacter{"-", {0xBD}},       KeyOfCharacter{"_", {0xBD, true}},
    KeyOfCharacter{"á", {0xDE}},       KeyOfCharacter{"Á", {0xDE, true}}, KeyOfCharacter{"é", {0xBA}},
    KeyOfCharacter{"É", {0xBA, true}}, KeyOfCharacter{"í", {0xE2}},       KeyOfCharacter{"Í", {0xE2, true}},
    KeyOfCharacter{"ó", {0xBB}},       KeyOfCharacter{"Ó", {0xBB, true}}, KeyOfCharacter{"ö", {0xC0}},
    KeyOfCharacter{"Ö", {0xC0, true}}, KeyOfCharacter{"ő", {0xDB}},       KeyOfCharacter{"Ő", {0xDB, true}},
    KeyOfCharacter{"ú", {0xDD}},       KeyOfCharacter{"Ú", {0xDD, true}}, KeyOfCharacter{"ü", {0xBF}},
    KeyOfCharacter{"Ü", {0xBF, true}}, KeyOfCharacter{"ű", {0xDC}},       KeyOfCharacter{"Ű", {0xDC, true}},
    KeyOfCharacter{";", AltGr(0xBC)},  KeyOfCharacter{"<", AltGr(0xE2)},  KeyOfCharacter{">", AltGr('Y')},
    KeyOfCharacter{"$", AltGr(0xBA)},  KeyOfCharacter{"@", AltGr('V')},   KeyOfCharacter{"#", AltGr('X')},
    KeyOfCharacter{"&", AltGr('C')},   KeyOfCharacter{"[", AltGr('F')},   KeyOfCharacter{"]", AltGr('G')},
    KeyOfCharacter{"{", AltGr('B')},   KeyOfCharacter{"}", AltGr('N')},   KeyOfCharacter{"\\", AltGr('Q')},
    KeyOfCharacter{"|", AltGr('W')},   KeyOfCharacter{"~", AltGr('1')},   KeyOfCharacter{"^", AltGr('3')},
    KeyOfCharacter{"`", AltGr('7')},
};

// The first character of the text, at least one byte.
std::string_view FirstCharacter(std::string_view text) {
  size_t length = 1;
  while (length < text.size() && (static_cast<uint8_t>(text[length]) & 0xC0U) == 0x80U) length++;
  return text.substr(0, length);
}

Key FindKey(std::string_view character) {
  const char c = character.front();
  if (character.size() == 1) {
    if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z')) return {c, c >= 'A'};
    if (c >= 'a' && c <= 'z') return {c - 'a' + 'A'};
  }
  for (const KeyOfCharacter& entry : kKeys) {
    if (entry.character == character) return entry.key;
  }
  return {};
}

// False when the machine stopped in the meantime.
bool RunOn(Script& script, int64_t frames) {
  return RunFrames(script, frames) >= frames && script.host.callbackError == LUA_NOREF;
}

// As above.
bool PressKey(Script& script, Key key) {
  Machine& m = script.machine;
  constexpr auto kHoldingKeys = std::array{std::pair{kShiftCode, kShiftKey}, std::pair{kCtrlCode, kCtrlKey},
                                           std::pair{kAltCode, kCtrlKey | kAltKey}};
  const auto holds = [key](int32_t code) { return code == kShiftCode ? key.shift : key.altGr; };
  int32_t state = 0;
  for (auto [code, stateWithIt] : kHoldingKeys) {
    if (!holds(code)) continue;
    state = stateWithIt;
    picd_KeyDown(m, code, state);
  }
  int32_t code = key.code;
  picd_KeyDown(m, code, state);
  const bool held = RunOn(script, kHeldFrames);
  picd_KeyUp(m, key.code);
  for (auto [holding, stateWithIt] : kHoldingKeys) picd_KeyUp(m, holding);
  return held && RunOn(script, kReleasedFrames);
}

int Type(lua_State* L, Script& script) {
  size_t length = 0;
  const char* bytes = luaL_checklstring(L, 1, &length);
  const std::string_view text(bytes, length);
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view character = FirstCharacter(rest);
    if (FindKey(character).code == 0) {
      lua_pushlstring(L, character.data(), character.size());
      return luaL_error(L, "there is no key for '%s'", lua_tostring(L, -1));
    }
    rest.remove_prefix(character.size());
  }

  lua_Integer typed = 0;
  for (std::string_view rest = text; !rest.empty(); typed++) {
    const std::string_view character = FirstCharacter(rest);
    if (!PressKey(script, FindKey(character))) break;
    rest.remove_prefix(character.size());
  }
  lua_pushinteger(L, typed);
  return 1;
}

}  // namespace

void OpenTyping(lua_State* L) { lua_register(L, "Type", Guarded<Type>); }

}  // namespace quoll
