package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"
local files = require "files"
local read, write = files.read, files.write

check.pageInRam()

-- A tape: its header of 44 bytes, then samples on both sides of the threshold.
write("tape.wav", ("\255"):rep(43) .. "\0" .. "\90\91\255\0")
TapeOpen("tape.wav")
for i = 1, 43 do check.equal(TapeRead(), 1, "header byte " .. i) end
check.equal(TapeRead(), 0, "last byte of the header")
check.equal(TapeRead(), 0, "90")
TapeRewind()
RunState.FrameClock = 3 * 142
check.equal(PortIn(0x59) & 0x20, 0, "90")
check.equal(DacSlots[3], 0x10, "heard")
check.equal(PortIn(0x5D) & 0x20, 0x20, "91")
check.equal(DacSlots[3], 0x11, "heard")
check.equal(TapeRead(), 1, "255")
check.equal(TapeRead(), 0, "0")
for _ = 1, 10 do check.equal(TapeRead(), 0, "the end") end
TapeRewind()
TapeRead()
check.equal(TapeRead(), 1, "91 again")
check.raises("string expected", TapeOpen)

-- The machine's own loop reads a bit at each pass: LD HL,4000: IN A,(59): LD (HL),A: INC L: JP 1003
write("tape.wav", ("\0"):rep(44) .. ("\200\10\10"):rep(20))
TapeOpen("tape.wav")
TapeRewind()
check.program(0x1000, 0x21, 0x00, 0x40, 0xDB, 0x59, 0x77, 0x2C, 0xC3, 0x03, 0x10)
Step(1 + 4 * 60)
for i = 0, 59 do check.equal(MemImage[0x4000 + i] & 0x20, i % 3 == 0 and 0x20 or 0, "sample " .. i) end

-- A square wave written by the machine: INC A (to pass the time): OUT (50),A: JP 1000. In a round there are
-- 4 + 11 + 10 T-states, and as many in the next: a quarter of a sample each, so one byte an edge.
TVCmon.Check1 = true
check.equal(TVCmon.Check1, true)
check.program(0x1000, 0x3C, 0xD3, 0x50, 0xC3, 0x00, 0x10)
RunState.FrameClock = 1000
Step(3 * 50)
Frames(1)
TVCmon.Check1 = false
check.equal(#Messages(), 0, "messages")
local save = read("save.wav")
local riff, size, format, length, pcm, channels, rate, second, align, bits, data, count =
  ("<c4I4c8I4I2I2I4I4I2I2c4I4"):unpack(save)
check.equal(riff .. format .. data, "RIFFWAVEfmt data", "names")
check.equal(size, #save, "RIFF size: the whole file")
check.equal(length, 16, "format size")
check.equal(pcm, 1, "PCM")
check.equal(channels, 1, "channels")
check.equal(rate, 44100, "rate")
check.equal(second, 44100, "bytes a second")
check.equal(align, 1, "bytes a sample")
check.equal(bits, 8, "bits")
check.equal(count, #save - 44, "samples")
-- After the first edge, whose length depends on what was before.
local tail = save:sub(-40)
check.is(tail == ("\x1E\xDC"):rep(20) or tail == ("\xDC\x1E"):rep(20), "one byte an edge")

-- Both files end with the box; what the machine writes afterwards stays out.
Frames(1)
check.equal(#read("save.wav"), #save, "recorded after the end")
local record = read("record.wav")
check.equal(record:sub(1, 4), "RIFF", "record.wav")
check.equal((#record - 44) % 882, 0, "whole frames")
check.is(#record > 44, "frames")

-- What was saved can be played: each sample of 0x1E gives 0, each of 0xDC gives 1.
TapeOpen("save.wav")
TapeRewind()
for i = 45, #save do check.equal(TapeRead(), save:byte(i) == 0xDC and 1 or 0, "place " .. i) end
check.equal(TapeRead(), 0, "end")

-- A time that no program reaches.
RunState.FrameClock = 62622
PortOut(0x50, 0)
RunState.FrameClock = 62622
PortOut(0x50, 0)
check.equal(Messages()[1].text, "hiba hang", "message")
