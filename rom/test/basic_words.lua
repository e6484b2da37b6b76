-- The words that the listings of the 1980s use: each with what it does and the errors it ends in.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

local function program(text, wanted, ...) b.equal(text, b.run(text, ...), wanted) end
local function command(text, wanted) b.equal(text, b.command(text), wanted) end

-- How LIST shows them, and that what it shows makes the same line.
local function shown(typed, wanted)
  b.command("new")
  b.enter("10 " .. typed)
  local first = MemImage:get(b.kProgram, 80)
  b.equal(typed, b.command("list"), "10 " .. wanted)
  b.command("new")
  b.enter("10 " .. wanted)
  b.equal(wanted .. " again", MemImage:get(b.kProgram, 80), first)
end
shown('print using "##.#";a;b', 'PRINT USING "##.#";A;B')
shown("def fna(x,y$)=x+len(y$)", "DEF FNA(X,Y$)=X+LEN(Y$)")
shown("def fn total = 5", "DEF FNTOTAL=5")
shown("print fna(2);fnb$", "PRINT FNA(2);FNB$")
shown("defint a-z:defstr s,t:defdbl d:defsng x", "DEFINT A-Z:DEFSTR S,T:DEFDBL D:DEFSNG X")
shown('a$=string$(5,"x")+input$(2)+space$(3)', 'A$=STRING$(5,"x")+INPUT$(2)+SPACE$(3)')
shown("randomize:randomize timer", "RANDOMIZE:RANDOMIZE TIMER")
shown("print time$;instr(a$,b$);err;erl", "PRINT TIME$;INSTR(A$,B$);ERR;ERL")
shown('line input "x";a$', 'LINE INPUT "x";A$')
shown('mid$(a$,2,1)="x"', 'MID$(A$,2,1)="x"')
shown("on error goto 100:resume next:resume 20:resume", "ON ERROR GOTO 100:RESUME NEXT:RESUME 20:RESUME")
shown("a%=5:b%(3)=a%", "A%=5:B%(3)=A%")
shown("swap a,b:erase c,d$", "SWAP A,B:ERASE C,D$")
shown("print fix(x)xor 5\\2", "PRINT FIX(X) XOR 5\\2")
shown("print csrlin;pos(0)", "PRINT CSRLIN;POS(0)")
shown("lprint a:llist 10-20", "LPRINT A:LLIST 10-20")
shown("tron:troff:option base 1", "TRON:TROFF:OPTION BASE 1")
shown("print ucase$(a$)+lcase$(b$)", "PRINT UCASE$(A$)+LCASE$(B$)")
shown("error 5", "ERROR 5")
shown("a.b=1:c.d.e$=x.y%", "A.B=1:C.D.E$=X.Y%")
shown("remarkable", "REM arkable")
shown("remark$", "REM ark$")
b.command("new")
b.enter("10 a!=1:b#=&hff")                                 -- marks of precision are dropped
command("list", "10 A=1:B=&FF")

-- PRINT USING. Numbers.
local function using(field, list, wanted)
  command('?using"' .. field .. '";' .. list, wanted)
end
using("###", "5;-5;123", "  5 -5123")
using("##", "123", "%123")
using("###.##", "3.14159;-2.5;100;.005;.004", "  3.14 -2.50100.00  0.01  0.00")
using("#.##", "-.5;.5;-1.5", "-.500.50%-1.50")
using(".##", ".456;1", ".46%1.00")
using("+##.#", "5;-5;0", " +5.0 -5.0 +0.0")
using("##.#+", "5;-5", " 5.0+ 5.0-")
using("##.#-", "5;-5", " 5.0  5.0-")
using("$$##.##", "4.5;-4.5;1234.5", "  $4.50 -$4.50%$1234.50")
using("**##.##", "4.5;-4.5;1234.5", "***4.50**-4.501234.50")
using("**$#.##", "4.5;123.45", "**$4.50$123.45")
using("#,###,###", "1234567;1234;123;-1234567", "1,234,567    1,234      123%-1,234,567")
using("##,.##", "1234.5", "%1,234.50")
using("#.###^^^^", "1234567;-.00012;0", "0.123E+07-.120E-030.000E+00")
using("##.##^^^^", "234.56;-234.56;1;0", " 2.35E+02-2.35E+02 1.00E+00 0.00E+00")
using("+#.##^^^^", "99999;-.5", "+1.00E+05-5.00E-01")
using("###", "999.5;.5;.4", "%1000  1  0")
using("#####", "1e10", "%10000000000")
using("##########", "1234567890", "1234567890")
using("###.###", "1.0005;2.675", "  1.001  2.675")
using("##.##", "1.005;2.675", " 1.01 2.68")
-- Text around fields, several values, the text once more.
using("Total: ### kg", "5", "Total:   5 kg")
using("## and ##.", "1;2;3", " 1 and  2. 3 and")
using("_##_!", "5", "#5!")
using("a+b ##", "7", "a+b  7")
using("(##) ", "1,2;3", "( 1) ( 2) ( 3)")
-- Strings.
using("!", '"abc"', "a")
using("[&]", '"abc";"";"x"', "[abc][][x]")
command('?using"[\\  \\]";"abcdef";"ab"', "[abcd][ab  ]")
command('?using"\\\\!";"xyz";"q"', "xyq")
command('a$="##.#":?using a$+" "+a$;1;2', " 1.0  2.0")
command('?using"##";1;:?"x"', " 1x")
command('?"a";using"##";5', "a 5")
command('?using"abc";1', "abc\nIllegal quantity")
command('?using"";1', "Illegal quantity")
command('?using"##";"a"', "Type mismatch")
command('?using"!";1', "Type mismatch")
command('?using 5;1', "Type mismatch")
command('?using"##",1', "Syntax error")

-- DEF FN.
program("10 def fna(x)=x*x+1:def fnb=a+1\n20 a=5:print fna(3);fnb;fn a(a)", " 10  6  26")
program("10 x=7:def fna(x)=x*2\n20 print fna(3);x", " 6  7")
program("10 def fna(x,y)=x-y:x=1:y=2\n20 print fna(y,x);fna(fna(9,2),fna(5,4));x;y", " 1  6  1  2")
program('10 def fnl$(a$,n)=left$(a$+"....",n):a$="keep"\n20 print fnl$("ab",4);fnl$("abcdef",3);a$', "ab..abckeep")
program('10 def fnr$(a$)=a$:b$="b"\n20 c$=fnr$(b$)+fnr$("x"+b$)+fnr$(fnr$("y")):print c$;b$', "bxbyb")
program("10 def fni%(x)=x/2:print fni%(5);fni%(4)", " 3  2")
program("10 def fna(x%)=x%*10:print fna(2.6)", " 30")
program("10 def fnf(x,y,z,u,v)=x+10*y+100*z+1000*u+10000*v\n20 print fnf(1,2,3,4,5)", " 54321")
program("10 def fna(x)=x+1\n20 def fna(x)=x+2\n30 print fna(1)", " 3")
program("10 def fna(x)=y:y=3:print fna(0):y=4:print fna(0)", " 3\n 4")
program("10 def fna(x)=fnb(x)+1:def fnb(x)=x*x:print fna(4)", " 17")
program("10 print fnq(1)", "Undefined function in 10")
program("10 def fna(x)=x\n20 print fna(1,2)", "Syntax error in 20")
program("10 def fna(x,y)=x\n20 print fna(1)", "Syntax error in 20")
program("10 def fna(x)=x\n20 print fna", "Syntax error in 20")
program('10 def fna(x)=x\n20 print fna("a")', "Type mismatch in 20")
program('10 def fna(x$)=len(x$)\n20 print fna(1)', "Type mismatch in 20")
program('10 def fna(x)="a"\n20 print fna(1)', "Type mismatch in 20")
program("10 def fna(x)=fna(x)\n20 print fna(1)", "Expression too complex in 20")
program("10 def fna$(x$)=fna$(x$)\n20 print fna$(\"x\")", "Expression too complex in 20")
program("10 def fna(x(1))=x", "")
command("def fna(x)=x", "Not in direct mode")
-- Strings in functions while the heap is tidied.
program([[
  10 clear 8000:def fnj$(a$,b$)=a$+"-"+b$:def fnt$(a$)=fnj$(a$,fnj$(a$,"z"))
  20 for i=1 to 150:x$=fnt$(chr$(65+i mod 26)):if x$<>chr$(65+i mod 26)+"-"+chr$(65+i mod 26)+"-z" then print "bad";i;x$
  30 next:print "ok"]], "ok")
b.command("clear 49152")

-- DEFINT and its like.
program("10 defint a-z:a=1.5:print a", " 1.5")
program('10 defstr s,u-w:s="x":u(3)="y":w1="z":print s;u(3);w1;s$', "xyzx")
program('10 defstr a:def fna(a)=len(a)\n20 read a:print a;fna$("abc"):data hi', "hi\nType mismatch in 20")
program("10 defstr 5", "Syntax error in 10")
program("10 defstr ab", "Syntax error in 10")

-- STRING$, SPACE$, INPUT$.
command('?string$(3,"*");string$(2,65);"[";space$(3);"]";string$(0,"x");space$(0)', "***AA[   ]")
command('?len(string$(255,"x"));len(space$(255))', " 255  255")
command('?string$(256,"x")', "Illegal quantity")
command('?string$(3,"")', "Illegal quantity")
command("?string$(3,256)", "Illegal quantity")
command("?space$(-1)", "Illegal quantity")
command('?space$("a")', "Type mismatch")
command('?string$("a",1)', "Type mismatch")
command("?string$(3)", "Syntax error")
b.command("new")
b.enter('10 a$=input$(3):print "<";a$;">"')
b.keys("\x0Crun\r")
b.wait(50)
b.keys("x\ry")
b.wait(50)
b.equal("INPUT$", b.screen(1), "<x\ny>\nReady")

-- RANDOMIZE, TIMER, TIME$.
program("10 randomize 5:a=rnd:randomize 5:print a=rnd;:randomize 6:print a=rnd", "-1  0")
program("10 randomize:a=rnd:print a>0 and a<1", "-1")
program("10 t=timer\n20 if timer-t<.5 then 20\n30 print timer-t<.6;abs(timer-time/50)<.1", "-1 -1")
program('10 a$=time$:print len(a$);mid$(a$,3,1);mid$(a$,6,1)', " 8 ::")
for address, byte in ipairs{0x50, 0xF6, 0x38, 0} do MemImage[0x0B03 + address] = byte end
local ticks = 0x38F650
local seconds = ticks // 50
b.equal("TIME$ of " ..
        seconds, b.command("?time$"), string.format("%02d:%02d:%02d", seconds // 3600 % 24, seconds // 60 % 60, seconds % 60))
command("time$=5", "Syntax error")
command("randomize \"a\"", "Type mismatch")

-- LINE INPUT.
program('10 line input "Text: ";a$\n20 print "<";a$;">"', 'Text: a, "b": c\n<a, "b": c>', 'a, "b": c')
program('10 line input a$(2)\n20 print len(a$(2))', "\n 0", "")
program('10 line input "",a$:print a$', "xyz\nxyz", "xyz")
program("10 line input a", "12\nType mismatch in 10", "12")
command("line input a$", "Not in direct mode")
command("line a$", "Syntax error")

-- MID$ that takes something.
program('10 a$="abcdef":mid$(a$,3,2)="XY":print a$:mid$(a$,5)="12345":print a$:mid$(a$,1,1)="":print a$',
        "abXYef\nabXY12\nabXY12")
program('10 a$="same":b$=a$:mid$(a$,1)="T":print a$;b$:c$(1)="q"+a$:mid$(c$(1),2,2)="--":print c$(1);a$',
        "Tamesame\nq--meTame")
program('10 a$="abc":mid$(a$,4)="x"', "Illegal quantity in 10")
program('10 a$="abc":mid$(a$,0)="x"', "Illegal quantity in 10")
program('10 mid$(a$,1)="x"', "Illegal quantity in 10")
program('10 mid$(a,1)="x"', "Type mismatch in 10")
program('10 a$="abc":mid$(a$,1)=5', "Type mismatch in 10")

-- INSTR.
command('?instr("hello","l");instr(4,"hello","l");instr("hello","lo");instr("hello","x");instr(5,"hello","l")',
        " 3  4  4  0  0")
command('?instr("abc","");instr(2,"abc","");instr("","a");instr(9,"abc","a");instr("a","abc")', " 1  2  0  0  0")
command('?instr("aab","ab");instr("abababc","ababc");instr(255,string$(255,"x"),"x")', " 2  3  255")
command('?instr(0,"a","a")', "Illegal quantity")
command('?instr(256,"a","a")', "Illegal quantity")
command('?instr("a",5)', "Type mismatch")
command('?instr("a")', "Syntax error")

-- ON ERROR, RESUME, ERR, ERL, ERROR.
program("10 on error goto 100\n20 a=0:print 1/a:print \"next\"\n30 end\n100 print err;erl:a=2:resume",
        " 11  20\n 0.5\nnext")
program("10 on error goto 100\n20 print 1/0:print \"next\"\n30 end\n100 resume next", "next")
program("10 on error goto 100\n20 print 1/0\n30 print \"no\"\n40 print \"forty\":end\n100 resume 40", "forty")
program("10 on error goto 100:for i=1 to 3:print 1/(i-2);:next\n20 end\n100 print \"e\";:resume next", "-1 e 1")
program("10 on error goto 100:gosub 50:print \"back\":end\n50 x=asc(\"\"):return\n100 resume next", "back")
program("10 on error goto 100:if 1/0 then print \"no\"\n20 print \"line\":end\n100 resume next", "line")
program("10 on error goto 100\n20 print 1/0\n100 on error goto 0", "Division by zero in 20")
program("10 on error goto 100\n20 print 1/0\n100 print asc(\"\")", "Illegal quantity in 100")
program("10 on error goto 100\n20 on error goto 0\n30 print 1/0\n100 print \"no\"", "Division by zero in 30")
program("10 on error goto 500", "No such line in 10")
program("10 on error goto 100\n20 error 200\n30 end\n100 print err;erl", " 200  20")
program("10 error 200", "Unprintable error in 10")
program("10 error 11", "Division by zero in 10")
program("10 on error goto 100\n20 for i=1 to 3:read a:error a:next:end\n30 data 5,9,99\n100 print err;:resume next",
        " 5  9  99")
program("10 resume", "RESUME without error in 10")
program("10 error 0", "Illegal quantity in 10")
program("10 error 256", "Illegal quantity in 10")
program("10 on error goto 100\n20 a$=1\n100 print err:end", " 13")
program("10 on error goto 100\n20 next\n30 return\n40 wend\n50 goto 999\n60 dim a(1):dim a(1)\n70 print a(5)\n80 read x\n90 end\n" ..
        "100 print err;:resume next", " 1  3  30  8  10  9  4")
program("10 on error goto 100\n20 def fna(x)=1/x:print fna(0)\n30 end\n100 print err;:resume next", " 11")
program("10 on error goto 10:stop", "Break in 10")
b.command("new")
command("on error goto 10", "No such line")
b.enter("10 on error goto 20:end\n20 print \"trap\"")
b.command("run")
command("print 1/0", "Division by zero")                    -- direct lines are not the program's
b.command("run")
command("error 5", "Illegal quantity")

-- Whole numbers.
program("10 a%=2.5:b%=-2.5:c%=32767:print a%;b%;c%;a%*c%", " 3 -2  32767  98301")
program("10 a%=32768", "Overflow in 10")
program("10 a%=-32769", "Overflow in 10")
program('10 a%="x"', "Type mismatch in 10")
program("10 a=1:a%=2:a$=\"3\":a(1)=4:a%(1)=5:a$(1)=\"6\":print a;a%;a$;a(1);a%(1);a$(1)", " 1  2 3 4  5 6")
program("10 f0=fre:dim f%(8191):print f0-fre<16400;f0-fre>=16384:f%(8191)=7:f%(0)=-8:print f%(8191);f%(0);f%(5)",
        "-1 -1\n 7 -8  0")
program("10 dim a%(3,4):for i=0 to 3:for j=0 to 4:a%(i,j)=i*10+j:next j,i:print a%(3,4);a%(0,1);a%(2,0)", " 34  1  20")
program("10 for i%=1 to 5 step 2:print i%;:next i%:print i%", " 1  3  5  7")
program("10 for i%=3 to 1 step -1:for j%=1 to 2:print i%;j%;:next j%,i%", " 3  1  3  2  2  1  2  2  1  1  1  2")
program("10 for i%=1.4 to 2.6:print i%;:next", " 1  2  3")
program("10 for i%=32766 to 32767:print i%;:next", " 32766  32767\nOverflow in 10")
program("10 for i%=5 to 1:print \"no\":next i%:print i%", " 5")
program("10 input a%,b%(1):print a%;b%(1)", "? 1.6,-7\n 2 -7", "1.6,-7")
program("10 input a%:print a%", "? 40000\nAgain, please\n? 4\n 4", "40000", "4")
program("10 read a%,b%(2):print a%+b%(2):data 5,6", " 11")
program("10 dim a%(5):print a%(6)", "Bad subscript in 10")
program("10 n%=5:n%(3)=1:for i=0 to 10:s=s+n%(i):next:print s;n%", " 1  5")
program("10 total%=3:total=4.5:print total%*total", " 13.5")

-- SWAP.
program('10 a=1:b=2.5:swap a,b:print a;b:a$="x":b$="y"+a$:swap a$,b$:print a$;b$', " 2.5  1\nyxx")
program("10 a%=1:b%(2)=5:swap a%,b%(2):print a%;b%(2):x(1)=3:swap x(1),y:print x(1);y", " 5  1\n 0  3")
program([[
  10 clear 8000:dim a$(9):for i=0 to 9:a$(i)=chr$(65+i)+"x":next
  20 for k=1 to 60:for i=0 to 8:swap a$(i),a$(i+1):b$=b$+"":a$(9)=a$(9)+"":next:f=fre:next
  30 for i=0 to 9:print a$(i);:next]], "AxBxCxDxExFxGxHxIxJx")
b.command("clear 49152")
command("swap a,a$", "Type mismatch")
command("swap a,a%", "Type mismatch")
command("swap a", "Syntax error")
command("swap 1,2", "Syntax error")

-- FIX, XOR, \, MOD beside them.
command("?fix(2.7);fix(-2.7);fix(5);fix(-1e10-.5)", " 2 -2  5 -1E+10")
command("?5 xor 3;-1 xor 1;1 or 2 xor 2;1 xor 3 or 1;70000 xor 1", " 6 -2  1  2\nIllegal quantity")
command("?7\\2;-7\\2;7\\-2;-7\\-2;7.6\\2.4;1e9\\3;2*7\\4;7\\2+1", " 3 -3 -3  3  4  333333333  3  4")
command("?1\\0", "Division by zero")
command("?1\\.3", "Division by zero")
command('?"a" xor 1', "Type mismatch")
command('?1 \\ "a"', "Type mismatch")
command('?fix("a")', "Type mismatch")

-- CSRLIN, POS.
command("locate 5,7:x=csrlin:y=pos(0):locate 1,0:?x;y;pos", " 5  7  6")

-- The printer.
local function printed() return (TPrint.Text1:gsub("\r\n", "|")) end
TPrint.Text1 = ""
b.command('lprint "abc";1;tab(20);"x":lprint 1,2:print "screen"')
b.equal("LPRINT", printed(), "abc 1               x| 1               2 |")
TPrint.Text1 = ""
b.command("new")
b.enter("10 print 1\n20 print 2\n30 print 3")
command("llist -20", "")
b.equal("LLIST", printed(), "10 PRINT 1|20 PRINT 2|")
TPrint.Text1 = ""
command("lprint 1/0", "Division by zero")
command('lprint using "##.#";5:print 6', " 6")
b.equal("LPRINT USING", printed(), " 5.0|")

-- AUTO.
b.command("new")
b.keys("\x0Cauto 100,5\rprint 1\rprint 2\r\r")
b.wait(200)
command("list", "100 PRINT 1\n105 PRINT 2")
b.keys("\x0Cauto\rrem ten\rrem twenty\r\x0C\r")
b.wait(200)
command("list", "10 REM ten\n20 REM twenty\n100 PRINT 1\n105 PRINT 2")
b.keys("\x0Cauto 65530,5\rrem\rrem last\r")
b.wait(200)
command("list 65530-", "65530 REM\n65535 REM last")
b.keys("\x0Cauto\r\x0Cprint 5\r")
b.wait(200)
b.equal("a direct line ends AUTO", b.screen(1), " 5\nReady")
command("auto x", "Syntax error")
command("auto 10,", "Syntax error")

-- ERASE.
program("10 dim a(10),b(5),c$(3):b(2)=7:c$(1)=\"x\"+\"y\":d=5:erase a\n20 print b(2);c$(1);d:dim a(20):a(20)=1:print a(20);b(2)",
        " 7 xy 5\n 1  7")
program("10 for i=1 to 50:dim a(800):a(800)=i:erase a:next:print i", " 51")
program([[
  10 dim a$(20),q(3):for i=0 to 20:a$(i)="s"+str$(i):next:long=9:s$="keep"+"er":dim b$(3):b$(2)=s$+"!":erase a$
  20 for i=1 to 30:f=fre:x$=x$+"y":next:print s$;b$(2);len(x$);long:dim a$(2):print "<";a$(1);">"]],
      "keeperkeeper! 30  9\n<>")
program("10 dim a(5):for i=1 to 3:k=i:for zz=1 to 2:next:if i=1 then erase a\n20 next:print i;k;zz", " 4  3  3")
program("10 dim a(5):for zz=1 to 3:if zz=1 then erase a\n20 print zz;:next", " 1  2  3")
program("10 dim f%(5),g(2):g(1)=3:erase f%,g:print g(1)", " 0")
program("10 erase a", "Illegal quantity in 10")
program("10 erase 5", "Syntax error in 10")

-- TRON.
program("10 tron\n20 print 1:print 2\n30 troff\n40 print 3", "[20] 1\n 2\n[30] 3")

-- UCASE$, LCASE$.
command('?ucase$("aBc1z{");lcase$("AbC1Z[")', "ABC1Z{abc1z[")
command("?asc(ucase$(chr$(&90)));asc(ucase$(chr$(&98)));asc(lcase$(chr$(&88)));asc(lcase$(chr$(&89)))",
        string.format(" %d  %d  %d  %d", 0x80, 0x88, 0x98, 0x89))
command('?ucase$("")+"x";ucase$(5)', "x\nType mismatch")

-- Words that are variables once they have been given a value.
program("10 pi=3:print pi:time=5:print time;pi+time:in=7:print in*2", " 3\n 5  8\n 14")
program("10 for in=1 to 3:print in;:next in:read pi:print pi:data 9", " 1  2  3  9")
program("10 input time:print time", "? 12\n 12", "12")
program("10 for pi=2 to 1:print \"no\":next pi:print pi", " 2")
program("10 for time=2 to 1:for in=1 to 9:print \"no\":next in,time:print time;1", " 2  1")
program("10 if 1 then for in=1 to 0:print \"no\":next else print \"no\"\n20 print in", " 1")
b.command("new")
command("print int(pi*100)", " 314")                       -- that program is gone
program("10 let pi=3\n20 clear:print int(pi*1000)", " 3141")
command("sin=5", "Syntax error")
command("len=5", "Syntax error")

-- CLEAR with room for strings; OPTION.
program("10 clear 500:print a;:clear 100:print fre>30000", " 0 -1")
program("10 option base 1:dim a(3):a(3)=1:print a(3)", " 1")
b.command("new")
b.enter("1 option crunch")
b.enter("10 fori=1to3:printi;:nexti")
b.enter("20 ifi=4thenprint\"four\":goto40")
b.enter("30 end")
b.enter("40 a=5:b=2:ifa>bandb=2thenc$=chr$(65)+left$(\"xyz\",2):printc$;len(c$)")
b.enter("50 printastring$(2,\"*\")")
command("list 10-50", "10 FOR I=1 TO 3:PRINT I;:NEXT I\n20 IF I=4 THEN PRINT \"four\":GOTO 40\n30 END\n" ..
        "40 A=5:B=2:IF A>B AND B=2 THEN C$=CHR$(65)+LEFT$(\"xyz\",2):PRINT\nC$;LEN(C$)\n50 PRINT A STRING$(2,\"*\")")
command("run", " 1  2  3 four\nAxy 3\n 5 **")
b.enter("1 option crunch")
command("list 1", "1 OPTION CRUNCH")
b.command("new")
b.enter("10 total=1")
command("list", "10 TOTAL=1")
b.done()
