// Pictures into bytes for the machine's screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quoll {

// A picture's colours as the window system takes them, red in the low byte, row by row from the top.
struct Pixels {
  int32_t width = 0;
  int32_t height = 0;
  std::vector<uint32_t> colours;  // width * height
};

// Black outside of the picture.
uint32_t PixelAt(const Pixels& pixels, int32_t x, int32_t y);

enum class ScreenColours { Two = 2, Four = 4, Sixteen = 16 };

inline constexpr int32_t kPictureRows = 240;  // of the screen; every second row of the picture is read
inline constexpr int32_t kPictureRowBytes = 64;

// Pixels of a picture that one row of the screen takes: 512, 256 or 128.
int32_t PictureWidth(ScreenColours colours);
inline constexpr int32_t kPictureHeight = 2 * kPictureRows;

// The screen's 15360 bytes for the picture's upper left PictureWidth x kPictureHeight pixels. The threshold,
// 0 to 255, is what red must pass; green must pass 49 more, blue fixed limits.
std::vector<uint8_t> PictureBytes(const Pixels& pixels, ScreenColours colours, int32_t threshold);

}  // namespace quoll
