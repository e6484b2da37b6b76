#include "forms/PicD.h"

#include "display/Keyboard.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr int32_t kF1 = 0x70;
constexpr int32_t kF2 = 0x71;

}  // namespace

void picd_KeyDown(Machine& m, int32_t& keyCode, int32_t shift) {
  m.tools.Text1 = std::to_string(keyCode);
  if (shift == kAltKey) return;  // the host's own: menus, Alt+F4. Alt with Shift or Ctrl is the machine's.
  const int32_t pressed = keyCode;
  keyCode = 0;
  KeyboardPress(m.keyboard, pressed, true);
  if (pressed == kF1) xReset_Click(m);
  if (pressed == kF2) xReset2_Click(m);
}

// No filter on Alt: a key that went down without it and comes up with it must not stay pressed.
void picd_KeyUp(Machine& m, int32_t keyCode) { KeyboardPress(m.keyboard, keyCode, false); }

}  // namespace quoll
