package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

-- Each field has a place of its own: every one gets a value that it can hold, then all are read back.
local bytes = {"A", "B", "C", "D", "E", "H", "L", "A2", "B2", "C2", "D2", "E2", "H2", "L2", "I", "R",
               "CurOpcode"}
local words = {"IX", "IY", "SP", "PC"}
local bits = {"IFF1", "IFF2", "Halted", "IrqLine", "UnDocEnabled",
              "FlagS", "FlagZ", "FlagY", "FlagH", "FlagX", "FlagPV", "FlagN", "FlagC",
              "AltFlagS", "AltFlagZ", "AltFlagY", "AltFlagH", "AltFlagX", "AltFlagPV", "AltFlagN", "AltFlagC"}
for i, name in ipairs(bytes) do Z80State[name] = 100 + i end
for i, name in ipairs(words) do Z80State[name] = 1000 + i end
Z80State.IM, Z80State.PrefixState, Z80State.IndexDisp = 2, 0xDDCB, -128
for i, name in ipairs(bytes) do check.equal(Z80State[name], 100 + i, name) end
for i, name in ipairs(words) do check.equal(Z80State[name], 1000 + i, name) end
check.equal(Z80State.IM, 2, "IM")
check.equal(Z80State.PrefixState, 0xDDCB, "PrefixState")
check.equal(Z80State.IndexDisp, -128, "IndexDisp")
for _, name in ipairs(bits) do
  for _, other in ipairs(bits) do Z80State[other] = 0 end
  Z80State[name] = 1
  for _, other in ipairs(bits) do
    check.equal(Z80State[other], other == name and 1 or 0, name .. "/" .. other)
  end
end

-- What the processor relies on is kept: registers of 8 and 16 bits, flags of one.
Z80State.A = 0x1FE
check.equal(Z80State.A, 0xFE, "A of 9 bits")
Z80State.B = -1
check.equal(Z80State.B, 0xFF, "B of -1")
Z80State.SP = 0x12345
check.equal(Z80State.SP, 0x2345, "SP of 17 bits")
Z80State.FlagC = 2
check.equal(Z80State.FlagC, 0, "flag of 2")
Z80State.PC = 0x12345  -- the program counter goes on past 16 bits
check.equal(Z80State.PC, 0x12345, "PC")
Z80State.PC = 0x100000001
check.equal(Z80State.PC, 1, "PC of 33 bits")

local running = {"Cycles", "FrameClock", "LastCursorIrq", "TotalCycles", "ToneItCounter", "PrevPc",
                 "ResetRequest", "NmiRequest", "PerfStart", "PerfNow", "PerfFreq"}
for i, name in ipairs(running) do RunState[name] = -i end
for i, name in ipairs(running) do check.equal(RunState[name], -i, name) end
RunState.TotalCycles = 1 << 40
check.equal(RunState.TotalCycles, 1 << 40, "TotalCycles of 41 bits")
RunState.Cycles = (1 << 32) + 5
check.equal(RunState.Cycles, 5, "Cycles of 33 bits")
RunState.CpuRunning, RunState.BreakArmed = 0x101, 0x1FF
check.equal(RunState.CpuRunning, 1, "CpuRunning")
check.equal(RunState.BreakArmed, 0xFF, "BreakArmed")

for i = 0, 9 do RunState.PcHistory[i] = 70000 + i end
for i = 0, 9 do check.equal(RunState.PcHistory[i], 70000 + i, "PcHistory " .. i) end
check.equal(#RunState.PcHistory, 10, "PcHistory length")
check.list(RunState.PcHistory:get(7, 3), {70007, 70008, 70009}, "PcHistory")
check.raises("out of range", function() return RunState.PcHistory[10] end)
check.raises("out of range", function() RunState.PcHistory[-1] = 0 end)
check.raises("element by element", function() RunState.PcHistory = {} end)

check.equal(RunState.VideoReadNoise, 0, "VideoReadNoise at start")
RunState.VideoReadNoise = 1
check.equal(RunState.VideoReadNoise, 1, "VideoReadNoise")
PortShadow[2] = 0x00
MemImage[0x10000] = 0
check.equal(MemRead(0x8000), 0x37, "a read of page 2 video damages bank 0")
RunState.VideoReadNoise = 0
MemImage[0x10000] = 0
check.equal(MemRead(0x8000), 0, "without noise")

check.raises("Z80State has no field 'AF'", function() return Z80State.AF end)
check.raises("Z80State has no field 'a'", function() Z80State.a = 1 end)
check.raises("RunState has no field 'Speed'", function() return RunState.Speed end)
check.raises("RunState has no field 'Speed'", function() RunState.Speed = 1 end)
check.raises("number expected", function() Z80State.A = true end)
check.raises("number expected", function() RunState.Cycles = nil end)
check.raises("no integer representation", function() Z80State.A = 1.5 end)
