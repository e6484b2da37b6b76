// The DIB path: a 24-bit bitmap in which each screen row is copied to the device row below it, so
// that there are no gaps.
#include <algorithm>
#include <cstring>

#include "display/ScreenWalk.h"

namespace quoll {

namespace {

constexpr size_t kPixelBytes = 3;

// The copy to the row below has a fixed length: of a wider row only the front is doubled, the rest of the row
// below stays as it was. Wanted.
constexpr size_t kCopyBytes = 512 * kPixelBytes;
constexpr size_t kCopyBytes80 = 640 * kPixelBytes;

// readRow(walk, r, row) gives the bytes of screen row r, counted from 0.
template <typename ReadRowFunction>
void DrawDib(Picture& picture, const PictureSource& source, ColourMode mode, size_t copyBytes,
             ReadRowFunction readRow) {
  ScreenWalk walk = StartPicture(picture, source, mode);
  auto decoder = MakeRowDecoder<kPixelBytes>(mode);
  RowBytes row;
  std::array<uint8_t, kMaxRowBytes * 8 * kPixelBytes> line;
  const size_t lineBytes = static_cast<size_t>(walk.bytesPerRow) * 8 * kPixelBytes;
  // A copy longer than the row would reach rows that are built later, so the row's length is enough.
  const size_t doubled = std::min(copyBytes, lineBytes);

  const size_t pitch = static_cast<size_t>(picture.DibWidth) * kPixelBytes;

  size_t position = 0;
  for (int32_t r = 0; r < walk.rows && lineBytes > 0; ++r) {
    SetPalette(decoder, PaletteOfRow(source.palette, r + 1));
    DecodeRow(decoder, readRow(walk, r, row), line.data());
    uint8_t* const out = picture.DibBits.data() + position;
    std::memcpy(out, line.data(), lineBytes);
    std::memcpy(out + pitch, line.data(), doubled);
    position += 2 * pitch;
  }
  picture.shownFromDib = true;
}

auto InOrder(const PictureSource& source) {
  return [&source](ScreenWalk& walk, int32_t, RowBytes& row) { return ReadRow(source, walk, row); };
}

}  // namespace

void Srefresh2DIB(Picture& picture, const PictureSource& source) {
  DrawDib(picture, source, ColourMode::Two, kCopyBytes, [&source](ScreenWalk& walk, int32_t, RowBytes& row) {
    const std::span<uint8_t> bytes = ReadRow(source, walk, row);
    if (source.noise) NoiseRow(source.random, bytes);
    return bytes;
  });
}

void Srefresh4DIB(Picture& picture, const PictureSource& source) {
  DrawDib(picture, source, ColourMode::Four, kCopyBytes, InOrder(source));
}

void Srefresh16DIB(Picture& picture, const PictureSource& source) {
  if (CharactersPerRow(source.crtc) == 80) return Srefresh16DIB80(picture, source);
  DrawDib(picture, source, ColourMode::Sixteen, kCopyBytes, InOrder(source));
}

void Srefresh16DIB80(Picture& picture, const PictureSource& source) {
  DrawDib(picture, source, ColourMode::Sixteen, kCopyBytes80,
          [&source](ScreenWalk& walk, int32_t r, RowBytes& row) { return ReadRow80(source, walk, r, row); });
}

}  // namespace quoll
