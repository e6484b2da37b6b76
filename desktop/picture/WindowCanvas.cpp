#include "desktop/picture/WindowCanvas.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "display/Palette.h"

namespace quoll {

namespace {

constexpr size_t kLineBytes = kCanvasWidth * sizeof(QRgb);
constexpr QRgb kBlack = 0xFF000000U;

QRgb FromBorder(int32_t colour) { return qRgb(SplitRed(colour), SplitGreen(colour), SplitBlue(colour)); }

}  // namespace

WindowCanvas::WindowCanvas() : image(kCanvasWidth, kCanvasHeight, QImage::Format_RGB32) {
  image.fill(Qt::black);
  bands.fill(kBlack);
}

QRgb WindowCanvas::BandColour(int row) const {
  const int band = std::clamp(row / 2, 0, kCanvasHeight / 2 - 1);
  return bands[static_cast<size_t>(band)];
}

WindowCanvas::Rows WindowCanvas::Compose(const Picture& picture) {
  std::array<QRgb, kCanvasHeight / 2> wanted{};
  for (size_t i = 0; i < wanted.size(); ++i)
    wanted[i] = i < picture.Border.size() ? FromBorder(picture.Border[i]) : kBlack;

  // The box can lie anywhere, far outside the window too.
  const QImage box = PictureImage(picture);
  const int64_t left = picture.Left;
  const int64_t top = picture.Top;
  const int64_t from = std::clamp<int64_t>(left, 0, kCanvasWidth);
  const int64_t to = std::clamp<int64_t>(left + box.width(), from, kCanvasWidth);

  Rows changed;
  for (int y = 0; y < kCanvasHeight; ++y) {
    const auto band = static_cast<size_t>(y / 2);
    line.fill(wanted[band]);
    const int64_t row = y - top;
    if (row >= 0 && row < box.height() && to > from) {
      const uchar* pixels = box.constScanLine(static_cast<int>(row));
      if (box.depth() == 32) {
        std::memcpy(&line[static_cast<size_t>(from)], pixels + (from - left) * 4,
                    static_cast<size_t>(to - from) * 4);
      } else {
        pixels += (from - left) * 3;
        for (int64_t x = from; x < to; ++x, pixels += 3)
          line[static_cast<size_t>(x)] = qRgb(pixels[2], pixels[1], pixels[0]);
      }
    }
    uchar* out = image.scanLine(y);
    // A band reaches beyond the canvas where the window is wider: its colour counts by itself.
    if (std::memcmp(out, line.data(), kLineBytes) == 0 && wanted[band] == bands[band]) continue;
    std::memcpy(out, line.data(), kLineBytes);
    changed.first = std::min(changed.first, y);
    changed.last = y;
  }
  bands = wanted;
  return changed;
}

QImage PictureImage(const Picture& picture) {
  const bool dib = picture.shownFromDib;
  const std::vector<uint8_t>& bits = dib ? picture.DibBits : picture.ScreenBits;
  const int32_t rowPixels = dib ? picture.DibWidth : picture.Width;
  const int32_t width = std::min(picture.Width, rowPixels);
  if (width <= 0 || picture.Height <= 0) return {};
  const qsizetype pitch = qsizetype{rowPixels} * (dib ? 3 : 4);
  const auto rows = std::min<qsizetype>(picture.Height, static_cast<qsizetype>(bits.size()) / pitch);
  if (rows <= 0) return {};
  return QImage(bits.data(), width, static_cast<int>(rows), pitch,
                dib ? QImage::Format_BGR888 : QImage::Format_RGB32);
}

}  // namespace quoll
