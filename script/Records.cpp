// `Z80State` and `RunState`: the fields of the two records under their own names.
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <variant>

#include "script/Script.h"
#include "z80/Z80Fields.h"

namespace quoll {

namespace {

struct RunField {
  std::string_view name;
  std::variant<uint8_t RunState::*, int32_t RunState::*, int64_t RunState::*> field;
};

constexpr std::array kRunFields{
    RunField{"CpuRunning", &RunState::CpuRunning},
    RunField{"BreakArmed", &RunState::BreakArmed},
    RunField{"Cycles", &RunState::Cycles},
    RunField{"FrameClock", &RunState::FrameClock},
    RunField{"LastCursorIrq", &RunState::LastCursorIrq},
    RunField{"TotalCycles", &RunState::TotalCycles},
    RunField{"ToneItCounter", &RunState::ToneItCounter},
    RunField{"PrevPc", &RunState::PrevPc},
    RunField{"ResetRequest", &RunState::ResetRequest},
    RunField{"NmiRequest", &RunState::NmiRequest},
    RunField{"PerfStart", &RunState::PerfStart},
    RunField{"PerfNow", &RunState::PerfNow},
    RunField{"PerfFreq", &RunState::PerfFreq},
};

constexpr const char* kPcHistory = "PcHistory";
constexpr const char* kVideoReadNoise = "VideoReadNoise";  // a flag of the machine, reached here

template <typename Fields>
auto& FindField(lua_State* L, const Fields& fields, const char* record) {
  const char* name = luaL_checkstring(L, 2);
  for (const auto& field : fields) {
    if (field.name == name) return field;
  }
  Refuse(L, "%s has no field '%s'", record, name);
}

int ReadZ80(lua_State* L, Script& script) {
  lua_pushinteger(L, script.machine.z80.*FindField(L, kZ80Fields, "Z80State").field);
  return 1;
}

int WriteZ80(lua_State* L, Script& script) {
  const Z80Field& field = FindField(L, kZ80Fields, "Z80State");
  script.machine.z80.*field.field = LowInt(L, 3);
  KeepRanges(script.machine.z80);
  return 0;
}

int ReadRun(lua_State* L, Script& script) {
  if (std::strcmp(luaL_checkstring(L, 2), kPcHistory) == 0) {
    PushPcHistory(L);
    return 1;
  }
  if (std::strcmp(lua_tostring(L, 2), kVideoReadNoise) == 0) {
    lua_pushinteger(L, script.machine.VideoReadNoise ? 1 : 0);
    return 1;
  }
  const RunField& found = FindField(L, kRunFields, "RunState");
  std::visit([&](auto field) { lua_pushinteger(L, static_cast<lua_Integer>(script.machine.run.*field)); },
             found.field);
  return 1;
}

int WriteRun(lua_State* L, Script& script) {
  if (std::strcmp(luaL_checkstring(L, 2), kPcHistory) == 0) {
    return luaL_error(L, "RunState.PcHistory is written element by element");
  }
  const lua_Integer value = luaL_checkinteger(L, 3);
  if (std::strcmp(lua_tostring(L, 2), kVideoReadNoise) == 0) {
    script.machine.VideoReadNoise = value != 0;
    return 0;
  }
  const RunField& found = FindField(L, kRunFields, "RunState");
  std::visit(
      [&](auto field) {
        auto& target = script.machine.run.*field;
        target = static_cast<std::remove_reference_t<decltype(target)>>(value);
      },
      found.field);
  return 0;
}

}  // namespace

void OpenRecords(lua_State* L) {
  SetProxy(L, "Z80State", Guarded<ReadZ80>, Guarded<WriteZ80>);
  SetProxy(L, "RunState", Guarded<ReadRun>, Guarded<WriteRun>);
}

}  // namespace quoll
