// Starting up: what every program that runs a machine does before it presses "Run".
#pragma once

#include "machine/Machine.h"

namespace quoll {

// Builds the machine in its folder, with the tape and the disk that lie there, and joins it to the companion
// of its serial card. Ends the program with a message where a ROM is missing.
void StartMachine(Machine& m);

// What is still to be written when the program ends reaches the disk.
void StopMachine(Machine& m);

}  // namespace quoll
