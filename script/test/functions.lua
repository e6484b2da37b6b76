package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

check.pageInRam()

-- Memory.
MemWrite(0x1234, 0x1AB)
check.equal(MemImage[0x1234], 0xAB, "MemWrite masks")
check.equal(MemRead(0x1234), 0xAB, "MemRead")
for _, address in ipairs({-1, 0x2C000, 1 << 31, 1 << 32, (1 << 32) + 0x1234, math.mininteger,
                          math.maxinteger}) do
  MemWrite(address, 0x55)
  check.equal(MemRead(address), 0, "address outside")
end
check.equal(MemRead(0x1234), 0xAB, "MemRead after")
check.raises("number expected", MemRead)
check.raises("number expected", MemWrite, 0)

-- Ports: the value as the port leaves it.
check.equal(PortOut(0x70, 0xFF), 0x1F, "CRTC select")
check.equal(CrtcRegs[18], 0x1F, "selected")
check.equal(PortOut(0x70, 5), 5, "CRTC select")
check.equal(PortOut(0x71, 0xFF), 0x1F, "R5")
check.equal(CrtcRegs[5], 0x1F, "R5")
check.equal(PortOut(0x01, 0x1C3), 0xC3, "a byte")
check.equal(PortShadow[1], 0xC3, "port 1")
check.equal(PortIn(0x70), 255, "CRTC select read")
KeyMatrix[8], PortShadow[3] = 0x02, 8
check.equal(PortIn(0x58), 0xFD, "keyboard")
check.equal(PortIn(1000), 255, "port above 255")
check.raises("ports are 0 to 255", PortOut, 256, 0)
check.raises("ports are 0 to 255", PortOut, -1, 0)
check.raises("sign", PortIn, -1)

-- Set-up and resets.
Z80State.A, Z80State.PC, Z80State.SP = 1, 2, 3
CpuInit()
check.equal(Z80State.A, 255, "A")
check.equal(Z80State.PC, 0, "PC")
check.equal(Z80State.SP, 65535, "SP")
Z80State.A, Z80State.Halted, RunState.Cycles, RunState.NmiRequest = 1, 1, 100, 1
CpuReset()
check.equal(Z80State.A, 255, "A")
check.equal(Z80State.Halted, 0, "Halted")
check.equal(RunState.NmiRequest, 0, "NmiRequest")
check.equal(RunState.Cycles, 103, "Cycles")
MemImage[0x100], PortShadow[0x60], CrtcRegs[1] = 7, 7, 7
MachineReset()
check.equal(MemImage[0x100], 7, "memory stays")
check.equal(PortShadow[0x60], 0, "PortShadow")
check.equal(PortShadow[0x59], 0xBF, "PortShadow")
check.equal(CrtcRegs[1], 0, "CrtcRegs")
check.equal(CrtcRegs[10], 32, "CrtcRegs")
MachineInit()
check.equal(MemImage[0x100], 0, "memory is new")

-- Interrupts: the return address goes to the stack, high byte first.
check.pageInRam()
Z80State.PC, Z80State.SP, Z80State.IM, Z80State.IFF1, Z80State.IFF2 = 0x1234, 0x8000, 1, 1, 1
IrqEnter()
check.equal(Z80State.PC, 0x38, "IrqEnter PC")
check.equal(Z80State.SP, 0x7FFE, "IrqEnter SP")
check.equal(MemImage:get(0x7FFE, 2), "\x34\x12", "IrqEnter stack")
check.equal(Z80State.IFF1, 0, "IrqEnter IFF1")
Z80State.PC, Z80State.IFF1 = 0x4321, 1
NmiEnter()
check.equal(Z80State.PC, 0x66, "NmiEnter PC")
check.equal(MemImage:get(0x7FFC, 2), "\x21\x43", "NmiEnter stack")
check.equal(Z80State.IFF1, 0, "NmiEnter IFF1")
check.equal(Z80State.IFF2, 1, "NmiEnter IFF2")
Z80State.IM = 2
IrqEnter()
local messages = Messages()
check.equal(#messages, 1, "messages")
check.equal(messages[1].text, "IM MODE 0 or 2 not allowed!", "message")
check.equal(#Messages(), 0, "messages are given once")
for prefix = 5, 7 do
  Z80State.PrefixState = prefix
  pcall(Step)
end
messages = Messages()
check.equal(#messages, 3, "messages")
for i = 1, 3 do check.equal(messages[i].text, (i + 4) .. "=Unknown prefix", "message " .. i) end
Z80State.PrefixState = 0

-- RunLoop: FD F3 is the instruction that stops the machine.
check.program(0x200, 0x3C, 0x3C, 0xFD, 0xF3, 0x3C)
Z80State.A, RunState.CpuRunning = 0, 1
RunLoop()
check.equal(Z80State.A, 2, "A")
check.equal(Z80State.PC, 0x204, "PC")
check.equal(RunState.CpuRunning, 0, "CpuRunning")
RunLoop()  -- with CpuRunning 0: one pass
check.equal(Z80State.A, 3, "A")

-- Display.
PortOut(0x60, 1)
PALchNull()
PortShadow[0x60] = 0x15
RunState.FrameClock = 245 * 9
PortOut(0x60, 0x2A)  -- slots up to the ninth keep the palette before the write
check.equal(PalHistory[0][0], 0x15, "slot 0")
check.equal(PalHistory[0][9], 0x15, "slot 9")
RunState.FrameClock = 245 * 11
PortOut(0x60, 0)
check.equal(PalHistory[0][10], 0x2A, "slot 10")
picd_MouseMove(511, 479)  -- 23 * 64 + 63 = 1535
check.equal(CrtcRegs[16], 0, "before LPENRefresh")
LPENRefresh()
check.equal(CrtcRegs[16], 5, "R16")
check.equal(CrtcRegs[17], 255, "R17")
picd_MouseMove(1 << 40, -(1 << 40))
CrtcRegs[1], CrtcRegs[2], CrtcRegs[5], CrtcRegs[6], CrtcRegs[7] = 10, 70, 3, 4, 6
redraw()
local width, height, left, top = Picture()
check.equal(width, 80, "width")
check.equal(height, 32, "height")
check.equal(left, (83 - 70) * 8, "left")
check.equal(top, (3 - 6 * 4) * 2 + 572, "top")

-- Keys: row 4 bit 6 is A, row 6 bit 3 is Shift.
check.equal(picd_KeyDown(0x41, 0), 0, "key used up")
check.equal(KeyMatrix[4], 0x40, "A held")
picd_KeyDown(0x10, 1)
check.equal(KeyMatrix[6], 0x08, "Shift held")
picd_KeyUp(0x41)
check.equal(KeyMatrix[4], 0, "A released")
check.equal(picd_KeyDown(0x41, 4), 0x41, "Alt is the host's")
check.equal(KeyMatrix[4], 0, "Alt is the host's")
picd_KeyDown(0x70, 0)
check.equal(RunState.ResetRequest, 1, "F1")
picd_KeyDown(math.maxinteger, 0)
picd_KeyUp(math.mininteger)
RunState.ResetRequest = 0

-- Printer: the machine's own letters become those of the printer.
Senddata(0x41)
Senddata(0x90)
Senddata(0xA0)
check.equal(TPrint.Text1, "A\xA0.", "printed")
Press("TPrint", "Command2")
check.equal(TPrint.Text1, "", "cleared")

-- Sound: five frames make a block.
Sound()
for _ = 1, 4 do SoundFrame() end
check.equal(#Sound(), 0, "no block yet")
SoundFrame()
check.equal(#Sound(), 4410, "a block")
for _ = 1, 10 do SoundFrame() end  -- nobody takes the block: nothing is mixed any more

-- Texts.
check.equal(Hex2(0), "00", "Hex2")
check.equal(Hex2(0xA), "0A", "Hex2")
check.equal(Hex2(0xFE), "FE", "Hex2")
check.equal(Hex2(0x123), "123", "Hex2")
check.equal(Hex4(0), "0000", "Hex4")
check.equal(Hex4(0xABC), "0ABC", "Hex4")
check.equal(Hex4(0x12345), "12345", "Hex4")
check.equal(Hex4(-1), "FFFFFFFF", "Hex4")

-- Programs in and out. A snapshot comes back with the registers and memory that were saved.
local folder = os.tmpname()
os.remove(folder)
MemImage[0x5000], Z80State.A, Z80State.IX = 0x5A, 0x77, 0x1234
SaveSnapshot(folder)
MemImage[0x5000], Z80State.A, Z80State.IX = 0, 0, 0
LoadSnapShot(folder .. ".tvs")
check.equal(MemImage[0x5000], 0x5A, "memory of a snapshot")
check.equal(Z80State.A, 0x77, "A of a snapshot")
check.equal(Z80State.IX, 0x1234, "IX of a snapshot")
os.remove(folder .. ".tvs")
SaveCAS(folder, 0x5000, 0x50FF)
local cas = assert(io.open(folder .. ".cas", "rb"))
check.equal(#cas:read("a") > 144, true, "a cassette file has its header and the bytes")
cas:close()
os.remove(folder .. ".cas")
LoadTIM(folder .. ".tim")
check.equal(#Messages(), 1, "a missing picture is told")
