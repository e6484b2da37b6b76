// The last byte written to each port.
#pragma once

#include <array>
#include <cstdint>

namespace quoll {

using PortBytes = std::array<uint8_t, 256>;

}  // namespace quoll
