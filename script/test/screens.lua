-- Four whole screens, each into a PNG file of the folder arg[1]. pictures/model.py draws the same screens from
-- the machine's rules; ScreensTest.cpp compares.
package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

check.pageInRam()
for i = 0, 0x1BFFF do MemImage[0x10000 + i] = (i * 7 + i // 64 * 13 + (i >> 5) + i // 0x4000) & 0xFF end

local function place(columns, left, adjust, rows, top)
  CrtcRegs[1], CrtcRegs[2], CrtcRegs[5], CrtcRegs[6], CrtcRegs[7] = columns, left, adjust, rows, top
end

-- Port writes at times of the frame: {T-states, port, value}.
local function draw(name, writes)
  PALchNull()
  for _, write in ipairs(writes) do
    RunState.FrameClock = write[1]
    PortOut(write[2], write[3])
  end
  redraw()
  SavePicture(arg[1] .. "/" .. name .. ".png")
end

Click("xScreenDIB")  -- which is on at the start
place(64, 75, 2, 60, 66)
CrtcRegs[12], CrtcRegs[13] = 0, 5
draw("two_colours", {{0, 6, 0x80}, {0, 0, 0x02}, {0, 0x60, 0x00}, {0, 0x61, 0x55}, {12250, 0x60, 0x01},
                     {20000, 0, 0xAA}, {24500, 0x61, 0x54}, {24500, 0x67, 0x11}, {40000, 0, 0x28}, {49000, 0x60, 0x44}})

Click("xScreenDIB")
CrtcRegs[12], CrtcRegs[13] = 0x0F, 0xFE
draw("four_colours_dib", {{0, 6, 0x81}, {0, 0x0F, 0x20}, {0, 0x60, 0x41}, {0, 0x61, 0x14}, {0, 0x62, 0x55},
                          {0, 0x63, 0x05}, {30000, 0x62, 0x10}, {30100, 0, 0x80}, {61000, 0x63, 0x40}})

Click("xScreenDIB")
place(40, 60, 0, 50, 63)
CrtcRegs[12], CrtcRegs[13] = 0x3F, 0x80
draw("sixteen_colours_narrow", {{0, 6, 0x82}, {0, 0x0F, 0x10}, {62600, 0, 0x0A}})

Click("xScreenDIB")
place(80, 83, 0, 60, 65)
CrtcRegs[12], CrtcRegs[13] = 0, 0xC0
draw("eighty_columns_dib", {{0, 6, 0x83}, {0, 0x0F, 0x00}})
