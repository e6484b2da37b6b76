// Building the machine from its ROM files, and its reset.
#pragma once

#include <cstdint>

namespace quoll {

struct Machine;

// Builds the machine from nothing by the menu's settings: memory cleared, ROMs and cartridge loaded from
// the program folder. Ends the program with a message when a file is missing.
void MachineInit(Machine& m);

// Brings processor and devices to their power-on state. Memory stays.
void MachineReset(Machine& m);

// The processor's part of a reset: registers as after CpuInit, requests and lines cleared, 3 T-states.
void CpuReset(Machine& m);

// A change of the machine's build, a card or a cartridge: MachineInit, then MachineReset.
void RebuildMachine(Machine& m);

}  // namespace quoll
