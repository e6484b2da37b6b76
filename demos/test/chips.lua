-- The chips' tunes as they are heard: written as wave files, read back, and each note of the score looked for in
-- the spectrum at its time. It has to be as near to equal temperament as the chip's registers can bring it.
local chips = dofile((arg[0]:match("^.*/") or "") .. "../chiptunes.lua")
local d = chips.d
local heard = dofile(d.folder .. "test/spectrum.lua")
local window, spectrum, peak, hertz = heard.window, heard.spectrum, heard.peak, heard.hertz
local kRate, kFrame = heard.kRate, heard.kFrame

-- Half of the distance of two frequencies that the registers can give at f, and what the chip rounds away.
local function byPeriod(clock, rounding)
  return function(f) return (f - clock / (clock / f + 1)) / 2 + rounding end
end
local function byNumber(scale, from)                        -- a number of from to 2 x from - 1, and an octave
  return function(f)
    local octave = math.floor(math.log(f * scale / from, 2))
    return 2 ^ octave / scale / 2
  end
end
-- voices: which of them are notes, delay: the frames after which they sound, span: those looked at (else 20),
-- solo: boxes that leave one of them alone.
local kChips = {
  {voices = {0, 1, 2}, delay = 1, allowed = byPeriod(3579545 / 32, 1)},        -- whole hertz, cut off
  -- Even hertz; in the last bars the bass is a buzz. Plucked notes fade below the drums.
  {voices = {0, 1}, delay = 1, last = 8, span = 8, allowed = byPeriod(111861, 1)},
  {voices = {0, 1, 2}, delay = 2, sides = {[0] = 1, 2, 1},
   allowed = function(f)                                    -- 511 less a number, an octave; whole hertz
     return f * f / (15625 * 2 ^ math.floor(math.log(f / 30.58 / 1.00227, 2))) / 2 + 0.6
   end},
  {voices = {0, 1, 2, 3, 4}, delay = 2, solo = {"FYM3812", "Check1"}, allowed = byNumber(21.23, 512)},
  {voices = {0, 1, 2, 3, 4, 5, 6, 7, 8}, delay = 2, solo = {"FYM2413", "Check7"}, allowed = byNumber(10.6383, 256)},
  {voices = {0, 1, 2}, delay = 4, solo = {"FSID", "Check9"}, first = 2,        -- the first bar is the sweep
   allowed = function()                                     -- half hertz; the moving width of a pulse shifts its phase
     return 0.25 + 0.5 / 17.32 + 60 * 50 / 4096 / 2
   end},
}

-- A standard wave file's samples, after its header has been checked field by field.
local function readWave(file)
  local input <close> = assert(io.open(file, "rb"))
  local bytes = input:read("a")
  local riff, size, wave, fmt, length, format, channels, rate, speed, align, bits, data, count =
    string.unpack("<c4I4c4c4I4I2I2I4I4I2I2c4I4", bytes)
  d.equal(file .. " header", table.concat({riff, wave, fmt, length, format, channels, rate, speed, align, bits, data}, " "),
          "RIFF WAVE fmt  16 1 2 22050 44100 2 8 data")
  d.equal(file .. " size", size, #bytes - 8)
  d.equal(file .. " data size", count, #bytes - 44)
  return bytes:sub(45)
end

-- Notes of a voice: name, first and last step (the one behind it).
local function notes(score, voice)
  local list, note, step = {}, nil, 0
  for _, bar in ipairs(score.bars) do
    for unit in bar[voice + 1]:gmatch("..") do
      if unit ~= ".." then
        if note then note.last = step end
        note = unit:match("^%a%d$") and {name = unit, first = step}
        list[#list + 1] = note
      end
      step = step + 1
    end
  end
  if note then note.last = step end
  return list
end

local function find(chip, score, voice, samples)
  local found = 0
  for _, note in ipairs(notes(score, voice)) do
    local bar = note.first // (#score.bars[1][1] // 2) + 1
    if bar >= (chip.first or 1) and bar <= (chip.last or #score.bars) then
      local from = (note.first * score.step + chip.delay) * kFrame
      local count = math.min((note.last - note.first) * score.step - chip.delay - 1, chip.span or 20) * kFrame
      local asked = hertz(note.name)
      local place, height = peak(window(samples, chip.sides and chip.sides[voice] or 1, from, count), count, asked)
      local allowed = chip.allowed(asked) + 0.2 * kRate / count               -- a fifth of what the time lets one tell apart
      d.check(string.format("%s, voice %d, step %d", score.title, voice, note.first),
              math.abs(place - asked) <= allowed and height > 0.2,
              string.format("%s (%.2f Hz, +-%.2f) is at %.2f Hz, %.2f high", note.name, asked, allowed, place, height))
      found = found + 1
    end
  end
  return found
end

-- Loudness of `count` samples of a side: the mean square around their mean. high: of their differences instead.
local function power(samples, side, from, count, high)
  local sum, squares = 0, 0
  for i = from + 1, from + count - 1 do
    local value = samples:byte(2 * i + side) - (high and samples:byte(2 * i - 2 + side) or 0)
    sum, squares = sum + value, squares + value * value
  end
  return squares / count - (sum / count) ^ 2
end

local function at(samples, side, from, count, f)
  return spectrum(window(samples, side, from * kFrame // 1, count * kFrame // 1), count * kFrame // 1, f)
end

local function mean(list)
  local sum = 0
  for _, value in ipairs(list) do sum = sum + value end
  return sum / #list
end

-- The correlation of two rows of numbers, -1 to 1.
local function correlation(a, b)
  local both, ofA, ofB, meanA, meanB = 0, 0, 0, mean(a), mean(b)
  for i = 1, #a do
    both, ofA, ofB = both + (a[i] - meanA) * (b[i] - meanB), ofA + (a[i] - meanA) ^ 2, ofB + (b[i] - meanB) ^ 2
  end
  return both / math.sqrt(ofA * ofB)
end

local function mono(name, samples)
  d.equal(name .. " is the same on both sides", samples:gsub("(.)(.)", "%1") == samples:gsub("(.)(.)", "%2"), true)
end

-- What each chip does best, by its number. all: the tune; alone: its voices, each by itself.
local kBest = {
  -- Drums: noise rises where the snare is struck.
  function(score, all)
    mono("sn76489", all)
    local struck, quiet = {}, {}
    for i, bar in ipairs(score.bars) do
      local drums = bar[4]:gsub("(.).", "%1")
      for step = 2, 16 do
        local level = power(all, 1, ((16 * (i - 1) + step - 1) * score.step + 1) * kFrame, 2 * kFrame, true)
        if drums:sub(step, step) == "S" then struck[#struck + 1] = level end
        if drums:sub(step - 1, step):find("[HK]%.") then quiet[#quiet + 1] = level end
      end
    end
    d.check("snares", #struck == 22 and mean(struck) > 1.4 * mean(quiet), #struck .. ": " .. mean(struck) .. " against " .. mean(quiet))
  end,
  -- The envelope: a plucked note fades, a chord trembles six times a second.
  function(score, all)
    mono("ay38910", all)
    local first, last = {}, {}
    for _, note in ipairs(notes(score, 0)) do
      if note.first < 62 then
        local from, f = note.first * score.step + 1, hertz(note.name)
        first[#first + 1], last[#last + 1] = at(all, 1, from, 4, f), at(all, 1, from + 8, 4, f)
      end
    end
    d.check("plucks", #first == 31 and mean(last) < 0.5 * mean(first), #first .. ": " .. mean(first) .. " and " .. mean(last))
    local heights = {}
    for i = 0, 499 do heights[i] = math.sqrt(power(all, 1, (4 * 16 * score.step + 10) * kFrame + i * 88, 88)) end
    local average = 0
    for i = 0, 499 do average = average + heights[i] / 500 end
    for i = 0, 499 do heights[i] = (heights[i] - average) / 250 end
    local rate = kRate / 88
    local function tremble(f) return spectrum(heights, 500, f * kRate / rate) end
    for _, other in ipairs({2, 4, 8, 10}) do
      d.check("trembling", tremble(6) > 2 * tremble(other), string.format("%.2f at 6 Hz, %.2f at %d", tremble(6), tremble(other), other))
    end
  end,
  -- Stereo: the first bar's melody is left, the last one's right; the pad goes round.
  function(score, all)
    for _, bar in ipairs({1, #score.bars}) do
      for _, note in ipairs(notes(score, bar == 1 and 0 or 1)) do
        if note.first // 16 + 1 == bar then
          local from, count = note.first * score.step + 2, (note.last - note.first) * score.step - 3
          local left, right = at(all, 1, from, count, hertz(note.name)), at(all, 2, from, count, hertz(note.name))
          local own, other = left, right
          if bar > 1 then own, other = right, left end
          d.check("side of bar " .. bar, own > 5 and other < 0.1 * own, string.format("%.2f and %.2f", own, other))
        end
      end
    end
    local left, right = {}, {}
    for i = 1, 120 do
      local from = (8 * 16 * score.step + 4) * kFrame + i * 110
      left[i], right[i] = spectrum(window(all, 1, from, 441), 441, hertz("G4")), spectrum(window(all, 2, from, 441), 441, hertz("G4"))
    end
    d.check("the pad goes round", correlation(left, right) < -0.5, correlation(left, right))
  end,
  -- Two operators: with a modulator of twice the frequency there are no even partials, with others there are.
  function(score, all, alone)
    mono("ym3812", all)
    local share = {A = {}, B = {}}
    local timbre
    for i, bar in ipairs(score.bars) do
      timbre = bar[6]:sub(1, 1)
      for _, note in ipairs(notes(score, 0)) do
        if share[timbre] and note.first // 16 + 1 == i then
          local from, f = note.first * score.step + 2, hertz(note.name)
          table.insert(share[timbre], at(alone[0], 1, from, 5, 2 * f) / at(alone[0], 1, from, 5, f))
        end
      end
    end
    d.check("partials", mean(share.A) > 0.3 and mean(share.B) < 0.1, mean(share.A) .. " and " .. mean(share.B))
  end,
  -- Nine voices: at the end each of them sounds.
  function(score, all, alone)
    mono("ym2413", all)
    for voice = 0, 8 do
      local list = notes(score, voice)
      local note = list[#list]
      local from, count = note.first * score.step + 5, (note.last - note.first) * score.step - 10
      local mixed, single = at(all, 1, from, count, hertz(note.name)), at(alone[voice], 1, from, count, hertz(note.name))
      d.check("voice " .. voice .. " in the last chord", mixed > 0.5 * single and single > 1, mixed .. " of " .. single)
    end
  end,
  -- The sweep goes up by 2 per cent in a frame; the low pass takes the bass its partials, the high pass the melody its body.
  function(score, all, alone)
    mono("sid6581", all)
    for frame = 12, 80, 4 do
      local f = 2266 / 17.32 * 1.02 ^ frame
      local place = peak(window(alone[2], 1, frame * kFrame, 4 * kFrame), 4 * kFrame, f * 1.02 ^ 3)
      d.check("sweep in frame " .. frame, place > f * 1.02 ^ -1 and place < f * 1.02 ^ 6, place .. " Hz, begun at " .. f)
    end
    local filter, third, height = "O", {O = {}, L = {}, H = {}}, {O = {}, L = {}, H = {}}
    for i, bar in ipairs(score.bars) do
      local command = bar[4]:sub(1, 1)
      filter = third[command] and command or filter
      local function each(voice, work)
        for _, note in ipairs(notes(score, voice)) do
          if i > 1 and note.first // 16 + 1 == i then work(note.first * score.step + 4, hertz(note.name)) end
        end
      end
      each(1, function(from, f)
        table.insert(third[filter], at(alone[1], 1, from, 6, 8 * f) / at(alone[1], 1, from, 6, f))
      end)
      each(0, function(from, f) table.insert(height[filter], at(alone[0], 1, from, 6, f)) end)
    end
    d.check("low pass", mean(third.L) < 0.7 * mean(third.O), mean(third.L) .. " against " .. mean(third.O))
    d.check("high pass", mean(height.H) < 0.8 * mean(height.O), mean(height.H) .. " against " .. mean(height.O))
  end,
}

chips.start()
for number, name in ipairs(chips.names) do
  local before
  local function play(file)
    local samples
    samples, before = chips.play(number, before)
    chips.save(file, samples)
    local read = readWave(file)
    d.equal(file .. " samples", read == samples, true)
    os.remove(file)
    return read
  end
  local chip, score = kChips[number], chips.score(number)
  local samples = play(name .. ".wav")
  local steps = #score.bars * #score.bars[1][1] // 2
  local frames = #samples // 2 / kFrame
  d.check(name .. " keeps its time", math.abs(frames - 10 - steps * score.step) < 3 * score.step, frames .. " frames")
  local found, alone = 0, {}
  for _, voice in ipairs(chip.voices) do
    if chip.solo then
      for i = 0, #chip.voices - 1 do _G[chip.solo[1]][chip.solo[2]][i] = i == voice end
      alone[voice] = play(name .. voice .. ".wav")
    end
    found = found + find(chip, score, voice, alone[voice] or samples)
  end
  kBest[number](score, samples, alone)
  print(score.title, found .. " notes")
end

-- The window's "Record": the file has the last block that was mixed, to the byte, while its chip plays.
d.keys("3")
Frames(60)
Press("Fsaa", "Command1")
for block = 1, 20 do
  Sound()
  local mixed
  repeat
    Frames(1)
    mixed = Sound()
  until #mixed > 0
  d.equal("recorded block " .. block, readWave("record.wav") == mixed, true)
  d.check("recorded block " .. block .. " is heard", mixed:find("[^\x80]"), "silence")
end
Press("Fsaa", "Command1")
os.remove("record.wav")
os.remove("saa.dat")
d.done()
