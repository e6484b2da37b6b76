// The windows of the six sound chips: what all of them have in common, then what one alone can do.
#include <QAbstractButton>
#include <QAbstractSlider>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <set>

#include "desktop/kit/FormWindow.h"
#include "desktop/kit/QtText.h"
#include "desktop/test/WindowTest.h"
#include "desktop/widgets/Colour.h"
#include "desktop/widgets/RegisterGrid.h"
#include "desktop/widgets/Scope.h"
#include "desktop/windows/ChipCircuits.h"

namespace quoll {
namespace {

struct ChipWindow {
  const char* item;
  const Form* form;
};

void PrintTo(const ChipWindow& chip, std::ostream* out) { *out << chip.form->name; }

constexpr std::array kChipWindows{ChipWindow{"xsaa", &kFsaa},   ChipWindow{"xSN76", &kFSN76489},
                                  ChipWindow{"xYM", &kFYM3812}, ChipWindow{"xYM2", &kFYM2413},
                                  ChipWindow{"xSID", &kFSID},   ChipWindow{"xAY3", &kT8910}};

struct ChipWindowsTest : WindowTest {
  void Pull() {
    host.PullViews(m);
    QApplication::processEvents();
  }
  // With every part that a box hides.
  QWidget* Open(const ChipWindow& chip) {
    m.fsaa.Check10 = m.fsn76489.Check1 = m.fsid.Check8 = true;
    Select(chip.item);
    Pull();
    QWidget* shown = Shown(std::string(chip.form->name).c_str());
    EXPECT_NE(shown, nullptr) << chip.form->name;
    return shown;
  }
  static QWidget* WidgetOf(QWidget* shown, const ControlRef& ref) {
    if (auto* grid = shown->findChild<RegisterGrid*>(ToQt(ref.control->name))) return grid;
    const auto found = shown->findChildren<QWidget*>(FormKit::NameOf(ref));
    EXPECT_EQ(found.size(), 1) << FormKit::NameOf(ref).toStdString();
    return found.value(0);
  }

  // Each control of the form with its widget.
  template <class Work>
  void ForEach(const ChipWindow& chip, QWidget* shown, Work work) {
    for (const Control& control : chip.form->controls) {
      if (control.kind == ControlKind::Timer) continue;
      for (int index = 0; index < std::max(1, control.count); ++index) {
        SCOPED_TRACE(std::string(control.name) + "(" + std::to_string(index) + ")");
        const ControlRef ref{chip.form, &control, index};
        QWidget* widget = WidgetOf(shown, ref);
        ASSERT_NE(widget, nullptr);
        work(ref, widget);
      }
    }
  }
  template <class Widget>
  static Widget* As(QWidget* widget) {
    auto* cast = qobject_cast<Widget*>(widget);
    EXPECT_NE(cast, nullptr) << widget->metaObject()->className();
    return cast;
  }

  void TryTick(const ControlRef& ref, QWidget* widget) {
    auto* button = As<QAbstractButton>(widget);
    bool& tick = *FieldOf<bool>(m, ref);
    EXPECT_EQ(button->text(), ToQt(CaptionOf(ref)));
    for (int time = 0; time < 2; ++time) {
      tick = !tick;
      Pull();
      EXPECT_EQ(button->isChecked(), tick);
    }
    const bool before = tick;
    button->click();
    EXPECT_EQ(tick, ref.control->kind == ControlKind::Option || !before);
    button->click();
    EXPECT_EQ(tick, ref.control->kind == ControlKind::Option || before);
  }
  void TryScroll(const ControlRef& ref, QWidget* widget) {
    auto* slider = As<QAbstractSlider>(widget);
    Scroll& scroll = *FieldOf<Scroll>(m, ref);
    EXPECT_EQ(slider->minimum(), scroll.first);
    EXPECT_EQ(slider->maximum(), scroll.last);
    for (const int32_t value : {scroll.first, scroll.last}) {
      scroll.value = value;
      Pull();
      EXPECT_EQ(slider->value(), value);
    }
    for (const int32_t value : {scroll.first, scroll.last}) {
      slider->setValue(value);
      EXPECT_EQ(scroll.value, value);
    }
  }
  void TryText(const ControlRef& ref, QWidget* widget) {
    auto* box = As<QLineEdit>(widget);
    std::string& text = *FieldOf<std::string>(m, ref);
    text = "12";
    Pull();
    EXPECT_EQ(box->text(), "12");
    QTest::keyClicks(box, "3");
    EXPECT_EQ(text, "123");
  }
  void TryLabel(const ControlRef& ref, QWidget* widget) {
    for (const char* text : {"7", "19"}) {
      *FieldOf<std::string>(m, ref) = text;
      Pull();
      const auto* grid = qobject_cast<RegisterGrid*>(widget);
      EXPECT_EQ(grid != nullptr ? grid->Value(ref.index) : As<QLabel>(widget)->text(), text);
    }
  }
  void TryScope(const ControlRef& ref, QWidget* widget) {
    auto* scope = As<Scope>(widget);
    const QImage before = scope->grab().toImage();
    Trace& trace = *FieldOf<Trace>(m, ref);
    trace.y.assign(221, 10.0F + static_cast<float>(ref.index));
    ++trace.drawings;
    // Of the YM3812 the points are the last frame's as long as that has this number.
    m.fym3812.frames = m.fym3812.Pic1[0].drawings;
    Pull();
    EXPECT_NE(scope->grab().toImage(), before);
  }
  void TryList(const ControlRef& ref, QWidget* widget) {
    auto* list = As<QListWidget>(widget);
    m.fsid.File1.Fill({"a.sidx", "b.sidx"});
    Pull();
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(1)->text(), "b.sidx");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
    EXPECT_EQ(*ListOf(m, *ref.control).selected, 1);
  }
  void Try(const ControlRef& ref, QWidget* widget) {
    switch (ref.control->kind) {
      case ControlKind::Check:
      case ControlKind::Option: return TryTick(ref, widget);
      case ControlKind::Scroll: return TryScroll(ref, widget);
      case ControlKind::Text: return TryText(ref, widget);
      case ControlKind::Label: return TryLabel(ref, widget);
      case ControlKind::Scope: return TryScope(ref, widget);
      case ControlKind::List: return TryList(ref, widget);
      case ControlKind::Button: EXPECT_EQ(As<QAbstractButton>(widget)->text(), ToQt(CaptionOf(ref))); return;
      default: FAIL() << "a kind that no chip's window has";
    }
  }
};

// Notes which widgets of a window are painted.
struct PaintNotes : QObject {
  explicit PaintNotes(QWidget* shown) {
    for (QWidget* widget : shown->findChildren<QWidget*>()) widget->installEventFilter(this);
  }
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::Paint) painted.insert(qobject_cast<QWidget*>(object));
    return false;
  }
  std::set<QWidget*> painted;
};

struct EachChipWindow : ChipWindowsTest, testing::WithParamInterface<ChipWindow> {};

INSTANTIATE_TEST_SUITE_P(Chips, EachChipWindow, testing::ValuesIn(kChipWindows),
                         [](const auto& chip) { return std::string(chip.param.form->name); });

TEST_P(EachChipWindow, ComesByTheMenuAndGoesByEscape) {
  const bool& visible = GetParam().form->state(m)->visible;
  EXPECT_FALSE(visible);
  QWidget* shown = Open(GetParam());
  EXPECT_TRUE(visible);
  EXPECT_EQ(shown->windowTitle(), ToQt(GetParam().form->caption));
  QTest::keyClick(shown, Qt::Key_Escape);
  Pull();
  EXPECT_FALSE(visible);
  EXPECT_FALSE(shown->isVisible());
  EXPECT_FALSE(host.ClosedByUser());
}

TEST_P(EachChipWindow, EveryControlIsSeenAndHasAName) {
  QWidget* shown = Open(GetParam());
  int controls = 0;
  ForEach(GetParam(), shown, [&](const ControlRef& ref, QWidget* widget) {
    ++controls;
    EXPECT_TRUE(widget->isVisible());
    EXPECT_TRUE(shown->rect().contains(QRect(widget->mapTo(shown, QPoint(0, 0)), widget->size())));
    EXPECT_FALSE(widget->accessibleName().isEmpty());
    const auto* grid = qobject_cast<RegisterGrid*>(widget);
    EXPECT_EQ(grid != nullptr ? grid->Cells() : ref.control->count, ref.control->count);
  });
  EXPECT_GT(controls, 30);
}

TEST_P(EachChipWindow, ChangesGoBothWays) {
  QWidget* shown = Open(GetParam());
  ForEach(GetParam(), shown, [&](const ControlRef& ref, QWidget* widget) { Try(ref, widget); });
}

// Whatever the user can change is come to by Tab, each once, and all the way round.
TEST_P(EachChipWindow, TabGoesToEveryControl) {
  QWidget* shown = Open(GetParam());
  shown->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(shown));
  std::set<QWidget*> wanted;
  ForEach(GetParam(), shown, [&](const ControlRef& ref, QWidget* widget) {
    const bool shownOnly = ref.control->kind == ControlKind::Scope ||
                           (ref.control->kind == ControlKind::Label && !ref.control->click) ||
                           (ref.control->name == "HScroll6" && ref.form == &kFSID);
    if (!shownOnly) wanted.insert(widget);
  });
  std::vector<QWidget*> visited;
  QTest::keyClick(shown, Qt::Key_Tab);
  for (QWidget* at = QApplication::focusWidget(); at != nullptr; at = QApplication::focusWidget()) {
    if (std::ranges::find(visited, at) != visited.end()) break;
    visited.push_back(at);
    QTest::keyClick(at, Qt::Key_Tab);
  }
  EXPECT_EQ(std::set(visited.begin(), visited.end()), wanted);
  if (wanted.empty()) return;
  ASSERT_FALSE(visited.empty());
  EXPECT_EQ(QApplication::focusWidget(), visited.front());
  QTest::keyClick(visited.front(), Qt::Key_Backtab);
  EXPECT_EQ(QApplication::focusWidget(), visited.back());
}

TEST_P(EachChipWindow, OnlyWhatChangedIsPainted) {
  QWidget* shown = Open(GetParam());
  QTest::qWait(50);
  PaintNotes paints(shown);
  for (int time = 0; time < 5; ++time) Pull();
  EXPECT_TRUE(paints.painted.empty());
  ForEach(GetParam(), shown, [&](const ControlRef& ref, QWidget* widget) {
    if (ref.control->kind != ControlKind::Label || ref.index > 0) return;
    paints.painted.clear();
    *FieldOf<std::string>(m, ref) = "5";
    Pull();
    QTest::qWait(20);  // painted by the event loop
    // What it stands on is painted under it.
    bool seen = false;
    for (const QWidget* other : paints.painted) {
      seen |= other == widget || widget->isAncestorOf(other);
      EXPECT_TRUE(other == widget || other->isAncestorOf(widget) || widget->isAncestorOf(other))
          << other->metaObject()->className() << ' ' << other->objectName().toStdString();
    }
    EXPECT_TRUE(seen);
  });
}

// Without the parts that a box hides: 1366 x 768 points less the bars.
TEST_P(EachChipWindow, FitsASmallScreen) {
  Select(GetParam().item);
  Pull();
  const QSize least = Shown(std::string(GetParam().form->name).c_str())->minimumSizeHint();
  EXPECT_LE(least.width(), 1300);
  EXPECT_LE(least.height(), 730);
}

// A note that is held may draw the same line for seconds.
TEST_P(EachChipWindow, ALineDrawnAgainIsNotPainted) {
  QWidget* shown = Open(GetParam());
  const ControlRef scope{GetParam().form, FindControl(*GetParam().form, "Pic1"), 0};
  Trace& trace = *FieldOf<Trace>(m, scope);
  const auto draw = [&](float height) {
    trace.y.assign(221, height);
    m.fym3812.frames = ++trace.drawings;
    Pull();
    QTest::qWait(20);  // painted by the event loop
  };
  draw(7);
  PaintNotes paints(shown);
  draw(7);
  EXPECT_TRUE(paints.painted.empty());
  draw(8);
  EXPECT_EQ(paints.painted, std::set<QWidget*>{WidgetOf(shown, scope)});
}

TEST_P(EachChipWindow, AHiddenOneIsLeftAlone) {
  QWidget* shown = Open(GetParam());
  const Control& first = GetParam().form->controls.front();
  const ControlRef scope{GetParam().form, FindControl(*GetParam().form, "Pic1"), 0};
  ASSERT_NE(scope.control, nullptr);
  QWidget* widget = WidgetOf(shown, scope);
  shown->close();
  Pull();
  PaintNotes paints(shown);
  const QImage before = widget->grab().toImage();
  Trace& trace = *FieldOf<Trace>(m, scope);
  trace.y.assign(221, 5.0F);
  ++trace.drawings;
  m.fym3812.frames = trace.drawings;
  paints.painted.clear();
  for (int time = 0; time < 5; ++time) Pull();
  EXPECT_TRUE(paints.painted.empty()) << first.name;
  EXPECT_EQ(widget->grab().toImage(), before);
  Open(GetParam());
  EXPECT_NE(widget->grab().toImage(), before);
}

TEST_P(EachChipWindow, ScopesGrowWithItAndStaySharp) {
  QWidget* shown = Open(GetParam());
  auto* scope = shown->findChild<Scope*>("Pic1");
  const ControlRef ref{GetParam().form, FindControl(*GetParam().form, "Pic1"), 0};
  Trace& trace = *FieldOf<Trace>(m, ref);
  for (int i = 0; i < 221; ++i) trace.y.push_back(static_cast<float>(10 + i % 40));
  trace.drawings = m.fym3812.frames = 1;
  Pull();
  const QSize before = scope->size();
  shown->resize(shown->size() + QSize(500, 400));
  Pull();
  EXPECT_GT(scope->width(), before.width());
  EXPECT_GT(scope->height(), before.height());
  const QImage seen = scope->grab().toImage();
  int lit = 0;
  for (int y = 0; y < seen.height(); ++y) {
    for (int x = 0; x < seen.width(); ++x) {
      const QRgb pixel = seen.pixel(x, y);
      ASSERT_TRUE(pixel == qRgb(0, 0, 0) || pixel == ToColour(trace.colour).rgb()) << x << ' ' << y;
      if (pixel != qRgb(0, 0, 0)) lit = std::max(lit, x + 1);
    }
  }
  EXPECT_GE(lit, seen.width() * 220 / 221);  // point 220 is in the last of 221 units
}

// Twice as wide and as high as it was: columns double, the line stays one pixel thick.
TEST(GrowingScope, StretchesEachWayByItself) {
  const Trace trace{.y = {1, 1, 3}};
  const QImage image = Scope::Draw(trace, {.units = {3, 4}, .grows = true}, 1, {6, 4});
  ASSERT_EQ(image.size(), QSize(6, 4));
  std::string rows;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) rows += image.pixel(x, y) == qRgb(0, 255, 0) ? '#' : '.';
    rows += '|';
  }
  EXPECT_EQ(rows, "......|###...|..##..|...##.|");
}

TEST_F(ChipWindowsTest, BoxesShowAndHideParts) {
  struct Part {
    ChipWindow chip;
    const char* box;
    const char* inside;
    bool* field;
  };
  const std::array parts{Part{kChipWindows[0], "Check10", "Circuit", &m.fsaa.Check10},
                         Part{kChipWindows[1], "Check1", "Circuit", &m.fsn76489.Check1},
                         Part{kChipWindows[4], "Check8", "PIC2", &m.fsid.Check8}};
  for (const Part& part : parts) {
    SCOPED_TRACE(part.chip.form->name);
    QWidget* shown = Open(part.chip);
    auto* inside = Find<QWidget>(shown, part.inside);
    EXPECT_TRUE(inside->isVisible());
    const int wide = shown->width();
    Find<QAbstractButton>(shown, part.box)->click();
    Pull();
    EXPECT_FALSE(*part.field);
    EXPECT_FALSE(inside->isVisible());
    EXPECT_LT(shown->width(), wide);
    *part.field = true;  // by a script
    Pull();
    EXPECT_TRUE(inside->isVisible());
    EXPECT_EQ(shown->width(), wide);
  }
}

TEST_F(ChipWindowsTest, RegistersOfTheYm3812) {
  QWidget* shown = Open(kChipWindows[2]);
  auto* grid = Find<RegisterGrid>(shown, "Label1");
  const int reg = 0xBD;
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                    grid->visualItemRect(grid->item(reg / 16, reg % 16)).center());
  Pull();
  EXPECT_EQ(m.fym3812.cell, reg);
  EXPECT_EQ(Find<QLabel>(shown, "Label2")->text(), ToQt("Register 189: " + OplRegisterName(reg)));
  auto* value = Find<QLineEdit>(shown, "Text1");
  value->selectAll();
  QTest::keyClicks(value, "33");
  QTest::keyClick(value, Qt::Key_Return);
  EXPECT_EQ(m.card.opl.OPL_Reg[reg], 33);
  EXPECT_TRUE(Find<QAbstractButton>(shown, "Check23")->isChecked());  // bit 5: drums
  EXPECT_EQ(grid->Value(reg), "33");

  grid->setFocus();
  grid->setCurrentCell(0, 1);
  QTest::keyClick(grid, Qt::Key_Space);
  EXPECT_EQ(m.fym3812.cell, 1);
  m.card.opl.OPL_Reg[254] = 9;
  m.card.opl.OPL_Reg[255] = 8;
  Find<QAbstractButton>(shown, "Command1")->click();
  EXPECT_EQ(m.card.opl.OPL_Reg[reg], 0);
  EXPECT_EQ(m.card.opl.OPL_Reg[254], 0);
  EXPECT_EQ(m.card.opl.OPL_Reg[255], 8);
}

TEST_F(ChipWindowsTest, RegistersOfTheYm2413TurnHexadecimal) {
  QWidget* shown = Open(kChipWindows[3]);
  auto* grid = Find<RegisterGrid>(shown, "Label1");
  m.card.opll.OPLL_Reg[0x31] = 0x2F;
  for (const char* text : {"2F", "47"}) {
    grid->setCurrentCell(3, 1);
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_EQ(grid->Value(0x31), text);
  }
}

TEST_F(ChipWindowsTest, PokeAndPeaksOfTheSid) {
  QWidget* shown = Open(kChipWindows[4]);
  const auto type = [&](const char* box, const char* text) {
    Find<QLineEdit>(shown, box)->selectAll();
    QTest::keyClicks(Find<QLineEdit>(shown, box), text);
  };
  type("Text2", "54296");
  type("Text3", "15");
  QTest::keyClick(Find<QAbstractButton>(shown, "Command1"), Qt::Key_Space);
  EXPECT_EQ(m.card.sid.SID_Reg[24], 15);
  m.fsid.Label25 = m.fsid.Label26 = "70";
  QTest::keyClick(Find<QLabel>(shown, "Label25"), Qt::Key_Space);
  EXPECT_EQ(m.fsid.Label25, "0");
  EXPECT_EQ(Find<QLabel>(shown, "Label26")->text(), "0");
}

TEST_F(ChipWindowsTest, RecordIsRedWhileItRecords) {
  const QTemporaryDir folder;  // of the files that it writes
  const QString before = QDir::currentPath();
  QDir::setCurrent(folder.path());
  QWidget* shown = Open(kChipWindows[0]);
  auto* record = Find<QAbstractButton>(shown, "Command1");
  for (const QColor colour : {QColor(Qt::red), QColor(Qt::white)}) {
    record->click();
    EXPECT_EQ(record->palette().color(QPalette::Button), colour);
  }
  QDir::setCurrent(before);
}

// The tone's slider is 1024 less the period, which goes out low byte first.
TEST_F(ChipWindowsTest, SlidersPlayTheSn76489) {
  QWidget* shown = Open(kChipWindows[1]);
  Find<QAbstractButton>(shown, "Check3")->click();
  Find<QAbstractSlider>(shown, "HScroll31")->setValue(1024 - 254);
  Find<QAbstractSlider>(shown, "HScroll41")->setValue(3);
  EXPECT_EQ(Find<QLabel>(shown, "Label61")->text(), "440");  // 3579545 / 254 / 32
  EXPECT_EQ(Find<QLabel>(shown, "Label71")->text(), "3");
}

TEST(ChipCircuits, EveryPinOnceAndAllInsideThePlan) {
  struct Expected {
    CircuitPlan plan;
    std::set<int> pins;
  };
  const std::set<int> sn{1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 13, 14, 15, 16};  // 9 is not connected
  const std::set<int> saa{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18};
  for (const Expected& circuit : {Expected{SnCircuit(), sn}, {SaaCircuit(), saa}}) {
    const CircuitPlan& plan = circuit.plan;
    const QRect paper(QPoint(0, 0), plan.units);
    std::set<int> pins;
    for (const CircuitPlan::Pin& pin : plan.pins) {
      EXPECT_TRUE(pins.insert(pin.number.toInt()).second) << pin.number.toStdString();
      EXPECT_TRUE(paper.contains(pin.at) && paper.contains(pin.end));
    }
    EXPECT_EQ(pins, circuit.pins);
    for (const CircuitPlan::Block& block : plan.blocks)
      EXPECT_TRUE(paper.contains(block.place)) << block.text.toStdString();
    for (const CircuitPlan::Wire& wire : plan.wires)
      for (const QPoint point : wire.points) EXPECT_TRUE(paper.contains(point));
  }
}

TEST(ChipCircuits, DrawnSharpAtAnySize) {
  CircuitPicture picture(SnCircuit(), "Circuit");
  const auto inked = [&](QSize size) {
    picture.resize(size);
    const QImage image = picture.grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) != image.pixel(0, 0) ? 1 : 0;
    return count;
  };
  const int once = inked(SnCircuit().units);
  const int twice = inked(SnCircuit().units * 2);
  EXPECT_GT(once, 10000);
  EXPECT_NEAR(static_cast<double>(twice) / once, 4.0, 0.2);
  EXPECT_EQ(inked({0, 0}), 0);
}

}  // namespace
}  // namespace quoll
