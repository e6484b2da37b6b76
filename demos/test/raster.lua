-- Colour bars: every row of the picture and of the border has the colour that a drum of six bars gives it.
local d = dofile((arg[0]:match("^.*/") or "") .. "../demos.lua")
d.boot()
d.typeIn("raster")
d.run()
d.untilTrue("machine code", 1000, function() return d.line() == 260 end)
Frames(10)

-- The drum by itself: bar i stands 43 * i of 256 parts of a turn further on than the first one. The near half
-- hides the far one, which has no bright rows.
local kPhase = 0x7CFD
local kColours = {0x4, 0x14, 0x10, 0x11, 0x1, 0x5}           -- bit 0 blue, 2 red, 4 green; 6 bright, 0x55 white
local function mixed(register)
  local level = register & 0x40 ~= 0 and 2 or 1
  return level * (100 * (register >> 2 & 1) + 10 * (register >> 4 & 1) + (register & 1))
end
local function drum(phase)
  local rows = {}
  for row = 1, 240 do rows[row] = 0 end
  for near = 0, 1 do
    for i, colour in ipairs(kColours) do
      local angle = (phase + 43 * (i - 1)) % 256
      if angle // 128 == near then
        local down = math.min(angle, 256 - angle)            -- 0 at the top, 128 at the bottom
        local quarter = math.min(down, 128 - down)
        local y = math.floor(122.5 - 98 * math.cos(quarter * math.pi / 128))
        if down > 64 then y = 244 - y end
        for j = 0, 14 do
          local edge = math.min(j, 14 - j)
          local register = colour
          if near == 0 and edge < 2 then register = 0 end
          if near == 1 and edge > 2 then register = colour + 0x40 end
          if near == 1 and edge > 5 then register = 0x55 end
          rows[y + j] = mixed(register)
        end
      end
    end
  end
  return rows
end

-- Column 0 of the picture is background in all rows.
local function differences(rows)
  local pixel, border = d.pixelReader()
  local picture, edge = 0, 0
  for row = 1, 240 do
    if pixel(0, row - 1) ~= rows[row] then picture = picture + 1 end
    if border(row - 1) ~= rows[row] then edge = edge + 1 end
  end
  return picture, edge
end

-- The frame shows the phase set in the frame before, or the drum has been moved on already.
local late = differences(drum(MemImage[kPhase])) == 0 and 0 or -1
local seen = {}
for frame = 1, 300 do
  Frames(1)
  local phase = (MemImage[kPhase] + late) % 256
  seen[phase] = true
  local picture, edge = differences(drum(phase))
  d.equal("picture rows of frame " .. frame, picture, 0)
  d.equal("border rows of frame " .. frame, edge, 0)
end
local phases = 0
for _ in pairs(seen) do phases = phases + 1 end
d.equal("phases seen", phases, 256)

-- The letters stand in front of the bars.
local pixel = d.pixelReader()
local white = 0
for y = 96, 145 do
  for x = 0, 255 do white = white + (pixel(2 * x, y) == 222 and 1 or 0) end
end
d.check("big letters", white > 2500 and white < 9000, white .. " white points")

-- A key ends it, and the machine is as before.
local before = d.word(0x0B04)
Frames(50)
d.equal("clock", d.word(0x0B04) - before, 50)
d.keys(" ")
d.check("end", d.wait(200), "no prompt")
d.equal("cursor interrupt's place", CrtcRegs[14] * 256 + CrtcRegs[15], 0x0F80)
d.equal("screen", d.screen(), "Ready")
pixel = d.pixelReader()
d.equal("paper", pixel(0, 200), d.colour(1))
d.done()
