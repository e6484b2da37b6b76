// The windows of the cards: what they have in common, the disk and the serial card.
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

#include "desktop/test/CardWindows.h"

namespace quoll {
namespace {

using FloppyWindowTest = CardWindowsTest;

TEST_F(FloppyWindowTest, AClickOrAnArrowKeyPutsADiskIn) {
  Make("one.dsk", "\x11");
  Make("two.dsk", "\x22");
  QWidget* shown = Open("xdiskload", "TFloppy");
  EXPECT_EQ(shown->windowTitle(), "Disk Load");
  auto* list = Find<QListWidget>(shown, "File1");
  ASSERT_EQ(list->count(), 2);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
  Settle();
  EXPECT_EQ(Find<QLabel>(shown, "Label1")->text(), "one.dsk");
  EXPECT_EQ(m.floppy.DiskData[0][0], 0x11);
  QTest::keyClick(list, Qt::Key_Down);
  Settle();
  EXPECT_EQ(Find<QLabel>(shown, "Label1")->text(), "two.dsk");
  EXPECT_EQ(m.floppy.DiskData[0][0], 0x22);
  QTest::keyClick(list, Qt::Key_Escape);
  Settle();
  EXPECT_FALSE(shown->isVisible());
}

TEST_F(FloppyWindowTest, TellsWhereItLooks) {
  QWidget* shown = Open("xdiskload", "TFloppy");
  auto* where = Find<QLabel>(shown, "folder");
  EXPECT_EQ(where->text(), "No *.dsk in the working directory");
  shown->close();
  Make("one.dsk", "\x11");
  m.panel.folder = folder.path().toStdString();
  Open("xdiskload", "TFloppy");
  EXPECT_EQ(where->text(), "*.dsk in " + folder.path());
}

TEST_F(FloppyWindowTest, ADroppedDiskGoesInOrIsTold) {
  Make("good.DSK", "\x33");
  Drop(folder.filePath("good.DSK"));
  EXPECT_EQ(m.floppy.DiskData[0][0], 0x33);
  EXPECT_EQ(m.tfloppy.Label1, "good.DSK");
  EXPECT_TRUE(host.messages.empty());
  Make("empty.dsk", "");
  QDir().mkdir("folder.dsk");
  Make("secret.dsk", "\x44");
  QFile::setPermissions("secret.dsk", {});
  std::vector<QString> bad{"empty.dsk", "folder.dsk", "missing.dsk"};
  if (!QFile("secret.dsk").open(QIODevice::ReadOnly)) bad.push_back("secret.dsk");  // root reads everything
  for (size_t i = 0; i < bad.size(); ++i) {
    Drop(folder.filePath(bad[i]));
    ASSERT_EQ(host.messages.size(), i + 1) << bad[i].toStdString();
    EXPECT_NE(host.messages[i].find(bad[i].toStdString()), std::string::npos) << host.messages[i];
    EXPECT_EQ(m.tfloppy.Label1, "good.DSK");
    EXPECT_EQ(m.floppy.DiskData[0][0], 0x33);
  }
}

using SerialWindowTest = CardWindowsTest;

TEST_F(SerialWindowTest, SendAndClear) {
  QWidget* shown = Open("xSerial", "TSerial");
  EXPECT_EQ(shown->windowTitle(), "Serial");
  EXPECT_EQ(Find<QLabel>(shown, "Label1")->text(), "Buffer in: ");
  EXPECT_EQ(Find<QLabel>(shown, "Label2")->text(), "Buffer out:");
  auto* text = Find<QLineEdit>(shown, "Text2");
  QTest::keyClicks(text, "AT");
  QTest::keyClick(text, Qt::Key_Return);
  Click(shown, "Command8");
  Settle();
  EXPECT_EQ(m.serial.SerialTx, (SerialQueue{'A', 'T', 'A', 'T'}));
  EXPECT_EQ(Find<QLabel>(shown, "Label5")->text(), "4");
  m.serial.SerialRx = {'x', 0, 'y'};
  m.tserial.Text1 = SerialText(m.serial.SerialRx);
  Settle();
  EXPECT_EQ(Find<QPlainTextEdit>(shown, "Text1")->toPlainText(), "x.y");
  Click(shown, "Command5");
  Settle();
  EXPECT_TRUE(m.serial.SerialTx.empty() && m.serial.SerialRx.empty());
  EXPECT_EQ(Find<QPlainTextEdit>(shown, "Text1")->toPlainText(), "");
  EXPECT_EQ(Find<QLabel>(shown, "Label5")->text(), "0");
}

// The camera moves from the press to the release, by mouse and by key. Frames: A0, address, 0, command, pan
// speed, tilt speed, AF, exclusive or of all seven; commands 2 right, 4 left, 8 up, 16 down.
TEST_F(SerialWindowTest, TheCameraMovesWhileAButtonIsHeld) {
  QWidget* shown = Open("xSerial", "TSerial");
  const std::tuple<const char*, const char*, int> keys[] = {
      {"Command3", "bal", 4}, {"Command4", "jobb", 2}, {"Command6", "fel", 8}, {"Command7", "le", 16}};
  for (const auto& [name, caption, command] : keys) {
    auto* button = Find<QPushButton>(shown, name);
    EXPECT_EQ(button->text(), caption);
    for (const bool byKey : {false, true}) {
      m.serial.SerialTx.clear();
      byKey ? QTest::keyPress(button, Qt::Key_Space) : QTest::mousePress(button, Qt::LeftButton);
      ASSERT_EQ(m.serial.SerialTx.size(), 8U) << name;
      EXPECT_EQ(m.serial.SerialTx[3], command) << name;
      byKey ? QTest::keyRelease(button, Qt::Key_Space) : QTest::mouseRelease(button, Qt::LeftButton);
      ASSERT_EQ(m.serial.SerialTx.size(), 16U) << name;
      EXPECT_EQ(m.serial.SerialTx[8 + 3], 0) << name;
      for (size_t frame = 0; frame < 16; frame += 8) {
        EXPECT_EQ(m.serial.SerialTx[frame], 0xA0);
        EXPECT_EQ(m.serial.SerialTx[frame + 1], 1);
        EXPECT_EQ(m.serial.SerialTx[frame + 6], 0xAF);
        int sum = 0;
        for (size_t i = 0; i < 7; ++i) sum ^= m.serial.SerialTx[frame + i];
        EXPECT_EQ(m.serial.SerialTx[frame + 7], sum);
      }
    }
  }
}

TEST_F(CardWindowsTest, HiddenOnesAreLeftAlone) {
  const std::pair<const char*, const char*> windowsOf[] = {
      {"xdiskload", "TFloppy"}, {"xSerial", "TSerial"}, {"xPrinter", "TPrint"}};
  std::vector<QWidget*> shown;
  for (const auto& [entry, form] : windowsOf) {
    shown.push_back(Open(entry, form));
    shown.back()->close();
  }
  Print("text");
  m.tserial.Text1 = m.tfloppy.Label1 = "text";
  Settle();
  EXPECT_EQ(shown[0]->findChild<QLabel*>("Label1")->text(), "");
  EXPECT_EQ(shown[1]->findChild<QPlainTextEdit*>("Text1")->toPlainText(), "");
  EXPECT_EQ(shown[2]->findChild<QPlainTextEdit*>("Text1")->toPlainText(), "");
  Open("xPrinter", "TPrint");
  EXPECT_EQ(shown[2]->findChild<QPlainTextEdit*>("Text1")->toPlainText(), "text");
}

struct Tabs {
  const char* entry;
  const char* form;
  QStringList names;  // as Tab comes to them
};
const Tabs kTabs[] = {
    {"xdiskload", "TFloppy", {"File1"}},
    {"xSerial",
     "TSerial",
     {"Command1", "Command2", "Command5", "Text1", "Text2", "Command8", "Command6", "Command3", "Command4",
      "Command7"}},
    {"xPrinter", "TPrint", {"Combo1", "Command1", "Command2", "Text1", "Text2", "Command3"}},
    {"xTools",
     "TTools",
     {"Label1", "Text1", "Text2", "U0", "U01", "U02", "U03", "U1", "U11", "U2", "U21", "U3", "U31", "U32",
      "U33"}},
};

TEST_F(CardWindowsTest, TabGoesToEveryControl) {
  for (const Tabs& tabs : kTabs) {
    QWidget* shown = Open(tabs.entry, tabs.form);
    shown->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(shown));
    if (QApplication::focusWidget() == nullptr) QTest::keyClick(shown, Qt::Key_Tab);
    QStringList names;
    const QWidget* const first = QApplication::focusWidget();
    do {
      QWidget* at = QApplication::focusWidget();
      ASSERT_NE(at, nullptr);
      names << at->objectName();
      EXPECT_FALSE(at->accessibleName().isEmpty()) << names.back().toStdString();
      QTest::keyClick(at, Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && names.size() < 100);
    EXPECT_EQ(names.join(' ').toStdString(), tabs.names.join(' ').toStdString());
    shown->close();
  }
}

// Counts what is painted.
struct Paints : QObject {
  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    count += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
  int count = 0;
};

TEST_F(CardWindowsTest, NothingIsPaintedWhileNothingChanges) {
  for (const Tabs& tabs : kTabs) Open(tabs.entry, tabs.form);
  m.serial.SerialRx = {'x'};
  m.tserial.Text1 = "x";
  Print("text");
  QTest::qWait(100);
  Settle();
  Paints paints;
  for (const Tabs& tabs : kTabs) {
    for (QWidget* widget : Shown(tabs.form)->findChildren<QWidget*>()) widget->installEventFilter(&paints);
  }
  for (int pulls = 0; pulls < 20; ++pulls) Settle();
  EXPECT_EQ(paints.count, 0);
  Print("more");
  Settle();
  QTest::qWait(50);
  EXPECT_GT(paints.count, 0);
}

}  // namespace
}  // namespace quoll
