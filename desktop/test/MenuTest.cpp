#include <QDir>
#include <QMenuBar>
#include <QTemporaryDir>

#include "desktop/test/WindowTest.h"

namespace quoll {
namespace {

struct Row {
  const char* menu;
  const char* name;
  const char* caption;
  bool ticked;  // it has a tick
};

// What the machine's users find in the menus.
const Row kMenus[] = {
    {"File", "xLoadCAS", "Load cas", false},
    {"File", "xSaveCAS", "Save cas", false},
    {"File", "xLoadSnap", "Load Snap", false},
    {"File", "xSaveSnap", "Save Snap", false},
    {"File", "xLoadCRT", "Load CRT", false},
    {"File", "xUnloadCRT", "Unload", false},
    {"File", "xSvaMEX4", "Save MEX4MB", false},
    {"File", "xio0", "I/O card 0: Floppy", true},
    {"File", "xio1", "I/O card 1: RS232", true},
    {"File", "xio2", "I/O card 2: SoundCard", true},
    {"File", "xio3", "I/O card 3: (IO3.rom)", true},
    {"File", "xSaveScreen", "Save Screen", false},
    {"File", "xLoadScreen", "Load Screen", false},
    {"File", "xLoadTim", "Load Tim", false},
    {"File", "xMemDump", "Memory dump", false},
    {"File", "xReset", "Reset", false},
    {"File", "xReset2", "Reset2", false},
    {"Media", "xdiskload", "Disk Load", false},
    {"Media", "xTapeLoad", "Tape Load", false},
    {"Options", "xFullsc", "FullScreen", false},
    {"Options", "xScreenBW", "Screen BW", true},
    {"Options", "xScreenDIB", "Screen DIB", true},
    {"Options", "xScreenNoise", "Screen noise", true},
    {"Options", "xSound", "Sound", true},
    {"Options", "xNoError", "Ignore CPU error", true},
    {"Options", "xUnDoc", "Undocumented", true},
    {"Options", "x32KB", "32K", true},
    {"Options", "xBasic", "Basic 2.2", true},
    {"Speed", "xS1", "Pause", true},
    {"Speed", "xS2", "0.5x", true},
    {"Speed", "xS3", "Normal", true},
    {"Speed", "xS4", "2x", true},
    {"Speed", "xS5", "4x", true},
    {"Speed", "xS6", "Max", true},
    {"View", "xTVCmon", "TVC monitor", false},
    {"View", "xDebug", "Z80 monitor", false},
    {"View", "xAsse", "Assembler", false},
    {"View", "xPrinter", "Printer", false},
    {"View", "xSerial", "Serial", false},
    {"View", "xsaa", "SAA1099", false},
    {"View", "xSN76", "SN76489", false},
    {"View", "xYM", "YM3812", false},
    {"View", "xYM2", "YM2413", false},
    {"View", "xSID", "SID6581", false},
    {"View", "xAY3", "AY-3-8910", false},
    {"View", "xErrorSim", "ErrorSim", false},
    {"View", "xTools", "Tools", false},
    {"View", "xSoundOut", "Sound output", false},
    {"Extras", "StartCompanion", "Start QUOLLserial", true},
    {"Help", "xHelp", "Help", false},
};

// Mnemonics are how the menus are reached, not part of the caption.
QString Caption(const QAction* action) { return action->text().remove('&'); }

using Menus = WindowTest;

TEST_F(Menus, EveryEntryStandsInItsPlace) {
  size_t row = 0;
  for (const QAction* menu : window->Menus()->actions()) {
    for (const QAction* action : menu->menu()->actions()) {
      ASSERT_LT(row, std::size(kMenus));
      EXPECT_EQ(Caption(menu), kMenus[row].menu);
      EXPECT_EQ(action->objectName(), kMenus[row].name);
      EXPECT_EQ(Caption(action), kMenus[row].caption);
      EXPECT_EQ(action->isCheckable(), kMenus[row].ticked) << kMenus[row].name;
      ++row;
    }
  }
  EXPECT_EQ(row, std::size(kMenus));
}

TEST_F(Menus, AllFindRoomInTheWindowsLine) {
  for (const QString& status : {QString(), QString("No sound device: Timer2")}) {
    m.screen.Label1 = status.toStdString();
    Settle();
    const QWidget* more = window->Menus()->findChild<QWidget*>("qt_menubar_ext_button");
    ASSERT_NE(more, nullptr);
    EXPECT_FALSE(more->isVisible());
  }
}

TEST_F(Menus, FirstTicks) {
  for (const Row& row : kMenus) {
    const std::string name = row.name;
    const bool on = name == "xSound" || name == "xUnDoc" || name == "xBasic" || name == "xS3" ||
                    name == "xScreenDIB" || name == "StartCompanion";
    EXPECT_EQ(window->Action(row.name)->isChecked(), on) << row.name;
  }
}

TEST_F(Menus, TogglesChangeTheRecord) {
  const std::pair<const char*, bool TScreen::*> toggles[] = {
      {"xScreenBW", &TScreen::xScreenBW},
      {"xScreenDIB", &TScreen::xScreenDIB},
      {"xScreenNoise", &TScreen::xScreenNoise},
      {"xSound", &TScreen::xSound},
      {"xNoError", &TScreen::xNoError},
      {"xUnDoc", &TScreen::xUnDoc},
      {"x32KB", &TScreen::x32KB},
      {"xBasic", &TScreen::xBasic},
      {"xio0", &TScreen::xio0},
      {"xio1", &TScreen::xio1},
      {"xio2", &TScreen::xio2},
      {"xio3", &TScreen::xio3},
      {"xS6", &TScreen::xS6},
  };
  for (const auto& [name, field] : toggles) {
    const bool before = m.screen.*field;
    Select(name);
    EXPECT_EQ(m.screen.*field, !before) << name;
    EXPECT_EQ(window->Action(name)->isChecked(), !before) << name;
    Select(name);
    EXPECT_EQ(m.screen.*field, before) << name;
    EXPECT_EQ(window->Action(name)->isChecked(), before) << name;
  }
}

TEST_F(Menus, CardsAndModelsBuildTheMachineAnew) {
  for (const char* name : {"xio0", "xio1", "xio2", "xio3", "x32KB", "xBasic"}) {
    m.MemImage[0x3000] = 0x5A;
    m.z80.PC = 0x1234;
    Select(name);
    EXPECT_EQ(m.MemImage[0x3000], 0) << name;
    EXPECT_EQ(m.z80.PC, 0) << name;
  }
}

TEST_F(Menus, SpeedsExcludeEachOther) {
  const auto expect = [this](bool s2, bool s3, bool s4) {
    EXPECT_EQ(window->Action("xS2")->isChecked(), s2);
    EXPECT_EQ(window->Action("xS3")->isChecked(), s3);
    EXPECT_EQ(window->Action("xS4")->isChecked(), s4);
  };
  Select("xS2");
  expect(true, false, false);
  Select("xS4");
  expect(false, false, true);
  EXPECT_EQ(m.cpumon.HScroll1.value, 4);
  Select("xS3");
  expect(false, true, false);
  EXPECT_EQ(m.cpumon.HScroll1.value, 2);
  Select("xS3");  // it toggles its own tick
  expect(false, false, false);
}

TEST_F(Menus, FourTimesDoesNothing) {
  EXPECT_TRUE(window->Action("xS5")->isEnabled());
  Select("xS5");
  EXPECT_FALSE(window->Action("xS5")->isChecked());
  EXPECT_FALSE(m.screen.xS5);
}

TEST_F(Menus, TicksFollowTheRecord) {
  m.screen.xScreenNoise = true;
  m.screen.xSound = false;
  Settle();
  EXPECT_TRUE(window->Action("xScreenNoise")->isChecked());
  EXPECT_FALSE(window->Action("xSound")->isChecked());
}

TEST_F(Menus, Resets) {
  Select("xReset");
  EXPECT_EQ(m.run.ResetRequest, 1);
  EXPECT_NE(m.MemImage[kWarmStartMark], 0xFF);
  m.run.ResetRequest = 0;
  Select("xReset2");
  EXPECT_EQ(m.run.ResetRequest, 1);
  EXPECT_EQ(m.MemImage[kWarmStartMark], 0xFF);
}

TEST_F(Menus, UnloadTakesTheCartridgeOut) {
  m.CartName = "game.crt";
  m.MemImage[0x14000] = 0x5A;
  m.panel.window.visible = true;
  Select("xUnloadCRT");
  EXPECT_EQ(m.CartName, "");
  EXPECT_EQ(m.MemImage[0x14000], 0);
  EXPECT_FALSE(m.panel.window.visible);
  EXPECT_EQ(window->Action("xUnloadCRT")->text(), "Unload");
}

TEST_F(Menus, FilesOfTheWorkingDirectory) {
  const QTemporaryDir folder;
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(folder.path()));
  m.MemImage[0xFFFF] = 0x11;
  m.MemImage[0x10000] = 0x22;
  Select("xMemDump");
  Select("xSaveScreen");
  m.MemImage[0x10000] = 0;
  Select("xLoadScreen");
  EXPECT_EQ(m.MemImage[0x10000], 0x22);
  m.MexPages.resize(256);
  m.MexPages[255][0x3FFF] = 0x33;
  Select("xSvaMEX4");
  m.MexPages.clear();
  const std::pair<const char*, std::pair<qint64, char>> files[] = {
      {"ramdump.bin", {0x10000, 0x11}}, {"screen.bin", {0x4000, 0}}, {"mex4mb.bin", {0x400000, 0x33}}};
  for (const auto& [name, content] : files) {
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    const QByteArray bytes = file.readAll();
    ASSERT_EQ(bytes.size(), content.first) << name;
    EXPECT_EQ(bytes.back(), content.second) << name;
  }
  EXPECT_TRUE(host.messages.empty());
  Select("xSvaMEX4");  // no store now
  EXPECT_EQ(host.messages.size(), 1U);
  QDir::setCurrent(before);
}

TEST_F(Menus, UnloadNamesTheCartridge) {
  m.CartName = "game.crt";
  Settle();
  EXPECT_EQ(window->Action("xUnloadCRT")->text(), "Unload: game.crt");
  m.CartName.clear();
  Settle();
  EXPECT_EQ(window->Action("xUnloadCRT")->text(), "Unload");
}

TEST_F(Menus, AltReachesThem) {
  QTest::keyClick(window->Picture(), Qt::Key_S, Qt::AltModifier);
  Settle();
  QMenu* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->menuAction()->text(), "&Speed");
  QTest::keyClick(menu, Qt::Key_Up);  // the last entry
  QTest::keyClick(menu, Qt::Key_Return);
  Settle();
  EXPECT_TRUE(m.screen.xS6);
  for (const uint8_t row : m.keyboard.KeyMatrix) EXPECT_EQ(row, 0);
}

TEST_F(Menus, AFailedRebuildEndsTheProgramPastQt) {
  m.programFolder = "/nonexistent";
  Select("x32KB");  // returns as any other event
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0], "Error|Rom File error: ");
  EXPECT_EQ(host.lastIcon, MessageIcon::Stop);
  EXPECT_THROW(host.Pump(m), ProgramEnd);
  EXPECT_THROW(host.FrameEnded(m), ProgramEnd);
  EXPECT_THROW(host.WaitForBlock(m), ProgramEnd);
  EXPECT_FALSE(host.ClosedByUser());
}

}  // namespace
}  // namespace quoll
