-- What is in a sound: strings of samples as Sound() gives them, 8 bits, left and right. A module.
local heard = {kRate = 22050, kFrame = 441}
local kRate = heard.kRate

-- Equal temperament from A4 = 440 Hz; a small letter is sharp.
local kSemitones = {C = 0, c = 1, D = 2, d = 3, E = 4, F = 5, f = 6, G = 7, g = 8, A = 9, a = 10, B = 11}
function heard.hertz(note)
  return 440 * 2 ^ ((12 * tonumber(note:sub(2, 2)) + kSemitones[note:sub(1, 1)] - 57) / 12)
end

-- Samples from, count of a side (1 or 2) around their mean, faded in and out so that neighbours stay apart.
function heard.window(samples, side, from, count)
  local values, mean = {}, 0
  for i = 0, count - 1 do
    values[i] = samples:byte(2 * (from + i) + side)
    mean = mean + values[i] / count
  end
  for i = 0, count - 1 do values[i] = (values[i] - mean) * (1 - math.cos(2 * math.pi * (i + 0.5) / count)) / count end
  return values, count
end

-- Height of the spectrum at f: the amplitude of a sine of that frequency.
function heard.spectrum(values, count, f)
  local turn = 2 * math.cos(2 * math.pi * f / kRate)
  local one, two = 0, 0
  for i = 0, count - 1 do one, two = values[i] + turn * one - two, one end
  return 2 * math.sqrt(math.max(0, one * one + two * two - turn * one * two))
end

-- The peak nearest to f, up to half a semitone away; its frequency and height.
function heard.peak(values, count, f)
  local low, high = f * 2 ^ (-1 / 24), f * 2 ^ (1 / 24)
  local step, best, place = math.max((high - low) / 40, kRate / count / 8), -1, nil
  for at = low, high, step do
    local height = heard.spectrum(values, count, at)
    if height > best then best, place = height, at end
  end
  while step > 0.02 do
    step = step / 2
    for _, at in ipairs({place - step, place + step}) do
      local height = heard.spectrum(values, count, at)
      if height > best then best, place = height, at end
    end
  end
  return place, best
end

return heard
