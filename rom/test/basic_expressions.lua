-- Expressions: PRINT against values that Lua computes.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

-- Pairs of BASIC text and value, three in a line. Numbers are compared as text if exact, else the tenth digit may
-- be off by one.
local function compare(pairs, exact)
  for first = 1, #pairs, 3 do
    local statements = {}
    for i = first, math.min(first + 2, #pairs) do statements[#statements + 1] = "print " .. pairs[i][1] end
    local rows = {}
    for row in (b.command(table.concat(statements, ":")) .. "\n"):gmatch("(.-)\n") do rows[#rows + 1] = row end
    for i = 1, #statements do
      local text, wanted = pairs[first + i - 1][1], pairs[first + i - 1][2]
      local got = rows[i] or "nothing"
      if exact or wanted == 0 then
        b.equal(text, got, b.printed(wanted))
      else
        local number = tonumber(got)
        local unit = 10.0 ^ (math.floor(math.log(math.abs(wanted), 10) + 1e-12) - 9)
        b.check(text, number and math.abs(number - wanted) <= unit and got == b.printed(number),
                string.format("%q instead of %q", got, b.printed(wanted)))
      end
    end
  end
end

local function truth(condition) return condition and -1 or 0 end

-- By hand: precedence, signs, limits of whole numbers, comparisons, bits.
compare({
  -- A string in front of the operators that came later: whose operand it is depends on their rank.
  {'len("A")\\2', 0}, {'-len("A")\\1', -1}, {'1-len("A")\\2.6', 1}, {'len("AB") xor 1', 3},
  {'"A"="B" xor 1', 1}, {'"a">="E" xor ""<>"x"', 0}, {'("A"="B") xor 1', 1},
  {"1+2", 3}, {"2+3*4", 14}, {"(2+3)*4", 20}, {"2*3+4*5", 26}, {"10-4-3", 3}, {"100/10/5", 2}, {"2^3^2", 64},
  {"-2^2", -4}, {"2^-1", 0.5}, {"-(-5)", 5}, {"--5", 5}, {"+5", 5}, {"3-+2", 1}, {"3*-2", -6}, {"-3*-2", 6},
  {"7 mod 3", 1}, {"-7 mod 3", 2}, {"7 mod -3", -2}, {"-7 mod -3", -1}, {"7.5 mod 2", 1.5}, {"20 mod 6*2", 8},
  {"5+17 mod 4", 6}, {"0*5", 0}, {"0/5", 0}, {"1/4", 0.25}, {"5/2", 2.5}, {"10/2", 5}, {"32767+1", 32768},
  {"-32767-1", -32768}, {"-32768-1", -32769}, {"32767*2", 65534}, {"200*200", 40000}, {"300*-300", -90000},
  {"181*181", 32761}, {"182*182", 33124}, {"-32768*-1", 32768}, {"-(-32768)", 32768}, {"32768-1", 32767},
  {"65535+65535", 131070}, {"99999*99999", 9999800001}, {"123456789+1", 123456790}, {"0.5+0.25", 0.75},
  {".5+.125", 0.625}, {"1.5*1.5", 2.25}, {"1e3", 1000}, {"1.5e2+1", 151}, {"25e-2", 0.25}, {"2e9+1", 2000000001},
  {"1=1", -1}, {"1=2", 0}, {"1<>2", -1}, {"1<>1", 0}, {"1<2", -1}, {"2<1", 0}, {"1>2", 0}, {"2>1", -1},
  {"1<=1", -1}, {"2<=1", 0}, {"1>=2", 0}, {"2>=2", -1}, {"-1<1", -1}, {"-1>1", 0}, {"-2<-1", -1},
  {"-32768<32767", -1}, {"32767>-32768", -1}, {"1.5<1.6", -1}, {"1.5=1.5", -1}, {"1=1.0", -1}, {"0.1<0", 0},
  {"1=>1", -1}, {"1=<0", 0}, {"1><2", -1}, {"40000>30000", -1}, {"-40000<-30000", -1}, {"1<2=-1", -1}, {"1<2=1", 0},
  {"1+1=2", -1}, {"2=1+1", -1}, {"not 0", -1}, {"not -1", 0}, {"not 5", -6}, {"not 1=2", -1}, {"12 and 10", 8},
  {"12 or 3", 15}, {"1 and 2", 0}, {"-1 and 255", 255}, {"1 or 2 and 4", 1}, {"5>3 and 2>1", -1},
  {"5>3 and 2<1", 0}, {"5<3 or 2>1", -1}, {"not 5>3", 0}, {"not 0 and 7", 7}, {"&ff", 255}, {"&7FFF", 32767},
  {"65535 and 15", 15}, {"3.9 and 7", 3}, {"((((1+2)*3)+4)*5)", 65}, {"2*(3+4*(5-2))", 30}, {"1-2-3-4", -8},
  {"2^10", 1024}, {"2^0", 1}, {"0^0", 1}, {"3^2*2", 18}, {"2*3^2", 18}, {"4^0.5", 2}, {"-3^2+1", -8},
}, true)

compare({
  {"abs(-5)", 5}, {"abs(5)", 5}, {"abs(0)", 0}, {"abs(-2.5)", 2.5}, {"int(2.7)", 2}, {"int(-2.7)", -3},
  {"int(5)", 5}, {"int(-5)", -5}, {"int(0.999)", 0}, {"int(-0.001)", -1}, {"int(100000.5)", 100000},
  {"int(-100000.5)", -100001}, {"sgn(-3)", -1}, {"sgn(0)", 0}, {"sgn(0.1)", 1}, {"sqr(0)", 0}, {"sqr(16)", 4},
  {"sqr(2.25)", 1.5}, {"sqr(1000000)", 1000}, {"exp(0)", 1}, {"log(1)", 0}, {"sin(0)", 0}, {"cos(0)", 1},
  {"tan(0)", 0}, {"atn(0)", 0}, {'len("hello")', 5}, {'len("")', 0}, {'len("a"+"bc")', 3}, {'asc("A")', 65},
  {'asc("abc")', 97}, {'val("12")', 12}, {'val("-3.5")', -3.5}, {'val(" 7 ")', 7}, {'val("x")', 0}, {'val("")', 0},
  {'val("1e3")', 1000}, {'val("12abc")', 12}, {'val("+4")', 4}, {'val("- 4")', 0}, {'val(str$(2.5))', 2.5},
  {'"a"="a"', -1}, {'"a"="b"', 0}, {'"a"<"b"', -1}, {'"b"<"a"', 0}, {'"a"<"ab"', -1},
  {'"ab">"a"', -1}, {'""<"a"', -1}, {'""=""', -1}, {'"a"<>"A"', -1}, {'"A"<"a"', -1}, {'"abc">="abd"', 0},
  {'"abc"<="abd"', -1}, {'"x"+"y"="xy"', -1}, {'"a"="a" and "b"="b"', -1}, {'("a"+"b")+"c"="abc"', -1},
  {'asc(chr$(200))', 200}, {'len(str$(-12.5))', 5}, {'len(chr$(0)+chr$(1))', 2}, {'asc(mid$("hello",2))', 101},
  {'val(left$("123456",3))', 123}, {'val(right$("123456",2))', 56}, {'len(left$("abc",0))', 0}, {'len hex$(4096)', 4},
  {"sgn(-1)*abs(-7)+int(2.5)", -5}, {"int(-2.5+0.5)", -2}, {"abs -3+1", 4},
}, true)

-- Whole numbers at the edges, all operators.
local edges = {-32768, -32767, -300, -7, -1, 0, 1, 3, 7, 255, 256, 32766, 32767}
local function written(x) return x < 0 and "(" .. x + 1 .. "-1)" or tostring(x) end
local whole = {}
for _, x in ipairs(edges) do
  for _, y in ipairs(edges) do
    local pair = written(x) .. "%s" .. written(y)
    whole[#whole + 1] = {pair:format("+"), x + y}
    whole[#whole + 1] = {pair:format("-"), x - y}
    whole[#whole + 1] = {pair:format("*"), x * y}
    if y ~= 0 then whole[#whole + 1] = {pair:format(" mod "), x % y} end
    whole[#whole + 1] = {pair:format(" and "), (x & y)}
    whole[#whole + 1] = {pair:format(" or "), (x | y)}
    whole[#whole + 1] = {pair:format("<"), truth(x < y)}
    whole[#whole + 1] = {pair:format("<="), truth(x <= y)}
    whole[#whole + 1] = {pair:format(">"), truth(x > y)}
    whole[#whole + 1] = {pair:format(">="), truth(x >= y)}
    whole[#whole + 1] = {pair:format("="), truth(x == y)}
    whole[#whole + 1] = {pair:format("<>"), truth(x ~= y)}
  end
end
math.randomseed(16, 1984)
for i = #whole, 2, -1 do
  local other = math.random(i)
  whole[i], whole[other] = whole[other], whole[i]
end
compare(table.move(whole, 1, 400, 1, {}), true)

-- Functions, compared with Lua's.
local list = {}
local function add(text, value) list[#list + 1] = {text, value} end
add("pi", math.pi)
add("pi*2", math.pi * 2)
for _, x in ipairs({0.1, 0.5, 1, 1.5, 2, 3, -1, -2.5, 10, 100, -0.3}) do
  local t = b.format(x)
  add("sin(" .. t .. ")", math.sin(x))
  add("cos(" .. t .. ")", math.cos(x))
  add("tan(" .. t .. ")", math.tan(x))
  add("atn(" .. t .. ")", math.atan(x))
  if x <= 10 then add("exp(" .. t .. ")", math.exp(x)) end
  if x > 0 then
    add("log(" .. t .. ")", x ~= 1 and math.log(x) or 0)
    add("sqr(" .. t .. ")", math.sqrt(x))
    add(t .. "^1.5", x ^ 1.5)
    add(t .. "^-2", x ^ -2)
  end
  add(t .. "^3", x ^ 3)
  add("1/" .. (x < 0 and "(" .. t .. ")" or t), 1 / x)
end
for i, pair in ipairs(list) do                              -- -1^3 is -(1^3): the same value for odd powers
  if pair[1]:match("^%-") and pair[1]:match("%^") then list[i] = {"(" .. pair[1]:gsub("%^", ")^"), pair[2]} end
end
compare(list, false)

-- Random expressions: the same tree written for BASIC and computed in Lua. What would lose digits by
-- cancellation or leave the range is not used.
math.randomseed(4, 2026)
local function constant()
  local kind = math.random(5)
  local x
  if kind == 1 then x = math.random(0, 10)
  elseif kind == 2 then x = math.random(0, 300)
  elseif kind == 3 then x = math.random(0, 40000)
  elseif kind == 4 then x = math.random(1, 4000) / 8
  else x = math.random(1, 99999) / 1000 end
  return b.format(x), x, x
end
local tree
-- Returns text in brackets if need be, value, and the largest value that went into it.
local function binary(depth)
  local lt, lv, ls = tree(depth - 1)
  local rt, rv, rs = tree(depth - 1)
  local kind = math.random(6)
  if kind == 1 then return "(" .. lt .. "+" .. rt .. ")", lv + rv, math.max(ls, rs, math.abs(lv + rv)) end
  if kind == 2 then return "(" .. lt .. "-" .. rt .. ")", lv - rv, math.max(ls, rs, math.abs(lv - rv)) end
  if kind == 3 then return lt .. "*" .. rt, lv * rv, math.abs(lv * rv) + ls + rs end
  if kind == 4 and rv ~= 0 then return lt .. "/(" .. rt .. ")", lv / rv, math.max(ls, rs) end
  if kind == 5 then return "abs(" .. lt .. "-" .. rt .. ")", math.abs(lv - rv), math.max(ls, rs) end
  return "(" .. lt .. ">" .. rt .. ")", truth(lv > rv), 1
end
tree = function(depth)
  if depth == 0 or math.random(4) == 1 then return constant() end
  return binary(depth)
end
list = {}
while #list < 240 do
  local text, value, largest = tree(math.random(1, 3))
  if #text < 60 and math.abs(value) < 1e15 and (value == 0 or largest < 50 * math.abs(value)) and
     not (text:find(">") and largest == 1 and #text < 6) then
    -- a comparison of values that are equal but for rounding could go either way
    local risky = text:find(">") and text:find("/")
    if not risky then list[#list + 1] = {text, value} end
  end
end
compare(list, false)
-- Quotients of whole numbers, which go a way of their own: all signs, with and without a rest, the ends of the range.
local kWhole = {0, 1, -1, 2, -2, 3, 7, -10, 127, 128, 255, -256, 257, 1000, -16384, 32766, 32767, -32767, -32768}
for _, x in ipairs(kWhole) do
  local wanted = {}
  for _, y in ipairs(kWhole) do
    if y ~= 0 then wanted[#wanted + 1] = x / y end
  end
  b.command("new")
  b.enter("10 for i=1 to " .. #wanted .. ":read y:print str$(a/y);\"/\";:next\n20 data " ..
          table.concat({table.unpack(kWhole, 2)}, ","))
  local at = 0
  for n in b.command("a=" .. x .. ":goto 10"):gsub("\n", ""):gmatch("[^/]+") do
    at = at + 1
    local off = math.abs(tonumber(n) - wanted[at])
    b.check(x .. "/" .. kWhole[at + 1], off <= math.abs(wanted[at]) * 1e-9, n)
  end
  b.equal(x .. " divided: results", at, #wanted)
end
b.done()
