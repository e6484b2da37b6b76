// The plain path: a 32-bit bitmap with a gap row after each screen row. Nothing ever writes the
// gaps, so they stay black and the picture shows scan lines.
#include <algorithm>
#include <cstring>

#include "display/ScreenWalk.h"

namespace quoll {

namespace {

constexpr size_t kPixelBytes = 4;

// The gap is that of 512 pixels whatever the width: another width shears the picture. Wanted.
constexpr size_t kGapBytes = 512 * kPixelBytes;

void DrawPlain(Picture& picture, const PictureSource& source, ColourMode mode, bool noise) {
  ScreenWalk walk = StartPicture(picture, source, mode);
  auto decoder = MakeRowDecoder<kPixelBytes>(mode);
  std::vector<uint8_t>& bits = picture.ScreenBits;
  RowBytes row;
  std::array<uint8_t, kMaxRowBytes * 8 * kPixelBytes> line;
  const size_t lineBytes = static_cast<size_t>(walk.bytesPerRow) * 8 * kPixelBytes;

  size_t position = 0;
  for (int32_t r = 1; r <= walk.rows; ++r) {
    const std::span<uint8_t> bytes = ReadRow(source, walk, row);
    if (noise) NoiseRow(source.random, bytes);
    SetPalette(decoder, PaletteOfRow(source.palette, r));
    DecodeRow(decoder, bytes, line.data());
    // Narrow pictures run past the end, their gaps being longer than their rows; that part is lost.
    if (position < bits.size())
      std::memcpy(bits.data() + position, line.data(), std::min(lineBytes, bits.size() - position));
    position += lineBytes + kGapBytes;
  }
  picture.shownFromDib = false;
}

}  // namespace

void Srefresh2(Picture& picture, const PictureSource& source) {
  if (source.dib) return Srefresh2DIB(picture, source);
  DrawPlain(picture, source, ColourMode::Two, source.noise);
}

void Srefresh4(Picture& picture, const PictureSource& source) {
  if (source.dib) return Srefresh4DIB(picture, source);
  DrawPlain(picture, source, ColourMode::Four, false);
}

void Srefresh16(Picture& picture, const PictureSource& source) {
  if (source.dib) return Srefresh16DIB(picture, source);
  DrawPlain(picture, source, ColourMode::Sixteen, false);
}

}  // namespace quoll
