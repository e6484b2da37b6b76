-- Points, lines, circles and filled areas in the three modes, against a model of the picture.
local s = dofile((arg[0]:match("^.*/") or "") .. "system_machine.lua")
s.boot()

local mode, width, ink, paper
local grid                            -- [y * width + x]: colour that the model expects

local function start(m)
  mode, width = m, 512 >> m
  s.call(s.gfx_mode, {A = m})
  ink, paper = 1, 0
  if m == 2 then ink, paper = 15, 1 end
  grid = {}
  for i = 0, 240 * width - 1 do grid[i] = paper end
end

local function setInk(colour)
  s.call(s.gfx_ink, {A = colour})
  ink = colour
end

-- Moves the picture's start, as text does, and clears all of it.
local function scrolled(rows)
  s.call(s.con_locate, {DE = 23 * 256})
  for _ = 1, rows do s.call(s.con_out, {A = 13}) end
  for i = 0, 240 * width - 1 do grid[i] = paper end
end

local function dot(x, y)
  if x >= 0 and x < width and y >= 0 and y < 240 then grid[y * width + x] = ink end
end

-- The colours of a byte's pixels, by mode and byte.
local pixels = {}
for m = 0, 2 do
  pixels[m] = {}
  for byte = 0, 255 do
    local row = string.char(byte)
    local colours = {}
    for x = 0, (8 >> m) - 1 do colours[x] = s.colour(row, x, 0, m) end
    pixels[m][byte] = colours
  end
end

local function same(what)
  local picture, table, at = s.picture(), pixels[mode], 0
  local last = (8 >> mode) - 1
  for i = 1, #picture do
    local colours = table[picture:byte(i)]
    for x = 0, last do
      if colours[x] ~= grid[at] then
        error(string.format("%s, mode %d: pixel %d, %d is %d, expected %d", what, mode, at % width, at // width,
                            colours[x], grid[at]), 2)
      end
      at = at + 1
    end
  end
end

local function plot(x, y)
  s.call(s.gfx_plot, {DE = x, BC = y})
  dot(x, y)
end

-- The pixel nearest to a place on a line, or of those that are equally near (to a millionth) what is drawn.
local function nearest(x, y, picture)
  local drawn = false
  for i = 0, 3 do
    local px = math.floor(x + 0.5 + (i % 2 == 0 and -1e-6 or 1e-6))
    local py = math.floor(y + 0.5 + (i < 2 and -1e-6 or 1e-6))
    if px >= 0 and px < width and py >= 0 and py < 240 and s.colour(picture, px, py) == ink then
      dot(px, py)
      drawn = true
    end
  end
  if not drawn then dot(math.floor(x + 0.5), math.floor(y + 0.5)) end
end

-- A line is one pixel for each step of its longer side, the nearest to the true line.
local function line(x1, y1, x2, y2)
  s.call(s.gfx_plot, {DE = x1, BC = y1})
  s.call(s.gfx_line, {DE = x2, BC = y2})
  local picture = s.picture()
  local long = math.max(math.abs(x2 - x1), math.abs(y2 - y1))
  for i = 0, long do
    local x, y = x1, y1
    if long > 0 then x, y = x1 + (x2 - x1) * i / long, y1 + (y2 - y1) * i / long end
    if x > -1 and x < width and y > -1 and y < 240 then nearest(x, y, picture) end
  end
end

-- A circle: in each eighth, the line nearest to the true circle; across, a line is 2, 1 or half a pixel.
local function circle(cx, cy, r)
  s.call(s.gfx_circle, {DE = cx, BC = cy, HL = r})
  local function quarters(dx, dy)
    for _, sx in ipairs{-1, 1} do
      for _, sy in ipairs{-1, 1} do
        if mode == 0 then
          dot(cx + sx * 2 * dx, cy + sy * dy)
          dot(cx + sx * 2 * dx + 1, cy + sy * dy)
        else
          dot(cx + sx * (dx // mode), cy + sy * dy)
        end
      end
    end
  end
  for x = 0, r do
    local y = math.floor(math.sqrt(r * r - x * x) + 0.5)
    if y < x then break end
    quarters(x, y)
    quarters(y, x)
  end
end

-- An area is what can be reached by steps up, down, left and right over pixels of one colour.
local function paint(x, y)
  s.call(s.gfx_paint, {DE = x, BC = y})
  if x < 0 or x >= width or y < 0 or y >= 240 then return end
  local target = grid[y * width + x]
  if target == ink then return end
  local todo, count = {y * width + x}, 1
  grid[todo[1]] = ink
  while count > 0 do
    local at = todo[count]
    count = count - 1
    local column = at % width
    for i = 1, 4 do
      local to = i == 1 and at - 1 or i == 2 and at + 1 or i == 3 and at - width or at + width
      local possible = i > 2 or i == 1 and column > 0 or i == 2 and column < width - 1
      if possible and grid[to] == target then
        grid[to] = ink
        count = count + 1
        todo[count] = to
      end
    end
  end
end

math.randomseed(4, 7)
for m = 0, 2 do
  start(m)
  local last, colours = width - 1, ({[0] = 2, 4, 16})[m]
  if m == 1 then setInk(2) end

  for _, p in ipairs{{0, 0}, {last, 0}, {0, 239}, {last, 239}, {7, 100}, {8, 100}, {-1, 5}, {width, 5}, {5, 240},
                     {5, -1}, {32767, 32767}, {-32768, -32768}} do
    plot(p[1], p[2])
  end
  for _ = 1, 30 do plot(math.random(0, last), math.random(0, 239)) end
  same("points")

  -- gfx_point gives the colours back, 255 outside.
  for colour = 0, colours - 1 do
    setInk(colour)
    plot(9 + colour, 50)
    s.call(s.gfx_point, {DE = 9 + colour, BC = 50})
    s.equal(Z80State.A, colour, "colour of a point")
  end
  for _, p in ipairs{{-1, 0}, {width, 0}, {0, -1}, {0, 240}, {-32768, 32767}} do
    s.call(s.gfx_point, {DE = p[1], BC = p[2]})
    s.equal(Z80State.A, 255, "outside")
  end

  -- Lines: all directions, one point, across the edges, from and to far away.
  setInk(colours - 1)
  scrolled(27)
  for _, l in ipairs{{10, 10, 10, 10}, {20, 20, 60, 20}, {60, 30, 20, 30}, {5, 40, 5, 90}, {9, 90, 9, 40},
                     {30, 30, 70, 70}, {70, 75, 30, 35}, {30, 80, 70, 40}, {0, 0, last, 239}, {last, 3, 0, 230},
                     {-20, 100, 40, 130}, {last - 10, 200, last + 30, 190}, {60, -30, 70, 300}, {-300, -300, -5, 50},
                     {-2000, 120, 2000, 140}, {50, -3000, 60, 3000}, {-32768, 0, 32767, 239}} do
    line(table.unpack(l))
  end
  for _ = 1, 25 do
    line(math.random(-50, width + 50), math.random(-50, 290), math.random(-50, width + 50), math.random(-50, 290))
  end
  same("lines")

  -- Circles.
  start(m)
  for _, c in ipairs{{width // 2, 120, 100}, {width // 2, 120, 1}, {20, 20, 0}, {width // 2, 120, 37}, {0, 0, 60},
                     {last, 239, 90}, {-30, 120, 50}, {width // 2, 700, 500}, {width // 2, -5000, 5100}} do
    circle(table.unpack(c))
  end
  s.call(s.gfx_circle, {DE = 100, BC = 100, HL = 8192})
  s.call(s.gfx_circle, {DE = 100, BC = 100, HL = -5})
  same("circles")

  -- Areas: within the circles, then between many lines, from a picture that wraps in the video RAM.
  if m > 0 then setInk(3) end
  paint(width // 2 + 40 // (m + 1), 120)
  paint(width // 2, 119)
  paint(-1, 100)
  paint(100, 240)
  same("areas in circles")
  start(m)
  scrolled(26)
  for _ = 1, 40 do line(math.random(0, last), math.random(0, 239), math.random(0, last), math.random(0, 239)) end
  for _ = 1, 60 do plot(math.random(0, last), math.random(0, 239)) end
  same("lines before painting")
  if m > 0 then setInk(2) end
  for _ = 1, 30 do paint(math.random(0, last), math.random(0, 239)) end
  same("areas between lines")

  -- A comb of narrow walls, all of it one area: many seeds.
  start(m)
  for x = 2, last - 2, 4 do line(x, x % 8 == 2 and 0 or 1, x, x % 8 == 2 and 238 or 239) end
  if m > 0 then setInk(3) end
  paint(0, 0)
  same("comb")
end

-- A line goes on from the last point of the one before.
start(1)
s.call(s.gfx_plot, {DE = 10, BC = 10})
s.call(s.gfx_line, {DE = 50, BC = 10})
s.call(s.gfx_line, {DE = 50, BC = 40})
for x = 10, 50 do dot(x, 10) end
for y = 10, 40 do dot(50, y) end
same("two lines")

-- A break key ends the painting.
s.call(s.gfx_mode, {A = 0})
local done = s.begin(s.gfx_paint, {DE = 0, BC = 0})
Frames(2)
MemImage[s.kBreakKey] = 3
s.is(s.ends(done, 3), "painting goes on behind a break key")
local picture = s.picture()
s.equal(s.colour(picture, 0, 0), 1, "begun")
s.equal(s.colour(picture, 0, 239), 0, "not ended")
MemImage[s.kBreakKey] = 0
s.clean()
