#include "loop/Redraw.h"

#include <algorithm>

#include "machine/Machine.h"

namespace quoll {

namespace {

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

void BuildPicture(Machine& m) {
  PlacePicture(m.picture, m.crtc);
  if (m.errorsim.Check1) DamageVideo(m);
  DamageSystem(m);
  PALComplete(m.palette, m.PortShadow);
  SizeScreenBits(m.picture);
  const PictureSource source = SourceOf(m);
  switch (m.PortShadow[6] & 3) {
    case 0: Srefresh2(m.picture, source); break;
    case 1: Srefresh4(m.picture, source); break;
    default: Srefresh16(m.picture, source); break;
  }
}

}  // namespace

void redraw(Machine& m) {
  if (m.cpumon.Check5) BuildPicture(m);
  if (m.cpumon.Check6) BorderDraw(m.picture, m.palette);
}

PictureSource SourceOf(Machine& m) {
  return {.memory = m.MemImage,
          .ports = m.PortShadow,
          .crtc = m.crtc,
          .palette = m.palette,
          .random = m.random,
          .dib = m.screen.xScreenDIB,
          .noise = m.screen.xScreenNoise};
}

}  // namespace quoll
