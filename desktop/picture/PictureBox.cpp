#include "desktop/picture/PictureBox.h"

#include <QPaintEvent>
#include <QPainter>
#include <cmath>

#include "machine/Machine.h"

namespace quoll {

namespace {

// A whole factor is taken if it leaves at most this share of the possible size unused.
constexpr qreal kUnusedAtMost = 0.15;

// Between the whole factors the gaps between the lines would beat against the window's rows: a line and its
// gap become one row of their average first. Larger in whole steps next, so that the pixels keep their edges.
QImage Between(const QImage& canvas, QSize size) {
  const QImage lines =
      canvas.scaled(canvas.width(), canvas.height() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  const auto steps = [](int now, int wanted) { return std::max(1, (wanted + now - 1) / now); };
  const QImage large = lines.scaled(lines.width() * steps(lines.width(), size.width()),
                                    lines.height() * steps(lines.height(), size.height()));
  return large.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

PictureBox::PictureBox(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent)
    : KeyedPicture(hostOfWindow, machineOfWindow, parent, "PicD"), typist(hostOfWindow) {}

QRectF PictureBox::CanvasPlace(QSize size, qreal ratio) {
  // Reckoned in device pixels, so that a whole factor is one on the glass.
  const qreal width = std::floor(size.width() * ratio);
  const qreal height = std::floor(size.height() * ratio);
  qreal factor = std::min(width / kCanvasWidth, height / kCanvasHeight);
  const qreal whole = std::floor(factor);
  if (whole >= 1 && whole >= factor * (1 - kUnusedAtMost)) factor = whole;
  const qreal placeWidth = std::round(kCanvasWidth * factor);
  const qreal placeHeight = std::round(kCanvasHeight * factor);
  return {std::floor((width - placeWidth) / 2) / ratio, std::floor((height - placeHeight) / 2) / ratio,
          placeWidth / ratio, placeHeight / ratio};
}

void PictureBox::ShowPicture() {
  mark->Tell(WhyItStands(m));
  if (composed && shown == m.picture.shown && borders == m.picture.borders) return;
  composed = true;
  shown = m.picture.shown;
  borders = m.picture.borders;
  const WindowCanvas::Rows changed = canvas.Compose(m.picture);
  if (!changed.Any()) return;

  // Two rows more each way: a scaled pixel may take part of its neighbour, and two rows may be averaged.
  const QRectF place = Place();
  const qreal factor = place.height() / kCanvasHeight;
  const int margin = factor == 1.0 ? 0 : 2;
  int top = static_cast<int>(std::floor(place.top() + (changed.first - margin) * factor));
  int bottom = static_cast<int>(std::ceil(place.top() + (changed.last + 1 + margin) * factor));
  if (changed.first == 0) top = 0;
  if (changed.last == kCanvasHeight - 1) bottom = height();
  update(0, top, width(), bottom - top);
}

// Border bands go on to the window's sides, the outermost ones to its top and bottom.
void PictureBox::PaintMargins(QPainter& painter, const QRectF& place) const {
  const auto fill = [&](qreal x, qreal y, qreal w, qreal h, QRgb colour) {
    if (w > 0 && h > 0) painter.fillRect(QRectF(x, y, w, h), QColor(colour));
  };
  fill(0, 0, width(), place.top(), canvas.BandColour(0));
  fill(0, place.bottom(), width(), height() - place.bottom(), canvas.BandColour(kCanvasHeight - 1));
  if (place.left() <= 0 && place.right() >= width()) return;
  const qreal factor = place.height() / kCanvasHeight;
  for (int row = 0; row < kCanvasHeight;) {
    int end = row + 2;
    while (end < kCanvasHeight && canvas.BandColour(end) == canvas.BandColour(row)) end += 2;
    const qreal y = place.top() + row * factor;
    fill(0, y, place.left(), (end - row) * factor, canvas.BandColour(row));
    fill(place.right(), y, width() - place.right(), (end - row) * factor, canvas.BandColour(row));
    row = end;
  }
}

void PictureBox::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setClipRegion(event->region());
  const QRectF place = Place();
  const qreal factor = place.width() * devicePixelRatioF() / kCanvasWidth;
  PaintMargins(painter, place);
  if (factor == 1.0 && devicePixelRatioF() == 1.0) {
    const QRect dirty = event->rect() & place.toRect();
    painter.drawImage(dirty.topLeft(), canvas.Image(), dirty.translated(-place.topLeft().toPoint()));
    return;
  }
  if (factor == std::floor(factor)) return painter.drawImage(place, canvas.Image());
  painter.drawImage(place, Between(canvas.Image(), (place.size() * devicePixelRatioF()).toSize()));
}

bool PictureBox::ToPicture(QPointF point, QPoint& pixel) const {
  const QRectF place = Place();
  if (place.isEmpty()) return false;
  const qreal x = (point.x() - place.left()) * kCanvasWidth / place.width();
  const qreal y = (point.y() - place.top()) * kCanvasHeight / place.height();
  const QRect box(m.picture.Left, m.picture.Top, m.picture.Width, m.picture.Height);
  const QPoint inWindow(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y)));
  pixel = inWindow - box.topLeft();
  return box.contains(inWindow);
}

}  // namespace quoll
