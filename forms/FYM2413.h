// FYM2413: the YM2413's window. Nine scopes and all registers as a grid.
#pragma once

#include <array>
#include <string>

#include "core/Form.h"
#include "forms/ChipDrawing.h"
#include "sound/Ym2413.h"

namespace quoll {

struct FYM2413 {
  static constexpr int kCells = 64;  // registers in the grid

  FormState window;
  std::array<bool, kOpllChannels> Check7 = AllTicked<kOpllChannels>();  // the channel is heard
  std::array<std::string, kCells> Label1;  // registers, decimal; a click turns one to hexadecimal and back
  std::array<bool, kCells> hexadecimal{};  // which are shown so

  std::array<std::string, kOpllChannels> Label2;  // names of the channels' instruments
  std::array<std::string, kOpllChannels> Label3;  // hertz, as heard
  std::array<std::string, kOpllChannels> Label4;  // volumes
  std::array<std::string, kOpllChannels> Label5;  // "on" with the key down, else "off"

  std::array<Trace, kOpllChannels> Pic1;

  bool operator==(const FYM2413&) const = default;
};

OpllControls ChipControls(const FYM2413& form);

// Draws the chip's last frame where the scopes are wanted.
void DrawChip(FYM2413& form, const Ym2413& opll, bool scopes);

extern const Form kFYM2413;

}  // namespace quoll
