-- The full-screen editor by con_line: what is typed, moved, inserted and deleted, and the line it hands over.
local s = dofile((arg[0]:match("^.*/") or "") .. "system_machine.lua")
s.boot()

local kEnter, kBack, kEnd, kLeft, kUp, kRight, kDown, kInsert = 0x0D, 0x08, 0x23, 0x25, 0x26, 0x27, 0x28, 0x2D
local kShift, kCtrl = 1, 2
local done

local function screen(mode)
  s.call(s.gfx_mode, {A = mode or 0})
end

-- con_line from here on.
local function edit()
  done = s.begin(s.con_line)
  Frames(2)
end

-- Until the editor waits for a key again.
local function settle()
  for _ = 1, 100 do
    if MemImage[s.kQueueHead] == MemImage[s.kQueueTail] and Z80State.Halted == 1 then return end
    Frames(1)
  end
  error("the editor does not come back", 3)
end

local function keys(...)
  for _, key in ipairs{...} do
    local code, times, modifiers = key, 1, 0
    if type(key) == "table" then code, times, modifiers = table.unpack(key) end
    for _ = 1, times do
      s.press(code, modifiers)
      settle()
    end
  end
end

-- The same text, keyed in through the queue, as Type takes eight frames a key.
local function feed(text)
  for i = 1, #text do
    local tail = MemImage[s.kQueueTail]
    MemImage[s.kQueue + tail] = text:byte(i)
    MemImage[s.kQueueTail] = (tail + 1) & 15
    Frames(1)
    settle()
  end
end

local function line()
  local text = MemImage:get(s.kLineBuf, 256)
  return text:sub(1, text:find("\0", 1, true) - 1)
end

-- Enter: con_line is over, and this is its line.
local function enter(expected, what)
  s.press(kEnter)
  s.is(s.ends(done, 20), what .. ": con_line does not end")
  s.equal(Z80State.FlagC, 0, what .. ": CF")
  s.equal(line(), expected, what)
end

local function cursor() return MemImage[s.kCursor + 1] .. "," .. MemImage[s.kCursor] end

-- A plain line.
screen()
edit()
Type("Hello, World")
s.equal(cursor(), "0,12", "cursor")
enter("Hello, World", "plain line")
s.equal(cursor(), "1,0", "cursor behind the line")
edit()
enter("", "empty line")
edit()
Type("  a  b   ")
enter("  a  b", "trailing blanks")

-- Over-typing, rubbing out, deleting, inserting.
screen()
edit()
Type("abcdef")
keys({kLeft, 4})
Type("X")
s.equal(s.row(0), "abXdef", "typed over")
keys(kBack)
s.equal(s.row(0), "abdef", "rubbed out")
s.equal(cursor(), "0,2", "cursor")
keys({kBack, 1, kShift})
s.equal(s.row(0), "abef", "deleted")
keys({kInsert, 2})
s.equal(s.row(0), "ab  ef", "inserted")
s.equal(cursor(), "0,2", "cursor stays")
Type("CD")
keys({kLeft, 9})
s.equal(cursor(), "0,0", "stopped by the corner")
keys(kBack)
s.equal(s.row(0), "abCDef", "nothing to rub out")
keys({kUp, 1})
s.equal(cursor(), "0,0", "upper edge")
enter("abCDef", "edited line")

-- Another line of the screen is taken whole; of the one where con_line began, what stands behind.
screen()
s.print("first\r10 rem second\rName? ")
edit()
feed("me")
enter("me", "behind the question")
edit()
keys({kUp, 2}, {kRight, 3})
enter("10 rem second", "line above")
s.equal(cursor(), "2,0", "cursor below that line")
s.equal(s.row(2), "Name? me", "line below")
edit()
keys({kUp, 1, kShift})
s.equal(cursor(), "0,0", "home")
keys({kDown, 23}, kDown)
s.equal(cursor(), "23,0", "lower edge")
keys({kRight, 64})
s.equal(cursor(), "23,63", "stopped by the last corner")
keys({kLeft, 63}, {kUp, 3}, kLeft)
s.equal(cursor(), "19,63", "left from the first column")
keys(kRight)
s.equal(cursor(), "20,0", "right from the last column")
feed("\12")
s.equal(cursor(), "0,0", "Ctrl-L")
for row = 0, 23 do s.equal(s.row(row), "", "cleared row " .. row) end
enter("", "cleared")

-- Lines over several rows, in all modes; 250 characters at most.
local long = ""
for i = 1, 250 do long = long .. string.char(0x41 + (i * 7 + i // 26) % 58) end
for mode = 0, 2 do
  local width = 64 >> mode
  screen(mode)
  edit()
  feed(long)
  feed("z")
  local rows = (250 + width - 1) // width
  for row = 0, rows - 1 do
    s.equal(s.row(row), long:sub(row * width + 1, (row + 1) * width), "mode " .. mode .. ", row " .. row)
  end
  keys({kLeft, width})
  enter(long, "250 characters in mode " .. mode)
  s.equal(cursor(), rows .. ",0", "cursor below")

  -- Deleting and inserting through the rows. The line is full: no blank more.
  edit()
  keys({kUp, 1, kShift})
  keys({kBack, 1, kShift})
  s.equal(MemImage[s.kText + width - 1], long:byte(width + 1), "from the row below")
  keys(kInsert)
  feed(long:sub(1, 1))
  enter(long, "deleted and put back in mode " .. mode)
end

-- At the bottom the screen moves up; the line's own beginning is still known.
screen()
s.call(s.con_locate, {DE = 23 * 256})
s.print("> ")
edit()
feed(long:sub(1, 130))
s.equal(s.row(21), "> " .. long:sub(1, 62), "first row, moved up")
enter(long:sub(1, 130), "line at the bottom")
s.equal(cursor(), "23,0", "cursor")

-- A line that grows into a row that is in use makes a row for itself; rows below move down with their pixels.
screen()
s.print(("x"):rep(63) .. "\rbelow\r")
local before = s.picture()
edit()
keys({kUp, 2}, {kRight, 63})
feed("yz")
s.equal(s.row(0), ("x"):rep(63) .. "y", "full row")
s.equal(s.row(1), "z", "new row")
s.equal(s.row(2), "below", "moved down")
local after = s.picture()
s.equal(after:sub(2 * 640 + 1, 3 * 640), before:sub(640 + 1, 2 * 640), "pixels moved down")
enter(("x"):rep(63) .. "yz", "grown line")
edit()
keys({kUp, 2}, {kRight, 10})
keys({kInsert, 3})
enter(("x"):rep(10) .. "   " .. ("x"):rep(53) .. "yz", "inserted into two rows")
s.equal(s.row(2), "below", "row below")
edit()
keys({kUp, 1, kShift})
keys({kInsert, 62})
s.equal(s.row(3), "below", "moved down again")
enter((" "):rep(62) .. ("x"):rep(10) .. "   " .. ("x"):rep(53) .. "yz", "three rows")

-- The same at the bottom.
screen()
s.call(s.con_locate, {DE = 22 * 256})
s.print("above\r" .. ("w"):rep(63))
s.call(s.con_locate, {DE = 23 * 256})
edit()
keys({kInsert, 2})
s.equal(s.row(21), "above", "moved up")
s.equal(s.row(22), "  " .. ("w"):rep(62), "row")
s.equal(s.row(23), "w", "last row")
enter("  " .. ("w"):rep(63), "inserted at the bottom")

-- A row that was filled exactly is no beginning of a longer line when a new line follows.
screen()
s.print(("p"):rep(64) .. "\rnext\r")
s.equal(s.row(1), "next", "no blank row")
edit()
keys({kUp, 1})
enter("next", "line below a full row")
edit()
keys({kUp, 2})
enter(("p"):rep(64), "full row")

-- Break keys: CF = 1, no line, the cursor below.
for _, key in ipairs{{0x43, kCtrl}, {kEnd, 0}} do
  screen()
  edit()
  feed("abc")
  s.press(key[1], key[2])
  s.is(s.ends(done, 20), "break")
  s.equal(Z80State.FlagC, 1, "CF")
  s.equal(line(), "", "no line")
  s.equal(cursor(), "1,0", "cursor")
  s.equal(MemImage[s.kBreakKey], 0, "break key used up")
end

-- The cursor leaves no traces on what it stood on.
screen()
s.print("trace")
local clean = s.picture()
s.call(s.con_locate, {DE = 0})
edit()
for _ = 1, 70 do Frames(1) end
keys({kRight, 4}, kDown, kUp)
s.press(kEnter)
s.ends(done, 20)
s.equal(s.picture(), clean, "picture")
s.clean()
