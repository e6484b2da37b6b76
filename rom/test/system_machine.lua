-- The system ROM for its tests: start, calls through the table at 0xC080, screen, keys.
--   local s = dofile((arg[0]:match("^.*/") or "") .. "system_machine.lua")
-- A failed check is an error.
local check = dofile((arg[0]:match("^.*/") or "") .. "../../script/test/check.lua")
local s = {equal = check.equal, is = check.is}

-- System calls.
s.con_out, s.con_str, s.con_column, s.con_width = 0xC080, 0xC083, 0xC086, 0xC089
s.con_locate, s.con_line, s.key_get, s.key_poll = 0xC08C, 0xC08F, 0xC092, 0xC095
s.con_clear, s.gfx_mode, s.gfx_ink, s.gfx_paper = 0xC098, 0xC09B, 0xC09E, 0xC0A1
s.gfx_palette, s.gfx_border, s.snd_tone, s.gfx_plot = 0xC0A4, 0xC0A7, 0xC0AA, 0xC0AD
s.gfx_point, s.gfx_line, s.gfx_circle, s.gfx_paint = 0xC0B0, 0xC0B3, 0xC0B6, 0xC0B9
s.tape_save, s.tape_load, s.tape_verify = 0xC0BC, 0xC0BF, 0xC0C2
s.con_number, s.crtc_write, s.card_name = 0xC0C5, 0xC0C8, 0xC0CB

-- Variables.
s.kPort2, s.kTicks, s.kBreakKey, s.kCursor = 0x0B00, 0x0B04, 0x0B08, 0x0B09
s.kScroll, s.kWarmMark, s.kWarm = 0x0B10, 0x0B22, 0x5A
s.kLineBuf, s.kText, s.kRamTop, s.kProgram = 0x0200, 0x0C00, 0x1724, 0x19EF
s.kQueueHead, s.kQueueTail, s.kQueue = 0x0B1D, 0x0B1E, 0x1200

s.kCode = 0x5000                     -- where calls are put together, in U1
local kStack = 0x0A00
local kVideo = 0x10000

function s.word(address) return MemImage[address] + 256 * MemImage[address + 1] end

-- The machine has come to its prompt and waits for keys. Returns the frames that it took.
function s.boot()
  for frame = 1, 100 do
    Frames(1)
    if MemImage[s.kWarmMark] == s.kWarm and Z80State.Halted == 1 then return frame end
  end
  error("no prompt within two seconds", 2)
end

-- Begins a program: EI, the registers A, BC, DE, HL, IX, a CALL, then the instruction that stops the emulator
-- and, where it stops, a jump to itself, whose address is returned. Nothing has run yet.
function s.begin(routine, registers)
  local r = registers or {}
  local function word(v) v = (v or 0) & 0xFFFF return string.char(v & 255, v >> 8) end
  local code = "\xFB\x3E" .. string.char((r.A or 0) & 255) .. "\x01" .. word(r.BC) .. "\x11" .. word(r.DE) ..
               "\x21" .. word(r.HL) .. "\xDD\x21" .. word(r.IX) .. "\xCD" .. word(routine) .. "\xFD\xF3\x18\xFE"
  MemImage:set(s.kCode, code)
  Z80State.PC, Z80State.SP, Z80State.Halted = s.kCode, kStack, 0
  PortOut(2, 0x70)                   -- where an abandoned call may have left another page
  MemImage[s.kPort2] = 0x70
  return s.kCode + #code - 2
end

-- Runs up to so many frames; true when the program that s.begin began has come to its end.
function s.ends(done, frames)
  Frames(frames)
  if Z80State.PC == 0x38 then Frames(1) end                -- an interrupt at that very moment
  return Z80State.PC == done
end

-- Calls a routine and waits for its end, frames at most (default: a minute). Leaves the registers to be read.
function s.call(routine, registers, frames)
  local done = s.begin(routine, registers)
  if not s.ends(done, frames or 3000) then
    error(string.format("the routine at %04X is still at %04X", routine, Z80State.PC), 2)
  end
  s.equal(Z80State.SP, kStack, "stack")
  s.equal(PortShadow[2], 0x70, "page set-up")
end

function s.print(text)
  for i = 1, #text do s.call(s.con_out, {A = text:byte(i)}) end
end

-- Row of the text, without trailing blanks.
function s.row(row)
  return (MemImage:get(s.kText + 64 * row, 64):gsub(" +$", ""))
end

function s.rows()
  local rows = {}
  for row = 0, 23 do rows[row] = s.row(row) end
  return rows
end

-- Presses a key (host code) for so many frames, with shift, ctrl, alt as the host's modifiers (1, 2, 4).
function s.press(code, modifiers, frames)
  local m = modifiers or 0
  if m & 1 ~= 0 then picd_KeyDown(0x10, m) end
  if m & 2 ~= 0 then picd_KeyDown(0x11, m) end
  if m & 4 ~= 0 then picd_KeyDown(0x12, m) end
  picd_KeyDown(code, m)
  Frames(frames or 3)
  for _, c in ipairs{code, 0x10, 0x11, 0x12} do picd_KeyUp(c) end
  Frames(2)
end

-- Bytes of the picture by the CRTC's start address, which the mode multiplies by 8, 4 or 1.
function s.picture()
  local mode = PortShadow[6] & 3
  local start = (CrtcRegs[12] * 256 + CrtcRegs[13]) * ({[0] = 8, 4, 1})[mode] % 16384
  local video = MemImage:get(kVideo, 16384)
  return (video .. video):sub(start + 1, start + 240 * 64)
end

-- Colour of a pixel in the bytes that picture() gave: a palette number, or with 16 colours bit 0 blue, 1 red,
-- 2 green, 3 bright. The mode is the machine's if it is left out.
function s.colour(picture, x, y, mode)
  mode = mode or PortShadow[6] & 3
  local byte = picture:byte(64 * y + x // ({[0] = 8, 4, 2})[mode] + 1)
  if mode == 0 then return byte >> (7 - x % 8) & 1 end
  if mode == 1 then
    local bit = 3 - x % 4
    return (byte >> (bit + 4) & 1) + 2 * (byte >> bit & 1)
  end
  local shifted = byte >> (1 - x % 2)
  return (shifted & 1) + (shifted >> 1 & 2) + (shifted >> 2 & 4) + (shifted >> 3 & 8)
end

-- Address of a name in the linker's map.
function s.symbol(map, name)
  for line in io.lines(map) do
    local address, found = line:match("^%s*0x(%x+)%s+([%a_][%w_]*)%s*$")
    if found == name then return tonumber(address, 16) & 0xFFFF end
  end
  error("no such name: " .. name, 2)
end

-- Nothing went wrong on the way: no message box, no unknown instruction, no port without a device.
function s.clean()
  s.equal(#Messages(), 0, "messages")
  s.equal(TScreen.Label1, "", "unknown instruction")
  s.equal(#TScreen.List1, 0, "ports without a function")
end

return s
