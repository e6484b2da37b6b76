// The inside of the main window as pixels: the border's bands with the picture box on them. What a window, a
// script or a saved picture shows is made here.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "display/Refresh.h"

namespace quoll {

inline constexpr int32_t kBandRows = 2;  // window rows of a border band
inline constexpr int32_t kWindowWidth = 640;
inline constexpr int32_t kWindowHeight = Palette::kBands * kBandRows;

// A pixel: 0xFF000000 + 65536 x red + 256 x green + blue.
using Pixel = uint32_t;
inline constexpr Pixel kBlackPixel = 0xFF000000U;

// Colour of the border in a row of the window as last painted, black before that. Above and below the window
// the outermost bands go on.
Pixel BorderPixel(const Picture& picture, int32_t row);

// The picture box as last drawn: height rows of width pixels, pitch bytes apart, each pixel blue, green and
// red in pixelBytes bytes. Less than the box, or nothing, where no more has been drawn.
struct DrawnBox {
  const uint8_t* bits = nullptr;
  int32_t width = 0, height = 0;
  int64_t pitch = 0;
  int32_t pixelBytes = 4;  // 4, or 3 for a picture of the DIB path
};
DrawnBox DrawnPicture(const Picture& picture);

// One row of the window, 0 to kWindowHeight - 1. The box covers the border wherever a program has put it,
// black where nothing is drawn in it.
void ComposeRow(const Picture& picture, int32_t row, std::span<Pixel, kWindowWidth> pixels);

// The whole window as rows from the top, three bytes red, green, blue a pixel.
std::vector<uint8_t> ComposeWindow(const Picture& picture);

}  // namespace quoll
