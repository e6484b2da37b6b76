// A machine and the literal model beside it, given the same start and compared afterwards.
#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "loop/test/oracle/LiteralMachine.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

using Dice = std::mt19937_64;

// Uniform in 0 to n - 1.
inline int32_t Roll(Dice& dice, int32_t n) { return static_cast<int32_t>(dice() % static_cast<uint64_t>(n)); }

// What may happen to both twins between two frames: decided once, applied to each.
struct Happening {
  enum Kind {
    Nothing,
    Reset,
    Nmi,
    Irq,
    CardIrq,
    CursorMoved,
    KeyPressed,
    PenMoved,
    ClockSet,
    Stop
  } kind = Nothing;
  int32_t a = 0, b = 0;
};

// Runs something that may end the program, of the machine or of the model; true when it did.
template <class Work>
bool Ends(Work work) {
  try {
    return EndsProgram(work);
  } catch (const oracle::ProgramEnd&) {
    return true;
  }
}

struct Twins {
  TestMachine machine;
  TestHost& host = machine.host;
  oracle::LiteralMachine model;
  int framesLeft = 1, modelFramesLeft = 1;  // pictures until each is stopped
  Dice happenings, modelHappenings;         // the same sequence on both sides

  Twins();
  // Random registers, ports, clocks, devices and memory; see the .cpp for how memory is filled.
  void Randomize(Dice& dice);
  // Random registers and flags alone, PC within 16 bits.
  void RandomizeCpu(Dice& dice);
  // The same byte into both memories.
  void Poke(int32_t offset, uint8_t byte);
  // One pass of each; true when it ended the program on both sides, a failure when on one.
  bool Pass();
  // Compares everything; what names the trial in a failure's message.
  void ExpectEqual(const std::string& what) const;
  // The part of it that is small enough for every pass: processor and clocks.
  void ExpectCpuEqual(const std::string& what) const;
};

}  // namespace quoll::test
