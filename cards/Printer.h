// The parallel printer: a data latch at port 1 and a strobe in bit 7 of port 6.
#pragma once

#include <cstdint>
#include <string>

namespace quoll {

struct Printer {
  std::string printed;  // what was printed, one byte a character in the printer's code page

  bool operator==(const Printer&) const = default;
};

// Translates a byte of the machine's character set to the printer's code page and appends it.
void Senddata(Printer& printer, uint8_t byte);

}  // namespace quoll
