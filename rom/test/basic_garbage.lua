-- Lines and programs of garbage, breaks at any moment, memory that is full: the machine always comes back to its
-- prompt, and program, variables and strings hang together. QUOLL_GARBAGE in the environment makes it more work: so
-- many times the lines and programs of a normal run.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()
local kTimes = tonumber(os.getenv("QUOLL_GARBAGE") or 1)
math.randomseed(tonumber(os.getenv("QUOLL_SEED") or 1980), 8)

local kCurLine, kBreakKey = 0x1380, 0x0B08
local kHeapLow, kEndCopy, kChains, kLetters, kCsp, kStackLow = 0x138A, 0x138C, 0x1500, 0x1400, 0x1388, 0x0400

local function line(text)
  TPrint.Text1 = ""                                         -- or it grows and grows
  b.put(text:sub(1, math.min(250, 20 * MemImage[b.kWidth])))
end

-- Waits for the prompt; a break key ends what takes too long, or waits for an answer.
local function prompt(frames)
  if b.wait(frames) and b.word(kCurLine) == 0 then return true end
  for _ = 1, 40 do
    MemImage[kBreakKey] = 3
    MemImage[b.kHead] = MemImage[b.kTail]
    if b.wait(100) and b.word(kCurLine) == 0 then return true end
  end
  return false
end

-- Walks through all that BASIC keeps. Nil, or what is wrong.
local function unsound()
  local finish, at = b.word(b.kProgEnd), b.word(b.kProgStart)
  if at ~= b.kProgram then return "PROGSTART" end
  local last = -1
  while MemImage[at] ~= 0 do
    local number = b.word(at + 1)
    if MemImage[at] < 5 or number <= last then return "line " .. number end
    last = number
    at = at + MemImage[at]
    if at >= finish or MemImage[at - 1] ~= 0 then return "chain of lines" end
  end
  if at + 1 ~= finish then return "PROGEND" end
  local varEnd, heapLow, ramTop = b.word(b.kVarEnd), b.word(kHeapLow), b.word(b.kRamTop)
  if not (b.word(kEndCopy) == finish and finish <= varEnd and varEnd <= heapLow and
      heapLow <= ramTop) then return "order" end
  for letter = 65, 90 do
    local value = b.word(kLetters + 2 * (128 + letter) % 256)
    local address = b.word(kLetters + (2 * letter) % 256)
    if address ~= 0 and (address < finish or address + 6 > varEnd) then return "letter " .. letter end
    local link, count = b.word(kChains + (2 * letter) % 256), 0
    while link ~= 0 do
      if link < finish or link >= varEnd or count > 5000 then return "chain of variables" end
      link, count = b.word(link), count + 1
    end
  end
  local top = ramTop
  while top > heapLow do
    local length = MemImage[top - 1]
    local owner = b.word(top - 3)
    if owner ~= 0 and (owner < finish or owner >= varEnd) then return "owner of a string" end
    top = top - 3 - length
  end
  if top ~= heapLow then return "heap" end
  local stack = b.word(kCsp)
  while MemImage[stack - 1] ~= 0 do
    stack = stack - MemImage[stack - 1]
    if stack <= kStackLow then return "control stack" end
  end
  if stack ~= kStackLow + 1 then return "control stack's end" end
end

local function alive(what)
  local wrong = unsound()
  b.check("sound", not wrong, tostring(wrong) .. " behind " .. what)
  return not wrong
end

-- Words of the language, but for those that may do harm to anything.
local kWords = {}
local harmful = {POKE = 1, OUT = 1, CALL = 1, LOAD = 1, SAVE = 1, VERIFY = 1, NEW = 1, GRAPHICS = 1, PAPER = 1, INK = 1}
for name in io.open((arg[0]:match("^.*/") or "") .. "../basic/keywords.s"):read("a"):gmatch('; (%S+)\n') do
  if not harmful[name] then kWords[#kWords + 1] = name end
end
local kBits = {"A", "B$", "C%", "A(", "B$(", "C%(", "LONG", "X.Y", "I", "J", "(", ")", ",", ";", ":", ":", "=", "=",
        '"text"', '"##.#"', '"', "1",
               "2", "0", "10", "20", "30", "100", "255", "32767", "-1", "1.5", "1E10", "&FF", ".", "#", "?", "'",
                   "%", "@", "FNA(",
               "FNB$", "Z9$"}
local function any(list) return list[math.random(#list)] end
local function garbage(most)
  local parts = {}
  for _ = 1, math.random(most) do
    local kind = math.random(20)
    if kind < 9 then parts[#parts + 1] = any(kWords)
    elseif kind < 20 then parts[#parts + 1] = any(kBits)
    else parts[#parts + 1] = string.char(math.random(32, 126)) end
    if math.random(3) > 1 then parts[#parts + 1] = " " end
  end
  return (table.concat(parts))
end

-- Statements that make sense one by one, in any order.
local kSense = {
  "A=%d", "A=A+%d", "B$=B$+\"x\"", "B$=LEFT$(B$,%d)", "C%%=%d", "FOR I=1 TO %d", "NEXT", "NEXT I", "FOR J%%=1 TO 3",
      "NEXT J%%,I",
  "GOSUB %d0", "RETURN", "GOTO %d0", "IF A>%d THEN %d0", "IF A<%d THEN PRINT A ELSE A=0", "WHILE A<%d", "WEND",
      "DIM D(%d)",
  "D(%d)=A", "E$(%d)=B$", "ERASE D", "ERASE E$", "SWAP A,D(1)", "SWAP B$,E$(2)", "MID$(B$,1)=\"yz\"",
      "DEF FNA(X)=X*%d+A",
  "A=FNA(%d)", "DEF FNB$(X$)=X$+B$", "B$=LEFT$(FNB$(B$),90)", "ON ERROR GOTO %d0", "RESUME NEXT", "RESUME %d0",
      "ERROR %d",
  "PRINT A;B$", "PRINT USING \"##.#\";A", "READ A", "RESTORE", "DATA %d,%d", "A=INSTR(B$,\"y\")",
      "B$=STRING$(%d,\"s\")", "A=FRE",
  "CLEAR", "RANDOMIZE %d", "A=RND(%d)", "TRON", "TROFF", "STOP", "END", "REM %d", "A=A\\%d", "A=A MOD %d",
      "DEFSTR Q", "TIME=%d",
  "ON A GOTO %d0,%d0", "ON A GOSUB %d0,%d0", "LOCATE %d,%d", "PLOT %d,%d", "DRAW %d,%d", "E$(%d)=E$(%d)+B$",
      "C%%(%d)=A",
  "AUTO", "LIST", "RENUM", "DELETE 30-40", "LPRINT A", "LINE INPUT B$", "INPUT A", "CONT", "RUN", "B$=INPUT$(1)"}
local function sense()
  return (any(kSense):gsub("%%[%%d]", function(s) return s == "%%" and "%" or tostring(math.random(12)) end))
end

local lines = 0
for n = 1, 250 * kTimes do
  local text = garbage(14)
  line(text)
  if not prompt(60) then b.check("line", false, "no prompt behind " .. text) break end
  lines = lines + 1
  if not alive(text) then break end
  if n % 50 == 0 then b.command("new") b.equal("still works", b.command("print 6*7"), " 42") end
end

for n = 1, 50 * kTimes do
  b.command("new")
  local program = {}
  for number = 1, math.random(4, 14) do
    local text = {}
    for i = 1, math.random(3) do text[i] = math.random(8) == 1 and garbage(6) or sense() end
    program[number] = number * 10 .. " " .. table.concat(text, ":")
    line(program[number])
    prompt(20)
  end
  local name = table.concat(program, "\n")
  if not alive(name) then break end
  line("run")
  Frames(math.random(1, 25))
  if not prompt(math.random(1, 40)) then b.check("program", false, "no prompt behind " .. name) break end
  if not alive("RUN of " .. name) then break end
  for _ = 1, 2 do
    line(any{"cont", "cont", "run", "goto 30", sense(), garbage(5)})
    Frames(math.random(1, 8))
    if not prompt(math.random(1, 20)) then b.check("CONT", false, "no prompt behind " .. name) break end
  end
  if not alive("CONT of " .. name) then break end
end
b.command("new")
b.command("clear 49152")
b.equal("still works", b.command("print 6*7"), " 42")

-- A program that is broken off at any moment and goes on comes to the same end.
local kWork = [[
10 dim a(20),s$(20):def fnh(x,y$)=x*3+len(y$)
20 for i=1 to 20:a(i)=(i*37) mod 23:s$(i)=string$(a(i) mod 7,64+i):next
30 for i=1 to 19:for j=1 to 20-i:if a(j)>a(j+1) then swap a(j),a(j+1):swap s$(j),s$(j+1)
40 next j,i
50 k=0:while k<20:k=k+1:gosub 100:wend
60 on error goto 200:for i=1 to 3:x=1/(i-2):n=n+1:next
70 print h;len(t$);n;e;left$(t$,40)
80 end
100 h=(h*7+fnh(a(k),s$(k))) mod 9973:t$=right$(t$+s$(k)+"."+str$(a(k)),200)
110 return
200 e=e+1:resume next]]
b.command("new")
b.enter(kWork)
local wanted = b.command("run")
b.check("the work has a result", wanted:match("%d"), wanted)
for n = 1, 5 * kTimes do
  line("run")
  local breaks = 0
  while true do
    Step(math.random(200, 120000))
    MemImage[kBreakKey] = 3
    if not b.wait(200) then b.check("break", false, "no prompt") break end
    if not alive("break") then break end
    local screen = b.screen(0)
    if screen:match("%d+  %d") then break end               -- it was at its end
    if screen:match("Break in") then breaks = breaks + 1 end
    line(breaks > 0 and "cont" or "run")                    -- the command itself can be broken off too
  end
  b.equal("after " .. breaks .. " breaks", b.command('print h;len(t$);n;e;left$(t$,40)'), wanted)
end

-- Memory that is full in every way.
for _, room in ipairs{300, 420, 700, 1500} do
  for _, text in ipairs{
    '10 a$=a$+"x":b$=b$+a$:n=n+1:goto 10', "10 dim a(10),b(20),c(30),d(40),e(50),f(60),g(70),h(80)\n20 clear:goto 10",
    '10 i=i+1:a$(0)=a$(0)+"q":x=fre:dim b$(5):b$(i mod 6)=a$(0)+"z":erase b$:goto 10', "10 n=n+1:gosub 10",
    '10 def fna$(x$)=x$+x$\n20 q$=fna$(q$+"1"):goto 20',
        '10 on error goto 30\n20 a$=a$+"xy":c$=a$+a$:goto 20\n30 a$="":resume 20'} do
    b.command("clear 49152")
    b.command("new")
    b.enter(text)
    b.command("clear " .. b.word(b.kProgEnd) + room)
    line("run")
    if not prompt(80) then b.check("full", false, "no prompt behind " .. text) break end
    alive("full memory of " .. text)
    b.command("x1=1:x2$=\"abc\"+\"def\":x3=2")
    alive("full memory, then direct lines, of " .. text)
    line("99 rem " .. ("x"):rep(200))
    prompt(60)
    alive("full memory, then a line, of " .. text)
  end
end
b.command("clear 49152")
b.command("new")
b.equal("still works", b.command("print 6*7"), " 42")
print(lines .. " lines")
b.done()
