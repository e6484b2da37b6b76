-- No instruction that the processor lacks, or that is not documented: a scan of the assembler's listings, which
-- tell code from data. Bytes written as data are looked at too where the processor runs into them. Arguments: the linker's map, the folder of listings.
local map, folder = arg[1], arg[2]

-- Second bytes behind ED: IN r,(C), OUT (C),r, 16-bit arithmetic and loads, NEG, RETN, RETI, IM 1, I, R, RRD, RLD,
-- the block instructions without INI, IND, INIR, INDR, OTIR, OTDR.
local ed = {}
for _, code in ipairs{0x40, 0x48, 0x50, 0x58, 0x60, 0x68, 0x78, 0x41, 0x49, 0x51, 0x59, 0x61, 0x69, 0x79, 0x42, 0x52,
                      0x62, 0x72, 0x4A, 0x5A, 0x6A, 0x7A, 0x43, 0x53, 0x63, 0x73, 0x4B, 0x5B, 0x6B, 0x7B, 0x44, 0x45,
                      0x4D, 0x56, 0x47, 0x4F, 0x57, 0x5F, 0x67, 0x6F, 0xA0, 0xA8, 0xB0, 0xB8, 0xA1, 0xA9, 0xB1, 0xB9,
                      0xA3, 0xAB} do
  ed[code] = true
end

-- Behind DD and FD: those with IX or IY as a whole, or (IX+d).
local index = {}
for _, code in ipairs{0x09, 0x19, 0x29, 0x39, 0x21, 0x22, 0x2A, 0x23, 0x2B, 0x34, 0x35, 0x36, 0x46, 0x4E, 0x56, 0x5E,
                      0x66, 0x6E, 0x7E, 0x70, 0x71, 0x72, 0x73, 0x74, 0x75, 0x77, 0x86, 0x8E, 0x96, 0x9E, 0xA6, 0xAE,
                      0xB6, 0xBE, 0xE1, 0xE3, 0xE5, 0xE9, 0xF9, 0xCB} do
  index[code] = true
end

-- Why these bytes are no instruction of the machine, or nil.
local function fault(b)
  if b[1] == 0xED then return not ed[b[2]] and "not in the ED page" end
  if b[1] == 0xCB then return b[2] >= 0x30 and b[2] <= 0x37 and "SLL" end
  if b[1] == 0xDD or b[1] == 0xFD then
    if not index[b[2]] then return "not in the index page" end
    if b[2] == 0xCB and (b[4] % 8 ~= 6 or b[4] == 0x36) then return "not in the index bit page" end
  end
end

-- The check itself: what it has to find, and what not.
for _, bytes in ipairs{{0xED, 0xA2}, {0xED, 0xAA}, {0xED, 0xB2}, {0xED, 0xBA}, {0xED, 0xB3}, {0xED, 0xBB}, {0xED, 0x46},
                       {0xED, 0x5E}, {0xED, 0x70}, {0xED, 0x4C}, {0xCB, 0x30}, {0xDD, 0x7C}, {0xFD, 0x2E}, {0xFD, 0xF2},
                       {0xDD, 0xCB, 0, 0x36}, {0xFD, 0xCB, 1, 0x46 + 1}} do
  assert(fault(bytes), "not found out")
end
for _, bytes in ipairs{{0xED, 0xB0}, {0xED, 0x56}, {0xCB, 0x3F}, {0xDD, 0xE9}, {0xDD, 0xCB, 5, 0x46}, {0x7E}} do
  assert(not fault(bytes), "wrongly found")
end

-- Instructions behind which the processor does not go on, so that data may follow. RST has its argument there.
local kEnds = {ret = true, reti = true, retn = true, rst = true, jp = true, jr = true}
local function goesOn(word, rest)
  if word == "call" then return rest ~= "calculate" end     -- a calculation stands behind it
  if not kEnds[word] then return true end
  if word == "ret" then return rest:match("^%a") ~= nil end
  return (word == "jp" or word == "jr") and rest:match("^[%w]+%s*,") ~= nil
end
assert(goesOn("ret", "z") and goesOn("jr", "nc,label1") and goesOn("ld", "a,b"))
assert(not goesOn("ret", "") and not goesOn("jp", "(hl)") and not goesOn("jr", "label1") and not goesOn("rst", "0x08"))

local function scan(name)
  local count, running = 0, false
  for line in io.lines(folder .. "/" .. name .. ".lst") do
    local left, source = line:match("^([^\t]*)\t(.*)$")
    local bytes = left and left:match("^%s*%d+ %x%x%x%x ([%x ]+)$")
    if bytes then
      local word, rest = source:gsub("^> ?", ""):gsub("^%s*[%w_]+:", ""):gsub("%s*;.*$", ""):match("^%s*(%S*)%s*(.*)$")
      local data = word:sub(1, 1) == "."
      if word == ".org" then running = false end
      if word ~= "" and (not data or running) then
        local b = {}
        for byte in bytes:gmatch("%x%x") do b[#b + 1] = tonumber(byte, 16) end
        count = count + 1
        local why = fault(b)
        if why then error(name .. ": " .. why .. ": " .. line, 0) end
      end
      if word ~= "" then running = not data and goesOn(word, rest) end
    end
  end
  return count
end

local modules, instructions = 0, 0
for line in io.lines(map) do
  local name = line:match("^LOAD (%S+)%.o$")
  if name then
    modules, instructions = modules + 1, instructions + scan(name)
  end
end
for _, card in ipairs{"hbf", "sndmx", "io3"} do instructions = instructions + scan(card) end
assert(modules >= 15 and instructions > 1500, modules .. " modules, " .. instructions .. " instructions: too few")
print(modules .. " modules, " .. instructions .. " instructions")
