-- A program reads a whole track through the ROM of the floppy card, into 4000.
package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

local kSectors, kSector, kTrack = 9, 512, 2048  -- bytes of a track, as the controller reckons

-- An image in which every sector differs.
local bytes = {}
for place = 0, 0x5A000 - 1 do bytes[place + 1] = string.char((place * 7 + place // kSector * 31) & 255) end
local image = table.concat(bytes)
local file = assert(io.open("rom.dsk", "wb"))
file:write(image)
file:close()

Click("xio0")
LoadDisk("rom.dsk")
PortOut(0x02, 0xB0)  -- RAM everywhere
for _, track in ipairs{0, 1, 15, 16, 32, 39} do
  for _ = 1, track * 5 do PortIn(0x13) end  -- a sector that was broken off
  MemImage:set(0x4000, ("\xAA"):rep(kSectors * kSector + 1))
  check.program(0x1000, 0xF3, 0x31, 0x00, 0x30,              -- DI: LD SP,3000
                0x3E, 0x00, 0xD3, 0x03, 0xD3, 0x18,          -- slot 0, page 0 of the card's ROM
                0x3E, 0xF0, 0xD3, 0x02,                      -- at C000
                0x3E, track, 0x01, 0x01, kSectors,           -- LD A,track: LD BC,sectors and drive 0
                0x21, 0x00, 0x40, 0xCD, 0x00, 0xCF, 0x76)    -- LD HL,4000: CALL CF00: HALT
  check.is(RunUntil(0x1019, 3125000), "the program ends")
  -- Each sector register gives the track's first sector; places from 32768 on count as negative up to 65536.
  local place = track * kTrack & 0xFFFF
  local wanted = place < 0x8000 and image:sub(place + 1, place + kSector) or ("\0"):rep(kSector)
  check.is(MemImage:get(0x4000, kSectors * kSector) == wanted:rep(kSectors), "track " .. track)
  check.equal(MemImage[0x4000 + kSectors * kSector], 0xAA, "not a byte more")
  check.equal(Z80State.H * 256 + Z80State.L, 0x4000 + kSectors * kSector, "HL")
  check.equal(PortIn(0x11), track, "track register")
  check.equal(PortIn(0x12), kSectors, "sector register")
end
