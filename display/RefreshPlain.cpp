// The plain path: a 32-bit bitmap with a gap row after each screen row. Nothing ever writes the
// gaps, so they stay black and the picture shows scan lines.
#include <algorithm>
#include <cstring>

#include "machine/Machine.h"
#include "display/ScreenWalk.h"

namespace quoll {

namespace {

constexpr size_t kPixelBytes = 4;

// The gap is that of 512 pixels whatever the width: another width shears the picture. Wanted.
constexpr size_t kGapBytes = 512 * kPixelBytes;

void DrawPlain(Machine& m, ColourMode mode, bool noise) {
  ScreenWalk walk = StartPicture(m, mode);
  auto decoder = MakeRowDecoder<kPixelBytes>(mode);
  std::vector<uint8_t>& bits = m.picture.ScreenBits;
  RowBytes row;
  std::array<uint8_t, kMaxRowBytes * 8 * kPixelBytes> line;
  const size_t lineBytes = static_cast<size_t>(walk.bytesPerRow) * 8 * kPixelBytes;

  size_t position = 0;
  for (int32_t r = 1; r <= walk.rows; ++r) {
    const std::span<uint8_t> bytes = ReadRow(m, walk, row);
    if (noise) NoiseRow(m, bytes);
    SetPalette(decoder, PaletteOfRow(m.palette, r));
    DecodeRow(decoder, bytes, line.data());
    // Narrow pictures run past the end, their gaps being longer than their rows; that part is lost.
    if (position < bits.size())
      std::memcpy(bits.data() + position, line.data(), std::min(lineBytes, bits.size() - position));
    position += lineBytes + kGapBytes;
  }
  m.picture.shownFromDib = false;
}

}  // namespace

void Srefresh2(Machine& m) {
  if (m.screen.xScreenDIB) return Srefresh2DIB(m);
  DrawPlain(m, ColourMode::Two, m.screen.xScreenNoise);
}

void Srefresh4(Machine& m) {
  if (m.screen.xScreenDIB) return Srefresh4DIB(m);
  DrawPlain(m, ColourMode::Four, false);
}

void Srefresh16(Machine& m) {
  if (m.screen.xScreenDIB) return Srefresh16DIB(m);
  DrawPlain(m, ColourMode::Sixteen, false);
}

}  // namespace quoll
