// The inside of the main window: border bands and the picture box PicD, drawn by one widget. It takes the
// keys and the mouse for the machine.
#pragma once

#include <QRectF>
#include <QWidget>

#include "desktop/picture/MachineKeys.h"
#include "desktop/picture/WindowCanvas.h"

namespace quoll {

class PictureBox : public QWidget {
  Q_OBJECT

 public:
  PictureBox(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent = nullptr);

  // Asks for painting where the last drawn picture and border differ from what is shown.
  void ShowPicture();

  // Where the canvas lies in a widget of this size, in its pixels: scaled by a whole factor where one nearly
  // fills it, else to fit; in the middle. ratio: device pixels to one pixel of the widget.
  static QRectF CanvasPlace(QSize size, qreal ratio);

  QSize sizeHint() const override { return {kCanvasWidth, kCanvasHeight}; }
  QSize minimumSizeHint() const override { return {kCanvasWidth / 4, kCanvasHeight / 4}; }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool) override { return false; }  // Tab is the machine's

 private:
  QRectF Place() const { return CanvasPlace(size(), devicePixelRatioF()); }
  // Pixel of PicD under a point of the widget; false outside of PicD.
  bool ToPicture(QPointF point, QPoint& pixel) const;
  void PaintMargins(QPainter& painter, const QRectF& place) const;
  void ReleaseKeys();

  QtHost& host;
  Machine& m;
  MachineKeys keys;
  WindowCanvas canvas;
  uint32_t shown = 0, borders = 0;  // counters of the record when the canvas was composed
  bool composed = false;
};

}  // namespace quoll
