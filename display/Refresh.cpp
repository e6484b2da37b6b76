// The picture's box, its border, and its pixels for whoever wants them. They are made in RefreshPlain.cpp and
// RefreshDib.cpp.
#include "display/Refresh.h"

#include <algorithm>

#include "display/ScreenWalk.h"

namespace quoll {

// Registers are numbers of 32 bits for scripts: places wrap, sizes stay within what a program can set.
void PlacePicture(Picture& picture, const Crtc& crtc) {
  const auto reg = [&crtc](size_t n) { return static_cast<uint32_t>(crtc.CrtcRegs[n]); };
  picture.Left = static_cast<int32_t>((83U - reg(2)) * 8U);
  picture.Top = static_cast<int32_t>((reg(5) - reg(7) * 4U) * 2U + 572U);
  picture.Width = CharactersPerRow(crtc) * 8;
  picture.Height = (crtc.CrtcRegs[6] & 0x7F) * 8;
}

void SizeScreenBits(Picture& picture) {
  const size_t size = static_cast<size_t>(picture.Width) * picture.Height * 4;
  if (picture.ScreenBits.size() != size) picture.ScreenBits.assign(size, 0);
}

void BorderDraw(Picture& picture, Palette& palette) {
  picture.Border.assign(palette.BorderLines.begin(), palette.BorderLines.end());
  BorderCarryOver(palette);
  ++picture.borders;
}

std::vector<uint8_t> PicturePixels(const Picture& picture) {
  const int32_t width = std::max(picture.Width, 0);
  const int32_t height = std::max(picture.Height, 0);
  const std::vector<uint8_t>& bits = picture.shownFromDib ? picture.DibBits : picture.ScreenBits;
  const size_t pixelBytes = picture.shownFromDib ? 3 : 4;
  const size_t pitch = static_cast<size_t>(picture.shownFromDib ? picture.DibWidth : width) * pixelBytes;

  std::vector<uint8_t> pixels(static_cast<size_t>(width) * height * 3);
  uint8_t* out = pixels.data();
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x, out += 3) {
      const size_t inRow = x * pixelBytes;
      const size_t at = y * pitch + inRow;
      if (inRow >= pitch || at + pixelBytes > bits.size()) continue;  // outside what was drawn: black
      out[0] = bits[at + 2];
      out[1] = bits[at + 1];
      out[2] = bits[at];
    }
  }
  return pixels;
}

}  // namespace quoll
