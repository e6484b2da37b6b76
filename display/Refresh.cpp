// The picture's order of steps, from the CRTC's placing of the box to the border. The pixels are made in
// RefreshPlain.cpp and RefreshDib.cpp.
#include "display/Refresh.h"

#include <algorithm>

#include "machine/Machine.h"
#include "display/ScreenWalk.h"

namespace quoll {

namespace {

// Registers are numbers of 32 bits for scripts: places wrap, sizes stay within what a program can set.
void PlacePicture(Picture& picture, const Crtc& crtc) {
  const auto reg = [&crtc](size_t n) { return static_cast<uint32_t>(crtc.CrtcRegs[n]); };
  picture.Left = static_cast<int32_t>((83U - reg(2)) * 8U);
  picture.Top = static_cast<int32_t>((reg(5) - reg(7) * 4U) * 2U + 572U);
  picture.Width = CharactersPerRow(crtc) * 8;
  picture.Height = (crtc.CrtcRegs[6] & 0x7F) * 8;
}

// Faulty video chips. The last bytes of the page are spared: wanted.
void DamageVideo(Machine& m) {
  constexpr int32_t kLastDamaged = 0x13FAC;
  for (int32_t a = kVid0; a <= kLastDamaged; ++a) m.MemImage[a] = VidErr(m.errorsim, m.random, m.MemImage[a]);
}

// Missing chips of system RAM: their 16 KB reads 0xAA, and keeps that when the tick is taken off.
void DamageSystem(Machine& m) {
  constexpr int32_t kChipSize = 0x4000;
  const std::array<bool, 4> missing{m.errorsim.Check2, m.errorsim.Check3, m.errorsim.Check4,
                                    m.errorsim.Check5};
  for (int32_t u = 0; u < 4; ++u)
    if (missing[u]) std::fill_n(m.MemImage.begin() + u * kChipSize, kChipSize, uint8_t{0xAA});
}

// A new array is black; an array of the right size is drawn over, gaps and all.
void SizeScreenBits(Picture& picture) {
  const size_t size = static_cast<size_t>(picture.Width) * picture.Height * 4;
  if (picture.ScreenBits.size() != size) picture.ScreenBits.assign(size, 0);
}

void BuildPicture(Machine& m) {
  PlacePicture(m.picture, m.crtc);
  if (m.errorsim.Check1) DamageVideo(m);
  DamageSystem(m);
  PALComplete(m.palette, m.PortShadow);
  SizeScreenBits(m.picture);
  switch (m.PortShadow[6] & 3) {
    case 0: Srefresh2(m); break;
    case 1: Srefresh4(m); break;
    default: Srefresh16(m); break;
  }
}

}  // namespace

void redraw(Machine& m) {
  if (m.cpumon.Check5) BuildPicture(m);
  if (m.cpumon.Check6) BorderDraw(m);
}

void BorderDraw(Machine& m) {
  m.picture.Border.assign(m.palette.BorderLines.begin(), m.palette.BorderLines.end());
  BorderCarryOver(m.palette);
  ++m.picture.borders;
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
