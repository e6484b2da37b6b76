// A text as key presses, so that any program of the machine takes it for typing. The machine sets the pace:
// the next key comes when the last one has been taken, so that nothing is lost, however long a line needs to
// be worked on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "typing/Keys.h"

namespace quoll {

struct Machine;

struct Paste {
  std::vector<TypedKey> keys;
  size_t next = 0;        // key to come, or the one that is down
  bool down = false;      // it is
  int32_t frames = 0;     // since that last changed
  int32_t queued = 0;     // keys in the system's queue when it went down
  bool hasQueue = false;  // the system ROM is the one whose queue is known
};

// The text with what a keyboard can't give replaced by the nearest that it can: all line ends become Enter,
// tabs blanks, typographic signs plain ones, letters lose accents that no key has. What is left out is
// counted.
struct PasteText {
  std::vector<TypedKey> keys;
  size_t leftOut = 0;  // characters
};
PasteText KeysOfText(std::string_view text);

// Begins to type; nothing happens before the first PasteFrame.
Paste StartPaste(const Machine& m, std::string_view text);

// To be called once after each frame. False when all has been typed and all keys are up.
bool PasteFrame(Paste& paste, Machine& m);

// Lets the keys go; what has not been typed by then is forgotten.
void StopPaste(Paste& paste, Machine& m);

}  // namespace quoll
