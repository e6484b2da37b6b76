// The frame's sound: every source in turn, mixed; and the wait that holds the machine to real time.
#pragma once

#include "machine/Machine.h"

namespace quoll {

// One frame of every source, mixed into the block.
void SoundFrame(Machine& m);

// End of a block: waits until the output has taken it, unless "Max" speed is chosen.
void SoundSync(Machine& m);

}  // namespace quoll
