// The floor beneath an interpreter: what a computed jump per instruction costs with one table read (the page
// of the program counter) and one compare (the deadline), and next to nothing else.
#pragma once

#include <cstdint>

namespace quoll::bench {

// A stand-in for the processor: just enough state for the loop mix to take the same way.
struct FloorMachine {
  const uint8_t* pages[16];  // 4 KB each
  uint8_t* memory;           // 64 KB
  uint32_t pc;
  uint32_t a, b, c, hl, bc, de, zero;
  int64_t instructions;  // run so far
};

// Runs the loop mix until the T-states are used up.
void RunFloor(FloorMachine& m, int32_t tStates);

}  // namespace quoll::bench
