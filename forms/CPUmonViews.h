// The texts of the Z80 monitor.
#pragma once

#include <cstdint>
#include <string>

namespace quoll {

struct Machine;

// Registers, flags, views, bars and lamps from the machine, which stays as it is: no read has a side effect.
void CPUmon_ShowState(Machine& m);

// The first address of a view by its box, decimal: 0 to 0xFFFF, the nearer end for what lies outside.
int32_t CPUmon_ViewAddress(const std::string& text);

// The ten last instructions into Picture4, oldest first.
void PrintLastOPS(Machine& m);

}  // namespace quoll
