// The tape deck's lines into the machine.
#pragma once

#include <cstdint>

namespace quoll {

struct Tape {
  int32_t Level = 0;  // input level, 0 or 1, read as bit 5 of port 0x59

  bool operator==(const Tape&) const = default;
};

}  // namespace quoll
