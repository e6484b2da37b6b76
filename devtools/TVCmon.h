// The hardware monitor's record. Two of its boxes steer the machine, the rest of the window only shows.
#pragma once

#include <span>

#include "core/Form.h"

namespace quoll {

struct TVCmon {
  bool Check1 =
      false;  // "Record": the tape's edges go to "save.wav", the tone generator's frames to "record.wav"
  bool Check2 = true;  // "Int enable" of the CRTC frame; read by nothing, the cursor interrupt ignores it
  bool Check3 = true;  // "Int enabled" of the sound frame: lets the tone interrupt through
};

std::span<const Control> TVCmonControls();

}  // namespace quoll
