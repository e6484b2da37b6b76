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

// Ports 0x36 and 0x37: puts page 0 to 3 of "sndmx.rom" into the window of I/O card 2. The file is read at
// each call: that is how the card's page register works. Without the file the window stays as it is.
void SelectSoundRomPage(Machine& m, int32_t page);

}  // namespace quoll
