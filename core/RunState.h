// The run loop's record: clocks, requests and the trail of the last instructions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quoll {

// The addresses of the last ten instructions, kept as a ring of sixteen so that a pass stores one
// word. [0] is the oldest of the ten, [9] the newest.
struct PcTrail {
  static constexpr size_t kShown = 10;
  static constexpr size_t kSlots = 16;

  std::array<int32_t, kSlots> slots{};
  size_t next = 0;  // slot that the next address takes, 0 to 15

  int32_t& operator[](size_t place) { return slots[(next + kSlots - kShown + place) % kSlots]; }
  int32_t operator[](size_t place) const { return slots[(next + kSlots - kShown + place) % kSlots]; }
  void Push(int32_t address) {
    slots[next] = address;
    next = (next + 1) % kSlots;
  }
  bool operator==(const PcTrail&) const = default;
};

struct RunState {
  uint8_t CpuRunning = 0;     // 1 = keep looping
  uint8_t BreakArmed = 0;     // 1 = the address breakpoint is tested at each pass
  int32_t Cycles = 0;         // T-states of the instruction stream, folded by 62500
  int32_t FrameClock = 0;     // T-states since the frame began
  int32_t LastCursorIrq = 0;  // FrameClock at the last cursor interrupt
  int64_t TotalCycles = 0;    // T-states run, counted in whole frames of 62500
  int32_t ToneItCounter = 0;  // T-states left until the tone interrupt
  int32_t PrevPc = 0;         // PC at the start of the instruction being run
  PcTrail PcHistory;
  int32_t ResetRequest = 0;
  int32_t NmiRequest = 0;
  uint8_t CpuError = 0;  // 1 = the processor has stopped itself by an error and has not been started since

  int64_t PerfStart = 0, PerfNow = 0, PerfFreq = 1;  // performance counter readings of the speed display

  bool operator==(const RunState&) const = default;
};

inline constexpr int32_t kFrameTStates = 62500;  // 3.125 MHz, 50 frames a second

}  // namespace quoll
