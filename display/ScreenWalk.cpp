#include "display/ScreenWalk.h"

#include <algorithm>

namespace quoll {

namespace {

constexpr int32_t kPageSize = 0x4000;

// Offsets of the four video pages, by bits 5-4 of port 0x0F.
constexpr std::array<int32_t, 4> kPageBases{0x10000, 0x20000, 0x24000, 0x28000};

// The start in R12 and R13 counts in units of the colour mode.
uint32_t StartUnit(ColourMode mode) {
  switch (mode) {
    case ColourMode::Two: return 8;
    case ColourMode::Four: return 4;
    case ColourMode::Sixteen: break;
  }
  return 1;
}

// Scripts can put any number into the CRTC, so sums of addresses wrap at 32 bits.
int32_t Sum(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

uint8_t ByteAt(const PictureSource& source, int32_t address) {
  const auto place = static_cast<size_t>(address);
  return address >= 0 && place < source.memory.size() ? source.memory[place] : uint8_t{0};
}

// Once only: an address further above the page stays above it.
int32_t WrapOnce(int32_t base, int32_t address) {
  return address > base + kPageSize - 1 ? address - kPageSize : address;
}

int32_t RoundUp(int32_t value, int32_t step) { return (value + step - 1) / step * step; }

void SizeDib(Picture& picture) {
  const int32_t width = RoundUp(picture.Width, 4);
  const int32_t height = RoundUp(picture.Height, 2);
  if (width == picture.DibWidth && height == picture.DibHeight) return;
  picture.DibWidth = width;
  picture.DibHeight = height;
  picture.DibBits.resize(static_cast<size_t>(width) * height * 3);
}

// Where a row of the 80-column picture is read: distance from the running address, and the column,
// counted from 1, from which on another distance holds. The last three rows break the pattern: wanted.
struct Remap {
  int32_t first, switchColumn, second;
};

constexpr std::array<Remap, 16> kRemaps{{
    {0, 65, 192},    //
    {-16, 65, 176},  //
    {-32, 65, 160},  //
    {-48, 65, 144},  //
    {-48, 49, 144},  //
    {-64, 49, 128},  //
    {-80, 49, 112},  //
    {-96, 49, 96},   //
    {-96, 33, 96},   //
    {-112, 33, 80},  //
    {-128, 33, 64},  //
    {-144, 33, 48},  //
    {-144, 17, 48},  //
    {-32, 17, 32},   //
    {-112, 17, 16},  //
    {-192, 17, 0},
}};

}  // namespace

int32_t VideoPage(const PortBytes& ports) { return kPageBases[ports[0x0F] >> 4 & 3]; }

ScreenWalk StartPicture(Picture& picture, const PictureSource& source, ColourMode mode) {
  ++picture.shown;
  picture.page = source.ports[0x0F] & 0x30;
  SizeDib(picture);

  ScreenWalk walk;
  walk.base = VideoPage(source.ports);
  const auto& regs = source.crtc.CrtcRegs;
  const uint32_t start =
      (static_cast<uint32_t>(regs[12]) * 256U + static_cast<uint32_t>(regs[13])) * StartUnit(mode);
  walk.address = WrapOnce(walk.base, Sum(walk.base, static_cast<int32_t>(start)));
  walk.rows = picture.DibHeight / 2;
  walk.bytesPerRow = std::min(picture.DibWidth / 8, kMaxRowBytes);
  return walk;
}

std::span<uint8_t> ReadRow(const PictureSource& source, ScreenWalk& walk, RowBytes& row) {
  const std::span<uint8_t> bytes = std::span(row).first(walk.bytesPerRow);
  for (uint8_t& byte : bytes) {
    byte = ByteAt(source, walk.address);
    walk.address = WrapOnce(walk.base, Sum(walk.address, 1));
  }
  return bytes;
}

std::span<uint8_t> ReadRow80(const PictureSource& source, ScreenWalk& walk, int32_t number, RowBytes& row) {
  const Remap& remap = kRemaps[number % 16];
  const std::span<uint8_t> bytes = std::span(row).first(walk.bytesPerRow);
  int32_t column = 1;
  for (uint8_t& byte : bytes) {
    byte = ByteAt(source, Sum(walk.address, column < remap.switchColumn ? remap.first : remap.second));
    walk.address = Sum(walk.address, 1);
    ++column;
  }
  return bytes;
}

void NoiseRow(Random& random, std::span<uint8_t> row) {
  for (uint8_t& byte : row) {
    // More than 250 when 255 times the number is rounded; the half itself would go to the even 250.
    if (RandomNext(random) * 255.0 > 250.5) byte = static_cast<uint8_t>(byte | ((byte & 0xAA) >> 1));
  }
}

PaletteEntries PaletteOfRow(const Palette& palette, int32_t row) {
  const int32_t line = std::min(row, Palette::kLastShownLine);
  return {palette.PalHistory[0][line], palette.PalHistory[1][line], palette.PalHistory[2][line],
          palette.PalHistory[3][line]};
}

}  // namespace quoll
