-- The tunes of chips.bas: how they are played, what their score says, and how they become wave files. As a script,
--   quollrun --folder ROMS chiptunes.lua FOLDER [NUMBER...]
-- writes FOLDER/NAME.wav for each tune, or for those of the numbers, 1 to 6. As a module it is a table.
local folder = debug.getinfo(1, "S").source:match("^@(.*/)") or ""
local d = dofile(folder .. "demos.lua")

local chips = {d = d, names = {"sn76489", "ay38910", "saa1099", "ym3812", "ym2413", "sid6581"}}
local kMenu, kFrameBytes = 230, 882

-- A tune's DATA lines: title, frames of a step, and the bars, each a list of the voices' texts.
function chips.score(number)
  local items = {}
  for _, line in ipairs((d.source("chips"))) do
    local place, data = line:match("^(%d+) DATA (.*)$")
    if place and tonumber(place) // 1000 == number and tonumber(place) % 1000 >= 200 then
      for item in data:gsub('"', ""):gmatch("[^,]+") do items[#items + 1] = item end
    end
  end
  local score = {title = items[1], step = tonumber(items[2]), voices = tonumber(items[3]) + 1, bars = {}}
  for bar = 1, tonumber(items[4]) do
    score.bars[bar] = table.move(items, 5 + score.voices * (bar - 1), 4 + score.voices * bar, 1, {})
  end
  assert(#items == 4 + score.voices * #score.bars, score.title .. ": DATA too long or too short")
  return score
end

local function menu() d.untilTrue("the menu", 1500, function() return d.line() == kMenu end) end

-- A machine with the sound card and the program, at its menu.
function chips.start()
  Click("xio2")
  d.boot()
  d.typeIn("chips")
  d.run()
  menu()
end

-- Plays a tune once and returns its samples, left and right, from the first frame that sounds to ten behind the last,
-- and the number of frames before them. With that number given they begin there, and all are kept that come.
function chips.play(number, before)
  repeat Frames(1) until #Sound() > 0                       -- so that a block of samples begins here
  d.keys(tostring(number))
  d.untilTrue("the tune", 100, function() return d.line() ~= kMenu end)
  menu()
  Frames(20)
  local samples = Sound()
  if before then return samples:sub(before * kFrameBytes + 1), before end
  local first, last = samples:find("[^\x80]"), #samples
  while samples:byte(last) == 0x80 do last = last - 1 end
  before = (first - 1) // kFrameBytes
  return samples:sub(before * kFrameBytes + 1, (last // kFrameBytes + 11) * kFrameBytes), before
end

-- 22050 samples a second, two channels of 8 bits.
function chips.save(file, samples)
  local output <close> = assert(io.open(file, "wb"))
  output:write(string.pack("<c4I4c4c4I4I2I2I4I4I2I2c4I4", "RIFF", 36 + #samples, "WAVE", "fmt ", 16, 1, 2, 22050, 44100, 2, 8,
                           "data", #samples), samples)
end

if arg[0]:find("chiptunes.lua$") then
  assert(arg[1], "usage: chiptunes.lua FOLDER [NUMBER...]")
  chips.start()
  local numbers = arg[2] and table.move(arg, 2, #arg, 1, {}) or {1, 2, 3, 4, 5, 6}
  for _, number in ipairs(numbers) do
    number = tonumber(number)
    local name = assert(chips.names[number], "no such tune")
    chips.save(arg[1] .. "/" .. name .. ".wav", (chips.play(number)))
    print(name .. ".wav", chips.score(number).title)
  end
end
return chips
