-- The printer: strobes by port and by BASIC, what scripts read of it, saving, printing, and a million bytes.
package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"
local read = require("files").read

local function print_(text)
  for i = 1, #text do
    PortOut(0x01, text:byte(i))
    PortOut(0x06, 0x00)
    PortOut(0x06, 0x80)
  end
end

-- The strobe is bit 7 of port 6 being low; it takes the busy line down, which the next status read puts back.
PortOut(0x01, 65)
check.equal(TPrint.Text1, "", "no strobe")
PortOut(0x06, 0x80)
check.equal(TPrint.Text1, "", "bit 7 set")
PortOut(0x06, 0x7F)
check.equal(TPrint.Text1, "A", "strobe")
check.equal(PortShadow[0x59] & 0x80, 0, "acknowledged")
check.equal(PortIn(0x59) & 0x80, 0x80, "ready again")
PortOut(0x06, 0x00)
check.equal(TPrint.Text1, "AA", "each write is a strobe")
Press("TPrint", "Command2")
check.equal(TPrint.Text1, "", "cleared")

-- Every byte by the table, which stands here once more as it was written down: pairs of in and out.
local pairs_ = "7FDB80B581908292 83E08499858A86E9 879A88EB89DA8AC0 8BB38CC38DC28EC5 8FC690A091829 28C93A29494958B96A3" ..
               "978198FB99BF9AD9 9BC49CB49DC19EAC9FE6"
local out = {}
for code, to in pairs_:gsub(" ", ""):gmatch("(%x%x)(%x%x)") do out[tonumber(code, 16)] = tonumber(to, 16) end
for byte = 0, 255 do
  Press("TPrint", "Command2")
  Senddata(byte)
  check.equal(TPrint.Text1:byte(), byte < 0x7F and byte or byte > 0x9F and 0x2E or out[byte], "byte " .. byte)
  check.equal(#TPrint.Text1, 1, "byte " .. byte)
end
Press("TPrint", "Command2")

-- UTF-8 for files and pages.
print_("\x90rv\x91zt\x97r\x94 t\x93k\x94rf\x96r\x94g\x91p\r\n|\x89\x9B\x99|\n")
local text = "árvéztürö tókörfúrögép\n|┌─┐|\n"
Press("TPrint", "Command3")
check.equal(read("print.txt"), text, "saved")
TPrint.Text2 = "other.txt"
Enter("TPrint", "Text2")
check.equal(read("other.txt"), text, "saved")
TPrint.Text2 = "missing/other.txt"
Press("TPrint", "Command3")
local messages = Messages()
check.equal(#messages, 1, "can't be saved")
check.is(messages[1].text:find("missing/other.txt", 1, true), "can't be saved")

check.list(TPrint.Combo1, {"No Printer"}, "before it is shown")
Press("TPrint", "Command1")
check.equal(#PrintJobs(), 0, "no printer")
Click("xPrinter")
check.list(TPrint.Combo1, {"No Printer", "Script"}, "printers")
Choose("TPrint", "Combo1", 1)
Press("TPrint", "Command1")
local jobs = PrintJobs()
check.equal(#jobs, 1, "jobs")
check.equal(jobs[1].printer, "Script", "printer")
check.equal(jobs[1].text, text, "text")
check.equal(#PrintJobs(), 0, "taken")

-- A text box: what the user types takes the place of what was there.
TPrint.Text1 = "typed"
print_("!")
check.equal(TPrint.Text1, "typed!", "typed")

-- A million bytes, and the machine goes on as before.
Press("TPrint", "Command2")
local line = ("%s\r\n"):format(("0123456789"):rep(7))
for i = 1, #line do Senddata(line:byte(i)) end
local started = os.clock()
while #TPrint.Text1 < 1000000 do
  local batch = TPrint.Text1
  for _ = 1, 1000 do PortOut(0x01, 0x90); PortOut(0x06, 0) end
  for _ = 1, 19000 do Senddata(0x41) end
  check.equal(#TPrint.Text1, #batch + 20000, "grows")
end
Frames(10)
check.is(os.clock() - started < 20, "quick enough")
for row in io.lines("/proc/self/status") do
  local kilobytes = row:match("^VmHWM:%s+(%d+) kB")
  if kilobytes then print(("a million bytes: %.2f s, at most %.1f MB"):format(os.clock() - started, kilobytes / 1024)) end
end
TPrint.Text2 = "print.txt"
Press("TPrint", "Command3")
check.is(#read("print.txt") > 1000000, "saved")
