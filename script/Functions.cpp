// The machine's own functions under their own names.
#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>

#include "forms/PicD.h"
#include "loop/Interrupts.h"
#include "loop/Redraw.h"
#include "loop/RunLoop.h"
#include "loop/SoundFrame.h"
#include "machine/MachineInit.h"
#include "machine/Ports.h"
#include "script/Script.h"

namespace quoll {

namespace {

// A function that takes the machine and nothing else.
template <void (*kFunction)(Machine&)>
int Plain(lua_State* /*L*/, Script& script) {
  kFunction(script.machine);
  return 0;
}

void InitCpu(Machine& m) { CpuInit(m.z80); }
void StartPalette(Machine& m) { PALchNull(m.palette); }
void RefreshPen(Machine& m) { LPENRefresh(m.pen, m.crtc); }

uint8_t CheckByte(lua_State* L, int argument) { return static_cast<uint8_t>(luaL_checkinteger(L, argument)); }

int ReadMemory(lua_State* L, Script& script) {
  lua_pushinteger(L, MemRead(script.machine, NearestInt(L, 1)));
  return 1;
}

int WriteMemory(lua_State* L, Script& script) {
  const int32_t address = NearestInt(L, 1);
  MemWrite(script.machine, address, CheckByte(L, 2));
  return 0;
}

int ReadPort(lua_State* L, Script& script) {
  const int32_t port = NearestInt(L, 1);
  luaL_argcheck(L, port >= 0, 1, "a port has no sign");
  lua_pushinteger(L, PortIn(script.machine, port));
  return 1;
}

int WritePort(lua_State* L, Script& script) {
  const int32_t port = NearestInt(L, 1);
  luaL_argcheck(L, port >= 0 && port <= 255, 1, "ports are 0 to 255");
  int32_t value = CheckByte(L, 2);
  PortOut(script.machine, port, value);
  lua_pushinteger(L, value);
  return 1;
}

int KeyDown(lua_State* L, Script& script) {
  int32_t keyCode = NearestInt(L, 1);
  const int32_t shift = static_cast<int32_t>(luaL_optinteger(L, 2, 0));
  picd_KeyDown(script.machine, keyCode, shift);
  lua_pushinteger(L, keyCode);
  return 1;
}

int KeyUp(lua_State* L, Script& script) {
  picd_KeyUp(script.machine, NearestInt(L, 1));
  return 0;
}

int MoveMouse(lua_State* L, Script& script) {
  const int32_t x = NearestInt(L, 1);
  picd_MouseMove(script.machine.pen, x, NearestInt(L, 2));
  return 0;
}

int PrintByte(lua_State* L, Script& script) {
  Senddata(script.machine.printer, CheckByte(L, 1));
  return 0;
}

int SpeedFigure(lua_State* L, Script& script) {
  lua_pushinteger(L, FrameTimeValue(script.machine));
  return 1;
}

// Upper-case hexadecimal digits of a 32-bit number: at least so many, more when it is larger.
template <int kDigits>
int Hexadecimal(lua_State* L, Script& /*script*/) {
  char text[16];
  std::snprintf(text, sizeof text, "%0*" PRIX32, kDigits, static_cast<uint32_t>(LowInt(L, 1)));
  lua_pushstring(L, text);
  return 1;
}

constexpr std::array kFunctions{
    luaL_Reg{"MemRead", Guarded<ReadMemory>},
    luaL_Reg{"MemWrite", Guarded<WriteMemory>},
    luaL_Reg{"PortIn", Guarded<ReadPort>},
    luaL_Reg{"PortOut", Guarded<WritePort>},
    luaL_Reg{"MachineInit", Guarded<Plain<MachineInit>>},
    luaL_Reg{"MachineReset", Guarded<Plain<MachineReset>>},
    luaL_Reg{"CpuInit", Guarded<Plain<InitCpu>>},
    luaL_Reg{"CpuReset", Guarded<Plain<CpuReset>>},
    luaL_Reg{"RunLoop", Guarded<Plain<RunLoop>>},
    luaL_Reg{"IrqEnter", Guarded<Plain<IrqEnter>>},
    luaL_Reg{"NmiEnter", Guarded<Plain<NmiEnter>>},
    luaL_Reg{"SoundFrame", Guarded<Plain<SoundFrame>>},
    luaL_Reg{"redraw", Guarded<Plain<redraw>>},
    luaL_Reg{"PALchNull", Guarded<Plain<StartPalette>>},
    luaL_Reg{"LPENRefresh", Guarded<Plain<RefreshPen>>},
    luaL_Reg{"picd_KeyDown", Guarded<KeyDown>},
    luaL_Reg{"picd_KeyUp", Guarded<KeyUp>},
    luaL_Reg{"picd_MouseMove", Guarded<MoveMouse>},
    luaL_Reg{"Senddata", Guarded<PrintByte>},
    luaL_Reg{"FrameTimeValue", Guarded<SpeedFigure>},
    luaL_Reg{"Hex2", Guarded<Hexadecimal<2>>},
    luaL_Reg{"Hex4", Guarded<Hexadecimal<4>>},
};

}  // namespace

void OpenFunctions(lua_State* L) {
  for (const luaL_Reg& function : kFunctions) lua_register(L, function.name, function.func);
}

}  // namespace quoll
