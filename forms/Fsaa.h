// Fsaa: the SAA1099's window. Six scopes, the chip's settings, controls that play it by hand, and the button
// that records the sound output.
#pragma once

#include <array>
#include <string>

#include "core/Form.h"
#include "forms/ChipDrawing.h"
#include "sound/Saa1099.h"

namespace quoll {

struct Fsaa {
  FormState window;
  bool Check2 = false;                    // "Manual": the controls play, the machine's writes are ignored
  bool Check10 = false;                   // "Circuit": its picture is shown
  bool Check11 = false, Check12 = false;  // "patch": the tone of channel 2, of channel 5 is forced on

  // Manual mode, for each channel.
  std::array<bool, kSaaChannels> Check1{};                                       // "Enable Freq"
  std::array<bool, kSaaChannels> Check3{};                                       // "Enable Noise"
  std::array<Scroll, kSaaChannels> HScroll1 = Scrolls<kSaaChannels>(0, 15, 0);   // left level
  std::array<Scroll, kSaaChannels> HScroll2 = Scrolls<kSaaChannels>(0, 15, 0);   // right level
  std::array<Scroll, kSaaChannels> HScroll3 = Scrolls<kSaaChannels>(0, 255, 0);  // frequency
  std::array<Scroll, kSaaChannels> HScroll4 = Scrolls<kSaaChannels>(0, 7, 0);    // octave
  // For each envelope.
  std::array<bool, 2> Check4{};                          // "Inverse R"
  std::array<bool, 2> Check5{};                          // "3 Bit"
  std::array<bool, 2> Check6{};                          // "External clock"
  std::array<bool, 2> Check7{};                          // "Enable envelope"
  std::array<Scroll, 2> HScroll6 = Scrolls<2>(0, 7, 0);  // mode
  // For the chip.
  bool Check8 = false;  // "All out enable"
  bool Check9 = false;  // "Reset"

  // What the chip's registers say, of each channel...
  std::array<std::string, kSaaChannels> Label1;  // left level
  std::array<std::string, kSaaChannels> Label2;  // right level
  std::array<std::string, kSaaChannels> Label3;  // frequency byte
  std::array<std::string, kSaaChannels> Label4;  // octave
  std::array<std::string, kSaaChannels> Label5;  // hertz
  std::array<std::string, kSaaChannels> Label6;  // "tone", "noise", "tone+noise" or "off"
  // ...and of the rest.
  std::array<std::string, 2> Label7;   // clock settings of the noises
  std::string Label8, Label9;          // pictures of the envelopes' modes
  std::array<std::string, 2> Label10;  // the envelopes' flags
  std::string Label12;                 // "on" while sound is enabled, else "off"

  std::string Label11;                // frames in the block at the last block's end
  Look Command1Look{.back = kWhite};  // "Record"; red while it records

  std::array<Trace, kSaaChannels> Pic1;  // right sides of the channels

  bool operator==(const Fsaa&) const = default;
};

SaaControls ChipControls(const Fsaa& form);

// Shows the modes' pictures, and draws the scopes where they are wanted in this frame.
void DrawChip(Fsaa& form, const Saa1099& saa, bool scopes);

extern const Form kFsaa;

}  // namespace quoll
