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

int Floor(qreal value) {
  const auto whole = static_cast<int>(value);  // towards 0
  return whole - (whole > value ? 1 : 0);
}

// A square brush that moves over device pixels, which keeps a long trace cheap and every edge sharp.
class Pen {
 public:
  // scale: device pixels to a unit, across and down. brush: device pixels, a unit's or one.
  Pen(QImage& image, QRgb colourOfTrace, QSizeF scaleOfBox, int brush)
      : pixels(reinterpret_cast<QRgb*>(image.bits())),
        pitch(image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb))),
        columns(image.width()),
        rows(image.height()),
        colour(colourOfTrace),
        scale(scaleOfBox),
        size(brush) {}

  // What was written.
  Scope::Rows Written() const { return written; }

  void Dot(QPointF at) { Fill(Column(at.x()), Row(at.y()), Row(at.y()) + size); }
  // A column for each device pixel between the two points, as high as the line climbs in it.
  void Line(QPointF a, QPointF b) {
    if (a.x() > b.x()) std::swap(a, b);
    const auto at = [&](int column) {
      const qreal x = std::clamp(column / scale.width(), a.x(), b.x());
      if (x <= a.x()) return a.y();
      return x >= b.x() ? b.y() : a.y() + (b.y() - a.y()) * (x - a.x()) / (b.x() - a.x());
    };
    const int end = Column(b.x());
    int column = std::max(Column(a.x()), -size);
    int here = Row(at(column));
    for (; column <= std::min(end, columns - 1); ++column) {
      const int next = Row(column < end ? at(column + 1) : b.y());
      Fill(column, std::min(here, next), std::max(here, next) + size);
      here = next;
    }
  }

 private:
  int Column(qreal x) const { return Floor(x * scale.width()); }
  int Row(qreal y) const { return Floor(y * scale.height()); }
  // As wide as the brush.
  void Fill(int left, int top, int bottom) {
    const int first = std::max(left, 0), last = std::min(left + size, columns);
    top = std::max(top, 0);
    bottom = std::min(bottom, rows);
    if (top >= bottom) return;
    for (int y = top; y < bottom; ++y)
      for (int x = first; x < last; ++x) pixels[y * pitch + x] = colour;
    written = written.With({top, bottom});
  }

  QRgb* pixels;
  qsizetype pitch;
  int columns, rows;
  QRgb colour;
  QSizeF scale;
  int size;
  Scope::Rows written;
};

QSize PixelsOf(const QSizeF& size, qreal ratio) { return (size * ratio).toSize(); }

// On a black image of the box's size in device pixels.
Scope::Rows DrawTrace(QImage& image, const Trace& trace, const ScopeBox& box) {
  const QSizeF scale(static_cast<qreal>(image.width()) / box.units.width(),
                     static_cast<qreal>(image.height()) / box.units.height());
  const long brush = std::lround(std::min(scale.width(), scale.height()));
  Pen pen(image, ToColour(trace.colour).rgb(), scale, std::max(1, static_cast<int>(brush)));
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
  return pen.Written();
}

QImage Black(QSize size, qreal ratio) {
  QImage image(PixelsOf(size, ratio), QImage::Format_RGB32);
  image.fill(Qt::black);
  image.setDevicePixelRatio(ratio);
  return image;
}

}  // namespace

QImage Scope::Draw(const Trace& trace, const ScopeBox& box, qreal ratio, QSize size) {
  QImage image = Black(size.isEmpty() ? box.units * box.zoom : size, ratio);
  DrawTrace(image, trace, box);
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
  trace.drawings = now.drawings;
  if (now == trace) return;  // the same line again, as a note that is held often draws
  trace = now;
  if (!isVisible() || !ImageFits()) {
    image = QImage();
    return update();
  }
  // Only the rows of the old line and the new one are drawn and painted.
  const qreal ratio = image.devicePixelRatio();
  Rows changed = seen;
  for (int y = seen.top; y < seen.bottom; ++y)
    std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)), image.width(), qRgb(0, 0, 0));
  seen = DrawTrace(image, trace, box);
  changed = changed.With(seen);
  const int top = Floor(changed.top / ratio);
  update(0, top, width(), Floor(changed.bottom / ratio) + 1 - top);
}

// Not when the window has grown, or has gone to a screen of another scale.
bool Scope::ImageFits() const {
  const qreal ratio = devicePixelRatioF();
  return image.size() == PixelsOf(size(), ratio) && image.devicePixelRatio() == ratio;
}

void Scope::paintEvent(QPaintEvent* /*event*/) {
  if (!ImageFits()) {
    image = Black(size(), devicePixelRatioF());
    seen = DrawTrace(image, trace, box);
  }
  QPainter(this).drawImage(QPoint(0, 0), image);
}

}  // namespace quoll
