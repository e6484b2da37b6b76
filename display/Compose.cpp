#include "display/Compose.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "display/Palette.h"

namespace quoll {

namespace {

Pixel ToPixel(int32_t red, int32_t green, int32_t blue) {
  return kBlackPixel | static_cast<uint32_t>(red) << 16U | static_cast<uint32_t>(green) << 8U |
         static_cast<uint32_t>(blue);
}

void CopyPixels(const uint8_t* at, int32_t pixelBytes, std::span<Pixel> pixels) {
  if (pixelBytes == sizeof(Pixel) && std::endian::native == std::endian::little) {
    std::memcpy(pixels.data(), at, pixels.size_bytes());
    return;
  }
  for (Pixel& pixel : pixels) {
    pixel = ToPixel(at[2], at[1], at[0]);
    at += pixelBytes;
  }
}

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
  const auto place = [](int64_t x) { return static_cast<size_t>(std::clamp<int64_t>(x, 0, kWindowWidth)); };
  const DrawnBox box = DrawnPicture(picture);
  const size_t from = place(left);
  const size_t drawn = inBox < box.height ? place(left + box.width) : from;
  const size_t to = std::max(drawn, place(left + picture.Width));
  if (drawn > from) {
    const uint8_t* at = box.bits + inBox * box.pitch + (static_cast<int64_t>(from) - left) * box.pixelBytes;
    CopyPixels(at, box.pixelBytes, pixels.subspan(from, drawn - from));
  }
  for (size_t x = drawn; x < to; ++x) pixels[x] = kBlackPixel;
  for (Pixel& pixel : pixels) pixel |= kBlackPixel;  // the fourth byte of the box's pixels is unused
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
