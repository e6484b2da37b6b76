// The fixture of the plain model's own tests.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <tuple>
#include <utility>

#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

constexpr int32_t kCode = 0x1000;

// All four pages are plain RAM, and neither the tone counter nor the cursor interferes.
class LiteralMachineTest : public ::testing::Test {
 protected:
  LiteralMachineTest() {
    m.MachineReset();
    m.Cycles = 0;
    m.PortShadow[2] = 0xB0;
    m.ToneItCounter = 1000000;
    m.SP = 0x9000;
    m.SetFlagByte(0);
  }

  void Poke(int32_t address, std::initializer_list<int32_t> bytes) {
    for (int32_t byte : bytes) {
      m.MemImage[static_cast<size_t>(address)] = static_cast<uint8_t>(byte);
      address++;
    }
  }

  int32_t Peek(int32_t address) const { return m.MemImage[static_cast<size_t>(address)]; }

  // Runs one instruction at kCode and gives its T-states.
  int32_t Run(std::initializer_list<int32_t> bytes) {
    Poke(kCode, bytes);
    m.PC = kCode;
    m.R = 0;
    return Again();
  }

  int32_t Again() {
    int32_t before = m.Cycles;
    m.Pass();
    return m.Cycles - before;
  }

  int32_t Out(int32_t port, int32_t value) {
    m.PortOut(port, value);
    return value;
  }

  LiteralMachine m;
};

}  // namespace oracle
