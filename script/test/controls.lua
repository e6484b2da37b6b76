package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

-- Menu ticks as the program starts with them.
local ticked = {xScreenDIB = true, xSound = true, xUnDoc = true, xBasic = true, xS3 = true}
for _, name in ipairs({"xio0", "xio1", "xio2", "xio3", "xScreenBW", "xScreenDIB", "xScreenNoise", "xSound",
                       "xNoError", "xUnDoc", "x32KB", "xBasic", "xS1", "xS2", "xS3", "xS4", "xS5", "xS6"}) do
  check.equal(Menu[name], ticked[name] or false, name)
  check.equal(TScreen[name], ticked[name] or false, name)
end
check.equal(Menu.xReset, false, "an entry without a tick")

Click("xScreenBW")
check.equal(Menu.xScreenBW, true, "xScreenBW")
check.equal(PortIn(0x59) & 0x40, 0, "monochrome")
Click("xScreenBW")
check.equal(PortIn(0x59) & 0x40, 0x40, "colour")

MemImage[0x100] = 1
Click("xio2")
check.equal(Menu.xio2, true, "xio2")
check.equal(MemImage[0x100], 0, "a new machine")

Click("xReset2")
check.equal(RunState.ResetRequest, 1, "xReset2")
check.equal(MemImage[0x0B22], 0xFF, "warm-start mark")
RunState.ResetRequest = 0
Click("xS5")  -- no handler: nothing happens

check.raises("the menus have no 'xNothing'", Click, "xNothing")
check.raises("the menus have no 'xNothing'", function() return Menu.xNothing end)
check.raises("use Click", function() Menu.xio2 = false end)
check.raises("use Click", function() TScreen.xio2 = false end)

-- Writing a control does what the user's change does.
CPUmon.Check4 = true
check.equal(CPUmon.Check4, true, "Check4")
check.equal(RunState.BreakArmed, 1, "BreakArmed")
CPUmon.Check4 = false
check.equal(RunState.BreakArmed, 0, "BreakArmed")
check.equal(TVCmon.Check3, true, "TVCmon.Check3")
TVCmon.Check3 = false
check.equal(TVCmon.Check3, false, "TVCmon.Check3")
CPUmon.HScroll1 = -5
check.equal(CPUmon.HScroll1, -5, "HScroll1")
CPUmon.Text5 = "&H1234"
check.equal(CPUmon.Text5, "&H1234", "Text5")

check.equal(#ErrorSim.CH0, 8, "CH0")
ErrorSim.CH0[3] = true
for i = 0, 7 do check.equal(ErrorSim.CH0[i], i == 3, "CH0 " .. i) end
ErrorSim.Option1[2] = true
check.equal(ErrorSim.Option1[0], false, "Option1")
check.equal(ErrorSim.Option1[2], true, "Option1")
check.raises("index 8 out of range", function() return ErrorSim.CH0[8] end)
check.raises("index -1 out of range", function() ErrorSim.CH0[-1] = true end)
check.raises("boolean expected", function() ErrorSim.CH0[0] = 1 end)
check.raises("has an index", function() ErrorSim.CH0 = true end)

check.raises("CPUmon has no control 'Check99'", function() return CPUmon.Check99 end)
check.raises("CPUmon has no control 'Check99'", function() CPUmon.Check99 = true end)
check.raises("boolean expected", function() CPUmon.Check4 = 0 end)
check.raises("string expected", function() CPUmon.Text5 = true end)
check.raises("number expected", function() CPUmon.HScroll1 = "x" end)
check.raises("too large", function() CPUmon.HScroll1 = 1 << 31 end)
check.raises("use Press", function() CPUmon.Command7 = true end)
check.raises("has no value", function() return CPUmon.Command7 end)
check.raises("cannot be changed", function() TScreen.Label1 = "x" end)
check.raises("cannot be changed", function() TScreen.List1 = {} end)

-- Buttons.
check.pageInRam()
check.program(0x300, 0x3C)
Z80State.A = 1
Press("CPUmon", "Command7")
check.equal(Z80State.A, 2, "Step")
check.equal(Z80State.PC, 0x301, "Step")
Press("CPUmon", "Command2")
check.equal(RunState.NmiRequest, 1, "NMI")
RunState.NmiRequest = 0
CPUmon.Text12, CPUmon.Text13 = "&H4000", 99  -- a number is a text too
Press("CPUmon", "Command3")
check.equal(MemImage[0x4000], 99, "Poke")
check.raises("is no button", Press, "CPUmon", "Check4")
check.raises("there is no button CPUmon.Command99", Press, "CPUmon", "Command99")
check.raises("there is no button Nobody.Command1", Press, "Nobody", "Command1")

-- Run, with the breakpoint: PC reaches it after two instructions.
check.program(0x300, 0x3C, 0x3C, 0x3C)
Z80State.A = 0
CPUmon.Check4, CPUmon.Check2, CPUmon.Text5 = true, true, "770"
Press("CPUmon", "Command1")
check.equal(Z80State.PC, 0x302, "breakpoint")
check.equal(Z80State.A, 2, "breakpoint")
CPUmon.Check4 = false

-- The access log and the status label.
check.list(TScreen.List1, {}, "List1")
PortOut(0x08, 0)
PortIn(0x00)
PortOut(0xFF & 0xF9, 0)
check.list(TScreen.List1, {"W8", "R0", "W249"}, "List1")
check.equal(TScreen.Label1, "", "Label1")
check.equal(TScreen.Caption, "QUOLLEMU", "Caption")
check.program(0x300, 0xED, 0x00)
Step()
check.equal(TScreen.Label1, "Unknown Opcode!", "Label1")
check.equal(TScreen.Caption, "Unknown Opcode!", "Caption")
