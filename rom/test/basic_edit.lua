-- Lines: entering, LIST, DELETE, RENUM, NEW; the program in memory; .cas files.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

local function list(name, wanted, range) b.equal(name, b.command("list" .. (range or "")), wanted) end

-- What is typed, and how LIST shows it.
local function shown(typed, wanted)
  b.command("new")
  b.enter("10 " .. typed)
  list(typed, "10 " .. wanted)
end
shown("print a", "PRINT A")
shown("PrInT aB$", "PRINT AB$")
shown('print "Text  a";b', 'PRINT "Text  a";B')
shown("?5", "PRINT 5")
shown("let a=5", "LET A=5")
shown("a=5:b=6", "A=5:B=6")
shown("for i=1 to 10 step 2:next i", "FOR I=1 TO 10 STEP 2:NEXT I")
shown("for   i  =  1   to   10", "FOR I=1 TO 10")
shown("if a=1 and b<>2 or not c then 100 else print -1", "IF A=1 AND B<>2 OR NOT C THEN 100 ELSE PRINT -1")
shown("if a<=1 then goto 100", "IF A<=1 THEN GOTO 100")
shown("if a=<1 and b=>2 and a><b then 5", "IF A<=1 AND B>=2 AND A<>B THEN 5")
shown("on a goto 10,20,30", "ON A GOTO 10,20,30")
shown("goto100", "GOTO 100")
shown("if a then100", "IF A THEN 100")
shown("print sin(x)+left$(a$,3)", "PRINT SIN(X)+LEFT$(A$,3)")
shown("a(1,2)=b$(3)", "A(1,2)=B$(3)")
shown("a (1)=2", "A(1)=2")
shown("print 1.50;0.1;1e3;2e20;100000;32768", "PRINT 1.5;0.1;1000;2E+20;100000;32768")
shown("print &ff;&0", "PRINT &FF;&00")
shown("rem  two blanks", "REM  two blanks")
shown("rem", "REM")
shown("print:rem print 1", "PRINT:REM print 1")
shown("'short remark", "'short remark")
shown("a=1 'why", "A=1 'why")
shown("data 1, two,\"x:y\":print", "DATA 1, two,\"x:y\":PRINT")
shown('print "a""b"', 'PRINT "a""b"')
shown('print "open', 'PRINT "open"')
shown("   print", "   PRINT")
shown("total=tomato+note", "TOTAL=TOMATO+NOTE")
shown("print 2*-3^2 mod 4", "PRINT 2*-3^2 MOD 4")
shown("print a;b,c;", "PRINT A;B,C;")
shown("print tab(5);spc(3)", "PRINT TAB(5);SPC(3)")
shown("input \"n\";a$", 'INPUT "n";A$')
shown("print inkey$;pi;time", "PRINT INKEY$;PI;TIME")
shown("poke 1000,peek(1001)", "POKE 1000,PEEK(1001)")
shown("restore 100:run 10", "RESTORE 100:RUN 10")
shown("print (1+2)*3", "PRINT (1+2)*3")
shown("print\"a\"", 'PRINT "a"')
shown("draw 1,2,-3,4", "DRAW 1,2,-3,4")
shown('print "a" "b";5 "c" d "e"', 'PRINT "a" "b";5 "c" D "e"')
shown("a=3.14159265359", "A=3.14159265359")                -- as many digits as it takes
shown("a=12345678901", "A=1.2345678901E+10")
shown("a=1.00000000001", "A=1.00000000001")
shown("a=65535.123456", "A=65535.123456")

-- What LIST shows can be typed again with the same tokens.
local kEverything = [[
10 FOR I=1 TO 10 STEP -2:NEXT I:READ A$,B:INPUT "x";C$(1,2),D(3)
15 PRINT "a" "b" 1.23456789012;0.1;-2.5E-7;&0F;"c" "d"
20 IF A=1 OR NOT B THEN 10 ELSE PRINT TAB(5);-X^2;MID$(A$,1),
30 WHILE I<=20:PLOT I,2*I:WEND:SOUND 440,5:A=&7F MOD 7.25
40 ON LEN(X$) GOSUB 10,20:DIM NUMBER(10),Q$(3,4):REM remark]]
b.command("new")
b.enter(kEverything)
local function image() return MemImage:get(b.kProgram, b.word(b.kProgEnd) - b.kProgram) end
local tokens = image()
list("everything", kEverything)
local again = b.command("list")
b.command("new")
b.enter(again)
b.equal("tokens of what LIST has shown", image(), tokens)

-- Lines in order, replaced, taken away.
b.command("new")
b.enter("30 print 3\n10 print 1\n20 print 2")
list("sorted", "10 PRINT 1\n20 PRINT 2\n30 PRINT 3")
b.enter("20 print 22222")
list("replaced", "10 PRINT 1\n20 PRINT 22222\n30 PRINT 3")
b.enter("20")
list("taken away", "10 PRINT 1\n30 PRINT 3")
b.enter("99")
list("nothing to take away", "10 PRINT 1\n30 PRINT 3")
b.enter("0 print 0\n65535 print 9")
list("first and last number", "0 PRINT 0\n10 PRINT 1\n30 PRINT 3\n65535 PRINT 9")
b.equal("run", b.command("run"), " 0\n 1\n 3\n 9")
list("one line", "10 PRINT 1", " 10")
list("no line", "", " 11")
list("from", "30 PRINT 3\n65535 PRINT 9", " 30-")
list("to", "0 PRINT 0\n10 PRINT 1", " -10")
list("from to", "10 PRINT 1\n30 PRINT 3", " 5-40")
b.equal("delete needs a range", b.command("delete"), "Syntax error")
b.command("delete 10-30")
list("range deleted", "0 PRINT 0\n65535 PRINT 9")
b.command("delete 1-2")
list("empty range deleted", "0 PRINT 0\n65535 PRINT 9")
b.command("delete 65535")
list("one line deleted", "0 PRINT 0")
b.command("delete 0-")
list("all deleted", "")

-- The pointers. A line is length, number, tokens, 0; behind the last a 0.
local function pointers(name, size)
  b.equal(name .. ": start", b.word(b.kProgStart), b.kProgram)
  b.equal(name .. ": end", b.word(b.kProgEnd), b.kProgram + size)
  b.equal(name .. ": variables", b.word(b.kVarEnd), b.kProgram + size)
  b.equal(name .. ": final 0", MemImage[b.kProgram + size - 1], 0)
end
b.command("new")
pointers("no program", 1)
b.enter("10 rem ab\n300 a=5")
pointers("two lines", 7 + 8 + 1)
b.equal("first line", MemImage:get(b.kProgram, 7), "\7\10\0\xA6ab\0")
b.equal("second line", MemImage:get(b.kProgram + 7, 4), "\8\x2C\1\1")
b.command("a=1")
b.equal("a variable of one letter", b.word(b.kVarEnd), b.word(b.kProgEnd) + 6)
b.command("new")
pointers("new", 1)

-- RENUM.
b.enter([[
5 goto 7
7 gosub 100:if a then 5 else 7
8 on a goto 5,7,100:restore 8
9 if a then goto 100 else gosub 999
100 return]])
b.command("renum")
list("renum", [[
10 GOTO 20
20 GOSUB 50:IF A THEN 10 ELSE 20
30 ON A GOTO 10,20,50:RESTORE 30
40 IF A THEN GOTO 50 ELSE GOSUB 999
50 RETURN]])
b.command("renum 1000,1")
list("renum with start and step", [[
1000 GOTO 1001
1001 GOSUB 1004:IF A THEN 1000 ELSE 1001
1002 ON A GOTO 1000,1001,1004:RESTORE 1002
1003 IF A THEN GOTO 1004 ELSE GOSUB 999
1004 RETURN]])
for _, wrong in ipairs{"renum 10,10 x", "new x", "delete 1000 x", "delete 1000-1004,5", "load \"x\" 5"} do
  b.equal(wrong, b.command(wrong), "Syntax error")
end
b.equal("renum beyond the last number", b.command("renum 65000,500"), "Illegal quantity")
b.equal("renum by 0", b.command("renum 10,0"), "Illegal quantity")
list("nothing changed by that", "1004 RETURN", " 1004")

-- Long lines, and many of them.
b.command("new")
local long = '10 print "' .. ("x"):rep(230) .. '"'
b.enter(long)
local out = b.command("run")
b.equal("a line of 240 characters", (out:gsub("\n", "")), ("x"):rep(230))

-- A line that LIST would show with more than 250 characters can't be entered: it could not be edited.
b.command("new")
b.enter("10 a=1.7014118346e38")                            -- nearly the largest number
b.enter(b.command("list"))
b.check("the largest numbers come back", b.command("list"):match("^10 A=1%.70141183459?%d*E%+38$"), b.command("list"))
b.enter("10 rem")
b.equal("grows to 643 characters", b.command("10 " .. ("?1:"):rep(80)), "Line too long")
list("the old line stays", "10 REM")
b.enter('10 ?"' .. ("y"):rep(239))                          -- 10 PRINT "yy...": 10 more and the last quote
b.equal("250 characters", (b.command("list"):gsub("\n", "")), '10 PRINT "' .. ("y"):rep(239) .. '"')
b.equal("251 characters", b.command('10 ?"' .. ("y"):rep(240)), "Line too long")
b.equal("as a command it may be longer", b.command(("?;:"):rep(79) .. "?1"), " 1")
b.command("new")
local many, sum = {}, 0
for i = 1, 120 do
  many[i] = i .. " s=s+" .. i * 7
  sum = sum + i * 7
end
for i = 120, 1, -1 do b.keys("\x0C" .. many[i] .. "\r") end
b.wait(100)
b.enter("200 print s")
b.equal("120 lines entered backwards", b.command("run"), b.printed(sum))

-- .cas files: saved and loaded behind the interpreter's back.
b.command("new")
b.enter(kEverything)
local before = image()
local file = os.tmpname()
os.remove(file)
SaveCAS(file, b.word(b.kProgStart), b.word(b.kProgEnd))
b.command("new")
b.enter("10 print \"other\"")
b.command("a$=\"text\"+\"\":a=5")
LoadCAS(file .. ".cas")
b.equal("the file comes back", image(), before)
list("loaded program", kEverything)
b.equal("variables are gone", b.command("print a;a$;\".\""), " 0 .")
b.command("new")
b.enter("10 print \"sum\";\n20 for i=1 to 10:s=s+i:next:print s")
SaveCAS(file, b.word(b.kProgStart), b.word(b.kProgEnd))
b.command("new")
b.command("dim a(500):for i=1 to 20:a$=a$+\"x\":next")
LoadCAS(file .. ".cas")
b.equal("RUN after Load cas", b.command("run"), "sum 55")
b.equal("and again", b.command("run"), "sum 55")
SaveCAS(file, b.word(b.kProgStart), b.word(b.kProgEnd) - 1)
LoadCAS(file .. ".cas")
list("a file without the final 0", "10 PRINT \"sum\";\n20 FOR I=1 TO 10:S=S+I:NEXT:PRINT S")
SaveCAS(file, b.kProgram, b.kProgram)
LoadCAS(file .. ".cas")
list("an empty file", "")
pointers("an empty file", 1)
os.remove(file .. ".cas")

-- A warm start keeps the program.
b.enter("10 print \"kept\"")
MachineReset()
b.boot()
b.equal("program after a reset", b.command("run"), "kept")

-- The codes of the words never change: cassette files of any age run.
local kWords = [[
END FOR NEXT DIM READ INPUT LET IF RETURN STOP ON PRINT CONT NEW CLEAR WHILE WEND RENUM CLS GRAPHICS INK
PAPER PALETTE BORDER PLOT DRAW CIRCLE PAINT LOCATE SOUND BEEP POKE OUT CALL LOAD SAVE VERIFY DATA REM ' GOTO
GOSUB RUN RESTORE LIST DELETE ELSE THEN TO STEP TAB SPC NOT PI RND FRE POS TIME INKEY$ POINT LEFT$ RIGHT$
MID$ LEN ASC VAL PEEK IN ABS INT SGN SQR SIN COS TAN ATN EXP LOG CHR$ STR$ HEX$ OR AND <= >= <> = < > + -
MOD * / ^]]
local code = 0x80
for word in kWords:gmatch("%S+") do
  b.command("new")
  b.keys("\x0C10 " .. word .. "\r")
  b.wait(100)
  b.equal("code of " .. word, MemImage[b.kProgram + 3], code)
  code = code + 1
end
b.equal("old words", code, 0xDF)
b.command("new")
b.done()
