// `Z80State` and `RunState`: the fields of the two records under their own names.
#include <array>
#include <cstdint>
#include <cstring>
#include <variant>

#include "script/Script.h"

namespace quoll {

namespace {

struct Z80Field {
  const char* name;
  int32_t Z80State::*field;
};

constexpr std::array kZ80Fields{
    Z80Field{"A", &Z80State::A},
    Z80Field{"B", &Z80State::B},
    Z80Field{"C", &Z80State::C},
    Z80Field{"D", &Z80State::D},
    Z80Field{"E", &Z80State::E},
    Z80Field{"H", &Z80State::H},
    Z80Field{"L", &Z80State::L},
    Z80Field{"A2", &Z80State::A2},
    Z80Field{"B2", &Z80State::B2},
    Z80Field{"C2", &Z80State::C2},
    Z80Field{"D2", &Z80State::D2},
    Z80Field{"E2", &Z80State::E2},
    Z80Field{"H2", &Z80State::H2},
    Z80Field{"L2", &Z80State::L2},
    Z80Field{"IX", &Z80State::IX},
    Z80Field{"IY", &Z80State::IY},
    Z80Field{"SP", &Z80State::SP},
    Z80Field{"PC", &Z80State::PC},
    Z80Field{"I", &Z80State::I},
    Z80Field{"R", &Z80State::R},
    Z80Field{"IM", &Z80State::IM},
    Z80Field{"IFF1", &Z80State::IFF1},
    Z80Field{"IFF2", &Z80State::IFF2},
    Z80Field{"FlagS", &Z80State::FlagS},
    Z80Field{"FlagZ", &Z80State::FlagZ},
    Z80Field{"FlagY", &Z80State::FlagY},
    Z80Field{"FlagH", &Z80State::FlagH},
    Z80Field{"FlagX", &Z80State::FlagX},
    Z80Field{"FlagPV", &Z80State::FlagPV},
    Z80Field{"FlagN", &Z80State::FlagN},
    Z80Field{"FlagC", &Z80State::FlagC},
    Z80Field{"AltFlagS", &Z80State::AltFlagS},
    Z80Field{"AltFlagZ", &Z80State::AltFlagZ},
    Z80Field{"AltFlagY", &Z80State::AltFlagY},
    Z80Field{"AltFlagH", &Z80State::AltFlagH},
    Z80Field{"AltFlagX", &Z80State::AltFlagX},
    Z80Field{"AltFlagPV", &Z80State::AltFlagPV},
    Z80Field{"AltFlagN", &Z80State::AltFlagN},
    Z80Field{"AltFlagC", &Z80State::AltFlagC},
    Z80Field{"Halted", &Z80State::Halted},
    Z80Field{"IrqLine", &Z80State::IrqLine},
    Z80Field{"PrefixState", &Z80State::PrefixState},
    Z80Field{"CurOpcode", &Z80State::CurOpcode},
    Z80Field{"IndexDisp", &Z80State::IndexDisp},
    Z80Field{"UnDocEnabled", &Z80State::UnDocEnabled},
};
static_assert(sizeof(Z80State) == kZ80Fields.size() * sizeof(int32_t), "a field has no name here");

struct RunField {
  const char* name;
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
    if (std::strcmp(field.name, name) == 0) return field;
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
