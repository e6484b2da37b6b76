// The machine of the fuzzers and its host.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"

namespace quoll {

// Stops the machine after some frames, and when a program without T-states would go on for ever.
struct FuzzHost : Host {
  int framesLeft = 1;
  int framesForAPicture = 1;  // every how many one is drawn
  int64_t frames = 0;
  uint32_t ticks = 20;
  uint32_t TickCount() override { return ticks; }
  void FrameEnded(Machine& m) override {
    ++frames;
    if (frames % framesForAPicture == 0) ticks += 20;
    if (--framesLeft <= 0) m.run.CpuRunning = 0;
  }
  void Stalled(Machine& m) override { m.run.CpuRunning = 0; }
};

// As after a reset, without ROMs and where no file is found.
inline std::unique_ptr<Machine> FuzzMachine(Host& host) {
  auto m = std::make_unique<Machine>(host);
  m->programFolder = "/nonexistent";
  CpuInit(m->z80);
  MachineReset(*m);
  return m;
}

// Runs until the host stops it; false when the program has ended the machine, by a write into a card's
// window: the stated end.
inline bool RunFuzzed(Machine& m) {
  m.run.CpuRunning = 1;
  try {
    RunLoop(m);
  } catch (const ProgramEnd&) {
    return false;
  }
  return true;
}

// Aborts unless the memory from first to end is all zeros, as it was before.
inline void CheckZeros(const Machine& m, size_t first, size_t end) {
  static const std::vector<uint8_t> zeros(kMemImageSize);
  if (std::memcmp(m.MemImage.data() + first, zeros.data(), end - first) != 0) std::abort();
}

}  // namespace quoll
