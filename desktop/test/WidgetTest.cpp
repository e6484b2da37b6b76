// The shared widgets by themselves.
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <limits>

#include "desktop/widgets/FileList.h"
#include "desktop/widgets/HexView.h"
#include "desktop/widgets/ImageView.h"
#include "desktop/widgets/RegisterGrid.h"
#include "desktop/widgets/Scope.h"

namespace quoll::test {
namespace {

constexpr QRgb kBlack = qRgb(0, 0, 0);
constexpr QRgb kLit = qRgb(0, 255, 0);

// The rows of a column that are lit, as a text.
std::string Column(const QImage& image, int x) {
  std::string rows;
  for (int y = 0; y < image.height(); ++y) rows += image.pixel(x, y) == kLit ? '#' : '.';
  return rows;
}

TEST(ScopeDrawing, ALineThroughThePoints) {
  const Trace trace{.y = {1, 1, 5, 2}, .step = 1};
  const QImage image = Scope::Draw(trace, {.units = {5, 8}}, 1);
  EXPECT_EQ(image.size(), QSize(5, 8));
  // Between two points the line passes through every height.
  EXPECT_EQ(Column(image, 0), ".#......");
  EXPECT_EQ(Column(image, 1), ".#####..");
  EXPECT_EQ(Column(image, 2), "..####..");
  EXPECT_EQ(Column(image, 3), "..#.....");
  EXPECT_EQ(Column(image, 4), "........");
}

TEST(ScopeDrawing, DotsStandAlone) {
  const Trace trace{.y = {1, 1, 5, 2}, .step = 1};
  const QImage image = Scope::Draw(trace, {.units = {5, 8}, .dots = true}, 1);
  EXPECT_EQ(Column(image, 0), ".#......");
  EXPECT_EQ(Column(image, 1), ".#......");
  EXPECT_EQ(Column(image, 2), ".....#..");
  EXPECT_EQ(Column(image, 3), "..#.....");
}

TEST(ScopeDrawing, PointsThatStandAnywhere) {
  const Trace trace{.x = {4, 1, 1}, .y = {1, 1, 4}};  // to the left, then straight down
  const QImage image = Scope::Draw(trace, {.units = {6, 6}}, 1);
  EXPECT_EQ(Column(image, 0), "......");
  EXPECT_EQ(Column(image, 1), ".####.");
  EXPECT_EQ(Column(image, 2), ".#....");
  EXPECT_EQ(Column(image, 4), ".#....");
  EXPECT_EQ(Column(image, 5), "......");
}

TEST(ScopeDrawing, ScaledScreensGetMorePointsNotLargerOnes) {
  const Trace trace{.y = {0.5F, 0.5F, 1.5F}, .step = 1};
  const QImage image = Scope::Draw(trace, {.units = {4, 4}, .zoom = 2}, 2);
  EXPECT_EQ(image.size(), QSize(16, 16));
  EXPECT_EQ(image.devicePixelRatio(), 2.0);
  // Half a unit down is two device pixels; a line is a unit thick.
  EXPECT_EQ(Column(image, 0).substr(0, 8), "..####..");
  EXPECT_EQ(Column(image, 11), "......####......");
  EXPECT_EQ(Column(image, 12), "................");
}

TEST(ScopeDrawing, WhatIsOutsideIsCutOff) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const Trace trace{.y = {-1e30F, 2, 1e30F, kInfinity, 3, -kInfinity, NAN}, .step = 1};
  const QImage image = Scope::Draw(trace, {.units = {5, 5}}, 1);
  EXPECT_EQ(Column(image, 0).substr(0, 2), "##");  // coming from above
  EXPECT_EQ(Column(image, 1).substr(2), "###");    // going below
  EXPECT_EQ(Column(image, 3), ".....");
  EXPECT_EQ(Column(image, 4), "...#.");  // begins anew
  EXPECT_TRUE(Scope::Draw({}, {.units = {5, 5}}, 1).allGray());
}

TEST(ScopeDrawing, ALongTraceInAFewColumns) {
  Trace trace{.y = std::vector<float>(2205, 30.0F), .step = 0.1F};
  trace.y[1000] = 10;  // x = 100
  const QImage image = Scope::Draw(trace, {}, 1);
  EXPECT_EQ(Column(image, 220).find('#'), 30U);
  EXPECT_EQ(Column(image, 100).find('#'), 10U);
}

// Counts how often a widget is painted.
struct Paints : QObject {
  explicit Paints(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
  int count = 0;
};

TEST(ScopeWidget, PaintsWhenTheTraceWasDrawnAnew) {
  Scope scope({.units = {20, 10}, .zoom = 2});
  scope.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&scope));
  EXPECT_EQ(scope.size(), QSize(40, 20));
  QApplication::processEvents();
  Paints paints(scope);
  Trace trace{.y = {5, 5, 5}, .step = 1, .drawings = 1};
  scope.Show(trace);
  QApplication::processEvents();
  EXPECT_EQ(paints.count, 1);
  EXPECT_EQ(scope.grab().toImage().pixel(2, 10), kLit);
  paints.count = 0;
  trace.y = {1, 1, 1};  // not drawn yet
  scope.Show(trace);
  QApplication::processEvents();
  EXPECT_EQ(paints.count, 0);
  ++trace.drawings;
  scope.Show(trace);
  QApplication::processEvents();
  EXPECT_EQ(paints.count, 1);
  EXPECT_EQ(scope.grab().toImage().pixel(2, 10), kBlack);
  EXPECT_EQ(scope.grab().toImage().pixel(2, 2), kLit);
}

TEST(Images, FewerPixelsThanTheirSize) {
  ImageView view({4, 4});
  view.Show({.width = 2, .height = 2, .pixels = {0x00FF00}, .drawings = 1});
  const QImage seen = view.grab().toImage();
  EXPECT_EQ(seen.pixel(0, 0), kLit);
  EXPECT_EQ(seen.pixel(1, 1), kLit);
  EXPECT_EQ(seen.pixel(2, 0), kBlack);
  EXPECT_EQ(seen.pixel(0, 2), kBlack);
  view.Show({.width = -1, .height = 3, .pixels = {}, .drawings = 2});
  EXPECT_EQ(view.grab().toImage().pixel(0, 0), kBlack);
}

TEST(Registers, CellsByMouseAndKeys) {
  RegisterGrid grid(20, 8, 2);
  grid.ShowHeaders();
  EXPECT_EQ(grid.rowCount(), 3);
  EXPECT_EQ(grid.verticalHeaderItem(2)->text(), "10");
  EXPECT_EQ(grid.horizontalHeaderItem(7)->text(), "07");
  grid.resize(grid.sizeHint());
  grid.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
  EXPECT_FALSE(grid.verticalScrollBar()->isVisible());
  EXPECT_FALSE(grid.horizontalScrollBar()->isVisible());
  QSignalSpy pressed(&grid, &RegisterGrid::Pressed);
  const auto click = [&](int row, int column) {
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualItemRect(grid.item(row, column)).center());
  };
  const auto taken = [&] {
    std::vector<int> cells;
    for (const auto& call : pressed) cells.push_back(call[0].toInt());
    pressed.clear();
    return cells;
  };
  click(1, 3);
  EXPECT_EQ(taken(), std::vector<int>{11});
  click(2, 3);  // the last cell
  click(2, 4);  // there is none
  EXPECT_EQ(taken(), std::vector<int>{19});
  grid.setCurrentCell(0, 1);
  grid.setFocus();
  QTest::keyClick(&grid, Qt::Key_Right);
  QTest::keyClick(&grid, Qt::Key_Down);
  QTest::keyClick(&grid, Qt::Key_Space);
  QTest::keyClick(&grid, Qt::Key_Return);
  EXPECT_EQ(taken(), (std::vector<int>{10, 10}));
  grid.SetValue(10, "5A");
  EXPECT_EQ(grid.Value(10), "5A");
  QTest::keyClick(&grid, Qt::Key_X);  // nothing is typed in
  EXPECT_EQ(grid.Value(10), "5A");
}

struct HexViews : testing::Test {
  HexView view{"Mem:  00 01", 8};
  QSignalSpy moved{&view, &HexView::Moved};

  void SetUp() override {
    view.SetRange(0, 0xFFFF);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    view.setFocus();
  }
  int Moved() {
    const int last = moved.isEmpty() ? -1 : moved.last()[0].toInt();
    moved.clear();
    return last;
  }
  void Key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
  void Wheel(int notches) {
    auto* text = view.findChild<QPlainTextEdit*>();
    const QPointF at(10, 10);
    QWheelEvent event(at, text->viewport()->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(text->viewport(), &event);
  }
};

TEST_F(HexViews, KeysMoveByRowsAndPages) {
  Key(Qt::Key_Down);
  EXPECT_EQ(Moved(), 16);
  Key(Qt::Key_PageDown);
  EXPECT_EQ(Moved(), 16 + 128);
  Key(Qt::Key_Up);
  EXPECT_EQ(Moved(), 128);
  Key(Qt::Key_PageUp);
  EXPECT_EQ(Moved(), 0);
  Key(Qt::Key_Up);  // it is at its start
  EXPECT_EQ(Moved(), -1);
  Key(Qt::Key_End);
  EXPECT_EQ(Moved(), 0xFFFF);
  Key(Qt::Key_Home);
  EXPECT_EQ(Moved(), 0);
  view.SetAddress(0x1234);  // by the machine: no call
  EXPECT_EQ(view.Address(), 0x1234);
  EXPECT_EQ(Moved(), -1);
}

TEST_F(HexViews, TheWheelMovesByRows) {
  view.SetAddress(0x1000);
  Wheel(-1);
  const int down = Moved();
  EXPECT_GT(down, 0x1000);
  EXPECT_EQ(down % 16, 0);
  Wheel(1);
  EXPECT_EQ(Moved(), 0x1000);
}

TEST_F(HexViews, RowsFitAndCanBeCopied) {
  QStringList rows;
  for (int i = 0; i < 8; ++i) rows << "FFF0: " + QString("AA ").repeated(16) + " " + QString(16, 'W');
  view.SetRows(rows.join('\n'));
  auto* text = view.findChild<QPlainTextEdit*>();
  EXPECT_EQ(text->horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(text->verticalScrollBar()->maximum(), 0);
  EXPECT_TRUE(text->isReadOnly());
  EXPECT_TRUE(text->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
  Key(Qt::Key_A);
  EXPECT_EQ(view.Rows(), rows.join('\n'));
}

TEST(FileLists, UnchangedEntriesStay) {
  FileList list;
  ListBox box;
  box.Fill({"a", "b", "c"});
  list.SetIcons([](const QString& entry) {
    QPixmap dot(4, 4);
    dot.fill(entry == "b" ? Qt::red : Qt::blue);
    return QIcon(dot);
  });
  list.Show(ListRef(box));
  const QListWidgetItem* first = list.item(0);
  EXPECT_EQ(list.item(1)->icon().pixmap(4, 4).toImage().pixelColor(0, 0), QColor(Qt::red));
  box.entries = {"a", "x"};
  box.selected = 1;
  list.Show(ListRef(box));
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(list.item(0), first);
  EXPECT_EQ(list.item(1)->text(), "x");
  EXPECT_EQ(list.item(1)->icon().pixmap(4, 4).toImage().pixelColor(0, 0), QColor(Qt::blue));
  EXPECT_EQ(list.currentRow(), 1);
  box.entries = {};
  list.Show(ListRef(box));
  EXPECT_EQ(list.count(), 0);
}

}  // namespace
}  // namespace quoll::test
