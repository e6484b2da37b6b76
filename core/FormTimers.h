// The clock of all forms' timers. The desktop program runs it by the host's clock, quollrun and the tests by
// virtual time; forms need not be shown.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/Form.h"

namespace quoll {

struct FormTimers {
  struct Line {
    const Control* control;
    int64_t due;  // milliseconds of the clock
  };
  std::vector<Line> lines;
};

// All timers of these forms, first due one period after now.
FormTimers StartTimers(std::span<const Form* const> forms, int64_t now);

// Runs the handlers that are due, each once: ticks that were missed are not made up for. A handler may run
// the machine, and that this function again.
void RunTimers(Machine& m, FormTimers& timers, int64_t now);

// When the next timer is due, in milliseconds of the clock; the highest number where there is none.
int64_t NextTimer(const FormTimers& timers);

}  // namespace quoll
