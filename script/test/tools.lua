-- The drawn keyboard: each key gives the character that the machine's table says, alone, with Shift and with Alt
-- held by the right button.
package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

-- The system's key queue; a program that does nothing leaves the codes in it.
local kHead, kTail, kQueue = 0x0B1D, 0x0B1E, 0x1200
Frames(60)
MemImage:set(0x5000, "\xFB\x18\xFE")  -- EI: JR to itself
Z80State.PC, Z80State.Halted = 0x5000, 0
Frames(2)

local function queued()
  local codes = {}
  while MemImage[kHead] ~= MemImage[kTail] do
    codes[#codes + 1] = MemImage[kQueue + MemImage[kHead]]
    MemImage[kHead] = (MemImage[kHead] + 1) & 15
  end
  return codes
end

local kShift, kCtrl, kAlt = 0x10, 0x11, 0x12

-- Presses label by mouse; codes expected as a text or a number, nil for none.
local function gives(expected, ...)
  MouseDown("TTools", ...)
  Frames(3)
  MouseUp("TTools", ...)
  Frames(2)
  local name = table.concat({...}, " ")
  local codes = queued()
  if type(expected) == "string" then expected = expected:byte() end
  check.equal(#codes, expected and 1 or 0, "codes of " .. name)
  check.equal(codes[1], expected, name)
end
local function key(code, expected) gives(expected, "Label1", code - 32) end

-- Host key, alone, with Shift, with Alt: the table of the machine's handbook.
local keys = {
  {0x30, "0", "&"}, {0x31, "1", "'", "~"}, {0x32, "2", '"'}, {0x33, "3", "+", "^"}, {0x34, "4", "!"},
  {0x35, "5", "%"}, {0x36, "6", "/"}, {0x37, "7", "=", "`"}, {0x38, "8", "("}, {0x39, "9", ")"},
  {0xBC, ",", "?", ";"}, {0xBE, ".", ":"}, {0xBD, "-", "_", "*"}, {0x74, "<", "["}, {0x75, ">", "]"},
  {0x76, ";", "$"}, {0x77, "^", "@"}, {0x78, "#", "{"}, {0x79, "&", "}"}, {0x20, " ", " "},
  {0x25, 28, 28}, {0x27, 29, 29}, {0x26, 30, 0xA1}, {0x28, 31, 31}, {0x2D, 0xA0, 0xA0},
  {0x6A, "*"}, {0x6B, "+"}, {0x6D, "-"}, {0x6F, "/"},
}
for i, code in ipairs{0xDE, 0xBA, 0xE2, 0xBB, 0xC0, 0xDB, 0xDD, 0xBF, 0xDC} do
  keys[#keys + 1] = {code, 0x90 + i - 1, 0x80 + i - 1, ({[0xBA] = "$", [0xE2] = "<"})[code]}
end
local alts = {Y = ">", V = "@", X = "#", C = "&", F = "[", G = "]", B = "{", N = "}", Q = "\\", W = "|"}
for code = 0x41, 0x5A do
  local capital = string.char(code)
  keys[#keys + 1] = {code, capital:lower(), capital, alts[capital]}
end
check.equal(#keys, 64, "keys of one label array")

for _, k in ipairs(keys) do
  key(k[1], k[2])
  check.equal(TTools.Text1, tostring(k[1]), "code shown")
end
gives(13, "Label3")
gives(8, "Label7")

-- Shift held by the right button combines with any number of keys.
TTools.Held[kShift] = true
Frames(2)
check.equal(TTools.Held[kShift], true, "lit")
for _, k in ipairs(keys) do
  if k[3] then key(k[1], k[3]) end
end
gives(127, "Label7")
TTools.Held[kShift] = false
Frames(2)
key(0x41, "a")

TTools.Held[kAlt] = true
Frames(2)
for _, k in ipairs(keys) do
  if k[4] then key(k[1], k[4]) end
end
TTools.Held[kAlt] = false
Frames(2)

TTools.Held[kCtrl] = true
Frames(2)
key(0x41, 1)
key(0x5A, 26)
gives(nil, "Label4")  -- a plain click lets it go
check.equal(TTools.Held[kCtrl], false, "let go")
key(0x41, "a")

-- Shift by a plain press ends with it; Lock stays until the next one.
MouseDown("TTools", "Label2")
Frames(2)
key(0x41, "A")
MouseUp("TTools", "Label2")
Frames(2)
key(0x41, "a")
gives(nil, "Label6")
key(0x41, "A")
gives(nil, "Label6")
key(0x41, "a")

-- Escape breaks.
MemImage[0x0B08] = 0
key(0x23, nil)
check.equal(MemImage[0x0B08], 27, "break")

-- A click without time between down and up shows the code only.
Press("TTools", "Label1", 0x51 - 32)
check.equal(TTools.Text1, "81", "code")
check.equal(KeyMatrix[2], 0, "up again")
check.equal(#queued(), 0, "too short for the machine")
check.equal(#TTools.Label1, 195, "Label1")
check.raises("out of range", Press, "TTools", "Label1", 195)
check.raises("does nothing", MouseDown, "TTools", "Text1")

-- The four rows.
TTools.U3[1] = true
TTools.U0[2] = true
TTools.U2[1] = true
check.equal(TTools.Text2, tostring(0x40 | 0x10 | 0x20), "a paging value")
TTools.U1[1] = true
TTools.U1[0] = true
check.equal(TTools.Text2, tostring(0x70), "the machine's own")
check.equal(TTools.U3[0], false, "one of a row")
