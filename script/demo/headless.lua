-- Boots the machine from its ROM, runs three seconds, and keeps what a user would have seen and heard.
--   quollrun headless.lua PICTURE.png SOUND.wav
local pictureName, soundName = arg[1], arg[2]
if not (pictureName and soundName) then
  error("usage: quollrun headless.lua PICTURE.png SOUND.wav", 0)
end

local framesASecond = 50
local passed = Frames(3 * framesASecond)

SavePicture(pictureName)
SaveSound(soundName)

local width, height, left, top = Picture()
print(string.format("%d frames, PC = %s, picture of %d x %d pixels at (%d, %d)",
                    passed, Hex4(Z80State.PC), width, height, left, top))
for _, message in ipairs(Messages()) do print(message.title .. ": " .. message.text) end
