#include "display/Compose.h"

#include <algorithm>
#include <array>

#include "display/Palette.h"

namespace quoll {

namespace {

Pixel ToPixel(int32_t red, int32_t green, int32_t blue) {
  return kBlackPixel | static_cast<uint32_t>(red) << 16U | static_cast<uint32_t>(green) << 8U |
         static_cast<uint32_t>(blue);
}

// The fourth byte of a plain picture's pixel is read along, so that the compiler can take it as one word.
Pixel PlainPixel(const uint8_t* at) { return ToPixel(at[2], at[1], at[0]) | uint32_t{at[3]} << 24U; }
Pixel DibPixel(const uint8_t* at) { return ToPixel(at[2], at[1], at[0]); }

}  // namespace

Pixel BorderPixel(const Picture& picture, int32_t row) {
  const auto band = static_cast<size_t>(std::clamp(row, 0, kWindowHeight - 1) / kBandRows);
  if (band >= picture.Border.size()) return kBlackPixel;
  const int32_t colour = picture.Border[band];
  return ToPixel(SplitRed(colour), SplitGreen(colour), SplitBlue(colour));
}

DrawnBox DrawnPicture(const Picture& picture) {
  const bool dib = picture.shownFromDib;
  const std::vector<uint8_t>& bits = dib ? picture.DibBits : picture.ScreenBits;
  const int32_t rowPixels = dib ? picture.DibWidth : picture.Width;
  DrawnBox box{.bits = bits.data(), .width = std::min(picture.Width, rowPixels), .pixelBytes = dib ? 3 : 4};
  if (box.width <= 0 || picture.Height <= 0) return {};
  box.pitch = int64_t{rowPixels} * box.pixelBytes;
  box.height =
      static_cast<int32_t>(std::min<int64_t>(picture.Height, static_cast<int64_t>(bits.size()) / box.pitch));
  return box.height > 0 ? box : DrawnBox{};
}

void ComposeRow(const Picture& picture, int32_t row, std::span<Pixel, kWindowWidth> pixels) {
  std::ranges::fill(pixels, BorderPixel(picture, row));
  // The box can lie anywhere, far outside the window too.
  const int64_t left = picture.Left;
  const int64_t inBox = int64_t{row} - picture.Top;
  if (inBox < 0 || inBox >= picture.Height) return;
  const auto inWindow = [](int64_t x) { return std::clamp<int64_t>(x, 0, kWindowWidth); };
  const int64_t from = inWindow(left);
  const int64_t to = std::max(from, inWindow(left + picture.Width));
  std::fill(pixels.begin() + from, pixels.begin() + to, kBlackPixel);
  const DrawnBox box = DrawnPicture(picture);
  if (inBox >= box.height) return;
  const int64_t drawnTo = std::max(from, inWindow(left + box.width));
  const uint8_t* at = box.bits + inBox * box.pitch + (from - left) * box.pixelBytes;
  if (box.pixelBytes == 4) {
    for (int64_t x = from; x < drawnTo; ++x, at += 4) pixels[static_cast<size_t>(x)] = PlainPixel(at);
  } else {
    for (int64_t x = from; x < drawnTo; ++x, at += 3) pixels[static_cast<size_t>(x)] = DibPixel(at);
  }
}

std::vector<uint8_t> ComposeWindow(const Picture& picture) {
  std::vector<uint8_t> bytes;
  bytes.reserve(size_t{kWindowWidth} * kWindowHeight * 3);
  std::array<Pixel, kWindowWidth> pixels{};
  for (int32_t row = 0; row < kWindowHeight; ++row) {
    ComposeRow(picture, row, pixels);
    for (const Pixel pixel : pixels) {
      for (const uint32_t shift : {16U, 8U, 0U}) bytes.push_back(static_cast<uint8_t>(pixel >> shift));
    }
  }
  return bytes;
}

}  // namespace quoll
