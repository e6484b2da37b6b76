#include "loop/MissingOP.h"

#include "core/Wrap.h"
#include "machine/Machine.h"

namespace quoll {

void MissingOP(Machine& m) {
  // A program can be full of such instructions: the texts are stored only when they change.
  if (m.screen.Label1 != kUnknownOpcode) m.screen.Label1 = kUnknownOpcode;
  if (m.screen.window.caption != kUnknownOpcode) m.screen.window.caption = kUnknownOpcode;
  m.z80.PrefixState = 0;
  m.z80.PC = WrappingAdd(m.z80.PC, 1);
}

}  // namespace quoll
