// The hardware monitor's record. Two of its boxes steer the machine, the rest of the window only shows.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "core/Form.h"

namespace quoll {

struct Machine;

struct TVCmon {
  bool Check1 =
      false;  // "Record": the tape's edges go to "save.wav", the tone generator's frames to "record.wav"
  bool Check2 = true;  // "Int enable" of the CRTC frame; read by nothing, the cursor interrupt ignores it
  bool Check3 = true;  // "Int enabled" of the sound frame: lets the tone interrupt through
};

std::span<const Control> TVCmonControls();

// What the frame "SOUND" shows. Port bytes and pitch in hexadecimal, the others decimal.
struct SoundFields {
  std::string SoundIT;    // 1: the ports let the tone interrupt through
  std::string Pitch;      // of the divider, three digits
  std::string Volume;     // 0 to 15
  std::string OutEnable;  // 1: the tone is switched on
  std::string Counter;    // T-states until the tone's period is over
  bool irq = false;       // an interrupt of cursor or tone waits
  bool active = false;    // the tone is switched on and can be heard
};
SoundFields ReadSoundFields(const Machine& m);

}  // namespace quoll
