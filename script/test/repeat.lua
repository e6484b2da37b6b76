package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

-- Prints what a run of the real ROM leaves behind, for comparing one run with another.
local seed = tonumber(arg[1])
if seed then Seed(seed) end
Click("xScreenNoise")
ErrorSim.Check1, ErrorSim.CH0[2], ErrorSim.Option1[2] = true, true, true
Frames(30)
Type("1 a")
Frames(30)

local function sum(bytes)
  local total = 0
  for i = 1, #bytes do total = (total * 31 + bytes:byte(i)) & 0xFFFFFFFFFFFF end
  return total
end
local width, height, left, top, pixels = Picture()
print(width, height, left, top, sum(pixels), sum(Sound()), sum(MemImage:get(0, #MemImage)),
      Z80State.PC, RunState.FrameClock, RunState.TotalCycles, RunState.PerfNow)
