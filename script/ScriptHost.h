// The world of a machine that a script runs: a clock that counts frames, a user who reads every message
// box at once, a sound output that takes every block at once.
#pragma once

#include <chrono>
#include <cstdint>
#include <limits>
#include <lua.hpp>
#include <string>
#include <vector>

#include "cards/CardLinks.h"
#include "core/FormTimers.h"
#include "core/Host.h"

namespace quoll {

struct Message {
  std::string text;
  std::string title;
};

// What was sent to a printer.
struct PrintJob {
  std::string printer;
  std::string text;  // UTF-8
};

struct ScriptHost final : Host {
  static constexpr std::string_view kPrinter = "Script";  // takes what is printed for PrintJobs

  static constexpr int64_t kNever = std::numeric_limits<int64_t>::max();

  void FrameEnded(Machine& m) override;
  void WaitForBlock(Machine& m) override;
  void BlockMixed(Machine& m) override;
  uint32_t TickCount() override;
  int64_t PerformanceCounter() override;
  int64_t PerformanceFrequency() override;
  void MessageBox(std::string_view text, std::string_view title, MessageIcon icon) override;
  // Nothing is shared and nobody is called before the script asks for it.
  std::span<uint8_t> SerialRecord() override;
  bool CallCompanion(CompanionCall call, const std::string& folder) override;
  std::vector<std::string> Printers() override;
  std::string Print(const std::string& printer, std::string_view text) override;
  void SetClipboard(std::string_view text) override { clipboard = text; }
  bool LoadPicture(const std::string& file, PixelImage& picture) override;

  // Lets the machine see the real clock, or the one that frames move. Time goes on from where it is.
  void UseRealClock(bool real);
  // Begins the clock of the forms' timers, which tick at frame ends.
  void BeginTimers();
  // Moves the virtual clock on by one frame; the real one is not to be moved.
  void PassFrame();

  int64_t frames = 0;       // frame ends seen
  int64_t stopAt = kNever;  // the machine is stopped when this many have been seen

  std::string clipboard;          // what the machine's windows have copied last
  std::vector<Message> messages;  // boxes not yet asked for by the script
  std::vector<PrintJob> jobs;     // the same for what was printed

  CardLinks links;
  bool linked = false;  // the script has asked for the shared memories

  std::vector<uint8_t> sound;  // every block mixed since the start
  size_t soundTaken = 0;       // bytes of it that the script has had

  // The script's function for frame ends runs on a Lua thread of its own, whoever entered the engine.
  // What goes wrong in it is kept as a registry reference until the engine has been left.
  lua_State* callbackThread = nullptr;
  int callback = LUA_NOREF;
  int callbackError = LUA_NOREF;
  std::string callbackTrace;  // traceback of the last error in it

 private:
  void CallBack();
  int64_t Now() const;  // nanoseconds

  FormTimers timers;
  bool realClock = false;
  int64_t virtualNow = int64_t{1'000'000'000};  // nanoseconds; while the clock is real, where it started
  std::chrono::steady_clock::time_point realStart;
};

}  // namespace quoll
