// FSN76489: the SN76489's window. Four scopes, what the chip plays, and sliders that play it by hand.
#pragma once

#include <array>
#include <string>

#include "core/Form.h"
#include "forms/ChipDrawing.h"
#include "sound/Sn76489.h"

namespace quoll {

struct FSN76489 {
  FormState window;
  bool Check1 = false;  // "Circuit": its picture is shown
  bool Check2 = false;  // "Periodic Noise "
  bool Check3 = false;  // "Manual": the sliders play, the machine's writes are ignored

  std::array<Scroll, 3> HScroll3 = Scrolls<3>(0, 1023, 0);  // each tone's pitch: the period is 1024 less this
  std::array<std::string, 3> Label6{"109", "109", "109"};   // hertz of that period
  std::array<Scroll, 4> HScroll4 = Scrolls<4>(0, 15, 15);   // attenuations, the noise's last
  std::array<std::string, 4> Label7{"15", "15", "15", "15"};  // their numbers

  // What the chip's registers say.
  std::array<std::string, 4> Label1;  // hertz of the tones and the noise
  std::array<std::string, 4> Label2;  // periods
  std::array<std::string, 4> Label3;  // attenuations
  std::string Label4;                 // kind of the noise and its rate

  std::array<Trace, 4> Pic1;  // tones 1 to 3, noise

  bool operator==(const FSN76489&) const = default;
};

SnControls ChipControls(const FSN76489& form);

// Draws the chip's last frame where the scopes are wanted.
void DrawChip(FSN76489& form, const Sn76489& sn, bool scopes);

extern const Form kFSN76489;

}  // namespace quoll
