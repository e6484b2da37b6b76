// FScreen: the picture alone, over the whole of the host's screen.
#pragma once

#include <QImage>
#include <cstdint>

#include "desktop/kit/FormWindow.h"
#include "desktop/picture/KeyedPicture.h"

namespace quoll {

// FPic1: shows the last finished picture of PicD, stretched to its own size.
class FullPicture : public KeyedPicture {
  Q_OBJECT

 public:
  FullPicture(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent);

  // Paints when there is a picture that has not been shown.
  void ShowPicture();

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool ToPicture(QPointF point, QPoint& pixel) const override;
  bool Escape() override;  // leaves the full screen

 private:
  QImage image;  // what is shown
  uint32_t shown = 0;
};

// Stands in for the main window, which it hides while it is shown.
class FullScreenWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit FullScreenWindow(FormKit& kitOfWindow);

  // The picture's place on a screen of this size: both sides rounded down to a multiple of 8, in the middle.
  static QRect PicturePlace(QSize screen);

 protected:
  void ShowRecord() override;
  void Appear() override;
  void Vanish() override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  FullPicture* picture;
};

// Leaves the full screen for the main window.
void LeaveFullScreen(Machine& m);

}  // namespace quoll
