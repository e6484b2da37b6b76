-- The sources in demos/asm, as cassette files and in the assembler's window: asm.lua FILES SOURCES
local d = dofile((arg[0]:match("^.*/") or "") .. "../demos.lua")
local kRows, kRowBytes, kVideo = 240, 64, 0x10000
local kStart = 10000

-- In the assembler's window: opened, compiled, started.
local function runByWindow(name)
  Click("xOpen")
  asse.Text16 = arg[2] .. "/" .. name .. ".asm"
  Press("asse", "Command14")
  Press("asse", "Command1")
  d.check(name .. " compiles", asse.Text13:find("^Completed"), asse.Text13)
  Press("asse", "Command6")
end

-- By BASIC's RUN, or by the window's.
local function begin(name, byWindow)
  MachineInit()
  d.boot()
  if byWindow then
    runByWindow(name)
  else
    LoadCAS(arg[1] .. "/" .. name .. ".cas")
    d.run()
  end
  d.untilTrue(name .. " does not start", 500, function() return Z80State.PC >= kStart and Z80State.PC < kStart + 1000 end)
end

-- A key leads back to BASIC's prompt.
local function finish(name)
  d.keys(" ")
  d.check(name .. " ends", d.wait(300), "no prompt")
  d.check(name .. "'s prompt", d.screen():find("Ready", 1, true), d.screen())
end

local function bits(bytes)
  return (bytes:gsub(".", function(byte)
    local text = ""
    for bit = 7, 0, -1 do text = text .. (byte:byte() >> bit & 1) end
    return text
  end))
end

-- Each row of points of text row 11 moves by a point to the left in a frame; all others are empty.
local function scroller()
  local function text()
    local rows = {}
    for row = 110, 119 do rows[#rows + 1] = bits(MemImage:get(kVideo + row * kRowBytes, kRowBytes)) end
    return rows
  end
  Frames(20)
  local before = text()
  d.check("text", table.concat(before):find("1"), "an empty row")
  for frame = 1, 512 do
    Frames(1)
    local now = text()
    for i, row in ipairs(now) do
      local moved = before[i]:sub(2) .. before[i]:sub(1, 1)
      if row ~= moved then d.check("row " .. i .. " in frame " .. frame, false, "not moved by a point") end
    end
    before = now
  end
  local others = MemImage:get(kVideo, 110 * kRowBytes) .. MemImage:get(kVideo + 120 * kRowBytes, 120 * kRowBytes)
  d.equal("other rows", others:find("[^\0]"), nil)
end

-- Bars of 32 rows; the phase is that of the frame whose picture is seen.
local function raster()
  local kColours = {4, 20, 16, 17, 1, 5, 21, 0}
  local function level(register, bit)
    if register >> bit & 1 == 0 then return 0 end
    return register & 0x40 ~= 0 and 2 or 1
  end
  local function row(phase, y)
    if y >= 219 then return 0 end                            -- the picture's first row has number 1, not 0
    local place = (phase + y) % 256
    local register = kColours[place // 32 + 1]
    if place % 32 >= 8 and place % 32 < 24 then register = register | 0x40 end
    return 100 * level(register, 2) + 10 * level(register, 4) + level(register, 0)
  end
  Frames(20)
  local phase
  for frame = 1, 300 do
    Frames(1)
    local pixel = d.pixelReader()
    if not phase then
      for try = 0, 255 do
        local fits = true
        for y = 0, kRows - 1 do fits = fits and pixel(0, y) == row(try, y) end
        if fits then phase = try end
      end
      d.check("bars", phase, "no phase fits the picture")
      if not phase then return end
    else
      phase = (phase - 1) % 256
      local wrong = 0
      for y = 0, kRows - 1 do wrong = wrong + (pixel(0, y) == row(phase, y) and 0 or 1) end
      if wrong > 0 then d.equal("wrong rows of frame " .. frame, wrong, 0) end
    end
  end
  local pixel, white = d.pixelReader(), 0
  for y = 100, 109 do
    for x = 0, 511 do white = white + (pixel(x, y) == 222 and 1 or 0) end
  end
  d.check("text", white > 200, white .. " white points")
end

-- Notes of eight frames that fade by a step in each.
local function sound()
  local kTune = {261.6, 329.6, 392.0, 329.6, 349.2, 440.0, 523.3, 440.0}
  local last
  d.untilTrue("no tone", 100, function()
    local _, volume = d.tone()
    return volume == 15
  end)
  for i, wanted in ipairs(kTune) do
    for frame = 0, 7 do
      local frequency, volume = d.tone()
      d.check("note " .. i, frequency and math.abs(frequency - wanted) < 0.003 * wanted, tostring(frequency))
      d.equal("volume of note " .. i, volume, 15 - frame)
      Frames(1)
    end
  end
  d.untilTrue("no rest", 300, function() return not d.tone() end)
  d.untilTrue("not once more", 900, function()
    local frequency = d.tone()
    local again = last and frequency and math.abs(frequency - 261.6) < 0.5 and last == "rest"
    last = frequency and "tone" or "rest"
    return again
  end)
end

for name, check in pairs({scroller = scroller, raster = raster, sound = sound}) do
  for _, byWindow in ipairs({false, true}) do
    begin(name, byWindow)
    check()
    finish(name)
  end
end
d.equal("silence", (d.tone()), nil)
d.done()
