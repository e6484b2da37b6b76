// The parallel printer: a data latch at port 1, a strobe in bit 7 of port 6, and the window that
// gathers what is printed.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "core/Form.h"

namespace quoll {

struct TPrint {
  std::string Text1;  // what was printed, one byte a character in the printer's code page

  bool operator==(const TPrint&) const = default;
};

// Translates a byte of the machine's character set to the printer's code page and appends it.
void Senddata(TPrint& printer, uint8_t byte);

std::span<const Control> TPrintControls();

}  // namespace quoll
