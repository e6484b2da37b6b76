-- A machine at its BASIC prompt: lines go in through the system's key queue, what was printed comes from the
-- screen's text. A module for the tests beside it:
--   local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
--   b.boot()
--   b.equal("sum", b.command("print 1+2"), " 3")
--   b.done()
local b = {failed = 0, checked = 0}

b.kScreen, b.kQueue, b.kHead, b.kTail, b.kWidth, b.kWarm = 0x0C00, 0x1200, 0x0B1D, 0x0B1E, 0x0B0C, 0x0B22
b.kVarEnd, b.kProgStart, b.kRamTop, b.kProgEnd = 0x1720, 0x1722, 0x1724, 0x1726
b.kProgram = 0x19EF
local kWarmMark, kCursorRow, kJoined = 0x5A, 0x0B0A, 0x1210

function b.word(address) return MemImage[address] + 256 * MemImage[address + 1] end

-- Nothing left to read and the processor waiting for an interrupt: the machine waits for keys.
local function idle() return MemImage[b.kHead] == MemImage[b.kTail] and Z80State.Halted == 1 end

-- Runs until the machine waits, at most so many frames; false if it doesn't.
function b.wait(frames)
  local quiet = 0
  for _ = 1, frames do
    if Frames(1) == 0 then return false end
    quiet = idle() and quiet + 1 or 0
    if quiet == 2 then return true end
  end
  return false
end

function b.boot()
  for _ = 1, 200 do
    Frames(1)
    if MemImage[b.kWarm] == kWarmMark and idle() then break end
  end
  assert(b.wait(50), "the machine does not come to its prompt")
end

-- Puts key codes into the queue as fast as they are taken.
function b.keys(codes)
  for i = 1, #codes do
    local waited = 0
    while (MemImage[b.kTail] + 1) % 16 == MemImage[b.kHead] do
      Frames(1)
      waited = waited + 1
      assert(waited < 500, "keys are not taken")
    end
    local tail = MemImage[b.kTail]
    MemImage[b.kQueue + tail] = codes:byte(i)
    MemImage[b.kTail] = (tail + 1) % 16
  end
end

-- Puts a line on the clear screen's first rows and presses Enter: faster than keys.
function b.put(text)
  b.keys("\x0C")
  for _ = 1, 5 do
    Frames(1)
    if MemImage[b.kHead] == MemImage[b.kTail] and MemImage[kCursorRow] == 0 then break end
  end
  local width = MemImage[b.kWidth]
  for row = 0, (#text - 1) // width do
    MemImage:set(b.kScreen + 64 * row, text:sub(row * width + 1, (row + 1) * width))
    MemImage[kJoined + row] = row > 0 and 1 or 0
  end
  b.keys("\r")
end

-- The row where an answer to a line typed at the top begins.
local function answerRow(line) return (#line - 1) // MemImage[b.kWidth] + 1 end

function b.row(number)
  return (MemImage:get(b.kScreen + 64 * number, MemImage[b.kWidth]):gsub(" +$", ""))
end

-- What stands on the screen from a row on, without empty rows at the end.
function b.screen(first)
  local rows = {}
  for number = first or 0, 23 do rows[#rows + 1] = b.row(number) end
  while rows[#rows] == "" do rows[#rows] = nil end
  return table.concat(rows, "\n")
end

-- Types a line on a clear screen; returns what the machine printed below it up to the prompt "Ready", which is
-- not included. No prompt within so many frames: "..." comes behind the text.
function b.command(line, frames)
  b.keys("\x0C" .. line .. "\r")
  local ended = b.wait(frames or 1500)
  local text = b.screen(answerRow(line))
  if not ended then return text .. "..." end
  if text == "Ready" then return "" end
  return (text:gsub("\nReady$", ""))
end

-- Types lines that print nothing: those of a program.
function b.enter(text)
  for line in text:gmatch("[^\n]+") do
    b.keys("\x0C" .. line:gsub("^%s+", "") .. "\r")
    assert(b.wait(1500), "line not taken: " .. line)
    local answer = b.screen(answerRow(line))
    assert(answer == "", line .. ": " .. answer)
  end
end

-- What a new program prints when it is run. Further arguments are lines typed at its INPUTs.
function b.run(text, ...)
  b.command("new")
  b.enter(text)
  b.keys("\x0Crun\r")
  assert(b.wait(6000), "program does not end: " .. text)
  for _, line in ipairs({...}) do
    b.keys(line .. "\r")
    assert(b.wait(6000), "program does not end: " .. text)
  end
  local output = b.screen(1)
  if output == "Ready" then return "" end
  return (output:gsub("\nReady$", ""))
end

function b.check(name, good, message)
  b.checked = b.checked + 1
  if good then return end
  b.failed = b.failed + 1
  print("FAILED " .. name .. ": " .. message)
end

function b.equal(name, got, wanted)
  b.check(name, got == wanted, string.format("%q instead of %q", tostring(got), tostring(wanted)))
end

-- A number as the machine prints it: ten digits, half-way up, without trailing zeros, plain from 1E-5 to below 1E10.
function b.format(x)
  if x == 0 then return "0" end
  local sign = x < 0 and "-" or ""
  local first, rest, power = string.format("%.98e", math.abs(x)):match("^(%d)%.(%d+)e([+-]%d+)$")
  local digits, exponent = math.tointeger((first .. rest):sub(1, 10)), math.tointeger(power)
  if rest:sub(10, 10) >= "5" then digits = digits + 1 end
  if digits == 10000000000 then exponent = exponent + 1 end
  digits = tostring(digits):gsub("0+$", "")
  if exponent < -5 or exponent > 9 then
    local tail = #digits > 1 and "." .. digits:sub(2) or ""
    return string.format("%s%s%sE%s%d", sign, digits:sub(1, 1), tail, exponent < 0 and "-" or "+", math.abs(exponent))
  end
  if exponent < 0 then return sign .. "0." .. ("0"):rep(-exponent - 1) .. digits end
  if #digits <= exponent + 1 then return sign .. digits .. ("0"):rep(exponent + 1 - #digits) end
  return sign .. digits:sub(1, exponent + 1) .. "." .. digits:sub(exponent + 2)
end

-- The same as PRINT shows it, without the blank behind it.
function b.printed(x) return (x < 0 and "" or " ") .. b.format(x) end

-- Ends the script: status 1 if any check failed.
function b.done()
  print(string.format("%d checks, %d failed", b.checked, b.failed))
  if b.failed > 0 or b.checked == 0 then os.exit(1) end
end

return b
