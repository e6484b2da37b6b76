-- Statements for graphics, colours, sound, memory, ports and machine code.
local b = dofile((arg[0]:match("^.*/") or "") .. "basic_machine.lua")
b.boot()

local function program(name, text, wanted, ...) b.equal(name, b.run(text, ...), wanted) end
local function command(text, wanted) b.equal(text, b.command(text), wanted or "") end
local kMode = 0x0B0B

-- Points seen by the machine and in the video memory, in all three modes.
for mode, colours in ipairs({2, 4, 16}) do
  b.command("graphics " .. colours)
  b.equal("mode of GRAPHICS " .. colours, MemImage[kMode], mode - 1)
  b.equal("mode port", PortShadow[6] & 3, mode - 1)
  b.equal("columns", MemImage[b.kWidth], 128 >> mode)
  b.command("new")
  local width = 1024 >> mode
  local ink = ({1, 3, 14})[mode]
  local lines = {"10 cls:locate 1,0:ink " .. ink .. ":c=point(5,100)",
                 "20 plot 5,100,6,239," .. width - 1 .. ",0",
                 "30 print point(5,100);",
                 "40 print point(6,239);",
                 "50 print point(" .. width - 1 .. ",0)",
                 "60 print point(7,100)=c;",
                 "70 print point(" .. width .. ",5);",
                 "80 print point(-1,5)"}
  b.enter(table.concat(lines, "\n"))
  local out = b.command("run"):gsub("%s+", " ")
  b.equal("points with " .. colours, out, string.format(" %d %d %d -1 -1 -1", ink, ink, ink))
end
b.command("graphics 4")
program("a line", "10 cls:locate 1,0:plot 10,100:draw 40,130\n20 print point(25,115);point(25,114);point(40,130)",
        " 1  0  1")
program("lines on lines",
        "10 plot 10,100:draw 20,100,20,120,10,120,10,100\n20 print point(15,100);point(20,110);point(15,120);point(10,110);point(15,110)",
        " 1  1  1  1  0")
program("a circle",
        "10 cls:locate 1,0:circle 100,120,50\n20 for i=0 to 255:s=s+point(i,120):next:print s;point(100,120);point(50,120)",
        " 2  0  1")
program("PAINT inside a square", [[
  10 cls:locate 1,0:plot 50,50:draw 90,50,90,90,50,90,50,50
  20 ink 2:paint 70,70
  30 print point(51,51);point(89,89);point(70,70);point(49,70);point(50,70);point(91,91)]], " 2  2  2  0  1  0")
program("PAINT in a subroutine in loops", [[
  10 cls:locate 1,0:for i=1 to 3:gosub 100:next:print "end";i:end
  100 for j=1 to 2:ink j:paint 200,200:next:return]], "end 4")
b.command("graphics 2")

-- Palette register: bit 0 blue, 2 red, 4 green, 6 bright; the border the same one bit higher.
local function hardware(colour) return (colour & 1) | (colour & 2) << 1 | (colour & 4) << 2 | (colour & 8) << 3 end
for _, colour in ipairs({0, 1, 2, 4, 7, 8, 15}) do
  command("border " .. colour)
  b.equal("port of the border", PortShadow[0], hardware(colour) * 2)
  for register = 0, 3 do
    command("palette " .. register .. "," .. colour)
    b.equal("port of palette register " .. register, PortShadow[0x60 + register], hardware(colour))
  end
end
command("border 1:palette 0,1:palette 1,15:palette 2,14:palette 3,12")
command("ink 0:print \"hidden\":ink 1", "hidden")
command("graphics 16:paper 4:cls:graphics 2")

-- Sound: frequency is 195312.5 / (4096 - pitch).
local function tone(text, frequency, volume, frames)
  b.command("new")
  b.enter("10 " .. text .. "\n20 a=0")
  b.keys("\x0Crun\r")
  local heard = 0
  for _ = 1, 60 do
    Frames(1)
    if PortShadow[5] & 0x10 ~= 0 then
      heard = heard + 1
      if heard == 1 then
        local pitch = PortShadow[4] + 256 * (PortShadow[5] & 15)
        local got = 195312.5 / (4096 - pitch)
        b.check(text, math.abs(got - frequency) <= got * got / 195312.5 / 2 * 1.01, "frequency " .. got)
        b.equal(text .. " volume", PortShadow[6] >> 2 & 15, volume)
      end
    end
  end
  b.check(text, math.abs(heard - frames) <= 1, "sounded for " .. heard .. " frames")
end
tone("sound 440,10", 440, 15, 10)
tone("sound 1000,20,8", 1000, 8, 20)
tone("sound 50,5,1", 50, 1, 5)
command("sound 40,5", "Illegal quantity")
command("sound -1,5", "Illegal quantity")
command("sound 440,5,16", "Illegal quantity")
command("sound 440,-1", "Illegal quantity")
command("circle 9,9,-1", "Illegal quantity")
command("circle 9,9,8192", "Illegal quantity")
command("print in(256)", "Illegal quantity")
command("print in(-1)", "Illegal quantity")
b.command("new")
b.enter("10 t=time:for i=1 to 4:sound 500,10:next:sound 0,10:print time-t>=38 and time-t<60")
b.keys("\x0Crun\r")
Frames(150)
b.equal("tones wait for each other", b.screen(1), "-1\nReady")
b.keys("\x0Cbeep\r")
local heard = false
for _ = 1, 20 do
  Frames(1)
  heard = heard or PortShadow[5] & 0x10 ~= 0
end
b.check("beep", heard, "no sound")
b.wait(50)

-- Screen.
program("LOCATE and POS", '10 cls:locate 3,20:print "x";:p=pos:locate 10,0:print p',
        "\n\n                    x\n\n\n\n\n\n\n 21")
b.check("LOCATE beyond the screen", b.command("locate 255,255:print pos;"):match("63$"), "not the last column")
command("cls")

-- Memory and ports.
program("PEEK and POKE", "10 a=767:poke a,7:poke a+1-1,peek(a)*3:print peek(a);peek(a+.9)", " 21  21")
program("OUT and IN", "10 out 3,5:x=in(88):print x", " 255")
command("out 0,&AA")
b.equal("OUT reaches the port", PortShadow[0], 0xAA)
b.command("border 1")
-- CALL: code that stores 77 and ruins the registers.
program("CALL", [[
  10 clear 48000:a=48000:for i=0 to 11:read d:poke a+i,d:next
  20 data 62,77,50,255,2,1,0,0,17,0,0,201
  30 call a:print peek(767);fre<42000]], " 77 -1")
-- The system call PAINT, in the middle of loops and a subroutine.
program("PAINT by CALL", [[
  10 clear 48000:for i=0 to 8:read d:poke 48000+i,d:next
  20 data 17,100,0,1,100,0,195,185,192
  30 graphics 4:ink 2:for i=1 to 2:gosub 100:next:graphics 2:print:print a;b;i:end
  100 while c<2:c=c+1:plot 5,5:circle 100,100,50:call 48000:a=a+point(100,100):b=b+point(5,100):wend:c=0:return]], " 8  0  3")
command("clear 49153", "Out of memory")
command("clear 49152:print fre>42000", "-1")
b.command("new")
b.check("time", tonumber(b.command("print time")) > 500, "too small")
b.done()
