#include "devtools/PictureImport.h"

namespace quoll {

namespace {

struct Parts {
  int32_t red, green, blue;  // 0 to 255
};

Parts Split(uint32_t colour) {
  return {static_cast<int32_t>(colour & 0xFF), static_cast<int32_t>(colour >> 8 & 0xFF),
          static_cast<int32_t>(colour >> 16 & 0xFF)};
}

constexpr int32_t kGreenAbove = 49;
constexpr int32_t kBright = 198;
constexpr int32_t kBlueOfThird = 128;  // limit for the third of four pixels

// Bits of pixel k within its byte.
uint32_t TwoColours(const Parts& p, int32_t k, int32_t threshold) {
  const bool set = p.red > threshold || p.green > threshold + kGreenAbove || p.blue > kBright;
  return set ? 1U << k : 0;
}

uint32_t FourColours(const Parts& p, int32_t k, int32_t threshold) {
  uint32_t bits = 0;
  if (p.red > threshold) bits |= 0x01;
  if (p.green > threshold + kGreenAbove) bits |= 0x10;
  if (p.blue > (k == 2 ? kBlueOfThird : kBright)) bits |= 0x11;
  return bits << k;
}

// The machine has blue, red, green and brightness in every second bit.
uint32_t SixteenColours(const Parts& p, int32_t k, int32_t threshold) {
  uint32_t bits = 0;
  if (p.blue > kBright) bits |= 0x01;
  if (p.red > threshold) bits |= 0x04;
  if (p.green > threshold + kGreenAbove) bits |= 0x10;
  if (p.red > kBright || p.green > kBright || p.blue > kBright) bits |= 0x40;
  return bits << k;
}

int32_t PixelsOfByte(ScreenColours colours) {
  switch (colours) {
    case ScreenColours::Two: return 8;
    case ScreenColours::Four: return 4;
    default: return 2;
  }
}

}  // namespace

uint32_t PixelAt(const Pixels& pixels, int32_t x, int32_t y) {
  if (x < 0 || y < 0 || x >= pixels.width || y >= pixels.height) return 0;
  const size_t at = static_cast<size_t>(y) * static_cast<size_t>(pixels.width) + static_cast<size_t>(x);
  return at < pixels.colours.size() ? pixels.colours[at] : 0;
}

int32_t PictureWidth(ScreenColours colours) { return kPictureRowBytes * PixelsOfByte(colours); }

std::vector<uint8_t> PictureBytes(const Pixels& pixels, ScreenColours colours, int32_t threshold) {
  const int32_t group = PixelsOfByte(colours);
  auto* const bitsOf = colours == ScreenColours::Two    ? TwoColours
                       : colours == ScreenColours::Four ? FourColours
                                                        : SixteenColours;
  std::vector<uint8_t> bytes;
  bytes.reserve(size_t{kPictureRows} * kPictureRowBytes);
  for (int32_t y = 0; y < kPictureHeight; y += 2) {
    for (int32_t x = 0; x < PictureWidth(colours); x += group) {
      uint32_t byte = 0;
      for (int32_t k = 0; k < group; ++k) byte |= bitsOf(Split(PixelAt(pixels, x + k, y)), k, threshold);
      bytes.push_back(static_cast<uint8_t>(byte));
    }
  }
  return bytes;
}

}  // namespace quoll
