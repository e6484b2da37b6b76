#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include "desktop/test/WindowTest.h"
#include "desktop/windows/AboutPanel.h"
#include "desktop/windows/FilePanelFrame.h"
#include "media/Snapshot.h"

namespace quoll {
namespace {

struct Panels : WindowTest {
  QTemporaryDir folder;

  void SetUp() override {
    WindowTest::SetUp();
    ASSERT_TRUE(folder.isValid());
    m.panel.folder = folder.path().toStdString();
  }

  QLineEdit* Box(const char* name) { return Find<QLineEdit>(window->Files(), name); }
  QListWidget* List(const char* name) { return Find<QListWidget>(window->Files(), name); }
  QPushButton* Button() { return Find<QPushButton>(window->Files(), "Command2"); }

  void Type(const char* box, const QString& text) {
    Box(box)->clear();
    QTest::keyClicks(Box(box), text);
  }

  QString Path(const QString& name) { return folder.filePath(name); }

  void Make(const QString& name, const QByteArray& bytes) {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

  QStringList Listed(const char* list) {
    QStringList names;
    for (int i = 0; i < List(list)->count(); ++i) names << List(list)->item(i)->text();
    return names;
  }

  // A double click on an entry of the row of folders.
  void OpenFolderItem(int row) {
    const QPoint at = List("Dir1")->visualItemRect(List("Dir1")->item(row)).center();
    QTest::mouseClick(List("Dir1")->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(List("Dir1")->viewport(), Qt::LeftButton, {}, at);
    Settle();
  }
};

// A cassette file whose program is these bytes.
QByteArray Cassette(const QByteArray& program) { return QByteArray(144, '\0') + program; }

TEST_F(Panels, EachEntryOpensItsPanel) {
  const struct {
    const char *entry, *caption, *pattern;
  } rows[] = {
      {"xLoadCAS", "Open", "*.cas"},  {"xSaveCAS", "Save", "*.cas"}, {"xLoadSnap", "Open", "*.tvs"},
      {"xSaveSnap", "Save", "*.tvs"}, {"xLoadCRT", "Open", "*.crt"}, {"xLoadTim", "Open", "*.tim"},
  };
  for (const auto& row : rows) {
    Select(row.entry);
    EXPECT_TRUE(window->Files()->isVisible()) << row.entry;
    EXPECT_EQ(Button()->text(), row.caption) << row.entry;
    EXPECT_EQ(Box("Text5")->text(), row.pattern) << row.entry;
    EXPECT_EQ(Box("Text6")->isVisible(), row.entry == std::string("xSaveCAS"));
    EXPECT_EQ(Box("Text7")->isVisible(), row.entry == std::string("xSaveCAS"));
    QTest::keyClick(Box("Text3"), Qt::Key_Escape);
    Settle();
    EXPECT_FALSE(window->Files()->isVisible()) << row.entry;
    EXPECT_EQ(QApplication::focusWidget(), window->Picture());
  }
}

TEST_F(Panels, SnapshotThereAndBack) {
  m.MemImage[0x2345] = 0x77;
  Select("xSaveSnap");
  Type("Text3", "first");
  QTest::mouseClick(Button(), Qt::LeftButton);
  Settle();
  EXPECT_FALSE(window->Files()->isVisible());
  EXPECT_EQ(QFile(Path("first.tvs")).size(), qint64{kSnapshotSize});

  Select("xSaveSnap");
  Type("Text3", "second.tvs");  // the extension is not put there twice
  QTest::keyClick(Box("Text3"), Qt::Key_Return);
  Settle();
  EXPECT_TRUE(QFile::exists(Path("second.tvs")));
  EXPECT_FALSE(QFile::exists(Path("second.tvs.tvs")));

  m.MemImage[0x2345] = 0;
  Select("xLoadSnap");
  EXPECT_EQ(Listed("File1"), QStringList({"first.tvs", "second.tvs"}));
  Type("Text3", "first");  // without extension
  QTest::mouseClick(Button(), Qt::LeftButton);
  Settle();
  EXPECT_EQ(m.MemImage[0x2345], 0x77);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Panels, AClickCopiesTheNameADoubleClickOpens) {
  Make("prog.cas", Cassette("\x11\x22\x33"));
  Make("other.tvs", "x");
  Select("xLoadCAS");
  ASSERT_EQ(Listed("File1"), QStringList({"prog.cas"}));
  const QPoint at = List("File1")->visualItemRect(List("File1")->item(0)).center();
  QTest::mouseClick(List("File1")->viewport(), Qt::LeftButton, {}, at);
  EXPECT_EQ(Box("Text3")->text(), "prog.cas");
  EXPECT_TRUE(window->Files()->isVisible());
  QTest::mouseDClick(List("File1")->viewport(), Qt::LeftButton, {}, at);
  Settle();
  EXPECT_FALSE(window->Files()->isVisible());
  EXPECT_EQ(m.MemImage[0x19EF], 0x11);
  EXPECT_EQ(m.MemImage[0x19F1], 0x33);
  EXPECT_EQ(m.MemImage[0x1726] + 256 * m.MemImage[0x1727], 0x19F2);
}

TEST_F(Panels, CassetteIsSavedFromTheBoxes) {
  Select("xSaveCAS");
  Type("Text3", "mine");
  Type("Text6", "6640");
  Type("Text7", "6650");
  QTest::keyClick(Box("Text7"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(QFile(Path("mine.cas")).size(), 144 + 10);
}

TEST_F(Panels, CartridgeAndPicture) {
  Select("xLoadTim");
  QByteArray tim(16, '\0');
  tim[3] = 2;
  tim += QByteArray(100, '\x3C');
  Make("pic.tim", tim);
  Type("Text3", "pic");
  QTest::keyClick(Box("Text3"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(m.MemImage[0x10000], 0x3C);
  EXPECT_EQ(m.PortShadow[6] & 3, 2);

  Make("game.crt", QByteArray(10, '\x5A'));
  Select("xLoadCRT");
  Type("Text3", "game");
  QTest::keyClick(Box("Text3"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(m.MemImage[0x14009], 0x5A);
  EXPECT_EQ(m.CartName, "game.crt");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Panels, AFileThatIsNotThereIsSaid) {
  for (const char* entry : {"xLoadCAS", "xLoadSnap", "xLoadCRT", "xLoadTim"}) {
    const std::vector<uint8_t> before(m.MemImage.begin(), m.MemImage.end());
    Select(entry);
    Type("Text3", "not_there");
    QTest::keyClick(Box("Text3"), Qt::Key_Return);
    Settle();
    EXPECT_TRUE(window->Files()->isVisible()) << entry;
    EXPECT_FALSE(m.panel.error.empty()) << entry;
    EXPECT_TRUE(std::equal(before.begin(), before.end(), m.MemImage.begin())) << entry;
    EXPECT_TRUE(host.messages.empty()) << entry;
  }
}

TEST_F(Panels, APatternOfAnotherKindChangesWhatTheButtonDoes) {
  Make("prog.cas", Cassette("\x11\x22"));
  Select("xLoadSnap");
  Type("Text5", "p*");
  QTest::keyClick(Box("Text5"), Qt::Key_Return);
  EXPECT_EQ(Listed("File1"), QStringList({"prog.cas"}));
  EXPECT_EQ(m.panel.pattern, "*.tvs");  // a filter alone
  Type("Text5", "*.cas");
  QTest::keyClick(Box("Text5"), Qt::Key_Return);
  EXPECT_EQ(m.panel.pattern, "*.cas");
  Type("Text3", "prog");
  QTest::keyClick(Box("Text3"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(m.MemImage[0x19EF], 0x11);
}

TEST_F(Panels, WithoutANameItStays) {
  Select("xLoadSnap");
  QTest::mouseClick(Button(), Qt::LeftButton);
  Settle();
  EXPECT_TRUE(window->Files()->isVisible());
  EXPECT_FALSE(m.panel.error.empty());
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Panels, FoldersAreWalkedAndRemembered) {
  ASSERT_TRUE(QDir(folder.path()).mkdir("games"));
  Make("games/a.tvs", "x");
  Select("xLoadSnap");
  ASSERT_EQ(Listed("Dir1"), QStringList({"..", "games"}));
  OpenFolderItem(1);
  EXPECT_EQ(Listed("File1"), QStringList({"a.tvs"}));
  QTest::keyClick(Box("Text3"), Qt::Key_Escape);
  Settle();
  Select("xSaveSnap");
  EXPECT_EQ(m.panel.folder, Path("games").toStdString());
  Type("Text3", "b");
  QTest::keyClick(Box("Text3"), Qt::Key_Return);
  Settle();
  EXPECT_TRUE(QFile::exists(Path("games/b.tvs")));
}

TEST_F(Panels, WhatTheFileListShowsCanBeOpened) {
  Make("game.bin", Cassette("\x33"));
  Make("UP.CAS", Cassette("\x44"));
  Select("xLoadCAS");
  Type("Text5", "*.bin");
  QTest::keyClick(Box("Text5"), Qt::Key_Return);
  ASSERT_EQ(Listed("File1"), QStringList({"game.bin"}));
  List("File1")->setFocus();
  List("File1")->setCurrentRow(0);
  QTest::keyClick(List("File1"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(m.MemImage[0x19EF], 0x33);
  EXPECT_EQ(QApplication::focusWidget(), window->Picture());
  Select("xLoadCAS");
  EXPECT_TRUE(m.panel.Text3.empty());
  Type("Text3", "UP.CAS");
  QTest::keyClick(Box("Text3"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(m.MemImage[0x19EF], 0x44);
}

TEST_F(Panels, FilesOfTheWorkingDirectory) {
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(folder.path()));
  m.panel.folder.clear();
  Make("mine.crt", "\x66");
  Select("xLoadCRT");
  ASSERT_EQ(Listed("File1"), QStringList({"mine.crt"}));
  Type("Text3", "mine");
  QTest::keyClick(Box("Text3"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(m.MemImage[0x14000], 0x66);
  EXPECT_TRUE(host.messages.empty());
  QDir::setCurrent(before);
}

TEST_F(Panels, TheBoxesAreFilledAndWrittenBack) {
  m.PortShadow[2] = 0x70;
  RenewPages(m);
  const std::pair<int, int> words[] = {{0x1720, 30000}, {0x1722, 0x19EF}, {0x1726, 7000}};
  for (const auto& [at, word] : words) {
    MemWrite(m, at, static_cast<uint8_t>(word & 0xFF));
    MemWrite(m, at + 1, static_cast<uint8_t>(word >> 8));
  }
  Select("xSaveCAS");
  EXPECT_EQ(Box("Text6")->text(), "6639");
  EXPECT_EQ(Box("Text7")->text(), "7000");
  EXPECT_EQ(Box("Text8")->text(), "30000");
  Type("Text6", "&H1000");
  Type("Text7", "&H1A00");
  Type("Text3", "mine");
  QTest::mouseClick(Button(), Qt::LeftButton);
  Settle();
  EXPECT_EQ(m.panel.Text6, "6639");
  EXPECT_EQ(m.panel.Text7, "6656");
  EXPECT_EQ(QFile(Path("mine.cas")).size(), 144 + 17);
}

TEST_F(Panels, AnErrorGoesWithItsPanel) {
  Select("xLoadSnap");
  Type("Text3", "none");
  QTest::mouseClick(Button(), Qt::LeftButton);
  Settle();
  EXPECT_FALSE(m.panel.error.empty());
  Select("xLoadCAS");
  EXPECT_TRUE(m.panel.error.empty());
  EXPECT_TRUE(m.panel.Text3.empty());
}

TEST_F(Panels, ADoubleClickWalksOneLevel) {
  ASSERT_TRUE(QDir(folder.path()).mkpath("aa/bb/cc"));
  Select("xLoadSnap");
  OpenFolderItem(1);
  EXPECT_EQ(m.panel.folder, Path("aa").toStdString());
  List("Dir1")->setFocus();
  List("Dir1")->setCurrentRow(1);
  QTest::keyClick(List("Dir1"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(m.panel.folder, Path("aa/bb").toStdString());
  OpenFolderItem(0);
  EXPECT_EQ(m.panel.folder, Path("aa").toStdString());
}

// As on desktops where one click opens: the second click of a double click comes too late to walk on.
TEST_F(Panels, ADoubleClickWalksOneLevelWhereOneClickDoes) {
  ASSERT_TRUE(QDir(folder.path()).mkpath("aa/bb/cc"));
  Select("xLoadSnap");
  List("Dir1")->setStyleSheet("QListView { activate-on-singleclick: 1; }");
  const QPoint at = List("Dir1")->visualItemRect(List("Dir1")->item(1)).center();
  QTest::mouseClick(List("Dir1")->viewport(), Qt::LeftButton, {}, at);
  QTest::mouseDClick(List("Dir1")->viewport(), Qt::LeftButton, {}, at);
  Settle();
  EXPECT_EQ(m.panel.folder, Path("aa").toStdString());
  QTest::mouseDClick(List("Dir1")->viewport(), Qt::LeftButton, {}, at);
  Settle();
  EXPECT_EQ(m.panel.folder, Path("aa").toStdString());
}

TEST_F(Panels, KeysInAPanelAreNotTheMachines) {
  Select("xLoadCAS");
  QTest::keyPress(Box("Text3"), Qt::Key_A);
  QTest::keyPress(window->Files(), Qt::Key_B);
  for (const uint8_t row : m.keyboard.KeyMatrix) EXPECT_EQ(row, 0);
}

TEST_F(Panels, TabStaysInside) {
  Select("xSaveCAS");
  QWidget* first = QApplication::focusWidget();
  ASSERT_EQ(first, Box("Text3"));
  int steps = 0;
  do {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(window->Files()->isAncestorOf(QApplication::focusWidget()));
    ++steps;
  } while (QApplication::focusWidget() != first && steps < 20);
  EXPECT_EQ(steps, 9);  // folders, files, pattern, name, three boxes, two buttons
}

// Only a click or the arrow keys within the list copy a name.
TEST_F(Panels, TabThroughTheListKeepsTheTypedName) {
  Make("a.cas", "x");
  Make("b.cas", "x");
  Select("xSaveCAS");
  Type("Text3", "mine");
  QStringList walked;
  for (int i = 0; i < 9; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    Settle();
    walked << QApplication::focusWidget()->objectName();
    EXPECT_EQ(Box("Text3")->text(), "mine") << i;
    EXPECT_EQ(m.panel.File1.selected, -1) << i;
  }
  // In the order in which they are seen.
  EXPECT_EQ(walked, QStringList({"Text6", "Text7", "Text8", "Command2", "Frame1Cancel", "Dir1", "File1",
                                 "Text5", "Text3"}));
  List("File1")->setFocus(Qt::TabFocusReason);
  QTest::keyClick(List("File1"), Qt::Key_Down);
  EXPECT_EQ(Box("Text3")->text(), "a.cas");
  QTest::keyClick(List("File1"), Qt::Key_Down);
  EXPECT_EQ(Box("Text3")->text(), "b.cas");
}

TEST_F(Panels, AScriptSeesAndMovesThem) {
  Make("a.cas", Cassette("\x11"));
  Select("xLoadCAS");
  ASSERT_TRUE(ChooseEntry(m, TheControl("TScreen", "File1"), 0));
  Settle();
  EXPECT_EQ(Box("Text3")->text(), "a.cas");
  EXPECT_EQ(List("File1")->currentRow(), 0);
  PressButton("TScreen", "Command2");
  Settle();
  EXPECT_FALSE(window->Files()->isVisible());
  EXPECT_EQ(m.MemImage[0x19EF], 0x11);
}

TEST_F(Panels, ATypedPatternCountsWhenItsBoxIsLeft) {
  Make("a.cas", "x");
  Make("b.bin", "x");
  Select("xLoadCAS");
  Box("Text5")->setFocus();
  Type("Text5", "*.bin");
  EXPECT_EQ(Listed("File1"), QStringList({"a.cas"}));
  QTest::keyClick(Box("Text5"), Qt::Key_Tab);
  EXPECT_EQ(Listed("File1"), QStringList({"b.bin"}));
}

TEST_F(Panels, DroppedFilesOpenBySuffix) {
  Make("DROP.CAS", Cassette("\x44"));
  Drop(Path("DROP.CAS"));
  EXPECT_EQ(m.MemImage[0x19EF], 0x44);
  QByteArray tim(17, '\x3C');
  Make("pic.tim", tim);
  Drop(Path("pic.tim"));
  EXPECT_EQ(m.MemImage[0x10000], 0x3C);
  ASSERT_TRUE(SaveSnapshot(m, Path("snap.tvs").toStdString()));
  m.MemImage[0x10000] = 0;
  Drop(Path("snap.tvs"));
  EXPECT_EQ(m.MemImage[0x10000], 0x3C);
  Make("game.crt", "\x21");
  Drop(Path("game.crt"));
  EXPECT_EQ(m.MemImage[0x14000], 0x21);
  EXPECT_TRUE(host.messages.empty());
  Make("tape.wav", QByteArray(44, '\0') + '\xC8' + '\x10');
  Drop(Path("tape.wav"));
  EXPECT_EQ(m.ttape.Label3, "tape.wav");
  EXPECT_TRUE(TapeRead(m.tape));
  EXPECT_FALSE(TapeRead(m.tape));
  EXPECT_TRUE(host.messages.empty());
  ASSERT_TRUE(QDir(folder.path()).mkdir("folder.crt"));
  Drop(Path("folder.crt"));
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_NE(host.messages[0].find("folder.crt: it is a directory"), std::string::npos);
  host.messages.clear();
  Select("xLoadCAS");
  Drop(Path("DROP.CAS"));
  EXPECT_FALSE(m.panel.window.visible);
  Make("text.txt", "hello");
  Drop(Path("text.txt"));
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_NE(host.messages[0].find("text.txt"), std::string::npos);
}

TEST_F(Panels, About) {
  Select("xHelp");
  ASSERT_TRUE(window->About()->isVisible());
  EXPECT_EQ(Find<QLabel>(window->About(), "Label3")->text(), "QUOLLEMU  V.3.1");
  EXPECT_EQ(Find<QLabel>(window->About(), "Label4")->text(), "Videoton TV Computer emulator");
  const QString link = Find<QLabel>(window->About(), "Label7")->text();
  EXPECT_TRUE(link.contains("mailto:")) << link.toStdString();
  EXPECT_TRUE(link.contains("?subject=QUOLLEMU"));
  auto* log = Find<QListWidget>(window->About(), "List1");
  LogPortWrite(m.screen.List1, 0xC8);
  LogPortRead(m.screen.List1, 9);
  Settle();
  ASSERT_EQ(log->count(), 2);
  EXPECT_EQ(log->item(0)->text(), "W200");
  EXPECT_EQ(log->item(1)->text(), "R9");
  m.screen.List1.count = 0;
  Settle();
  EXPECT_EQ(log->count(), 0);
  QTest::keyClick(window->About(), Qt::Key_Escape);
  Settle();
  EXPECT_FALSE(window->About()->isVisible());
  EXPECT_FALSE(m.frame2.window.visible);
}

}  // namespace
}  // namespace quoll
