// The windows of the two monitors over their forms.
#include <QAction>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextBlock>
#include <QTimer>
#include <QWheelEvent>
#include <map>
#include <set>

#include "desktop/test/WindowTest.h"
#include "desktop/widgets/CodeEditor.h"
#include "desktop/widgets/CodeLines.h"
#include "desktop/widgets/Colour.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/HexView.h"
#include "desktop/widgets/Lamp.h"
#include "desktop/windows/CPUmonChanges.h"
#include "machine/Memory.h"

namespace quoll {
namespace {

struct Monitors : WindowTest {
  // A machine that stands, with a little program in RAM, and the monitor that was asked for.
  QWidget* Open(const char* entry, const char* form) {
    m.PortShadow[2] = 0xB0;  // RAM everywhere
    RenewPages(m);
    PutCode(0x1000, {0x3C, 0x32, 0x00, 0x40, 0x04, 0x18, 0xF9});  // INC A  LD (4000),A  INC B  JR 1000
    m.z80.PC = 0x1000;
    m.z80.A = m.z80.B = 0;
    m.z80.IFF1 = 0;
    Select(entry);
    Settle();
    QWidget* shown = Shown(form);
    if (shown == nullptr || !QTest::qWaitForWindowActive(shown)) ADD_FAILURE() << form << " is not shown";
    return shown;
  }
  // The controls that the window does not have. Those it has are named for all users.
  static std::set<std::string> Missing(const Form& form, const QWidget* in) {
    std::set<std::string> missing;
    for (const Control& control : form.controls) {
      for (int i = 0; i < std::max(1, control.count); ++i) {
        const auto find = [&](const std::string& name) {
          return in->findChild<QWidget*>(QString::fromStdString(std::string(control.name) + name));
        };
        const std::string index = std::to_string(i), name = std::string(control.name) + " " + index;
        const auto* widget = i == 0                    ? find("")
                             : find("(" + index + ")") ? find("(" + index + ")")
                                                       : find(index);
        if (widget == nullptr) missing.insert(std::string(control.name));
        EXPECT_TRUE(widget == nullptr || !widget->accessibleName().isEmpty()) << name;
      }
    }
    return missing;
  }
  void PutCode(size_t at, std::initializer_list<int> bytes) {
    for (const int byte : bytes) m.MemImage[at++] = static_cast<uint8_t>(byte);
  }
};

struct Z80Monitor : Monitors {
  QWidget* shown = nullptr;
  CodeLines *code = nullptr, *history = nullptr;
  HexView* memory = nullptr;

  void SetUp() override {
    Monitors::SetUp();
    shown = Open("xDebug", "CPUmon");
    ASSERT_NE(shown, nullptr);
    code = Find<CodeLines>(shown, "Picture1");
    history = Find<CodeLines>(shown, "Picture4");
    memory = Find<HexView>(shown, "Picture2");
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    Settle();
  }
  void Button(const char* name) {
    QTest::mouseClick(Find<QPushButton>(shown, name), Qt::LeftButton);
    Settle();
  }
  QLineEdit* Box(const char* name) { return Find<QLineEdit>(shown, name); }
  void Enter(const char* name, const QString& text) {
    Box(name)->setFocus();
    Box(name)->selectAll();
    QTest::keyClicks(Box(name), text);
    Key(Qt::Key_Return);
  }
  static bool IsMarked(const QWidget* box) { return box->palette().color(QPalette::Base) == kChangedGround; }
  // The marked parts of the view.
  QStringList Marked(const HexView* view) const {
    QStringList parts;
    for (const auto& mark : view->findChild<QPlainTextEdit*>()->extraSelections())
      parts << mark.cursor.selectedText();
    return parts;
  }
  QString Status() { return Find<QLabel>(shown, "Status")->text(); }
};

TEST_F(Z80Monitor, ShowsTheMachineThatStands) {
  EXPECT_EQ(shown->windowTitle(), "Z80mon");
  EXPECT_EQ(code->count(), 10);
  EXPECT_EQ(code->item(0)->text(), "1000 INC A");
  EXPECT_EQ(code->item(1)->text(), "1001 LD (4000),A");
  EXPECT_EQ(code->Next(), 0);
  EXPECT_EQ(history->Next(), -1);
  EXPECT_EQ(Box("Text1")->text(), "00");
  EXPECT_EQ(Box("Text3(3)")->text(), "1000");
  EXPECT_EQ(Box("Text2")->text(), "1");
  EXPECT_TRUE(code->hasFocus());
  EXPECT_TRUE(Status().startsWith("Stopped"));
  EXPECT_EQ(memory->Rows().count('\n'), 7);
  EXPECT_TRUE(memory->Rows().startsWith("0000: "));
}

// Every control of the form but the speed, which does nothing, and the timer.
TEST_F(Z80Monitor, HasEveryControl) {
  EXPECT_EQ(Missing(kCPUmon, shown), (std::set<std::string>{"HScroll1", "Timer1"}));
}

TEST_F(Z80Monitor, StepsByKeyAndMarksWhatHasChanged) {
  Key(Qt::Key_F8);
  EXPECT_EQ(m.z80.PC, 0x1001);
  EXPECT_EQ(Box("Text1")->text(), "01");
  EXPECT_EQ(code->item(0)->text(), "1001 LD (4000),A");
  EXPECT_EQ(history->item(9)->text(), "1000 INC A");
  EXPECT_TRUE(IsMarked(Box("Text1")));
  EXPECT_TRUE(IsMarked(Box("Text3(3)")));
  EXPECT_FALSE(IsMarked(Box("Text1(1)")));  // B
  Key(Qt::Key_F8);
  EXPECT_FALSE(IsMarked(Box("Text1")));
  EXPECT_TRUE(IsMarked(Box("Text3(3)")));
  Button("Command7");
  EXPECT_TRUE(IsMarked(Box("Text1(1)")));
  EXPECT_EQ(m.z80.PC, 0x1005);
}

TEST_F(Z80Monitor, MarksBytesOfMemory) {
  Enter("Text10", "16384");
  EXPECT_TRUE(memory->Rows().startsWith("4000: 00 00"));
  EXPECT_EQ(memory->Address(), 0x4000);
  EXPECT_EQ(Marked(memory), QStringList());
  m.z80.A = 0x40;
  Key(Qt::Key_F8);
  Key(Qt::Key_F8);
  EXPECT_TRUE(memory->Rows().startsWith("4000: 41 00"));
  EXPECT_EQ(Marked(memory), (QStringList{"41", "A"}));
  // A row further down shows the same bytes in other rows; marks go with their addresses.
  QTest::keyClick(memory->focusProxy(), Qt::Key_Up);
  Settle();
  EXPECT_EQ(Box("Text10")->text(), "16368");
  EXPECT_EQ(Marked(memory), (QStringList{"41", "A"}));
  Key(Qt::Key_F8);
  EXPECT_EQ(Marked(memory), QStringList());
}

TEST_F(Z80Monitor, TheViewScrollsByWheelAndKeys) {
  Enter("Text10", "4096");
  auto* text = memory->findChild<QPlainTextEdit*>();
  const QPointF at(10, 10);
  QWheelEvent wheel(at, text->viewport()->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                    false);
  QApplication::sendEvent(text->viewport(), &wheel);
  Settle();
  const int wheeled = Box("Text10")->text().toInt();
  EXPECT_GT(wheeled, 4096);
  EXPECT_EQ(wheeled % 16, 0);
  QTest::keyClick(text, Qt::Key_PageDown);
  Settle();
  EXPECT_EQ(Box("Text10")->text().toInt(), wheeled + 128);
  EXPECT_TRUE(memory->Rows().startsWith(QString::number(wheeled + 128, 16).toUpper()));
}

// Letters of the machine are shown as letters, whatever byte the view has for them.
TEST_F(Z80Monitor, NationalLettersAreSeen) {
  m.MemImage[0x5000] = 0x80;
  m.MemImage[0x5001] = 0x41;
  Enter("Text10", "20480");
  EXPECT_TRUE(
      memory->Rows().section('\n', 0, 0).endsWith(QString::fromUtf8("\xC3\x81") + "A" + QString(14, '.')));
}

TEST_F(Z80Monitor, ADoubleClickSetsTheBreakpoint) {
  ASSERT_TRUE(Box("Text5")->isHidden());
  const QRect line = code->visualItemRect(code->item(2));
  QTest::mouseClick(code->viewport(), Qt::LeftButton, {}, line.center());
  QTest::mouseDClick(code->viewport(), Qt::LeftButton, {}, line.center());
  Settle();
  EXPECT_EQ(m.cpumon.Text5, "&H1004");
  EXPECT_TRUE(m.cpumon.Check2);
  EXPECT_TRUE(m.cpumon.Check4);
  EXPECT_EQ(m.run.BreakArmed, 1);
  EXPECT_TRUE(Box("Text5")->isVisible());
  EXPECT_EQ(Box("Text5")->text(), "&H1004");
  EXPECT_TRUE(code->IsBreakpoint(2));
  EXPECT_EQ(code->item(2)->data(Qt::AccessibleDescriptionRole).toString(), "breakpoint");
  EXPECT_EQ(code->item(0)->data(Qt::AccessibleDescriptionRole).toString(), "next");
  EXPECT_FALSE(code->IsBreakpoint(0));
  Key(Qt::Key_F5);
  EXPECT_EQ(m.z80.PC, 0x1004);
  EXPECT_EQ(m.run.CpuRunning, 0);
  EXPECT_TRUE(Status().startsWith("At the breakpoint"));
  // Once round the loop, and the same place again.
  Key(Qt::Key_F5);
  EXPECT_EQ(m.z80.PC, 0x1004);
  EXPECT_EQ(m.z80.B, 1);
  EXPECT_TRUE(IsMarked(Box("Text1(1)")));
  EXPECT_FALSE(IsMarked(Box("Text3(3)")));
}

// The whole way without the mouse: the line by the arrow keys, Enter, F5, an address, a value, Escape.
TEST_F(Z80Monitor, WorksByTheKeyboardAlone) {
  Key(Qt::Key_Down);
  Key(Qt::Key_Down);
  Key(Qt::Key_Return);
  EXPECT_EQ(m.cpumon.Text5, "&H1004");
  Key(Qt::Key_F5);
  EXPECT_EQ(m.z80.PC, 0x1004);
  Key(Qt::Key_M, Qt::AltModifier);
  EXPECT_TRUE(Box("Text10")->hasFocus());
  QTest::keyClicks(Box("Text10"), "16384");
  Key(Qt::Key_Return);
  EXPECT_TRUE(memory->Rows().startsWith("4000: 01"));
  Key(Qt::Key_D, Qt::AltModifier);
  EXPECT_TRUE(code->hasFocus());
  Box("Text1")->setFocus();
  QTest::keyClicks(Box("Text1"), "9");
  EXPECT_EQ(Box("Text1")->text(), "019");
  Key(Qt::Key_Escape);
  EXPECT_TRUE(shown->isVisible());
  EXPECT_EQ(Box("Text1")->text(), "01");
  EXPECT_EQ(m.z80.A, 1);
  Enter("Text1", "1FF");
  EXPECT_EQ(m.z80.A, 0xFF);
  EXPECT_EQ(Box("Text1")->selectedText(), "FF");
  EXPECT_TRUE(IsMarked(Box("Text1")));
}

// By Tab every box, list and button is reached.
TEST_F(Z80Monitor, TabReachesEverything) {
  m.cpumon.Check4 = true;
  m.cpumon.Frame8Look.visible = true;
  Settle();
  std::set<const QWidget*> reached;
  code->setFocus();
  for (int i = 0; i < 120; ++i) {
    reached.insert(QApplication::focusWidget());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  int wanted = 0;
  for (const char* type : {"QLineEdit", "QPushButton", "QCheckBox", "QListWidget"}) {
    for (const QWidget* widget : shown->findChildren<QWidget*>()) {
      if (!widget->inherits(type)) continue;
      ++wanted;
      EXPECT_TRUE(reached.contains(widget)) << widget->objectName().toStdString();
    }
  }
  EXPECT_EQ(wanted, 39 + 6 + 8 + 8 + 3);
  EXPECT_TRUE(reached.contains(memory->focusProxy()));
}

TEST_F(Z80Monitor, RunsAndStopsByKeys) {
  QStringList seen;
  QTimer::singleShot(80, shown, [&] {
    seen << Status();
    QTest::keyClick(shown, Qt::Key_F5, Qt::ShiftModifier);
  });
  QTest::keyClick(shown, Qt::Key_F5);
  Settle();
  EXPECT_EQ(m.run.CpuRunning, 0);
  ASSERT_EQ(seen.size(), 1);
  EXPECT_TRUE(seen[0].startsWith("Running"));
  EXPECT_TRUE(Status().startsWith("Stopped"));
  EXPECT_EQ(m.run.TotalCycles, 0);
}

// A key held down starts one loop, not one inside the other.
TEST_F(Z80Monitor, AHeldKeyRunsOnce) {
  auto* run = Find<QPushButton>(shown, "Command1");
  run->setFocus();
  host.atFrame = [](Machine& stopped) { stopped.run.CpuRunning = 0; };
  int clicks = 0;
  QObject::connect(run, &QPushButton::clicked, run, [&clicks] { ++clicks; });
  const auto send = [](QWidget* to, Qt::Key key) {
    QKeyEvent held(QEvent::KeyPress, key, {}, {}, true);
    QApplication::sendEvent(to, &held);
  };
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) send(run, key);
  EXPECT_EQ(clicks, 0);
  for (const QAction* action : shown->actions())
    EXPECT_EQ(action->autoRepeat(), action->shortcut() == QKeySequence(Qt::Key_F8))
        << action->text().toStdString();
  auto* step = Find<QPushButton>(shown, "Command7");
  const int32_t before = m.z80.PC;
  send(step, Qt::Key_Return);
  EXPECT_NE(m.z80.PC, before);
}

TEST_F(Z80Monitor, NothingMovesWhileValuesChange) {
  const auto places = [this] {
    std::map<const QWidget*, QRect> all;
    for (const QWidget* widget : shown->findChildren<QWidget*>()) {
      if (!widget->objectName().startsWith("qt_") && widget->isVisible())
        all[widget] = QRect(widget->mapTo(shown, QPoint()), widget->size());
    }
    return all;
  };
  m.cpumon.Frame8Look.visible = m.cpumon.Check4 = true;
  Settle();
  const auto before = places();
  for (const int value : {0, 0x7F, 0xFF}) {
    m.z80.A = m.z80.B = m.z80.H = value;
    m.z80.SP = m.z80.IX = value * 257;
    m.z80.Halted = m.z80.IrqLine = value & 1;
    m.run.TotalCycles = value * int64_t{100'000'000};
    m.cpumon.Text7 = std::to_string(value * 25);
    m.cpumon.Label5 = std::to_string(value) + ".125";
    m.run.CpuRunning = static_cast<uint8_t>(value & 1);
    CPUmon_redraw(m.cpumon);
    Settle();
    EXPECT_EQ(places(), before) << value;
  }
  m.run.CpuRunning = 0;
  Find<QCheckBox>(shown, "Check4")->click();  // the breakpoint's controls keep their room
  Settle();
  EXPECT_EQ(Find<QWidget>(shown, "Text10")->mapTo(shown, QPoint()), before.at(Box("Text10")).topLeft());
}

// A step answers at once: half of the longest time that is not noticed as a wait.
TEST_F(Z80Monitor, AStepAnswersWithinTwentyMilliseconds) {
  PressButton("TVCmon", "Command1");
  Select("xTVCmon");
  Settle();
  std::vector<qint64> times;
  for (int i = 0; i < 21; ++i) {
    QElapsedTimer timer;
    timer.start();
    QTest::keyClick(shown, Qt::Key_F8);
    QApplication::processEvents();
    times.push_back(timer.elapsed());
  }
  std::ranges::nth_element(times, times.begin() + 10);
  EXPECT_LE(times[10], 20);
}

TEST_F(Z80Monitor, TheListingFollowsSteps) {
  Select("xAsse");
  Settle();
  SetSource(m, "org 10000\n inc a\n inc b\n ret\n");
  PressButton("asse", "Command1");
  m.z80.PC = 10000;
  auto* listing = Find<CodeEditor>(Shown("asse"), "RText2");
  Settle();
  for (const char* line : {"INC B", "RET"}) {
    PressButton("CPUmon", "Command7");
    Settle();
    EXPECT_TRUE(listing->textCursor().block().text().contains(line))
        << line << ": " << listing->textCursor().block().text().toStdString();
  }
}

TEST_F(Z80Monitor, LoadsAndPokesByTheKeyboard) {
  Box("Text12")->setFocus();
  QTest::keyClicks(Box("Text12"), "&H4000");
  Key(Qt::Key_Tab);
  EXPECT_TRUE(Box("Text13")->hasFocus());
  QTest::keyClicks(Box("Text13"), "171");
  Key(Qt::Key_Return);
  EXPECT_EQ(m.MemImage[0x4000], 171);
  EXPECT_EQ(Find<FileList>(shown, "File1")->count(), static_cast<int>(m.cpumon.File1.entries.size()));
}

// A small window scrolls instead of squeezing; it comes in its full size.
TEST_F(Z80Monitor, SmallAndLarge) {
  auto* area = shown->findChild<QScrollArea*>();
  const QSize screen = shown->screen()->availableSize(), whole = area->widget()->sizeHint();
  EXPECT_EQ(shown->width(), std::min(whole.width(), screen.width() - 20));
  EXPECT_EQ(shown->height(), std::min(whole.height(), screen.height() - 40));
  const int height = code->height();
  shown->resize(400, 300);
  Settle();
  EXPECT_TRUE(area->verticalScrollBar()->isVisible());
  EXPECT_TRUE(area->horizontalScrollBar()->isVisible());
  EXPECT_EQ(code->height(), height);
  shown->resize(1500, 1000);
  Settle();
  EXPECT_FALSE(area->verticalScrollBar()->isVisible());
  EXPECT_EQ(code->height(), height);
}

// Rows by address, with five digits too.
TEST(MonitorChanges, BytesAreComparedAtTheirAddresses) {
  const auto row = [](const char* address, const char* first, const char* character) {
    std::string text = std::string(address) + ": " + first;
    for (int i = 0; i < 15; ++i) text += " 00";
    return text + " " + character + std::string(15, '.');
  };
  const std::string before = row("0000", "00", ".") + "\r\n" + row("0010", "41", "A");
  EXPECT_EQ(ChangedBytes(before, before), std::vector<HexView::Mark>{});
  EXPECT_EQ(ChangedBytes(before, row("0000", "00", ".") + "\r\n" + row("0010", "42", "B")),
            (std::vector<HexView::Mark>{{1, 6, 2}, {1, 54, 1}}));
  EXPECT_EQ(ChangedBytes(before, row("0010", "42", "B") + "\r\n" + row("0020", "42", "B")),
            (std::vector<HexView::Mark>{{0, 6, 2}, {0, 54, 1}}));
  EXPECT_EQ(ChangedBytes(row("1000E", "41", "A"), row("1000E", "42", "B")),
            (std::vector<HexView::Mark>{{0, 7, 2}, {0, 55, 1}}));
  EXPECT_EQ(ChangedBytes("", before), std::vector<HexView::Mark>{});
  EXPECT_EQ(ChangedBytes(before, ""), std::vector<HexView::Mark>{});
}

// What is compared with: the stop before, whatever was seen or typed in between.
TEST(MonitorChanges, TheLastStopIsTheMeasure) {
  CPUmonChanges changes;
  CPUmonShown now;
  const auto look = [&](const char* a, uint32_t stops, bool running) {
    now.Text1[0] = a;
    now.stops = stops;
    FollowChanges(changes, now, running);
    return changes.before ? changes.before->Text1[0] : std::string("none");
  };
  EXPECT_EQ(look("01", 0, true), "none");  // running when the window came
  EXPECT_EQ(look("02", 1, false), "none");
  EXPECT_EQ(look("03", 2, false), "02");  // a step
  EXPECT_EQ(look("33", 2, false), "02");  // typed
  EXPECT_EQ(look("04", 2, true), "33");   // runs on, seen twice
  EXPECT_EQ(look("05", 2, true), "33");
  EXPECT_EQ(look("06", 4, false), "33");  // breakpoint and end of the loop
  EXPECT_EQ(look("06", 5, false), "33");  // the loop below ends with the same machine
  EXPECT_EQ(look("07", 6, false), "06");
}

using HardwareMonitor = Monitors;

TEST_F(HardwareMonitor, HasEveryControl) {
  const QWidget* shown = Open("xTVCmon", "TVCmon");
  EXPECT_EQ(Missing(kTVCmon, shown), std::set<std::string>{"Timer3"});
  QStringList frames;
  for (const QWidget* frame : shown->findChildren<QWidget*>()) {
    if (frame->inherits("QGroupBox")) frames << frame->accessibleName();
  }
  frames.sort();
  EXPECT_EQ(frames, (QStringList{"CAS", "CRTC", "Disk info", "FDD", "INT (Port 89)", "Memory Bank", "Palette",
                                 "SOUND", "Serial", "Slot ID (Port 90)"}));
}

TEST_F(HardwareMonitor, ShowsTheRecord) {
  QWidget* shown = Open("xTVCmon", "TVCmon");
  m.PortShadow[2] = 0xF4;
  m.PortShadow[0x0F] = 0x26;
  m.PortShadow[0x63] = 0x55;
  m.crtc.CrtcRegs[17] = 0x3F;
  m.screen.xio0 = true;
  m.floppy.Accesses = {"Read Track:05", "Read Status REG: 80"};
  PressButton("TVCmon", "Command1");
  Settle();
  const auto text = [&](const char* name) { return Find<QLabel>(shown, name)->text(); };
  EXPECT_EQ(text("Slot") + text("Slot1") + text("Slot2") + text("Slot3"), "U0VID*U2EXT");
  EXPECT_EQ(text("Port2"), "F4");
  EXPECT_EQ(text("Palette3"), "55");
  EXPECT_EQ(text("Crtc16"), "3F");
  EXPECT_EQ(text("SlotId"), "Floppy");
  EXPECT_TRUE(Find<Lamp>(shown, "Vid2")->IsOn());
  EXPECT_FALSE(Find<Lamp>(shown, "Vid1")->IsOn());
  auto* accesses = Find<FileList>(shown, "List4");
  ASSERT_EQ(accesses->count(), 2);
  EXPECT_EQ(accesses->item(1)->text(), "Read Status REG: 80");
}

TEST_F(HardwareMonitor, NothingMovesWhileValuesChange) {
  QWidget* shown = Open("xTVCmon", "TVCmon");
  const QSize before = shown->findChild<QScrollArea*>()->widget()->minimumSizeHint();
  for (const int value : {0, 0xFF}) {
    m.PortShadow.fill(static_cast<uint8_t>(value));
    m.crtc.CrtcRegs.fill(value);
    m.run.ToneItCounter = value * 256;
    m.run.FrameClock = value * 245;
    PressButton("TVCmon", "Command1");
    Settle();
    EXPECT_EQ(shown->findChild<QScrollArea*>()->widget()->minimumSizeHint(), before) << value;
  }
}

}  // namespace
}  // namespace quoll
