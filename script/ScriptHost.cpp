#include "script/ScriptHost.h"

#include "forms/Forms.h"
#include "machine/Machine.h"
#include "script/PictureFiles.h"

namespace quoll {

namespace {

constexpr int64_t kSecond = 1'000'000'000;
constexpr int64_t kMillisecond = kSecond / 1000;
constexpr int64_t kFrameTime = 20 * kMillisecond;

// Where in the function an error came up is lost when the error is raised again, so it is noted now. The
// error passes as it is.
int NoteTraceback(lua_State* L) {
  auto& note = *static_cast<std::string*>(lua_touserdata(L, lua_upvalueindex(1)));
  luaL_traceback(L, L, nullptr, 1);
  note = lua_tostring(L, -1);
  lua_pop(L, 1);
  return 1;
}

}  // namespace

void ScriptHost::FrameEnded(Machine& m) {
  frames++;
  PassFrame();
  RunTimers(m, timers, Now() / kMillisecond);
  if (callback != LUA_NOREF && callbackError == LUA_NOREF) CallBack();
  // After the function, so that it can end a run but not prolong it.
  if (frames >= stopAt || callbackError != LUA_NOREF) m.run.CpuRunning = 0;
}

void ScriptHost::CallBack() {
  lua_pushlightuserdata(callbackThread, &callbackTrace);
  lua_pushcclosure(callbackThread, NoteTraceback, 1);
  lua_rawgeti(callbackThread, LUA_REGISTRYINDEX, callback);
  // An error must not leap over the engine's frames: it is raised again when they are gone.
  if (lua_pcall(callbackThread, 0, 0, -2) != LUA_OK)
    callbackError = luaL_ref(callbackThread, LUA_REGISTRYINDEX);
  lua_pop(callbackThread, 1);
}

void ScriptHost::WaitForBlock(Machine& m) { m.mixer.NeedData = 1; }

void ScriptHost::BlockMixed(Machine& m) {
  sound.insert(sound.end(), m.mixer.BlockBuffer.begin(), m.mixer.BlockBuffer.end());
}

uint32_t ScriptHost::TickCount() { return static_cast<uint32_t>(Now() / kMillisecond); }
int64_t ScriptHost::PerformanceCounter() { return Now(); }
int64_t ScriptHost::PerformanceFrequency() { return kSecond; }

void ScriptHost::MessageBox(std::string_view text, std::string_view title, MessageIcon /*icon*/) {
  messages.push_back({std::string(text), std::string(title)});
}

std::span<uint8_t> ScriptHost::SerialRecord() { return quoll::SerialRecord(links); }

bool ScriptHost::CallCompanion(CompanionCall call, const std::string& folder) {
  return !linked || quoll::CallCompanion(links, call, folder);
}

std::vector<std::string> ScriptHost::Printers() { return {std::string(kPrinter)}; }

std::string ScriptHost::Print(const std::string& printer, std::string_view text) {
  jobs.push_back({printer, std::string(text)});
  return {};
}

bool ScriptHost::LoadPicture(const std::string& file, PixelImage& picture) {
  return ReadPicture(file, picture);
}

void ScriptHost::UseRealClock(bool real) {
  virtualNow = Now();
  realStart = std::chrono::steady_clock::now();
  realClock = real;
}

void ScriptHost::BeginTimers() { timers = StartTimers(Forms(), Now() / kMillisecond); }

void ScriptHost::PassFrame() {
  if (!realClock) virtualNow += kFrameTime;
}

int64_t ScriptHost::Now() const {
  if (!realClock) return virtualNow;
  const auto passed = std::chrono::steady_clock::now() - realStart;
  return virtualNow + std::chrono::duration_cast<std::chrono::nanoseconds>(passed).count();
}

}  // namespace quoll
