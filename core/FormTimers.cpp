#include "core/FormTimers.h"

#include <algorithm>
#include <limits>

namespace quoll {

FormTimers StartTimers(std::span<const Form* const> forms, int64_t now) {
  FormTimers timers;
  for (const Form* form : forms) {
    for (const Control& control : form->controls) {
      if (control.kind == ControlKind::Timer)
        timers.lines.push_back({&control, now + control.period.count()});
    }
  }
  return timers;
}

void RunTimers(Machine& m, FormTimers& timers, int64_t now) {
  for (FormTimers::Line& line : timers.lines) {
    if (now < line.due) continue;
    const int64_t period = std::max<int64_t>(1, line.control->period.count());
    line.due += ((now - line.due) / period + 1) * period;  // the next one that lies ahead
    line.control->timer(m, 0);
  }
}

int64_t NextTimer(const FormTimers& timers) {
  int64_t next = std::numeric_limits<int64_t>::max();
  for (const FormTimers::Line& line : timers.lines) next = std::min(next, line.due);
  return next;
}

}  // namespace quoll
