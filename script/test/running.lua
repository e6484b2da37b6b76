package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

check.pageInRam()

-- The first frame lasts as long as any other.
check.equal(FrameTimeValue(), 2000, "FrameTimeValue at the start")
check.loopFor10(0x100)
Frames(1)
check.equal(TScreen.Text1, "2000", "speed figure of the first frame")
RunState.FrameClock = 0

-- Passes.
check.program(0x100, 0x3C, 0x3C, 0x3C, 0x3C, 0x3C)
Z80State.A = 0
Step()
check.equal(Z80State.A, 1, "Step")
Step(3)
check.equal(Z80State.A, 4, "Step(3)")
check.equal(RunState.FrameClock, 16, "FrameClock")
Step(0)
Step(-5)
check.equal(Z80State.A, 4, "Step(0)")
check.equal(RunState.CpuRunning, 0, "CpuRunning")
for i = 0, 3 do check.equal(RunState.PcHistory[6 + i], 0x100 + i, "PcHistory") end

-- Frames. Passes of 10 T-states: the first frame ends at 62510, which leaves 10; so does every other.
RunState.FrameClock, RunState.Cycles, RunState.TotalCycles = 0, 0, 0
check.loopFor10(0x100)
check.equal(Frames(1), 1, "Frames(1)")
check.equal(RunState.FrameClock, 10, "FrameClock")
check.equal(RunState.TotalCycles, 62500, "TotalCycles")
check.equal(RunState.CpuRunning, 0, "CpuRunning")
check.equal(Z80State.PC, 0x100, "PC")
check.equal(Frames(49), 49, "Frames(49)")
check.equal(RunState.FrameClock, 10, "FrameClock")
check.equal(RunState.TotalCycles, 50 * 62500, "TotalCycles")
check.equal(Frames(0), 0, "Frames(0)")
check.equal(Frames(-3), 0, "Frames(-3)")
check.equal(RunState.TotalCycles, 50 * 62500, "TotalCycles")

-- Every frame is drawn, and lasts 2000 hundred-thousandths of a second.
check.equal(TScreen.Text1, "2000", "speed figure")
check.equal(FrameTimeValue(), 2000, "FrameTimeValue")

-- The pass at whose end a frame ends is completed: 6250 of them, each adding 1 to R.
Z80State.R = 0
Frames(1)
check.equal(Z80State.R, 6250 & 0xFF, "passes in a frame")

-- A machine that stops by itself: 13 frames of DJNZ loops, then FD F3. The count comes from T-states:
-- LD B,0 7, DJNZ 255 x 13 + 8, DEC DE 6, LD A,D 4, OR E 4, JP NZ 10.
local round = 7 + 255 * 13 + 8 + 6 + 4 + 4 + 10
local rounds = 240
check.program(0x200, 0x06, 0x00, 0x10, 0xFE, 0x1B, 0x7A, 0xB3, 0xC2, 0x00, 0x02, 0xFD, 0xF3)
Z80State.D, Z80State.E = 0, rounds
RunState.FrameClock = 0
check.equal(Frames(100), rounds * round // 62500, "frames of a machine that stops")
check.equal(Z80State.PC, 0x20C, "PC")

-- A halted breakpoint of the monitor is a stop too.
check.loopFor10(0x100)
CPUmon.Check4, CPUmon.Check2, CPUmon.Text5 = true, true, "256"
check.equal(Frames(5), 0, "frames up to a breakpoint")
CPUmon.Check4, CPUmon.Check2 = false, false

-- RunUntil: at the end of a pass, never before the first.
check.program(0x100, 0x00, 0x00, 0xC3, 0x00, 0x01)
check.equal(RunUntil(0x102, 1000), true, "RunUntil")
check.equal(Z80State.PC, 0x102, "RunUntil")
RunState.FrameClock = 0
check.equal(RunUntil(0x102, 18), true, "a round of 18 T-states")
check.equal(RunState.FrameClock, 18, "a round of 18 T-states")
check.equal(RunUntil(0x102, 14), false, "14 T-states end before")
check.equal(Z80State.PC, 0x101, "JP and one NOP")
RunUntil(0x102, 4)
RunState.FrameClock = 0
check.equal(RunUntil(0x102, 15), true, "the pass that begins before the limit is made")
check.equal(RunUntil(0x102, 0), false, "no T-states")
check.equal(RunUntil(0x102, -1), false, "no T-states")
check.equal(Z80State.PC, 0x102, "no pass")
RunState.FrameClock = 0
check.equal(RunUntil(0x5000, 200000), false, "never")
-- Rounds of 18 from 0x102 on (10 + 4 + 4): 11111 of them make 199998, and a JP goes past the limit.
check.equal(RunState.FrameClock, 200008 - 3 * 62500, "T-states across frame ends")
check.equal(Z80State.PC, 0x100, "T-states across frame ends")
check.program(0x100, 0x00, 0x00, 0x00, 0x00)
RunState.FrameClock = (1 << 31) - 6  -- wraps, and is still 4 T-states a pass
check.equal(RunUntil(0x5000, 10), false, "a frame clock that wraps")
check.equal(Z80State.PC, 0x103, "a frame clock that wraps")
RunState.FrameClock = 0
check.raises("number expected", RunUntil, 0x100)

-- OnFrame.
check.loopFor10(0x100)
local calls = 0
OnFrame(function() calls = calls + 1 end)
Frames(7)
check.equal(calls, 7, "calls")
OnFrame(nil)
Frames(3)
check.equal(calls, 7, "calls after OnFrame(nil)")
check.raises("function expected", OnFrame, 5)
check.raises("function expected", OnFrame)

-- The function may change the machine, and end a run early, but not prolong it.
OnFrame(function()
  calls = calls + 1
  if calls == 3 then RunState.CpuRunning = 0 end
end)
calls = 0
check.equal(Frames(10), 3, "ended by the function")
OnFrame(function() RunState.CpuRunning = 1 end)
check.equal(Frames(2), 2, "not prolonged")
OnFrame(function() Z80State.PC = 0x180 end)
MemImage[0x180] = 0x76
Frames(1)
check.equal(Z80State.PC, 0x180, "PC set by the function")
OnFrame(function() PortShadow[2] = 0xA0; Z80State.PC = 0x4000 end)  -- page 0 goes, page 1 stays
check.program(0x4000, 0xC3, 0x00, 0x40)
check.equal(Frames(3), 3, "paging changed by the function")
check.equal(PortShadow[2], 0xA0, "paging changed by the function")
check.pageInRam()

-- RunLoop ends when the function says so.
check.loopFor10(0x100)
calls = 0
OnFrame(function()
  calls = calls + 1
  if calls == 4 then Press("CPUmon", "Command6") end
end)
RunState.CpuRunning = 1
RunLoop()
check.equal(calls, 4, "RunLoop")
-- "Pause" and its end: the handler runs the machine.
Click("xS1")
check.equal(Menu.xS1, true, "xS1")
calls = 0
Click("xS1")
check.equal(calls, 4, "the end of a pause")
check.equal(Menu.xS1, false, "xS1")

-- Frames run inside the function count for the run outside, too.
local depth, inner = 0, nil
OnFrame(function()
  if depth == 0 then
    depth = 1
    inner = Frames(2)
  end
end)
check.equal(Frames(1), 3, "frames with some inside")
check.equal(inner, 2, "frames inside")

-- From a coroutine.
calls = 0
OnFrame(function() calls = calls + 1 end)
local co = coroutine.wrap(function()
  Frames(2)
  coroutine.yield(calls)
  Frames(3)
  return calls
end)
check.equal(co(), 2, "coroutine")
check.equal(co(), 5, "coroutine")
OnFrame(nil)

-- Chance: the same seed gives the same sequence. One bit of video RAM is struck at random at each picture.
CrtcRegs[1], CrtcRegs[6] = 64, 60
ErrorSim.Check1, ErrorSim.CH0[0], ErrorSim.Option1[2] = true, true, true
local function damage(seed)
  Seed(seed)
  redraw()
  return MemImage:get(0x10000, 0x4000)
end
local first = damage(1)
check.is(first ~= damage(2), "another seed, another picture")
check.equal(damage(1), first, "the same seed")
check.is(damage(math.mininteger) ~= first, "any integer is a seed")
ErrorSim.Check1 = false

-- The real clock: pictures are drawn by it, so not at each of many fast frames. Nothing is timed here.
Clock("host")
check.equal(Frames(5), 5, "frames by the host's clock")
check.is(FrameTimeValue() >= 0, "FrameTimeValue")
Clock("virtual")
Frames(2)
check.equal(TScreen.Text1, "2000", "speed figure")
check.raises("invalid option 'slow'", Clock, "slow")
