-- Tape: what is saved comes back, names, types, sizes, verifying, damaged tapes, the break key.
local here = arg[0]:match("^.*/") or ""
local s, files = dofile(here .. "system_machine.lua"), dofile(here .. "../../script/test/files.lua")
local read, write = files.read, files.write
s.boot()

local kData, kName, kSamples = 0x6000, 0x4F00, 45
local E_MEMORY, E_BREAK, E_VERIFY, E_FILE = 5, 18, 20, 21


local function name(text) MemImage:set(kName, text .. "\0") end

-- Saves and returns the samples.
local function save(text, kind, data, address)
  MemImage:set(address or kData, data)
  name(text)
  TVCmon.Check1 = true
  s.call(s.tape_save, {A = kind, HL = address or kData, DE = #data, IX = kName})
  s.equal(Z80State.FlagC, 0, "saved")
  TVCmon.Check1 = false
  local bytes = read("save.wav")
  s.equal(PortShadow[5] & 0x40, 0, "motor off")
  return bytes:sub(kSamples)
end

local function insert(samples)
  write("tape.wav", read("save.wav"):sub(1, kSamples - 1) .. samples)
  TapeOpen("tape.wav")
  TapeRewind()
end

local function load(text, kind, address, most, call)
  name(text)
  s.call(s.con_clear)
  s.call(call or s.tape_load, {A = kind, HL = address, DE = most, IX = kName})
  return Z80State.FlagC == 1 and Z80State.A or nil
end

local function result()
  return Z80State.H * 256 + Z80State.L, Z80State.D * 256 + Z80State.E
end

local function random(size)
  local bytes = {}
  for i = 1, size do bytes[i] = string.char(math.random(0, 255)) end
  return table.concat(bytes)
end

math.randomseed(59, 50)

-- Half waves as they are written: 6 and 12 samples, one more where a byte begins. The level alternates.
local data = random(700)
local first = save("FIRST", 1, data)
local lengths, last, length = {}, nil, 0
for i = 1, #first do
  local level = first:byte(i) > 90
  if level == last then length = length + 1
  else
    if last ~= nil then lengths[length] = (lengths[length] or 0) + 1 end
    last, length = level, 1
  end
end
local others = 0
for samples, count in pairs(lengths) do
  if samples ~= 6 and samples ~= 7 and samples ~= 12 and samples ~= 13 then others = others + count end
end
s.is(others <= 8, "half waves between the blocks: " .. others)  -- two at each of the four blocks

-- Back to where it was, by its name.
MemImage:set(kData, ("\0"):rep(700))
insert(first)
s.equal(load("FIRST", 1, 0, 700), nil, "loaded")
local where, size = result()
s.equal(where, kData, "address")
s.equal(size, 700, "length")
s.equal(MemImage:get(kData, 700), data, "data")
s.equal(s.row(0), "Searching", "message")
s.equal(s.row(1), "Found FIRST", "message")
s.equal(s.row(2), "...", "message")

-- To another place, without a name; nothing is written behind it.
MemImage:set(0x7000, ("\xEE"):rep(701))
insert(first)
s.equal(load("", 1, 0x7000, 5000), nil, "loaded to another place")
s.equal((result()), 0x7000, "address")
s.equal(MemImage:get(0x7000, 701), data .. "\xEE", "data")

-- Verifying.
insert(first)
s.equal(load("", 1, 0, 700, s.tape_verify), nil, "verified")
insert(first)
MemImage[kData + 699] = MemImage[kData + 699] ~ 0x80
s.equal(load("", 1, 0, 700, s.tape_verify), E_VERIFY, "one bit differs")
s.equal(MemImage[kData + 699], data:byte(700) ~ 0x80, "nothing is stored")
insert(first)
s.equal(load("", 1, 0, 699, s.tape_verify), E_VERIFY, "other length")

-- The wrong kind, too large.
insert(first)
s.equal(load("FIRST", 0, 0x7000, 5000), E_FILE, "kind")
insert(first)
s.equal(load("FIRST", 1, 0x7000, 699), E_MEMORY, "size")

-- Sizes at the edges of blocks; the longest name.
for _, bytes in ipairs{0, 1, 255, 256, 257, 512} do
  local some = random(bytes)
  local samples = save("sixteen letters!", 0, some)
  MemImage:set(kData, ("\x55"):rep(bytes + 1))
  insert(samples)
  s.equal(load("sixteen letters!", 0, kData, bytes), nil, bytes .. " bytes")
  s.equal(MemImage:get(kData, bytes + 1), some .. "\x55", bytes .. " bytes")
  local _, got = result()
  s.equal(got, bytes, "length")
end

-- The second file of a tape; a tape upside down (all levels inverted), at other speeds, with silence in front.
local other = random(300)
local second = save("SECOND", 0, other)
insert(first .. ("\0"):rep(3000) .. second)
s.equal(load("SECOND", 0, 0x7000, 300), nil, "second file")
s.equal(MemImage:get(0x7000, 300), other, "second file")
s.equal(s.row(1), "Found FIRST", "message")
s.equal(s.row(2), "Found SECOND", "message")
insert(("\128"):rep(999) .. second:gsub(".", function(c) return string.char(255 - c:byte()) end))
s.equal(load("SECOND", 0, 0x7000, 300), nil, "upside down")
for _, speed in ipairs{0.8, 1.25} do
  local samples = {}
  for i = 1, math.floor(#second * speed) do
    local at = math.floor((i - 0.5) / speed) + 1
    samples[i] = second:sub(at, at)
  end
  MemImage:set(0x7000, ("\0"):rep(300))
  insert(table.concat(samples))
  s.equal(load("SECOND", 0, 0x7000, 300), nil, "speed " .. speed)
  s.equal(MemImage:get(0x7000, 300), other, "speed " .. speed)
end

-- A damaged block: the user is told, rewinds, and what was good stays. Nothing bad reaches the memory.
MemImage:set(0x7000, ("\xEE"):rep(700))
local cut = math.floor(#first * 0.55)
local damaged = first:sub(1, cut) .. ("\0"):rep(40) .. first:sub(cut + 41)
insert(damaged)
name("FIRST")
s.call(s.con_clear)
local done = s.begin(s.tape_load, {A = 1, HL = 0x7000, DE = 700, IX = kName})
s.is(not s.ends(done, 1500), "waits for the block")
s.is(s.row(2):find("^%.*$") and s.row(3) == "Bad block: rewind the tape", "message: " .. s.row(3))
for i = 0, 699 do
  local byte = MemImage[0x7000 + i]
  s.is(byte == 0xEE or byte == data:byte(i + 1), "bad byte in memory")
end
insert(second .. first)                   -- even with another tape's file in front
s.is(s.ends(done, 3000), "comes to its end")
s.equal(Z80State.FlagC, 0, "loaded at last")
s.equal(MemImage:get(0x7000, 700), data, "data")

-- Every bit counts: a 0 made a 1 in a block of data, by a short half wave that becomes longer, spoils it.
for _, part in ipairs{0.3, 0.6, 0.9} do
  local _, at = first:find("\220\30\30\30\30\30\30\220", math.floor(#first * part), true)
  insert(first:sub(1, at - 1) .. ("\30"):rep(8) .. first:sub(at))
  name("FIRST")
  done = s.begin(s.tape_load, {A = 1, HL = 0x7000, DE = 700, IX = kName})
  s.is(not s.ends(done, 1500), "block is not taken at " .. part)
  local told = false
  for row = 0, 23 do told = told or s.row(row) == "Bad block: rewind the tape" end
  s.is(told, "message")
  s.call(s.con_clear)
end

-- Break keys, in silence and while saving.
insert("")
name("")
done = s.begin(s.tape_load, {A = 1, HL = 0x7000, DE = 700, IX = kName})
s.is(not s.ends(done, 50), "waits for a file")
s.equal(PortShadow[5] & 0x40, 0x40, "motor on")
MemImage[s.kBreakKey] = 0
picd_KeyDown(0x23, 0)
s.is(s.ends(done, 5), "break")
picd_KeyUp(0x23)
s.equal(Z80State.FlagC, 1, "CF")
s.equal(Z80State.A, E_BREAK, "error")
s.equal(MemImage[s.kBreakKey], 0, "used up")
s.equal(PortShadow[5] & 0x40, 0, "motor off")
done = s.begin(s.tape_save, {A = 1, HL = kData, DE = 30000, IX = kName})
s.is(not s.ends(done, 100), "saves")
picd_KeyDown(0x23, 0)
s.is(s.ends(done, 100), "break")
picd_KeyUp(0x23)
s.equal(Z80State.A, E_BREAK, "error")

-- A tap of the End key at any moment of saving ends it with the block: in the leader, in the midst of a block.
for _, frames in ipairs{20, 75, 80, 100, 130} do
  done = s.begin(s.tape_save, {A = 1, HL = kData, DE = 8000, IX = kName})
  s.is(not s.ends(done, frames), "saves")
  picd_KeyDown(0x23, 0)
  Frames(3)
  picd_KeyUp(0x23)
  s.is(s.ends(done, 120), "tap after " .. frames .. " frames")
  s.equal(Z80State.FlagC, 1, "CF")
  s.equal(Z80State.A, E_BREAK, "error")
end

-- A tone does not go on while a block is written.
s.call(s.snd_tone, {HL = 3000, A = 10, BC = 1000})
s.equal(PortShadow[5] & 0x10, 0x10, "tone")
done = s.begin(s.tape_save, {A = 1, HL = kData, DE = 300, IX = kName})
s.is(not s.ends(done, 20), "saves")
s.equal(PortShadow[5] & 0x10, 0, "no tone")
s.is(s.ends(done, 1000), "saved")
s.clean()
