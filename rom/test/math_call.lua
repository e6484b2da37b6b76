-- Calls the number routines of the system ROM by name, and turns numbers into bytes and back.
--   local m = dofile(folder .. "math_call.lua")
--   m.boot(map)              starts the machine; map = linker's map or the output of nm
--   m.call("fp_add", {HL = 0x2000, FACC = m.pack(2)})
-- A call runs with the interrupts off on a stack of its own and comes back with an error's number, or nil.
local m = {}

m.kFacc, m.kText, m.kSeed = 0x1300, 0x1354, 0x131A
m.kOperand = 0x2000               -- where tests put operands and texts
local kReturn, kTrap, kError = 0x1F00, 0x1F10, 0x1F30
local kPort2, kStack = 0x0B00, 0x0B00
m.symbols = {}
m.tstates = 0                     -- of the last call

-- Reads "address name" pairs out of a linker's map or of nm's output.
function m.readSymbols(path)
  for line in io.lines(path) do
    local address, name = line:match("^%s*0x(%x+)%s+([%a_][%w_]*)%s*$")
    if not address then address, name = line:match("^(%x+)%s+%a%s+([%a_][%w_]*)%s*$") end
    if address then m.symbols[name] = tonumber(address, 16) & 0xFFFF end
  end
end

function m.boot(map)
  m.readSymbols(map)
  Frames(150)
  -- An error comes back to the caller, its number in kError.
  local trap = {0xE1, 0x7E, 0x32, kError & 255, kError >> 8,       -- POP HL; LD A,(HL); LD (kError),A
                0x3E, 0x70, 0x32, kPort2 & 255, kPort2 >> 8,       -- LD A,0x70; LD (PORT2),A
                0xD3, 0x02, 0xC3, kReturn & 255, kReturn >> 8}     -- OUT (2),A; JP kReturn
  for i, byte in ipairs(trap) do MemImage[kTrap + i - 1] = byte end
  MemImage[8], MemImage[9], MemImage[10] = 0xC3, kTrap & 255, kTrap >> 8
end

-- Calls a routine. registers: fields of Z80State, and FACC = 6 bytes as a string. Returns nil, or the number of
-- the error that it ended in.
function m.call(name, registers)
  local address = m.symbols[name] or error("no such routine: " .. name, 2)
  PortOut(2, 0x70)
  MemImage[kPort2], MemImage[kError] = 0x70, 0
  Z80State.IFF1, Z80State.IFF2, Z80State.IrqLine, Z80State.Halted = 0, 0, 0, 0
  Z80State.SP = kStack - 2
  MemImage[kStack - 2], MemImage[kStack - 1] = kReturn & 255, kReturn >> 8
  for register, value in pairs(registers or {}) do
    if register == "FACC" then MemImage:set(m.kFacc, value)
    elseif #register == 2 and register ~= "IX" and register ~= "IY" then
      Z80State[register:sub(1, 1)], Z80State[register:sub(2)] = (value >> 8) & 255, value & 255
    else Z80State[register] = value end
  end
  Z80State.IX, Z80State.IY = 0x1234, 0x5678
  Z80State.PC = address
  local before = RunState.TotalCycles + RunState.FrameClock
  assert(RunUntil(kReturn, 3125000), name .. " does not come back")
  m.tstates = RunState.TotalCycles + RunState.FrameClock - before
  local failure = MemImage[kError]
  if failure ~= 0 then return failure end
  assert(Z80State.SP == kStack, name .. " leaves the stack unbalanced")
  assert(Z80State.IX == 0x1234 and Z80State.IY == 0x5678, name .. " changes IX or IY")
  assert(MemImage[kPort2] == 0x70, name .. " leaves another page behind")
end

function m.hl() return Z80State.H * 256 + Z80State.L end
function m.facc() return MemImage:get(m.kFacc, 6) end
function m.text()
  local text = MemImage:get(m.hl(), 24)
  return text:sub(1, text:find("\0", 1, true) - 1)
end

-- A double as a float of the ROM, rounded to 40 bits; zero as zero.
function m.float(x)
  if x == 0 then return ("\0"):rep(6) end
  local sign = 0
  if x < 0 then sign, x = 0x80, -x end
  local mantissa, exponent = m.frexp(x)
  local whole = math.floor(mantissa * 2.0 ^ 40 + 0.5)
  if whole == 1 << 40 then whole, exponent = 1 << 39, exponent + 1 end
  assert(exponent + 128 >= 1 and exponent + 128 <= 255, "out of range")
  return string.char(exponent + 128, (whole >> 32 & 0x7F) | sign) .. string.pack(">I4", whole & 0xFFFFFFFF)
end

-- The same, but whole numbers of 16 bits as small integers.
function m.pack(x)
  if x == math.floor(x) and x >= -32768 and x <= 32767 then
    return string.pack("<Bi2I3", 0, math.floor(x), 0)
  end
  return m.float(x)
end

-- Number of the ROM as a double, exactly. Complains about what no routine may leave behind.
function m.unpack(bytes)
  local exponent, first, rest = string.unpack(">BBI4", bytes)
  if exponent == 0 then
    assert(bytes:sub(4) == "\0\0\0", "small integer with a rest")
    return string.unpack("<i2", bytes, 2) + 0.0
  end
  local whole = (first | 0x80) << 32 | rest
  local x = whole * 2.0 ^ (exponent - 168)
  return first >= 0x80 and -x or x
end

-- x = mantissa * 2^exponent with 0.5 <= mantissa < 1, for x > 0.
function m.frexp(x)
  local exponent = math.floor(math.log(x, 2)) + 1
  local mantissa = x / 2.0 ^ exponent
  if mantissa >= 1 then mantissa, exponent = mantissa / 2, exponent + 1 end
  if mantissa < 0.5 then mantissa, exponent = mantissa * 2, exponent - 1 end
  return mantissa, exponent
end

-- Distance of x from the true value in units of the 40th bit of the true value.
function m.ulps(x, true_value)
  if x == true_value then return 0 end
  local _, exponent = m.frexp(math.abs(true_value))
  return math.abs(x - true_value) / 2.0 ^ (exponent - 40)
end

-- Runs operand op FACC, returns the value, or nil and the error's number.
function m.binary(name, operand, facc)
  MemImage:set(m.kOperand, operand)
  local failure = m.call(name, {HL = m.kOperand, FACC = facc})
  if failure then return nil, failure end
  return m.unpack(m.facc())
end

function m.unary(name, facc)
  local failure = m.call(name, {FACC = facc})
  if failure then return nil, failure end
  return m.unpack(m.facc())
end

m.failures = 0
function m.check(condition, ...)
  if condition then return end
  m.failures = m.failures + 1
  if m.failures <= 40 then print("FAILED", ...) end
end
function m.done()
  if m.failures > 0 then
    print(m.failures .. " failures")
    os.exit(1)
  end
  print("passed")
end
return m
