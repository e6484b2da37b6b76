-- What the test scripts share. A failed check is an error, which ends quollrun with status 1.
local check = {}

function check.equal(actual, expected, what)
  if actual ~= expected then
    error(string.format("%s: expected %s, got %s", what or "value", tostring(expected), tostring(actual)), 2)
  end
end

function check.is(condition, what)
  if not condition then error(what or "not so", 2) end
end

function check.list(actual, expected, what)
  check.equal(#actual, #expected, (what or "list") .. " length")
  for i = 1, #expected do check.equal(actual[i], expected[i], (what or "list") .. " element " .. i) end
end

-- f(...) must raise an error whose text contains this one.
function check.raises(text, f, ...)
  local ok, message = pcall(f, ...)
  if ok then error("no error, but expected: " .. text, 2) end
  if not tostring(message):find(text, 1, true) then
    error("expected an error with '" .. text .. "', got: " .. tostring(message), 2)
  end
end

-- Four pages of RAM, so that no ROM is needed.
function check.pageInRam() PortShadow[2] = 0xB0 end

-- Stores bytes from an address on, and lets PC stand there.
function check.program(address, ...)
  for i, byte in ipairs({...}) do MemImage[address + i - 1] = byte end
  Z80State.PC = address
end

-- JP to itself: passes of 10 T-states for ever.
function check.loopFor10(address)
  check.program(address, 0xC3, address & 0xFF, address >> 8)
end

return check
