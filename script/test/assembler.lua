package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"
local files = require "files"

check.pageInRam()

-- Compiling.
local result = Compile("org 10000\nstart:\nld a,$2A\njp @start\n")
check.equal(result.ok, true, "ok")
check.equal(result.line, nil, "line")
check.equal(result.AsmPC, 10005, "AsmPC")
check.is(result.status:match("^Completed: %d+ msec$"), result.status)
check.equal(result.listing, "ORG 10000\r\nSTART:\r\n0x2710\tLD A,$2A\r\n0x2712\tJP @START\r\n\r\n", "listing")
check.list(result.symbols, {"10000  START:"}, "symbols")
check.equal(MemImage:get(10000, 5), "\x3E\x2A\xC3\x10\x27", "bytes")
check.equal(asse.Text13, result.status, "Text13")
check.equal(asse.Label2, "10005", "Label2")
check.equal(asse.List3[1], "START:                10000", "List3")

for source, wanted in pairs({["nop\nx: equ 1+1"] = {"Syntax Error!", 2}, ["ld a,256"] = {"OverFlow Error!", 1},
                             ["x:\nx:"] = {"Existing name!", 2}, ["\nfoo"] = {"Internal Error P1!", 2},
                             ["incbin \"gone.bin\""] = {"Internal Error P1!", 1}, ["ld ixh,5"] = {"Internal Error P2!", 1}}) do
  result = Compile(source)
  check.equal(result.ok, false, source)
  check.equal(result.status, wanted[1], source)
  check.equal(result.line, wanted[2], source)
end
Compile("nop\nld ixh,5\n")
check.equal(asse.SelStart, 4, "SelStart")
check.equal(asse.SelLength, 8, "SelLength")
check.raises("string expected", Compile)

-- What has been compiled runs.
Compile("org 10000\nld a,5\n*break")
Press("asse", "Command6")
check.equal(Z80State.PC, 10000, "RUN")
Press("asse", "Command13")
check.equal(Z80State.A, 5, "RUN CPU")
check.equal(RunState.CpuRunning, 0, "stopped")

-- Disassembling.
check.equal(DisAsm(10000, 1, 1), " 2710 LD A,05", "mode 1")
check.equal(DisAsm(10000, 2, 0), "LD A,05\r\n>FDF3 Unknown!", "mode 0")
check.equal(DisAsm(10000, 2, 7), "\r\n", "another mode")
check.equal(DisAsm(10000, 0, 1), "", "none")
check.equal(DisAsm(10000, -1, 1), "", "fewer")
check.raises("too many", DisAsm, 0, 1 << 30, 1)
check.raises("number expected", DisAsm, 0)

-- The window's controls.
Click("xAsse")
asse.RText1 = "djnz"
asse.SelStart = 4
Frames(20)
check.list(asse.List2, {"DJNZ (PC+e)"}, "List2")
check.equal(Selected("asse", "List2"), 0, "selected")
check.equal(asse.Text10, "13/8", "clock cycles")
check.equal(asse.Label7[5], "unaffected", "Label7")
DoubleClick("asse", "List2", 0)
check.equal(Clipboard(), "DJNZ (PC+e)", "copied")

asse.Text5 = "10000"
Enter("asse", "Text5")
check.equal(asse.Text6, "2710", "hex")

-- Files.
local folder = arg[1]
local function read(name) return files.read(folder .. "/" .. name) end
Compile("'\xC3\xA1\r\nnop")
Click("xSave")
check.equal(asse.Frame2, "SAVE", "caption")
asse.Text16 = folder .. "/made.asm"
Press("asse", "Command14")
check.equal(read("made.asm"), "'\xC3\xA1\r\nnop", "saved")
asse.RText1 = ""
Click("xOpen")
asse.Text16 = folder .. "/made.asm"
Press("asse", "Command14")
check.equal(asse.RText1, "'\xC3\xA1\r\nnop", "opened")
Messages()
Click("xOpen")
asse.Text16 = folder .. "/none.asm"
Press("asse", "Command14")
check.equal(Messages()[1].text, "File Open error!", "message")
DoubleClick("asse", "RText2")
check.is(read("RichTextBox.rtf"):find("^{\\rtf1"), "rich text")
check.raises("is no list", DoubleClick, "asse", "Text5", 0)
