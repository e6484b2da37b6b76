-- The floppy card by its ports, as a program has it, and disk images in and out of the drive.
package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"
local write = require("files").write

local kSize = 0x5A000
local kTrack = 4 * 512  -- by which the card reckons, whatever the disk's geometry

-- An image in which each sector differs from the others.
local function pattern(size)
  local sectors = {}
  for sector = 0, (size + 511) // 512 - 1 do
    local bytes = {}
    for i = 0, 511 do bytes[#bytes + 1] = string.char((i * 7 + sector * 13 + sector // 256 + 1) & 255) end
    sectors[#sectors + 1] = table.concat(bytes)
  end
  return table.concat(sectors):sub(1, size)
end

local function read(count)
  local bytes = {}
  for i = 1, count do bytes[i] = string.char(PortIn(0x13)) end
  return table.concat(bytes)
end

local function seek(track)
  PortOut(0x11, track)
  PortOut(0x10, 0x10)
end

check.pageInRam()

-- Without a disk: zeros, and nobody is told.
check.equal(#Messages(), 0, "messages")
check.equal(TFloppy.Label1, "", "no disk")
check.equal(read(600), ("\0"):rep(600), "no disk")
check.equal(#DiskData, 5, "drives")
check.equal(#DiskData[0], kSize, "bytes")
check.equal(DiskData[4][kSize - 1], 0, "an empty drive")
check.equal(DiskData[0]:get(10, 3), "\0\0\0", "an empty drive")

local image = pattern(kSize)
write("whole.dsk", image)
LoadDisk("whole.dsk")
check.equal(#Messages(), 0, "messages")
check.equal(TFloppy.Label1, "whole.dsk", "name")
check.is(DiskData[0]:get(0, kSize) == image, "all bytes")
check.equal(DiskData[1][0], 0, "the other drives")

-- Restore and the track register.
PortOut(0x10, 0x00)
check.equal(PortIn(0x10), 0, "after Restore")
PortOut(0x11, 5)
check.equal(PortIn(0x10), 5, "the track register, not the status")
check.equal(PortIn(0x11), 5, "track")
PortOut(0x12, 9)
check.equal(PortIn(0x12), 9, "sector")

-- A sector, and from its start again.
PortOut(0x10, 0x00)
for _ = 1, 600 - 512 do PortIn(0x13) end
while PortIn(0x14) ~= 1 do PortIn(0x13) end  -- to the end of the sector begun above
check.equal(read(512), image:sub(1, 512), "track 0")
check.equal(PortIn(0x14), 1, "its last byte was read")
check.equal(read(1), image:sub(1, 1), "the 513th is the first again")
read(511)

seek(1)
check.equal(PortIn(0x14), 0x80, "after Seek")
check.equal(read(512), image:sub(kTrack + 1, kTrack + 512), "track 1: 2048")
PortOut(0x12, 3)
check.equal(read(512), image:sub(kTrack + 1, kTrack + 512), "the sector register has no part in it")

-- The place is reckoned in 16 bits with a sign.
for track = 0, 255 do
  seek(track)
  local place = track * kTrack & 0xFFFF
  local wanted = place < 0x8000 and image:sub(place + 1, place + 512) or ("\0"):rep(512)
  check.is(read(512) == wanted, "track " .. track)
end

-- Commands by the other ports: Restore below 0x10, Seek below 0x20.
for port = 0x0C, 0x0E do
  seek(3)
  PortOut(port, 0x0F)
  check.equal(PortIn(0x11), 0, "Restore by port " .. port)
  check.equal(read(512), image:sub(1, 512), "Restore by port " .. port)
  PortOut(0x11, 2)
  PortOut(port, 0x1F)
  check.equal(read(512), image:sub(2 * kTrack + 1, 2 * kTrack + 512), "Seek by port " .. port)
end

-- What each command leaves in the hardware status; 1 is what was there.
local statusOf = {[0] = 0x80, 0x80, 1, 1, 1, 1, 1, 1, 0x80, 0x80, 1, 1, 0x81, 1, 1, 1}
for command = 0, 255 do
  PortOut(0x10, 0x00)
  while PortIn(0x14) ~= 1 do PortIn(0x13) end
  PortOut(0x10, command)
  check.equal(PortIn(0x14), statusOf[command >> 4], "command " .. command)
end

-- Drives: the highest of the four bits counts, and none of them is a drive of its own, all empty but the first.
PortOut(0x10, 0x00)
while PortIn(0x14) ~= 1 do PortIn(0x13) end
for value = 0, 255 do
  PortOut(0x14, value)
  local drive = value & 8 ~= 0 and 3 or value & 4 ~= 0 and 2 or value & 2 ~= 0 and 1 or value & 1 ~= 0 and 0 or 4
  DiskData[drive][0] = 100 + drive
  PortOut(0x10, 0x00)
  check.equal(PortIn(0x13), 100 + drive, "drive of " .. value)
  while PortIn(0x14) ~= 1 do PortIn(0x13) end
end
PortOut(0x14, 0x01)
LoadDisk("whole.dsk")
check.equal(DiskData[0][0], image:byte(1), "drive 0 anew")
check.equal(DiskData[3][0], 103, "the others stay")

-- Data that is written goes nowhere.
PortOut(0x10, 0xA0)
PortOut(0x13, 0x55)
check.is(DiskData[0]:get(0, kSize) == image, "after a write")

-- Ports that keep or log nothing.
check.list(TScreen.List1, {}, "ports without a function")
for _, port in ipairs{0x0C, 0x0D, 0x0E, 0x10, 0x11, 0x12, 0x13, 0x14} do
  check.equal(PortShadow[port], 0, "not kept: " .. port)
end
PortOut(0x18, 0x30)
check.equal(PortShadow[0x18], 0x30, "page of the ROM")
for _, port in ipairs{0x0C, 0x0D, 0x0E, 0x18} do check.equal(PortIn(port), 255, "not read: " .. port) end
check.list(TScreen.List1, {"R12", "R13", "R14", "R24"}, "reads without a function")

-- A program reads a whole track, nine sectors, into 4000: it waits for bit 0 of the hardware status after each.
check.pageInRam()
local track = 7
check.program(0x1000, 0x3E, 0x41, 0xD3, 0x14,          -- LD A,41: OUT (14),A     drive 0, motor
              0x3E, track, 0xD3, 0x11,                 -- LD A,track: OUT (11),A
              0x3E, 0x10, 0xD3, 0x10,                  -- LD A,10: OUT (10),A     Seek
              0x21, 0x00, 0x40, 0x1E, 0x01,            -- LD HL,4000: LD E,1
              0x7B, 0xD3, 0x12,                        -- 1011: LD A,E: OUT (12),A
              0x3E, 0x80, 0xD3, 0x10,                  -- LD A,80: OUT (10),A     Read Sector
              0xDB, 0x14, 0x1F, 0x38, 0x06,            -- 1018: IN A,(14): RRA: JR C,1023
              0xDB, 0x13, 0x77, 0x23, 0x18, 0xF5,      -- IN A,(13): LD (HL),A: INC HL: JR 1018
              0x1C, 0x7B, 0xFE, 0x0A, 0x20, 0xE8,      -- 1023: INC E: LD A,E: CP 0A: JR NZ,1011
              0x76)                                    -- HALT
PortOut(0x10, 0x00)
while PortIn(0x14) ~= 1 do PortIn(0x13) end
check.is(RunUntil(0x1029, 3125000), "the program ends")
local sector = image:sub(track * kTrack + 1, track * kTrack + 512)
check.is(MemImage:get(0x4000, 9 * 512) == sector:rep(9), "the track")
check.equal(MemImage[0x4000 + 9 * 512], 0, "not a byte more")

-- Images: longer, shorter, none at all.
write("long.dsk", image:reverse() .. "beyond")
LoadDisk("long.dsk")
check.is(DiskData[0]:get(0, kSize) == image:reverse(), "the first bytes of a long one")
write("short.dsk", "short")
LoadDisk("short.dsk")
check.is(DiskData[0]:get(0, kSize) == "short" .. image:reverse():sub(6), "the rest stays")
check.equal(TFloppy.Label1, "short.dsk", "name")
check.equal(#Messages(), 0, "messages")
write("empty.dsk", "")
os.execute("mkdir -p folder.dsk")
for name, reason in pairs{["empty.dsk"] = "it is empty", ["folder.dsk"] = "it is a directory",
                          ["missing.dsk"] = "No such file or directory"} do
  LoadDisk(name)
  local messages = Messages()
  check.equal(#messages, 1, name)
  check.equal(messages[1].text, name .. ": " .. reason, name)
  check.equal(TFloppy.Label1, "short.dsk", "the disk stays")
  check.equal(DiskData[0]:get(0, 5), "short", "the disk stays")
end

-- A new machine keeps disk and registers.
PortOut(0x11, 33)
Click("x32KB")
MachineReset()
check.equal(PortIn(0x11), 33, "track")
check.equal(DiskData[0]:get(0, 5), "short", "disk")

-- The window's list.
Click("xdiskload")
check.list(TFloppy.File1, {"empty.dsk", "long.dsk", "short.dsk", "whole.dsk"}, "File1")
Choose("TFloppy", "File1", 3)
check.equal(TFloppy.Label1, "whole.dsk", "chosen")
check.equal(DiskData[0][0], image:byte(1), "chosen")
check.equal(Selected("TFloppy", "File1"), 3, "chosen")

-- The bytes as an array.
DiskData[2]:set(1000, "abc")
check.equal(DiskData[2]:get(999, 5), "\0abc\0", "set")
check.equal(DiskData[1][1001], 0, "the neighbour")
DiskData[2]:set(0, {1, 2, 259})
check.equal(DiskData[2]:get(0, 4), "\1\2\3\0", "set by a table")
check.raises("index 5 out of range", function() return DiskData[5] end)
check.raises("out of range", function() return DiskData[0][kSize] end)
check.raises("out of range", function() DiskData[0][-1] = 1 end)
check.raises("out of range", function() DiskData[0]:set(kSize - 1, "ab") end)
check.raises("rows", function() DiskData[0] = 1 end)
