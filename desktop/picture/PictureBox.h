// The inside of the main window: border bands and the picture box PicD, drawn by one widget. It takes the
// keys and the mouse for the machine.
#pragma once

#include <QRectF>

#include "desktop/picture/KeyedPicture.h"
#include "desktop/picture/Typist.h"
#include "desktop/picture/WindowCanvas.h"

namespace quoll {

class PictureBox : public KeyedPicture {
  Q_OBJECT

 public:
  PictureBox(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent = nullptr);

  // Asks for painting where the last drawn picture and border differ from what is shown.
  void ShowPicture();

  // Types a text, UTF-8, into the machine; Escape stops it.
  void TypeText(std::string_view text) { typist.Type(m, text); }

  // Where the canvas lies in a widget of this size, in its pixels: scaled by a whole factor where one nearly
  // fills it, else to fit; in the middle. ratio: device pixels to one pixel of the widget.
  static QRectF CanvasPlace(QSize size, qreal ratio);

  QSize sizeHint() const override { return {kCanvasWidth, kCanvasHeight}; }
  QSize minimumSizeHint() const override { return {kCanvasWidth / 4, kCanvasHeight / 4}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool ToPicture(QPointF point, QPoint& pixel) const override;
  bool Escape() override { return typist.Stop(m); }

 private:
  QRectF Place() const { return CanvasPlace(size(), devicePixelRatioF()); }
  void PaintMargins(QPainter& painter, const QRectF& place) const;

  WindowCanvas canvas;
  Typist typist;
  uint32_t shown = 0, borders = 0;  // counters of the record when the canvas was composed
  bool composed = false;
};

}  // namespace quoll
