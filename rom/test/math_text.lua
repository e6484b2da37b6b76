-- Numbers to text and back.
--   quollrun --folder ROMS math_text.lua MAP
local m = dofile((arg[0]:match("^.*/") or "") .. "math_call.lua")
m.boot(arg[1])
local kOverflow = 2
math.randomseed(7, 7)

local written = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua").format

local function print_number(bytes)
  local failure = m.call("fp_print", {FACC = bytes})
  m.check(not failure and m.hl() == m.kText, "fp_print ends in", failure)
  return m.text()
end
local kTail = {"", " ", ":", ")", "E", "EX", "E+", "E-", ".", ",5", "-1", "e", "E ", "\x80"}
-- Reads a text; tail is what follows it, and where the pointer must stay.
local function parse(text, tail)
  tail = tail or ""
  MemImage:set(m.kOperand, text .. tail .. "\0")
  local failure = m.call("fp_parse", {HL = m.kOperand})
  if failure then return nil, failure end
  if Z80State.FlagC == 1 then
    m.check(m.hl() == m.kOperand, "fp_parse, no number", text, "HL moved")
    return nil, "none"
  end
  m.check(m.hl() == m.kOperand + #text, "fp_parse", text .. tail, "HL behind", m.hl() - m.kOperand)
  return m.unpack(m.facc())
end

local times, counts = {}, {}
local function note(name)
  times[name] = (times[name] or 0) + m.tstates
  counts[name] = (counts[name] or 0) + 1
end

-- By hand.
for x, text in pairs {
  [0] = "0", [1] = "1", [-1] = "-1", [10] = "10", [32767] = "32767", [-32768] = "-32768", [0.5] = "0.5",
  [0.1] = "0.1", [0.01] = "0.01", [1e-5] = "0.00001", [9.9999e-6] = "9.9999E-6", [1e-6] = "1E-6", [2e-7] = "2E-7",
  [1 / 3] = "0.3333333333", [2 / 3] = "0.6666666667", [-2 / 3] = "-0.6666666667", [1e10] = "1E+10",
  [9999999999] = "9999999999", [1e9] = "1000000000", [100000] = "100000", [32768] = "32768", [1234567.5] = "1234567.5",
  [1.5e12] = "1.5E+12", [123.456] = "123.456", [65535] = "65535", [65536] = "65536", [0.0001] = "0.0001",
  [3.14159265358] = "3.141592654", [1e38] = "1E+38", [-1e38] = "-1E+38", [1e-38] = "1E-38", [99999999999] = "1E+11",
  [9999999999.5] = "1E+10", [0.99999999999] = "1", [9.9999999999] = "10", [99999.999999] = "100000",
  [0.000012345678912] = "0.00001234567891", [-0.000012345678912] = "-0.00001234567891",
  [-1.234567891e-38] = "-1.234567891E-38",
  [1000000000.5] = "1000000001", [2.0 ^ -128] = "2.938735877E-39", [(2.0 ^ 40 - 1) * 2.0 ^ 87] = "1.701411835E+38",
} do
  m.check(print_number(m.pack(x)) == text, "fp_print", text, m.text())
  m.check(print_number(m.float(x)) == text, "fp_print float", text, m.text())
end

for text, x in pairs {
  ["0"] = 0, ["00"] = 0, ["1"] = 1, ["32767"] = 32767, ["32768"] = 32768, ["3071"] = 3071,
  ["30719"] = 30719, ["30720"] = 30720,
  ["100000"] = 100000, ["0.5"] = 0.5, [".5"] = 0.5, ["5."] = 5, ["1E3"] = 1000, ["1e3"] = 1000, ["1E+3"] = 1000,
  ["25E-2"] = 0.25, ["1.25E2"] = 125, ["0.000"] = 0, [".0E9"] = 0, ["0E999"] = 0, ["1099511627775"] = 2.0 ^ 40 - 1,
  ["0000000000000000000000001"] = 1, ["0.00000000000000000000000000000000000000000001E44"] = 1,
  ["10000000000000000000000000000000000000000E-40"] = 1, ["123456789012E-2"] = 1234567890.12,
  ["1E-50"] = 0, ["1E-999"] = 0,
  ["1E-99999999"] = 0, ["1E0000003"] = 1000, ["65536"] = 65536, ["-1"] = "none", [""] = "none", ["."] = "none",
  ["E5"] = "none",
  [".E5"] = "none", ["X"] = "none", ["1E39"] = kOverflow, ["1E999"] = kOverflow, ["1E99999999"] = kOverflow,
  ["2E38"] = kOverflow, ["1.7E38"] = 1.7e38, ["3E-39"] = 3e-39, ["0.1"] = 0.1,
  ["1" .. ("0"):rep(200)] = kOverflow, ["0." .. ("0"):rep(200) .. "1"] = 0, ["0." .. ("0"):rep(150) .. "1E151"] = 1,
} do
  if type(x) == "string" or x == kOverflow then
    local value, failure = parse(text)
    if text == "-1" then value, failure = parse("", text) end
    m.check(value == nil and failure == x, "fp_parse", text, value or failure)
  else
    for _, tail in ipairs(kTail) do
      if tail ~= "." or text:find("[.Ee]") then
        local value, failure = parse(text, tail)
        m.check(value and (value == x or m.ulps(value, x) < 1), "fp_parse", text .. tail, value or failure)
        if value and x == math.floor(x) and x < 32768 then
          m.check(m.facc() == m.pack(x), "fp_parse", text, "no small integer")
        end
      end
    end
  end
end

-- All small integers.
for x = -32768, 32767, 7 do
  m.check(print_number(m.pack(x)) == tostring(x), "fp_print", x, m.text())
  note("print integer")
  if x >= 0 then
    m.check(parse(tostring(x)) == x and m.facc() == m.pack(x), "fp_parse", x)
    note("parse integer")
  end
end

-- Any float: the ten digits next to it.
local function any(x, label)
  x = m.unpack(m.float(x))
  local text = print_number(m.float(x))
  note(label)
  m.check(text == written(x), string.format("fp_print %.17g", x), text, written(x))
end
for _ = 1, 3000 do
  any((math.random() - 0.5) * 10.0 ^ math.random(-4, 4), "print float")
  any((math.random() - 0.5) * 10.0 ^ math.random(5, 10), "print float, 1E5 to 1E10")
  any((math.random() + 0.01) * 10.0 ^ math.random(-36, 37), "print float, all sizes")
  any(math.random(1, 999999) / 100, "print money")
end
-- Half-way between two of ten digits, as near as there are numbers, and those on both sides.
for _ = 1, 1500 do
  local x = tonumber(string.format("%d5E%d", math.random(1000000000, 9999999999), math.random(-47, 27)))
  for unit = -1, 1 do any(x * (1 + unit * 2.0 ^ -40), "print half-way") end
end
for power = -127, 126 do
  for unit = -1, 1 do any(2.0 ^ power * (1 + unit * 2.0 ^ -40), "print near powers of two") end
end
for _, x in ipairs{0.99850000025, 12345.015625, 12345678.125, 12345678.375, 100000000050, 100000000150,
                   10000000005E4, 2.0 ^ 126 * 1.9999999999} do
  any(x, "print half-way")
end

-- Ten-digit numbers survive both ways; what is read is as good as the nearest number.
local worst = 0
for _ = 1, 3000 do
  local digits = tostring(math.random(1000000000, 9999999999))
  if math.random(2) == 1 then digits = digits:sub(1, math.random(10)) end
  local point = math.random(0, #digits)
  local text = digits:sub(1, point) .. "." .. digits:sub(point + 1)
  if math.random(2) == 1 then text = text .. "E" .. math.random(-37, 37 - point) end
  local value, failure = parse(text)
  note("parse float")
  m.check(value, "fp_parse", text, failure)
  if value then
    worst = math.max(worst, m.ulps(value, tonumber(text)))
    m.check(worst < 2, "fp_parse", text, worst .. " units")
    m.check(print_number(m.facc()) == written(tonumber(text)), "round trip", text, m.text())
  end
end
for _ = 1, 1000 do                                         -- more digits than fit
  local text = tostring(math.random(1, 9))
  for _ = 1, math.random(10, 40) do text = text .. math.random(0, 9) end
  local point = math.random(1, math.min(#text, 38))
  text = text:sub(1, point) .. "." .. text:sub(point + 1)
  local value = parse(text)
  worst = math.max(worst, m.ulps(value, tonumber(text)))
  m.check(worst < 2, "fp_parse", text, worst .. " units")
end
print(string.format("reading: worst %.3f units", worst))

local names = {}
for name in pairs(counts) do names[#names + 1] = name end
table.sort(names)
for _, name in ipairs(names) do
  print(string.format("%-28s mean %5d T-states", name, times[name] // counts[name]))
end
m.done()
