-- Text in the three modes: the pixels of every character by the font, scrolling, colours, the cursor's place.
local s = dofile((arg[0]:match("^.*/") or "") .. "system_machine.lua")
s.boot()

-- The font stands in the system ROM, which is linked at 0xC000 and loaded at 0x18000.
local font = MemImage:get(0x18000 + s.symbol(arg[1], "font") - 0xC000, 128 * 10)

-- Every cell of the screen, as what SCREENTEXT says, in ink on paper.
local function compare(what, ink, paper)
  local picture, mode = s.picture(), PortShadow[6] & 3
  local columns = 64 >> mode
  for row = 0, 23 do
    for column = 0, columns - 1 do
      local code = MemImage[s.kText + 64 * row + column]
      for line = 0, 9 do
        local bits = font:byte((code - 32) * 10 + line + 1)
        for x = 0, 7 do
          local expected = bits >> (7 - x) & 1 == 1 and ink or paper
          local got = s.colour(picture, 8 * column + x, 10 * row + line)
          if got ~= expected then
            error(string.format("%s: row %d column %d line %d pixel %d: expected %d, got %d", what, row, column,
                                line, x, expected, got), 2)
          end
        end
      end
    end
  end
end

-- All glyphs are different, except that a blank is blank; Hungarian capitals differ from their base letters.
local seen = {}
for code = 0x20, 0x9F do
  local glyph = font:sub((code - 32) * 10 + 1, (code - 32) * 10 + 10)
  s.is(not seen[glyph], string.format("glyph %02X is that of %02X", code, seen[glyph] or 0))
  seen[glyph] = code
end

for mode = 0, 2 do
  local columns = 64 >> mode
  s.call(s.gfx_mode, {A = mode})
  s.equal(PortShadow[6] & 0x83, 0x80 + mode, "port 6")
  s.call(s.con_width)
  s.equal(Z80State.A, columns, "con_width")
  local ink, paper = 1, 0
  if mode == 2 then ink, paper = 15, 1 end
  compare("cleared", ink, paper)
  for code = 0x20, 0x9F do s.call(s.con_out, {A = code}) end
  for i = 0, 127 do
    s.equal(MemImage[s.kText + 64 * (i // columns) + i % columns], 0x20 + i, "text")
  end
  compare("all characters in mode " .. mode, ink, paper)

  -- Scrolling, more than once round the video RAM (25.6 rows), with lines longer than a row.
  local expected = {}
  s.call(s.con_clear)
  for i = 1, 60 do
    local text = string.rep(string.char(0x21 + i), i % 4 == 0 and columns + 3 or i % 9)
    s.print(text .. "\r")
    expected[#expected + 1] = text:sub(1, columns)
    if #text > columns then expected[#expected + 1] = text:sub(columns + 1) end
  end
  for row = 0, 22 do s.equal(s.row(row), expected[#expected - 22 + row], "row " .. row) end
  s.equal(s.row(23), "", "last row")
  s.is(CrtcRegs[12] * 256 + CrtcRegs[13] ~= 0, "the picture's start has moved")
  compare("scrolled in mode " .. mode, ink, paper)
  s.call(s.con_clear)
  s.equal(CrtcRegs[12] * 256 + CrtcRegs[13], 0, "start after a clear")
  compare("cleared again", ink, paper)

  -- Every colour as ink and as paper.
  local colours = ({[0] = 2, 4, 16})[mode]
  for first = 0, colours - 1 do
    s.call(s.gfx_ink, {A = first})
    s.call(s.gfx_paper, {A = (first + 1) % colours})
    s.call(s.con_clear)
    s.print("Ink & paper")
    compare("colours", first, (first + 1) % colours)
    s.call(s.gfx_paper, {A = first})
    s.call(s.con_clear)
    s.print("unseen")
    compare("one colour", first, first)
  end
end
s.call(s.gfx_mode, {A = 3})
s.equal(PortShadow[6] & 3, 2, "no such mode")
s.call(s.gfx_mode, {A = 0})

-- Palette and border: bits blue, red, green, bright to the bits 0, 2, 4, 6, in the border one higher.
for colour = 0, 15 do
  local bits = (colour & 1) + (colour & 2) * 2 + (colour & 4) * 4 + (colour & 8) * 8
  for register = 0, 3 do
    s.call(s.gfx_palette, {A = register, BC = colour})
    s.equal(PortShadow[0x60 + register], bits, "palette")
  end
  s.call(s.gfx_border, {A = colour})
  s.equal(PortShadow[0], 2 * bits, "border")
end
s.call(s.gfx_palette, {A = 4, BC = 1})
s.equal(PortShadow[0x64], 0, "no such register")

-- The cursor: control codes, con_locate with its limits, con_column, wrapping.
local function cursor() return MemImage[s.kCursor + 1] .. "," .. MemImage[s.kCursor] end
for _, case in ipairs{{5, 10, "5,10"}, {24, 64, "23,63"}, {255, 255, "23,63"}, {0, 0, "0,0"}} do
  s.call(s.con_locate, {DE = case[1] * 256 + case[2]})
  s.equal(cursor(), case[3], "con_locate")
end
s.call(s.con_locate, {DE = 5 * 256 + 10})
for _, case in ipairs{{8, "5,9"}, {9, "5,10"}, {10, "6,10"}, {11, "5,10"}, {13, "6,0"}, {8, "5,63"}, {9, "6,0"}} do
  s.call(s.con_out, {A = case[1]})
  s.equal(cursor(), case[2], "control code " .. case[1])
end
s.call(s.con_locate, {DE = 256 + 63})
s.call(s.con_column)
s.equal(Z80State.A, 63, "con_column")
s.print("a")
s.equal(cursor(), "2,0", "wrapped")
s.print("\rb")
s.equal(s.row(2), "b", "no blank row behind a full one")
s.call(s.con_out, {A = 0xC0})
s.equal(MemImage[s.kText + 2 * 64 + 1], 0x7F, "a code without a glyph")

-- con_out keeps BC, DE, HL, IX, IY, whatever it does.
local name = {"B", "C", "D", "E", "H", "L"}
for _, code in ipairs{0x41, 13, 12, 7, 8, 9, 10, 11, 1} do
  Z80State.IY = 0x1357
  s.call(s.con_out, {A = code, BC = 0x1234, DE = 0x5678, HL = 0x9ABC, IX = 0x2468})
  local got = {}
  for i, register in ipairs(name) do got[i] = string.format("%02X", Z80State[register]) end
  s.equal(table.concat(got), "123456789ABC", "registers behind code " .. code)
  s.equal(Z80State.IX * 65536 + Z80State.IY, 0x24681357, "IX, IY")
end

-- con_str and con_number.
s.call(s.con_clear)
MemImage:set(0x6000, "text\0")
s.call(s.con_str, {HL = 0x6000})
for _, number in ipairs{0, 7, 10, 100, 1005, 42513, 65535} do
  s.print(" ")
  s.call(s.con_number, {HL = number})
end
s.equal(s.row(0), "text 0 7 10 100 1005 42513 65535", "con_number")
s.clean()
