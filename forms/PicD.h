// PicD: the picture box of the main window, as far as it takes the user's keys.
#pragma once

#include <cstdint>

namespace quoll {

struct Machine;

// A key event of the picture box, shown by its code in the tools window. Sets keyCode to 0 when the key is
// used up, which also an unwired one is; leaves it when the host shall act on it (Alt alone with the key). F1
// and F2 reset the machine.
void picd_KeyDown(Machine& m, int32_t& keyCode, int32_t shift);
void picd_KeyUp(Machine& m, int32_t keyCode);

}  // namespace quoll
