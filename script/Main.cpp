// quollrun: one Lua script with one machine, no window and no sound device.
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <memory>

#include "loop/RunLoop.h"
#include "loop/Start.h"
#include "script/Script.h"

namespace quoll {

namespace {

constexpr int kOk = 0;
constexpr int kScriptError = 1;
constexpr int kBadUsage = 2;

struct CommandLine {
  const char* folder = nullptr;  // nullptr: that of the executable
  int script = 0;                // place of the script's name among the arguments, 0 for none
};

CommandLine ReadCommandLine(int argc, char** argv) {
  CommandLine line;
  int place = 1;
  for (; place < argc && std::strncmp(argv[place], "--", 2) == 0; place += 2) {
    if (std::strcmp(argv[place], "--folder") != 0 || place + 1 >= argc) return line;
    line.folder = argv[place + 1];
  }
  if (place < argc) line.script = place;
  return line;
}

std::string ExecutableFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}

void PrintMessages(const ScriptHost& host) {
  for (const Message& message : host.messages) {
    std::fprintf(stderr, "quollrun: %s: %s\n", message.title.c_str(), message.text.c_str());
  }
}

// The machine as it stands when the desktop program presses "Run". False when it can't be built.
bool BuildMachine(Script& script) {
  try {
    StartMachine(script.machine);
    // A frame's time lies between the mark and the first frame end, as between any two.
    SpeedMark(script.machine);
    script.host.PassFrame();
    script.host.BeginTimers();
    return true;
  } catch (const ProgramEnd&) {
    PrintMessages(script.host);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "quollrun: %s\n", e.what());
  }
  return false;
}

int AddTraceback(lua_State* L) {
  const char* message = lua_tostring(L, 1);
  if (message == nullptr) message = luaL_tolstring(L, 1, nullptr);
  luaL_traceback(L, L, message, 1);
  return 1;
}

void PushArguments(lua_State* L, int argc, char** argv, int script) {
  lua_createtable(L, argc - script, 0);
  for (int i = script; i < argc; i++) {
    lua_pushstring(L, argv[i]);
    lua_rawseti(L, -2, i - script);
  }
  lua_setglobal(L, "arg");
}

// Says what is on the stack's top.
int Fail(lua_State* L, int status) {
  const char* message = lua_tostring(L, -1);
  std::fprintf(stderr, "quollrun: %s\n", message != nullptr ? message : "error without a text");
  return status;
}

int RunScript(lua_State* L, Script& script, int argc, char** argv, int scriptPlace) {
  lua_pushcfunction(L, OpenScript);
  lua_pushlightuserdata(L, &script);
  if (lua_pcall(L, 1, 0, 0) != LUA_OK) return Fail(L, kScriptError);
  PushArguments(L, argc, argv, scriptPlace);

  lua_pushcfunction(L, AddTraceback);
  const int loaded = luaL_loadfilex(L, argv[scriptPlace], "t");
  if (loaded != LUA_OK) return Fail(L, loaded == LUA_ERRFILE ? kBadUsage : kScriptError);
  if (!BuildMachine(script)) return kScriptError;
  if (lua_pcall(L, 0, 0, -2) != LUA_OK) {
    PrintMessages(script.host);
    if (!script.host.callbackTrace.empty())
      std::fprintf(stderr, "quollrun: last error at a frame end: %s\n", script.host.callbackTrace.c_str());
    return Fail(L, kScriptError);
  }
  return kOk;
}

int Run(int argc, char** argv) {
  const CommandLine line = ReadCommandLine(argc, argv);
  if (line.script == 0) {
    std::fprintf(stderr, "usage: quollrun [--folder DIR] script.lua [argument ...]\n");
    return kBadUsage;
  }
  const auto script = std::make_unique<Script>();
  script->machine.programFolder = line.folder != nullptr ? line.folder : ExecutableFolder();
  lua_State* L = luaL_newstate();
  if (L == nullptr) {
    std::fprintf(stderr, "quollrun: not enough memory\n");
    return kScriptError;
  }
  const int status = RunScript(L, *script, argc, argv, line.script);
  StopMachine(script->machine);
  lua_close(L);
  return status;
}

}  // namespace

}  // namespace quoll

int main(int argc, char** argv) { return quoll::Run(argc, argv); }
