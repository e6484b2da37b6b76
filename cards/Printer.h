// The parallel printer: a data latch at port 1 and a strobe in bit 7 of port 6.
#pragma once

#include <cstdint>
#include <string>

namespace quoll {

struct Printer {
  std::string printed;      // what was printed, one byte a character in the printer's code page
  uint32_t beginnings = 0;  // how often the text began anew: between two changes it only grows

  bool operator==(const Printer&) const = default;
};

// Translates a byte of the machine's character set to the printer's code page and appends it.
void Senddata(Printer& printer, uint8_t byte);

// Takes what was printed away.
void ClearPrinted(Printer& printer);

}  // namespace quoll
