// A second picture builder for the tests: pixel by pixel, from the machine's rules and nothing else.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "machine/Machine.h"

namespace quoll::test {

// The arrays as they should be, kept from picture to picture as the machine keeps its own.
struct SlowPicture {
  std::vector<uint8_t> ScreenBits, DibBits;
  int dibWidth = 0, dibHeight = 0;
};

inline int32_t Wrap32(int64_t value) { return static_cast<int32_t>(static_cast<uint64_t>(value)); }

struct SlowColour {
  int red = 0, green = 0, blue = 0;
};

inline SlowColour SlowPaletteColour(int mode, int c) {
  const int m = (c & 0x40) != 0 ? 2 : 1;
  if (mode == 0) return {(c & 4) * m * 31, (c & 16) * m * 7, (c & 1) * m * 127};
  const auto round = [](double v) { return static_cast<int>(std::nearbyint(v)); };
  return {round((c & 4) * m * 28 * 1.135), round((c & 16) * m * 7 * 1.135), round((c & 1) * m * 112 * 1.135)};
}

// Device pixel x (0 to 7) of a byte.
inline SlowColour SlowPixel(int mode, int byte, int x, const std::array<int, 4>& palette) {
  const auto bit = [byte](int n) { return (byte >> n) & 1; };
  if (mode == 0) return SlowPaletteColour(0, palette[bit(7 - x)]);
  if (mode == 1) {
    static constexpr int kLow[4] = {7, 6, 5, 4};
    static constexpr int kHigh[4] = {3, 2, 1, 0};
    return SlowPaletteColour(1, palette[bit(kLow[x / 2]) + 2 * bit(kHigh[x / 2])]);
  }
  static constexpr SlowColour kQB[16] = {{0, 0, 0},       {0, 0, 128},   {0, 128, 0},   {0, 128, 128},
                                         {128, 0, 0},     {128, 0, 128}, {128, 128, 0}, {192, 192, 192},
                                         {128, 128, 128}, {0, 0, 255},   {0, 255, 0},   {0, 255, 255},
                                         {255, 0, 0},     {255, 0, 255}, {255, 255, 0}, {255, 255, 255}};
  const int right = x < 4 ? 1 : 0;
  const int colour = bit(right) + 2 * bit(2 + right) + 4 * bit(4 + right);
  const SlowColour qb = kQB[colour == 0 ? 0 : colour + 8 * bit(6 + right)];
  return {qb.green, qb.red, qb.blue};  // crossed
}

// Offset added to the address in the 80-column picture; row and column from 1.
inline int SlowOffset80(int row, int column) {
  static constexpr int kTable[16][3] = {{0, 65, 192},   {-16, 65, 176}, {-32, 65, 160}, {-48, 65, 144},
                                        {-48, 49, 144}, {-64, 49, 128}, {-80, 49, 112}, {-96, 49, 96},
                                        {-96, 33, 96},  {-112, 33, 80}, {-128, 33, 64}, {-144, 33, 48},
                                        {-144, 17, 48}, {-32, 17, 32},  {-112, 17, 16}, {-192, 17, 0}};
  const auto& line = kTable[(row - 1) % 16];
  return column >= line[1] ? line[2] : line[0];
}

// Builds what the machine's next redraw should build. m stays as it is.
inline void SlowRefresh(SlowPicture& picture, const Machine& m) {
  const auto& regs = m.crtc.CrtcRegs;
  const int width = (regs[1] & 255) * 8;
  const int height = (regs[6] & 127) * 8;
  const int mode = std::min(m.PortShadow[6] & 3, 2);
  const bool dib = m.screen.xScreenDIB;
  const bool columns80 = dib && mode == 2 && width == 640;

  auto history = m.palette.PalHistory;
  for (int i = m.palette.PalNextLine; i <= 255; ++i)
    for (int p = 0; p < 4; ++p) history[p][i] = m.PortShadow[0x60 + p];

  const size_t plainSize = static_cast<size_t>(width) * height * 4;
  if (picture.ScreenBits.size() != plainSize) picture.ScreenBits = std::vector<uint8_t>(plainSize);
  if (picture.dibWidth != width || picture.dibHeight != height) {  // multiples of 8 already
    picture.dibWidth = width;
    picture.dibHeight = height;
    picture.DibBits.resize(static_cast<size_t>(width) * height * 3);
  }
  auto& out = dib ? picture.DibBits : picture.ScreenBits;
  const int pixelBytes = dib ? 3 : 4;

  int32_t base = 0;
  switch (m.PortShadow[0x0F] & 0x30) {
    case 0x00: base = 0x10000; break;
    case 0x10: base = 0x20000; break;
    case 0x20: base = 0x24000; break;
    case 0x30: base = 0x28000; break;
    default: break;
  }
  const int factor = mode == 0 ? 8 : mode == 1 ? 4 : 1;
  int32_t address = Wrap32(base + (int64_t{regs[12]} * 256 + regs[13]) * factor);
  if (address > base + 16383) address -= 16384;

  Random random = m.random;
  size_t position = 0;
  const auto put = [&](size_t at, int value) {
    if (at < out.size()) out[at] = static_cast<uint8_t>(value);
  };
  for (int row = 1; row <= height / 2; ++row) {
    const size_t rowStart = position;
    for (int column = 1; column <= width / 8; ++column) {
      const int32_t from = columns80 ? Wrap32(int64_t{address} + SlowOffset80(row, column)) : address;
      int byte = from >= 0 && from <= 0x3C000 ? m.MemImage[from] : 0;
      address = Wrap32(int64_t{address} + 1);
      if (!columns80 && address > base + 16383) address -= 16384;
      if (mode == 0 && m.screen.xScreenNoise && std::nearbyint(RandomNext(random) * 255) > 250) {
        for (int odd = 1; odd < 8; odd += 2)
          if ((byte & (1 << odd)) != 0) byte |= 1 << (odd - 1);
      }
      const int line = std::min(row, 255);
      const std::array<int, 4> palette{history[0][line], history[1][line], history[2][line],
                                       history[3][line]};
      for (int x = 0; x < 8; ++x) {
        const SlowColour pixel = SlowPixel(mode, byte, x, palette);
        put(position, pixel.blue);
        put(position + 1, pixel.green);
        put(position + 2, pixel.red);
        position += pixelBytes;
      }
    }
    if (dib) {
      // A copy of fixed length to the next device row, taken from the array as it stands.
      const size_t count = columns80 ? 1920 : 1536;
      const size_t rest = out.size() - std::min(rowStart, out.size());
      const auto from = out.begin() + static_cast<std::ptrdiff_t>(out.size() - rest);
      const std::vector<uint8_t> before(from, from + static_cast<std::ptrdiff_t>(std::min(count, rest)));
      for (size_t i = 0; i < before.size(); ++i) put(position + i, before[i]);
      position += width * 3;
    } else {
      position += 2048;
    }
  }
}

// Empty when the arrays are the same, else where they differ first.
inline std::string FirstDifference(const std::vector<uint8_t>& expected, const std::vector<uint8_t>& found) {
  if (expected.size() != found.size())
    return "sizes " + std::to_string(expected.size()) + " and " + std::to_string(found.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    if (expected[i] != found[i])
      return "at " + std::to_string(i) + ": " + std::to_string(expected[i]) + " expected, " +
             std::to_string(found[i]) + " found";
  }
  return "";
}

// Bytes without a pattern, the same in every run.
inline void FillMemory(Machine& m, uint32_t seed) {
  for (uint8_t& byte : m.MemImage) {
    seed = seed * 1664525U + 1013904223U;
    byte = static_cast<uint8_t>(seed >> 24U);
  }
}

inline void SetCrtc(Machine& m, int r1, int r6, int r12, int r13) {
  auto& regs = m.crtc.CrtcRegs;
  regs[1] = r1;
  regs[6] = r6;
  regs[12] = r12;
  regs[13] = r13;
}

inline void SetPalettePorts(Machine& m, int p0, int p1, int p2, int p3) {
  const int values[4] = {p0, p1, p2, p3};
  for (int p = 0; p < 4; ++p) m.PortShadow[0x60 + p] = static_cast<uint8_t>(values[p]);
}

}  // namespace quoll::test
