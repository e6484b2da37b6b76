-- A BASIC program at the serial card, run until the file "stop" is there. Arguments: name of the shared memory, file
-- for the companion's process number, the program, the companion's own arguments. The companion is started anew
-- whenever that file has gone. A row of the screen that begins with "good" is written beside it. While the
-- file "hold" is there, 0xB000 is 1 and the file "waiting" has the number of bytes that wait to be read.
local map, processFile, program = arg[1], arg[2], arg[3]
Frames(100)
for line in program:gmatch("[^\n]+") do Type(line .. "\n") end
Type("run\n")
SharedMemory(map)

local function exists(name)
  local file = io.open(name)
  if file then file:close() end
  return file ~= nil
end

-- Rows of the screen that are not empty.
local function rows()
  local found = {}
  for row = 0, 23 do
    local text = MemImage:get(0x0C00 + 64 * row, 32):gsub("[^ -~].*", ""):gsub(" +$", "")
    if text ~= "" then found[#found + 1] = text end
  end
  return found
end

local function write(name, text)
  local file = io.open(name .. ".new", "w")
  file:write(text)
  file:close()
  os.rename(name .. ".new", name)
end

while not exists("stop") do
  if not exists(processFile) then write(processFile, Companion("--headless", table.unpack(arg, 4))) end
  local hold = exists("hold")
  MemImage[0xB000] = hold and 1 or 0
  Frames(10)
  if hold then write("waiting", TSerial.Label4) end
  for _, row in ipairs(rows()) do
    if row:find("^good") then write(processFile .. ".result", row) end
  end
end
for _, row in ipairs(rows()) do print(row) end
for _, message in ipairs(Messages()) do print(message.text) end
