-- Tones: registers, duration, waiting for the tone before, the bell, the break key.
local s = dofile((arg[0]:match("^.*/") or "") .. "system_machine.lua")
s.boot()

local kSounding = 0x10
local function sounding() return PortShadow[5] & kSounding ~= 0 end
local function amplitude() return PortShadow[6] >> 2 & 15 end
local function pitch() return (PortShadow[5] & 15) * 256 + PortShadow[4] end

-- Frames until the tone ends, from now.
local function rest()
  for frames = 0, 400 do
    if not sounding() then
      s.equal(amplitude(), 0, "amplitude behind the tone")
      return frames
    end
    Frames(1)
  end
  error("the tone does not end", 2)
end

s.is(not sounding(), "silent at the start")
s.equal(amplitude(), 0, "no amplitude at the start")

-- 440 Hz: 195312.5 / 440 = 443.9, so pitch 4096 - 444. Each interrupt takes one of the duration.
for mode = 0, 2 do
  s.call(s.gfx_mode, {A = mode})
  for _, case in ipairs{{3652, 15, 10}, {0, 1, 1}, {4095, 7, 2}, {2048, 0, 300}} do
    s.call(s.snd_tone, {HL = case[1], A = case[2], BC = case[3]})
    s.is(sounding(), "sounds")
    s.equal(pitch(), case[1], "pitch")
    s.equal(amplitude(), case[2], "amplitude")
    s.equal(PortShadow[6] & 0x83, 0x80 + mode, "mode and printer strobe stay")
    local frames = rest()
    s.is(frames == case[3] or frames == case[3] - 1, "duration " .. case[3] .. ": " .. frames .. " frames")
  end
end

-- What is heard: 50 frames of a tone of 441 Hz cross zero 882 times a second.
Sound()
s.call(s.snd_tone, {HL = 4096 - 443, A = 15, BC = 60})
Frames(5)
Sound()
Frames(50)
local heard = Sound()
local crossings, last = 0, nil
for i = 1, #heard, 2 do
  local high = heard:byte(i) > 128
  if last ~= nil and high ~= last then crossings = crossings + 1 end
  last = high
end
s.equal(#heard, 50 * 882, "sound of 50 frames")
s.is(math.abs(crossings - 882) <= 2, "441 Hz: " .. crossings .. " crossings")
rest()

-- The second tone waits for the end of the first.
local before = s.word(s.kTicks)
s.call(s.snd_tone, {HL = 3000, A = 10, BC = 20})
s.is(s.word(s.kTicks) - before <= 1, "the first does not wait")
s.call(s.snd_tone, {HL = 3500, A = 12, BC = 5})
local waited = s.word(s.kTicks) - before
s.is(waited >= 19 and waited <= 21, "waited " .. waited)
s.equal(pitch(), 3500, "second tone")
s.call(s.snd_tone, {HL = 1, A = 1, BC = 0})
s.is(not sounding(), "a duration of 0 waits only")

-- A break key ends the waiting; the tone that sounds goes on, the new one does not come.
s.call(s.snd_tone, {HL = 3000, A = 10, BC = 100})
local done = s.begin(s.snd_tone, {HL = 3500, A = 12, BC = 100})
s.is(not s.ends(done, 5), "waits")
MemImage[s.kBreakKey] = 3
s.is(s.ends(done, 2), "break")
s.equal(pitch(), 3000, "pitch")
MemImage[s.kBreakKey] = 0
rest()

-- The bell comes at once and does not wait; it is over soon.
s.call(s.con_out, {A = 7})
s.is(sounding(), "bell")
local frames = rest()
s.is(frames > 2 and frames < 20, "length of the bell")

-- The motor's bit is not the tone's business.
PortOut(5, 0x40)
MemImage[0x0B02] = 0x40
s.call(s.snd_tone, {HL = 3000, A = 10, BC = 2})
s.equal(PortShadow[5] & 0x40, 0x40, "motor during the tone")
rest()
s.equal(PortShadow[5] & 0x40, 0x40, "motor behind it")
s.clean()
