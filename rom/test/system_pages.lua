-- The low page: calls between the system ROM and the extension, restarts from there, interrupts in any page, the
-- user's routine in the interrupt. The "routines" are in RAM, which both pages see.
local s = dofile((arg[0]:match("^.*/") or "") .. "system_machine.lua")
s.boot()

local kExt, kSys = 0xF0, 0x70
local registers = {"A", "B", "C", "D", "E", "H", "L", "IX", "IY", "FlagS", "FlagZ", "FlagH", "FlagPV", "FlagN", "FlagC"}

local function fill(seed)
  local values = {}
  for i, name in ipairs(registers) do
    local value = (seed * 37 + i * 101) % 256
    if name:find("Flag") then value = (seed + i) % 2 end
    Z80State[name], values[name] = value, value
  end
  return values
end

local function unchanged(values, what)
  for _, name in ipairs(registers) do s.equal(Z80State[name], values[name], what .. ": " .. name) end
end

local function reach(address, what)
  s.is(RunUntil(address, 3 * 62500), what .. " is not reached")
end

-- 5000: RST 20, 5100; JR $        5100: RST 28, 5200; RET        5200: RST 20, 5300; RET      5300: HALT; RET
MemImage:set(0x5000, "\xE7\x00\x51\x18\xFE")
MemImage:set(0x5100, "\xEF\x00\x52\xC9")
MemImage:set(0x5200, "\xE7\x00\x53\xC9")
MemImage:set(0x5300, "\x76\xC9")
Z80State.PC, Z80State.SP, Z80State.Halted, Z80State.IFF1 = 0x5000, 0x0A00, 0, 1
local before = s.word(s.kTicks)
local values = fill(1)
reach(0x5100, "extension")
s.equal(PortShadow[2], kExt, "page")
unchanged(values, "into the extension")
reach(0x5200, "system from the extension")
s.equal(PortShadow[2], kSys, "page")
unchanged(values, "into the system")
reach(0x5300, "extension again")
s.equal(PortShadow[2], kExt, "page")
unchanged(values, "three calls deep")
reach(0x5301, "interrupt")
s.is(s.word(s.kTicks) > before, "a tick")
s.equal(PortShadow[2], kExt, "page behind an interrupt")
unchanged(values, "behind an interrupt")
values = fill(2)
reach(0x5203, "back in the system")
s.equal(PortShadow[2], kSys, "page")
unchanged(values, "back in the system")
values = fill(3)
reach(0x5103, "back in the extension")
s.equal(PortShadow[2], kExt, "page")
reach(0x5003, "back")
s.equal(PortShadow[2], kSys, "page")
unchanged(values, "back")
s.equal(Z80State.SP, 0x0A00, "stack")

-- RST 10 from the extension.
s.call(s.con_clear)
MemImage:set(0x5000, "\xE7\x00\x51\x18\xFE")
MemImage:set(0x5100, "\x3E\x2A\xD7\xC9")          -- LD A,"*"; RST 10; RET
Z80State.PC, Z80State.Halted = 0x5000, 0
reach(0x5003, "end")
s.equal(s.row(0), "*", "character from the extension")
s.equal(PortShadow[2], kSys, "page")

-- RST 8 from the extension: the interpreter gets the number, with the system's page back.
MemImage:set(0x5100, "\xCF\x0B")
Z80State.PC, Z80State.SP = 0x5000, 0x0A00
reach(s.symbol(arg[1], "basic_error"), "basic_error")
s.equal(PortShadow[2], kSys, "page")
s.equal(MemImage[s.word(Z80State.SP)], 0x0B, "error number")

-- Interrupts with the video RAM or nothing at all in place of U2 put back what PORT2 says; port 3 keeps its slot.
MemImage:set(0x5000, "\xFB\x18\xFE")
for _, page in ipairs{0x50, 0x70, 0xB0, 0x30, 0xD0} do
  MemImage[s.kPort2] = page
  MemImage[0x0B01] = 0x80
  PortOut(2, page)
  Z80State.PC, Z80State.Halted = 0x5000, 0
  before = s.word(s.kTicks)
  Frames(3)
  s.is(s.word(s.kTicks) - before >= 2, "ticks")
  s.equal(PortShadow[2], page, "page")
  s.equal(PortShadow[3], 0x80, "slot")
end
MemImage[0x0B01] = 0

-- The user's routine: 5100: LD HL,(6000); INC HL; LD (6000),HL; RET, by JP from INTHOOK.
MemImage:set(0x5100, "\x2A\x00\x60\x23\x22\x00\x60\xC9")
MemImage:set(0x6000, "\0\0")
MemImage[s.kPort2] = kSys
PortOut(2, kSys)
Frames(1)
MemImage:set(0x0B29, "\xC3\x00\x51")
before = s.word(s.kTicks)
Frames(50)
s.equal(s.word(0x6000), s.word(s.kTicks) - before, "calls of the user's routine")
s.is(s.word(0x6000) >= 49, "calls of the user's routine")
s.clean()
