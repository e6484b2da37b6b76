package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

-- The real ROM: it sets the CRTC up, draws, and lets interrupts come, so that a picture is there and moves.
check.equal(Frames(50), 50, "frames")
local width, height, left, top, first = Picture()
check.is(width > 0 and height > 0, "a picture")
check.is(left >= 0 and left + width <= 640 and top >= 0 and top + height <= 576, "inside the window")
check.is(first:find("[^\0]"), "not black")
check.equal(Z80State.IM, 1, "IM")
Frames(50)
local _, _, _, _, second = Picture()
check.is(first ~= second, "the picture moves")
check.list(TScreen.List1, {}, "ports without a function")
check.equal(TScreen.Label1, "", "no unknown instruction")
check.equal(#Messages(), 0, "no message")

-- The ROMs of the other version boot as well, to a picture of their own.
Click("xBasic")
Frames(50)
local _, _, _, _, other = Picture()
check.is(other ~= first, "the other version's picture")
