#include "desktop/widgets/Scope.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/widgets/Colour.h"

namespace quoll {

namespace {

// A square brush that moves over device pixels, which keeps a long trace cheap and every edge sharp.
struct Pen {
  QImage& image;
  QRgb colour;
  qreal scale;  // device pixels to a unit
  int size;     // device pixels, a unit's or one

  int Pixel(qreal units) const {
    const qreal limit = 2.0 * std::max(image.width(), image.height());
    return static_cast<int>(std::floor(std::clamp(units * scale, -limit, limit)));
  }
  void Fill(int left, int right, int top, int bottom) const {
    for (int y = std::max(top, 0); y < std::min(bottom, image.height()); ++y) {
      auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
      for (int x = std::max(left, 0); x < std::min(right, image.width()); ++x) line[x] = colour;
    }
  }
  void Dot(qreal x, qreal y) const { Fill(Pixel(x), Pixel(x) + size, Pixel(y), Pixel(y) + size); }
  // A column for each device pixel between the two points, as high as the line climbs in it.
  void Line(qreal x0, qreal y0, qreal x1, qreal y1) const {
    const int first = Pixel(x0), last = Pixel(x1);
    const auto at = [&](int column) {
      const qreal share = x1 > x0 ? std::clamp((column / scale - x0) / (x1 - x0), 0.0, 1.0) : 1.0;
      return y0 + (y1 - y0) * share;
    };
    for (int column = first; column <= last; ++column) {
      const auto [low, high] = std::minmax(Pixel(at(column)), Pixel(at(column + 1)));
      Fill(column, column + size, low, high + size);
    }
  }
};

}  // namespace

QImage Scope::Draw(const Trace& trace, const ScopeBox& box, qreal ratio) {
  QImage image((QSizeF(box.units) * box.zoom * ratio).toSize(), QImage::Format_RGB32);
  image.fill(Qt::black);
  const qreal scale = box.zoom * ratio;
  const Pen pen{image, ToColour(trace.colour).rgb(), scale, std::max(1, static_cast<int>(scale))};
  qreal before = NAN;
  for (size_t i = 0; i < trace.y.size(); ++i) {
    const qreal x = static_cast<qreal>(i) * static_cast<qreal>(trace.step);
    const auto y = static_cast<qreal>(trace.y[i]);
    if (std::isfinite(y)) {
      if (box.dots || !std::isfinite(before)) {
        pen.Dot(x, y);
      } else {
        pen.Line(x - static_cast<qreal>(trace.step), before, x, y);
      }
    }
    before = y;
  }
  image.setDevicePixelRatio(ratio);
  return image;
}

Scope::Scope(const ScopeBox& layout, QWidget* parent) : QWidget(parent), box(layout) {
  setFixedSize(box.units * box.zoom);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void Scope::Show(const Trace& now) {
  if (now.drawings == trace.drawings) return;
  trace = now;
  image = QImage();
  update();
}

void Scope::paintEvent(QPaintEvent* /*event*/) {
  // Made when it is painted: the window may have gone to a screen of another scale.
  if (image.isNull() || image.devicePixelRatio() != devicePixelRatioF())
    image = Draw(trace, box, devicePixelRatioF());
  QPainter(this).drawImage(QPoint(0, 0), image);
}

}  // namespace quoll
