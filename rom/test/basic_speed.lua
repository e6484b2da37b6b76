-- The eight small benchmarks of the magazines of the 1980s, in the machine's own time; LOG, SIN and ^ are run 100
-- times. Each has the time that it may take, with a little room.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

local kHead = "5 t=time\n"
local kEnd = "\n200 print (time-t)/50:end"
local function loop(body)
  return "10 k=0\n20 k=k+1\n" .. body .. "\n190 if k<1000 then 20" .. kEnd
end
local kBody4 = "30 a=k/2*3+4-5"
local kSub = "\n40 gosub 700"
local kBench = {
  {"10 for k=1 to 1000\n20 next k" .. kEnd, 0.32},
  {loop("30"), 1},
  {loop("30 a=k/k*k+k-k"), 2.68},
  {loop(kBody4), 3.34},
  {loop(kBody4 .. kSub) .. "\n700 return", 3.76},
  {"7 dim m(5)\n" .. loop(kBody4 .. kSub .. "\n50 for l=1 to 5\n60 next l") .. "\n700 return", 6.4},
  {"7 dim m(5)\n" .. loop(kBody4 .. kSub .. "\n50 for l=1 to 5\n60 m(l)=a\n70 next l") .. "\n700 return", 10},
  {"10 k=0\n20 k=k+1\n30 a=k^2\n40 b=log(k)\n50 c=sin(k)\n60 if k<100 then 20" .. kEnd, 3.8},
}
for i, bench in ipairs(kBench) do
  local seconds = tonumber(b.run(kHead .. bench[1]))
  print(string.format("BM%d %6.2f s", i, seconds or -1))
  b.check("BM" .. i, seconds and seconds > 0 and seconds <= bench[2], tostring(seconds) .. " s")
end

-- Others of everyday use.
local function seconds(text) return tonumber(b.run(text)) end
local sieve = seconds("5 t=time\n10 dim f(500)\n20 for i=2 to 500:if f(i) then 40\n" ..
                      "30 for j=i+i to 500 step i:f(j)=1:next\n40 next\n50 print (time-t)/50")
print("sieve to 500", sieve)
b.check("sieve", sieve and sieve < 1.6, tostring(sieve))
local text = seconds("5 t=time\n10 for i=1 to 500:a$=left$(a$+chr$(64+i mod 26),20):next\n50 print (time-t)/50")
print("500 strings", text)
b.check("strings", text and text < 1.9, tostring(text))
b.done()
