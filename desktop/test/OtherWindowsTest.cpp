#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QRadioButton>
#include <algorithm>

#include "desktop/test/WindowTest.h"
#include "desktop/windows/FullScreenWindow.h"

namespace quoll {
namespace {

using OtherWindows = WindowTest;

TEST(FullScreenPlace, RoundedDownAndCentred) {
  EXPECT_EQ(FullScreenWindow::PicturePlace({1366, 768}), QRect(3, 0, 1360, 768));
  EXPECT_EQ(FullScreenWindow::PicturePlace({1280, 1023}), QRect(0, 3, 1280, 1016));
}

TEST_F(OtherWindows, FullScreenAndBack) {
  Boot();
  const QPoint place = window->pos();
  Select("xFullsc");
  QWidget* full = Shown("FScreen");
  ASSERT_NE(full, nullptr);
  EXPECT_EQ(full->windowTitle(), "TVC");
  EXPECT_TRUE(full->windowFlags().testFlag(Qt::FramelessWindowHint));
  EXPECT_FALSE(window->isVisible());
  auto* picture = Find<QWidget>(full, "FPic1");
  EXPECT_EQ(picture->geometry(), FullScreenWindow::PicturePlace(full->size()));

  QTest::keyPress(picture, Qt::Key_A);
  EXPECT_EQ(m.keyboard.KeyMatrix[4], 0x40);
  QTest::keyRelease(picture, Qt::Key_A);
  EXPECT_EQ(m.keyboard.KeyMatrix[4], 0);

  // The last pixel of the box, wherever the screen's last one is.
  const QPointF last(picture->width() - 1, picture->height() - 1);
  QMouseEvent move(QEvent::MouseMove, last, last, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(picture, &move);
  const int32_t x = (picture->width() - 1) * m.picture.Width / picture->width();
  const int32_t y = (picture->height() - 1) * m.picture.Height / picture->height();
  EXPECT_EQ(m.pen.LpenHigh * 256 + m.pen.LpenLow, y / 20 * 64 + x / 8);

  // It shows the last finished picture, not the machine's memory.
  m.screen.xScreenDIB = true;
  for (int32_t port = 0x60; port < 0x64; ++port) m.PortShadow[static_cast<size_t>(port)] = 0x44;
  PALchNull(m.palette);
  redraw(m);
  std::fill_n(m.MemImage.begin() + 0x10000, 0x4000, uint8_t{0});
  Settle();
  const QColor drawn = PictureImage(m.picture).pixelColor(0, 0);
  EXPECT_GT(drawn.red(), 200);
  const QImage seen = picture->grab().toImage();
  for (const QPoint at : {QPoint(0, 0), picture->rect().center(), picture->rect().bottomRight()})
    EXPECT_EQ(seen.pixelColor(at), drawn);
  m.keyboard.KeyMatrix[3] = 0x10;
  QTest::mousePress(picture, Qt::LeftButton, {}, picture->rect().center());
  EXPECT_EQ(m.keyboard.KeyMatrix[3], 0);

  m.tools.Text1 = "none";
  QTest::keyClick(picture, Qt::Key_Escape);  // is not the machine's
  Settle();
  EXPECT_EQ(m.tools.Text1, "none");
  const uint32_t shownBefore = m.picture.shown;
  RunFrames(3);
  EXPECT_GT(m.picture.shown, shownBefore);
  EXPECT_EQ(Shown("FScreen"), nullptr);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->pos(), place);
  for (const uint8_t row : m.keyboard.KeyMatrix) EXPECT_EQ(row, 0);

  Select("xFullsc");  // and once more
  ASSERT_NE(Shown("FScreen"), nullptr);
  Shown("FScreen")->close();  // by the host's means
  Settle();
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(host.ClosedByUser());
}

TEST_F(OtherWindows, ErrorSimulationByItsBoxes) {
  Select("xErrorSim");
  QWidget* sim = Shown("ErrorSim");
  ASSERT_NE(sim, nullptr);
  EXPECT_EQ(sim->windowTitle(), "Error simulation");
  EXPECT_EQ(Find<QGroupBox>(sim, "Frame1")->title(), "Video RAM");
  EXPECT_EQ(Find<QGroupBox>(sim, "Frame2")->title(), "Sytem RAM");

  const auto press = [&](const char* name, const char* caption) {
    auto* button = Find<QAbstractButton>(sim, name);
    EXPECT_EQ(button->text(), caption);
    button->click();
  };
  press("Check1", "Enabled");
  EXPECT_TRUE(m.errorsim.Check1);
  for (int bit = 0; bit < 8; ++bit) {
    const std::string name = bit == 0 ? "CH0" : "CH0" + std::to_string(bit);
    press(name.c_str(), (std::to_string(bit) + " bit").c_str());
    EXPECT_TRUE(m.errorsim.CH0[static_cast<size_t>(bit)]);
  }
  EXPECT_EQ(VidErrMask(m.errorsim), 0xFF);
  press("Check2", "U0");
  EXPECT_TRUE(m.errorsim.Check2);
  press("Check3", "U1");
  EXPECT_TRUE(m.errorsim.Check3);
  press("Check4", "U2");
  EXPECT_TRUE(m.errorsim.Check4);
  press("Check5", "U3");
  EXPECT_TRUE(m.errorsim.Check5);

  const auto expectOption = [&](std::array<bool, 3> expected) {
    EXPECT_EQ(m.errorsim.Option1, expected);
    for (int i = 0; i < 3; ++i) {
      const std::string name = i == 0 ? "Option1" : "Option1" + std::to_string(i);
      EXPECT_EQ(Find<QRadioButton>(sim, name.c_str())->isChecked(), expected[static_cast<size_t>(i)]) << i;
    }
  };
  expectOption({true, false, false});
  press("Option11", "bit=1");
  expectOption({false, true, false});
  press("Option11", "bit=1");  // can't be given up
  expectOption({false, true, false});
  press("Option12", "bit=Random");
  expectOption({false, false, true});
  press("Option1", "bit=0");
  expectOption({true, false, false});

  // With all bits forced to 1 the screen fills.
  press("Option11", "bit=1");
  RunFrames(2);
  EXPECT_EQ(m.MemImage[0x10000], 0xFF);
  EXPECT_EQ(m.MemImage[0x0100], 0xAA);

  m.errorsim.Check1 = false;  // by a script
  Settle();
  EXPECT_FALSE(Find<QCheckBox>(sim, "Check1")->isChecked());
  sim->close();
  EXPECT_FALSE(m.errorsim.window.visible);
  EXPECT_FALSE(host.ClosedByUser());
}

TEST_F(OtherWindows, EveryControlHasAnAccessibleName) {
  Select("xSaveCAS");
  Select("xHelp");
  Select("xErrorSim");
  Select("xFullsc");
  int controls = 0;
  for (QWidget* widget : QApplication::allWidgets()) {
    // Parts of other widgets are spoken for by them.
    const QString name = widget->objectName();
    const bool part = name.startsWith("qt_") || widget->inherits("QScrollBar") || widget->inherits("QMenu");
    const bool label = qobject_cast<QLabel*>(widget) != nullptr && name.isEmpty();
    if (part || label || (widget->focusPolicy() == Qt::NoFocus && name.isEmpty())) continue;
    ++controls;
    EXPECT_FALSE(widget->accessibleName().isEmpty())
        << widget->metaObject()->className() << " " << name.toStdString();
  }
  EXPECT_GT(controls, 40);
}

}  // namespace
}  // namespace quoll
