// A picture for tests of what shows it.
#pragma once

#include <cstdint>

#include "display/Refresh.h"

namespace quoll::test {

// A grey box on a red border whose last band is blue.
Picture GreyBox(int32_t left, int32_t top, int32_t width, int32_t height);

}  // namespace quoll::test
