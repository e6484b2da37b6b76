// Fsaa: of the SAA1099's window so far the button that records the sound output, and the number that it shows
// at each end of a block.
#pragma once

#include <string>

#include "core/Form.h"

namespace quoll {

struct Fsaa {
  FormState window;
  std::string Label11;                // frames in the block at the last block's end
  Look Command1Look{.back = kWhite};  // "Record"; red while it records

  bool operator==(const Fsaa&) const = default;
};

extern const Form kFsaa;

}  // namespace quoll
