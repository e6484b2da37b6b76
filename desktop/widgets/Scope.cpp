#include "desktop/widgets/Scope.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "desktop/widgets/Colour.h"

namespace quoll {

namespace {

constexpr qreal kFarthest = 1e5;  // units

// A square brush that moves over device pixels, which keeps a long trace cheap and every edge sharp.
struct Pen {
  QImage& image;
  QRgb colour;
  QSizeF scale;  // device pixels to a unit, across and down
  int size;      // device pixels, a unit's or one

  int Column(qreal x) const { return static_cast<int>(std::floor(x * scale.width())); }
  int Row(qreal y) const { return static_cast<int>(std::floor(y * scale.height())); }
  void Fill(int left, int right, int top, int bottom) const {
    for (int y = std::max(top, 0); y < std::min(bottom, image.height()); ++y) {
      auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
      for (int x = std::max(left, 0); x < std::min(right, image.width()); ++x) line[x] = colour;
    }
  }
  void Dot(QPointF at) const { Fill(Column(at.x()), Column(at.x()) + size, Row(at.y()), Row(at.y()) + size); }
  // A column for each device pixel between the two points, as high as the line climbs in it.
  void Line(QPointF a, QPointF b) const {
    if (a.x() > b.x()) std::swap(a, b);
    const auto at = [&](int column) {
      const qreal x = std::clamp(column / scale.width(), a.x(), b.x());
      if (x <= a.x()) return a.y();
      return x >= b.x() ? b.y() : a.y() + (b.y() - a.y()) * (x - a.x()) / (b.x() - a.x());
    };
    const int last = std::min(Column(b.x()), image.width() - 1);
    for (int column = std::max(Column(a.x()), -size); column <= last; ++column) {
      const int here = Row(at(column));
      const int next = Row(column < Column(b.x()) ? at(column + 1) : b.y());
      Fill(column, column + size, std::min(here, next), std::max(here, next) + size);
    }
  }
};

QSize PixelsOf(const QSizeF& size, qreal ratio) { return (size * ratio).toSize(); }

}  // namespace

QImage Scope::Draw(const Trace& trace, const ScopeBox& box, qreal ratio, QSize size) {
  if (size.isEmpty()) size = box.units * box.zoom;
  QImage image(PixelsOf(size, ratio), QImage::Format_RGB32);
  image.fill(Qt::black);
  const QSizeF scale(size.width() * ratio / box.units.width(), size.height() * ratio / box.units.height());
  const long brush = std::lround(std::min(scale.width(), scale.height()));
  const Pen pen{image, ToColour(trace.colour).rgb(), scale, std::max(1, static_cast<int>(brush))};
  // Farther out nothing is seen, and sums stay exact.
  const auto near = [](float units) { return std::clamp(static_cast<qreal>(units), -kFarthest, kFarthest); };
  std::optional<QPointF> before;
  for (size_t i = 0; i < trace.y.size(); ++i) {
    std::optional<QPointF> point;
    if (std::isfinite(trace.X(i)) && std::isfinite(trace.y[i]))
      point = QPointF(near(trace.X(i)), near(trace.y[i]));
    if (point && before && !box.dots) pen.Line(*before, *point);
    if (point && (!before || box.dots)) pen.Dot(*point);
    before = point;
  }
  image.setDevicePixelRatio(ratio);
  return image;
}

Scope::Scope(const ScopeBox& layout, QWidget* parent) : QWidget(parent), box(layout) {
  if (box.grows)
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  else
    setFixedSize(sizeHint());
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void Scope::Show(const Trace& now) {
  if (now.drawings == trace.drawings) return;
  trace = now;
  image = QImage();
  update();
}

void Scope::paintEvent(QPaintEvent* /*event*/) {
  // Made when it is painted: the window may have grown, or gone to a screen of another scale.
  const qreal ratio = devicePixelRatioF();
  if (image.size() != PixelsOf(size(), ratio) || image.devicePixelRatio() != ratio)
    image = Draw(trace, box, ratio, size());
  QPainter(this).drawImage(QPoint(0, 0), image);
}

}  // namespace quoll
