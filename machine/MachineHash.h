// One number for all that a machine is in.
#pragma once

#include <cstdint>

namespace quoll {

struct MachineState;

// Equal for equal machines and, but for chance, different for others. What windows look like and what scopes
// have drawn does not count: a run gives the same with windows open and closed.
uint64_t MachineHash(const MachineState& state);

}  // namespace quoll
