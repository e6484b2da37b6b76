// The tools window's record.
#pragma once

#include <span>
#include <string>

#include "core/Form.h"

namespace quoll {

struct TTools {
  std::string Text1;  // code of the last host key, decimal: serves for finding a key

  bool operator==(const TTools&) const = default;
};

std::span<const Control> TToolsControls();

}  // namespace quoll
