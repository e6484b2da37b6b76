// What the window does about the small things: memory, long names, files that are dropped, a machine that
// stands.
#include <malloc.h>

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QTemporaryDir>

#include "desktop/picture/StandMark.h"
#include "desktop/picture/StandingMachine.h"
#include "desktop/test/WindowTest.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/windows/FilePanelFrame.h"
#include "media/Cas.h"
#include "media/Snapshot.h"
#include "typing/ScreenText.h"

namespace quoll {
namespace {

struct AtHand : WindowTest {
  QTemporaryDir folder;

  std::string Path(const QString& name) { return folder.filePath(name).toStdString(); }
  void Make(const QString& name, const QByteArray& bytes) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  void Drop(const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    WindowTest::Drop(data);
  }
  StandMark* Mark() { return Find<StandMark>(window->Picture(), "StandMark"); }
  QWidget* NameBox() { return Find<QLineEdit>(window->Files(), "Text3"); }
};

TEST_F(AtHand, OpeningThePanelCostsNothing) {
  const auto open = [&](int times) {
    for (int i = 0; i < times; ++i) {
      Select("xLoadCAS");
      QTest::keyClick(NameBox(), Qt::Key_Escape);
      Settle();
    }
  };
  open(40);
  const size_t before = mallinfo2().uordblks;
  open(160);
  const size_t after = mallinfo2().uordblks;
  RecordProperty("bytes", static_cast<int>(after - before));
  EXPECT_LT(after, before + size_t{160} * 200);
}

TEST_F(AtHand, ThePanelTakesTheFocusEachTime) {
  Select("xLoadCAS");
  EXPECT_EQ(QApplication::focusWidget(), NameBox());
  window->Picture()->setFocus();
  Select("xLoadCAS");
  EXPECT_EQ(QApplication::focusWidget(), NameBox());
  Select("xSound");  // gives the focus to the picture
  EXPECT_EQ(QApplication::focusWidget(), window->Picture());
  Select("xHelp");
  Select("xSaveSnap");
  EXPECT_EQ(QApplication::focusWidget(), NameBox());
  QTest::keyClicks(QApplication::focusWidget(), "abc");
  EXPECT_EQ(m.panel.Text3, "abc");
}

TEST_F(AtHand, AMaximisedWindowComesBackMaximised) {
  window->showMaximized();
  Settle();
  const QSize size = window->size();
  for (int times = 0; times < 2; ++times) {
    Select("xFullsc");
    ASSERT_FALSE(window->isVisible());
    m.fscreen.window.visible = false;
    m.screen.window.visible = true;
    Settle();
    Settle();
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isMaximized());
    EXPECT_EQ(window->size(), size);
  }
}

TEST_F(AtHand, ANameInTheMenuIsShownAsItIs) {
  m.CartName = "A&B.crt";
  Settle();
  EXPECT_EQ(window->Action("xUnloadCRT")->text(), "Unload: A&&B.crt");
  m.CartName = std::string(200, 'w') + ".crt";
  Settle();
  const QString text = window->Action("xUnloadCRT")->text();
  EXPECT_TRUE(text.startsWith("Unload: w")) << text.toStdString();
  EXPECT_TRUE(text.endsWith("w.crt")) << text.toStdString();
  EXPECT_LE(window->fontMetrics().horizontalAdvance(text), 260);
  m.CartName.clear();
}

TEST_F(AtHand, AllDroppedFilesCount) {
  Make("a.cas", QByteArray(144, '\0') + '\x55');
  Make("pic.tim", QByteArray(16, '\0') + '\x3C');
  const auto url = [&](const char* name) { return QUrl::fromLocalFile(folder.filePath(name)); };
  Drop({url("a.cas"), url("pic.tim")});
  EXPECT_EQ(m.MemImage[0x19EF], 0x55);
  EXPECT_EQ(m.MemImage[0x10000], 0x3C);
  EXPECT_TRUE(host.messages.empty());
  Drop({QUrl("https://example.org/a.cas")});
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_NE(host.messages[0].find("https://example.org/a.cas"), std::string::npos);
}

TEST_F(AtHand, ADroppedTextIsTypedUntilEscape) {
  Boot();
  QMimeData text;
  text.setText("PRINT 6*7\n");
  WindowTest::Drop(text);
  EXPECT_TRUE(m.screen.xS6);
  const auto run = [&](int frames) {
    host.atFrame = [&, last = host.frames + frames](Machine& running) {
      if (host.frames >= last) running.run.CpuRunning = 0;
    };
    m.run.CpuRunning = 1;
    RunLoop(m);
  };
  run(60);
  EXPECT_FALSE(m.screen.xS6);
  redraw(m);
  EXPECT_NE(ScreenText(m).find("PRINT 6*7\n 42\n"), std::string::npos) << ScreenText(m);
  text.setText("REM " + QString(1000, 'x'));
  WindowTest::Drop(text);
  run(20);
  EXPECT_TRUE(m.screen.xS6);
  QTest::keyClick(window->Picture(), Qt::Key_Escape);
  EXPECT_FALSE(m.screen.xS6);
  EXPECT_EQ(m.keyboard, Keyboard());
}

TEST_F(AtHand, TheMarkSaysWhyTheMachineStands) {
  EXPECT_FALSE(Mark()->isVisible());  // it has not run yet
  RunFrames(3);
  EXPECT_EQ(Mark()->text(), "Stopped");
  EXPECT_TRUE(Mark()->isVisible());
  m.screen.xS1 = true;
  Settle();
  EXPECT_EQ(Mark()->text(), "Paused");
  m.screen.xS1 = false;
  m.run.CpuError = 1;
  Settle();
  EXPECT_EQ(Mark()->text(), "Processor error");
  bool seen = true;
  host.atFrame = [&](Machine& running) {
    host.PullViews(running);
    seen = Mark()->isVisible();
    running.run.CpuRunning = 0;
  };
  m.run.CpuRunning = 1;
  RunLoop(m);
  EXPECT_FALSE(seen);
}

TEST_F(AtHand, WhatIsDoneToAStandingMachineIsSeenAtOnce) {
  Boot();
  StandingMachine standing(host);
  Settle();
  const uint32_t before = m.picture.shown;
  Settle();
  EXPECT_EQ(m.picture.shown, before);
  m.MemImage[0x10000] ^= 0xFF;
  Settle();
  EXPECT_EQ(m.picture.shown, before + 1);
  ASSERT_TRUE(SaveSnapshot(m, Path("a")));
  m.MemImage[0x10003] ^= 0xFF;
  Settle();
  EXPECT_EQ(m.picture.shown, before + 2);
  Drop({QUrl::fromLocalFile(folder.filePath("a.tvs"))});
  EXPECT_EQ(m.picture.shown, before + 3);
}

TEST_F(AtHand, AResetOfAStandingMachineIsDone) {
  Boot();
  StandingMachine standing(host);
  Settle();
  ASSERT_NE(m.PortShadow[2], 0);
  Select("xReset");
  EXPECT_EQ(m.run.ResetRequest, 0);
  EXPECT_EQ(m.PortShadow[2], 0);  // not yet set by the ROM
  EXPECT_EQ(m.run.CpuRunning, 0);
  // Stopped by an error it runs again.
  m.run.CpuError = 1;
  int frames = 0;
  host.atFrame = [&](Machine& running) {
    if (++frames == 100) running.run.CpuRunning = 0;
  };
  m.screen.xS6 = true;
  Select("xReset");
  EXPECT_EQ(frames, 100);
  EXPECT_NE(m.PortShadow[2], 0);
  EXPECT_EQ(m.run.CpuError, 0);
}

TEST_F(AtHand, TheStatusGivesWay) {
  m.screen.Label1 = "Saved: " + std::string(300, 'x');
  Settle();
  auto* status = Find<QLabel>(window, "Label1");
  EXPECT_TRUE(status->text().endsWith("xxx"));
  const QPoint speed = Find<QLabel>(window, "Text1")->mapTo(window, QPoint());
  for (const int width : {640, 480, 400}) {
    window->resize(width, 500);
    Settle();
    EXPECT_GE(window->Menus()->width(), window->Menus()->sizeHint().width()) << width;
  }
  window->resize(640, 500);
  Settle();
  const QPoint first = Find<QLabel>(window, "Text1")->mapTo(window, QPoint());
  for (const char* text : {"5", "123456", "-1"}) {
    m.screen.Text1 = text;
    Settle();
    EXPECT_EQ(Find<QLabel>(window, "Text1")->mapTo(window, QPoint()), first) << speed.x();
  }
}

TEST_F(AtHand, TheFirstSizeKeepsToTheScreen) {
  QWidget other;
  OuterSize size;
  const QSize screen = other.screen()->availableSize();
  size.Take(other, {100, 100}, screen + QSize(500, 400));
  EXPECT_EQ(other.size(), screen);
}

// Rows of gaps between lines: at a factor between the whole ones no row of the picture is darker than its
// neighbours.
TEST_F(AtHand, GapsBetweenLinesDoNotBand) {
  Boot();
  m.screen.xScreenDIB = false;
  std::ranges::fill(std::span(m.MemImage).subspan(0x10000, 0x4000), uint8_t{0xFF});
  RunFrames(2);
  std::ranges::fill(std::span(m.MemImage).subspan(0x10000, 0x4000), uint8_t{0xFF});
  redraw(m);
  PALchNull(m.palette);
  Settle();
  for (const QSize size : {QSize(900, 800), QSize(500, 470), QSize(840, 760)}) {
    window->resize(size);
    Settle();
    const QRectF place = PictureBox::CanvasPlace(window->Picture()->size(), 1);
    const QImage seen = window->Picture()->grab().toImage();
    const qreal factor = place.height() / 576;
    int least = 255, most = 0;
    for (int row = 120; row < 440; ++row) {
      const int y = static_cast<int>(place.top() + row * factor);
      const int grey = qGray(seen.pixel(static_cast<int>(place.center().x()), y));
      least = std::min(least, grey);
      most = std::max(most, grey);
    }
    EXPECT_LE(most - least, 6) << size.width() << ": " << least << " to " << most;
    EXPECT_GT(least, 20);
  }
}

}  // namespace
}  // namespace quoll
