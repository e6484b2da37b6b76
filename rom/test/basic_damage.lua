-- Programs that are damaged or exchanged behind the interpreter's back: a reset at a bad moment, files loaded
-- through the menu, full memory.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

local function list(name, wanted) b.equal(name, b.command("list"), wanted) end
local function image() return MemImage:get(b.kProgram, b.word(b.kProgEnd) - b.kProgram) end
local function setWord(address, value)
  MemImage[address], MemImage[address + 1] = value & 255, value >> 8
end

-- A file of these bytes, loaded as the menu does it.
local file = os.tmpname()
local function fileOf(bytes)
  local before = MemImage:get(b.kProgram, #bytes)
  MemImage:set(b.kProgram, bytes)
  SaveCAS(file, b.kProgram, b.kProgram + #bytes)
  MemImage:set(b.kProgram, before)
  LoadCAS(file .. ".cas")
end
os.remove(file)

-- The lines follow each other, each ends with a 0, and the 0 behind the last ends the program.
local function sound(name)
  local finish, at = b.word(b.kProgEnd), b.kProgram
  while MemImage[at] ~= 0 and at < finish do
    at = at + MemImage[at]
    if MemImage[at - 1] ~= 0 then break end
  end
  b.equal(name .. ": chain", at + 1, finish)
end
local function works(name)
  b.equal(name .. ": works", b.command("print 6*7"), " 42")
  b.keys("\x0C60000 rem\r")
  b.check(name .. ": takes a line", b.wait(300), "no prompt")
  sound(name)
end

-- A file of the very length that the program has.
b.enter('10 a$="other":stop:print a$\n20 print 2222')
local other = image()
b.command("new")
b.enter('10 a$="first":stop:print a$\n20 print 1111')
b.equal("just as long", #image(), #other)
b.command("run")
fileOf(other)
b.equal("variables are gone", b.command("print \"(\";a$;\")\""), "()")
list("the other program", '10 A$="other":STOP:PRINT A$\n20 PRINT 2222')
b.command("run")
fileOf((other:gsub("2222", "4444"):gsub("other", "third")))
b.equal("no CONT into another program", b.command("cont"), "Can't continue")
b.command("a=5")
b.equal("variables stay when nothing came", b.command("print a"), " 5")
b.command("poke 6650,peek(6650)+0")
b.equal("nor are they lost by a POKE", b.command("print a"), " 5")
b.command(string.format("poke %d,0", b.word(b.kProgEnd) - 1))
b.equal("not even into the program", b.command("print a"), " 5")

-- The same length, nothing but rubbish, and a chain that leads far behind it.
b.command("dim z(2000)")
fileOf("\xFA\1\0" .. ("\xC8"):rep(#image() - 3))
b.keys("\x0C60000 print 1\r")
b.check("rubbish of the same length", b.wait(300), "no prompt")
list("only the new line is there", "60000 PRINT 1")
works("rubbish of the same length")

-- Rubbish of other lengths; names that begin with no letter must not be looked for in what no CLEAR has wiped.
math.randomseed(4)
b.command("new")
for kind = 1, 40 do
  local bytes = {}
  for i = 1, math.random(3, 400) do bytes[i] = string.char(math.random(0, 255)) end
  if kind % 2 == 0 then bytes[1] = string.char(math.min(#bytes, 200)) bytes[tonumber(bytes[1]:byte())] = "\0" end
  fileOf(table.concat(bytes))
  b.keys("\x0C60000 rem\r")
  if not b.wait(500) then b.check("rubbish " .. kind, false, "no prompt") break end
  sound("rubbish " .. kind)
end
b.command("new")
for name = 0x80, 0xFF do                                    -- PRINT of a variable of that name, long and string
  fileOf("\x08\1\0\x8B\1" .. string.char(name - 0x80, name) .. "\0\x07\2\0\x8B\2" .. string.char(name) .. "\0\0")
  b.keys("\x0Crun\r")
  if not b.wait(200) then b.check("name " .. name, false, "no prompt") break end
end
b.command("new")
works("rubbish")

-- A file that fills the memory or goes beyond it is no program.
fileOf(("\5\1\0\xA6\0"):rep((0xC000 - b.kProgram) // 5) .. "\0\0\0")
list("too long", "")
works("too long")

-- Resets. First behind a load from tape: the rest of the old program is no part of the new one.
b.command("new")
for i = 1, 60 do b.enter(i * 10 .. ' print "from the tape ' .. i .. '"') end
local tape = image()
TVCmon.Check1 = true
b.command("save", 20000)
TVCmon.Check1 = false
os.rename("save.wav", "damage.wav")
for _, frames in ipairs{50, 100, 150, 200} do
  b.command("new")
  b.enter("10 print 1\n20 print 2")
  TapeOpen("damage.wav")
  TapeRewind()
  b.keys("\x0Cload\r")
  Frames(frames)
  local overwritten = MemImage:get(b.kProgram, 200) == tape:sub(1, 200)
  MachineReset()
  b.boot()
  sound("reset in LOAD")
  list("reset in LOAD after " .. frames, overwritten and "" or "10 PRINT 1\n20 PRINT 2")
  works("reset in LOAD")
end

-- A LOAD cut short before it found anything is forgotten: a program that changes itself stays at the next reset.
b.command("new")
b.enter("10 rem a\n20 poke " .. b.kProgram + 4 .. ",66:goto 20")
b.keys("\x0Cload\r")
Frames(20)
MachineReset()
b.boot()
b.keys("\x0Crun\r")
Frames(20)
MachineReset()
b.boot()
list("a program that has changed itself", "10 REM B\n20 POKE " .. b.kProgram + 4 .. ",66:GOTO 20")

-- A reset while INPUT reads a number, when an overflow would go back to INPUT: errors come to the prompt as ever.
local kParseStack = 0x13F0                                  -- PARSESP
b.command("new")
b.enter("10 input n")
b.keys("\x0Crun\r")
b.wait(100)
b.keys("1.23456789E20\r")
local steps = 0
repeat
  Step(20)
  steps = steps + 1
until b.word(kParseStack) ~= 0 or steps > 20000
b.check("reset in INPUT", b.word(kParseStack) ~= 0, "moment missed")
MachineReset()
b.boot()
b.equal("error behind it", b.command("print 1/0"), "Division by zero")
os.remove("damage.wav")

-- Then while a line goes into a long program: at many moments of it.
b.command("new")
for i = 1, 700 do b.keys("\x0C" .. i .. " rem" .. ("x"):rep(i % 30) .. "\r") end
b.wait(3000)
local whole = image()
local cut = 0
for step = 1, 24 do
  fileOf(whole)
  b.command("print 1")
  b.equal("whole again", #image(), #whole)
  b.keys("\x0C0 rem new line\r")
  repeat Step(100) until b.word(b.kProgEnd) ~= b.kProgram + #whole
  Step(step * 1000)
  if image():sub(1, 20) ~= whole:sub(1, 20) then cut = cut + 1 end
  MachineReset()
  b.boot()
  sound("reset in a line, step " .. step)
end
works("reset in a line")

-- Pointers that are no good at a reset.
for _, pointers in ipairs{{b.kProgram, 0}, {b.kProgram, 0xFFFF}, {0, b.kProgram + 1}, {0x4000, 0x5000}} do
  b.command("new")
  b.enter("10 print 1")
  setWord(b.kProgStart, pointers[1])
  setWord(b.kProgEnd, pointers[2])
  MachineReset()
  b.boot()
  b.equal("start after bad pointers", b.word(b.kProgStart), b.kProgram)
  works("bad pointers")
end

-- No room: a line that is to be replaced stays.
b.command("new")
b.enter("10 print 1\n20 rem short\n30 print 3")
b.command("clear " .. b.word(b.kProgEnd) + 256 + 20)
b.equal("no room", b.command("20 rem " .. ("much longer "):rep(4)), "Out of memory")
list("all still there", "10 PRINT 1\n20 REM short\n30 PRINT 3")
b.equal("no room for one more", b.command("40 rem " .. ("x"):rep(40)), "Out of memory")
b.enter("20 rem shore")
list("as long as before", "10 PRINT 1\n20 REM shore\n30 PRINT 3")
b.enter("20")
list("taken away", "10 PRINT 1\n30 PRINT 3")
b.command("clear 49152")

-- The sum that finds another program out hardly holds up a command: 0.3 s for 40 KB.
local function time()
  b.command("print 1")
  b.keys("\x0C?123\r")
  local frames = 0
  repeat
    Frames(1)
    frames = frames + 1
  until b.row(1) == " 123" or frames > 100
  return frames
end
b.command("new")
local short = time()
fileOf(("\250\1\0\xA6" .. ("x"):rep(245) .. "\0"):rep(160) .. "\0")
local long = time()
b.check("time of the sum", long - short <= 16, long - short .. " frames")
os.remove(file .. ".cas")
b.done()
