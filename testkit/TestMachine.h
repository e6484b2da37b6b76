// A machine for tests of its core: RAM in all four pages, no ROM files, and a host that writes down what it
// is asked for.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "machine/Memory.h"
#include "machine/Ports.h"

namespace quoll::test {

struct CoreHost : Host {
  struct Message {
    std::string text, title;
    MessageIcon icon;
    bool operator==(const Message&) const = default;
  };

  std::vector<std::string> events;  // what was called, in order
  std::vector<Message> messages;
  std::vector<std::pair<int, int>> beeps;
  uint32_t ticks = 0;       // what TickCount gives
  int64_t counter = 0;      // what PerformanceCounter gives
  int64_t frequency = 1;    // what PerformanceFrequency gives
  int frames = 0;           // frames ended so far
  int framesAllowed = 1;    // the run is stopped at the end of this one
  int stalls = 0;           // calls of Stalled so far
  int stallsAllowed = 1;    // the run is stopped at this one
  uint32_t frameTicks = 0;  // by how much the clock moves on at each frame's end

  std::function<void(Machine&)> onPump, onFrameEnded, onBlockMixed, onWait, onStalled;

  void Pump(Machine& m) override {
    events.emplace_back("Pump");
    if (onPump) onPump(m);
  }
  void Stalled(Machine& m) override {
    ++stalls;
    if (onStalled) onStalled(m);
    if (stalls >= stallsAllowed) m.run.CpuRunning = 0;
  }
  void FrameEnded(Machine& m) override {
    events.emplace_back("FrameEnded");
    if (onFrameEnded) onFrameEnded(m);
    ticks += frameTicks;
    if (++frames >= framesAllowed) m.run.CpuRunning = 0;
  }
  void WaitForBlock(Machine& m) override {
    events.emplace_back("WaitForBlock");
    if (onWait) onWait(m);
    m.mixer.NeedData = 1;
  }
  void BlockMixed(Machine& m) override {
    events.emplace_back("BlockMixed");
    if (onBlockMixed) onBlockMixed(m);
  }
  uint32_t TickCount() override {
    events.emplace_back("TickCount");
    return ticks;
  }
  int64_t PerformanceCounter() override {
    events.emplace_back("PerformanceCounter");
    return counter;
  }
  int64_t PerformanceFrequency() override { return frequency; }
  void MessageBox(std::string_view text, std::string_view title, MessageIcon icon) override {
    messages.push_back({std::string(text), std::string(title), icon});
  }
  void Beep(int hertz, int milliseconds) override { beeps.emplace_back(hertz, milliseconds); }

  int Count(std::string_view event) const {
    int count = 0;
    for (const std::string& e : events) count += e == event ? 1 : 0;
    return count;
  }
};

inline constexpr uint8_t kAllRam = 0xB0;           // port 2: U0, U1, U2, U3
inline constexpr int32_t kNoToneSoon = 100000000;  // tone counter that a test does not reach

// Processor as after power-on, RAM everywhere, no interrupt flag, tone interrupt far away.
inline std::unique_ptr<Machine> RamMachine(Host& host) {
  auto m = std::make_unique<Machine>(host);
  CpuInit(m->z80);
  m->z80.UnDocEnabled = 1;
  m->PortShadow[2] = kAllRam;
  m->PortShadow[kStatusPort] = 0xFF;
  m->crtc.CrtcRegs[10] = 0x20;
  m->run.ToneItCounter = kNoToneSoon;
  return m;
}

// Puts bytes into the image, not through the paging.
inline void Put(Machine& m, int32_t offset, std::initializer_list<int> bytes) {
  for (const int byte : bytes) m.MemImage.at(static_cast<size_t>(offset++)) = static_cast<uint8_t>(byte);
}

// A tape with a single sample to come, of this level.
inline void PutTape(Machine& m, int level) {
  m.tape.input.ahead[0] = level != 0 ? 255 : 0;
  m.tape.input.aheadCount = 1;
  m.tape.input.next = 0;
}

// A single pass.
inline void Step(Machine& m) {
  m.run.CpuRunning = 0;
  RunLoop(m);
}

// Runs until the host or the program stops it.
inline void RunOn(Machine& m) {
  m.run.CpuRunning = 1;
  RunLoop(m);
}

// Runs something that may end the program; true when it did.
template <class Work>
bool EndsProgram(Work work) {
  try {
    work();
    return false;
  } catch (const ProgramEnd&) {
    return true;
  }
}

// An empty folder that goes away with the test.
struct TempFolder {
  std::filesystem::path path;

  TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "quolltestXXXXXX").string();
    const char* made = mkdtemp(name.data());
    if (made == nullptr) throw std::runtime_error("no temporary folder");
    path = made;
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  void Write(const std::string& name, const std::vector<uint8_t>& bytes) const {
    std::ofstream file(path / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  }
};

// Bytes that differ from place to place and from salt to salt, never 0.
inline std::vector<uint8_t> RomBytes(size_t size, uint32_t salt) {
  std::vector<uint8_t> bytes(size);
  uint32_t state = salt * 2654435761U + 12345U;
  for (uint8_t& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<uint8_t>(1U + (state >> 24U) % 255U);
  }
  return bytes;
}

}  // namespace quoll::test
