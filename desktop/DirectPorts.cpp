#include "desktop/DirectPorts.h"

#if defined(__linux__) && (defined(__x86_64__) || defined(__i386__))

#include <sys/io.h>

#include <algorithm>

namespace quoll {

bool DirectPortOut(DirectPorts& ports, uint16_t port, uint16_t value) {
  if (std::ranges::find(ports.allowed, port) == ports.allowed.end()) {
    if (ioperm(port, 1, 1) != 0) return false;
    ports.allowed.push_back(port);
  }
  outb(static_cast<uint8_t>(value), port);
  return true;
}

}  // namespace quoll

#else

namespace quoll {

bool DirectPortOut(DirectPorts& /*ports*/, uint16_t /*port*/, uint16_t /*value*/) { return false; }

}  // namespace quoll

#endif
