// What the user would see and hear: message boxes, picture, border, sound.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "script/OutputFiles.h"
#include "script/Script.h"

namespace quoll {

namespace {

constexpr int32_t kWindowWidth = 640;  // the inside of the main window
constexpr int32_t kBandRows = 2;
constexpr int32_t kWindowHeight = Palette::kBands * kBandRows;
constexpr int32_t kPixelBytes = 3;

// Colour of a row of the border as last painted, red + 256 x green + 65536 x blue; black before that.
int32_t BorderColour(const Picture& picture, int32_t row) {
  const auto band = static_cast<size_t>(row / kBandRows);
  return band < picture.Border.size() ? picture.Border[band] : 0;
}

void PaintBorder(const Picture& picture, std::vector<uint8_t>& window) {
  uint8_t* out = window.data();
  for (int32_t row = 0; row < kWindowHeight; row++) {
    const int32_t colour = BorderColour(picture, row);
    for (int32_t x = 0; x < kWindowWidth; x++, out += kPixelBytes) {
      out[0] = static_cast<uint8_t>(SplitRed(colour));
      out[1] = static_cast<uint8_t>(SplitGreen(colour));
      out[2] = static_cast<uint8_t>(SplitBlue(colour));
    }
  }
}

// Lays the picture box over the border. A program can have put it partly or wholly outside.
void PaintPicture(const Picture& picture, std::vector<uint8_t>& window) {
  const std::vector<uint8_t> pixels = PicturePixels(picture);
  const int64_t left = std::max<int64_t>(picture.Left, 0);
  const int64_t right = std::min(int64_t{picture.Left} + picture.Width, int64_t{kWindowWidth});
  const int64_t top = std::max<int64_t>(picture.Top, 0);
  const int64_t bottom = std::min(int64_t{picture.Top} + picture.Height, int64_t{kWindowHeight});
  if (left >= right) return;
  for (int64_t y = top; y < bottom; y++) {
    const int64_t from = (y - picture.Top) * picture.Width + left - picture.Left;
    const int64_t to = y * kWindowWidth + left;
    std::copy_n(&pixels[static_cast<size_t>(from * kPixelBytes)], (right - left) * kPixelBytes,
                &window[static_cast<size_t>(to * kPixelBytes)]);
  }
}

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
  lua_createtable(L, kWindowHeight, 0);
  for (int32_t row = 0; row < kWindowHeight; row++) {
    const int32_t colour = BorderColour(script.machine.picture, row);
    lua_pushinteger(L, SplitRed(colour) * 0x10000 + SplitGreen(colour) * 0x100 + SplitBlue(colour));
    lua_rawseti(L, -2, row + 1);
  }
  return 1;
}

int SavePicture(lua_State* L, Script& script) {
  const char* path = luaL_checkstring(L, 1);
  const Picture& picture = script.machine.picture;
  script.pixels.assign(size_t{kWindowWidth} * kWindowHeight * kPixelBytes, 0);
  PaintBorder(picture, script.pixels);
  PaintPicture(picture, script.pixels);
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

}  // namespace

void OpenOutput(lua_State* L) {
  lua_register(L, "Messages", Guarded<Messages>);
  lua_register(L, "Picture", Guarded<GetPicture>);
  lua_register(L, "Border", Guarded<Border>);
  lua_register(L, "SavePicture", Guarded<SavePicture>);
  lua_register(L, "Sound", Guarded<Sound>);
  lua_register(L, "SaveSound", Guarded<SaveSound>);
}

}  // namespace quoll
