#include "display/Palette.h"

#include <algorithm>

namespace quoll {

namespace {

// T-states of a palette slot and of a border band. Neither is the 200 of a real line and they differ from
// each other: wanted, programs with raster effects are seen through just these scales.
constexpr int32_t kSlotTStates = 245;
constexpr int32_t kBandTStates = 218;

constexpr int32_t kPalettePort = 0x60, kRegisters = 4;

// Slots from PalNextLine to last, both cut to what the history holds.
void FillHistory(Palette& palette, const PortBytes& ports, int32_t last) {
  const int32_t first = std::max(palette.PalNextLine, 0);
  const int32_t end = std::min(last, Palette::kLines - 1) + 1;
  if (first >= end) return;
  for (int32_t p = 0; p < kRegisters; ++p) {
    auto& line = palette.PalHistory[p];
    std::fill(line.begin() + first, line.begin() + end, ports[kPalettePort + p]);
  }
}

constexpr int32_t Rgb(int32_t red, int32_t green, int32_t blue) { return red + 256 * green + 65536 * blue; }

constexpr std::array<int32_t, 16> kQBColors{
    Rgb(0, 0, 0),       Rgb(0, 0, 128),   Rgb(0, 128, 0),   Rgb(0, 128, 128),
    Rgb(128, 0, 0),     Rgb(128, 0, 128), Rgb(128, 128, 0), Rgb(192, 192, 192),
    Rgb(128, 128, 128), Rgb(0, 0, 255),   Rgb(0, 255, 0),   Rgb(0, 255, 255),
    Rgb(255, 0, 0),     Rgb(255, 0, 255), Rgb(255, 255, 0), Rgb(255, 255, 255),
};

}  // namespace

void PALSet(Palette& palette, const PortBytes& ports, int32_t frameClock) {
  const int32_t slot = frameClock / kSlotTStates;
  FillHistory(palette, ports, slot);
  // Not one further: the slot of this write is filled again by the next, with the value now being set.
  palette.PalNextLine = std::clamp(slot, 0, Palette::kLines - 1);
}

void PALComplete(Palette& palette, const PortBytes& ports) {
  FillHistory(palette, ports, Palette::kLastShownLine);
}

void PALchNull(Palette& palette) { palette.PalNextLine = 0; }

void BorderSet(Palette& palette, int32_t value, int32_t frameClock) {
  // Unlike in the picture, the bright bit counts without a colour: 0x80 is dark grey.
  const int32_t index = ((value & 0x02) != 0 ? 1 : 0) | ((value & 0x08) != 0 ? 4 : 0) |
                        ((value & 0x20) != 0 ? 2 : 0) | ((value & 0x80) != 0 ? 8 : 0);
  const int32_t band = std::max(frameClock / kBandTStates, 0);
  for (int32_t b = band; b < Palette::kBands; ++b) palette.BorderLines[b] = QBColor(index);
}

void BorderCarryOver(Palette& palette) { palette.BorderLines.fill(palette.BorderLines.back()); }

int32_t QBColor(int32_t index) { return kQBColors[index & 15]; }

int32_t TVCcolor(const PortBytes& ports, int32_t index) {
  return index >= 0 && index < kRegisters ? ports[kPalettePort + index] : 0;
}

int32_t BWQBColor(uint8_t v) { return v * 17 * 257 + v * 1244112; }

int32_t SplitRed(int32_t colour) { return colour & 0xFF; }
int32_t SplitGreen(int32_t colour) { return (colour >> 8) & 0xFF; }
int32_t SplitBlue(int32_t colour) { return (colour >> 16) & 0xFF; }

int32_t SplitGray(int32_t colour) {
  // A third is never half way, so adding one before the division is rounding to the nearest.
  return (SplitRed(colour) + SplitGreen(colour) + SplitBlue(colour) + 1) / 3;
}

}  // namespace quoll
