// Letting the machine run: passes, frames, clock and chance.
#include <cstdint>
#include <cstring>

#include "loop/RunLoop.h"
#include "script/Script.h"

namespace quoll {

namespace {

// Performs one pass; false when a frame-end function has failed in it.
bool Pass(Script& script) {
  script.machine.run.CpuRunning = 0;
  RunLoop(script.machine);
  return script.host.callbackError == LUA_NOREF;
}

int Step(lua_State* L, Script& script) {
  const lua_Integer count = luaL_optinteger(L, 1, 1);
  for (lua_Integer i = 0; i < count; i++) {
    if (!Pass(script)) break;
  }
  return 0;
}

int Frames(lua_State* L, Script& script) {
  lua_pushinteger(L, RunFrames(script, luaL_checkinteger(L, 1)));
  return 1;
}

// T-states run so far. Only differences count, and they wrap as the frame clock does.
uint32_t Elapsed(const Script& script) {
  return static_cast<uint32_t>(script.machine.run.FrameClock) +
         static_cast<uint32_t>(script.host.frames) * static_cast<uint32_t>(kFrameTStates);
}

// Pass by pass: a stop on the way, or the monitor's own breakpoint, doesn't end it.
int RunUntil(lua_State* L, Script& script) {
  const Machine& m = script.machine;
  const int32_t pc = NearestInt(L, 1);
  const lua_Integer wanted = luaL_checkinteger(L, 2);
  bool reached = false;
  for (int64_t used = 0; used < wanted && !reached;) {
    const uint32_t before = Elapsed(script);
    if (!Pass(script)) break;
    used += static_cast<int32_t>(Elapsed(script) - before);
    reached = m.z80.PC == pc;
  }
  lua_pushboolean(L, reached ? 1 : 0);
  return 1;
}

int OnFrame(lua_State* L, Script& script) {
  int reference = LUA_NOREF;
  if (!lua_isnil(L, 1)) {
    luaL_checktype(L, 1, LUA_TFUNCTION);
    lua_settop(L, 1);
    reference = luaL_ref(L, LUA_REGISTRYINDEX);
  }
  luaL_unref(L, LUA_REGISTRYINDEX, script.host.callback);
  script.host.callback = reference;
  return 0;
}

int Seed(lua_State* L, Script& script) {
  RandomSeed(script.machine.random, static_cast<uint64_t>(luaL_checkinteger(L, 1)));
  return 0;
}

int Clock(lua_State* L, Script& script) {
  static const char* const kNames[] = {"virtual", "host", nullptr};
  script.host.UseRealClock(luaL_checkoption(L, 1, nullptr, kNames) == 1);
  return 0;
}

// Puts back which frame end an outer run waits for.
struct StopAtKeeper {
  explicit StopAtKeeper(ScriptHost& hostOfRun) : host(hostOfRun), before(hostOfRun.stopAt) {}
  ~StopAtKeeper() { host.stopAt = before; }
  StopAtKeeper(const StopAtKeeper&) = delete;
  StopAtKeeper& operator=(const StopAtKeeper&) = delete;

  ScriptHost& host;
  int64_t before;
};

constexpr luaL_Reg kFunctions[] = {{"Step", Guarded<Step>},         {"Frames", Guarded<Frames>},
                                   {"RunUntil", Guarded<RunUntil>}, {"OnFrame", Guarded<OnFrame>},
                                   {"Seed", Guarded<Seed>},         {"Clock", Guarded<Clock>}};

}  // namespace

int64_t RunFrames(Script& script, int64_t count) {
  if (count <= 0) return 0;
  const StopAtKeeper keeper(script.host);
  const int64_t before = script.host.frames;
  script.host.stopAt = count < ScriptHost::kNever - before ? before + count : ScriptHost::kNever;
  script.machine.run.CpuRunning = 1;
  RunLoop(script.machine);
  return script.host.frames - before;
}

void OpenRunning(lua_State* L) { Register(L, kFunctions); }

}  // namespace quoll
