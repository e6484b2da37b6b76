// The hardware monitor's record. Two of its boxes steer the machine, the rest of the window only shows.
#pragma once

#include <array>
#include <string>

#include "core/Form.h"

namespace quoll {

struct TVCmon {
  // Lamps of the frame "SOUND", by place in SoundLamp.
  enum { kIrqLamp, kActiveLamp, kSoundLamps };

  FormState window;
  // "Record": the tape's edges go to "save.wav", the tone generator's frames to "record.wav".
  bool Check1 = false;
  bool Check2 = true;  // "Int enable" of the CRTC frame; read by nothing, the cursor interrupt ignores it
  bool Check3 = true;  // "Int enabled" of the sound frame: lets the tone interrupt through

  // The frame "SOUND". Port bytes and pitch in hexadecimal, the others decimal.
  std::string SoundIT;    // 1: the ports let the tone interrupt through
  std::string Pitch;      // of the divider, three digits
  std::string Volume;     // 0 to 15
  std::string OutEnable;  // 1: the tone is switched on
  std::string Counter;    // T-states until the tone's period is over
  std::array<bool, kSoundLamps> SoundLamp{};

  bool operator==(const TVCmon&) const = default;
};

// Fills the labels from the machine, which stays as it is.
void TVCmon_redraw(Machine& m);

extern const Form kTVCmon;

}  // namespace quoll
