// The machine's own functions under their own names.
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

constexpr luaL_Reg kFunctions[] = {{"MemRead", Guarded<ReadMemory>},
                                   {"MemWrite", Guarded<WriteMemory>},
                                   {"PortIn", Guarded<ReadPort>},
                                   {"PortOut", Guarded<WritePort>},
                                   {"MachineInit", Guarded<Plain<MachineInit>>},
                                   {"MachineReset", Guarded<Plain<MachineReset>>},
                                   {"CpuInit", Guarded<Plain<InitCpu>>},
                                   {"CpuReset", Guarded<Plain<CpuReset>>},
                                   {"RunLoop", Guarded<Plain<RunLoop>>},
                                   {"IrqEnter", Guarded<Plain<IrqEnter>>},
                                   {"NmiEnter", Guarded<Plain<NmiEnter>>},
                                   {"SoundFrame", Guarded<Plain<SoundFrame>>},
                                   {"redraw", Guarded<Plain<redraw>>},
                                   {"PALchNull", Guarded<Plain<StartPalette>>},
                                   {"LPENRefresh", Guarded<Plain<RefreshPen>>},
                                   {"picd_KeyDown", Guarded<KeyDown>},
                                   {"picd_KeyUp", Guarded<KeyUp>},
                                   {"picd_MouseMove", Guarded<MoveMouse>},
                                   {"Senddata", Guarded<PrintByte>},
                                   {"FrameTimeValue", Guarded<SpeedFigure>},
                                   {"Hex2", Guarded<Hexadecimal<2>>},
                                   {"Hex4", Guarded<Hexadecimal<4>>}};

}  // namespace

void OpenFunctions(lua_State* L) { Register(L, kFunctions); }

}  // namespace quoll
