// A machine for tests, and what they do with it.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>

#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "machine/Memory.h"
#include "machine/Ports.h"
#include "testkit/TestHost.h"

namespace quoll::test {

inline constexpr uint8_t kAllRam = 0xB0;           // port 2: U0, U1, U2, U3
inline constexpr int32_t kNoToneSoon = 100000000;  // tone counter that a test does not reach

// A machine with a host of its own, used like a pointer to it: the processor as after power-on, RAM in all
// four pages, no ROM files, no interrupt flag, the tone interrupt far away.
struct TestMachine {
  TestMachine() {
    Machine& m = **this;
    host.machine = &m;
    CpuInit(m.z80);
    SoundCardInit(m.card);
    m.z80.UnDocEnabled = 1;
    m.PortShadow[2] = kAllRam;
    m.PortShadow[kStatusPort] = 0xFF;
    m.crtc.CrtcRegs[10] = 0x20;
    m.run.ToneItCounter = kNoToneSoon;
  }
  Machine* operator->() const { return &both->machine; }
  Machine& operator*() const { return both->machine; }

 private:
  struct Both {
    TestHost host;
    Machine machine{host};
  };
  std::unique_ptr<Both> both = std::make_unique<Both>();

 public:
  TestHost& host = both->host;
};

// A second machine like this one, with the same host.
inline std::unique_ptr<Machine> CopyOf(const Machine& m) { return std::make_unique<Machine>(m); }

// Puts bytes into the image, not through the paging.
inline void Put(Machine& m, int32_t offset, std::initializer_list<int> bytes) {
  for (const int byte : bytes) m.MemImage.at(static_cast<size_t>(offset++)) = static_cast<uint8_t>(byte);
}
// The same, and the processor goes on there.
inline void Program(Machine& m, int32_t offset, std::initializer_list<int> bytes) {
  m.z80.PC = offset;
  Put(m, offset, bytes);
}

// The word in the image.
inline int32_t Word(const Machine& m, int32_t offset) {
  const auto at = static_cast<size_t>(offset);
  return m.MemImage.at(at) + 256 * m.MemImage.at(at + 1);
}

// How often the Z80 monitor was asked to follow the machine.
inline uint32_t Redraws(const Machine& m) { return m.cpumon.shown.redraws - CPUmonShown().redraws; }

// A tape with a single sample to come, of this level.
inline void PutTape(Machine& m, int level) {
  m.tape.input.ahead[0] = level != 0 ? 255 : 0;
  m.tape.input.aheadCount = 1;
  m.tape.input.next = 0;
}

// Single passes.
inline void Step(Machine& m, int passes = 1) {
  for (; passes > 0; --passes) {
    m.run.CpuRunning = 0;
    RunLoop(m);
  }
}

// Runs until the host or the program stops it.
inline void RunOn(Machine& m) {
  m.run.CpuRunning = 1;
  RunLoop(m);
}

// In a run, which the program stops, or in so many single passes: the outcome has to be the same.
inline void RunOrStep(Machine& m, bool inARun, int passes) {
  if (inARun) {
    RunOn(m);
  } else {
    Step(m, passes);
  }
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

}  // namespace quoll::test
