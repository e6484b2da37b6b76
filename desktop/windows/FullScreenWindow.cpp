#include "desktop/windows/FullScreenWindow.h"

#include <QCloseEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <cstring>

#include "desktop/picture/WindowCanvas.h"
#include "machine/Machine.h"

namespace quoll {

FullPicture::FullPicture(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent)
    : KeyedPicture(hostOfWindow, machineOfWindow, parent, "FPic1") {}

// Stretching costs far more than comparing: only the rows that differ are painted.
void FullPicture::ShowPicture() {
  mark->Tell(WhyItStands(m));
  if (shown == m.picture.shown) return;
  shown = m.picture.shown;
  const QImage now = PictureImage(m.picture);
  if (now.size() != image.size() || now.format() != image.format() || now.isNull()) {
    image = now.copy();
    update();
    return;
  }
  const auto bytes = static_cast<size_t>(now.width() * now.depth() / 8);
  int first = now.height(), last = -1;
  for (int row = 0; row < now.height(); ++row) {
    if (std::memcmp(now.constScanLine(row), image.constScanLine(row), bytes) == 0) continue;
    std::memcpy(image.scanLine(row), now.constScanLine(row), bytes);
    first = std::min(first, row);
    last = row;
  }
  if (last < 0) return;
  // A row more on either side: stretched rows run into their neighbours.
  const int top = std::max(0, (first - 1) * height() / now.height());
  const int bottom = std::min(height(), ((last + 2) * height() + now.height() - 1) / now.height());
  update(0, top, width(), bottom - top);
}

void FullPicture::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setClipRegion(event->region());
  if (image.isNull()) return painter.fillRect(rect(), Qt::black);
  const bool whole = width() % image.width() == 0 && height() % image.height() == 0;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !whole);
  painter.drawImage(rect(), image);
}

bool FullPicture::Escape() {
  LeaveFullScreen(m);
  return true;
}

bool FullPicture::ToPicture(QPointF point, QPoint& pixel) const {
  const QPoint at = point.toPoint();
  const auto scaled = [](int place, int32_t size, int ownSize) {
    return static_cast<int>(int64_t{place} * size / std::max(1, ownSize));
  };
  pixel = {scaled(at.x(), m.picture.Width, width()), scaled(at.y(), m.picture.Height, height())};
  return rect().contains(at);
}

FullScreenWindow::FullScreenWindow(FormKit& kitOfWindow)
    : FormWindow(kitOfWindow, Qt::Window | Qt::FramelessWindowHint), picture(new FullPicture(host, m, this)) {
  escapeCloses = false;
  setAccessibleName(tr("Full screen"));
  QPalette black = palette();
  black.setColor(QPalette::Window, Qt::black);
  setPalette(black);
  setAutoFillBackground(true);
}

QRect FullScreenWindow::PicturePlace(QSize screen) {
  const int width = screen.width() / 8 * 8;
  const int height = screen.height() / 8 * 8;
  return {(screen.width() - width) / 2, (screen.height() - height) / 2, width, height};
}

void FullScreenWindow::ShowRecord() { picture->ShowPicture(); }

// It is shown before the main window goes, and goes after that one has come back.
void FullScreenWindow::Appear() {
  const QWidget* main = host.messageParent;
  if (main != nullptr) setGeometry(main->screen()->geometry());
  showFullScreen();
  kit.State().raise = true;
  picture->setFocus();
  m.screen.window.visible = false;
}

void FullScreenWindow::Vanish() {
  m.screen.window.visible = true;
  if (host.messageParent == nullptr || host.messageParent->isVisible()) hide();
}

// Closed by the host's means: the main window comes back as with Escape.
void FullScreenWindow::closeEvent(QCloseEvent* event) {
  LeaveFullScreen(m);
  event->ignore();
}

void FullScreenWindow::resizeEvent(QResizeEvent* event) { picture->setGeometry(PicturePlace(event->size())); }

void LeaveFullScreen(Machine& m) {
  m.fscreen.window.visible = false;
  m.screen.window.visible = true;
}

}  // namespace quoll
