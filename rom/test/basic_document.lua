-- The examples of the reference print what stands there: `line` → `rows`, rows separated by " / ". The others can be
-- typed, each keyword is in one of them, and the errors have the numbers that stand there.
local folder = arg[0]:match("^.*/") or ""
local b = dofile(folder .. "basic_machine.lua")
b.boot()

local words, examples, errors, inTable = {}, 0, 0, false
local kWaits = {LOAD = 1, SAVE = 1, VERIFY = 1, CALL = 1}    -- for a tape; there is no such routine
for line in io.lines(folder .. "../../docs/basic.md") do
  for typed, wanted in line:gmatch("`([^`]+)` → `([^`]+)`") do
    typed, wanted = typed:gsub("\\|", "|"), wanted:gsub("\\|", "|")
    b.command("new")
    local rows = {}
    for row in (b.command(typed) .. "\n"):gmatch("([^\n]*)\n") do rows[#rows + 1] = row:gsub("^ +", "") end
    b.equal(typed, table.concat(rows, " / "), wanted)
    examples = examples + 1
  end
  if line:match("^|.*| Examples? |$") then inTable = true end
  if line == "" then inTable = false end
  for example in (inTable and line:match("^|.*|([^|]+)|$") or ""):gsub("→ `[^`]+`", ""):gmatch("`([^`]+)`") do
    for word in example:gmatch("%u+%$?") do words[word:match("^FN") or word] = true end
    local first = example:match("^%u+")
    if line:find("`" .. example .. "` |", 1, true) and not kWaits[first] and not example:find("INPUT$", 1, true) then
      b.command("new")
      b.check(example, not b.command(example, 200):find("Syntax"), "can't be typed")
      b.command("\3")                                       -- AUTO is over
      b.command("graphics 2:clear 49152")
    end
  end
  local name, code = line:match("^| (%u[%w' ]+) | (%d+) | .+ |$")
  if name then
    b.equal("ERROR " .. code, b.command("error " .. code), name)
    errors = errors + 1
  end
end
b.check("number of examples", examples > 60, tostring(examples))
b.equal("number of errors with a reason", errors, 24)

-- Every keyword is in one of its tables.
local table_ = io.open(folder .. "../basic/keywords.s"):read("a")
for name in table_:gmatch("; (%u%u+%$?)\n") do b.check(name, words[name], "is in no example") end
b.done()
