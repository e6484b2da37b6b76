-- PRINT USING with random fields and numbers, against a model of its rules.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()
math.randomseed(12, 5)

-- The digits of |x| and the place of the point in them, rounded half up at `places` behind it from twelve digits.
local function digits(x, places)
  local text, exponent = string.format("%.11e", math.abs(x)):match("^(%S+)e(%S+)$")
  local all = {}
  for digit in text:gsub("%.", ""):gmatch("%d") do all[#all + 1] = tonumber(digit) end
  local point = x == 0 and 0 or math.tointeger(tonumber(exponent)) + 1
  local keep = point + places
  if keep < 0 or x == 0 then return {}, point end
  if keep < #all then
    local up = all[keep + 1] >= 5
    for i = #all, keep + 1, -1 do all[i] = nil end
    local i = keep
    while up and i >= 1 do
      all[i] = all[i] + 1
      up = all[i] == 10
      if up then all[i] = 0 end
      i = i - 1
    end
    if up then
      table.insert(all, 1, 1)
      point = point + 1
    end
  end
  return all, point
end

-- field: whole (places before the point), parts (behind, nil without a point), comma, plus, behind, dollar, star.
local function model(f, x)
  local all, point = digits(x, f.parts or 0)
  local sign = x < 0 and "-" or f.plus and "+" or ""
  local trail = ""
  if f.behind then
    trail = x < 0 and "-" or f.behind == "+" and "+" or " "
    sign = ""
  end
  local whole = ""
  for i = 1, math.max(point, 0) do
    if f.comma and i > 1 and (point - i + 1) % 3 == 0 then whole = whole .. "," end
    whole = whole .. (all[i] or 0)
  end
  local width = f.whole + (f.plus and 1 or 0)
  local text = sign .. (f.dollar and "$" or "")
  if whole == "" and #text < width then whole = "0" end
  text = text .. whole
  text = #text > width and "%" .. text or (f.star and "*" or " "):rep(width - #text) .. text
  if f.parts then
    text = text .. "."
    for i = 1, f.parts do
      local at = point + i
      text = text .. (at >= 1 and all[at] or 0)
    end
  end
  return text .. trail
end

local function field()
  local f, text = {whole = 0}, ""
  if math.random(5) == 1 then f.plus, text = true, "+" end
  local kind = math.random(8)
  if kind == 1 then f.dollar, f.whole, text = true, 2, text .. "$$"
  elseif kind == 2 then f.star, f.whole, text = true, 2, text .. "**"
  elseif kind == 3 then f.star, f.dollar, f.whole, text = true, true, 3, text .. "**$" end
  local places = math.random(1, 7)
  f.whole, text = f.whole + places, text .. ("#"):rep(places)
  if math.random(4) == 1 then f.comma, f.whole, text = true, f.whole + 1, text .. "," end
  if math.random(3) > 1 then
    f.parts = math.random(0, 4)
    text = text .. "." .. ("#"):rep(f.parts)
  end
  if not f.plus and math.random(5) == 1 then
    f.behind = math.random(2) == 1 and "+" or "-"
    text = text .. f.behind
  end
  return f, text
end

for _ = 1, 300 do
  local f, text = field()
  local list, wanted = {}, ""
  for i = 1, 3 do
    local x = math.random(-99999, 99999) / 10 ^ math.random(0, 5)
    if math.random(8) == 1 then x = 0 elseif math.random(6) == 1 then x = x * 1000 end
    x = tonumber(string.format("%.9g", x))
    list[i] = string.format("%.9g", x)
    wanted = wanted .. model(f, x) .. "/"
  end
  local line = '?using"' .. text .. '/";' .. table.concat(list, ";")
  b.equal(line, (b.command(line):gsub("\n", "")), (wanted:gsub("^%s+$", "")))
end
b.done()
