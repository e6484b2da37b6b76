// Programs in and out: the media functions under their own names. They show the machine's own message boxes
// and return nothing, but for TapeRead.
#include <cstdint>
#include <string>

#include "forms/TFloppy.h"
#include "machine/Ports.h"
#include "media/Cartridge.h"
#include "media/Cas.h"
#include "media/Pictures.h"
#include "media/Snapshot.h"
#include "script/Script.h"

namespace quoll {

namespace {

// The script holds the text while the function runs; nothing in here may raise a Lua error after it is
// copied.
template <auto kFunction>
int WithFile(lua_State* L, Script& script) {
  kFunction(script.machine, luaL_checkstring(L, 1));
  return 0;
}

int SaveProgram(lua_State* L, Script& script) {
  const char* name = luaL_checkstring(L, 1);
  const int32_t start = NearestInt(L, 2);
  const int32_t end = NearestInt(L, 3);
  SaveCAS(script.machine, name, start, end);
  return 0;
}

int OpenTape(lua_State* L, Script& script) {
  TapeOpen(script.machine.tape, luaL_checkstring(L, 1));
  return 0;
}

int RewindTape(lua_State* /*L*/, Script& script) {
  TapeRewind(script.machine.tape);
  return 0;
}

int ReadTape(lua_State* L, Script& script) {
  lua_pushinteger(L, ReadTape(script.machine));
  return 1;
}

constexpr luaL_Reg kFunctions[] = {{"LoadCAS", Guarded<WithFile<LoadCAS>>},
                                   {"SaveCAS", Guarded<SaveProgram>},
                                   {"LoadSnapShot", Guarded<WithFile<LoadSnapShot>>},
                                   {"SaveSnapshot", Guarded<WithFile<SaveSnapshot>>},
                                   {"LoadCRT", Guarded<WithFile<LoadCRT>>},
                                   {"LoadTIM", Guarded<WithFile<LoadTIM>>},
                                   {"LoadDisk", Guarded<WithFile<TFloppy_Insert>>},
                                   {"TapeOpen", Guarded<OpenTape>},
                                   {"TapeRewind", Guarded<RewindTape>},
                                   {"TapeRead", Guarded<ReadTape>}};

}  // namespace

void OpenMediaFunctions(lua_State* L) { Register(L, kFunctions); }

}  // namespace quoll
