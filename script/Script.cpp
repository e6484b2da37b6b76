#include "script/Script.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <limits>

namespace quoll {

Script& ScriptOf(lua_State* L) { return **static_cast<Script**>(lua_getextraspace(L)); }

void DescribeException(Failure& failure) {
  failure.located = true;
  try {
    throw;
  } catch (const ProgramEnd&) {
    failure.located = false;
    std::snprintf(failure.text, sizeof failure.text, "program ended");
  } catch (const std::exception& e) {
    std::snprintf(failure.text, sizeof failure.text, "%s", e.what());
  } catch (...) {
    std::snprintf(failure.text, sizeof failure.text, "unknown failure");
  }
  if (failure.text[0] == '\0') std::snprintf(failure.text, sizeof failure.text, "failure without a text");
}

int Leave(lua_State* L, Script& script, const Failure& failure, int results) {
  ScriptHost& host = script.host;
  if (host.callbackError != LUA_NOREF) {
    lua_rawgeti(L, LUA_REGISTRYINDEX, host.callbackError);
    luaL_unref(L, LUA_REGISTRYINDEX, host.callbackError);
    host.callbackError = LUA_NOREF;
    return lua_error(L);
  }
  if (failure.text[0] == '\0') return results;
  luaL_where(L, failure.located ? 1 : -1);
  lua_pushstring(L, failure.text);
  lua_concat(L, 2);
  return lua_error(L);
}

void SetProxy(lua_State* L, const char* name, lua_CFunction index, lua_CFunction newIndex) {
  lua_newuserdatauv(L, 0, 0);
  lua_createtable(L, 0, 3);
  lua_pushcfunction(L, index);
  lua_setfield(L, -2, "__index");
  lua_pushcfunction(L, newIndex);
  lua_setfield(L, -2, "__newindex");
  lua_pushstring(L, name);
  lua_setfield(L, -2, "__name");
  lua_setmetatable(L, -2);
  lua_setglobal(L, name);
}

int32_t NearestInt(lua_State* L, int argument) {
  using Limits = std::numeric_limits<int32_t>;
  const lua_Integer value = luaL_checkinteger(L, argument);
  return static_cast<int32_t>(std::clamp<lua_Integer>(value, Limits::min(), Limits::max()));
}

int32_t LowInt(lua_State* L, int argument) {
  return static_cast<int32_t>(static_cast<uint32_t>(luaL_checkinteger(L, argument)));
}

void Register(lua_State* L, std::span<const luaL_Reg> functions) {
  for (const luaL_Reg& function : functions) lua_register(L, function.name, function.func);
}

int OpenScript(lua_State* L) {
  auto* script = static_cast<Script*>(lua_touserdata(L, 1));
  *static_cast<Script**>(lua_getextraspace(L)) = script;
  luaL_openlibs(L);

  // Made after the extra space is filled, which a new thread copies.
  script->host.callbackThread = lua_newthread(L);
  luaL_ref(L, LUA_REGISTRYINDEX);

  OpenRecords(L);
  OpenArrays(L);
  OpenFunctions(L);
  OpenMediaFunctions(L);
  OpenCards(L);
  OpenDevFunctions(L);
  OpenControls(L);
  OpenRunning(L);
  OpenTyping(L);
  OpenOutput(L);
  return 0;
}

}  // namespace quoll
