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
  TestMachine();
  TestMachine(TestMachine&& other) noexcept;
  ~TestMachine();
  Machine* operator->() const;
  Machine& operator*() const;

 private:
  struct Both;
  std::unique_ptr<Both> both;

 public:
  TestHost& host;
};

// A second machine like this one, with the same host.
std::unique_ptr<Machine> CopyOf(const Machine& m);

// Puts bytes into the image, not through the paging.
void Put(Machine& m, int32_t offset, std::initializer_list<int> bytes);
// The same, and the processor goes on there.
void Program(Machine& m, int32_t offset, std::initializer_list<int> bytes);

// The word in the image.
int32_t Word(const Machine& m, int32_t offset);

// How often the Z80 monitor was asked to follow the machine.
uint32_t Redraws(const Machine& m);

// A tape with a single sample to come, of this level.
void PutTape(Machine& m, int level);

// Single passes.
void Step(Machine& m, int passes = 1);

// Runs until the host or the program stops it.
void RunOn(Machine& m);

// In a run, which the program stops, or in so many single passes: the outcome has to be the same.
void RunOrStep(Machine& m, bool inARun, int passes);

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
