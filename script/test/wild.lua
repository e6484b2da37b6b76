-- A script may leave any value anywhere. The machine then runs nonsense, but it must neither crash nor reach
-- past its arrays, which the build with sanitizers finds out.
package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

local rounds = tonumber(arg[1]) or 300
math.randomseed(tonumber(arg[2]) or 1)

local edges = {0, 1, -1, 4, 31, 32, 127, 255, 256, 391, 440, 441, 32767, 62499, 62500, 62501, 65535, 65536,
               0x2BFFF, 0x2C000, 0x3C001, 1 << 30, (1 << 31) - 1, -(1 << 31), math.maxinteger,
               math.mininteger}
local function any()
  if math.random(3) > 1 then return edges[math.random(#edges)] end
  return math.random(0) >> math.random(0, 63)
end

local z80 = {"A", "B", "C", "D", "E", "H", "L", "A2", "IX", "IY", "SP", "PC", "I", "R", "IM", "IFF1", "IFF2",
             "FlagC", "FlagZ", "FlagPV", "Halted", "IrqLine", "IndexDisp", "CurOpcode", "UnDocEnabled"}
local run = {"Cycles", "FrameClock", "LastCursorIrq", "TotalCycles", "ToneItCounter", "PrevPc",
             "ResetRequest", "NmiRequest", "PerfStart", "PerfNow", "PerfFreq", "BreakArmed"}
local arrays = {MemImage, PortShadow, CrtcRegs, KeyMatrix, PalHistory[0], PalHistory[3], BorderLines,
                DacSlots, BlockBuffer, ToneOut, SnOut, SaaOutL, AyOut, RunState.PcHistory}
local prefixes = {0, 0, 0, 0, 0xCB, 0xED, 0xDD, 0xFD, 0xFDCB, 0xDDCB, 5}
local toggles = {"xScreenBW", "xScreenDIB", "xScreenNoise", "xUnDoc", "x32KB", "xio2", "xS6"}

local deeds = {
  function() Step(math.random(50)) end,
  function()
    RunState.FrameClock = math.random(-100000, 100000)  -- a frame from -2^31 on would last minutes
    Frames(math.random(2))
  end,
  function() RunUntil(any(), math.random(1000)) end,
  function() PortOut(math.random(0, 255), any()) end,
  function() PortIn(math.abs(math.random(0, 300))) end,
  function() MemWrite(any(), any()) end,
  function() MemRead(any()) end,
  function() redraw() end,
  function() Picture() end,
  function() Border() end,
  function() SoundFrame() end,
  function() IrqEnter() end,
  function() NmiEnter() end,
  function() CpuReset() end,
  function() MachineReset() end,
  function() PALchNull() end,
  function() LPENRefresh() end,
  function() picd_MouseMove(any(), any()) end,
  function() picd_KeyDown(any(), any()) end,
  function() picd_KeyUp(any()) end,
  function() Senddata(any()) end,
  function() FrameTimeValue() end,
  function() Press("CPUmon", "Command7") end,
  function() CPUmon.Text5 = tostring(any()) end,
  function() CPUmon.Check2 = math.random(2) == 1 end,
  function() CPUmon.Check4 = math.random(2) == 1 end,
  function() ErrorSim.Check1 = math.random(2) == 1 end,
  function() ErrorSim.CH0[math.random(0, 7)] = true end,
  function() ErrorSim.Option1[math.random(0, 2)] = true end,
  function() ErrorSim.Check4 = math.random(4) == 1 end,
  function() Click(toggles[math.random(#toggles)]) end,
  function() for address = math.random(0, 0xFF00), 0x10000 do MemImage[address] = math.random(0, 255) end end,
}

local ends = 0
for round = 1, rounds do
  for _ = 1, math.random(4) do Z80State[z80[math.random(#z80)]] = any() end
  for _ = 1, math.random(0, 2) do RunState[run[math.random(#run)]] = any() end
  Z80State.PrefixState = prefixes[math.random(#prefixes)]
  for _ = 1, math.random(6) do
    local array = arrays[math.random(#arrays)]
    array[math.random(0, #array - 1)] = any()
  end
  local ok, message = pcall(deeds[math.random(#deeds)])
  if not ok then
    check.equal(message, "program ended", "round " .. round)
    ends = ends + 1
  end
  Messages()
  Sound()
end
check.is(ends < rounds, "nothing ran")
