-- Three tunes: the tones are those of the melodies, in their time, heard in the samples; the notes are drawn.
local d = dofile((arg[0]:match("^.*/") or "") .. "../demos.lua")
d.boot()
d.typeIn("tune")
d.run()
d.untilTrue("menu", 400, function() return d.line() == 270 end)
Frames(2)
local menu = d.decode(MemImage:get(d.kScreen, 64 * 24))
for _, text in ipairs({"T H R E E   T U N E S", "1  Boci, boci tarka", "2  Örömóda", "3  Für Elise"}) do
  d.check("menu", menu:find(text, 1, true), "without " .. text)
end

local hertz = dofile(d.folder .. "test/spectrum.lua").hertz

-- Plays tune `key` and gives its notes as {frequency, frames, loudest volume, samples}. Each note is followed by
-- a rest.
local function listen(key)
  local notes, note = {}, nil
  Sound()
  repeat Frames(1) until #Sound() > 0                       -- so that a block of samples begins here
  d.keys(key)
  for frame = 1, 4000 do
    Frames(1)
    local frequency, volume = d.tone()
    if not frequency or frequency < 60 then                 -- a rest is a tone without amplitude
      note = nil
    elseif note and note[1] == frequency then
      note[2], note[3] = note[2] + 1, math.max(note[3], volume)
    else
      note = {frequency, 1, volume, frame}
      notes[#notes + 1] = note
    end
    if d.line() == 270 and frame > 100 then return notes, Sound() end
  end
  error("tune " .. key .. " does not end")
end

local function names(text)
  local list = {}
  for name in text:gmatch("%S+") do list[#list + 1] = name end
  return list
end

-- The notes from `first` on are these.
local function compare(what, notes, text, first)
  for i, name in ipairs(names(text)) do
    local frequency = notes[first + i - 1][1]
    d.check(what .. ", note " .. first + i - 1, math.abs(frequency / hertz(name) - 1) < 0.01,
            frequency .. " Hz instead of " .. name)
  end
end

-- Boci, boci tarka: two short-short-short-short-long-long lines, then two more. Quavers of 13 units.
local boci, samples = listen("1")
compare("Boci", boci, [[C5 E5 C5 E5 G5 G5  C5 E5 C5 E5 G5 G5  C6 B5 A5 G5 F5 A5  G5 F5 E5 D5 C5 C5]], 1)
d.equal("notes of Boci", #boci, 24 + 49)
for i = 1, 24 do
  local length = (i - 1) % 6 < 4 and 12 or 25
  d.check("length of note " .. i, math.abs(boci[i][2] - length) <= 1, boci[i][2] .. " frames")
  d.equal("loudness of note " .. i, boci[i][3], 15)
end
d.check("second verse at once", boci[25][4] - boci[24][4] <= 28, "late")

-- The samples themselves: changes of side in a second are twice the frequency. 22050 samples a second, left and
-- right; 441 in a frame.
local function heard(note)
  local from, to = (note[4] + 1) * 441, (note[4] + 8) * 441
  local changes, side = 0, nil
  local low, high = 255, 0
  for i = from, to do
    local value = samples:byte(2 * i + 1)
    low, high = math.min(low, value), math.max(high, value)
  end
  for i = from, to do
    local value = samples:byte(2 * i + 1) > (low + high) / 2
    if side ~= nil and value ~= side then changes = changes + 1 end
    side = value
  end
  return changes / 2 / ((to - from) / 22050), high - low
end
for i = 1, 24 do
  local frequency, height = heard(boci[i])
  d.check("sound of note " .. i, math.abs(frequency - boci[i][1]) < 12, frequency .. " Hz")
  d.check("height of note " .. i, height > 8, height)
end

-- The other two are drawn on the way: notes where they belong, on five lines.
local function lookAt(key, frames, look)
  d.keys(key)
  Frames(frames)
  look(d.pixelReader())
  d.keys(" ")
  d.untilTrue("menu", 200, function() return d.line() == 270 end)
end
lookAt("1", 290, function(pixel)
  local text = d.decode(MemImage:get(d.kScreen, 64 * 24))
  d.check("title", text:find("Boci, boci tarka (Hungarian folk song)", 1, true), text)
  d.check("words", text:find("Bo +ci +bo +ci +tar +ka +se +fü +le"), text)
  for line = 0, 4 do
    d.equal("line " .. line, pixel(300, 174 + 6 * line), 0)
    d.equal("under line " .. line, pixel(440, 177 + 6 * line), 222)
  end
  -- The head of C5 stands in the third space, that of E5 in the fourth: 5 half spaces above the lowest line.
  d.equal("first note", pixel(62, 88 - 15), 0)
  d.equal("second note", pixel(62 + 38, 88 - 21), 0)
  d.equal("beside it", pixel(62 + 20, 88 - 21), 222)
end)

local joy = listen("2")
local melody = {}
for _, note in ipairs(joy) do
  if note[2] > 12 then melody[#melody + 1] = note end        -- the second voice is short
end
compare("Ode to Joy", melody, "E5 E5 F5 G5 G5 F5 E5 D5 C5 C5 D5 E5 E5 D5", 1)
local elise = listen("3")
compare("Für Elise", elise, [[E5 d5 E5 d5 E5 B4 D5 C5 A4 E3 A3 C4 E4 A4 B4 E3 g3 E4 g4 B4 C5]], 1)
for i = 1, 60 do d.check("semiquaver " .. i, math.abs(elise[i][2] - 9) <= 1, elise[i][2] .. " frames") end

d.keys("0")
d.check("end", d.wait(300), "no prompt")
d.equal("screen", d.screen(), "Ready")
d.done()
