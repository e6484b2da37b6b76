-- The examples of docs/sound.md: typed as they stand, each plays what the text behind it says.
local d = dofile((arg[0]:match("^.*/") or "") .. "../demos.lua")
local heard = dofile(d.folder .. "test/spectrum.lua")

local function text()
  local input <close> = assert(io.open(d.folder .. "../docs/sound.md"))
  return input:read("a")
end

-- A second of the sound as it is now.
local function listen()
  repeat Frames(1) until #Sound() > 0                       -- so that a block of samples begins here
  Frames(50)
  return Sound()
end

local function height(samples, side, f)
  local values, count = heard.window(samples, side, 0, #samples // 2)
  return heard.spectrum(values, count, f)
end

local silence = ("\x80"):rep(882)
Click("xio2")
d.boot()
local count = 0
for example, says in text():gmatch("```basic\n(.-)```\n\nHeard: (.-)%.") do
  count = count + 1
  MachineReset()                                            -- chips fall silent, the program goes
  d.boot()
  d.command("new")
  d.enter(example)
  d.keys("\x0Crun\r")
  Frames(20)
  d.check("example " .. count .. " runs", not d.screen():find(" in %d+"), d.screen())
  local name = "example " .. count .. ", " .. says
  local asked = tonumber(says:match("(%d+) Hz"))
  local samples = listen()
  if says == "nothing" then
    d.equal(name, samples:sub(-882), silence)
  elseif says == "noise" then
    d.check(name, samples:sub(-882) ~= silence or samples:sub(1, 882) ~= silence, "silence")
  elseif says:find("first") then
    Frames(200)                                             -- the scale's end
    d.equal(name .. " at the end", listen():sub(-882), silence)
  else
    local place = heard.peak(heard.window(samples, 1, 0, #samples // 2), #samples // 2, asked)
    d.check(name, math.abs(place - asked) <= 0.7 and height(samples, 1, place) > 1,
            string.format("%.2f Hz, %.2f high", place, height(samples, 1, place)))
    local right = height(samples, 2, place)
    d.check(name .. ", right", says:find("left") and right < 0.1 or not says:find("left") and right > 1, right)
  end
end
d.equal("examples", count, select(2, text():gsub("```basic", "")))
d.check("each chip has an example", count >= 12, count)
d.done()
