-- SAVE, LOAD and VERIFY: a program through the tape and back.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()
local kLong = 8000

local kProgram = [[
10 FOR I=1 TO 3:PRINT I;"times":NEXT
20 DATA 1,2,3:REM the end]]
b.enter(kProgram)
local function image() return MemImage:get(b.kProgram, b.word(b.kProgEnd) - b.kProgram) end
local before = image()

local function save(command)
  TVCmon.Check1 = true
  local answer = b.command(command, kLong)
  TVCmon.Check1 = false
  os.remove("tape.wav")
  os.rename("save.wav", "tape.wav")
  return answer
end
local function insert()
  TapeOpen("tape.wav")
  TapeRewind()
end
local function ended(text) return not text:find("...", 1, true) end

b.check("SAVE", ended(save('save "prog"')), "does not end")
insert()
local answer = b.command('verify "prog"', kLong)
b.check("VERIFY", ended(answer) and not answer:find("rror"), answer)
b.enter("30 rem more")
insert()
answer = b.command('verify "prog"', kLong)
b.check("VERIFY of another program", answer:match("Verify error$"), answer)
b.command("new")
b.enter("99 rem")
insert()
answer = b.command('load "prog"', kLong)
b.check("LOAD", ended(answer) and answer:find("prog"), answer)
b.equal("the program is back", image(), before)
b.equal("LIST", b.command("list"), kProgram)
b.equal("RUN", b.command("run"), " 1 times\n 2 times\n 3 times")
b.command("new")
insert()
b.check("LOAD without a name", ended(b.command("load", kLong)), "does not end")
b.equal("the program is back again", image(), before)

-- Bytes that machine code has put on the tape are no program.
b.command("clear 40000")
MemImage:set(40000, "\x21\0\x10\x11\x20\0\x3E\x01\xDD\x21\x60\x9C\xC3\xBC\xC0")       -- tape_save, type 1
MemImage:set(40032, "bytes\0")
b.check("bytes", ended(save("call 40000")), "does not end")
for _, command in ipairs{"load", "verify"} do
  insert()
  answer = b.command(command .. ' "bytes"', kLong)
  b.check(command .. " of bytes", answer:match("Wrong kind of file$"), answer)
end
b.equal("it has the error's number", b.command("print err"), " 54")
b.command("clear 49152")
b.equal("and the program is as it was", image(), before)
b.check("SAVE once more", ended(save('save "prog"')), "does not end")

-- Looking for another name is broken off by the End key, and the program is still there.
insert()
b.keys('\x0Cload "other"\r')
Frames(400)
picd_KeyDown(0x23, 0)
Frames(10)
picd_KeyUp(0x23)
b.check("LOAD broken off", b.wait(200), "still loading")
b.check("message", b.screen():match("Break\nReady$"), b.screen())
b.equal("nothing lost", image(), before)
b.equal("it runs", b.command("run"), " 1 times\n 2 times\n 3 times")
b.done()
os.remove("tape.wav")
