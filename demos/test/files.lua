-- The .cas files of the folder arg[1]: loaded, each lists as its text and runs; made again, each is the same to
-- the last byte.
local d = dofile((arg[0]:match("^.*/") or "") .. "../demos.lua")
d.boot()

local function read(file)
  local input <close> = assert(io.open(file, "rb"))
  return input:read("a")
end

for _, name in ipairs(d.names) do
  local file = arg[1] .. "/" .. name .. ".cas"
  LoadCAS(file)
  Frames(2)
  local line, listed = d.difference(name)
  d.check(name, not line, tostring(line) .. " is listed as " .. tostring(listed))
  d.equal(name .. ": message", Messages()[1], nil)
  SaveCAS(name, d.word(d.kProgStart), d.word(d.kProgEnd))
  d.equal(name .. ".cas made again", read(name .. ".cas"), read(file))
  os.remove(name .. ".cas")
  d.run()
  Frames(250)
  d.check(name .. " runs", d.line(), "stopped: " .. d.screen())
  picd_KeyDown(0x23, 0)                                     -- the End key breaks
  Frames(4)
  picd_KeyUp(0x23)
  d.untilTrue(name .. ": prompt", 300, function() return not d.line() end)
  d.check(name .. " is broken off", d.wait(200), "no prompt")
  d.keys("\x0Cgraphics 2:cls\r")
  d.wait(100)
end

-- They run with 32 KB too.
Click("x32KB")
d.boot()
d.check("32 KB", d.screen():find("32 KB"), d.screen())
for _, name in ipairs(d.names) do
  LoadCAS(arg[1] .. "/" .. name .. ".cas")
  Frames(2)
  d.run()
  Frames(900)
  d.check(name .. " runs with 32 KB", d.line(), "stopped: " .. d.screen())
  picd_KeyDown(0x23, 0)
  Frames(4)
  picd_KeyUp(0x23)
  d.untilTrue(name .. ": prompt", 300, function() return not d.line() end)
  d.wait(200)
end
d.done()
