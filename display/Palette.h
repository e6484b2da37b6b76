// Palette and border histories: which colours were in force at which moment of the frame. Ports
// write them while the frame runs; the picture is built from them at its end.
#pragma once

#include <array>
#include <cstdint>

#include "core/PortBytes.h"

namespace quoll {

struct Palette {
  static constexpr int32_t kLines = 257;
  static constexpr int32_t kLastShownLine = 255;
  static constexpr int32_t kBands = 288;

  // [p][i]: value of palette register p (port 0x60 + p) at line slot i of the frame.
  std::array<std::array<uint8_t, kLines>, 4> PalHistory{};
  int32_t PalNextLine = 0;  // first line slot not yet filled, 0 to 256
  // Colour of each border band of two window rows: red + 256 x green + 65536 x blue.
  std::array<int32_t, kBands> BorderLines{};

  bool operator==(const Palette&) const = default;
};

// A write to a palette port, before the port's byte is stored: fills the line slots up to the present
// one with the palette in force so far. frameClock in T-states since the frame began.
void PALSet(Palette& palette, const PortBytes& ports, int32_t frameClock);

// Fills the line slots up to 255 with the palette in force at the frame's end.
void PALComplete(Palette& palette, const PortBytes& ports);

// Starts the history again, after a picture has been built from it.
void PALchNull(Palette& palette);

// A write to port 0: the border has this colour from now to the frame's end.
void BorderSet(Palette& palette, int32_t value, int32_t frameClock);

// After the border has been painted: the next frame begins with the last colour of this one.
void BorderCarryOver(Palette& palette);

// The 16 colours of QBColor, 0 to 15, as red + 256 x green + 65536 x blue.
int32_t QBColor(int32_t index);

// Content of palette register 0 to 3; 0 for any other index.
int32_t TVCcolor(const PortBytes& ports, int32_t index);

// (v x 17) x 257 + v x 1244112. Not a grey for all v; picture imports rely on just these values.
int32_t BWQBColor(uint8_t v);

// Channels of a colour of the BorderLines kind, 0 to 255. SplitGray is their mean, rounded to nearest.
int32_t SplitRed(int32_t colour);
int32_t SplitGreen(int32_t colour);
int32_t SplitBlue(int32_t colour);
int32_t SplitGray(int32_t colour);

}  // namespace quoll
