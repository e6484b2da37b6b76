// Acceptance of interrupts.
#pragma once

#include "machine/Machine.h"

namespace quoll {

// Accepts the maskable interrupt. Only mode 1 exists: in the others a message is shown and the run stops
// with PC and stack as they are, interrupts disabled all the same.
void IrqEnter(Machine& m);

// Accepts the non-maskable interrupt. The request stays: only a reset clears it, so that the machine
// accepts it again after every instruction.
void NmiEnter(Machine& m);

}  // namespace quoll
