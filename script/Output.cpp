// What the user would see and hear: message boxes, picture, border, sound.
#include <cstdint>

#include "display/Compose.h"
#include "script/OutputFiles.h"
#include "script/Script.h"

namespace quoll {

namespace {

int Messages(lua_State* L, Script& script) {
  std::vector<Message>& messages = script.host.messages;
  lua_createtable(L, static_cast<int>(messages.size()), 0);
  for (size_t i = 0; i < messages.size(); i++) {
    lua_createtable(L, 0, 2);
    lua_pushlstring(L, messages[i].text.data(), messages[i].text.size());
    lua_setfield(L, -2, "text");
    lua_pushlstring(L, messages[i].title.data(), messages[i].title.size());
    lua_setfield(L, -2, "title");
    lua_rawseti(L, -2, static_cast<lua_Integer>(i) + 1);
  }
  messages.clear();
  return 1;
}

int GetPicture(lua_State* L, Script& script) {
  const Picture& picture = script.machine.picture;
  script.pixels = PicturePixels(picture);
  lua_pushinteger(L, picture.Width);
  lua_pushinteger(L, picture.Height);
  lua_pushinteger(L, picture.Left);
  lua_pushinteger(L, picture.Top);
  const char* pixels = script.pixels.empty() ? "" : reinterpret_cast<const char*>(script.pixels.data());
  lua_pushlstring(L, pixels, script.pixels.size());
  return 5;
}

int Border(lua_State* L, Script& script) {
  constexpr Pixel kColour = 0xFFFFFF;
  lua_createtable(L, kWindowHeight, 0);
  for (int32_t row = 0; row < kWindowHeight; row++) {
    lua_pushinteger(L, BorderPixel(script.machine.picture, row) & kColour);
    lua_rawseti(L, -2, row + 1);
  }
  return 1;
}

int SavePicture(lua_State* L, Script& script) {
  const char* path = luaL_checkstring(L, 1);
  script.pixels = ComposeWindow(script.machine.picture);
  if (!WritePng(path, kWindowWidth, kWindowHeight, script.pixels)) {
    return luaL_error(L, "%s: the picture can't be written", path);
  }
  return 0;
}

int Sound(lua_State* L, Script& script) {
  ScriptHost& host = script.host;
  const size_t count = host.sound.size() - host.soundTaken;
  const char* bytes = count == 0 ? "" : reinterpret_cast<const char*>(&host.sound[host.soundTaken]);
  lua_pushlstring(L, bytes, count);
  host.soundTaken = host.sound.size();
  return 1;
}

int SaveSound(lua_State* L, Script& script) {
  const char* path = luaL_checkstring(L, 1);
  if (!WriteWave(path, script.host.sound)) return luaL_error(L, "%s: the sound can't be written", path);
  return 0;
}

constexpr luaL_Reg kFunctions[] = {{"Messages", Guarded<Messages>}, {"Picture", Guarded<GetPicture>},
                                   {"Border", Guarded<Border>},     {"SavePicture", Guarded<SavePicture>},
                                   {"Sound", Guarded<Sound>},       {"SaveSound", Guarded<SaveSound>}};

}  // namespace

void OpenOutput(lua_State* L) { Register(L, kFunctions); }

}  // namespace quoll
