-- The functions against Lua's, in units of the 40th bit of the result; ten printed digits are right up to about
-- 50 units.
--   quollrun --folder ROMS math_functions.lua MAP
local m = dofile((arg[0]:match("^.*/") or "") .. "math_call.lua")
m.boot(arg[1])
local kOverflow, kDivision, kQuantity = 2, 3, 4
math.randomseed(3, 14)

local worst, where, times, counts = {}, {}, {}, {}
local function note(label, ulps, x)
  if ulps > (worst[label] or -1) then worst[label], where[label] = ulps, x end
  times[label] = (times[label] or 0) + m.tstates
  counts[label] = (counts[label] or 0) + 1
end

-- Checks the machine's value against the true one: at most so many units off, or so much in all.
local function near(label, what, value, failure, true_value, units, absolute)
  if not value then
    m.check(false, label, what, "error " .. failure)
    return
  end
  local ulps = m.ulps(value, true_value)
  if absolute and math.abs(value - true_value) < absolute then ulps = 0 end
  note(label, ulps, what)
  m.check(ulps <= units, label, what,
          string.format("%.13g, not %.13g: %.2f units", value, true_value, ulps))
end
local function try(name, label, x, true_function, units, absolute)
  local bytes = m.pack(x)
  x = m.unpack(bytes)
  local value, failure = m.unary(name, bytes)
  near(label, string.format("%.13g", x), value, failure, true_function(x), units, absolute)
end
local function exactly(name, x, expected)
  local value, failure = m.unary(name, m.pack(x))
  m.check((value or -failure) == expected, name, x, "expected", expected, value or -failure)
end
local function uniform(low, high) return low + (high - low) * math.random() end
local function magnitude(low, high) return 10.0 ^ uniform(low, high) end

-- Square root: within one unit; of squares exact, as a small integer where it fits.
for _ = 1, 375 do try("fp_sqr", "SQR", magnitude(-38, 38), math.sqrt, 1) end
for x = 0, 181 do
  exactly("fp_sqr", x * x, x)
  m.check(m.facc() == m.pack(x), "SQR", x * x, "not a small integer")
end
for _ = 1, 250 do
  local x = math.random(1, 1048575) + 0.0
  exactly("fp_sqr", x * x, x)
  local scale = 2.0 ^ (2 * math.random(-40, 40))
  exactly("fp_sqr", x * x * scale, x * math.sqrt(scale))
end
exactly("fp_sqr", -1, -kQuantity)
exactly("fp_sqr", -1e-30, -kQuantity)

-- Exponential.
for _ = 1, 250 do try("fp_exp", "EXP", uniform(-88, 88), math.exp, 2) end
for _ = 1, 125 do try("fp_exp", "EXP near 0", uniform(-1, 1) * magnitude(-12, 0), math.exp, 2) end
for x = -88, 88 do try("fp_exp", "EXP integer", x, math.exp, 2) end
exactly("fp_exp", 0, 1)
exactly("fp_exp", 89, -kOverflow)
exactly("fp_exp", 88.1, -kOverflow)
exactly("fp_exp", 2000, -kOverflow)
exactly("fp_exp", 32767, -kOverflow)
exactly("fp_exp", 1e38, -kOverflow)
exactly("fp_exp", -89, 0)
exactly("fp_exp", -2000, 0)
exactly("fp_exp", -32768, 0)
exactly("fp_exp", -1e38, 0)

-- Logarithm.
for _ = 1, 250 do try("fp_log", "LOG", magnitude(-38, 38), math.log, 3) end
for _ = 1, 125 do try("fp_log", "LOG near 1", 1 + uniform(-0.4, 0.4), math.log, 4) end
for _ = 1, 125 do
  local x = m.unpack(m.float(1 + uniform(-1, 1) * magnitude(-12, -3)))
  local t = x - 1                                          -- the series, as math.log loses nothing here either
  near("LOG close to 1", string.format("%.13g", x), m.unary("fp_log", m.float(x)), nil,
       t ~= 0 and t - t * t / 2 + t * t * t / 3 - t * t * t * t / 4 or 0.0, 3)
end
exactly("fp_log", 1, 0)
exactly("fp_log", 0, -kQuantity)
exactly("fp_log", -1, -kQuantity)
exactly("fp_log", -1e38, -kQuantity)

-- Angles. Close to a zero of sine or cosine only the digits that x itself settles can be right.
for name, f in pairs {fp_sin = math.sin, fp_cos = math.cos} do
  local label = name:sub(4):upper()
  for _ = 1, 200 do try(name, label .. " to 7", uniform(-7, 7), f, 4, 2.0 ^ -44) end
  for _ = 1, 200 do try(name, label .. " to 1E5", uniform(-1, 1) * magnitude(0, 5), f, 4, 2.0 ^ -40) end
  for _ = 1, 100 do
    try(name, label .. " tiny", uniform(-1, 1) * magnitude(-15, 0), f, 3)
    m.check(math.abs(m.unpack(m.facc())) <= 1, label, "beyond 1")
  end
  for x = -360, 360, 7 do try(name, label .. " integer", x, f, 4, 2.0 ^ -44) end
  for _ = 1, 75 do try(name, label .. " to 1E8", uniform(-1, 1) * magnitude(5, 8), f, 1 / 0, 1e-3) end
  exactly(name, 2.0 ^ 30, -kQuantity)
  exactly(name, -1e38, -kQuantity)
end
for _ = 1, 125 do try("fp_tan", "TAN", uniform(-7, 7), math.tan, 8, 2.0 ^ -44) end
for _ = 1, 75 do try("fp_tan", "TAN to 1000", uniform(-1000, 1000), math.tan, 8, 2.0 ^ -40) end
for _ = 1, 75 do try("fp_tan", "TAN tiny", uniform(-1, 1) * magnitude(-15, 0), math.tan, 4) end
exactly("fp_sin", 0, 0)
exactly("fp_cos", 0, 1)
exactly("fp_tan", 0, 0)
exactly("fp_atn", 0, 0)
for _ = 1, 200 do try("fp_atn", "ATN", uniform(-3, 3), math.atan, 4) end
for _ = 1, 125 do try("fp_atn", "ATN wide", uniform(-1, 1) * magnitude(-30, 38), math.atan, 4) end
for _, x in ipairs {1, -1, 0.25, 0.2499999999, 2, 32767, -32768, 1e38, 1e-38} do
  try("fp_atn", "ATN by hand", x, math.atan, 4)
end
near("pi", "", m.unary("fp_pi", m.pack(0)), nil, math.pi, 0.5)

-- Powers.
local function power(x, y, true_value, units, label)
  local value, failure = m.binary("fp_pow", m.pack(x), m.pack(y))
  near(label, string.format("%.13g ^ %.13g", x, y), value, failure, true_value, units)
  return value
end
local function power_is(x, y, expected)
  local value, failure = m.binary("fp_pow", m.pack(x), m.pack(y))
  m.check((value or "error " .. failure) == expected, "fp_pow", x, y, value or failure)
end
for x = -40, 40 do                                         -- exact where the mantissa holds the result
  local true_value, y = 1.0, 0
  while math.abs(true_value) < 2.0 ^ 40 and y < 60 do
    power_is(x, y, true_value)
    if math.abs(true_value) < 32768 then m.check(m.facc() == m.pack(true_value), "fp_pow", x, y, "no small integer") end
    if x ~= 0 and y > 0 then power(x, -y, 1 / true_value, 0.51, "x^-n") end
    true_value, y = true_value * x, y + 1
  end
end
for y = -128, 126 do
  power_is(2, y, 2.0 ^ y)
  power_is(-2, y, y % 2 == 0 and 2.0 ^ y or -(2.0 ^ y))
  power_is(4, y // 2, 2.0 ^ (y // 2 * 2))
  power_is(0.5, y, y >= -126 and 2.0 ^ -y or y == -127 and "error 2" or "error 2")
end
for n = -38, 38 do power(10, n, tonumber("1e" .. n), 20, "10^n") end
power_is(0, 0, 1)
power_is(5, 0, 1)
power_is(-2.5, 0, 1)
power_is(0, 5, 0)
power_is(0, 0.5, 0)
power_is(0, -1, "error 3")
power_is(0, -0.5, "error 3")
power_is(-8, 1 / 3, "error 4")
power_is(-8, 0.5, "error 4")
power_is(1, 32767, 1)
power_is(-1, 32767, -1)
power_is(-1, 32768, 1)
power_is(-1, 65537, -1)
power_is(-1, -3, -1)
power_is(10, 39, "error 2")
power_is(10, -39, 0)
power_is(10, 1e30, "error 2")
power_is(10, -1e30, 0)
power_is(0.1, 1e30, 0)
power_is(0.001, -20, "error 2")
power_is(-10, 40, "error 2")
power_is(1.5, 4, 5.0625)
power_is(100000, 2, 1e10)
power_is(4, 0.5, 2)
power_is(1.0001, 1e7, "error 2")
power_is(1e38, -1e38, 0)
for _ = 1, 125 do
  local x, y = m.unpack(m.float(magnitude(-3, 3))), m.unpack(m.float(uniform(-10, 10)))
  power(x, y, x ^ y, 8, "x^y to 1E30")
  x, y = m.unpack(m.float(uniform(0, 10))), m.unpack(m.float(uniform(0, 4)))
  power(x, y, x ^ y, 2, "x^y to 1E4")
  x, y = m.unpack(m.float(uniform(1, 1.5))), math.random(17, 200)
  power(x, y, x ^ y, 12, "interest")
  x = m.unpack(m.float(1 + uniform(0, 0.1)))
  y = math.random(1, 60)
  power(x, y, x ^ y, 12, "interest to 10 %")
  x, y = m.unpack(m.float(magnitude(-38, 38))), m.unpack(m.float(uniform(-1, 1)))
  power(x, y, x ^ y, 2, "roots")
end

-- Random numbers: within the bounds, evenly spread, neighbours independent; a seed gives its sequence again.
local kDraws = 20000
local buckets, pairs_, sum, last, state = {}, {}, 0.0, 0, 5
MemImage:set(m.kSeed, "\5\0\0\0")
for i = 1, kDraws do
  local x = m.unary("fp_rnd", m.pack(0))
  state = (state ~ state << 8) & 0xFFFFFFFF                -- goes through all values but 0
  state = state ~ state >> 9
  state = (state ~ state << 23) & 0xFFFFFFFF
  m.check(x == state / 2.0 ^ 32 and x > 0 and x < 1, "RND", i, x)
  local bucket = math.floor(x * 16)
  buckets[bucket] = (buckets[bucket] or 0) + 1
  local pair = bucket * 16 + last
  pairs_[pair] = (pairs_[pair] or 0) + 1
  last, sum = bucket, sum + x
  note("RND", 0, "")
end
local function chi(count, cells)
  local chi2 = 0.0
  for i = 0, cells - 1 do chi2 = chi2 + ((count[i] or 0) - kDraws / cells) ^ 2 * cells / kDraws end
  return (chi2 - cells + 1) / math.sqrt(2 * (cells - 1))   -- in standard deviations
end
m.check(math.abs(sum / kDraws - 0.5) < 4 / math.sqrt(12 * kDraws), "RND mean", sum / kDraws)
m.check(chi(buckets, 16) < 4, "RND spread", chi(buckets, 16))
m.check(chi(pairs_, 256) < 4, "RND pairs", chi(pairs_, 256))
MemImage:set(m.kSeed, "\5\0\0\0")
local first = m.unary("fp_rnd", m.pack(0))
MemImage:set(m.kSeed, "\0\0\0\0")
local zero = m.unary("fp_rnd", m.pack(0))
m.check(zero > 0 and m.unary("fp_rnd", m.pack(0)) ~= zero, "RND from seed 0")
MemImage:set(m.kSeed, "\5\0\0\0")
m.check(m.unary("fp_rnd", m.pack(0)) == first, "RND repeats")
print(string.format("RND: mean %.4f, spread %.2f and pairs %.2f standard deviations", sum / kDraws, chi(buckets, 16),
                    chi(pairs_, 256)))

local names = {}
for name in pairs(counts) do names[#names + 1] = name end
table.sort(names)
for _, name in ipairs(names) do
  print(string.format("%-18s %5d calls  worst %8.3f units at %-32s mean %6d T-states", name, counts[name], worst[name],
                      where[name], times[name] // counts[name]))
end
-- The time they may take, in milliseconds.
for name, limit in pairs {["SIN to 7"] = 15.5, ["COS to 7"] = 15, TAN = 30, LOG = 18, EXP = 19, ATN = 21, SQR = 8} do
  local time = times[name] / counts[name] / 3125
  m.check(time <= limit, name, time, "ms")
end
m.done()
