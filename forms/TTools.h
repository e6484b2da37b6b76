// The tools window's record.
#pragma once

#include <string>

#include "core/Form.h"

namespace quoll {

struct TTools {
  FormState window;
  std::string Text1;  // code of the last host key, decimal: serves for finding a key

  bool operator==(const TTools&) const = default;
};

extern const Form kTTools;

}  // namespace quoll
