// The hardware monitor's record. Two of its boxes steer the machine, the rest of the window only shows; its
// texts are worked out at most once a tick of its timer, when somebody looks.
#pragma once

#include <array>
#include <string>

#include "core/Form.h"

namespace quoll {

// What the window shows: port bytes in hexadecimal, counts decimal.
struct TVCmonShown {
  using ShownOnly = void;

  bool due = true;  // the timer has ticked since the texts were last worked out

  std::array<std::string, 4> Slot;  // what is mapped at 0x0000, 0x4000, 0x8000, 0xC000
  std::string Port2, Port3;
  std::array<bool, 4> Vid{};      // VID0 to VID3: a bank that the processor sees
  std::array<bool, 3> Iom{};      // IOM0 to IOM2: the card whose window is open
  std::array<bool, 4> Hbf{};      // HBF0 to HBF3: the floppy ROM's page that is seen
  std::array<bool, 6> IntLamp{};  // CSTL0 to CSTL3, CU/SO, Cu/ha IT: in force

  std::string SoundIT;              // 1: the ports let the tone interrupt through
  std::string Pitch;                // of the divider, three digits
  std::string Volume;               // 0 to 15
  std::string OutEnable;            // 1: the tone is switched on
  std::string Counter;              // T-states until the tone's period is over
  std::array<bool, 2> SoundLamp{};  // IRQ, ACTIVE

  std::array<std::string, 18> Crtc;  // R0 to R10, R12 to R17, and T-states since the frame began
  std::array<std::string, 4> Palette;
  std::string Border, Mode;
  std::string SubMode;             // VID0 to VID3: the bank that is on the screen
  std::array<std::string, 3> Cas;  // port 5, motor, level of the last sample
  std::array<std::string, 4> SlotId;

  std::array<std::string, 6> Serial;
  std::array<std::string, 7> Fdd;
  std::array<bool, 4> FddLamp{};  // the selected drive
  std::array<std::string, 6> Disk;
  ListBox List4;  // the floppy card's accesses

  bool operator==(const TVCmonShown&) const = default;
};

struct TVCmon {
  FormState window;
  // "Record": the tape's edges go to "save.wav", the tone generator's frames to "record.wav".
  bool Check1 = false;
  bool Check2 = true;  // "Int enable" of the CRTC frame; read by nothing, the cursor interrupt ignores it
  bool Check3 = true;  // "Int enabled" of the sound frame: lets the tone interrupt through
  TVCmonShown shown;

  bool operator==(const TVCmon&) const = default;
};

// Works out all texts and lamps from the machine, which stays as it is.
void TVCmon_redraw(Machine& m);

extern const Form kTVCmon;

}  // namespace quoll
