#include "desktop/widgets/ScopeBox.h"

#include <QPainter>
#include <cmath>

#include "forms/FDXF.h"

namespace quoll {

namespace {

constexpr QRgb kGreen = qRgb(0, 255, 0);
constexpr QSize kPoints(222, 64);
constexpr int kZoom = 2;

}  // namespace

ScopeBox::ScopeBox(const char* name, const QString& accessibleName) : image(kPoints, QImage::Format_RGB32) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  setFixedSize(kPoints * kZoom);
  image.fill(Qt::black);
}

void ScopeBox::Draw(const std::array<uint8_t, kBlockBytes>& block, int offset) {
  image.fill(Qt::black);
  for (int k = 0; k < kBlockBytes; k += 2) {
    const ScopePoint point = ScopePointAt(k, block[static_cast<size_t>(k) + static_cast<size_t>(offset)]);
    const QPoint pixel(static_cast<int>(std::lrint(point.x)), static_cast<int>(std::lrint(point.y)));
    if (image.rect().contains(pixel)) image.setPixel(pixel, kGreen);
  }
  update();
}

void ScopeBox::paintEvent(QPaintEvent* /*event*/) { QPainter(this).drawImage(rect(), image); }

}  // namespace quoll
