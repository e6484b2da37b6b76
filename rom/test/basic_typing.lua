-- A user at the keyboard: keys pressed one by one, lower case, corrected by the editor, the screen read back.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()
local kBackspace, kUp, kCtrl, kL = 0x08, 0x26, 0x11, 0x4C
local function press(code)
  picd_KeyDown(code, 0)
  Frames(4)
  picd_KeyUp(code)
  Frames(4)
end
local function clear()                                      -- Ctrl-L
  picd_KeyDown(kCtrl, 2)
  picd_KeyDown(kL, 2)
  Frames(4)
  picd_KeyUp(kL)
  picd_KeyUp(kCtrl)
  Frames(8)
end

local banner = b.screen()
b.check("prompt", banner:match("Ready$"), banner)
b.check("banner", banner:match("%d+ bytes free"), banner)
clear()
Type("10 for i=1 to 3\n20 print i*i,\"quadrat\"\n30 next\nrun\n")
b.wait(100)
b.equal("typed and run", b.screen(), [[
10 for i=1 to 3
20 print i*i,"quadrat"
30 next
run
 1              quadrat
 4              quadrat
 9              quadrat
Ready]])
clear()
Type("list\n")
b.wait(100)
b.equal("listed", b.screen(), "list\n10 FOR I=1 TO 3\n20 PRINT I*I,\"quadrat\"\n30 NEXT\nReady")

-- The cursor goes up to line 10 and over the 3, which becomes 5; Enter takes the line as it stands.
for _ = 1, 4 do press(kUp) end
Type("10 FOR I=1 TO 5\n")
b.wait(20)
clear()
Type("prinx")
press(kBackspace)
Type("t 6*7\nrun 10\n")
b.wait(100)
b.equal("corrected", b.screen(),
        "print 6*7\n 42\nReady\nrun 10\n 1              quadrat\n 4              quadrat\n 9              quadrat\n" ..
        " 16             quadrat\n 25             quadrat\nReady")
clear()
Type("new\n10 input \"neved\",n*2\n")                          -- a mistake that only running finds
Type("run\n5\n")
b.wait(100)
b.check("error by keyboard", b.screen():match("Syntax error in 10\nReady$"), b.screen())
clear()
Type("10 input \"szam\",n:print n*2\nrun\n21\n")
b.wait(100)
b.equal("INPUT by keyboard", b.screen(), "10 input \"szam\",n:print n*2\nrun\nszam21\n 42\nReady")
b.done()
