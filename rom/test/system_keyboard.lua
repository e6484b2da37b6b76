-- The keyboard: the code of each key, modifiers, auto-repeat, the queue, break keys.
local s = dofile((arg[0]:match("^.*/") or "") .. "system_machine.lua")
s.boot()

-- A program that does nothing, so that the codes stay in the queue.
MemImage:set(s.kCode, "\xFB\x18\xFE")
Z80State.PC, Z80State.Halted = s.kCode, 0
Frames(2)

local function queued()
  local codes = {}
  local head = MemImage[s.kQueueHead]
  while head ~= MemImage[s.kQueueTail] do
    codes[#codes + 1] = MemImage[s.kQueue + head]
    head = (head + 1) & 15
  end
  MemImage[s.kQueueHead] = head
  return codes
end

-- The key, alone or with modifiers, gives exactly these codes (numbers, or a text of ASCII).
local function gives(code, modifiers, expected)
  s.press(code, modifiers)
  local codes = queued()
  if type(expected) == "string" then expected = expected:byte() end
  s.equal(#codes, expected and 1 or 0, string.format("codes of key %02X, modifiers %d", code, modifiers))
  s.equal(codes[1], expected, string.format("key %02X, modifiers %d", code, modifiers))
end

local kShift, kCtrl, kAltGr = 1, 2, 6

-- The Hungarian letters in the order of the codes 0x90 (small) and 0x80 (capital), by the host's keys.
local hungarian = {0xDE, 0xBA, 0xE2, 0xBB, 0xC0, 0xDB, 0xDD, 0xBF, 0xDC}

local function letters(capsLock)
  for code = 0x41, 0x5A do
    gives(code, 0, string.char(capsLock and code or code + 32))
    gives(code, kShift, string.char(code))
  end
  for i, code in ipairs(hungarian) do
    gives(code, 0, (capsLock and 0x80 or 0x90) + i - 1)
    gives(code, kShift, 0x80 + i - 1)
  end
end

letters(false)
s.press(0x14)
letters(true)
gives(0x31, 0, "1")
s.press(0x14)
letters(false)

local digits = {[0] = "&", "'", '"', "+", "!", "%", "/", "=", "(", ")"}
for digit = 0, 9 do
  gives(0x30 + digit, 0, string.char(0x30 + digit))
  gives(0x30 + digit, kShift, digits[digit])
end
for _, key in ipairs{{0xBC, ",", "?"}, {0xBE, ".", ":"}, {0xBD, "-", "_"}, {0x74, "<", "["}, {0x75, ">", "]"},
                     {0x76, ";", "$"}, {0x77, "^", "@"}, {0x78, "#", "{"}, {0x79, "&", "}"}, {0x20, " ", " "},
                     {0x0D, 13, 13}, {0x08, 8, 127}, {0x25, 28, 28}, {0x27, 29, 29}, {0x26, 30, 0xA1},
                     {0x28, 31, 31}, {0x2D, 0xA0, 0xA0}} do
  gives(key[1], 0, key[2])
  gives(key[1], kShift, key[3])
end
for _, key in ipairs{{0x6A, "*"}, {0x6B, "+"}, {0x6D, "-"}, {0x6F, "/"}} do gives(key[1], 0, key[2]) end

-- With Alt, Ctrl or not: the host holds Alt alone back, so it comes with Ctrl or Shift.
for _, key in ipairs{{0xBC, ";"}, {0xE2, "<"}, {0x59, ">"}, {0xBA, "$"}, {0x56, "@"}, {0x58, "#"}, {0x43, "&"},
                     {0x46, "["}, {0x47, "]"}, {0x42, "{"}, {0x4E, "}"}, {0x51, "\\"}, {0x57, "|"}, {0x31, "~"},
                     {0x33, "^"}, {0x37, "`"}, {0xBD, "*"}} do
  gives(key[1], kAltGr, key[2])
end
gives(0x41, kAltGr, nil)

-- Ctrl with a letter, except the break key.
for code = 0x41, 0x5A do
  if code ~= 0x43 then gives(code, kCtrl, code - 0x40) end
end
gives(0xDE, kCtrl, nil)

-- Break keys don't enter the queue, they empty it.
for _, key in ipairs{{0x43, kCtrl, 3}, {0x23, 0, 27}} do
  s.press(0x41)
  s.press(0x42)
  MemImage[s.kBreakKey] = 0
  s.press(key[1], key[2])
  s.equal(MemImage[s.kBreakKey], key[3], "break key")
  s.equal(#queued(), 0, "queue behind a break key")
  s.call(s.key_poll)
  s.equal(Z80State.A, key[3], "key_poll")
  s.equal(Z80State.FlagZ, 0, "key_poll")
  s.call(s.key_poll)
  s.equal(Z80State.FlagZ, 1, "key_poll again")
end

-- Auto-repeat: nothing for half a second (25 interrupts), then a code every 3. 20 of them would take 25 + 19 * 3.
local function held(code, frames)
  picd_KeyDown(code, 0)
  local codes = {}
  for _ = 1, frames do
    Frames(1)
    for _, c in ipairs(queued()) do codes[#codes + 1] = c end
  end
  picd_KeyUp(code)
  Frames(3)
  s.equal(#queued(), 0, "codes behind the release")
  return #codes
end
s.equal(held(0x41, 24), 1, "held for 24 frames")
s.equal(held(0x41, 27), 2, "held for 27 frames")
local long = held(0x41, 25 + 19 * 3)
s.is(long >= 20 and long <= 21, "held for long: " .. long)
s.equal(held(0x14, 60), 0, "Caps Lock")
s.press(0x14)

-- A second key takes the repeat over; both of one moment are served.
picd_KeyDown(0x41, 0)
picd_KeyDown(0x4B, 0)
Frames(3)
local both = queued()
table.sort(both)
s.equal(table.concat(both, " "), "97 107", "two keys at once")
picd_KeyUp(0x41)
picd_KeyUp(0x4B)
Frames(2)

-- The queue takes 15 keys; what comes then is lost, and nothing else is.
for i = 0, 19 do s.press(0x41 + i) end
local full = queued()
s.equal(#full, 15, "queue")
for i = 1, 15 do s.equal(full[i], 0x60 + i, "queued key") end

-- key_get waits.
local done = s.begin(s.key_get)
s.is(not s.ends(done, 10), "key_get without a key")
picd_KeyDown(0x58, 0)
s.is(s.ends(done, 3), "key_get")
s.equal(Z80State.A, 0x78, "key_get")
picd_KeyUp(0x58)

-- The rows for programs that want to know which keys are down: row 8 bit 1 is Up, bit 6 Left.
MemImage:set(s.kCode, "\xFB\x18\xFE")
Z80State.PC = s.kCode
picd_KeyDown(0x26, 0)
picd_KeyDown(0x25, 0)
Frames(2)
s.equal(MemImage[0x0B30 + 2 * 8], 0x42, "row 8")
picd_KeyUp(0x26)
picd_KeyUp(0x25)
Frames(2)
s.equal(MemImage[0x0B30 + 2 * 8], 0, "row 8")
s.clean()
