-- The game: played by keys, checked by what the picture shows and the machine sounds.
local d = dofile((arg[0]:match("^.*/") or "") .. "../demos.lua")
d.boot()
d.typeIn("snake")
local kField, kHead, kWay, kTicks = 0x7400, 0x7190, 0x7195, 0x0B04
local kWall, kApple, kCoin = 1, 2, 3
local kOffsets = {[0] = 1, -1, -32, 32}
local kKeys = {[0] = "\x1D", "\x1C", "\x1E", "\x1F"}         -- right, left, up, down

local function cell(index) return MemImage[kField + index] end
local function head() return d.word(kHead) - kField end
local function find(value)
  for index = 64, 959 do
    if cell(index) == value then return index end
  end
end
local function count(low, high)
  local number = 0
  for index = 64, 959 do
    if cell(index) >= low and cell(index) <= high then number = number + 1 end
  end
  return number
end
-- The points as the user sees them, from the top row of text.
local function points() return tonumber(d.row(0):match("^ *(%d+)")) end
local function level() return tonumber(d.row(0):match("L (%d+)")) end

-- How many of a cell's 4 by 8 points have a colour, 16 of them each.
local function shown(index, colour)
  local pixel = d.pixelReader()
  local number = 0
  for y = 0, 7 do
    for x = 0, 3 do
      if pixel(index % 32 * 16 + 4 * x, index // 32 * 8 + y) == d.colour(colour) then number = number + 1 end
    end
  end
  return number
end

-- The title: the name in big letters, in its walls.
d.run()
d.untilTrue("title", 1000, function() return d.line() == 210 end)
Frames(2)
d.equal("title", d.screen():gsub("\n+", "/"), "/  Eat and grow/  Arrows steer/  SPACE starts/  Best 0")
d.equal("walls", count(kWall, kWall), 2 * 32 + 2 * 26)
d.equal("cells of the letters and of the snake below", count(4, 7), 57 + 7)
d.check("a letter", shown(32 * 6 + 5, 12) >= 20, "the S is not green")
d.check("wall", shown(64, 7) + shown(64, 8) > 24, "no wall in the corner")
Frames(60)
d.equal("waits", d.line(), 210)

d.keys(" ")
d.untilTrue("game", 300, function() return cell(835) >= 8 end)
d.untilTrue("three tones", 100, function() return d.line() == 470 end)
d.equal("points at the start", points(), 0)
d.equal("level", level(), 1)
d.check("lives", shown(25, 14) > 16 and shown(27, 14) > 16 and shown(29, 14) > 16, "three heads above")
d.equal("one apple", count(kApple, kApple), 1)

-- Straight on: a cell in 6 units of 20 ms.
local from, time = head(), d.word(kTicks)
d.untilTrue("ten cells", 200, function() return head() >= from + 10 end)
local units = d.word(kTicks) - time
d.check("speed", units >= 54 and units <= 62, units .. " units for ten cells")
d.check("head", shown(head(), 14) > 16, "no yellow head")
d.check("body", shown(head() - 1, 12) > 16, "no green body")
Frames(2)
d.equal("length", count(4, 11), 5)

-- A player who goes straight to the apple, and round what is in the way.
local function play(index)
  if MemImage[d.kHead] ~= MemImage[d.kTail] then return end
  local goal = find(kCoin) or find(kApple)
  if not goal then return end
  local way = MemImage[kWay]
  local wishes = {}
  local across, along = goal % 32 - index % 32, goal // 32 - index // 32
  if across ~= 0 then wishes[1] = across > 0 and 0 or 1 end
  if along ~= 0 then wishes[#wishes + 1] = along > 0 and 3 or 2 end
  for any = 0, 3 do wishes[#wishes + 1] = any end
  for _, wish in ipairs(wishes) do
    local there = cell(index + kOffsets[wish])
    if wish ~= way ~ 1 and (there == 0 or there == kApple or there == kCoin) then
      if wish ~= way then d.keys(kKeys[wish]) end
      return
    end
  end
end

local heard, best = {}, 0
for frame = 1, 6000 do
  Frames(1)
  local frequency = d.tone()
  if frequency then heard[math.floor(frequency / 10 + 0.5) * 10] = true end
  if points() and points() > best then
    d.check("points grow", points() - best == 10 or points() - best == 50 or points() - best == 20,
            best .. " to " .. points())
    best = points()
    d.untilTrue("a new apple", 100, function() return count(kApple, kApple) == 1 end)
  end
  if best >= 120 then break end
  if d.line() == 470 then play(head()) end
end
d.check("points", best >= 120, best)
d.check("tone of an apple", heard[880], "880 Hz not heard")
d.check("the snake has grown", count(4, 11) >= 12, count(4, 11) .. " cells")
d.check("it is seen", shown(head(), 14) > 16, "no head")

-- No more keys: it meets a wall or itself until no life is left, and the game is over. Each time eight tones
-- fall, the first of them from the tone before. In the row above, every second cell from 25 to 29 is a life.
local lives = 0
for index = 25, 29, 2 do lives = lives + (cell(index) == 8 and 1 or 0) end
local border, falling = {}, 0
local last
for _ = 1, 3000 do
  Frames(1)
  border[PortShadow[0]] = true
  local frequency = d.tone()
  if frequency and last and frequency < last - 30 then falling = falling + 1 end
  last = frequency or last
  if d.screen():find("GAME OVER") then break end
end
d.check("game over", d.screen():find("GAME OVER"), d.screen())
d.check("red border flashes", border[0x88], "no")
d.equal("falling tones", falling, 8 * lives)
d.untilTrue("title again", 500, function() return d.line() == 210 end)
d.check("best", tonumber(d.screen():match("Best (%d+)")) >= best, d.screen())
d.done()
