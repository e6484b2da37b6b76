// The way through video RAM that both picture paths take: bytes follow each other without regard to
// rows, and the 16 KB page wraps.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "display/PixelTables.h"
#include "display/Refresh.h"

namespace quoll {

// The widest row that the CRTC can ask for, in screen bytes.
inline constexpr int32_t kMaxRowBytes = 255;

using RowBytes = std::array<uint8_t, kMaxRowBytes>;

// Characters of eight device pixels in a row of the picture, 0 to 255. R1 holds a byte; scripts can write
// more.
inline int32_t CharactersPerRow(const Crtc& crtc) { return crtc.CrtcRegs[1] & 0xFF; }

// Offset in MemImage of the video page that is displayed, by bits 5-4 of port 0x0F.
int32_t VideoPage(const PortBytes& ports);

struct ScreenWalk {
  int32_t base = 0;         // offset of the video page in MemImage
  int32_t address = 0;      // of the next byte; programs can put it outside the page
  int32_t rows = 0;         // screen rows of the picture, two device rows each
  int32_t bytesPerRow = 0;  // 0 to kMaxRowBytes
};

// Begins a picture: counts it, notes the page, brings the DIB array to the box's size.
ScreenWalk StartPicture(Picture& picture, const PictureSource& source, ColourMode mode);

// Reads the next row's bytes into the front of row and gives that part.
std::span<uint8_t> ReadRow(const PictureSource& source, ScreenWalk& walk, RowBytes& row);

// The same for the 80-column picture. row counts from 0; each sixteen rows of the picture come from
// scattered places near the running address, and nothing wraps.
std::span<uint8_t> ReadRow80(const PictureSource& source, ScreenWalk& walk, int32_t number, RowBytes& row);

// Snow of the 2-colour mode: now and then a byte has its even bits set from its odd ones.
void NoiseRow(Random& random, std::span<uint8_t> row);

// Palette in force at a screen row, counted from 1. Rows past the history's last shown line take that.
PaletteEntries PaletteOfRow(const Palette& palette, int32_t row);

}  // namespace quoll
