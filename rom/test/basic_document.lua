-- The examples of the reference print what stands there: `line` → `rows`, rows separated by " / ".
local folder = arg[0]:match("^.*/") or ""
local b = dofile(folder .. "basic_machine.lua")
b.boot()

local words, examples = {}, 0
for line in io.lines(folder .. "../../docs/basic.md") do
  for typed, wanted in line:gmatch("`([^`]+)` → `([^`]+)`") do
    typed, wanted = typed:gsub("\\|", "|"), wanted:gsub("\\|", "|")
    b.command("new")
    local rows = {}
    for row in (b.command(typed) .. "\n"):gmatch("([^\n]*)\n") do rows[#rows + 1] = row:gsub("^ +", "") end
    b.equal(typed, table.concat(rows, " / "), wanted)
    examples = examples + 1
  end
  if line:match("^|") then
    for word in line:gsub("[^%w$`]", " "):gmatch("%u%u+%$?") do words[word] = true end
  end
end
b.check("number of examples", examples > 60, tostring(examples))

-- Every keyword is in one of its tables.
local table_ = io.open(folder .. "../basic/keywords.s"):read("a")
for name in table_:gmatch("; (%u%u+%$?)\n") do b.check(name, words[name], "is in no table") end
b.done()
