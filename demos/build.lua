-- Makes cassette files of BASIC texts: quollrun --folder ROMS build.lua OUTPUT NAME...
-- Each demos/NAME.bas is typed into the machine, must come back by LIST to the last character, and is written
-- to OUTPUT/NAME.cas.
local d = dofile((arg[0]:match("^.*/") or "") .. "demos.lua")
assert(#arg >= 2, "usage: build.lua OUTPUT NAME...")

local function bytesOf(file)
  local input <close> = assert(io.open(file, "rb"))
  return input:read("a")
end

d.boot()
for i = 2, #arg do
  local name = arg[i]
  d.typeIn(name)
  local line, listed = d.difference(name)
  if line then error(string.format("%s.bas is not as LIST prints it:\n%s\n%s", name, line, listed)) end
  local file = arg[1] .. "/" .. name .. ".cas"
  os.remove(file)
  local program = MemImage:get(d.kProgram, d.word(d.kProgEnd) - d.kProgram)
  SaveCAS(file, d.kProgram, d.kProgram + #program)
  for _, message in ipairs(Messages()) do error(file .. ": " .. message.text) end
  assert(bytesOf(file):sub(-#program) == program, file .. " does not end with the program")
end
