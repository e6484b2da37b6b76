-- The two monitors over a whole machine with its ROM. Arguments: quollrun, the folder of the ROMs. With a third
-- one, "open" or "closed": only prints what 500 frames leave behind.
package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"
local quollrun, roms, mode = arg[1], arg[2], arg[3]

local function sum(bytes)
  local total = 0
  for i = 1, #bytes do total = (total * 31 + bytes:byte(i)) & 0xFFFFFFFFFFFF end
  return total
end

local registers = {[0] = "A", "B", "C", "D", "E", "H", "L", "A2", "B2", "C2", "D2", "E2", "H2", "L2"}
local flags = {[0] = "FlagS", "FlagZ", "FlagY", "FlagH", "FlagX", "FlagPV", "FlagN", "FlagC", "AltFlagS", "AltFlagZ",
               "AltFlagY", "AltFlagH", "AltFlagX", "AltFlagPV", "AltFlagN", "AltFlagC"}
local words = {[0] = "IX", "SP", "IY", "PC", "I", "R"}
local modes = {[0] = "IFF1", "IFF2", "IM"}

-- Everything of the machine that a script can see.
local function digest()
  local parts = {}
  local function add(value) parts[#parts + 1] = tostring(value) end
  for _, names in ipairs({registers, flags, words, modes}) do
    for i = 0, #names do add(Z80State[names[i]]) end
  end
  for _, name in ipairs({"Halted", "IrqLine", "PrefixState", "CurOpcode"}) do add(Z80State[name]) end
  for _, name in ipairs({"Cycles", "FrameClock", "LastCursorIrq", "TotalCycles", "ToneItCounter", "PrevPc"}) do
    add(RunState[name])
  end
  for i = 0, 9 do add(RunState.PcHistory[i]) end
  for i = 0, 18 do add(CrtcRegs[i]) end
  for _, array in ipairs({MemImage, PortShadow, KeyMatrix, DacSlots}) do add(sum(array:get(0, #array))) end
  local width, height, left, top, pixels = Picture()
  for _, value in ipairs({width, height, left, top, sum(pixels), sum(Sound())}) do add(value) end
  return table.concat(parts, " ")
end

-- A program that types, draws, and reads memory whose reading damages it.
local function run500(open)
  Frames(60)
  RunState.VideoReadNoise = 1
  Type("10 for i=1 to 1000:print i*i:next\nrun\n")
  local looks = 0
  OnFrame(function()
    if not open then return end
    if looks == 0 then
      Click("xDebug")
      Click("xTVCmon")
      CPUmon.Text10 = "32768"
    end
    looks = looks + 1
    CPUmon.VScroll1 = 32768 + looks * 16
    CPUmon.VScroll2 = looks % 256
    check.is(#CPUmon.Picture1 > 0 and #CPUmon.Picture2 > 0 and #CPUmon.Picture3 > 0 and #CPUmon.Picture4 > 0)
    check.is(#TVCmon.Port2 == 2 and #TVCmon.Crtc[17] > 0)
  end)
  check.equal(Frames(500), 500)
  OnFrame(nil)
  check.equal(looks, open and 500 or 0)
  print(digest())
end

if mode then return run500(mode == "open") end

local function output(of)
  local pipe = assert(io.popen(string.format("'%s' --folder '%s' '%s' '%s' '%s' %s", quollrun, roms, arg[0], quollrun,
                                             roms, of)))
  local text = pipe:read("a")
  check.is(pipe:close(), of)
  check.is(#text > 200, "a digest")
  return text
end
check.equal(output("open"), output("closed"), "500 frames with both monitors open")

-- Each control, read, and written with Enter.
Frames(60)
local function enter(control, index, text)
  if index then CPUmon[control][index] = text else CPUmon[control] = text end
  if index then Enter("CPUmon", control, index) else Enter("CPUmon", control) end
end
local function edits(control, fields, rows)
  for i = 0, #fields do
    for _, row in ipairs(rows) do
      Z80State[fields[i]] = 1
      enter(control, i, row[1])
      check.equal(Z80State[fields[i]], row[2], control .. " " .. fields[i] .. " " .. row[1])
      if row[3] then check.equal(CPUmon[control][i], row[3], control .. " shows " .. row[1]) end
    end
  end
end
edits("Text1", registers, {{"1FF", 255, "FF"}, {"7f", 127, "7F"}, {"0", 0, "00"}, {"x", 1, "01"}, {"FFFFFFFF", 0, "00"}})
edits("Text3", {[0] = "IX", "SP", "IY", "PC"}, {{"12345", 65535, "FFFF"}, {"abc", 0xABC, "0ABC"}, {"", 1, "0001"}})
edits("Text4", {[0] = "IFF1", "IFF2"}, {{"0", 0, "0"}, {"1", 1, "1"}})
edits("Text4", {[0] = "IFF1"}, {{"?", 1, "1"}})
CPUmon.Text4[2] = "6"
Enter("CPUmon", "Text4", 2)
check.equal(Z80State.IM, 2, "IM")
for i = 0, 15 do
  local nameless = i % 8 == 2 or i % 8 == 4
  Z80State[flags[i]] = 0
  enter("Text2", i, "5")
  check.equal(Z80State[flags[i]], nameless and 0 or 1, flags[i])
end
enter("Text1", 0, "A5")
local bits = ""
for i = 0, 7 do bits = bits .. CPUmon.TextA[i] end
check.equal(bits, "10100101", "accumulator")

for text, address in pairs({["65536"] = 65535, ["-3"] = 0, ["49152"] = 49152, ["nothing"] = 0}) do
  enter("Text10", nil, text)
  check.equal(CPUmon.Text10, tostring(address), text)
  check.equal(CPUmon.VScroll1, address, text)
  check.equal(CPUmon.Picture2:sub(1, 6), Hex4(address) .. ": ", text)
end
enter("Text10", nil, "65534")
check.equal(CPUmon.Picture2:sub(7, 17), (Hex2(MemRead(65534)) .. (" " .. Hex2(MemRead(65535))):rep(3)):sub(1, 11), "end of memory")
enter("Text11", nil, "2")
check.equal(CPUmon.Picture3:sub(1, 8), "0002: " .. Hex2(PortShadow[2]), "ports")
check.equal(CPUmon.Picture1, DisAsm(Z80State.PC, 10, 1), "disassembly")

-- The rest: ticks and texts that are only stored, or only shown.
for _, name in ipairs({"Check2", "Check3", "Check4", "Check5", "Check6", "Check7", "Check8", "Check9"}) do
  local starts = name == "Check5" or name == "Check6"
  check.equal(CPUmon[name], starts, name)
  CPUmon[name] = not starts
  check.equal(CPUmon[name], not starts, name)
  CPUmon[name] = starts
end
for _, name in ipairs({"Text5", "Text6", "Text12", "Text13"}) do
  CPUmon[name] = "&H77"
  check.equal(CPUmon[name], "&H77", name)
end
check.equal(CPUmon.Label3, "Mhz", "unit")
check.equal(CPUmon.Text8, tostring(RunState.TotalCycles + RunState.Cycles), "count")
check.is(CPUmon.Text7:match("^%d+$") and CPUmon.Label5:match("^%d+%.%d%d%d$"), "speed")
check.is(#CPUmon.File1 >= 0, "files")
check.equal(CPUmon.Shape2, math.min(Z80State.PC, 65535), "bar of PC")
check.equal(CPUmon.Shape4, Z80State.R, "bar of R")
check.equal(TVCmon.Check1, false, "Record")
check.equal(TVCmon.Check2, true, "Int enable")
local counts = {Slot = 4, Vid = 4, Iom = 3, Hbf = 4, IntLamp = 6, SoundLamp = 2, Crtc = 18, Palette = 4, Cas = 3,
                SlotId = 4, Serial = 6, Fdd = 7, FddLamp = 4, Disk = 6}
for name, count in pairs(counts) do
  check.equal(#TVCmon[name], count, name)
  for i = 0, count - 1 do check.is(TVCmon[name][i] ~= nil, name) end
end
for _, name in ipairs({"SoundIT", "Pitch", "Volume", "OutEnable", "Counter", "Border", "Mode", "SubMode"}) do
  check.is(#TVCmon[name] > 0, name)
end

-- Run, stop, step and breakpoints in every nesting: from a handler of the loop, twice in a row, with RESET and
-- NMI between.
local function program(...)
  check.pageInRam()
  Z80State.IFF1, Z80State.Halted, Z80State.IrqLine = 0, 0, 0
  check.program(...)
end
local kNops = {}
for i = 1, 64 do kNops[i] = 0 end
program(0x4000, table.unpack(kNops))
check.program(0x4040, 0xC3, 0x00, 0x40)  -- and round
Z80State.PC = 0x4000
CPUmon.Check4, CPUmon.Check2, CPUmon.Text5 = true, true, "&H4010"
Press("CPUmon", "Command1")
check.equal(Z80State.PC, 0x4010, "breakpoint")
check.equal(RunState.CpuRunning, 0, "stopped")
Press("CPUmon", "Command1")
check.equal(Z80State.PC, 0x4010, "round and there again")
Press("CPUmon", "Command7")
Press("CPUmon", "Command7")
check.equal(Z80State.PC, 0x4012, "two steps")
CPUmon.Check2 = false

local calls = 0
OnFrame(function()
  calls = calls + 1
  if calls == 1 then
    local before = Z80State.PC
    Press("CPUmon", "Command7")
    Press("CPUmon", "Command7")
    check.equal(RunState.CpuRunning, 0, "a step ends the run")
    check.is(Z80State.PC ~= before, "two steps inside the loop")
    CPUmon.Check2, CPUmon.Text5 = true, "16416"
    Press("CPUmon", "Command1")
    check.equal(Z80State.PC, 0x4020, "breakpoint of the inner loop")
    Press("CPUmon", "Command2")
    Press("CPUmon", "Command7")
    check.equal(Z80State.PC, 0x66, "NMI")
    Press("CPUmon", "Command5")
    Press("CPUmon", "Command2")
    Press("CPUmon", "Command7")
    check.equal(Z80State.PC, 0, "RESET comes before NMI")
    check.equal(RunState.NmiRequest + RunState.ResetRequest, 0, "both are served")
    program(0x4000)
  end
  Press("CPUmon", "Command6")
end)
Press("CPUmon", "Command1")
OnFrame(nil)
check.equal(calls, 1, "handler")
check.equal(RunState.CpuRunning, 0, "all loops have ended")
check.equal(RunState.TotalCycles, 0, "Stop zeroes")

-- A stop inside the loop, and a run that starts anew from there.
local frames = 0
CPUmon.Check2 = false
OnFrame(function()
  frames = frames + 1
  if frames == 3 then Press("CPUmon", "Command6") end
end)
Press("CPUmon", "Command1")
check.equal(frames, 3, "stopped in the third frame")
OnFrame(nil)

-- A *BREAK in the program is stepped over.
program(0x5000, 0xFD, 0xF3, 0x3C)
Z80State.A = 7
Press("CPUmon", "Command7")
Press("CPUmon", "Command7")
check.equal(Z80State.A, 8, "behind the *BREAK")
check.equal(CPUmon.Picture4:sub(-11), " 5002 INC A", "history")

-- The hardware monitor follows its timer, or its button.
PortOut(2, 0xF4)
PortOut(0x0F, 0x26)
PortOut(0x70, 14)
PortOut(0x71, 0x7F)
Press("TVCmon", "Command1")
check.equal(TVCmon.Slot[1] .. TVCmon.Slot[3], "VID*EXT", "slots")
check.equal(TVCmon.Vid[2], true, "VID2")
check.equal(TVCmon.Crtc[13], "3F", "H cursor")
check.equal(TVCmon.SubMode, "VID2", "bank on the screen")
