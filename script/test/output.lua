package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"
local read = require("files").read

local folder = arg[1]  -- where files may be written

-- Before the first picture: nothing in the box, a black border.
local width, height, left, top, pixels = Picture()
check.equal(width, 0, "width")
check.equal(height, 0, "height")
check.equal(pixels, "", "pixels")
local border = Border()
check.equal(#border, 576, "border")
for row = 1, 576 do check.equal(border[row], 0, "border before painting") end
SavePicture(folder .. "/empty.png")

-- A picture of 16 x 8 pixels in 2 colours, two bytes a row: the first is 0xF0, all others are zero.
check.pageInRam()
check.loopFor10(0x100)
CrtcRegs[1], CrtcRegs[2], CrtcRegs[5], CrtcRegs[6], CrtcRegs[7] = 2, 73, 0, 1, 35
PortShadow[6] = 0
PortShadow[0x60], PortShadow[0x61] = 0x00, 0x04 | 0x40  -- black; red, bright
MemImage[0x10000] = 0xF0
redraw()
width, height, left, top, pixels = Picture()
check.equal(width, 16, "width")
check.equal(height, 8, "height")
check.equal(left, 80, "left")
check.equal(top, (0 - 35 * 4) * 2 + 572, "top")
check.equal(#pixels, 16 * 8 * 3, "pixels")
local lit = pixels:sub(1, 3)
check.is(lit ~= "\0\0\0", "the first pixel is lit")
check.equal(pixels:sub(1, 16 * 3), lit:rep(4) .. ("\0"):rep(12 * 3), "first row")

-- The border: colours as bands of two rows, red in the high byte.
for band = 0, 287 do BorderLines[band] = band end
BorderLines[0], BorderLines[1] = 0x0000FF, 0x00FF00  -- red, green
BorderLines[287] = 0xFF0000                          -- blue
redraw()
border = Border()
check.equal(border[1], 0xFF0000, "red")
check.equal(border[2], 0xFF0000, "red")
check.equal(border[3], 0x00FF00, "green")
check.equal(border[5], 0x020000, "band 2")
check.equal(border[574], (286 & 0xFF) * 0x10000 + 0x100, "band 286")
check.equal(border[575], 0x0000FF, "blue")
check.equal(border[576], 0x0000FF, "blue")

-- The picture file: signature, size, 8 bits of red, green and blue.
local png = folder .. "/window.png"
SavePicture(png)
local bytes = read(png)
check.equal(bytes:sub(1, 8), "\x89PNG\r\n\x1A\n", "signature")
check.equal(bytes:sub(13, 16), "IHDR", "header")
local w, h, bits, kind = (">I4I4BB"):unpack(bytes, 17)
check.equal(w, 640, "width")
check.equal(h, 576, "height")
check.equal(bits, 8, "bits")
check.equal(kind, 2, "red, green, blue")
check.raises("can't be written", SavePicture, folder .. "/none/such.png")
check.raises("string expected", SavePicture)

-- A box anywhere: far outside, over the edges, larger than the window.
for _, regs in ipairs({{2, 83, 0, 1, 127}, {64, 0, 0, 60, 0}, {80, 83, 31, 127, 127}, {64, 100, 0, 60, 100},
                       {64, -100000000, 100000000, 60, 0}, {64, 90, 0, 127, 90}}) do
  CrtcRegs[1], CrtcRegs[2], CrtcRegs[5], CrtcRegs[6], CrtcRegs[7] = table.unpack(regs)
  redraw()
  SavePicture(png)
end

-- Sound: five frames a block of 441 samples of two bytes each; given once.
MachineReset()
check.pageInRam()
check.loopFor10(0x100)
Sound()
Frames(4)
Frames(1)
check.equal(#Sound(), 4410, "one block")
check.equal(#Sound(), 0, "given")
Frames(52)
local sound = Sound()
check.equal(#sound, 10 * 4410, "ten blocks")
check.equal(sound:sub(-4410), BlockBuffer:get(0, 4410), "the last block")

-- The wave file has all since the start.
local wave = folder .. "/sound.wav"
SaveSound(wave)
bytes = read(wave)
local riff, size, format, chunk, length, code, channels, rate, second, sample, depth, data, count =
  ("<c4I4c4c4I4I2I2I4I4I2I2c4I4"):unpack(bytes)
check.equal(riff .. format .. chunk .. data, "RIFFWAVEfmt data", "names")
check.equal(size, #bytes - 8, "RIFF size")
check.equal(length, 16, "format size")
check.equal(code, 1, "PCM")
check.equal(channels, 2, "channels")
check.equal(rate, 22050, "rate")
check.equal(second, 44100, "bytes a second")
check.equal(sample, 2, "bytes a sample")
check.equal(depth, 8, "bits")
check.equal(count, 11 * 4410, "bytes")
check.equal(#bytes, 44 + 11 * 4410, "file")
check.equal(bytes:sub(-#sound), sound, "samples")
check.raises("can't be written", SaveSound, folder .. "/none/such.wav")

-- "Max" speed mixes all the same.
Click("xS6")
Frames(5)
check.equal(#Sound(), 4410, "a block at full speed")
