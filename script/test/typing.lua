package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

-- What the matrix shows at each frame end: rows that are not empty, as "row:bits".
check.pageInRam()
check.loopFor10(0x100)
local seen = {}
OnFrame(function()
  local held = {}
  for row = 0, 15 do
    if KeyMatrix[row] ~= 0 then held[#held + 1] = row .. ":" .. Hex2(KeyMatrix[row]) end
  end
  seen[#seen + 1] = table.concat(held, " ")
end)

local function typed(text)
  seen = {}
  return Type(text)
end

-- A key is held for four frames, then none is for four.
local function expect(text, keys)
  check.equal(typed(text), #keys, text .. ": characters")
  check.equal(#seen, 8 * #keys, text .. ": frames")
  for i, key in ipairs(keys) do
    for frame = 1, 8 do
      local expected = frame <= 4 and key or ""
      check.equal(seen[(i - 1) * 8 + frame], expected, text .. ", key " .. i .. ", frame " .. frame)
    end
  end
end

expect("a", {"4:40"})
expect("A", {"4:40 6:08"})
expect("z19\n ", {"2:10", "0:40", "1:04", "5:10", "7:20"})
expect("aa", {"4:40", "4:40"})
expect("(", {"1:02 6:08"})
expect("*", {"1:10"})
expect(".:", {"7:04", "6:08 7:04"})
expect("éÉ", {"5:40", "5:40 6:08"})
expect("ű", {"5:20"})
-- The third level comes with AltGr, which is Ctrl and Alt together.
expect(";<>", {"7:13", "0:20 7:11", "6:40 7:11"})
expect("$@#&", {"5:40 7:11", "6:80 7:11", "6:04 7:11", "6:02 7:11"})
expect("[]{}", {"4:80 7:11", "4:01 7:11", "6:01 7:11", "6:10 7:11"})
expect("\\|~^`", {"2:40 7:11", "2:04 7:11", "0:40 7:11", "0:02 7:11", "1:80 7:11"})
check.equal(typed(""), 0, "nothing")
check.equal(#seen, 0, "nothing")

-- The accented letters and all signs reach a key.
check.is(typed("áéíóöőúüűÁÉÍÓÖŐÚÜŰ0123456789 '\"+!%/=(),?.:-_*") > 40, "all keys")

-- A text with a character that has no key is not begun.
for _, text in ipairs({"ab\t", "ß", "a\0", "\xFF", "\xC3", "€"}) do
  seen = {}
  check.raises("there is no key for", Type, text)
  check.equal(#seen, 0, "not begun")
end
check.raises("string expected", Type)

-- A machine that stops ends the typing, and no key stays down.
check.program(0x200, 0xFD, 0xF3)
check.equal(typed("Ab"), 0, "stopped")
for row = 0, 15 do check.equal(KeyMatrix[row], 0, "keys") end
