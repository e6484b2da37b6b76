package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

local sizes = {
  MemImage = 0x3C001, PortShadow = 256, CrtcRegs = 19, KeyMatrix = 16, BorderLines = 288, DacSlots = 441,
  BlockBuffer = 4410, ToneOut = 441, SaaOutL = 441, SaaOutR = 441, SnOut = 441, Ym3812Out = 441,
  Ym2413Out = 441, SidOut = 441, AyOut = 441,
  SN_Reg = 12, AY_Reg = 16, SAA_Amp = 12, SAA_Freq = 12, SAA_Enable = 12, SAA_Noise = 2, SAA_Env = 10,
  OPL_Reg = 256, OPLL_Reg = 64, SID_Reg = 29,
}
local bytes = {
  MemImage = true, PortShadow = true, KeyMatrix = true, DacSlots = true, BlockBuffer = true,
  SAA_Amp = true, SAA_Freq = true, SAA_Enable = true, SAA_Noise = true, SAA_Env = true,
  OPL_Reg = true, OPLL_Reg = true,
}
local words = {CrtcRegs = true, BorderLines = true, SN_Reg = true, AY_Reg = true, SID_Reg = true}  -- 32 bits; the rest has 16

for name, size in pairs(sizes) do
  local array = _G[name]
  check.is(array, name .. " is missing")
  check.equal(#array, size, name .. " length")
  local largest = bytes[name] and 0xFF or words[name] and 0x7FFFFFFF or 0x7FFF
  for _, i in ipairs({0, size // 2, size - 1}) do
    array[i] = largest
    check.equal(array[i], largest, name .. " largest")
    array[i] = largest + 1  -- one too many comes round
    check.equal(array[i], bytes[name] and 0 or -largest - 1, name .. " overflow")
    array[i] = -1
    check.equal(array[i], bytes[name] and 0xFF or -1, name .. " of -1")
    array[i] = i % 100
  end
  for _, i in ipairs({0, size // 2, size - 1}) do check.equal(array[i], i % 100, name .. " place") end
  for _, i in ipairs({-1, size, math.mininteger, math.maxinteger}) do
    check.raises(name .. ": index " .. i .. " out of range", function() return array[i] end)
    check.raises(name .. ": index " .. i .. " out of range", function() array[i] = 0 end)
  end
  check.raises("number expected", function() return array[nil] end)
  check.raises("no integer representation", function() return array[0.5] end)
  check.raises("number expected", function() array[0] = "x" end)
  check.raises("has no 'size'", function() return array.size end)
  check.raises("number expected", function() array.size = 1 end)
end

-- Byte arrays give and take strings.
MemImage:set(0x4000, "machine\0code")
check.equal(MemImage[0x4000], ("m"):byte(), "set")
check.equal(MemImage[0x4007], 0, "set of a zero byte")
check.equal(MemImage:get(0x4003, 9), "hine\0code", "get")
check.equal(MemImage:get(0x3C000, 1), string.char(MemImage[0x3C000]), "get of the last")
check.equal(MemImage:get(0x3C001, 0), "", "get of nothing")
check.equal(MemImage:get(0, 0x3C001):len(), 0x3C001, "get of all")
MemImage:set(0x4000, {1, 258, -1})
check.equal(MemImage:get(0x4000, 4), "\1\2\255h", "set from a table")
MemImage:set(0x3C001, "")

-- The others give and take tables from 1.
BorderLines:set(286, {0x123456, 0x654321})
check.list(BorderLines:get(286, 2), {0x123456, 0x654321}, "BorderLines")
check.list(BorderLines:get(0, 0), {}, "nothing")
ToneOut:set(0, {-32768, 32767, 32768})
check.list(ToneOut:get(0, 3), {-32768, 32767, -32768}, "ToneOut")

check.raises("out of range", MemImage.get, MemImage, -1, 1)
check.raises("out of range", MemImage.get, MemImage, 0, -1)
check.raises("out of range", MemImage.get, MemImage, 0x3C001, 1)
check.raises("out of range", MemImage.get, MemImage, 1, 0x3C001)
check.raises("out of range", MemImage.get, MemImage, 1, math.maxinteger)
check.raises("out of range", MemImage.get, MemImage, math.maxinteger, math.maxinteger)
check.raises("out of range", MemImage.set, MemImage, 0x3C000, "ab")
check.raises("out of range", MemImage.set, MemImage, -1, "ab")
check.raises("out of range", BorderLines.set, BorderLines, 287, {1, 2})
check.raises("table expected", BorderLines.set, BorderLines, 0, "ab")
check.raises("table expected", MemImage.set, MemImage, 0, 12)
check.raises("quollrun.array expected", MemImage.get, {}, 0, 1)
check.raises("quollrun.array expected", MemImage.get, nil, 0, 1)

-- A bad table changes nothing.
MemImage:set(0x4000, "abc")
check.raises("value 3 is no integer", MemImage.set, MemImage, 0x4000, {1, 2, "x", 4})
check.equal(MemImage:get(0x4000, 3), "abc", "after a bad table")

-- Rows.
check.equal(#PalHistory, 4, "PalHistory rows")
for p = 0, 3 do
  check.equal(#PalHistory[p], 257, "PalHistory length")
  for _, i in ipairs({0, 1, 256}) do PalHistory[p][i] = p * 50 + i % 30 end
end
for p = 0, 3 do
  for _, i in ipairs({0, 1, 256}) do check.equal(PalHistory[p][i], p * 50 + i % 30, "PalHistory") end
end
check.equal(PalHistory[3]:get(0, 2), "\150\151", "PalHistory get")
check.raises("out of range", function() return PalHistory[4] end)
check.raises("out of range", function() return PalHistory[-1] end)
check.raises("out of range", function() return PalHistory[0][257] end)
check.raises("out of range", function() PalHistory[0][257] = 0 end)
check.raises("rows", function() PalHistory[0] = 1 end)
check.raises("rows", function() return PalHistory:get(0, 1) end)

-- The pages of a cartridge that isn't there.
check.equal(#MexPages, 0, "MexPages")
check.equal(MexPages[0], nil, "MexPages")
check.equal(MexPages[255], nil, "MexPages")
check.raises("out of range", function() return MexPages[256] end)

-- Paging follows a write to the port image at once.
PortShadow[2] = 0xB0
MemImage[0x0010], MemImage[0x18010], MemImage[0xC010] = 0x11, 0x22, 0x33
check.equal(MemRead(0x0010), 0x11, "U0")
PortShadow[2] = 0xA0
check.equal(MemRead(0x0010), 0x22, "SYS")
PortShadow:set(2, "\xB8")
check.equal(MemRead(0x0010), 0x33, "U3 in page 0")
check.equal(MemRead(0xC010), 0x33, "U3")
MemImage[0xC010] = 0x44
check.equal(MemRead(0x0010), 0x44, "a byte of U3")

-- The same for the processor: the instruction is fetched from the page just chosen.
MemImage[0x0000], MemImage[0x18000] = 0x3C, 0x3D  -- INC A in RAM, DEC A in ROM
Z80State.PC, Z80State.A = 0, 10
PortShadow[2] = 0xB0
Step()
check.equal(Z80State.A, 11, "INC A from RAM")
Z80State.PC = 0
PortShadow[2] = 0xA0
Step()
check.equal(Z80State.A, 10, "DEC A from ROM")
