-- A cartridge that begins with "QCRT" is started behind its mark, at cold and warm starts, and BASIC goes on when it
-- returns. Any other is left alone.
local here = arg[0]:match("^.*/") or ""
local s, files = dofile(here .. "system_machine.lua"), dofile(here .. "../../script/test/files.lua")

local function insert(bytes)
  files.write("hello.crt", bytes .. ("\0"):rep(0x4000 - #bytes))
  LoadCRT("./hello.crt")
end

-- LD HL,text; loop: LD A,(HL); OR A; RET Z; RST 0x10; INC HL; JR loop
local hello = "\x21\x0E\xC0\x7E\xB7\xC8\xD7\x23\x18\xF9" .. "hello from the cartridge\r\0"

insert("QCRT" .. hello)
s.boot()
s.equal(s.row(3), "hello from the cartridge", "cold start")
s.equal(s.row(4), "Ready", "BASIC behind it")
s.equal(PortShadow[2], 0x70, "page set-up")
Click("xReset")
Frames(2)
s.boot()
s.equal(s.row(3), "hello from the cartridge", "warm start")

-- One that stays: LD A,8; OUT (0),A; JR ... the border red, again and again, while interrupts go on.
insert("QCRT\x3E\x08\xD3\x00\x18\xFC")
Frames(60)
local before = s.word(s.kTicks)
Frames(10)
s.equal(s.word(s.kTicks) - before, 10, "interrupts in the cartridge")
s.equal(PortShadow[2], 0x30, "cartridge in page 3")
s.equal(BorderLines[0] & 0xFFFFFF, 0x000080, "red border")

insert("NOT!" .. hello)
s.boot()
s.equal(s.row(2), "", "nothing between")
s.equal(s.row(3), "Ready", "BASIC at once")

Click("xUnloadCRT")
s.boot()
s.equal(s.row(3), "Ready", "no cartridge")
print("passed")
