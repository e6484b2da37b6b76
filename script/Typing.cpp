// `Type`, `Paste`, `ScreenText`: a text as the key presses of a user at a Hungarian keyboard, whose places
// the machine's own keys take. Which character a program makes of a key is the program's affair.
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "forms/PicD.h"
#include "script/Script.h"
#include "typing/Keys.h"
#include "typing/Paste.h"
#include "typing/ScreenText.h"

namespace quoll {

namespace {

constexpr int64_t kHeldFrames = 4;
constexpr int64_t kReleasedFrames = 4;

// False when the machine stopped in the meantime.
bool RunOn(Script& script, int64_t frames) {
  return RunFrames(script, frames) >= frames && script.host.callbackError == LUA_NOREF;
}

// As above.
bool PressKey(Script& script, TypedKey key) {
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
    if (KeyOfCharacter(character).code == 0) {
      lua_pushlstring(L, character.data(), character.size());
      return luaL_error(L, "there is no key for '%s'", lua_tostring(L, -1));
    }
    rest.remove_prefix(character.size());
  }

  lua_Integer typed = 0;
  for (std::string_view rest = text; !rest.empty(); typed++) {
    const std::string_view character = FirstCharacter(rest);
    if (!PressKey(script, KeyOfCharacter(character))) break;
    rest.remove_prefix(character.size());
  }
  lua_pushinteger(L, typed);
  return 1;
}

// `Paste`: any text, at the machine's pace. Gives the number of characters that no key can give.
int PasteAll(lua_State* L, Script& script) {
  size_t length = 0;
  const char* bytes = luaL_checklstring(L, 1, &length);
  const std::string_view text(bytes, length);
  Paste paste = StartPaste(script.machine, text);
  while (PasteFrame(paste, script.machine)) {
    if (!RunOn(script, 1)) break;
  }
  StopPaste(paste, script.machine);
  lua_pushinteger(L, static_cast<lua_Integer>(KeysOfText(text).leftOut));
  return 1;
}

// `ScreenText`: what can be read on the screen.
int ReadScreen(lua_State* L, Script& script) {
  const std::string text = ScreenText(script.machine);
  lua_pushlstring(L, text.data(), text.size());
  return 1;
}

}  // namespace

void OpenTyping(lua_State* L) {
  lua_register(L, "Type", Guarded<Type>);
  lua_register(L, "Paste", Guarded<PasteAll>);
  lua_register(L, "ScreenText", Guarded<ReadScreen>);
}

}  // namespace quoll
