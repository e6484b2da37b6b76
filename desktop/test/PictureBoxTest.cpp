#include <QLabel>
#include <QMouseEvent>

#include "desktop/picture/WindowCanvas.h"
#include "desktop/test/WindowTest.h"
#include "testkit/GreyBox.h"

namespace quoll {
namespace {

using test::GreyBox;

TEST(CanvasPlace, WholeFactorsInTheMiddle) {
  EXPECT_EQ(PictureBox::CanvasPlace({640, 576}, 1), QRectF(0, 0, 640, 576));
  EXPECT_EQ(PictureBox::CanvasPlace({648, 612}, 1), QRectF(4, 18, 640, 576));
  EXPECT_EQ(PictureBox::CanvasPlace({1300, 1200}, 1), QRectF(10, 24, 1280, 1152));
}

TEST(CanvasPlace, ToFitWhereAWholeFactorLeavesTooMuch) {
  EXPECT_EQ(PictureBox::CanvasPlace({960, 864}, 1), QRectF(0, 0, 960, 864));
  EXPECT_EQ(PictureBox::CanvasPlace({320, 400}, 1), QRectF(0, 56, 320, 288));
}

TEST(CanvasPlace, DenseScreens) {
  // Two device pixels to each of the window's: the same place, drawn with factor 2.
  EXPECT_EQ(PictureBox::CanvasPlace({640, 576}, 2), QRectF(0, 0, 640, 576));
  // 960 x 864 device pixels.
  EXPECT_EQ(PictureBox::CanvasPlace({640, 576}, 1.5), QRectF(0, 0, 640, 576));
}

constexpr QRgb kRed = 0xFFFF0000U;
constexpr QRgb kBlue = 0xFF0000FFU;
constexpr QRgb kGrey = 0x404040U;

QRgb At(const WindowCanvas& canvas, int x, int y) { return canvas.Image().pixel(x, y) & 0xFFFFFFU; }

TEST(Canvas, BoxOverBands) {
  WindowCanvas canvas;
  const auto rows = canvas.Compose(GreyBox(64, 40, 512, 480));
  EXPECT_EQ(rows.first, 0);
  EXPECT_EQ(rows.last, 575);
  EXPECT_EQ(At(canvas, 63, 40), kRed & 0xFFFFFFU);
  EXPECT_EQ(At(canvas, 64, 40), kGrey);
  EXPECT_EQ(At(canvas, 575, 519), kGrey);
  EXPECT_EQ(At(canvas, 576, 519), kRed & 0xFFFFFFU);
  EXPECT_EQ(At(canvas, 64, 520), kRed & 0xFFFFFFU);
  EXPECT_EQ(At(canvas, 0, 573), kRed & 0xFFFFFFU);
  EXPECT_EQ(At(canvas, 0, 574), kBlue & 0xFFFFFFU);
  EXPECT_EQ(At(canvas, 639, 575), kBlue & 0xFFFFFFU);
}

TEST(Canvas, OnlyChangedRowsAreTold) {
  WindowCanvas canvas;
  Picture picture = GreyBox(64, 40, 512, 480);
  canvas.Compose(picture);
  EXPECT_FALSE(canvas.Compose(picture).Any());
  picture.ScreenBits[100 * 2048 + 8] = 0x41;  // row 100 of the box
  const auto rows = canvas.Compose(picture);
  EXPECT_EQ(rows.first, 140);
  EXPECT_EQ(rows.last, 140);
}

TEST(Canvas, ABandBesideTheCanvasCountsToo) {
  WindowCanvas canvas;
  Picture picture = GreyBox(0, 0, 640, 576);  // covers all of it
  canvas.Compose(picture);
  picture.Border[10] = 0x00FF00;
  const auto rows = canvas.Compose(picture);
  EXPECT_EQ(rows.first, 20);
  EXPECT_EQ(rows.last, 21);
  EXPECT_EQ(canvas.BandColour(20), 0xFF00FF00U);
}

TEST(Canvas, BoxesPartlyAndFarOutside) {
  WindowCanvas canvas;
  const int32_t far = 2'000'000'000;
  for (const auto& [left, top] : {std::pair{-100, -50}, {600, 560}, {far, 0}, {-far, -far}, {0, far}}) {
    canvas.Compose(GreyBox(left, top, 512, 480));
    for (const auto& [x, y] : {std::pair{0, 0}, {639, 571}, {320, 288}, {639, 0}, {0, 570}}) {
      const bool inside =
          x >= int64_t{left} && x < int64_t{left} + 512 && y >= int64_t{top} && y < int64_t{top} + 480;
      EXPECT_EQ(At(canvas, x, y), inside ? kGrey : kRed & 0xFFFFFFU)
          << left << "," << top << " " << x << "," << y;
    }
  }
}

TEST(Canvas, DibRowsOfAnOddWidth) {
  WindowCanvas canvas;
  Picture picture = GreyBox(0, 0, 8, 4);
  picture.shownFromDib = true;
  picture.DibWidth = 12;
  picture.DibHeight = 4;
  picture.DibBits.assign(12 * 4 * 3, 0);
  picture.DibBits[(12 * 2 + 7) * 3] = 0x11;      // blue of (7, 2)
  picture.DibBits[(12 * 2 + 7) * 3 + 1] = 0x22;  // green
  picture.DibBits[(12 * 2 + 7) * 3 + 2] = 0x33;  // red
  canvas.Compose(picture);
  EXPECT_EQ(At(canvas, 7, 2), 0x332211U);
  EXPECT_EQ(At(canvas, 8, 2), kRed & 0xFFFFFFU);
}

TEST(Canvas, APictureWithFewerBytesThanItsSize) {
  Picture picture = GreyBox(0, 0, 512, 480);
  picture.ScreenBits.resize(2048 * 10 + 5);
  EXPECT_EQ(PictureImage(picture).height(), 10);
  picture.ScreenBits.clear();
  EXPECT_TRUE(PictureImage(picture).isNull());
  picture.Width = 0;
  EXPECT_TRUE(PictureImage(picture).isNull());
}

struct PictureBoxes : WindowTest {
  // Moves the mouse to a point of the machine's window.
  void MoveTo(double x, double y) {
    const PictureBox& box = *window->Picture();
    const QRectF place = PictureBox::CanvasPlace(box.size(), box.devicePixelRatioF());
    const QPointF at(place.left() + x * place.width() / 640, place.top() + y * place.height() / 576);
    QMouseEvent event(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(window->Picture(), &event);
  }
};

TEST_F(PictureBoxes, TheMachinesPictureIsOnTheScreen) {
  Boot();
  ASSERT_EQ(m.picture.Width, 512);
  const QImage shown = window->Picture()->grab().toImage();
  const QRectF place = PictureBox::CanvasPlace(window->Picture()->size(), 1);
  const std::vector<uint8_t> pixels = PicturePixels(m.picture);
  int different = 0;
  for (int y = 0; y < m.picture.Height; ++y) {
    for (int x = 0; x < m.picture.Width; ++x) {
      const size_t at = (static_cast<size_t>(y) * m.picture.Width + x) * 3;
      const QRgb expected = qRgb(pixels[at], pixels[at + 1], pixels[at + 2]);
      const QPoint point(static_cast<int>(place.left()) + m.picture.Left + x,
                         static_cast<int>(place.top()) + m.picture.Top + y);
      if ((shown.pixel(point) & 0xFFFFFFU) != (expected & 0xFFFFFFU)) ++different;
    }
  }
  EXPECT_EQ(different, 0);
  // The border fills the rest, to the widget's very edges.
  const int32_t border = m.picture.Border[0];
  const QRgb bandColour = qRgb(border & 0xFF, border >> 8 & 0xFF, border >> 16 & 0xFF);
  EXPECT_EQ(shown.pixel(0, 0), bandColour);
  EXPECT_EQ(shown.pixel(shown.width() - 1, 0), bandColour);
}

TEST_F(PictureBoxes, MouseIsTheLightPen) {
  Boot();
  MoveTo(m.picture.Left + 0.5, m.picture.Top + 0.5);
  EXPECT_EQ(m.pen.LpenHigh, 0);
  EXPECT_EQ(m.pen.LpenLow, 0);
  MoveTo(m.picture.Left + 511.5, m.picture.Top + 479.5);
  EXPECT_EQ(m.pen.LpenHigh, 5);
  EXPECT_EQ(m.pen.LpenLow, 255);
  MoveTo(m.picture.Left - 5, m.picture.Top + 10);  // the border is no place for the pen
  EXPECT_EQ(m.pen.LpenHigh, 5);
  window->resize(1400, 1300);
  Settle();
  MoveTo(m.picture.Left + 8.5, m.picture.Top + 20.5);  // one column, one row of the pen
  EXPECT_EQ(m.pen.LpenHigh, 0);
  EXPECT_EQ(m.pen.LpenLow, 65);
}

TEST_F(PictureBoxes, StatusAndSpeed) {
  m.screen.Label1 = "Unknown Opcode!";
  m.screen.window.caption = "Unknown Opcode!";
  m.screen.Text1 = "2000";
  Settle();
  EXPECT_EQ(Find<QLabel>(window, "Label1")->text(), "Unknown Opcode!");
  EXPECT_EQ(window->windowTitle(), "Unknown Opcode!");
  EXPECT_EQ(Find<QLabel>(window, "Text1")->text(), "2000");
  EXPECT_EQ(Find<QLabel>(window, "Label5")->text(), "MHz");
}

TEST_F(PictureBoxes, SizeOfTheForm) {
  EXPECT_EQ(window->windowTitle(), "QUOLLEMU");
  EXPECT_EQ(window->frameGeometry().size(), QSize(648, 640));
  EXPECT_GE(window->Picture()->width(), 640);
  EXPECT_GE(window->Picture()->height(), 576);
}

}  // namespace
}  // namespace quoll
