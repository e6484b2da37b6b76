-- The machine's main job from end to end: it boots, loads a .cas file, runs it, shows and sounds what it did
-- when the results were stored (mainjob/README.md); a snapshot in the middle of a game, loaded by another
-- quollrun, goes on as this one does.
--   mainjob.lua QUOLLRUN ROMS DEMOS FOLDER           the test
--   mainjob.lua QUOLLRUN ROMS DEMOS FOLDER store     stores the results beside this script
-- The second quollrun is called with "continue" and the place in the frame, which a snapshot does not hold.
local here = arg[0]:match("^(.*/)")
package.path = here .. "?.lua;" .. package.path
local check = require "check"
local program, roms, demos, folder, task = table.unpack(arg)
Click("xScreenDIB")  -- the stored picture has gaps between its lines

local kScreen, kColumns = 0x0C00, 64
local kField, kHead, kWay = 0x7400, 0x7190, 0x7195           -- of the game
local kKeyLeft, kKeyUp, kKeyRight, kKeyDown = 0x25, 0x26, 0x27, 0x28
local kOn = 500                                              -- frames after the snapshot: ten seconds

-- FNV-1a, 64 bits.
local function hash(bytes)
  local sum = 0xCBF29CE484222325
  for i = 1, #bytes do sum = (sum ~ bytes:byte(i)) * 0x100000001B3 end
  return string.format("%016x", sum)
end

local function pictureHash()
  local width, height, left, top, pixels = Picture()
  return hash(string.pack("<i4i4i4i4", width, height, left, top) .. pixels)
end

local function screen() return MemImage:get(kScreen, 24 * kColumns) end
local function word(address) return MemImage[address] + 256 * MemImage[address + 1] end

local function waitFor(text, frames)
  for _ = 1, frames do
    if screen():find(text, 1, true) then return end
    Frames(1)
  end
  error("not on the screen: " .. text .. "\n" .. screen():gsub(" +", " "))
end

local function tap(key)
  check.equal(picd_KeyDown(key, 0), 0, "key taken")
  Frames(4)
  picd_KeyUp(key)
end

-- One frame of the game: round the field, away from each wall. The player looks at the machine only, so that
-- two equal machines are played alike.
local held
local function playFrame()
  local x, y = (word(kHead) - kField) % 32, (word(kHead) - kField) // 32
  local turn = ({[0] = x >= 26 and kKeyUp, x <= 6 and kKeyDown, y <= 7 and kKeyLeft, y >= 25 and kKeyRight})
    [MemImage[kWay]]
  if held and held ~= turn then
    picd_KeyUp(held)
    held = nil
  end
  if turn and not held then
    picd_KeyDown(turn, 0)
    held = turn
  end
  Frames(1)
end

-- All that makes the machine go on as it does, and what the user sees of it.
local kRegisters = {"A", "B", "C", "D", "E", "H", "L", "A2", "B2", "C2", "D2", "E2", "H2", "L2", "IX", "IY", "SP", "PC",
                    "I", "R", "IM", "IFF1", "IFF2", "FlagS", "FlagZ", "FlagH", "FlagPV", "FlagC", "FlagN", "FlagY",
                    "FlagX", "AltFlagS", "AltFlagZ", "AltFlagH", "AltFlagPV", "AltFlagC", "AltFlagN", "AltFlagY",
                    "AltFlagX", "Halted", "IrqLine"}
local kClocks = {"FrameClock", "Cycles", "LastCursorIrq", "ToneItCounter"}
local function state()
  local lines = {}
  for _, name in ipairs(kRegisters) do lines[#lines + 1] = name .. " " .. Z80State[name] end
  for _, name in ipairs(kClocks) do lines[#lines + 1] = name .. " " .. RunState[name] end
  for i = 0, #CrtcRegs - 1 do lines[#lines + 1] = "CRTC " .. i .. " " .. CrtcRegs[i] end
  lines[#lines + 1] = "ports " .. hash(PortShadow:get(0, #PortShadow))
  lines[#lines + 1] = "memory " .. hash(MemImage:get(0, #MemImage))
  lines[#lines + 1] = "picture " .. pictureHash()
  return table.concat(lines, "\n") .. "\n"
end

local function goOn()
  for _ = 1, kOn do playFrame() end
  if held then picd_KeyUp(held) end
  return state()
end

-- The second run: a machine that stands at its prompt loads the snapshot.
if task == "continue" then
  Frames(100)
  LoadSnapShot(folder .. "/game.tvs")
  check.equal(Messages()[1], nil, "message of the load")
  for i, name in ipairs(kClocks) do RunState[name] = math.tointeger(arg[5 + i]) end
  local file = assert(io.open(folder .. "/second.txt", "wb"))
  file:write(goOn())
  file:close()
  SavePicture(folder .. "/second.png")
  return
end

-- Boot.
waitFor("Ready", 100)

-- Load and run: the tune, which draws the notes that it plays.
LoadCAS(demos .. "/tune.cas")
Type("run\n")
waitFor("Press 1, 2 or 3", 500)
Sound()
repeat Frames(1) until #Sound() > 0                         -- a block of samples begins
tap(0x31)
Frames(316)
local got = {picture = pictureHash(), sound = hash(Sound()), roms = hash(MemImage:get(0x18000, 0x8000))}
SavePicture(folder .. "/picture.png")
check.is(screen():find("Boci, boci tarka", 1, true), "title of the tune")
if task == "store" then
  local file = assert(io.open(here .. "mainjob/stored.lua", "w"))
  file:write("-- Written by mainjob.lua store; README.md tells how it was checked.\n")
  file:write(string.format("return {\n  picture = %q,\n  sound = %q,\n  roms = %q,\n}\n", got.picture, got.sound, got.roms))
  file:close()
  SavePicture(here .. "mainjob/picture.png")
  SaveSound(folder .. "/sound.wav")
  print("stored; look at mainjob/picture.png, listen to " .. folder .. "/sound.wav")
  return
end
local stored = dofile(here .. "mainjob/stored.lua")
local hint = got.roms == stored.roms and "" or
             " (the ROM has changed since the results were stored: mainjob/README.md tells what to do)"
check.equal(got.picture, stored.picture, "picture" .. hint)
check.equal(got.sound, stored.sound, "sound" .. hint)

-- Another program over it: a key leads back to the menu, 0 to the prompt.
tap(0x20)
waitFor("Press 1, 2 or 3", 300)
tap(0x30)
waitFor("Ready", 300)
LoadCAS(demos .. "/snake.cas")
Type("run\n")
waitFor("SPACE starts", 1000)
tap(0x20)
waitFor("L 1", 300)
for _ = 1, 300 do playFrame() end
while held do playFrame() end                                -- keys are not in a snapshot
check.is(word(kHead) >= kField + 64 and word(kHead) < kField + 960, "the snake is on its way")

-- A snapshot in the middle of the game; this machine plays on.
os.remove(folder .. "/game.tvs")
SaveSnapshot(folder .. "/game.tvs")
check.equal(Messages()[1], nil, "message of the save")
local clocks = {}
for _, name in ipairs(kClocks) do clocks[#clocks + 1] = RunState[name] end
local before = state()
local first = goOn()
SavePicture(folder .. "/first.png")
check.is(first ~= before, "nothing happens in the game")

-- The same game in another quollrun.
os.remove(folder .. "/second.txt")
local function quote(text) return "'" .. text:gsub("'", "'\\''") .. "'" end
local command = {quote(program), "--folder", quote(roms), quote(arg[0]), quote(program), quote(roms), quote(demos),
                 quote(folder), "continue"}
local _, how, status = os.execute(table.concat(command, " ") .. " " .. table.concat(clocks, " "))
check.equal(how, "exit", "the second run")
check.equal(status, 0, "status of the second run")
local file = assert(io.open(folder .. "/second.txt", "rb"))
local second = file:read("a")
file:close()
check.list((function()
  local list = {}
  for line in second:gmatch("[^\n]+") do list[#list + 1] = line end
  return list
end)(), (function()
  local list = {}
  for line in first:gmatch("[^\n]+") do list[#list + 1] = line end
  return list
end)(), "the machine of the second run")
