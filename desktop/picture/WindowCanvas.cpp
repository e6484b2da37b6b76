#include "desktop/picture/WindowCanvas.h"

#include <algorithm>
#include <cstring>

namespace quoll {

namespace {

constexpr size_t kLineBytes = kCanvasWidth * sizeof(QRgb);

}  // namespace

WindowCanvas::WindowCanvas() : image(kCanvasWidth, kCanvasHeight, QImage::Format_RGB32) {
  image.fill(Qt::black);
  bands.fill(kBlackPixel);
}

QRgb WindowCanvas::BandColour(int row) const {
  return bands[static_cast<size_t>(std::clamp(row, 0, kCanvasHeight - 1) / kBandRows)];
}

WindowCanvas::Rows WindowCanvas::Compose(const Picture& picture) {
  Rows changed;
  for (int y = 0; y < kCanvasHeight; ++y) {
    ComposeRow(picture, y, line);
    uchar* out = image.scanLine(y);
    // A band reaches beyond the canvas where the window is wider: its colour counts by itself.
    const QRgb band = BorderPixel(picture, y);
    if (std::memcmp(out, line.data(), kLineBytes) == 0 && band == BandColour(y)) continue;
    std::memcpy(out, line.data(), kLineBytes);
    // Taken over with the band's last row, so that its first one does not hide the change.
    if (y % kBandRows == kBandRows - 1) bands[static_cast<size_t>(y / kBandRows)] = band;
    changed.first = std::min(changed.first, y);
    changed.last = y;
  }
  return changed;
}

QImage PictureImage(const Picture& picture) {
  const DrawnBox box = DrawnPicture(picture);
  if (box.bits == nullptr) return {};
  return QImage(box.bits, box.width, box.height, static_cast<qsizetype>(box.pitch),
                box.pixelBytes == 3 ? QImage::Format_BGR888 : QImage::Format_RGB32);
}

}  // namespace quoll
