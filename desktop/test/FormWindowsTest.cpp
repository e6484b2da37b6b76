// The windows of sound output, tape deck and hardware monitor.
#include <QAbstractButton>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTimer>

#include "desktop/kit/FormWindow.h"
#include "desktop/test/WindowTest.h"
#include "desktop/windows/FormWindows.h"

namespace quoll {
namespace {

struct FormWindowsTest : WindowTest {
  QTemporaryDir folder;
  QString before = QDir::currentPath();

  void SetUp() override {
    WindowTest::SetUp();
    QDir::setCurrent(folder.path());
  }
  void TearDown() override { QDir::setCurrent(before); }

  // Lets the forms' timers run for so many milliseconds.
  void RunTimers(int milliseconds) {
    for (QElapsedTimer since = Started(); since.elapsed() < milliseconds;) {
      QTest::qWait(10);
      host.Pump(m);
    }
    Pull();
  }
  static QElapsedTimer Started() {
    QElapsedTimer timer;
    timer.start();
    return timer;
  }
  void Pull() {
    host.PullViews(m);
    QApplication::processEvents();
  }
  QWidget* Open(const char* menuItem, const char* form) {
    Select(menuItem);
    Pull();
    QWidget* shown = Shown(form);
    EXPECT_NE(shown, nullptr) << form;
    return shown;
  }
  static void WriteWave(const QString& name, const QByteArray& samples) {
    QFile file(name);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(QByteArray(44, '\0') + samples);
  }
};

TEST_F(FormWindowsTest, TheyComeByTheMenuAndGoByTheirFrame) {
  for (const auto& [item, form] : {std::pair("xTapeLoad", "TTape"), {"xTVCmon", "TVCmon"}}) {
    EXPECT_EQ(Shown(form), nullptr);
    Open(item, form)->close();
    Pull();
    EXPECT_EQ(Shown(form), nullptr);
    QTest::keyClick(Open(item, form), Qt::Key_Escape);
    Pull();
    EXPECT_EQ(Shown(form), nullptr);
  }
  EXPECT_FALSE(host.ClosedByUser());
}

TEST_F(FormWindowsTest, ClosingTheSoundOutputEndsTheProgram) {
  QWidget* sound = Open("xSoundOut", "FDXF");
  EXPECT_EQ(sound->windowTitle(), "Paiplag");
  QTest::keyClick(sound, Qt::Key_Escape);
  EXPECT_TRUE(sound->isVisible());
  EXPECT_FALSE(host.ClosedByUser());
  QTimer::singleShot(50, sound, &QWidget::close);
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_TRUE(host.ClosedByUser());
  EXPECT_FALSE(m.fdxf.window.visible);
}

TEST_F(FormWindowsTest, SoundOutputShowsCounterAndScopes) {
  QWidget* sound = Open("xSoundOut", "FDXF");
  EXPECT_EQ(Find<QAbstractButton>(sound, "cmdStartPlay")->text(), "Play");
  EXPECT_EQ(Find<QAbstractButton>(sound, "Cstop")->text(), "Stop");
  auto* osc = Find<QCheckBox>(sound, "Check7");
  EXPECT_EQ(osc->text(), "Osc");
  osc->click();
  EXPECT_TRUE(m.fdxf.Check7);
  for (size_t i = 0; i < m.mixer.BlockBuffer.size(); i += 2) {
    m.mixer.BlockBuffer[i] = 128;     // 62 - 32 = row 30
    m.mixer.BlockBuffer[i + 1] = 48;  // 62 - 12 = row 50
  }
  ForceNeedWavData(m);
  Pull();
  EXPECT_EQ(Find<QLineEdit>(sound, "TextR")->text(), "1");
  for (const auto& [name, row] : {std::pair("PL", 30), {"PR", 50}}) {
    auto* box = Find<QWidget>(sound, name);
    const QImage picture = box->grab().toImage();
    // Points of two by two pixels, from column 0 to 220.
    for (int y = 0; y < 64; ++y) {
      for (const int x : {0, 100, 220, 221}) {
        const QRgb expected = y == row && x <= 220 ? qRgb(0, 255, 0) : qRgb(0, 0, 0);
        ASSERT_EQ(picture.pixel(2 * x, 2 * y), expected) << name << ' ' << x << ' ' << y;
      }
    }
  }
}

TEST_F(FormWindowsTest, ATapeIsChosenFromTheList) {
  WriteWave("b.wav", "\xFF");
  WriteWave("a.wav", QByteArray("\0\xFF", 2));
  QFile("c.txt").open(QFile::WriteOnly);
  QWidget* deck = Open("xTapeLoad", "TTape");
  auto* list = Find<QListWidget>(deck, "File1");
  EXPECT_TRUE(list->isHidden());
  Find<QAbstractButton>(deck, "Command9")->click();
  Pull();
  ASSERT_TRUE(list->isVisible());
  ASSERT_EQ(list->count(), 2);
  EXPECT_EQ(list->item(0)->text(), "a.wav");
  EXPECT_EQ(list->item(1)->text(), "b.wav");
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
  EXPECT_EQ(m.ttape.Label3, "b.wav");
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(TapeRead(m.tape), 0);
  Find<QAbstractButton>(deck, "Command1")->click();
  EXPECT_EQ(m.ttape.WindSpeed, -40);
  EXPECT_EQ(TapeRead(m.tape), 1);
  WriteWave("d.wav", "");
  Find<QAbstractButton>(deck, "Command9")->click();
  Pull();
  EXPECT_EQ(list->count(), 3);
}

TEST_F(FormWindowsTest, TheDeckTurns) {
  QWidget* deck = Open("xTapeLoad", "TTape");
  m.PortShadow[5] = 0;
  RunTimers(250);
  EXPECT_EQ(m.ttape.Label1, "0");  // the motor is off
  const QImage atRest = Find<QWidget>(deck, "Picture3")->grab().toImage();
  m.PortShadow[5] = 0x40;
  for (int i = 0; i < 40 && m.ttape.phase < 10; ++i) RunTimers(50);
  Pull();
  EXPECT_GE(m.ttape.phase, 10);
  EXPECT_NE(Find<QWidget>(deck, "Picture3")->grab().toImage(), atRest);
  EXPECT_EQ(Find<QLabel>(deck, "Label1")->text(), QString::fromStdString(m.ttape.Label1));
  EXPECT_EQ(Find<QLabel>(deck, "Label2")->text(), QString::fromStdString(m.ttape.Label1));
}

TEST_F(FormWindowsTest, TheMonitorRecordsAndGatesTheInterrupt) {
  QWidget* monitor = Open("xTVCmon", "TVCmon");
  EXPECT_EQ(monitor->windowTitle(), "HW Monitor");
  auto* record = Find<QCheckBox>(monitor, "Check1");
  auto* enabled = Find<QCheckBox>(monitor, "Check3");
  EXPECT_EQ(record->text(), "Record");
  EXPECT_EQ(enabled->text(), "Int enabled");
  EXPECT_FALSE(record->isChecked());
  EXPECT_TRUE(enabled->isChecked());
  enabled->click();
  EXPECT_FALSE(m.tvcmon.Check3);
  record->click();
  EXPECT_TRUE(m.tvcmon.Check1);
  EXPECT_TRUE(QFile::exists("save.wav"));
  EXPECT_TRUE(QFile::exists("record.wav"));
  RunFrames(5);
  record->click();
  EXPECT_EQ(QFile("record.wav").size(), 44 + 5 * 882);

  m.PortShadow[4] = 0x34;
  m.PortShadow[5] = 0x32;
  m.PortShadow[6] = 9 << 2;
  RunTimers(150);
  EXPECT_EQ(Find<QLabel>(monitor, "Pitch")->text(), "234");
  EXPECT_EQ(Find<QLabel>(monitor, "Volume")->text(), "9");
  EXPECT_EQ(Find<QLabel>(monitor, "SoundIT")->text(), "1");
  EXPECT_EQ(Find<QLabel>(monitor, "OutEnable")->text(), "1");
}

TEST_F(FormWindowsTest, EveryControlHasAnAccessibleName) {
  Open("xTapeLoad", "TTape");
  Open("xTVCmon", "TVCmon");
  Open("xSoundOut", "FDXF");
  int controls = 0;
  for (const char* name : {"TTape", "TVCmon", "FDXF"}) {
    const FormWindow* form = windows->Find(name);
    EXPECT_FALSE(form->accessibleName().isEmpty());
    for (const QWidget* widget : form->findChildren<QWidget*>()) {
      const QString control = widget->objectName();
      if (control.isEmpty() || control.startsWith("qt_") || widget->inherits("QScrollBar")) continue;
      ++controls;
      EXPECT_FALSE(widget->accessibleName().isEmpty()) << control.toStdString();
    }
  }
  EXPECT_EQ(controls, 15 + 90 + 10);  // of the others; of the monitor, and its frames
}

}  // namespace
}  // namespace quoll
