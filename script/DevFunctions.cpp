// The development tools: assembler, disassembler, and what has been copied.
#include <cstdint>
#include <string>
#include <string_view>

#include "devtools/CodePage.h"
#include "devtools/DisAsm.h"
#include "script/Script.h"

namespace quoll {

namespace {

constexpr int32_t kMostInstructions = 0x10000;

void SetText(lua_State* L, const char* field, const std::string& text) {
  lua_pushlstring(L, text.data(), text.size());
  lua_setfield(L, -2, field);
}

void SetInteger(lua_State* L, const char* field, lua_Integer value) {
  lua_pushinteger(L, value);
  lua_setfield(L, -2, field);
}

// A table of what the assembler's window shows after its button.
int CompileSource(lua_State* L, Script& script) {
  size_t length = 0;
  const char* source = luaL_checklstring(L, 1, &length);
  SetSource(script.machine, std::string_view(source, length));
  const bool complete = Asse_Compile(script.machine);

  const Asse& form = script.machine.asse;
  lua_createtable(L, 0, 6);
  lua_pushboolean(L, complete ? 1 : 0);
  lua_setfield(L, -2, "ok");
  SetText(L, "status", form.listing.Text13);
  if (!complete) SetInteger(L, "line", form.editor.ErrorLine);
  SetInteger(L, "AsmPC", form.listing.AsmPC);
  SetText(L, "listing", form.listing.RText2);
  const std::vector<std::string>& symbols = form.listing.List1.entries;
  lua_createtable(L, static_cast<int>(symbols.size()), 0);
  for (size_t i = 0; i < symbols.size(); ++i) {
    lua_pushlstring(L, symbols[i].data(), symbols[i].size());
    lua_rawseti(L, -2, static_cast<lua_Integer>(i) + 1);
  }
  lua_setfield(L, -2, "symbols");
  return 1;
}

int Disassemble(lua_State* L, Script& script) {
  const int32_t address = NearestInt(L, 1);
  const int32_t count = NearestInt(L, 2);
  const int32_t mode = NearestInt(L, 3);
  luaL_argcheck(L, count <= kMostInstructions, 2, "too many instructions");
  const auto read = [&script](int32_t at) { return MemRead(script.machine, at); };
  const std::string text = Utf8FromCp1250(DisAsm(read, address, count, mode));
  lua_pushlstring(L, text.data(), text.size());
  return 1;
}

int Clipboard(lua_State* L, Script& script) {
  lua_pushlstring(L, script.host.clipboard.data(), script.host.clipboard.size());
  return 1;
}

constexpr luaL_Reg kFunctions[] = {
    {"Compile", Guarded<CompileSource>}, {"DisAsm", Guarded<Disassemble>}, {"Clipboard", Guarded<Clipboard>}};

}  // namespace

void OpenDevFunctions(lua_State* L) { Register(L, kFunctions); }

}  // namespace quoll
