-- Programs: loops, jumps, subroutines, data. Expected output worked out by hand or by Lua.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

local function numbers(list)                                -- as PRINT n; shows them
  local text = ""
  for _, n in ipairs(list) do text = text .. b.printed(n) .. " " end
  return (text:gsub(" $", ""))
end
local function program(name, text, wanted, ...) b.equal(name, b.run(text, ...), wanted) end

program("FOR up", [[
  10 for i=1 to 5
  20 print i;
  30 next i]], numbers {1, 2, 3, 4, 5})
program("FOR by step", "10 for i=10 to -10 step -5:print i;:next:print i", " 10  5  0 -5 -10 -15")
program("FOR by fractions", "10 for x=0 to 1 step .25:print x;:next", " 0  0.25  0.5  0.75  1")
program("FOR not entered", "10 for i=5 to 1:print i:next i:print \"after\";i", "after 5")
program("FOR not entered, nested inside", [[
  10 for i=2 to 1
  20 for j=1 to 3:print "no":next j
  30 print "no"
  40 next i
  50 print "end"]], "end")
program("FOR not entered, NEXT of both", [[
  10 for i=1 to 2:for j=1 to 0
  20 print "no"
  30 next j,i
  40 print "end";i]], "end 3")
program("nested FOR", [[
  10 for i=1 to 3:for j=i to 3
  20 print i*10+j;
  30 next j,i]], numbers {11, 12, 13, 22, 23, 33})
program("NEXT without a name", "10 for i=1 to 2:for j=1 to 2:print i;j;:next:next", numbers {1, 1, 1, 2, 2, 1, 2, 2})
program("NEXT of the outer loop", [[
  10 for i=1 to 3
  20 for j=1 to 10
  30 if j=2 then 50
  40 next j
  50 next i
  60 print i;j]], " 4  2")
program("limit and step are taken once", [[
  10 n=3:s=1
  20 for i=1 to n step s
  30 n=100:s=50:print i;
  40 next]], numbers {1, 2, 3})
program("FOR to the largest integer", "10 for i=32766 to 32769:print i;:next", numbers {32766, 32767, 32768, 32769})
program("FOR to the smallest integer", "10 for i=-32767 to -32770 step -1:print i;:next",
        numbers {-32767, -32768, -32769, -32770})
program("FOR with a longer name", "10 for count=1 to 3:print count;:next count", numbers {1, 2, 3})
program("changing the variable in the loop", "10 for i=1 to 10:i=i+2:print i;:next", numbers {3, 6, 9, 12})
program("the same loop again and again", [[
  10 for k=1 to 400
  20 for i=1 to 10
  30 if i=2 then 50
  40 next i
  50 next k
  60 print k;i]], " 401  2")

program("WHILE", [[
  10 a=1
  20 while a<100
  30 print a;
  40 a=a*3
  50 wend
  60 print "end";a]], " 1  3  9  27  81 end 243")
program("WHILE not entered", "10 while 0:print \"no\":while 1:wend:wend:print \"end\"", "end")
program("nested WHILE", [[
  10 i=1
  20 while i<4
  30 j=1
  40 while j<=i:print j;:j=j+1:wend
  50 i=i+1
  60 wend]], numbers {1, 1, 2, 1, 2, 3})
program("WEND, RETURN and NEXT that fail leave the loops open", [[
  10 on error goto 100
  20 for i=1 to 2:wend
  30 next:print "behind";i:while n<2:n=n+1:return
  40 wend:for j=1 to 2:next k
  50 next:print "end";j;n:end
  100 print err;erl;:resume next]], " 30  20  30  20 behind 3\n 3  30  3  30  1  40  1  40 end 3  2")
program("WHILE around FOR", "10 n=2:while n:for i=1 to n:print i;:next:n=n-1:wend", numbers {1, 2, 1})
program("FOR left by WEND", [[
  10 n=3
  20 while n
  30 for i=1 to 10
  40 n=n-1
  50 wend
  60 print "done"]], "done")
program("WHILE entered again by GOTO", [[
  10 n=0
  20 while n<1500
  30 n=n+1
  40 if n<1400 then 20
  50 wend
  60 print n]], " 1500")

program("GOTO both ways", [[
  10 goto 40
  20 print "two":goto 60
  30 print "no"
  40 print "one"
  50 goto 20
  60 print "three"]], "one\ntwo\nthree")
program("IF with lines", [[
  10 for i=1 to 3
  20 if i=2 then 50 else 30
  30 print "odd";
  40 goto 60
  50 print "two";
  60 next]], "oddtwoodd")
program("IF with GOTO", "10 if 1 goto 30\n20 print \"no\"\n30 print \"yes\"", "yes")
program("IF THEN ELSE", [[
  10 for i=1 to 3
  20 if i=1 then print "one" else if i=2 then print "two" else print "more"
  30 next]], "one\ntwo\nmore")
program("IF in IF", [[
  10 for a=0 to 1:for c=0 to 1
  20 if a then if c then print "both" else print "a" else print "none"
  30 next c,a]], "none\nnone\na\nboth")
program("statements behind THEN", "10 if 0 then print 1:print 2\n20 if 1 then print 3:print 4", " 3\n 4")
program("ELSE at the end of a chain", "10 if 1 then print 1:print 2 else print 3:print 4\n20 print 5", " 1\n 2\n 5")
program("IF of a fraction", "10 if .5 then print \"true\"\n20 if 0 then print \"no\" else print \"false\"",
        "true\nfalse")
program("ELSE in a text or remark", "10 if 0 then print \" else \":rem else print 2\n20 print 3", " 3")
program("ON GOTO", [[
  10 for i=0 to 4
  20 on i goto 50,60,70
  30 print "none";
  40 goto 80
  50 print "one";:goto 80
  60 print "two";:goto 80
  70 print "three";
  80 next]], "noneonetwothreenone")
program("ON GOSUB", [[
  10 for i=1 to 3
  20 on i gosub 100,200:print ".";
  30 next
  40 end
  100 print "a";:return
  200 print "b";:return]], "a.b..")
program("GOSUB from GOSUB", [[
  10 gosub 100:print "end":end
  100 print "in";:gosub 200:print "out";:return
  200 print "deep";:return]], "indeepoutend")
program("GOSUB recursion", [[
  10 n=20:gosub 100
  20 print s
  30 end
  100 if n=0 then return
  110 s=s+n:n=n-1
  120 gosub 100
  130 return]], " 210")
program("GOSUB recursion, 250 deep", [[
  10 gosub 100
  20 print d;u:end
  100 d=d+1:if d<250 then gosub 100
  110 u=u+1:return]], " 250  250")
program("towers of Hanoi by a stack of one's own", [[
  10 dim a(20),f(20),t(20):n=5:a(1)=n:f(1)=1:t(1)=3:p=1
  20 gosub 100:print m:end
  100 if a(p)=0 then p=p-1:return
  110 p=p+1:a(p)=a(p-1)-1:f(p)=f(p-1):t(p)=6-f(p-1)-t(p-1):gosub 100
  120 m=m+1
  130 p=p+1:a(p)=a(p-1)-1:f(p)=6-f(p-1)-t(p-1):t(p)=t(p-1):gosub 100
  140 p=p-1:return]], " 31")
program("FOR inside GOSUB is forgotten by RETURN", [[
  10 for i=1 to 3
  20 gosub 100
  30 next i
  40 print "end":end
  100 for j=1 to 5
  110 if j=2 then return
  120 next j]], "end")
program("END", "10 print 1:end\n20 print 2", " 1")

program("READ and DATA", [[
  10 for i=1 to 5:read a:print a;:next
  20 data 1,2.5,-3
  30 data  1e3 ,&10]], " 1  2.5 -3  1000\nType mismatch in 10")
program("texts in DATA", [[
  10 for i=1 to 5:read a$:print "<";a$;">";:next
  20 data hello world , "a,b:c" ,,"":data Last]], "<hello world><a,b:c><><><Last>")
program("RESTORE", [[
  10 read a,c:restore:read d:print a;c;d;
  20 restore 50:read a:print a
  40 data 1,2
  50 data 3]], " 1  2  1  3")
program("out of DATA", "10 read a,c\n20 data 1", "Out of data in 10")
program("DATA before and behind", "10 data 1\n20 read a,c,d:print a+c+d\n30 rem data 5\n40 data 2,4", " 7")

program("sum and product", [[
  10 s=0:p=1
  20 for i=1 to 10:s=s+i:p=p*i:next
  30 print s;p]], numbers {55, 3628800})
program("Fibonacci", [[
  10 a=0:c=1
  20 for i=1 to 45:t=a+c:a=c:c=t:next
  30 print a]], " 1134903170")
program("greatest common divisor", "10 a=1071:c=462\n20 while c:t=a mod c:a=c:c=t:wend\n30 print a", " 21")

local primes = {}
for n = 2, 100 do
  local prime = true
  for _, p in ipairs(primes) do prime = prime and n % p ~= 0 end
  if prime then primes[#primes + 1] = n end
end
local wanted = ""
for _, p in ipairs(primes) do wanted = wanted .. b.printed(p) .. " " end
local lines = {}
for i = 1, #wanted, 64 do lines[#lines + 1] = wanted:sub(i, i + 63):gsub(" +$", "") end
program("sieve", [[
  10 dim f(100)
  20 for i=2 to 100
  30 if f(i) then 60
  40 print i;
  50 for j=i+i to 100 step i:f(j)=1:next j
  60 next i]], table.concat(lines, "\n"))

local values, sorted = {83, 5, 62, 17, 99, 1, 54, 38, 70, 26}, {}
for i, v in ipairs(values) do sorted[i] = v end
table.sort(sorted)
program("bubble sort", "5 data " .. table.concat(values, ",") .. "\n" .. [[
  10 n=10:dim a(n)
  20 for i=1 to n:read a(i):next
  30 for i=1 to n-1:for j=1 to n-i
  40 if a(j)>a(j+1) then t=a(j):a(j)=a(j+1):a(j+1)=t
  50 next j,i
  60 for i=1 to n:print a(i);:next]], numbers(sorted))
program("arrays of two dimensions", [[
  10 dim m(3,4)
  20 for i=0 to 3:for j=0 to 4:m(i,j)=i*100+j:next j,i
  30 for i=0 to 3:for j=0 to 4:s=s+m(i,j):next j,i
  40 print m(0,0);m(3,4);m(1,4);m(2,0);s]], numbers {0, 304, 104, 200, 3040})
program("arrays of three dimensions", [[
  10 dim q(2,3,4):n=0
  20 for i=0 to 2:for j=0 to 3:for k=0 to 4:q(i,j,k)=n:n=n+1:next k,j,i
  30 print q(0,0,0);q(2,3,4);q(1,2,3);q(0,3,0)]], numbers {0, 59, 33, 15})
program("arrays without DIM", "10 for i=0 to 10:a(i)=i*i:next:print a(10);a(3);x(2,3)", numbers {100, 9, 0})
program("array elements as subscripts", "10 for i=0 to 9:a(i)=9-i:next:print a(a(a(2)));a(a(1)-a(5))", numbers {7, 5})
program("an array and a variable of the same name", "10 a=1:a(1)=2:a$=\"x\":a$(1)=\"y\":print a;a(1);a$;a$(1)",
        " 1  2 xy")
program("long names", "10 alpha=1:alphabet=2:alpha2=3:print alpha;alphabet;alpha2;alph", numbers {1, 2, 3, 0})
program("names are the same in capitals", "10 Abc=5:print aBC;ABC", numbers {5, 5})
program("RND", [[
  10 for i=1 to 100:r=rnd:if r<0 or r>=1 then print "bad"
  20 n=rnd(6):if n<1 or n>6 or n<>int(n) then print "bad";n
  30 next:x=rnd(-1):a=rnd:x=rnd(-1):if a=rnd then print "same"]], "same")
program("POKE and PEEK", "10 poke 767,123:print peek(767)", " 123")
b.run("10 print \"no\"\n20 print \"end\"")
b.equal("RUN 20", b.command("run 20"), "end")
program("CLEAR", "10 a=5:a$=\"x\":clear:print a;a$;\".\"", " 0 .")
program("MOD and integer division", "10 for i=-3 to 3:print i mod 3;:next", numbers {0, 1, 2, 0, 1, 2, 0})
program("TIME goes on", "10 t=time\n20 if time-t<10 then 20\n30 print \"ok\"", "ok")

-- Limits at the end of the whole numbers; the value behind the loop is one step on.
program("FOR up to 32767", "10 for i=32765 to 32767:n=n+1:next:print n;i", " 3  32768")
program("FOR up to 32767, in steps", "10 for i=32760 to 32767 step 5:n=n+1:next:print n;i", " 2  32770")
program("FOR down to -32768", "10 for i=-32766 to -32768 step -1:n=n+1:next:print n;i", " 3 -32769")
program("FOR beyond", "10 for i=32766 to 32769:n=n+1:next:print n;i", " 4  32770")

-- What a direct line leaves open ends with it.
b.command("new")
b.command("for i=1 to 3")
b.equal("NEXT of an earlier line", b.command("next"), "FOR and NEXT don't match")
b.command("i=0:while i<3:for j=1 to 2")
b.equal("WEND of an earlier line", b.command("wend"), "WHILE and WEND don't match")
b.enter("10 stop:print \"back\":return\n20 for i=1 to 2:stop:next:print \"end\"")
b.equal("GOSUB of a direct line", b.command("gosub 10:print \"lost\""), "Break in 10")
b.equal("RETURN to a line that is gone", b.command("cont"), "back")
b.command("for k=1 to 9:goto 20")
b.command("cont")
b.equal("the program's own loop goes on", b.command("cont"), "end")
b.done()
