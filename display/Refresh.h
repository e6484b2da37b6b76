// The picture builder: once a frame, video RAM and the palette history become the pixels of the
// picture box PicD. A whole-frame builder, not a beam: all bytes are decoded at one moment.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/PortBytes.h"
#include "core/Random.h"
#include "display/Crtc.h"
#include "display/Palette.h"

namespace quoll {

// The picture box and what was last drawn into it.
struct Picture {
  // Place of the box in the main window, in window pixels. Machine programs can put it anywhere.
  int32_t Left = 0, Top = 0, Width = 0, Height = 0;

  // Plain path: blue, green, red and an unused byte a pixel; rows follow each other at 2048 bytes
  // whatever the width, so that another width than 512 shears.
  std::vector<uint8_t> ScreenBits;
  // DIB path: blue, green, red a pixel, rows of DibWidth pixels.
  std::vector<uint8_t> DibBits;
  int32_t DibWidth = 0;   // Width rounded up to a multiple of 4
  int32_t DibHeight = 0;  // Height rounded up to a multiple of 2

  bool shownFromDib = false;  // which of the two holds the last picture
  uint32_t shown = 0;         // pictures built so far
  uint32_t borders = 0;       // borders painted so far
  int32_t page = 0;           // bits 5-4 of port 0x0F at the last picture

  // The border as last painted: one colour for each of the 288 bands of two window rows.
  std::vector<int32_t> Border;

  bool operator==(const Picture&) const = default;
};

// What a picture is made from.
struct PictureSource {
  std::span<const uint8_t> memory;  // the machine's whole memory image
  const PortBytes& ports;
  const Crtc& crtc;
  const Palette& palette;  // its history complete
  Random& random;          // for the noise
  bool dib;                // xScreenDIB
  bool noise;              // xScreenNoise
};

// Puts the box where the CRTC wants it.
void PlacePicture(Picture& picture, const Crtc& crtc);
// Brings ScreenBits to the box's size: a new array is black, one of the right size keeps what was drawn.
void SizeScreenBits(Picture& picture);

// The routines of the three colour modes. Each builds one whole picture: the plain ones into ScreenBits, with
// black gap rows between the screen rows; the DIB ones into DibBits, with every row doubled. A plain
// one passes to its DIB twin when dib is set. ScreenBits must have the box's size.
void Srefresh2(Picture& picture, const PictureSource& source);
void Srefresh4(Picture& picture, const PictureSource& source);
void Srefresh16(Picture& picture, const PictureSource& source);
void Srefresh2DIB(Picture& picture, const PictureSource& source);
void Srefresh4DIB(Picture& picture, const PictureSource& source);
void Srefresh16DIB(Picture& picture, const PictureSource& source);
// The picture of 80 characters a row, to which Srefresh16DIB passes when R1 is 80.
void Srefresh16DIB80(Picture& picture, const PictureSource& source);

// Paints the border from BorderLines; the next frame begins with the last band's colour.
void BorderDraw(Picture& picture, Palette& palette);

// The last picture as rows from the top, three bytes red, green, blue a pixel: Width x Height pixels.
std::vector<uint8_t> PicturePixels(const Picture& picture);

}  // namespace quoll
