-- Start of the system: time, banner, memory sizes, warm and cold start, cards.
local s = dofile((arg[0]:match("^.*/") or "") .. "system_machine.lua")

local function banner(version, kilobytes, free, cards)
  s.equal(s.row(0), "QUOLL BASIC " .. version .. "  " .. kilobytes .. " KB", "banner")
  s.equal(s.row(1), free .. " bytes free", "banner")
  for i, card in ipairs(cards or {}) do s.equal(s.row(1 + i), card, "card") end
  s.equal(s.row(2 + #(cards or {})), "", "row below the banner")
end

-- 1.5 seconds are 75 frames. 0xC000 and 0x8000 less 0x19EF.
s.is(s.boot() <= 75, "cold start within 1.5 seconds")
banner("2.2", 48, 0xC000 - 0x19EF)
s.equal(s.word(s.kRamTop), 0xC000, "RAMTOP")
s.equal(PortShadow[2], 0x70, "page set-up")
s.equal(Z80State.IM, 1, "IM")
local width, height, left, top = Picture()
s.equal(width .. "x" .. height .. "+" .. left .. "+" .. top, "512x480+64+48", "picture")

-- One tick a frame, never two: each interrupt is acknowledged when its request is over.
local before = s.word(s.kTicks)
Frames(200)
s.equal(s.word(s.kTicks) - before, 200, "ticks in 200 frames")

-- A request is served in a small part of the frame: T-states out of HALT.
local busy, clock = 0, 0
for _ = 1, 20000 do
  local halted, before = Z80State.Halted, RunState.Cycles
  Step(1)
  local passed = (RunState.Cycles - before) % 62500
  clock = clock + passed
  if halted == 0 then busy = busy + passed end
end
s.is(clock > 62500, "more than a frame")
s.is(busy / clock < 0.05, "idle: " .. busy / clock .. " of the time is used up")

-- The cursor blinks: on, off, on within two seconds.
local seen = {}
for _ = 1, 100 do
  Frames(1)
  local lit = s.colour(s.picture(), 0, 10 * MemImage[s.kCursor + 1])
  if seen[#seen] ~= lit then seen[#seen + 1] = lit end
end
s.is(#seen >= 4, "the cursor blinks")

-- Warm start: the memory stays, within 0.2 seconds.
MemImage:set(0x3000, "kept")
local function restart0()
  MemImage[s.kCode] = 0xC7
  Z80State.PC, Z80State.Halted = s.kCode, 0
end
local function nmi() Press("CPUmon", "Command2") end
for how, start in pairs{reset = function() Click("xReset") end, NMI = nmi, ["RST 0"] = restart0} do
  Frames(1)
  start()
  Frames(1)
  MemImage:set(s.kText, (" "):rep(64))
  local frames = 1
  repeat
    Frames(1)
    frames = frames + 1
    s.is(frames <= 10, how .. ": warm start within 0.2 seconds")
  until s.row(1) ~= "" and Z80State.Halted == 1
  banner("2.2", 48, 0xC000 - 0x19EF)
  s.equal(MemImage:get(0x3000, 4), "kept", how)
end

-- Cold start by the mark: 0xFF from the menu, or any other value that is not the system's.
for _, mark in ipairs{"menu", 0, s.kWarm ~ 1} do
  MemImage:set(0x3000, "lost")
  if mark == "menu" then
    Click("xReset2")
    s.equal(MemImage[s.kWarmMark], 0xFF, "mark")
  else
    MemImage[s.kWarmMark] = mark
    Click("xReset")
  end
  s.is(s.boot() <= 75, "cold start")
  s.equal(MemImage:get(0x3000, 4), "\0\0\0\0", "memory")
  banner("2.2", 48, 0xC000 - 0x19EF)
end

-- The 32 KB model.
Click("x32KB")
s.boot()
banner("2.2", 32, 0x8000 - 0x19EF)
s.equal(s.word(s.kRamTop), 0x8000, "RAMTOP")
Click("x32KB")

-- The other version, then all cards.
Click("xBasic")
s.boot()
banner("1.2", 48, 0xC000 - 0x19EF)
Click("xBasic")
for card = 0, 3 do
  Click("xio" .. card)
  s.boot()
end
banner("2.2", 48, 0xC000 - 0x19EF, {"Slot 0: floppy card, no disk system, ROM page 0",
       "Slot 2: sound card, no player, ROM page 3", "Slot 3: free card, no program"})
s.call(s.card_name, {A = 1})
s.equal(Z80State.FlagC, 1, "slot 1 has no ROM")
PortOut(0x36, 1)
s.call(s.con_clear)
s.call(s.card_name, {A = 2})
s.equal(Z80State.FlagC, 0, "slot 2")
s.equal(s.row(0), "Slot 2: sound card, no player, ROM page 1", "page 1 of the sound card")
for card = 0, 3 do Click("xio" .. card) end

s.boot()
s.clean()
