// TPrint: the printer's window. What was printed stands in its text box.
#pragma once

#include "core/Form.h"

namespace quoll {

struct TPrint {
  FormState window;

  bool operator==(const TPrint&) const = default;
};

extern const Form kTPrint;

}  // namespace quoll
