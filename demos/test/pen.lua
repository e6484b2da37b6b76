-- Drawing with the light pen. This program is typed on the keyboard, key by key.
local d = dofile((arg[0]:match("^.*/") or "") .. "../demos.lua")
d.boot()
local lines, numbers = d.source("pen")
d.equal("keys", Type(table.concat(lines, "\n") .. "\n"), #table.concat(lines, "\n") + 1)
d.wait(100)
local line, listed = d.difference("pen")
d.check("typed", not line, tostring(line) .. " is listed as " .. tostring(listed))
d.run()
d.untilTrue("instructions", 200, function() return d.line() == 170 end)
d.check("instructions", d.screen():find("LIGHT PEN DRAWER") and d.screen():find("Hold SPACE: draw"), d.screen())

local pixel, border
local function look()
  Frames(2)
  pixel, border = d.pixelReader()
end
local function pen(x, y)
  picd_MouseMove(x, y)
  Frames(3)
end
local function space(down)
  if down then picd_KeyDown(0x20, 0) else picd_KeyUp(0x20) end
  Frames(12)
end
local function take(colour)
  pen(32 * colour + 12, 8)
  space(true)
  space(false)
end
local function stroke(x1, y1, x2, y2)
  pen(x1, y1)
  space(true)
  for part = 0, 20 do pen(x1 + (x2 - x1) * part // 20, y1 + (y2 - y1) * part // 20) end
  Frames(20)
  space(false)
end
-- Is the column of 32 device pixels at x, y (in device pixels) all background?
local function empty(x1, y1, x2, y2)
  for y = y1 // 2, y2 // 2 do
    for x = x1, x2, 4 do
      if pixel(x, y) ~= 0 then return false end
    end
  end
  return true
end

d.keys(" ")
d.untilTrue("sheet", 300, function() return d.line() and d.line() >= 310 and d.line() <= 350 end)
look()
for colour = 0, 15 do
  local shown = colour == 8 and 0 or d.colour(colour)
  if colour == 7 then shown = pixel(32 * 7 + 12, 4) end     -- light grey, between the levels
  d.equal("colour " .. colour, pixel(32 * colour + 12, 4), shown)
end
d.check("empty sheet", empty(0, 20, 511, 479), "not empty")

-- A straight stroke in a colour taken with the pen: along the middle of the cells, 20 device rows each.
for _, case in ipairs({{12, 100}, {9, 220}, {14, 340}}) do
  local colour, y = case[1], case[2]
  take(colour)
  look()
  d.equal("border", border(100), d.colour(colour))
  stroke(80, y + 3, 400, y + 3)
  look()
  local missing = 0
  for x = 88, 392, 4 do missing = missing + (pixel(x, (y + 10) // 2) == d.colour(colour) and 0 or 1) end
  d.equal("stroke at " .. y, missing, 0)
  d.check("clean around " .. y, empty(0, y - 30, 511, y + 8) and empty(0, y + 12, 511, y + 50), "not empty")
end

-- The pen moves on without the space bar: nothing is drawn.
pen(300, 420)
pen(100, 440)
look()
d.check("pen up", empty(0, 400, 511, 479), "drawn")

-- Four mirrored strokes after a clean sheet; a frame around the pen is filled by F.
d.keys("c")
Frames(30)
look()
d.check("cleared", empty(0, 20, 511, 479), "not empty")
d.keys("m")
Frames(10)
take(10)
stroke(100, 100, 100, 180)
look()
for _, x in ipairs({100, 511 - 100}) do
  for _, y in ipairs({140, 499 - 140}) do
    d.equal("mirrored at " .. x .. "," .. y, pixel(x, y // 2), d.colour(10))
  end
end
d.keys("m")
Frames(10)
d.keys("c")
Frames(30)
take(13)
stroke(100, 105, 300, 105)
stroke(300, 105, 300, 305)
stroke(300, 305, 100, 305)
stroke(100, 305, 100, 105)
take(6)
pen(200, 205)
d.keys("f")
Frames(150)
look()
d.equal("filled", pixel(200, 60), d.colour(6))
d.equal("filled to the corner", pixel(112, 148), d.colour(6))
d.equal("edge", pixel(200, 55), d.colour(13))
d.check("outside", empty(0, 20, 95, 479) and empty(320, 20, 511, 479), "filled too")
d.keys("q")
d.check("end", d.wait(200), "no prompt")
d.done()
