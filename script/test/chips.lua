-- The sound card's six chips: ports, registers, frames, windows.
package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

local outputs = {"SaaOutL", "SaaOutR", "SnOut", "Ym3812Out", "Ym2413Out", "SidOut", "AyOut"}

local function silent(name)
  for _, sample in ipairs(_G[name]:get(0, 441)) do
    if sample ~= 0 then return false end
  end
  return true
end

local function out(addressPort, reg, value)
  PortOut(addressPort, reg)
  PortOut(addressPort ~ 1, value)
end

Click("xio2")
check.pageInRam()
check.loopFor10(0x4000)
Frames(2)
for _, name in ipairs(outputs) do check.is(silent(name), name .. " at the start") end

-- Each chip alone, by its own ports; what is written is heard from the next frame on.
local function plays(name, write)
  write()
  check.is(silent(name), name .. " before its frame")
  Frames(1)
  for _, other in ipairs(outputs) do
    local own = other == name or (name == "SaaOutL" and other == "SaaOutR")
    check.equal(silent(other), not own, other .. " while " .. name .. " plays")
  end
  MachineReset()
  check.pageInRam()
  check.loopFor10(0x4000)
  Frames(1)
  check.is(silent(name), name .. " after a reset")
end

plays("SnOut", function()
  PortOut(0x30, 0x8E)
  PortOut(0xFD, 0x0F)
  PortOut(0x30, 0x90)
  check.list(SN_Reg:get(0, 3), {15, 14, 0}, "SN_Reg")
end)
plays("SaaOutL", function()
  out(0x33, 0, 0x9C)
  out(0xFF, 8, 100)
  out(0x33, 16, 0x05)
  out(0x33, 20, 1)
  out(0x33, 22, 0x21)
  out(0x33, 25, 0xA7)
  out(0x33, 28, 1)
  check.equal(SAA_Amp[0], 12, "left")
  check.equal(SAA_Amp[6], 9, "right")
  check.list({SAA_Freq[0], SAA_Freq[1]}, {100, 5}, "SAA_Freq")
  check.list({SAA_Enable[0], SAA_Enable[1], SAA_Enable[2]}, {1, 0, 0}, "SAA_Enable")
  check.list({SAA_Noise[0], SAA_Noise[1]}, {1, 2}, "SAA_Noise")
  -- enable, invert right, external clock, mode, 3-bit flag of envelope 1
  check.equal(SAA_Env:get(5, 5), "\1\1\1\3\0", "SAA_Env")
end)
plays("Ym3812Out", function()
  out(0x34, 0xA0, 0x41)
  out(0x34, 0xB0, 0x32)
  check.equal(OPL_Reg[0xB0], 0x32, "OPL_Reg")
end)
plays("Ym2413Out", function()
  out(0x3C, 0x10, 0x20)
  out(0x3C, 0x20, 0x1B)
  out(0x3C, 0x30, 0x0F)
  check.equal(OPLL_Reg[0x20], 0x1B, "OPLL_Reg")
end)
plays("SidOut", function()
  out(0x38, 1, 20)
  PortOut(0xE4, 0x21)
  PortOut(0xE6, 0xF0)
  out(0x38, 24, 15)
  check.list({SID_Reg[1], SID_Reg[4], SID_Reg[6], SID_Reg[24]}, {20, 0x21, 0xF0, 15}, "SID_Reg")
end)
plays("AyOut", function()
  out(0x3A, 0, 254)
  out(0x3A, 8, 15)
  out(0x3A, 7, 0x3E)
  check.equal(AY_Reg[7], 0x3E, "AY_Reg")
end)

-- Windows' points are there with no window: half a frame each, from the last frame of a block.
PortOut(0x30, 0x8E)
PortOut(0x30, 0x0F)
PortOut(0x30, 0x92)
out(0x34, 0xA0, 0x41)
out(0x34, 0xB0, 0x32)
Frames(10)
check.equal(#FSN76489.Pic1, 4, "scopes")
check.equal(#FSN76489.Pic1[0], 221, "points")
for i, point in ipairs(FSN76489.Pic1[0]) do
  check.equal(point.x, i - 1, "x")
  check.is(point.y == 45 or point.y == 19, "260 / 20 from the middle")
end
local lowest, highest = 64, 0
for _, point in ipairs(FYM3812.Pic1[0]) do
  lowest, highest = math.min(lowest, point.y), math.max(highest, point.y)
end
check.is(lowest < 5 and highest > 59 and lowest >= 4 and highest <= 60, "a sine over the box")
check.equal(FYM3812.Label1[0xB0], "50", "the grid")
check.equal(FYM3812.Label4[0], "435", "hertz")

-- With the card's tick taken off, a new machine is made; the last frame goes on being heard.
Click("xio2")
check.pageInRam()
check.loopFor10(0x4000)
Frames(5)
local block = Sound()
check.is(not silent("SnOut"), "the last frame stays")
check.equal(block:sub(-882), block:sub(-1764, -883), "and is repeated")
Click("xio2")
check.pageInRam()
check.loopFor10(0x4000)

-- By hand.
FSN76489.Check3 = true
FSN76489.HScroll3[1] = 770
FSN76489.HScroll4[1] = 2
check.equal(FSN76489.Label6[1], "440", "Label6")
Frames(6)
check.list(SN_Reg:get(3, 3), {254 & 63, 254 >> 6, 2}, "manual")
PortOut(0x30, 0xB0)
check.equal(SN_Reg[5], 2, "the machine's writes are ignored")
FSN76489.Check3 = false
PortOut(0x30, 0xB0)
check.equal(SN_Reg[5], 0, "and taken again")
check.raises("number too large", function() FSN76489.HScroll4[0] = 16 end)
check.raises("cannot be changed", function() FSN76489.Pic1[0] = {} end)

FSID.Text2 = "54296"
FSID.Text3 = "15"
Press("FSID", "Command1")
check.equal(SID_Reg[24], 15, "poke")
FSID.Check4 = true
local before = #FSID.PIC2
Frames(20)
local points = FSID.PIC2
check.equal(#points, before + 20, "the sweep's points")
check.is(points[#points].x > points[#points - 1].x, "to the right")
check.is(tonumber(FSID.Label15) > 100, "Label15")
FSID.Check4 = false

-- Direct output: there are no such ports here.
check.equal(FYM3812.Text2, "896", "Text2")
FYM3812.Check3 = true
out(0x34, 0x20, 1)
check.equal(FYM3812.Check3, false, "the box goes off")
check.equal(#Messages(), 1, "one message")
check.equal(OPL_Reg[0x20], 1, "the emulated chip goes on")

-- A dump of the SID's registers, a record a frame.
local file = assert(io.open("chips.dmp", "wb"))
for record = 1, 3 do file:write(string.rep(string.char(record * 16), 25)) end
file:close()
check.equal(FSID.Option1, true, "No File")
FSID.Option3 = true
check.list(FSID.File1, {"chips.dmp"}, "File1")
check.equal(Selected("FSID", "File1"), 0, "the first")
for _, byte in ipairs({16, 32, 48, 48}) do
  Frames(1)
  check.equal(SID_Reg[0], byte, "record")
end
Choose("FSID", "File1", 0)
check.equal(SID_Reg[0], 0, "a click resets the chip")
Frames(1)
check.equal(SID_Reg[0], 16, "and begins anew")
FSID.Option1 = true
check.list(FSID.File1, {}, "File1")
os.remove("chips.dmp")
