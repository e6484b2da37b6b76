#include <gtest/gtest.h>

#include "devtools/PictureImport.h"

namespace quoll {
namespace {

constexpr uint32_t Colour(uint32_t red, uint32_t green, uint32_t blue) {
  return red | green << 8 | blue << 16;
}

Pixels Plain(int32_t width, int32_t height, uint32_t colour) {
  return {width, height, std::vector<uint32_t>(static_cast<size_t>(width * height), colour)};
}

// The first byte of a picture whose pixel k alone has a colour.
int FirstByte(ScreenColours colours, int32_t k, uint32_t colour, int32_t threshold = 100) {
  Pixels pixels = Plain(16, 2, 0);
  pixels.colours[static_cast<size_t>(k)] = colour;
  return PictureBytes(pixels, colours, threshold)[0];
}

TEST(PictureImport, FourColours) {
  for (int32_t k = 0; k < 4; ++k) {
    EXPECT_EQ(FirstByte(ScreenColours::Four, k, Colour(101, 0, 0)), 1 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Four, k, Colour(100, 149, 0)), 0);
    EXPECT_EQ(FirstByte(ScreenColours::Four, k, Colour(0, 150, 0)), 16 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Four, k, Colour(0, 0, 199)), 17 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Four, k, Colour(0, 0, 198)), k == 2 ? 17 << k : 0);
    EXPECT_EQ(FirstByte(ScreenColours::Four, k, Colour(0, 0, 129)), k == 2 ? 17 << k : 0);
    EXPECT_EQ(FirstByte(ScreenColours::Four, k, Colour(0, 0, 128)), 0);
    EXPECT_EQ(FirstByte(ScreenColours::Four, k, Colour(255, 255, 255)), 17 << k);
  }
  EXPECT_EQ(FirstByte(ScreenColours::Four, 0, Colour(255, 255, 0), 255), 0);
  EXPECT_EQ(FirstByte(ScreenColours::Four, 0, Colour(1, 50, 0), 0), 17);
}

TEST(PictureImport, TwoColours) {
  for (int32_t k = 0; k < 8; ++k) {
    EXPECT_EQ(FirstByte(ScreenColours::Two, k, Colour(101, 0, 0)), 1 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Two, k, Colour(0, 150, 0)), 1 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Two, k, Colour(0, 0, 199)), 1 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Two, k, Colour(100, 149, 198)), 0);
  }
}

TEST(PictureImport, SixteenColours) {
  for (int32_t k = 0; k < 2; ++k) {
    EXPECT_EQ(FirstByte(ScreenColours::Sixteen, k, Colour(101, 0, 0)), 0x04 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Sixteen, k, Colour(0, 150, 0)), 0x10 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Sixteen, k, Colour(0, 0, 199)), 0x41 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Sixteen, k, Colour(255, 255, 255)), 0x55 << k);
    EXPECT_EQ(FirstByte(ScreenColours::Sixteen, k, Colour(100, 149, 198)), 0);
  }
}

TEST(PictureImport, WidthsAndRows) {
  EXPECT_EQ(PictureWidth(ScreenColours::Two), 512);
  EXPECT_EQ(PictureWidth(ScreenColours::Four), 256);
  EXPECT_EQ(PictureWidth(ScreenColours::Sixteen), 128);
  for (const ScreenColours colours : {ScreenColours::Two, ScreenColours::Four, ScreenColours::Sixteen}) {
    // Every second row is read: white rows with odd numbers don't show.
    Pixels pixels = Plain(512, 480, 0);
    for (int32_t y = 1; y < 480; y += 2) {
      for (int32_t x = 0; x < 512; ++x) pixels.colours[static_cast<size_t>(y * 512 + x)] = 0xFFFFFF;
    }
    pixels.colours[static_cast<size_t>(478 * 512 + PictureWidth(colours) - 1)] = 0xFFFFFF;
    const std::vector<uint8_t> bytes = PictureBytes(pixels, colours, 100);
    ASSERT_EQ(bytes.size(), 15360U);
    for (size_t i = 0; i + 1 < bytes.size(); ++i) ASSERT_EQ(bytes[i], 0) << i;
    EXPECT_NE(bytes.back(), 0);
  }
}

// A small picture stands in the upper left corner, on black.
TEST(PictureImport, SmallPictures) {
  const std::vector<uint8_t> bytes = PictureBytes(Plain(4, 3, 0xFFFFFF), ScreenColours::Four, 100);
  EXPECT_EQ(bytes[0], 0xFF);
  EXPECT_EQ(bytes[1], 0);
  EXPECT_EQ(bytes[64], 0xFF);
  EXPECT_EQ(bytes[128], 0);
  EXPECT_EQ(PictureBytes({}, ScreenColours::Two, 0), std::vector<uint8_t>(15360, 0));
  EXPECT_EQ(PixelAt({2, 2, {1}}, 1, 1), 0U);
}

}  // namespace
}  // namespace quoll
