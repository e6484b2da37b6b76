// What the cards have outside the machine: the shared memories, the companion program, the printer.
#include <stdexcept>
#include <string>
#include <vector>

#include "script/Script.h"

namespace quoll {

namespace {

// Makes the shared memories, the serial card's under the name given. Nothing here may raise a Lua error while
// one of the C++ texts is alive.
int ShareMemory(lua_State* L, Script& script) {
  CardLinks& links = script.host.links;
  const char* name = luaL_optstring(L, 1, links.serialName.c_str());
  if (script.host.linked && links.serialName != name)
    Refuse(L, "the shared memory is '%s' already", links.serialName.c_str());
  links.serialName = name;
  script.host.linked = true;
  if (const std::string error = CreateMaps(links); !error.empty()) throw std::runtime_error(error);
  return 0;
}

// Starts the companion of the program folder for the script's shared memory, with these arguments. Returns
// its process number.
int StartCompanion(lua_State* L, Script& script) {
  if (!script.host.linked) Refuse(L, "ask for SharedMemory first");
  const int count = lua_gettop(L);
  for (int i = 1; i <= count; ++i) luaL_checkstring(L, i);
  std::vector<std::string> arguments;
  for (int i = 1; i <= count; ++i) arguments.emplace_back(lua_tostring(L, i));
  CardLinks& links = script.host.links;
  const std::string error = links.companion.Start(script.machine.programFolder, links.serialName, arguments);
  if (!error.empty()) throw std::runtime_error(error);
  lua_pushinteger(L, links.companion.process);
  return 1;
}

int CompanionIsThere(lua_State* L, Script& script) {
  lua_pushboolean(L, script.host.linked && CompanionRuns(script.host.links.serialName) ? 1 : 0);
  return 1;
}

void PushField(lua_State* L, const char* name, const std::string& text) {
  lua_pushlstring(L, text.data(), text.size());
  lua_setfield(L, -2, name);
}

int TakePrintJobs(lua_State* L, Script& script) {
  lua_createtable(L, static_cast<int>(script.host.jobs.size()), 0);
  lua_Integer place = 1;
  for (const PrintJob& job : script.host.jobs) {
    lua_createtable(L, 0, 2);
    PushField(L, "printer", job.printer);
    PushField(L, "text", job.text);
    lua_rawseti(L, -2, place++);
  }
  script.host.jobs.clear();
  return 1;
}

constexpr luaL_Reg kFunctions[] = {{"SharedMemory", Guarded<ShareMemory>},
                                   {"Companion", Guarded<StartCompanion>},
                                   {"CompanionRuns", Guarded<CompanionIsThere>},
                                   {"PrintJobs", Guarded<TakePrintJobs>}};

}  // namespace

void OpenCards(lua_State* L) { Register(L, kFunctions); }

}  // namespace quoll
