-- Addition, subtraction, multiplication, division, comparison, conversions against Lua's doubles.
--   quollrun --folder ROMS math_arithmetic.lua MAP
local m = dofile((arg[0]:match("^.*/") or "") .. "math_call.lua")
m.boot(arg[1])
local kOverflow, kDivision = 2, 3
local kLargest = (2.0 ^ 40 - 1) * 2.0 ^ 87
local kSmallest = 2.0 ^ -128

math.randomseed(20, 26)
local function mantissa()
  local kind = math.random(4)
  if kind == 1 then return math.random(1, 32767) + 0.0 end                 -- short
  if kind == 2 then return (1 << 40) - math.random(1, 300) + 0.0 end       -- all ones
  if kind == 3 then return (1 << 39) + math.random(0, 300) + 0.0 end       -- all zeros
  return math.random(1 << 39, (1 << 40) - 1) + 0.0
end
local function number(spread)
  local x = mantissa()
  local _, exponent = m.frexp(x)
  x = x * 2.0 ^ (math.random(-spread, spread) - exponent)
  return math.random(2) == 1 and x or -x
end
local function whole() return math.random(-32768, 32767) end
local function small() return math.random(-300, 300) end

local worst, times, counts = {}, {}, {}
local function note(name, ulps)
  worst[name] = math.max(worst[name] or 0, ulps)
  times[name] = (times[name] or 0) + m.tstates
  counts[name] = (counts[name] or 0) + 1
end

-- The result that the machine must give, rounded to the nearest; a and b are doubles that hold its numbers exactly.
-- The double's own rounding is 2^-13 of a unit.
local models = {
  fp_add = function(a, b) return a + b end,
  fp_sub = function(a, b) return a - b end,
  fp_mul = function(a, b) return a * b end,
  fp_div = function(a, b) return a / b end,
}
local function try(name, a, b, bytesA, bytesB, label)
  local x, failure = m.binary(name, bytesA, bytesB)
  local true_value = models[name](a, b)
  local what = string.format("%s %.17g %.17g", name, a, b)
  if name == "fp_div" and b == 0 then
    m.check(failure == kDivision, what, failure or x)
  elseif math.abs(true_value) >= 2.0 ^ 127 then
    m.check(failure == kOverflow, what, failure or x)
  elseif math.abs(true_value) > kLargest then
    m.check(failure == kOverflow or math.abs(x) == kLargest, what, failure or x)
  elseif not x then
    m.check(false, what, "error " .. failure)
  elseif math.abs(true_value) < kSmallest * (1 - 2.0 ^ -40) then
    m.check(x == 0 and m.facc() == ("\0"):rep(6), what, x)
  else
    local ulps = m.ulps(x, true_value)
    -- A sum keeps a few bits of what is shifted out, not whether any were lost.
    local bound = (name == "fp_add" or name == "fp_sub") and 1 or 0.51
    m.check(ulps < bound, what, string.format("%.17g %g units", x, ulps))
    note(label, ulps)
  end
  return x
end

for _, name in ipairs({"fp_add", "fp_sub", "fp_mul", "fp_div"}) do
  for _ = 1, 1500 do
    local a, b = number(20), number(20)
    try(name, a, b, m.float(a), m.float(b), name .. " float")
  end
  for _ = 1, 500 do                                        -- close to each other: cancellation
    local a = number(3)
    local b = m.unpack(m.float(a * (1 + math.random(-1000, 1000) * 2.0 ^ -math.random(10, 40))))
    try(name, a, b, m.float(a), m.float(b), name .. " close")
  end
  for _ = 1, 1000 do                                       -- everywhere, over the edges too
    local a, b = number(126), number(126)
    try(name, a, b, m.float(a), m.float(b), name .. " wide")
  end
  for _ = 1, 1000 do
    local a, b = whole(), whole()
    local x = try(name, a, b, m.pack(a), m.pack(b), name .. " integer")
    local true_value = models[name](a, b)
    if x and true_value == math.floor(true_value) and math.abs(true_value) < 32768 then
      m.check(x == true_value and m.facc() == m.pack(true_value), name, a, b, "not a small integer")
    elseif x and true_value == math.floor(true_value) then
      m.check(x == true_value, name, a, b, x)
    end
  end
  for _ = 1, 500 do
    local a, b = small(), small()
    local x = try(name, a, b, m.pack(a), m.pack(b), name .. " small")
    local true_value = models[name](a, b)
    if x and true_value == math.floor(true_value) and math.abs(true_value) < 32768 then
      m.check(m.facc() == m.pack(true_value), name, a, b, "not a small integer")
    end
  end
  for _ = 1, 500 do                                        -- one of each kind
    local a, b = whole(), number(30)
    try(name, a, b, m.pack(a), m.float(b), name .. " mixed")
    try(name, b, a, m.float(b), m.pack(a), name .. " mixed")
  end
end

-- Whole numbers as floats stay exact as long as they fit.
for _ = 1, 500 do
  local a, b = math.random(1, 1 << 20) + 0.0, math.random(1, 1 << 20) - 1.0
  m.check(m.binary("fp_mul", m.float(a), m.float(b)) == a * b, "exact product", a, b)
  m.check(m.binary("fp_add", m.float(a), m.float(b)) == a + b, "exact sum", a, b)
  m.check(m.binary("fp_div", m.float(a * b), m.float(a)) == b, "exact quotient", a * b, a)
end

-- By hand: edges of the small integers and of the range.
local function is(name, a, b, expected)
  local x, failure = m.binary(name, a, b)
  m.check((x or "error " .. failure) == expected, name, expected, x or failure)
end
local int, float = m.pack, m.float
is("fp_add", int(32767), int(1), 32768.0)
is("fp_add", int(-32768), int(-32768), -65536.0)
is("fp_add", int(-32768), int(-1), -32769.0)
is("fp_sub", int(-32768), int(1), -32769.0)
is("fp_sub", int(32767), int(-32768), 65535.0)
is("fp_sub", int(0), int(-32768), 32768.0)
is("fp_sub", float(0.5), int(-32768), 32768.5)
is("fp_mul", int(-32768), int(-32768), 1073741824.0)
is("fp_mul", int(-32768), int(1), -32768.0)
is("fp_mul", int(0), int(-5), 0.0)
is("fp_mul", int(255), int(257), 65535.0)
is("fp_div", int(6), int(3), 2.0)
is("fp_div", int(-32768), int(-1), 32768.0)
is("fp_div", int(1), int(0), "error 3")
is("fp_div", float(1.5), int(0), "error 3")
is("fp_div", int(0), int(7), 0.0)
is("fp_add", float(kLargest), float(kLargest), "error 2")
is("fp_mul", float(2.0 ^ 63), float(2.0 ^ 63), 2.0 ^ 126)
is("fp_mul", float(2.0 ^ 64), float(2.0 ^ 63), "error 2")
is("fp_mul", float(2.0 ^ -64), float(2.0 ^ -64), 2.0 ^ -128)
is("fp_mul", float(2.0 ^ -64), float(2.0 ^ -65), 0.0)
is("fp_div", float(2.0 ^ 126), float(0.5), "error 2")
is("fp_div", float(2.0 ^ -128), int(2), 0.0)
is("fp_add", float(1), float(-1), 0.0)
is("fp_sub", float(kSmallest * 1.5), float(kSmallest), 0.0)
is("fp_add", float(1e10), float(1e-20), 1e10)
is("fp_add", float((2.0 ^ 40 - 1)), int(1), 2.0 ^ 40)

-- Comparison.
local function compare(a, b, bytesA, bytesB)
  MemImage:set(m.kOperand, bytesA)
  local failure = m.call("fp_cmp", {HL = m.kOperand, FACC = bytesB})
  local good = not failure and (Z80State.FlagZ == 1) == (a == b) and (Z80State.FlagC == 1) == (a < b)
  m.check(good and m.unpack(m.facc()) == b, string.format("fp_cmp %.17g %.17g", a, b), Z80State.FlagZ,
          Z80State.FlagC)
  local name = "fp_cmp " .. ((bytesA:byte() == 0 and bytesB:byte() == 0) and "integer" or "float")
  note(name, 0)
end
for _ = 1, 1000 do
  local a, b = whole(), whole()
  compare(a, b, int(a), int(b))
  compare(a, b, float(a), int(b))
  compare(a, b, int(a), float(b))
  compare(a, a, int(a), float(a))
  compare(a, a, float(a), int(a))
  a, b = number(10), number(10)
  compare(a, b, float(a), float(b))
  compare(a, a, float(a), float(a))
  b = m.unpack(m.float(a * (1 + 2.0 ^ -38)))
  compare(a, b, float(a), float(b))
  compare(b, a, float(b), float(a))
  b = whole()
  compare(a, b, float(a), int(b))
  compare(b, a, int(b), float(a))
end
for _, a in ipairs {0, 1, -1, 32767, -32768, 0.5, -0.5, 1e38, -1e38, 1e-38, -1e-38} do
  for _, b in ipairs {0, 1, -1, 32767, -32768, 0.5, -0.5, 1e38, -1e38, 1e-38, -1e-38} do
    local x, y = m.unpack(m.pack(a)), m.unpack(m.pack(b))
    compare(x, y, m.pack(a), m.pack(b))
  end
end

-- Sign, whole part, conversions.
local function signs(x, bytes)
  m.call("fp_sign", {FACC = bytes})
  local sign = x < 0 and 255 or x > 0 and 1 or 0
  m.check(Z80State.A == sign and (Z80State.FlagZ == 1) == (x == 0) and (Z80State.FlagS == 1) == (x < 0), "fp_sign", x)
  m.check(m.unary("fp_neg", bytes) == -x, "fp_neg", x)
  m.check(m.unary("fp_abs", bytes) == math.abs(x), "fp_abs", x)
  m.check(m.unary("fp_sgn", bytes) == (x < 0 and -1 or x > 0 and 1 or 0), "fp_sgn", x)
  local floor = math.floor(x) + 0.0
  m.check(m.unary("fp_int", bytes) == floor, string.format("fp_int %.17g", x), m.unpack(m.facc()))
  note("fp_int", 0)
  if floor > -32768 and floor < 32768 then m.check(m.facc() == m.pack(floor), "fp_int, not a small integer", x) end
  for name, top in pairs {fp_toint = 32767, fp_toaddr = 65535} do
    m.call(name, {FACC = bytes})
    local fits = floor >= -32768 and floor <= top
    m.check((Z80State.FlagC == 0) == fits, name, x, "range")
    if fits then m.check(m.hl() == floor & 0xFFFF, name, x, m.hl()) end
    m.check(m.facc() == bytes, name, "changes FACC")
  end
end
for _ = 1, 1500 do
  local x = number(18)
  signs(x, float(x))
  x = number(44)
  signs(x, float(x))
  x = whole()
  signs(x, int(x))
  signs(x, float(x))
end
for _, x in ipairs {0, 1, -1, 0.5, -0.5, 32767, 32767.5, 32768, -32768, -32767.5, -32768.5, -32769, 65535, 65535.5,
                    65536, -65535.5, -65536, 2.0 ^ 39 + 0.5, -(2.0 ^ 39) - 0.5, 2.0 ^ 40 - 1, -(2.0 ^ 40) + 1, 1e-38,
                    -1e-38, 1e38, -1e38, 65535.9999, -65535.9999, 255.5, -255.5, -256, 2.0 ^ 24 + 0.5,
                    -(2.0 ^ 24) - 0.5} do
  x = m.unpack(m.pack(x))
  signs(x, m.pack(x))
end

for _ = 1, 300 do
  local x = math.random(0, 0xFFFFFFFF) >> math.random(0, 31)
  m.call("fp_fromlong", {DE = x >> 16, HL = x & 0xFFFF})
  m.check(m.facc() == m.pack(x), "fp_fromlong", x)
  x = x & 0xFFFF
  m.call("fp_fromuint", {HL = x})
  m.check(m.facc() == m.pack(x), "fp_fromuint", x)
  m.call("fp_fromint", {HL = x, FACC = float(1.1)})
  m.check(m.facc() == m.pack(x < 32768 and x or x - 65536), "fp_fromint", x)
  local bytes = float(number(100))
  MemImage:set(m.kOperand, bytes)
  m.call("fp_load", {HL = m.kOperand, BC = 0x4321})
  m.check(m.facc() == bytes and m.hl() == m.kOperand + 6 and Z80State.B == 0x43 and Z80State.C == 0x21, "fp_load")
  m.call("fp_store", {HL = m.kOperand + 16, BC = 0x4321})
  m.check(MemImage:get(m.kOperand + 16, 6) == bytes and m.hl() == m.kOperand + 22 and Z80State.B == 0x43, "fp_store")
end
m.call("fp_zero", {FACC = float(3)})
m.check(m.facc() == ("\0"):rep(6), "fp_zero")

local names = {}
for name in pairs(counts) do names[#names + 1] = name end
table.sort(names)
for _, name in ipairs(names) do
  print(string.format("%-16s %5d calls  worst %.4f units  mean %5d T-states", name, counts[name], worst[name],
                      times[name] // counts[name]))
end
m.done()
