// Writes to the computer's own I/O ports, where a real sound chip may sit. Only the superuser, or a process
// with CAP_SYS_RAWIO, may do that, and only some kinds of computers have such ports.
#pragma once

#include <cstdint>
#include <vector>

namespace quoll {

struct DirectPorts {
  std::vector<uint16_t> allowed;  // the system has let us write to these
};

// The low byte of the value goes out. False where that can't be done.
bool DirectPortOut(DirectPorts& ports, uint16_t port, uint16_t value);

}  // namespace quoll
