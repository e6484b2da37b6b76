-- The graphics show: what the three pictures must have at places that follow from the program.
local d = dofile((arg[0]:match("^.*/") or "") .. "../demos.lua")
d.boot()
d.typeIn("show")
d.run()
local kYellow, kMode = d.colour(14), 0x0B0B

-- Whirls: eight nests of 22 squares. The outer one of each is a full frame of 128 by 112 points, which turn
-- the other way in neighbouring places: the second square begins 12 hundredths along a side.
d.untilTrue("whirls", 1500, function() return d.line() == 920 end)
Frames(2)
d.equal("mode", MemImage[kMode], 0)
local pixel = d.pixelReader()
for row = 0, 1 do
  for column = 0, 3 do
    local left, top = 128 * column, 16 + 112 * row
    local missing = 0
    for x = left, left + 127 do
      for _, y in ipairs({top, top + 111}) do missing = missing + (pixel(x, y) ~= 0 and 0 or 1) end
    end
    for y = top, top + 111 do
      for _, x in ipairs({left, left + 127}) do missing = missing + (pixel(x, y) ~= 0 and 0 or 1) end
    end
    d.equal("frame " .. row .. column, missing, 0)
    -- 22 squares, each 0.888 times as large as the one before: 3970 along their sides, fewer points when slanting.
    local lit = 0
    for y = top, top + 111 do
      for x = left, left + 127 do lit = lit + (pixel(x, y) ~= 0 and 1 or 0) end
    end
    d.check("lines " .. row .. column, lit > 2500 and lit < 3970, lit .. " points")
    -- The middle of the second square's upper side; its lower one is opposite.
    local x, y = left + 63, math.floor(top + 0.5 * 0.12 * 111)
    d.check("second square " .. row .. column, pixel(x, y) + pixel(x, y - 1) + pixel(x, y + 1) > 0, "not there")
    -- The corner on the upper side: at 15 from the left, at 15 from the right in the places that turn back.
    local turn = {}
    for _, from in ipairs({13, 110}) do
      for at = from, from + 4 do turn[from] = turn[from] or pixel(left + at, top + 3) ~= 0 end
    end
    local back = (row + column) % 2 == 1
    d.check("sense of turning " .. row .. column, turn[13] == not back and turn[110] == back, "the other one")
    d.check("space above it " .. row .. column, pixel(x, top + 3) == 0, "not there")
  end
end
d.check("text", d.row(0):find("2 colours, 512 x 240 points"), d.row(0))

-- The day: areas keep their places, colours follow the time of day. 75 units each.
d.keys(" ")
d.untilTrue("landscape", 300, function() return MemImage[kMode] == 1 end)
d.untilTrue("morning", 1000, function() return d.line() == 920 end)
local kDay = {{9, 9, 2, 10, 1}, {11, 11, 4, 14, 1}, {13, 13, 4, 15, 9}, {13, 13, 12, 15, 9}, {13, 13, 4, 14, 1},
              {11, 11, 2, 14, 1}, {10, 10, 0, 14, 3}, {3, 3, 0, 10, 1}, {0, 0, 4, 15, 1}}
for hour, colours in ipairs(kDay) do
  Frames(hour == 1 and 35 or 75)
  local border
  pixel, border = d.pixelReader()
  -- The 4-colour mode has the same three levels in each channel.
  for _, place in ipairs({{"sky", 20, 40, 2}, {"sky right", 500, 60, 2}, {"land", 256, 157, 3}, {"land left", 40, 155, 3},
                          {"sun", 180, 88, 4}, {"sun's edge", 180 - 56, 88, 4}, {"sea", 20, 230, 5}, {"sea right", 500, 170, 5},
                          {"boat", 390, 210, 3}, {"sail", 402, 196, 4}}) do
    d.equal(place[1] .. " at hour " .. hour, pixel(place[2], place[3]), d.colour(colours[place[4]]))
  end
  d.equal("border at hour " .. hour, border(100), d.colour(colours[1]))
end
local light = 0
for y = 164, 236, 3 do light = light + (pixel(180, y) == d.colour(15) and 1 or 0) end
d.equal("light on the water", light, 25)

-- Ribbons: alike in the four quarters, in many colours, and growing.
d.untilTrue("ribbons", 300, function() return MemImage[kMode] == 2 end)
local function count()
  pixel = d.pixelReader()
  local lit, colours, kinds, unlike = 0, {}, 0, 0
  for y = 22, 119 do
    for x = 0, 63 do
      local here = pixel(4 * x, y)
      if here ~= 0 then lit = lit + 1 end
      colours[here] = true
      if pixel(4 * (127 - x), y) ~= here then unlike = unlike + 1 end
      if pixel(4 * x, 239 - y) ~= here then unlike = unlike + 1 end
      if pixel(4 * (127 - x), 239 - y) ~= here then unlike = unlike + 1 end
    end
  end
  for _ in pairs(colours) do kinds = kinds + 1 end
  return lit, kinds, unlike
end
Frames(150)
local early = count()
Frames(400)
local late, kinds, unlike = count()
d.check("growing", early > 300 and late > 1.5 * early, early .. ", then " .. late .. " points")
d.check("colours", kinds >= 15, kinds)
-- Only a step of four lines that is being drawn just now may differ.
d.check("symmetry", unlike < 3 * 100, unlike .. " points differ")

-- And again from the beginning.
d.untilTrue("whirls again", 1000, function() return MemImage[kMode] == 0 end)
picd_KeyDown(0x23, 0)
Frames(4)
picd_KeyUp(0x23)
d.check("break", d.wait(100), "no prompt")
d.done()
