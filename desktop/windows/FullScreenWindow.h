// FScreen: the picture alone, over the whole of the host's screen.
#pragma once

#include <QImage>
#include <QWidget>
#include <cstdint>

#include "desktop/picture/MachineKeys.h"

class QScreen;

namespace quoll {

// FPic1: shows the last finished picture of PicD, stretched to its own size.
class FullPicture : public QWidget {
 public:
  FullPicture(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent);

  // Paints when there is a picture that has not been shown.
  void ShowPicture();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool) override { return false; }

 private:
  Machine& m;
  MachineKeys keys;
  QImage image;  // what is shown
  uint32_t shown = 0;
};

class FullScreenWindow : public QWidget {
 public:
  FullScreenWindow(QtHost& hostOfWindow, Machine& machineOfWindow);

  // Shows the window on that screen when the record asks for it, and its newest picture.
  void Pull(const QScreen& onScreen);
  // It stands in for the main window.
  bool HidMain() const { return isVisible(); }
  // After the main window has come back.
  void Leave() { hide(); }

  // The picture's place on a screen of this size: both sides rounded down to a multiple of 8, in the middle.
  static QRect PicturePlace(QSize screen);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  Machine& m;
  FullPicture* picture;
};

}  // namespace quoll
