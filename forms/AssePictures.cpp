// Pictures on their way into the video memory.
#include <algorithm>

#include "core/Host.h"
#include "display/Refresh.h"
#include "display/ScreenWalk.h"
#include "forms/Asse.h"
#include "forms/AsseParts.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr int32_t kSmallWidth = 256, kSmallHeight = 240;  // of Image1

Pixels PixelsOf(const PixelImage& image) {
  return {image.width, image.height, {image.pixels.begin(), image.pixels.end()}};
}

std::vector<uint8_t> BytesOfPicture(const Machine& m, ScreenColours colours) {
  const AsseFiles& files = m.asse.files;
  return PictureBytes(PixelsOf(files.ResPic), colours, files.HScroll1.value);
}

// The picture stretched to a small box.
PixelImage InSmall(const PixelImage& picture) {
  PixelImage small{kSmallWidth, kSmallHeight, {}, picture.drawings};
  if (picture.width < 1 || picture.height < 1) return small;
  small.pixels.reserve(size_t{kSmallWidth} * kSmallHeight);
  for (int64_t y = 0; y < kSmallHeight; ++y) {
    for (int64_t x = 0; x < kSmallWidth; ++x) {
      const int64_t from =
          y * picture.height / kSmallHeight * picture.width + x * picture.width / kSmallWidth;
      small.pixels.push_back(picture.pixels[static_cast<size_t>(from)]);
    }
  }
  return small;
}

void Draw(ScreenColours colours, Picture& picture, const PictureSource& source) {
  switch (colours) {
    case ScreenColours::Two: return Srefresh2DIB(picture, source);
    case ScreenColours::Four: return Srefresh4DIB(picture, source);
    case ScreenColours::Sixteen: return Srefresh16DIB(picture, source);
  }
}

// Into the video page that is displayed, whatever the processor sees of it.
void Import(Machine& m, ScreenColours colours) {
  if (m.asse.files.ResPic.pixels.empty()) return;
  std::ranges::copy(BytesOfPicture(m, colours), m.MemImage.begin() + VideoPage(m.PortShadow));
}

}  // namespace

bool OpenPicture(Machine& m, const std::string& file) {
  AsseFiles& files = m.asse.files;
  PixelImage picture;
  const bool read = m.host->LoadPicture(file, picture) && picture.width > 0 && picture.height > 0 &&
                    picture.pixels.size() == static_cast<size_t>(picture.width) * picture.height;
  if (!read) {
    asse::TellFileOpenError(m);
    return false;
  }
  picture.drawings = files.ResPic.drawings + 1;
  files.Image1 = InSmall(picture);
  files.ResPic = std::move(picture);
  return true;
}

PixelImage PicturePreview(const Machine& m, ScreenColours colours) {
  const PixelImage& picked = m.asse.files.ResPic;
  if (picked.pixels.empty()) return {};

  // A machine's display of just this screen: 64 characters in 60 rows from the page's start.
  PortBytes ports = m.PortShadow;
  ports[0x0F] = 0;
  std::vector<uint8_t> memory(kVid0);
  std::ranges::copy(BytesOfPicture(m, colours), std::back_inserter(memory));
  Crtc crtc;
  crtc.CrtcRegs[1] = kPictureRowBytes;
  crtc.CrtcRegs[6] = kPictureHeight / 8;
  Palette palette;
  PALComplete(palette, ports);
  Random random;
  Picture picture;
  PlacePicture(picture, crtc);
  Draw(colours, picture,
       {.memory = memory,
        .ports = ports,
        .crtc = crtc,
        .palette = palette,
        .random = random,
        .dib = true,
        .noise = false});
  picture.shownFromDib = true;

  const std::vector<uint8_t> bytes = PicturePixels(picture);
  PixelImage preview{picture.Width, picture.Height, {}, picked.drawings};
  preview.pixels.reserve(bytes.size() / 3);
  for (size_t at = 0; at + 2 < bytes.size(); at += 3)
    preview.pixels.push_back(bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16);
  return preview;
}

namespace asse {

void LoadPic2(Machine& m) { Import(m, ScreenColours::Two); }
void LoadPic4(Machine& m) { Import(m, ScreenColours::Four); }
void LoadPic16(Machine& m) { Import(m, ScreenColours::Sixteen); }

}  // namespace asse
}  // namespace quoll
