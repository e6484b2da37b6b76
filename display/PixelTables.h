// How a screen byte becomes eight device pixels. In every colour mode four bits of the byte decide
// its left four device pixels and the other four bits the right ones. So a table of sixteen times four
// pixels is enough for a palette, small enough to be made anew whenever the palette changes.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "display/Palette.h"

namespace quoll {

enum class ColourMode { Two, Four, Sixteen };

struct Pixel {
  uint8_t blue = 0, green = 0, red = 0;
};

using PaletteEntries = std::array<uint8_t, 4>;

// Channels of a palette byte: blue is bit 0, red bit 2, green bit 4; bit 6 doubles what there is. The unequal
// levels of the 2-colour mode (254, 248, 224) are wanted.
inline Pixel TwoColourPixel(uint8_t c) {
  const int m = (c & 64) != 0 ? 2 : 1;
  Pixel pixel;
  pixel.blue = static_cast<uint8_t>((c & 1) * m * 127);
  pixel.red = static_cast<uint8_t>((c & 4) * m * 31);
  pixel.green = static_cast<uint8_t>((c & 16) * m * 7);
  return pixel;
}

inline Pixel FourColourPixel(uint8_t c) {
  const int m = (c & 64) != 0 ? 2 : 1;
  const auto level = [m](int bit, int factor) {
    return static_cast<uint8_t>(std::lround(bit * m * factor * 1.135));
  };
  Pixel pixel;
  pixel.blue = level(c & 1, 112);
  pixel.red = level(c & 4, 28);
  pixel.green = level(c & 16, 7);
  return pixel;
}

// index: 1 blue, 2 machine red, 4 machine green, 8 bright. Red and green are crossed on the way out since
// QBColor has 2 for green and 4 for red. Bright black stays black.
inline Pixel SixteenColourPixel(uint32_t index) {
  const int32_t colour = QBColor(static_cast<int32_t>(index == 8 ? 0 : index));
  Pixel pixel;
  pixel.blue = static_cast<uint8_t>(SplitBlue(colour));
  pixel.green = static_cast<uint8_t>(SplitRed(colour));
  pixel.red = static_cast<uint8_t>(SplitGreen(colour));
  return pixel;
}

// The four bits that decide the left and the right half of a byte's device pixels.
struct HalfKeys {
  uint8_t left = 0, right = 0;
};

constexpr HalfKeys KeysOf(ColourMode mode, uint32_t byte) {
  const auto bit = [byte](uint32_t n) { return (byte >> n) & 1U; };
  const auto key = [&bit](uint32_t b3, uint32_t b2, uint32_t b1, uint32_t b0) {
    return static_cast<uint8_t>(bit(b3) << 3U | bit(b2) << 2U | bit(b1) << 1U | bit(b0));
  };
  switch (mode) {
    case ColourMode::Two: return {key(7, 6, 5, 4), key(3, 2, 1, 0)};
    case ColourMode::Four: return {key(7, 3, 6, 2), key(5, 1, 4, 0)};
    case ColourMode::Sixteen: break;
  }
  return {key(7, 5, 3, 1), key(6, 4, 2, 0)};
}

using KeyTable = std::array<HalfKeys, 256>;

constexpr KeyTable MakeKeyTable(ColourMode mode) {
  KeyTable table{};
  for (uint32_t byte = 0; byte < table.size(); ++byte) table[byte] = KeysOf(mode, byte);
  return table;
}

inline constexpr std::array<KeyTable, 3> kKeyTables{
    MakeKeyTable(ColourMode::Two), MakeKeyTable(ColourMode::Four), MakeKeyTable(ColourMode::Sixteen)};

// The four palette entries as pixels. Without a use in the 16-colour mode.
inline std::array<Pixel, 4> PaletteColours(ColourMode mode, const PaletteEntries& palette) {
  std::array<Pixel, 4> colours;
  for (size_t i = 0; i < colours.size(); ++i)
    colours[i] = mode == ColourMode::Two ? TwoColourPixel(palette[i]) : FourColourPixel(palette[i]);
  return colours;
}

// Colour of device pixel 0 to 3, from the left, of a half with this key.
inline Pixel HalfPixel(ColourMode mode, const std::array<Pixel, 4>& colours, uint32_t key, uint32_t place) {
  switch (mode) {
    case ColourMode::Two: return colours[(key >> (3 - place)) & 1U];
    case ColourMode::Four: {
      // Two bits a pixel; the one from the high nibble is the low bit of the palette index.
      const uint32_t pair = (key >> (place < 2 ? 2U : 0U)) & 3U;
      return colours[(pair >> 1U) | ((pair & 1U) << 1U)];
    }
    case ColourMode::Sixteen: break;
  }
  return SixteenColourPixel(key);
}

// Decoder of one picture. kPixelBytes is 4 for the plain path, 3 for the DIB path.
template <size_t kPixelBytes>
struct RowDecoder {
  static constexpr size_t kHalfBytes = 4 * kPixelBytes;

  ColourMode mode;
  PaletteEntries palette{};  // that of the table
  std::array<std::array<uint8_t, kHalfBytes>, 16> halves{};
};

template <size_t kPixelBytes>
void FillHalves(RowDecoder<kPixelBytes>& decoder) {
  const std::array<Pixel, 4> colours = PaletteColours(decoder.mode, decoder.palette);
  for (uint32_t key = 0; key < 16; ++key) {
    for (uint32_t place = 0; place < 4; ++place) {
      const Pixel pixel = HalfPixel(decoder.mode, colours, key, place);
      uint8_t* const out = decoder.halves[key].data() + place * kPixelBytes;
      out[0] = pixel.blue;
      out[1] = pixel.green;
      out[2] = pixel.red;
    }
  }
}

template <size_t kPixelBytes>
RowDecoder<kPixelBytes> MakeRowDecoder(ColourMode mode) {
  RowDecoder<kPixelBytes> decoder{.mode = mode};
  FillHalves(decoder);
  return decoder;
}

// Takes over the palette of the row to come. The 16-colour mode has none.
template <size_t kPixelBytes>
void SetPalette(RowDecoder<kPixelBytes>& decoder, const PaletteEntries& palette) {
  if (decoder.mode == ColourMode::Sixteen || decoder.palette == palette) return;
  decoder.palette = palette;
  FillHalves(decoder);
}

// Decodes a row; out takes 8 x kPixelBytes bytes for each screen byte.
template <size_t kPixelBytes>
void DecodeRow(const RowDecoder<kPixelBytes>& decoder, std::span<const uint8_t> bytes, uint8_t* out) {
  constexpr size_t kHalfBytes = RowDecoder<kPixelBytes>::kHalfBytes;
  const KeyTable& keys = kKeyTables[static_cast<size_t>(decoder.mode)];
  for (const uint8_t byte : bytes) {
    const HalfKeys key = keys[byte];
    std::memcpy(out, decoder.halves[key.left].data(), kHalfBytes);
    std::memcpy(out + kHalfBytes, decoder.halves[key.right].data(), kHalfBytes);
    out += 2 * kHalfBytes;
  }
}

}  // namespace quoll
