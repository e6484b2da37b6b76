// The run loop: instructions, clocks, requests, interrupts and the end of each frame.
#pragma once

#include <cstdint>

#include "machine/Machine.h"

namespace quoll {

// Runs until run.CpuRunning is not 1 at the end of a pass; called with it 0 it performs exactly one pass.
// May be entered again from a handler inside Host::Pump.
void RunLoop(Machine& m);

// Hundred-thousandths of a second since SpeedMark, rounded; 2000 at full speed.
int32_t FrameTimeValue(Machine& m);
// Starts the measurement of a frame.
void SpeedMark(Machine& m);

}  // namespace quoll
