-- Runs the programs of a file in the machine, each in 64, 32 and 16 columns, and writes down the screens it leaves:
--   quollrun machine_run.lua programs.txt screens.txt
-- In the file of programs "P" begins a program, "L text" is one of its lines, "K text" what is typed when it asks
-- ("\r" for Enter). In the file of screens "S program columns" stands before the 24 rows, each behind a "|".
local here = arg[0]:match("^.*/") or ""
local b = dofile(here .. "../basic_machine.lua")
local kBreakKey, kCurLine = 0x0B08, 0x1380
local kLongest = 20000  -- frames of a program: 16 columns scroll much
local kModes = {{2, 64}, {4, 32}, {16, 16}}

local function programs(path)
  local list = {}
  for line in io.lines(path) do
    local kind, text = line:sub(1, 1), line:sub(3)
    if kind == "P" then list[#list + 1] = {lines = {}, keys = {}} end
    local program = list[#list]
    if kind == "L" then program.lines[#program.lines + 1] = text end
    if kind == "K" then program.keys[#program.keys + 1] = (text:gsub("\\r", "\r")) end
  end
  return list
end

local function line(text)
  b.put(text)
  return b.wait(500)
end

-- Back to the prompt, whatever goes on.
local function prompt()
  for _ = 1, 40 do
    if b.word(kCurLine) == 0 and b.wait(5) then return true end
    MemImage[kBreakKey] = 3
    MemImage[b.kHead] = MemImage[b.kTail]
    b.wait(100)
  end
  error("no prompt")
end

b.boot()
local out = assert(io.open(arg[2], "w"))
for number, program in ipairs(programs(arg[1])) do
  line("graphics 2")
  line("new")
  for _, text in ipairs(program.lines) do
    assert(line(text), text)
    local answer = b.row((#text - 1) // 64 + 1)
    if answer ~= "" then out:write("E ", number, " ", text, " -> ", answer, "\n") end
  end
  for _, mode in ipairs(kModes) do
    line("graphics " .. mode[1])
    b.keys("\x0Crun\r")
    local ended = b.wait(kLongest)
    for _, keys in ipairs(program.keys) do
      b.keys(keys)
      ended = ended and b.wait(kLongest)
    end
    out:write("S ", number, " ", mode[2], "\n")
    for row = 0, 23 do out:write("|", b.row(row), "\n") end
    if not ended then out:write("E ", number, " does not end\n") end
    prompt()
  end
end
out:close()
