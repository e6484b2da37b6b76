// FYM3812: the YM3812's window. Nine scopes, all registers as a grid, controls that edit an operator, and the
// way to a chip on the computer's own bus.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/Form.h"
#include "forms/ChipDrawing.h"
#include "sound/Ym3812.h"

namespace quoll {

struct FYM3812 {
  static constexpr int kCells = 246;   // registers in the grid
  static constexpr int kSettings = 8;  // of an operator that have a slider
  static constexpr int kSwitches = 4;  // "KSR", "tremolo", "vibrato", "drums"

  FormState window;
  std::array<bool, kOplChannels> Check1 = AllTicked<kOplChannels>();  // the channel is heard
  bool Check3 = false;        // "Direct I/O port:": writes go out to the computer's ports, too
  std::string Text2 = "896";  // the port for addresses, decimal; data go to the next one

  std::array<std::string, kCells> Label1;  // registers
  int32_t cell = 0;                        // register that was clicked on
  std::string Label2 = "Register 0";       // its number and what it is for
  std::string Text1;                       // its value; Enter writes it

  // The operator that is edited.
  Scroll HScroll2{1, 1, kOplChannels};       // its channel
  std::array<bool, 2> Option1{false, true};  // "Modulator", "Carrier"
  std::array<bool, kSwitches> Check2{};
  std::array<Scroll, kSettings> HScroll1{
      Scroll{0, 0, 15},  // multiplier
      Scroll{0, 0, 63},  // level, 0 the loudest
      Scroll{0, 0, 15},  // attack
      Scroll{0, 0, 15},  // decay
      Scroll{0, 0, 15},  // sustain
      Scroll{0, 0, 15},  // release
      Scroll{0, 0, 3},   // wave
      Scroll{0, 0, 7},   // the channel's feedback
  };
  std::array<std::string, kSettings> Label3;  // their numbers

  std::array<std::string, kOplChannels> Label4;  // hertz of the channels
  std::array<std::string, kOplChannels> Label5;  // "on" with the key down, else "off"

  // The scopes' points cost much, so that they are made when somebody reads them, from what the frame began
  // with: a window that is shown, or a script.
  std::array<Trace, kOplChannels> Pic1;
  OplFrameStart frame;  // that the scopes are to show
  uint32_t frames = 0;  // counts them

  bool operator==(const FYM3812&) const = default;
};

OplControls ChipControls(const FYM3812& form);

// Has the scopes show the chip's last frame where they are wanted.
void DrawChip(FYM3812& form, const Ym3812& opl, bool scopes);

// A byte that was written to port 0x34 or 0x35, for the computer's own port while the box is on.
void FYM3812_DirectOut(Machine& m, int32_t port, int32_t value);

extern const Form kFYM3812;

}  // namespace quoll
