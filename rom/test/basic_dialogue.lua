-- What a user sees of dialogues, jumps, rounding and refused commands.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

local function program(name, text, wanted, ...) b.equal(name, b.run(text, ...), wanted) end
local function command(text, wanted) b.equal(text, b.command(text), wanted) end

-- Question and answer that fill the row exactly leave no empty row, in any width. "? " comes behind the question.
for colours, width in pairs{[2] = 64, [4] = 32, [16] = 16} do
  for _, extra in ipairs{-1, 0, 1} do
    local question, answer = "NAME", ("x"):rep(width - 6 + extra)
    local output = b.run(string.format('10 graphics %d:input "%s";a$\n20 print len(a$)\n30 input "",a$\n' ..
                                       "40 graphics 2:print \"end\"", colours, question), answer)
    local rows = {("%s? %s"):format(question, answer:sub(1, width - 6))}
    if extra > 0 then rows[2] = answer:sub(width - 5) end
    rows[#rows + 1] = " " .. #answer
    b.equal(width .. " columns, " .. extra, b.screen(0), table.concat(rows, "\n"))
    b.keys("\r")
    b.wait(300)
    b.check("goes on", output ~= "" and b.screen(0) == "end\nReady", b.screen(0))
  end
end
program("question alone fills the row", '10 input "' .. ("q"):rep(62) .. '";a$:print "next"',
        ("q"):rep(62) .. "?\nnext", "")
b.equal("a typed line of a full row", b.command("print 1:rem " .. ("x"):rep(64 - 12)), " 1")

-- MOD: exactly x - y*INT(x/y), whatever the sizes; never as large as y.
command("print 1e15 mod 7;1e15 mod -7;-1e15 mod 7", " 6 -1  1")
command("print 2^60 mod 1000;3^24 mod 97;2^100 mod 3", string.format(" %d  %d  1",
        (1 << 60) % 1000, 3 ^ 24 // 1 % 97 | 0))
command("x=-1e-13 mod 1:print x<1;x>.999999", "-1 -1")
command("x=1e-13 mod -1:print x>-1;x<-.999999", "-1 -1")
command("print 5.5 mod 2;-5.5 mod 2;5.5 mod -2;-5.5 mod -2", " 1.5  0.5 -0.5 -1.5")
command("print .25 mod 1;-7 mod 7.0;0 mod 2.5;1e20 mod 1e-5<1e-5", " 0.25  0  0 -1")
command("print 40000 mod 7;-40000 mod 7;7 mod 40000;-7 mod 40000", string.format(" %d  %d  7  39993", 40000 % 7, -40000 % 7))
program("MOD is below its right side and has its sign", [[
  10 x=rnd(-5):for i=1 to 200:y=(rnd-.5)*10^(rnd(40)-20):x=(rnd-.5)*10^(rnd(40)-20)
  20 m=x mod y:if abs(m)>=abs(y) or m*sgn(y)<0 then print "bad";x;y;m
  30 next:print "ok"]], "ok")

-- Half-way between two numbers goes to the even one.
program("I/10*10 is I", "10 for i=1 to 1000:if i/10*10<>i then print i;\n20 next:print \"ok\"", "ok")
program("the same with a product the other way round",
        "10 for i=1 to 300:if 10*(i/10)<>i then print i;\n20 next:print \"ok\"",
        "ok")
command("a=2^40:print a+.5=a;a+1.5=a+2;a-.25=a;-a-.5=-a", "-1 -1 -1 -1")
command("a=2^39+1:print a*1.5-(2^39+2^38)", " 2")           -- 1.5 is half-way between 1 and 2: to the even one

-- CHR$(10) goes down, and scrolls in the last row.
program("line feed", '10 print "ab";chr$(10);"cd"', "ab\n  cd")
program("line feed in the last row", '10 cls:print "top":locate 23,5:print "a";chr$(10);"b";:input "",a$',
        ("\n"):rep(21) .. "     a\n      b")
b.keys("\r")
b.wait(100)
b.keys("\x0C" .. ("\x1F"):rep(40) .. "print 7\r")
b.wait(200)
b.equal("the cursor key does not scroll", b.screen(0), ("\n"):rep(20) .. "print 7\n 7\nReady")

-- Commands that say nothing sensible change nothing.
b.command("new")
b.enter("10 print 1\n20 print 2")
for _, text in ipairs{"delete -", "delete", "delete x", "delete 10 20", "delete 10x", "delete 10,20", "delete 10-20 30",
                      "delete 10-20-30", "renum abc", "renum 10,x", "renum 10 5", "renum 10,5,3", "renum 10+5",
                          "renum -5",
                      "renum 10,", "renum ,5", "renum 10x", "list 10 20", "list x", "list 10-20-30"} do
  command(text, "Syntax error")
end
command("renum 70000", "Illegal quantity")
command("renum 10,0", "Illegal quantity")
command("list", "10 PRINT 1\n20 PRINT 2")
b.command("renum 100,5")
command("list", "100 PRINT 1\n105 PRINT 2")
b.command("delete -100")
command("list", "105 PRINT 2")
b.command("renum 40000")
command("list", "40000 PRINT 2")

-- ON goes on behind from 0 to 255 when there is no such line; other numbers are an error.
program("ON 0, 3, 255", '10 for i=1 to 3:read a:on a goto 30,30:print a;:next:end\n20 data 0,3,255\n30 print "no"',
        " 0  3  255")
program("ON 2.9", '10 on 2.9 goto 30,20\n20 print "two":end\n30 print "one"', "two")
command("on 256 goto 10", "Illegal quantity")
command("on -1 gosub 10", "Illegal quantity")
command("on -.5 goto 10", "Illegal quantity")

-- A line far off the screen takes no longer than what is seen of it.
program("DRAW from far away", "10 t=time:plot -32768,-30000:draw 32767,32000:draw -32768,32767:draw 32767,-32767\n" ..
        "20 print time-t<10", "-1")

-- INPUT: Enter alone leaves numbers as they are and makes strings empty.
program("Enter alone", "10 n=5:input n:print n", "?\n 5", "")
program("Enter alone, array", "10 a(3)=1.5:input a(3):print a(3)", "?\n 1.5", "")
program("Enter alone, several", '10 a=1:c=2:s$="x":input a,s$,c:print a;"(";s$;")";c', "?\n 1 () 2", "")
program("Enter alone, a new variable", "10 input n:print n", "?\n 0", "")
program("a comma is no Enter", "10 n=5:input n,m:print n;m", "? ,3\nAgain, please\n? 1,2\n 1  2", ",3", "1,2")
program("Enter alone leaves others", "10 input a$:print len(a$)", "?\n 0", "")

-- RENUM that would make a line too long for the editor changes nothing.
b.command("new")
b.enter("1 print 1")
b.enter("2 ' " .. ("x"):rep(244))
local before = b.command("list")
command("renum 10000", "Line too long")
b.equal("nothing has changed", b.command("list"), before)
b.enter("2 " .. ("goto1:"):rep(30) .. "end")
before = b.command("list")
command("renum 10000", "Line too long")
b.equal("not even what refers to lines", b.command("list"), before)
b.command("renum 10")
b.equal("shorter numbers", (b.command("list 20"):gsub("[\n ]", "")), "20" .. ("GOTO10:"):rep(30) .. "END")

-- Jumps far away: the place is found by its number once.
b.command("new")
b.keys("\x0C10 t=time:for i=1 to 100:gosub 9000:next:print time-t<100:end\r")
for i = 1, 900 do b.keys("\x0C" .. 10 + i .. " rem\r") end
b.keys("\x0C9000 return\r")
b.wait(3000)
command("run", "-1")
-- Lines that move, are taken away and come back are found where they are.
program("lines that move", "10 goto 30\n20 rem\n30 print \"thirty\"\n40 gosub 60:end\n60 print \"sixty\":return",
        "thirty\nsixty")
b.enter("20 rem longer than before\n25 rem")
command("run", "thirty\nsixty")
b.enter("30")
command("goto 10", "No such line in 10")
b.enter("30 print \"again\"\n0 rem")
command("goto 10", "again\nsixty")
command("goto 30", "again\nsixty")
b.command("renum")
command("run", "again\nsixty")
program("many targets", "10 for i=1 to 5:on i gosub 100,164,228,292,356:next:end\n100 print 1;:return\n164 print 2;:return\n" ..
        "228 print 3;:return\n292 print 4;:return\n356 print 5;:return", " 1  2  3  4  5")
program("line 0", "0 n=n+1:if n<3 then 0\n10 print n", " 3")
b.done()
