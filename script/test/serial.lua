-- The serial card by its ports and its window, with this script at the other side of the companion's terminal.
package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

local map = arg[1] .. "-" .. os.time() .. "-" .. tostring(os.clock()):gsub("%p", "")

check.pageInRam()
check.loopFor10(0x1000)

-- Alone: what is written waits, and nothing comes.
check.equal(PortIn(0x20), 0, "nothing came")
check.equal(PortIn(0x21), 0, "nothing came")
for i = 0, 299 do PortOut(0x20, i & 255) end
PortOut(0x21, 0x77)
check.equal(PortShadow[0x21], 0x77, "kept")
check.equal(PortShadow[0x20], 0, "not kept")
check.list(TScreen.List1, {}, "ports without a function")
Frames(5)
check.equal(TSerial.Label5, "300", "waiting")
check.equal(#Messages(), 0, "no message")
Press("TSerial", "Command1")
Press("TSerial", "Command2")
check.equal(#Messages(), 0, "nobody is called before the script asks for it")
check.equal(CompanionRuns(), false)
check.raises("SharedMemory first", Companion)
Press("TSerial", "Command5")
check.equal(TSerial.Label5, "0", "cleared")

-- The window.
check.equal(TSerial.Label1 .. TSerial.Label2 .. TSerial.Label3, "Buffer in: Buffer out:PTZ PelcoP Address 1")
TSerial.Text2 = "hello"
Press("TSerial", "Command8")
Enter("TSerial", "Text2")
check.equal(TSerial.Label5, "10", "sent")
MouseDown("TSerial", "Command3")
check.equal(TSerial.Label5, "18", "the camera moves")
MouseUp("TSerial", "Command3")
check.equal(TSerial.Label5, "26", "and stands")
Press("TSerial", "Command7")
check.equal(TSerial.Label5, "42", "down and up")
Press("TSerial", "Command5")

-- With the companion and a terminal.
SharedMemory(map)
SharedMemory(map)
check.raises("already", SharedMemory, map .. "x")
local link = "terminal"
local process = Companion("--headless", "--pty", "--link", link)
check.is(process > 0, "a process")
local function wait(what, condition)
  for _ = 1, 500 do
    if condition() then return end
    Frames(1)
    os.execute("sleep 0.01")
  end
  error("waited in vain: " .. what, 2)
end
wait("the terminal", function() return os.execute("test -e " .. link) and TSerial.Label6 == "Open" end)
check.equal(CompanionRuns(), true)

-- Reads so many bytes at the terminal's other side.
local function take(count)
  os.remove("out.bin")
  os.execute("timeout 10 head -c " .. count .. " < " .. link .. " > out.bin &")
  local bytes
  wait("the bytes that go out", function()
    local file = io.open("out.bin", "rb")
    bytes = file and file:read("a") or ""
    if file then file:close() end
    return #bytes == count
  end)
  return bytes
end

-- Out: 600 bytes, more than an exchange takes; the message comes once.
local out = {}
for i = 1, 600 do
  PortOut(0x20, i * 7 & 255)
  out[i] = string.char(i * 7 & 255)
end
check.is(take(600) == table.concat(out), "what went out")
local messages = Messages()
check.equal(#messages, 1, "the message")
check.equal(messages[1].text, "Buffer underrun TX!", "the message")

-- In: every byte, a zero too.
local bytes = {}
for i = 0, 599 do bytes[#bytes + 1] = string.char(i & 255) end
local file = io.open("in.bin", "wb")
file:write(table.concat(bytes))
file:close()
os.execute("timeout 10 cat in.bin > " .. link)
wait("the bytes that come in", function() return TSerial.Label4 == "600" end)
check.equal(#TSerial.Text1, 600, "shown")
check.equal(TSerial.Text1:sub(32 + 1, 32 + 96), table.concat(bytes):sub(33, 127) .. ".", "shown with dots")
for i = 1, 600 do
  check.equal(PortIn(0x21), 0xFF, "status")
  check.equal(PortIn(0x20), (i - 1) & 255, "byte " .. i)
end
check.equal(PortIn(0x21), 0, "all read")
check.equal(PortIn(0x20), 0, "all read")

-- A killed companion leaves the line closed for the next one to open; what waits in the machine waits on.
os.execute("kill -9 " .. process)
wait("its end", function() return not CompanionRuns() end)
for i = 1, 100 do PortOut(0x20, i) end
Frames(5)
os.remove(link)
Companion("--headless", "--pty", "--link", link)
wait("the next one", function() return CompanionRuns() and os.execute("test -e " .. link) end)
check.equal(take(100):byte(100), 100, "what waited")
check.equal(TSerial.Label5, "0", "nothing waits")
