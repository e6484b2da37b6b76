// The host of all tests: it writes down what it is asked for, and stops a run that has lost its way.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Host.h"

namespace quoll::test {

struct TestHost : Host {
  struct Message {
    std::string text, title;
    MessageIcon icon;
    bool operator==(const Message&) const = default;
  };

  std::vector<std::string> events;  // what was called, in order
  std::vector<Message> messages;
  std::vector<std::pair<int, int>> beeps;  // hertz, milliseconds

  bool hasPorts = true;                               // of the computer's own
  std::vector<std::pair<uint16_t, uint16_t>> direct;  // what was written to them

  uint32_t ticks = 0;       // what TickCount gives
  uint32_t frameTicks = 0;  // by how much it moves on at each frame's end
  int64_t counter = 0;      // what PerformanceCounter gives
  int64_t frequency = 1;    // what PerformanceFrequency gives

  int frames = 0;         // frames ended so far
  int framesAllowed = 1;  // the run is stopped at the end of this one
  int stalls = 0;         // calls of Stalled so far
  int stallsAllowed = 1;  // the run is stopped at this one
  int waits = 0;          // calls of WaitForBlock so far
  int waitsNeeded = 1;    // the output takes the block at this one

  SoundFormat format{};    // that InitializeSound was asked for last
  std::string soundError;  // what it returns

  std::function<void(Machine&)> onPump, onFrameEnded, onBlockMixed, onWait, onStalled, onTicks;
  Machine* machine = nullptr;  // for onTicks, which is given none

  TestHost();
  ~TestHost() override;

  void Pump(Machine& m) override;
  void Stalled(Machine& m) override;
  void FrameEnded(Machine& m) override;
  void WaitForBlock(Machine& m) override;
  void BlockMixed(Machine& m) override;
  std::string InitializeSound(const SoundFormat& wanted) override;
  bool SoundPlay() override;
  bool SoundStop() override;
  uint32_t TickCount() override;
  int64_t PerformanceCounter() override;
  int64_t PerformanceFrequency() override { return frequency; }
  void MessageBox(std::string_view text, std::string_view title, MessageIcon icon) override;
  bool DirectOut(uint16_t port, uint16_t value) override;
  void Beep(int hertz, int milliseconds) override;

  // How often something was called.
  int Count(std::string_view event) const;
  // Makes the next run one of so many frames.
  void AllowFrames(int count) {
    frames = 0;
    framesAllowed = count;
  }

 private:
  void Note(const char* event, Machine& m, const std::function<void(Machine&)>& react);
};

}  // namespace quoll::test
