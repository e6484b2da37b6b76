-- INPUT on a screen that is full of text already.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

-- What a program leaves in A$ and N after an answer; it clears the screen before it shows them.
local function answer(name, program, typed, wanted)
  b.equal(name, b.run(program .. "\n90 cls:print:print n$;n", typed), wanted)
end

-- 1280 dots are one line of 20 rows; the question stands in their midst.
local kDots = "10 cls:for i=1 to 1280:print \".\";:next\n"
answer("text among text", kDots .. "20 locate 10,0:input \"Your name\";n$", "Bob", "Bob 0")
answer("number among text", kDots .. "20 locate 10,30:input n", "42", " 42")
answer("in the last column", kDots .. "20 locate 10,63:input \"\",n", "7", " 7")

-- Behind more than 250 characters of the same line, so that it scrolls too.
answer("behind a long line", "10 for i=1 to 300:print i;:next:input n", "17", " 17")
for _, colours in ipairs{2, 4, 16} do
  answer("behind a screen of " .. colours .. " colours", "10 graphics " .. colours ..
         ":for i=1 to 2000:print \"x\";:next:input n$\n20 graphics 2", "answer", "answer 0")
end

-- The longest answer: 250 characters, wherever it begins.
local long = ("abcde"):rep(50)
b.equal("longest answer", b.run("10 for i=1 to 300:print \"-\";:next:input n$:cls:print:print len(n$);right$(n$,5)",
                                long .. "fgh"), " 250 abcde")
local row = b.command("print 1")
b.equal("and the prompt comes back", row, " 1")

-- A line of two rows that stands below keeps its second row.
b.command("new")
local kTwoRows = '20 PRINT "' .. ("y"):rep(80) .. '"'
b.enter("10 PRINT\n" .. kTwoRows)
b.keys("\x0Clist\r")
b.wait(200)
b.keys("\xA1\x1F\r\r")                                      -- both lines are taken as they stand
b.wait(200)
b.equal("a listed line is taken whole", (b.command("list"):gsub("\n", "")), ("10 PRINT" .. kTwoRows))

b.equal("not a number", b.run("10 input n\n20 print n", "1e40", "abc", "3"), "? 1e40\nAgain, please\n? abc\nAgain, please\n? 3\n 3")
b.done()
