package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

check.pageInRam()

-- The end of the program is an error that a script can catch; the message stays to be read.
local function misprefix()
  check.loopFor10(0x100)
  Z80State.PrefixState = 0x77
end
misprefix()
local ok, message = pcall(Step)
check.equal(ok, false, "Step")
check.equal(message, "program ended", "error")
local messages = Messages()
check.equal(#messages, 1, "messages")
check.equal(messages[1].text, "119=Unknown prefix", "text")
check.equal(messages[1].title, "CPU ERROR!", "title")
Z80State.PrefixState = 0
check.equal(Frames(2), 2, "the machine lives on")

-- From every door into the engine.
for name, door in pairs({
  Frames = function() Frames(1) end,
  RunLoop = function() RunLoop() end,
  RunUntil = function() RunUntil(0, 100) end,
  Press = function() Press("CPUmon", "Command1") end,
  Type = function() Type("A") end,
  OnFrame = function()
    Z80State.PrefixState = 0
    OnFrame(function()
      OnFrame(nil)
      misprefix()
      Step()
    end)
    Frames(3)
  end,
}) do
  misprefix()
  check.raises("program ended", door)
  check.equal(Messages()[1].text, "119=Unknown prefix", name)
  Z80State.PrefixState = 0
end
KeyMatrix:set(0, ("\0"):rep(16))

-- After the end of a Frames nothing of it is left: this run has no end of its own but FD F3.
check.program(0x100, 0xFD, 0xF3)
RunState.CpuRunning = 1
RunLoop()
check.equal(Z80State.PC, 0x102, "PC")

-- A write into the window of card 1 ends the program as well.
PortShadow[2], PortShadow[3] = 0xC0, 0x40
check.raises("program ended", MemWrite, 0xC000, 1)
check.equal(Messages()[1].text, " CTL 1-3 IOM write????", "text")
check.pageInRam()

-- Errors in a frame-end function come out of whatever let the machine run, any value as it is.
check.loopFor10(0x100)
local calls = 0
OnFrame(function()
  calls = calls + 1
  error("oh dear")
end)
check.raises("oh dear", Frames, 5)
check.equal(calls, 1, "calls")
check.equal(RunState.CpuRunning, 0, "CpuRunning")
check.raises("oh dear", Step, 100000)
check.raises("oh dear", RunUntil, 0, 1000000)
check.raises("oh dear", Press, "CPUmon", "Command1")
check.raises("oh dear", Type, "AB")
check.equal(calls, 5, "calls")
local thing = {}
OnFrame(function() error(thing) end)
ok, message = pcall(Frames, 5)
check.equal(message, thing, "a table as error")
OnFrame(function() error() end)
ok, message = pcall(Frames, 5)
check.equal(ok, false, "nil as error")
check.equal(message, nil, "nil as error")
OnFrame(function() coroutine.yield() end)
check.raises("yield", Frames, 5)
check.raises("yield", coroutine.wrap(function() Frames(5) end))
OnFrame(function() Frames(1) end)  -- a function that calls itself without end
check.raises("stack overflow", Frames, 1)
OnFrame(nil)
check.equal(Frames(2), 2, "the machine lives on")

-- An error leaves no trace in the next call.
check.raises("number expected", Frames)
check.equal(Hex2(1), "01", "Hex2")

-- Errors name the script's line.
ok, message = pcall(function() return MemImage[-1] end)
check.is(message:find("failures.lua:%d+: MemImage: index %-1 out of range"), message)
