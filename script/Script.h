// What the files of the script interface share: the machine with its host, and the one road by which Lua
// calls C++.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <lua.hpp>
#include <span>
#include <vector>

#include "machine/Machine.h"
#include "script/ScriptHost.h"

namespace quoll {

// Half a megabyte and more: keep it on the heap.
struct Script {
  ScriptHost host;
  Machine machine{host};
  std::vector<uint8_t> pixels;  // the picture on its way to Lua
};

// The script whose Lua state this is, from any of its threads.
Script& ScriptOf(lua_State* L);

// A function for Lua. It may call luaL_error and its like, which leap out of it without running any
// destructor: no object that has one may be alive then. It may throw, or let the engine throw.
using Bound = int (*)(lua_State*, Script&);

// What a bound function threw, as text; empty for nothing.
struct Failure {
  char text[400];
  bool located;  // the text gets the script's line in front
};
void DescribeException(Failure& failure);

// Leaves a bound function: with its results, or by raising what it threw, or what a frame-end function
// raised in the meantime.
int Leave(lua_State* L, Script& script, const Failure& failure, int results);

// The C function around a bound function: an exception must never cross Lua's frames.
template <Bound kFunction>
int Guarded(lua_State* L) {
  Failure failure;
  failure.text[0] = '\0';
  int results = 0;
  Script& script = ScriptOf(L);
  try {
    results = kFunction(L, script);
  } catch (...) {
    DescribeException(failure);
  }
  return Leave(L, script, failure, results);
}

// luaL_error for those who must not return.
template <typename... Arguments>
[[noreturn]] void Refuse(lua_State* L, const char* format, Arguments... arguments) {
  luaL_error(L, format, arguments...);
  std::abort();  // not reached
}

// An object without a content of its own: its metatable does everything. Leaves it as a global.
void SetProxy(lua_State* L, const char* name, lua_CFunction index, lua_CFunction newIndex);

// Integer arguments. The first takes whatever it gets to the nearest 32-bit number: an address far outside
// must not come round to a good one. The second keeps the low 32 bits, as a store does.
int32_t NearestInt(lua_State* L, int argument);
int32_t LowInt(lua_State* L, int argument);

// Leaves functions as globals.
void Register(lua_State* L, std::span<const luaL_Reg> functions);

// The parts of the interface; each leaves its names as globals.
void OpenRecords(lua_State* L);
void OpenArrays(lua_State* L);
void OpenFunctions(lua_State* L);
void OpenMediaFunctions(lua_State* L);
void OpenCards(lua_State* L);
void OpenDevFunctions(lua_State* L);
void OpenControls(lua_State* L);
void OpenRunning(lua_State* L);
void OpenTyping(lua_State* L);
void OpenOutput(lua_State* L);

// A lua_CFunction that opens all parts. Its argument is the Script as light userdata.
int OpenScript(lua_State* L);

// Leaves the array of that name, `RunState.PcHistory` for one, on the stack.
void PushPcHistory(lua_State* L);

// Sets CpuRunning, runs the loop, and stops it after so many frame ends. Returns how many there were: fewer
// when the machine stopped by itself, more when a frame-end function ran some of its own.
int64_t RunFrames(Script& script, int64_t count);

}  // namespace quoll
