-- The garbage collection in a heap that is nearly full, while strings wait for their operators: an expression of
-- many parts against the same one built up piece by piece in variables.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

for round = 1, 6 do
  b.command("new")
  b.enter([[
10 dim k$(30):for i=0 to 30:k$(i)=left$("abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrst",13)+str$(i):next
20 for r=1 to 20:for i=0 to 30:n=n+1
30 x$=mid$(k$(i)+"/"+str$(r),3,12)+(right$("p"+k$(30-i),5)+(left$(str$(r*i)+"q",4)+mid$("u"+str$(i)+k$(r mod 31),2,6)))
40 y$=mid$(k$(i),3)+"/":y$=y$+str$(r):y$=left$(y$,12):z$=right$("p"+k$(30-i),5):y$=y$+z$:z$=str$(r*i)
50 z$=z$+"q":z$=left$(z$,4):y$=y$+z$:z$=str$(i):z$=z$+k$(r mod 31):y$=y$+left$(z$,6)
60 if x$<>y$ then print "differs:";r;i;x$;" ";y$:stop
70 next:next:print "same";n]])
  b.command("clear " .. b.word(b.kProgEnd) + 866 + round * 6)
  b.keys("\x0Crun\r")
  b.check("ends", b.wait(20000), "does not end")
  b.equal("heap " .. round, b.screen(1), "same 620\nReady")
end
b.done()
