-- Whole files, for test scripts here and of the ROM.
local files = {}

function files.read(name)
  local file <close> = assert(io.open(name, "rb"))
  return file:read("a")
end

function files.write(name, bytes)
  local file <close> = assert(io.open(name, "wb"))
  file:write(bytes)
end

return files
