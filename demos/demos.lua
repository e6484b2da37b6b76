-- What the build of the demonstration programs and their tests share: a program's text goes into the machine
-- through its keyboard queue, and comes back by LIST. A module:
--   local d = dofile((arg[0]:match("^.*/") or "") .. "demos.lua")
local folder = debug.getinfo(1, "S").source:match("^@(.*/)") or ""
local d = dofile(folder .. "../rom/test/basic_machine.lua")

d.folder = folder
d.names = {"snake", "show", "tune", "raster", "pen", "chips"}
local kBasicLine, kColumns = 0x1380, 64

-- The machine's codes of the Hungarian letters: capitals from 0x80 on, the others from 0x90.
local codes, letters = {}, {}
for first, list in pairs({[0x80] = "ÁÉÍÓÖŐÚÜŰ", [0x90] = "áéíóöőúüű"}) do
  local code = first
  for letter in list:gmatch(utf8.charpattern) do
    codes[letter], letters[string.char(code)] = string.char(code), letter
    code = code + 1
  end
end

function d.encode(text)
  return (text:gsub("[\xC2-\xF4][\x80-\xBF]+", function(letter)
    return codes[letter] or error("the machine has no letter " .. letter)
  end))
end

function d.decode(text) return (text:gsub("[\x80-\x98]", letters)) end

-- The lines of demos/NAME.bas, and their numbers.
function d.source(name)
  local lines, numbers = {}, {}
  for line in io.lines(folder .. name .. ".bas") do
    lines[#lines + 1] = line
    numbers[#numbers + 1] = assert(line:match("^%d+ "), name .. ".bas: " .. line)
  end
  return lines, numbers
end

-- Types a program in. The machine must take each line without a word.
function d.typeIn(name)
  assert(d.command("new") == "")
  for _, line in ipairs((d.source(name))) do
    local keys = d.encode(line)
    d.keys("\x0C" .. keys .. "\r")
    assert(d.wait(1500), "line not taken: " .. line)
    local answer = d.screen(math.ceil(#keys / kColumns))
    assert(answer == "", line .. ": " .. answer)
  end
end

-- One line as LIST prints it. Its rows are joined with all their blanks.
function d.listed(number)
  d.keys("\x0Clist " .. number .. "\r")
  assert(d.wait(500), "LIST does not end")
  local text = ""
  for row = 1, 23 do
    if d.row(row) == "Ready" then return d.decode((text:gsub(" +$", ""))) end
    text = text .. MemImage:get(d.kScreen + kColumns * row, kColumns)
  end
  error("LIST " .. number .. " does not end")
end

-- The program in memory is demos/NAME.bas: the first line that differs, its own text and what LIST prints.
function d.difference(name)
  local lines, numbers = d.source(name)
  for i, line in ipairs(lines) do
    local listed = d.listed(numbers[i])
    if listed ~= line then return line, listed end
  end
  local last = d.word(d.kProgEnd) - 1
  if MemImage[last] ~= 0 then return "the end of the program", "byte " .. MemImage[last] end
end

function d.run() d.keys("\x0Crun\r") end

-- Number of the line that BASIC is running; nil at the prompt.
function d.line()
  local address = d.word(kBasicLine)
  return address ~= 0 and d.word(address + 1) or nil
end

-- Runs until f() is true, at most so many frames; f's value, or an error.
function d.untilTrue(what, frames, f)
  for _ = 1, frames do
    local value = f()
    if value then return value end
    Frames(1)
  end
  error("waited in vain: " .. what .. "; line " .. tostring(d.line()) .. "\n" .. d.screen(), 2)
end

-- The point x, y of the picture: red, green, blue as 0 (off), 1 (half) or 2 (full), as one number of three
-- digits. y counts rows of the machine, x device pixels: 512 in a row.
function d.pixelReader()
  local width, _, left, top, pixels = Picture()
  local function level(value) return value > 200 and 2 or value > 60 and 1 or 0 end
  local function colour(red, green, blue) return 100 * level(red) + 10 * level(green) + level(blue) end
  local border = Border()
  return function(x, y)
    local red, green, blue = pixels:byte((2 * y * width + x) * 3 + 1, (2 * y * width + x) * 3 + 3)
    return colour(red, green, blue)
  end, function(y)                                          -- the border beside row y of the picture
    local rgb = border[top + 2 * y + 1]
    return colour(rgb >> 16, rgb >> 8 & 255, rgb & 255)
  end, left
end

-- A colour number of the machine, 0 to 15, in the same form.
function d.colour(number)
  local level = number & 8 ~= 0 and 2 or 1
  return level * (100 * (number >> 1 & 1) + 10 * (number >> 2 & 1) + (number & 1))
end

-- The tone that sounds now: frequency in Hz and volume 0 to 15, or nil.
function d.tone()
  if PortShadow[5] & 0x10 == 0 then return nil end
  return 195312.5 / (4096 - (PortShadow[4] + 256 * (PortShadow[5] & 15))), PortShadow[6] >> 2 & 15
end

return d
