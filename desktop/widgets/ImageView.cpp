#include "desktop/widgets/ImageView.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/widgets/Colour.h"

namespace quoll {

ImageView::ImageView(QSize place, QWidget* parent) : QWidget(parent) {
  setFixedSize(place);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void ImageView::Show(const PixelImage& now) {
  if (now.drawings == drawings) return;
  drawings = now.drawings;
  image = QImage(std::max(now.width, 0), std::max(now.height, 0), QImage::Format_RGB32);
  image.fill(Qt::black);
  size_t at = 0;
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width() && at < now.pixels.size(); ++x)
      line[x] = ToColour(now.pixels[at++]).rgb();
  }
  update();
}

void ImageView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (image.isNull()) return painter.fillRect(rect(), Qt::black);
  const QSizeF glass = QSizeF(size()) * devicePixelRatioF();
  const bool whole =
      std::fmod(glass.width(), image.width()) == 0 && std::fmod(glass.height(), image.height()) == 0;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !whole);
  painter.drawImage(rect(), image);
}

}  // namespace quoll
