// T8910: the AY-3-8910's window. It shows and changes nothing: scopes, and what the registers say.
#pragma once

#include <array>
#include <string>

#include "core/Form.h"
#include "forms/ChipDrawing.h"
#include "sound/Ay38910.h"

namespace quoll {

struct T8910 {
  FormState window;

  std::array<std::string, 16> Label1;  // registers
  // Of tones A, B, C.
  std::array<std::string, 3> Label2;  // hertz
  std::array<std::string, 3> Label3;  // level, 0 to 15 or "env"
  std::array<std::string, 3> Label4;  // what the mixer lets through: "tone", "noise", "tone+noise", "off"
  std::string Label5;                 // hertz of the noise
  std::string Label6;                 // hertz of the envelope
  std::string Label7;                 // its shape, 0 to 15
  std::string Label8;                 // the shape as a picture

  std::array<Trace, 5> Pic1{Trace{}, Trace{}, Trace{}, Trace{.colour = kCyan}, Trace{.colour = kCyan}};

  bool operator==(const T8910&) const = default;
};

// Draws the chip's last frame where the scopes are wanted.
void DrawChip(T8910& form, const Ay38910& ay, bool scopes);

extern const Form kT8910;

}  // namespace quoll
