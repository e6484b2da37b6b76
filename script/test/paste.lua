package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

Frames(120)
check.is(ScreenText():find("Ready\n"), "the prompt can be read")

-- Every character that a key gives arrives, twice in a row too.
local signs = "'\"+!%/=(),?.:-_*;<>$@#&[]{}\\|~^`"
Paste("10 REM " .. signs .. "\n20 REM aabbccAABBCC áéíóöőúüű ÁÉÍÓÖŐÚÜŰ\nLIST\n")
Frames(30)
local screen = ScreenText()
check.is(screen:find("10 REM " .. signs, 1, true), "signs")
check.is(screen:find("20 REM aabbccAABBCC áéíóöőúüű ÁÉÍÓÖŐÚÜŰ", 1, true), "letters")

-- What no key gives: the nearest, or nothing.
check.equal(Paste("NEW\r\n10 REM “a”\t–…€\r\nLIST\r\n"), 1, "left out")
Frames(30)
check.is(ScreenText():find('10 REM "a" -...\n', 1, true), "substitutes")

-- A listing of 200 lines, none of which may be lost.
local lines = {"NEW"}
for i = 1, 200 do lines[#lines + 1] = i * 10 .. " LET A" .. i % 10 .. "=SQR(" .. i .. ")+LEN(\"quick fox " .. i .. "\")" end
local frames = TotalFrames and TotalFrames() or RunState.TotalCycles // 62500
Paste(table.concat(lines, "\n") .. "\n")
frames = RunState.TotalCycles // 62500 - frames
local there = 0
for i = 1, 200 do
  Paste("PRINT CHR$(12)\nLIST " .. i * 10 .. "\n")
  Frames(15)
  if ScreenText():find(lines[i + 1], 1, true) then there = there + 1 end
end
print("200 lines in " .. frames .. " frames; there: " .. there)
check.equal(there, 200, "lines")

-- All characters in each mode, in other colours too.
for mode, name in pairs({[2] = "2", [4] = "4", [16] = "16"}) do
  Paste("NEW\nGRAPHICS " .. name .. "\n10 PRINT CHR$(12);\n20 FOR I=32 TO 159\n30 PRINT CHR$(I);\n40 NEXT\nRUN\n")
  Frames(200)
  local expected = ""
  for code = 32, 126 do expected = expected .. string.char(code) end
  -- The full block can't be told from a blank.
  expected = expected .. "ÁÉÍÓÖŐÚÜŰ┌└│├┬┼▀áéíóöőúüű┐┘─┤┴▒▌"
  local read = ScreenText():gsub("\n", "")
  -- Blanks at the ends of rows are not told.
  check.is(read:gsub(" ", ""):find(expected:gsub(" ", ""), 1, true), "characters in mode " .. mode .. ": " .. read)
end
