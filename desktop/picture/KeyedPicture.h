// A picture of the machine that gives its keys and the mouse to the machine. What it shows and where is its
// own affair; Tab is the machine's.
#pragma once

#include <QWidget>

#include "desktop/picture/MachineKeys.h"
#include "desktop/picture/StandMark.h"

namespace quoll {

class KeyedPicture : public QWidget {
  Q_OBJECT

 protected:
  KeyedPicture(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent, const char* name);

  // Pixel of PicD under a point of the widget; false outside of PicD.
  virtual bool ToPicture(QPointF point, QPoint& pixel) const = 0;
  // The Escape key, before the machine gets it. True when it is used up.
  virtual bool Escape() = 0;

  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool) override { return false; }

  QtHost& host;
  Machine& m;
  MachineKeys keys;
  StandMark* mark;
};

}  // namespace quoll
