#include "desktop/picture/PictureBox.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <cmath>

#include "machine/Machine.h"

namespace quoll {

namespace {

// A whole factor is taken if it leaves at most this share of the possible size unused.
constexpr qreal kUnusedAtMost = 0.15;

// Smaller pictures are averaged: sampled, the gaps between the lines would beat against the rows.
constexpr qreal kAveragedBelow = 0.75;

}  // namespace

PictureBox::PictureBox(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent)
    : QWidget(parent), host(hostOfWindow), m(machineOfWindow), keys(host, m) {
  setObjectName("PicD");
  setAccessibleName(tr("Screen of the TV Computer"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_InputMethodEnabled, false);
}

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
  if (composed && shown == m.picture.shown && borders == m.picture.borders) return;
  composed = true;
  shown = m.picture.shown;
  borders = m.picture.borders;
  const WindowCanvas::Rows changed = canvas.Compose(m.picture);
  if (!changed.Any()) return;

  // One row more each way: a scaled pixel may take part of its neighbour.
  const QRectF place = Place();
  const qreal factor = place.height() / kCanvasHeight;
  const int margin = factor == 1.0 ? 0 : 1;
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
  if (factor < kAveragedBelow) {
    const QSize size = (place.size() * devicePixelRatioF()).toSize();
    painter.drawImage(place, canvas.Image().scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return;
  }
  painter.setRenderHint(QPainter::SmoothPixmapTransform, factor != std::floor(factor));
  painter.drawImage(place, canvas.Image());
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

bool PictureBox::event(QEvent* event) {
  if (ClaimShortcut(event)) return true;
  return QWidget::event(event);
}

void PictureBox::keyPressEvent(QKeyEvent* event) { keys.Pressed(event); }
void PictureBox::keyReleaseEvent(QKeyEvent* event) { keys.Released(event); }

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
  QPoint pixel;
  if (ToPicture(event->position(), pixel)) picd_MouseMove(m.pen, pixel.x(), pixel.y());
}

void PictureBox::mousePressEvent(QMouseEvent* event) {
  setFocus(Qt::MouseFocusReason);
  QPoint pixel;
  if (ToPicture(event->position(), pixel)) ReleaseKeys();
}

void PictureBox::focusInEvent(QFocusEvent* event) {
  ReleaseKeys();
  QWidget::focusInEvent(event);
}

void PictureBox::focusOutEvent(QFocusEvent* event) {
  ReleaseKeys();
  QWidget::focusOutEvent(event);
}

void PictureBox::ReleaseKeys() { KeyboardClear(m.keyboard); }

}  // namespace quoll
