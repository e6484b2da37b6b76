-- Programs in the manner of the 1980s, programs/*.bas: games, tables, graphs, strings, sorting. What each prints when it
-- is run stands in the .txt beside it, what is typed at its INPUTs in the .keys. The listing of each makes the same program.
local folder = (arg[0]:match("^.*/") or "") .. "programs/"
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

local function read(path)
  local file = io.open(path)
  if not file then return nil end
  local text = file:read("a")
  file:close()
  return (text:gsub("\n$", ""))
end

local kNames = {}
for name in (read(folder .. "programs.list") or ""):gmatch("%S+") do kNames[#kNames + 1] = name end
b.check("number of programs", #kNames >= 40, tostring(#kNames))

local function image() return MemImage:get(b.kProgram, b.word(b.kProgEnd) - b.kProgram) end

for _, name in ipairs(kNames) do
  local keys = {}
  for line in (read(folder .. name .. ".keys") or ""):gmatch("[^\n]+") do keys[#keys + 1] = line end
  local program, wanted = read(folder .. name .. ".bas"), read(folder .. name .. ".txt")
  b.command("new")
  b.enter(program)
  local tokens = image()
  TPrint.Text1 = ""
  b.command("llist")
  b.command("new")
  b.enter((TPrint.Text1:gsub("\r", "")))
  b.equal(name .. " from its listing", image(), tokens)
  b.keys("\x0Crun\r")
  b.wait(20000)
  for _, line in ipairs(keys) do
    b.keys(line .. "\r")
    b.wait(20000)
  end
  b.equal(name, (b.screen(1):gsub("\n?Ready$", "")), wanted)
end
b.done()
