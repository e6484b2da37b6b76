-- Programs: strings, their memory, PRINT's layout, number formatting, INPUT.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

local function program(name, text, wanted, ...) b.equal(name, b.run(text, ...), wanted) end
local function command(text, wanted) b.equal(text, b.command(text), wanted) end

command([[print left$("hello",3);"/";left$("hello",9);"/";left$("hello",0);"/"]], "hel/hello//")
command([[print right$("hello",3);"/";right$("hello",9);"/";right$("hello",0);"/"]], "llo/hello//")
command([[print mid$("hello",2,3);"/";mid$("hello",4);"/";mid$("hello",6);"/";mid$("hello",5,9);"/"]], "ell/lo//o/")
command([[print mid$("hello",200,3);"/";mid$("",1);"/"]], "//")
command([[print chr$(72);chr$(105);"/";str$(12);"/";str$(-1.5);"/";hex$(255);"/";hex$(-1);"/";hex$(0)]],
        "Hi/12/-1.5/FF/FFFF/0")
command([[print "a"+"b"+"c"+str$(1+2)+chr$(33)]], "abc3!")
command([[print "say ""yes""";len("""")]], 'say "yes" 1')
command([[print "no end]], "no end")
command([[a$="x":b$=a$:a$="y":print a$;b$]], "yx")
command([[a$="abc":a$=a$+a$:a$=a$+a$:print a$;len(a$)]], "abcabcabcabc 12")
command([[a$="hello":a$=mid$(a$,2,3):print a$]], "ell")
command([[print "1"+"2";val("1"+"2")+1]], "12 13")
command([[print left$(mid$("abcdefgh",3,4),2)+right$("xyz",1)]], "cdz")
command([[print mid$("abc"+"def",3,2)="cd"]], "-1")
command([[print left$("abc",1+1)+left$(left$("abc",2),1)]], "aba")
command([[n$="long":name$="longer":print n$;name$]], "longlonger")

program("reverse", [[
  10 a$="stressed"
  20 for i=len(a$) to 1 step -1:r$=r$+mid$(a$,i,1):next
  30 print r$]], "desserts")
program("palindromes", [[
  10 for k=1 to 3:read w$:p=1
  20 for i=1 to len(w$)/2:if mid$(w$,i,1)<>mid$(w$,len(w$)+1-i,1) then p=0
  30 next:print w$;:if p then print " yes" else print " no"
  40 next
  50 data level,hello,noon]], "level yes\nhello no\nnoon yes")
program("count letters", [[
  10 a$="the quick brown fox jumps over the lazy dog":dim n(26)
  20 for i=1 to len(a$):c=asc(mid$(a$,i,1))-96:if c>0 then n(c)=n(c)+1
  30 next
  40 for i=1 to 26:if n(i)>2 then print chr$(i+96);n(i);
  50 next]], "e 3 o 4")
program("binary numbers", [[
  10 for n=5 to 8:m=n:r$=""
  20 r$=chr$(48+m mod 2)+r$:m=int(m/2):if m then 20
  30 print r$;" ";:next]], "101 110 111 1000")
program("Caesar", [[
  10 a$="hello"
  20 for i=1 to len(a$):c=asc(mid$(a$,i,1))+3:print chr$(c);:next]], "khoor")
program("upper case", [[
  10 a$="Mixed Case"
  20 for i=1 to len(a$):c=asc(mid$(a$,i,1)):if c>=97 and c<=122 then c=c-32
  30 u$=u$+chr$(c):next:print u$]], "MIXED CASE")
program("sorting words", [[
  10 n=6:dim w$(n):for i=1 to n:read w$(i):next
  20 for i=2 to n:x$=w$(i):j=i-1
  30 if j>0 then if w$(j)>x$ then w$(j+1)=w$(j):j=j-1:goto 30
  40 w$(j+1)=x$:next
  50 for i=1 to n:print w$(i);" ";:next
  60 data pear,apple,fig,banana,apples,cherry]], "apple apples banana cherry fig pear")
program("two-dimensional strings", [[
  10 dim t$(2,2):for i=0 to 2:for j=0 to 2:t$(i,j)=chr$(65+i)+str$(j):next j,i
  20 print t$(0,0);t$(1,2);t$(2,1)]], "A0B2C1")
program("255 characters", [[
  10 for i=1 to 255:a$=a$+"x":next:print len(a$)
  20 a$=a$+"y"]], " 255\nString too long in 20")

-- Memory: 20000 strings made and dropped in the room of some hundred.
program("garbage is collected", [[
  10 dim a$(50):for r=1 to 40
  20 for i=1 to 50:a$(i)=chr$(64+i mod 26)+str$(i*r):next:next
  30 for i=1 to 50:if a$(i)<>chr$(64+i mod 26)+str$(i*40) then print "bad";i
  40 next:print "ok"]], "ok")
program("garbage with little memory", [[
  10 clear 8000:dim a$(20)
  20 for r=1 to 100:for i=0 to 20:a$(i)=str$(r)+"/"+str$(i):next:next
  30 for i=0 to 20:if a$(i)<>"100/"+str$(i) then print "bad ";a$(i)
  40 next:if fre<1200 then print "ok" else print fre]], "ok")
b.command("new")
b.command("clear 49152")
b.equal("all the memory again", b.command("print fre>40000"), "-1")
program("strings stay whole while memory is short", [[
  10 clear 8000:dim a$(12):for r=1 to 60
  20 for i=0 to 12:a$(i)=left$(a$(i)+"ab",8)+right$(str$(r*i),2):next
  30 next:for i=0 to 12:c$=right$(str$(60*i),2)
  40 if right$(a$(i),len(c$))<>c$ or left$(a$(i),2)<>"ab" then print "bad ";a$(i)
  50 next:print "end"]], "end")
program("substrings of intermediate results survive a collection", [[
  10 clear 8000:for i=1 to 300
  20 a$=mid$("abc"+str$(i)+"def",2,4)+left$(str$(i)+"xyz",3)+right$("uvw"+a$,2)
  30 next:print a$]], "bc30300vw")
-- Random statements on strings, the same in Lua, run over and over with so little memory that the strings are
-- moved together many times.
math.randomseed(255, 42)
local function bounded(s, n) return s:sub(1, n) end
local kKinds = {
  function(i, j, k) return ("a$(%d)=left$(a$(%d)+a$(%d),40)"):format(i, j, k),
                           function(a) a[i] = bounded(a[j] .. a[k], 40) end end,
  function(i, j, k) return ("a$(%d)=mid$(a$(%d),%d,%d)+str$(r)"):format(i, j, k, i + 3),
                           function(a, r) a[i] = a[j]:sub(k, k + i + 2) .. r end end,
  function(i, j, k) return ("a$(%d)=right$(a$(%d),%d)+chr$(%d)+a$(%d)"):format(i, j, k, 64 + i, k),
                           function(a) a[i] = (k == 0 and "" or a[j]:sub(-k)) .. string.char(64 + i) .. a[k] end end,
  function(i, j, k) return ("x$=a$(%d):a$(%d)=a$(%d):a$(%d)=x$"):format(i, i, j, j),
                           function(a) a[i], a[j] = a[j], a[i] end end,
  function(i, j) return ("if a$(%d)<a$(%d) then a$(%d)=a$(%d)+\"+\""):format(i, j, i, j),
                        function(a) if a[i] < a[j] then a[i] = a[j] .. "+" end end end,
  function(i, j) return ("if len(a$(%d))>60 then a$(%d)=mid$(a$(%d)+\"/\"+a$(%d),5,6)"):format(i, i, i, j),
                        function(a) if #a[i] > 60 then a[i] = (a[i] .. "/" .. a[j]):sub(5, 10) end end end,
}
for round = 1, 3 do
  local text, steps = {"10 clear 9500:dim a$(7):for r=1 to 60"}, {}
  for n = 1, 40 do
    local statement, step = kKinds[math.random(#kKinds)](math.random(0, 7), math.random(0, 7), math.random(1, 7))
    text[#text + 1] = 10 * n + 10 .. " " .. statement
    steps[n] = step
    if n % 4 == 0 then                                      -- keeps them short enough
      local i = n // 4 % 8
      text[#text + 1] = 10 * n + 15 .. (" a$(%d)=left$(a$(%d),50)"):format(i, i)
      steps[n] = function(a, r) step(a, r) a[i] = bounded(a[i], 50) end
    end
  end
  text[#text + 1] = "900 for i=0 to 7:a$(i)=left$(a$(i),90):next:next:for i=0 to 7:print a$(i):next"
  local a = {}
  for i = 0, 7 do a[i] = "" end
  local fits = true
  for r = 1, 60 do
    for _, step in ipairs(steps) do
      step(a, r)
      for i = 0, 7 do fits = fits and #a[i] <= 255 end
    end
    for i = 0, 7 do a[i] = bounded(a[i], 90) end
  end
  assert(fits, "the random statements made a string too long")
  local lines = {}
  for i = 0, 7 do
    local rest = a[i]
    repeat
      lines[#lines + 1] = rest:sub(1, 64)
      rest = rest:sub(65)
    until rest == ""
  end
  b.command("clear 49152")
  program("random strings " .. round, table.concat(text, "\n"), (table.concat(lines, "\n"):gsub("\n+$", "")))
end
b.command("clear 49152")
program("FRE counts", [[
  10 a=fre:dim x(100):b=fre:print a-b>=606 and a-b<620
  20 a$="":d=0:c=fre:a$=str$(123456)+"":d=fre:print c-d]], "-1\n 9")
program("no memory for an array", "10 dim a(10000)", "Out of memory in 10")
program("no memory for strings", [[
  10 dim a$(300):for j=1 to 250:b$=b$+"x":next
  20 for i=0 to 300
  30 a$(i)=b$:next]], "Out of memory in 30")
program("memory is there again after that", "10 print fre>40000", "-1")

-- PRINT.
command("print 1;-2;3", " 1 -2  3")
command('print "a","b","c"', "a               b               c")
command('print 1,-2', " 1              -2")
command('print "a";"b"', "ab")
command('print "a""b"', 'a"b')
command('print "x" 5 "y"', "x 5 y")
command('print tab(3);"a";tab(10);"b"', "   a      b")
command('print "abcdef";tab(3);"x"', "abcdef\n   x")
command('print "a";spc(4);"b"', "a    b")
command('print tab(70);"x"', "      x")
command('print "a";:print "b"', "ab")
command("print", "")
command('print:print "x"', "\nx")
command("print pos;pos", " 0  3")
command("?2+3", " 5")
command('locate 5,10:print "here"', "\n\n\n\n          here")
program("zones over the row", '10 for i=1 to 5:print i,:next:print "e"',
        " 1               2               3               4\n 5              e")

-- Numbers.
for _, x in ipairs({0, 1, -1, 10, 32767, 32768, -32768, -32769, 65535, 65536, 99999, 100000, 1234567, 9999999999,
                    0.5, 0.25, 0.1, 0.01, 0.001, 0.0001, 0.00001, 0.000001, 1.5, -1.5, 123.456, 1e9, 1e10, 1e11,
                    1.5e12, -2.5e-7, 3.14159, 1234567890, 12345678901, 0.1234567891, 1e20, 1e-20, 1e38, 9.5e-30}) do
  local text = b.format(x)
  command("print " .. text, b.printed(x))
end
command("print 1e-5,0.000009", " 0.00001         9E-6")
command("print 1/3", " 0.3333333333")
command("print 2/3", " 0.6666666667")
command("print 100/3", " 33.33333333")
command("print 1e5/3", " 33333.33333")
command("print .1+.2", " 0.3")
command("print 1e9*10", " 1E+10")
command("print 1e9*9.9", " 9900000000")

-- INPUT.
program("INPUT of a number", "10 input a:print a*2", "? 21\n 42", "21")
program("INPUT of a text", '10 input "name";n$:print "hi ";n$', "name? Bob\nhi Bob", "Bob")
program("INPUT without a question mark", '10 input "n=",n:print n', "n=7\n 7", "7")
program("INPUT of several", "10 input a,b$,c:print a;b$;c", '? 1, two ,3\n 1 two 3', "1, two ,3")
program("INPUT of a quoted text", "10 input a$,b:print a$;b", '? "a, b",5\na, b 5', '"a, b",5')
program("INPUT again", "10 input a:print a", "? x\nAgain, please\n? 5\n 5", "x", "5")
program("too few, too many", "10 input a,b:print a;b", "? 1\nAgain, please\n? 1,2,3\nAgain, please\n? 1,2\n 1  2",
        "1", "1,2,3", "1,2")
program("INPUT of nothing", "10 input a$:print \"<\";a$;\">\"", "?\n<>", "")
program("INPUT in a loop", "10 for i=1 to 3:input a:s=s+a:next:print s", "? 1\n? 2\n? 3.5\n 6.5", "1", "2", "3.5")
program("INPUT into an array", "10 input a(2),b$(1):print a(2);b$(1)", "? 5,x\n 5 x", "5,x")
b.done()
