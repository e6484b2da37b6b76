package.path = arg[0]:match("^(.*/)") .. "?.lua;" .. package.path
local check = require "check"

-- Exit status and standard error of quollrun itself. arg: quollrun, folder of the ROMs, folder for files.
local program, roms, folder = arg[1], arg[2], arg[3]

local function quote(text) return "'" .. text:gsub("'", "'\\''") .. "'" end

local function write(name, text)
  local file = assert(io.open(folder .. "/" .. name, "wb"))
  file:write(text)
  file:close()
  return folder .. "/" .. name
end

local function read(name)
  local file = assert(io.open(folder .. "/" .. name, "rb"))
  local text = file:read("a")
  file:close()
  return text
end

-- Runs quollrun; returns status, standard output, standard error.
local function run(...)
  local command = {quote(program)}
  for _, argument in ipairs({...}) do command[#command + 1] = quote(argument) end
  local outputs = " >" .. quote(folder .. "/out") .. " 2>" .. quote(folder .. "/err")
  local line = table.concat(command, " ") .. outputs
  local _, how, status = os.execute(line)
  check.equal(how, "exit", line)
  return status, read("out"), read("err")
end

local function runScript(text, ...) return run("--folder", roms, write("script.lua", text), ...) end

local function has(text, part) check.is(text:find(part, 1, true), "no '" .. part .. "' in: " .. text) end

-- All well.
local status, out, err =
  runScript("print('hello', #arg, arg[0]:match('[^/]*$'), arg[1], arg[2])", "one", "--folder")
check.equal(status, 0, "status")
check.equal(out, "hello\t2\tscript.lua\tone\t--folder\n", "output")
check.equal(err, "", "error output")

-- The script's own errors: message and traceback.
status, out, err = runScript("print('before')\nlocal function f()\n  error('oh dear')\nend\nf()\n")
check.equal(status, 1, "status of an error")
check.equal(out, "before\n", "output of an error")
has(err, "script.lua:3: oh dear")
has(err, "stack traceback:")
has(err, "script.lua:5: in main chunk")
status, _, err = runScript("OnFrame(function()\n  error('at the end')\nend)\nFrames(1)\n")
check.equal(status, 1, "status of an error at a frame end")
has(err, "script.lua:2: at the end")
has(err, "script.lua:2: in function <")  -- where it came up
has(err, "script.lua:4: in main chunk")  -- and who ran the machine
status, _, err = runScript("error({})")
check.equal(status, 1, "status of a table")
has(err, "table: ")
status, _, err = runScript("error(nil)")
check.equal(status, 1, "status of nil")
has(err, "nil")
status, _, err = runScript("error(setmetatable({}, {__tostring = function() return 'my own text' end}))")
check.equal(status, 1, "status of an object")
has(err, "my own text")
status, _, err = runScript("x = = 1")
check.equal(status, 1, "status of bad syntax")
has(err, "script.lua:1:")
status, _, err = runScript(string.dump(function() end))
check.equal(status, 1, "status of a compiled script")
has(err, "binary chunk")

-- The end of the program, with the message that led to it.
status, _, err = runScript("Z80State.PrefixState = 5\nStep()")
check.equal(status, 1, "status of a program end")
has(err, "program ended")
has(err, "CPU ERROR!: 5=Unknown prefix")
has(err, "script.lua:2: in main chunk")
status, out, err = runScript("Z80State.PrefixState = 5\nprint(pcall(Step))")
check.equal(status, 0, "status of a program end caught")
check.equal(out, "false\tprogram ended\n", "a program end caught")
check.equal(err, "", "a program end caught")
status = runScript("os.exit(7)")
check.equal(status, 7, "os.exit")

-- Errors inside a frame-end function.
status, _, err = runScript("OnFrame(function() error('in the frame') end)\nFrames(1)")
check.equal(status, 1, "status of a frame-end function")
has(err, "script.lua:1: in the frame")

-- Usage.
local script = write("script.lua", "print('hello')")
for _, arguments in ipairs({{}, {"--folder"}, {"--folder", roms}, {"--nonsense", script}, {"--nonsense"}}) do
  status, out, err = run(table.unpack(arguments))
  check.equal(status, 2, "status of bad usage " .. table.concat(arguments, " "))
  check.equal(out, "", "output of bad usage")
  has(err, "usage: quollrun [--folder DIR] script.lua [argument ...]")
end
for _, name in ipairs({folder .. "/no-such-script.lua", folder}) do
  status, out, err = run("--folder", roms, name)
  check.equal(status, 2, "status of an unreadable script")
  check.equal(out, "", "output of an unreadable script")
  has(err, name)
end

-- ROMs: not in that folder, and not in a folder that isn't there.
for _, name in ipairs({folder, folder .. "/no-such-folder"}) do
  status, out, err = run("--folder", name, script)
  check.equal(status, 1, "status of a missing ROM")
  check.equal(out, "", "output of a missing ROM")
  has(err, "Error: Rom File error: ")
end
-- A ROM that goes missing later ends the program only.
status, out, err = runScript("print(pcall(Click, 'xBasic'))\nprint(Messages()[1].text)")
check.equal(status, 0, "status of a version without ROMs")
check.equal(out, "false\tprogram ended\nRom File error: \n", "a version without ROMs")

-- Two runs of a program give the same to the last bit; another seed gives another one.
local dir = arg[0]:match("^(.*/)")
local realRoms = arg[4]
local function result(...)
  local code, text, errors = run("--folder", realRoms, dir .. "repeat.lua", ...)
  check.equal(code, 0, "repeat.lua: " .. errors)
  return text
end
local once = result()
check.equal(result(), once, "a run repeated")
check.is(result("5") ~= once, "another seed")
check.equal(result("5"), result("5"), "another seed repeated")
