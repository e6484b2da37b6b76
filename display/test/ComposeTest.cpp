#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "display/Compose.h"
#include "testkit/GreyBox.h"

namespace quoll {
namespace {

using test::GreyBox;

constexpr Pixel kRed = 0xFFFF0000U, kBlue = 0xFF0000FFU, kGrey = 0xFF404040U;

std::array<Pixel, kWindowWidth> Row(const Picture& picture, int32_t row) {
  std::array<Pixel, kWindowWidth> pixels{};
  ComposeRow(picture, row, pixels);
  return pixels;
}

Pixel At(const Picture& picture, int32_t x, int32_t y) { return Row(picture, y)[static_cast<size_t>(x)]; }

TEST(Compose, BandsOfTwoRows) {
  const Picture picture = GreyBox(0, 0, 0, 0);
  EXPECT_EQ(kWindowHeight, 576);
  for (const auto& [row, colour] :
       {std::pair(-5, kRed), {0, kRed}, {573, kRed}, {574, kBlue}, {575, kBlue}, {900, kBlue}})
    EXPECT_EQ(BorderPixel(picture, row), colour) << row;
  EXPECT_EQ(At(picture, 0, 573), kRed);
  EXPECT_EQ(At(picture, 639, 574), kBlue);
  EXPECT_EQ(BorderPixel(Picture(), 10), kBlackPixel);  // never painted
  EXPECT_EQ(At(Picture(), 10, 10), kBlackPixel);
}

TEST(Compose, TheBoxCoversTheBorder) {
  const Picture picture = GreyBox(64, 40, 512, 480);
  EXPECT_EQ(At(picture, 63, 40), kRed);
  EXPECT_EQ(At(picture, 64, 40), kGrey);
  EXPECT_EQ(At(picture, 575, 519), kGrey);
  EXPECT_EQ(At(picture, 576, 519), kRed);
  EXPECT_EQ(At(picture, 64, 39), kRed);
  EXPECT_EQ(At(picture, 64, 520), kRed);
}

TEST(Compose, BoxesPartlyAndFarOutside) {
  constexpr int32_t kFar = 2'000'000'000;
  for (const auto& [left, top] : {std::pair{-100, -50}, {600, 560}, {kFar, 0}, {-kFar, -kFar}, {0, kFar}}) {
    const Picture picture = GreyBox(left, top, 512, 480);
    for (const auto& [x, y] : {std::pair{0, 0}, {639, 571}, {320, 288}, {639, 0}, {0, 570}}) {
      const bool inside =
          x >= int64_t{left} && x < int64_t{left} + 512 && y >= int64_t{top} && y < int64_t{top} + 480;
      EXPECT_EQ(At(picture, x, y), inside ? kGrey : kRed) << left << "," << top << " " << x << "," << y;
    }
  }
}

TEST(Compose, PlainPixelsAreBlueGreenRed) {
  Picture picture = GreyBox(10, 20, 8, 4);
  const std::array<uint8_t, 4> bytes{0x11, 0x22, 0x33, 0x00};
  std::copy(bytes.begin(), bytes.end(), picture.ScreenBits.begin() + (8 * 2 + 7) * 4);
  EXPECT_EQ(At(picture, 17, 22), 0xFF332211U);
}

TEST(Compose, DibRowsOfAnOddWidth) {
  Picture picture = GreyBox(0, 0, 8, 4);
  picture.shownFromDib = true;
  picture.DibWidth = 12;
  picture.DibHeight = 4;
  picture.DibBits.assign(12 * 4 * 3, 0);
  const std::array<uint8_t, 3> bytes{0x11, 0x22, 0x33};
  std::copy(bytes.begin(), bytes.end(), picture.DibBits.begin() + (12 * 2 + 7) * 3);
  EXPECT_EQ(At(picture, 7, 2), 0xFF332211U);
  EXPECT_EQ(At(picture, 8, 2), kRed);
}

// The box is there before all of it has been drawn.
TEST(Compose, WhatIsNotDrawnIsBlack) {
  Picture picture = GreyBox(0, 0, 512, 480);
  picture.ScreenBits.resize(2048 * 10 + 5);
  EXPECT_EQ(DrawnPicture(picture).height, 10);
  EXPECT_EQ(At(picture, 0, 9), kGrey);
  EXPECT_EQ(At(picture, 511, 10), kBlackPixel);
  EXPECT_EQ(At(picture, 512, 10), kRed);
  picture.ScreenBits.clear();
  EXPECT_EQ(DrawnPicture(picture).bits, nullptr);
  EXPECT_EQ(At(picture, 0, 0), kBlackPixel);
  picture.shownFromDib = true;
  picture.DibWidth = 100;  // narrower than the box
  picture.DibBits.assign(300 * 480, 0x40);
  EXPECT_EQ(At(picture, 99, 0), kGrey);
  EXPECT_EQ(At(picture, 100, 0), kBlackPixel);
  picture.Width = -3;
  EXPECT_EQ(At(picture, 0, 0), kRed);
}

TEST(Compose, TheWholeWindowAsBytes) {
  const Picture picture = GreyBox(64, 40, 512, 480);
  const std::vector<uint8_t> bytes = ComposeWindow(picture);
  ASSERT_EQ(bytes.size(), 640U * 576 * 3);
  for (int32_t y = 0; y < kWindowHeight; ++y) {
    const auto row = Row(picture, y);
    for (size_t x = 0; x < row.size(); ++x) {
      const size_t at = (static_cast<size_t>(y) * kWindowWidth + x) * 3;
      ASSERT_EQ(row[x], kBlackPixel + bytes[at] * 0x10000U + bytes[at + 1] * 0x100U + bytes[at + 2]);
    }
  }
}

}  // namespace
}  // namespace quoll
