// The kit: what the user does to a widget reaches field and handler, what the record says reaches the widget.
#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QTest>
#include <QVBoxLayout>
#include <memory>
#include <stdexcept>

#include "desktop/QtHost.h"
#include "desktop/kit/FormWindow.h"
#include "desktop/test/SampleForm.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/HexView.h"
#include "desktop/widgets/ImageView.h"
#include "desktop/widgets/Lamp.h"
#include "desktop/widgets/Readout.h"
#include "desktop/widgets/RegisterGrid.h"
#include "desktop/widgets/ValueBar.h"

namespace quoll::test {
namespace {

using Events = std::vector<std::string>;

struct SampleWindow : FormWindow {
  explicit SampleWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow), column(new QVBoxLayout(this)) {}

  void ShowRecord() override { ++shows; }

  QVBoxLayout* column;
  int shows = 0;  // how often the record was looked at
};

struct Kit : testing::Test {
  QtHost host;
  std::unique_ptr<Machine> machine = std::make_unique<Machine>(host);
  Machine& m = *machine;
  FormKit kit{host, m, kSample};
  std::unique_ptr<SampleWindow> window;

  Kit() {
    sample = {};
    window = std::make_unique<SampleWindow>(kit);
  }

  // Puts the widget into the window and shows it.
  template <class Widget>
  Widget* Show(Widget* widget) {
    window->column->addWidget(widget);
    ShowForm(sample.window);
    Pull();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    return widget;
  }
  void Pull() {
    host.PullViews(m);
    QApplication::processEvents();
  }
  Events Taken() { return std::exchange(sample.events, {}); }
};

TEST_F(Kit, MenusStandInTheOrderOfTheTable) {
  QMenuBar* menus = Show(kit.Menus());
  ASSERT_EQ(menus->actions().size(), 2);
  EXPECT_EQ(menus->actions()[0]->text(), "&One");
  EXPECT_EQ(menus->actions()[1]->text(), "&Two");
  const QList<QAction*> one = menus->actions()[0]->menu()->actions();
  ASSERT_EQ(one.size(), 2);
  EXPECT_EQ(one[0]->text(), "Entry && more");  // no key of its own
  EXPECT_FALSE(one[0]->isCheckable());
  one[0]->trigger();
  EXPECT_EQ(Taken(), Events{"xEntry"});
  EXPECT_TRUE(one[1]->isCheckable());
  one[1]->trigger();
  EXPECT_TRUE(sample.xTick);
  EXPECT_TRUE(one[1]->isChecked());
  sample.xTick = false;
  Pull();
  EXPECT_FALSE(one[1]->isChecked());
  EXPECT_FALSE(menus->findChild<QAction*>("xNothing")->isEnabled());
}

TEST_F(Kit, Checks) {
  QCheckBox* check = Show(kit.Check("Check1"));
  EXPECT_EQ(check->text(), "Check");
  EXPECT_EQ(check->objectName(), "Check1");
  EXPECT_EQ(check->accessibleName(), "Check");
  check->click();
  EXPECT_TRUE(sample.Check1);
  check->click();
  EXPECT_FALSE(sample.Check1);
  EXPECT_EQ(Taken(), (Events{"Check1", "Check1"}));
  sample.Check1 = true;
  Pull();
  EXPECT_TRUE(check->isChecked());
  EXPECT_EQ(Taken(), Events{});  // showing is no action
}

TEST_F(Kit, ArraysByIndex) {
  QCheckBox* first = Show(kit.Check("Check2"));
  QCheckBox* last = Show(kit.Check("Check2", 2));
  EXPECT_EQ(first->objectName(), "Check2");
  EXPECT_EQ(last->objectName(), "Check22");
  EXPECT_EQ(first->text(), "a");
  EXPECT_EQ(last->text(), "c");
  last->click();
  EXPECT_EQ(sample.Check2, (std::array{false, false, true}));
  EXPECT_FALSE(first->isChecked());
  sample.Check2 = {true, true, false};
  Pull();
  EXPECT_TRUE(first->isChecked());
  EXPECT_FALSE(last->isChecked());
  EXPECT_EQ(Taken(), Events{"Check2 2"});
}

TEST_F(Kit, OptionsByMouseAndKeys) {
  std::array<QRadioButton*, 3> options{};
  for (int i = 0; i < 3; ++i) options[static_cast<size_t>(i)] = Show(kit.Option("Option1", i));
  const auto expectOn = [&](size_t on) {
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(sample.Option1[i], i == on) << i;
      EXPECT_EQ(options[i]->isChecked(), i == on) << i;
    }
  };
  QTest::mouseClick(options[2], Qt::LeftButton, {}, {8, options[2]->height() / 2});
  expectOn(2);
  QTest::mouseClick(options[2], Qt::LeftButton, {}, {8, options[2]->height() / 2});  // can't be given up
  expectOn(2);
  options[1]->setFocus();
  QTest::keyClick(options[1], Qt::Key_Space);
  expectOn(1);
  EXPECT_EQ(Taken(), (Events{"Option1 2", "Option1 2", "Option1 1"}));
  sample.Option1 = {true, false, false};
  Pull();
  expectOn(0);
}

TEST_F(Kit, TextsChangeAndEnterApart) {
  QLineEdit* box = Show(kit.Text("Text1"));
  QTest::keyClicks(box, "ab");
  EXPECT_EQ(Taken(), (Events{"change a", "change ab"}));
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_EQ(Taken(), Events{"enter ab"});
  sample.Text1 = "\xC3\xA1rv\xC3\xADz";
  Pull();
  EXPECT_EQ(box->text(), QString::fromUtf8("árvíz"));
  EXPECT_EQ(Taken(), Events{});
  QLineEdit* second = Show(kit.Text("Text2", 1));
  QTest::keyClicks(second, "7");
  QTest::keyClick(second, Qt::Key_Enter);
  EXPECT_EQ(sample.Text2[1], "7");
  EXPECT_EQ(sample.Text2[0], "");
  EXPECT_EQ(Taken(), Events{"Text2 1"});
}

TEST_F(Kit, TextsOfManyLinesGrowAtTheirEnd) {
  QPlainTextEdit* box = Show(kit.Memo("Text1"));
  for (int i = 0; i < 100; ++i) sample.Text1 += "line\n";
  Pull();
  QScrollBar* bar = box->verticalScrollBar();
  EXPECT_EQ(bar->value(), 0);
  bar->setValue(bar->maximum());
  sample.Text1 += "last";
  Pull();
  EXPECT_EQ(box->toPlainText().toStdString(), sample.Text1);
  EXPECT_EQ(bar->value(), bar->maximum());
  bar->setValue(3);
  sample.Text1 += "\nmore\nand more";
  Pull();
  EXPECT_EQ(bar->value(), 3);  // the user reads there
  sample.Text1 = "other";
  Pull();
  EXPECT_EQ(box->toPlainText(), "other");
  EXPECT_EQ(Taken(), Events{});
  QTest::keyClicks(box, "x");
  EXPECT_EQ(sample.Text1, "xother");
  EXPECT_EQ(Taken(), Events{"change xother"});
}

TEST_F(Kit, LabelsShowAndArePressed) {
  QLabel* plain = Show(kit.Label("Label1"));
  sample.Label1 = "<b>5</b>";
  Pull();
  EXPECT_EQ(plain->text(), "<b>5</b>");
  EXPECT_EQ(plain->textFormat(), Qt::PlainText);
  EXPECT_EQ(plain->focusPolicy(), Qt::NoFocus);
  QTest::mouseClick(plain, Qt::LeftButton);
  EXPECT_EQ(Taken(), Events{});

  PressLabel* key = Show(kit.Label("Label2", 1));
  EXPECT_EQ(key->objectName(), "Label21");
  EXPECT_EQ(key->accessibleName(), "L1");
  QTest::mousePress(key, Qt::LeftButton);
  EXPECT_EQ(Taken(), Events{"down 1"});
  QTest::mouseRelease(key, Qt::LeftButton);
  EXPECT_EQ(Taken(), (Events{"up 1", "click 1"}));
  QTest::mousePress(key, Qt::LeftButton);
  QTest::mouseRelease(key, Qt::LeftButton, {}, {-50, -50});  // let go beside it
  EXPECT_EQ(Taken(), (Events{"down 1", "up 1"}));
  key->setFocus();
  for (const Qt::Key by : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    QTest::keyClick(key, by);
    EXPECT_EQ(Taken(), (Events{"down 1", "up 1", "click 1"}));
  }
  QTest::keyPress(key, Qt::Key_Space);
  key->clearFocus();  // it comes up elsewhere
  EXPECT_EQ(Taken(), (Events{"down 1", "up 1"}));
}

TEST_F(Kit, LampsAndReadouts) {
  Lamp* lamp = Show(kit.Lamp("Lamp1", 1));
  EXPECT_EQ(lamp->text(), "GREEN");
  const QImage dark = lamp->grab().toImage();
  sample.Lamp1[1] = true;
  Pull();
  EXPECT_TRUE(lamp->IsOn());
  EXPECT_NE(lamp->grab().toImage(), dark);
  EXPECT_EQ(lamp->accessibleDescription(), "on");

  Readout* readout = Show(kit.Readout("Label2", 0, "PORT 5"));
  sample.Label2[0] = "1234";
  Pull();
  EXPECT_EQ(readout->Name()->text(), "L0");
  EXPECT_EQ(readout->Value()->text(), "1234");
  EXPECT_EQ(readout->Value()->objectName(), "Label2");
  EXPECT_EQ(readout->Value()->accessibleName(), "L0");
}

TEST_F(Kit, Buttons) {
  QPushButton* button = Show(kit.Button("Command1"));
  EXPECT_EQ(button->text(), "Do && be");
  EXPECT_EQ(button->accessibleName(), "Do & be");
  button->click();
  button->setFocus();
  QTest::keyClick(button, Qt::Key_Space);
  QTest::keyClick(button, Qt::Key_Return);
  EXPECT_EQ(Taken(), (Events{"Command1", "Command1", "Command1"}));
  QPushButton* second = Show(kit.Button("Command2", 1));
  EXPECT_EQ(second->text(), "s");
  QTest::mousePress(second, Qt::LeftButton);
  EXPECT_EQ(Taken(), Events{"Command2 down 1"});
  QTest::mouseRelease(second, Qt::LeftButton);
  EXPECT_EQ(Taken(), (Events{"Command2 up 1", "Command2 1"}));
}

TEST_F(Kit, SlidersHaveTheRecordsRange) {
  QSlider* slider = Show(kit.Slider("HScroll1"));
  EXPECT_EQ(slider->minimum(), 0);
  EXPECT_EQ(slider->maximum(), 10);
  EXPECT_EQ(slider->value(), 3);
  EXPECT_EQ(slider->orientation(), Qt::Horizontal);
  QTest::keyClick(slider, Qt::Key_Right);
  EXPECT_EQ(sample.HScroll1[0].value, 4);
  QTest::keyClick(slider, Qt::Key_End);
  EXPECT_EQ(sample.HScroll1[0].value, 10);
  EXPECT_EQ(Taken(), (Events{"HScroll1 0", "HScroll1 0"}));
  sample.HScroll1[0] = {200, 100, 300};
  Pull();
  EXPECT_EQ(slider->minimum(), 100);
  EXPECT_EQ(slider->maximum(), 300);
  EXPECT_EQ(slider->value(), 200);
  EXPECT_EQ(Taken(), Events{});

  // From 50 down to -50: the first value stands on the left.
  QSlider* down = Show(kit.Slider("HScroll1", 1));
  EXPECT_EQ(down->minimum(), -50);
  EXPECT_EQ(down->maximum(), 50);
  EXPECT_TRUE(down->invertedAppearance());
  QTest::keyClick(down, Qt::Key_Right);
  EXPECT_EQ(sample.HScroll1[1].value, -1);
  EXPECT_EQ(Show(kit.Fader("HScroll1"))->orientation(), Qt::Vertical);
  QScrollBar* bar = Show(kit.ScrollBar("VScroll1", Qt::Vertical));
  EXPECT_EQ(bar->maximum(), 0xFFFF);
}

TEST_F(Kit, BarsAndLitLabels) {
  ValueBar* bar = Show(kit.Bar("Shape1"));
  EXPECT_FLOAT_EQ(bar->Share(), 0.25F);  // 5 of 20
  sample.Shape1 = {204, 0, 255};
  Pull();
  EXPECT_FLOAT_EQ(bar->Share(), 0.8F);
  PressLabel* lit = Show(kit.Label("Lit1"));
  EXPECT_EQ(lit->text(), "INT ON");
  sample.look.fore = kRed;
  Pull();
  EXPECT_EQ(lit->palette().color(QPalette::WindowText), QColor(255, 0, 0));
}

TEST_F(Kit, Lists) {
  FileList* list = Show(kit.List("List1"));
  sample.List1.Fill({"one", "two", "three"});
  Pull();
  ASSERT_EQ(list->count(), 3);
  EXPECT_EQ(list->currentRow(), -1);
  const auto at = [list](int row) { return list->visualItemRect(list->item(row)).center(); };
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at(1));
  EXPECT_EQ(sample.List1.selected, 1);
  EXPECT_EQ(Taken(), Events{"click two"});
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at(1));  // again is a click, too
  EXPECT_EQ(Taken(), Events{"click two"});
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Down);
  QTest::keyClick(list, Qt::Key_Down);  // there is no other
  EXPECT_EQ(Taken(), Events{"click three"});
  QTest::keyClick(list, Qt::Key_Home);
  EXPECT_EQ(Taken(), Events{"click one"});
  QTest::keyClick(list, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(Taken(), (Events{"click one", "double one"}));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at(2));
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at(2));
  QApplication::processEvents();
  EXPECT_EQ(Taken(), (Events{"click three", "click three", "double three"}));
  sample.List1.selected = 0;
  Pull();
  EXPECT_EQ(list->currentRow(), 0);
  sample.List1.Fill({"new"});
  Pull();
  EXPECT_EQ(list->count(), 1);
  EXPECT_EQ(list->item(0)->text(), "new");
  EXPECT_EQ(list->currentRow(), -1);
  sample.List1.selected = 17;  // a script may leave it anywhere
  Pull();
  EXPECT_EQ(list->currentRow(), -1);
  EXPECT_EQ(Taken(), Events{});
}

TEST_F(Kit, ComingToAListByTabChoosesNothing) {
  QLineEdit* before = Show(kit.Text("Text1"));
  FileList* list = Show(kit.List("List1"));
  QLineEdit* after = Show(kit.Text("Text2"));
  sample.List1.Fill({"one", "two"});
  Pull();
  before->setFocus();
  QTest::keyClick(before, Qt::Key_Tab);
  ASSERT_TRUE(list->hasFocus());
  EXPECT_EQ(list->currentRow(), -1);
  QTest::keyClick(list, Qt::Key_Return);  // nothing to open
  QTest::keyClick(list, Qt::Key_Tab);
  QApplication::processEvents();
  EXPECT_TRUE(after->hasFocus());
  EXPECT_EQ(sample.List1.selected, -1);
  EXPECT_EQ(Taken(), Events{});
  QTest::keyClick(after, Qt::Key_Backtab);
  QTest::keyClick(list, Qt::Key_Down);
  EXPECT_EQ(Taken(), Events{"click one"});
}

TEST_F(Kit, Combos) {
  QComboBox* box = Show(kit.Combo("Combo1"));
  sample.Combo1.Fill({"red", "green", "blue"});
  Pull();
  EXPECT_EQ(box->count(), 3);
  EXPECT_EQ(box->currentIndex(), -1);
  box->setFocus();
  QTest::keyClick(box, Qt::Key_Down);
  QTest::keyClick(box, Qt::Key_Down);
  EXPECT_EQ(sample.Combo1.selected, 1);
  EXPECT_EQ(Taken(), (Events{"combo red", "combo green"}));
  sample.Combo1.Fill({"a", "b"});
  sample.Combo1.selected = 1;
  Pull();
  EXPECT_EQ(box->currentText(), "b");
  EXPECT_EQ(box->count(), 2);
  EXPECT_EQ(Taken(), Events{});
}

TEST_F(Kit, ScopesAndImages) {
  Scope* scope = Show(kit.Scope("Pic1", 1, {.units = {10, 8}}));
  sample.Pic1[1] = {.y = {3, 3, 3}, .step = 1, .colour = kCyan, .drawings = 1};
  Pull();
  EXPECT_EQ(scope->grab().toImage().pixel(1, 3), qRgb(0, 255, 255));
  EXPECT_EQ(scope->grab().toImage().pixel(1, 4), qRgb(0, 0, 0));
  ImageView* image = Show(kit.Image("Pic2", {4, 2}));
  sample.Pic2 = {.width = 2, .height = 1, .pixels = {0x0000FF, 0xFF0000}, .drawings = 1};
  Pull();
  const QImage seen = image->grab().toImage();
  EXPECT_EQ(seen.pixel(1, 1), qRgb(255, 0, 0));
  EXPECT_EQ(seen.pixel(2, 0), qRgb(0, 0, 255));
}

TEST_F(Kit, RegistersShowAnArrayOfLabels) {
  RegisterGrid* grid = Show(kit.Registers("Cell1", 8));
  sample.Cell1[9] = "3F";
  sample.cellLooks[9].back = kRed;
  Pull();
  EXPECT_EQ(grid->rowCount(), 3);
  EXPECT_EQ(grid->Value(9), "3F");
  EXPECT_EQ(grid->item(1, 1)->text(), "3F");
  EXPECT_EQ(grid->item(1, 1)->background().color(), QColor(255, 0, 0));
  EXPECT_EQ(grid->item(0, 1)->toolTip(), "B");
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualItemRect(grid->item(1, 1)).center());
  EXPECT_EQ(Taken(), Events{"Cell1 9"});
}

TEST_F(Kit, AViewIsScrolledByItsBar) {
  HexView* view = Show(kit.Hex("View1", "VScroll1", "Mem:", 8));
  sample.View1 = "0000: 00\n0010: 01";
  Pull();
  EXPECT_EQ(view->Rows(), "0000: 00\n0010: 01");
  QTest::keyClick(view->focusProxy(), Qt::Key_PageDown);
  EXPECT_EQ(sample.VScroll1.value, 128);
  EXPECT_EQ(Taken(), Events{"VScroll1 128"});
  sample.VScroll1.value = 0x4000;
  Pull();
  EXPECT_EQ(view->Address(), 0x4000);
  EXPECT_EQ(Taken(), Events{});
}

TEST_F(Kit, LooksOfAnyControl) {
  QCheckBox* check = Show(kit.Check("Check1"));
  QLineEdit* box = Show(kit.Text("Text1"));
  PressLabel* label = Show(kit.Label("Label2", 1));
  PressLabel* other = Show(kit.Label("Label2", 0));
  auto* beside = Show(new QWidget);
  kit.binder.BindLook(kit.binder.Ref("Text1"), beside);
  const QColor own = label->palette().color(QPalette::WindowText);
  sample.look = {.visible = false, .enabled = false};
  sample.looks[1] = {.fore = kGreen, .back = kRed};
  Pull();
  for (QWidget* widget : {static_cast<QWidget*>(check), static_cast<QWidget*>(box), beside}) {
    EXPECT_TRUE(widget->isHidden());
    EXPECT_FALSE(widget->isEnabled());
  }
  sample.look = {};
  Pull();
  EXPECT_TRUE(check->isVisible());
  EXPECT_TRUE(box->isEnabled());
  EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(0, 255, 0));
  EXPECT_EQ(label->grab().toImage().pixelColor(0, 0), QColor(255, 0, 0));
  EXPECT_EQ(other->palette().color(QPalette::WindowText), own);
  sample.looks[1] = {};
  Pull();
  EXPECT_EQ(label->palette().color(QPalette::WindowText), own);
  EXPECT_NE(label->grab().toImage().pixelColor(0, 0), QColor(255, 0, 0));
}

TEST_F(Kit, AButtonsColour) {
  QPushButton* button = Show(kit.Button("Command1"));
  button->setText({});
  Look look{.back = kRed};
  Control red = *FindControl(kSample, "Command1");
  red.look = SampleLook<&Sample::look>;
  sample.look = look;
  kit.binder.BindLook({&kSample, &red, 0}, button);
  Pull();
  const QColor middle = button->grab().toImage().pixelColor(button->rect().center());
  EXPECT_GT(middle.red(), middle.green() + 100);  // the style makes it somewhat milder
  EXPECT_GT(middle.red(), middle.blue() + 100);
}

TEST_F(Kit, MistakesOfTheProgramAreTold) {
  EXPECT_THROW(kit.Check("Check9"), std::logic_error);
  EXPECT_THROW(kit.Check("Check2", 3), std::logic_error);
  EXPECT_THROW(kit.Check("Check2", -1), std::logic_error);
  EXPECT_THROW(kit.Check("Check1", 1), std::logic_error);
  EXPECT_THROW(kit.Check("Text1"), std::logic_error);
  EXPECT_THROW(kit.Slider("Check1"), std::logic_error);
  EXPECT_THROW(kit.Label("Check1"), std::logic_error);
}

TEST_F(Kit, AnErrorInAHandlerIsCarriedPastQt) {
  Control fatal = *FindControl(kSample, "Command1");
  fatal.click = +[](Machine&) { throw ProgramEnd{}; };
  auto* button = Show(new QPushButton);
  kit.binder.Bind({&kSample, &fatal, 0}, button);
  button->click();
  EXPECT_THROW(host.Pump(m), ProgramEnd);
}

TEST_F(Kit, AWindowComesAndGoesByItsRecord) {
  Show(kit.Check("Check1"));
  EXPECT_EQ(window->objectName(), "Sample");
  EXPECT_EQ(window->windowTitle(), "A sample");
  EXPECT_FALSE(sample.window.raise);
  sample.window.caption = "Another";
  Pull();
  EXPECT_EQ(window->windowTitle(), "Another");
  sample.window.caption.clear();
  Pull();
  EXPECT_EQ(window->windowTitle(), "A sample");
  window->move(40, 50);
  sample.window.visible = false;
  Pull();
  EXPECT_FALSE(window->isVisible());
  const int shows = window->shows, refreshes = sample.refreshes;
  EXPECT_GT(refreshes, 0);
  Pull();
  EXPECT_EQ(window->shows, shows);  // hidden: not looked at
  EXPECT_EQ(sample.refreshes, refreshes);
  window->move(0, 0);
  ShowForm(sample.window);
  Pull();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->pos(), QPoint(40, 50));  // where it was
  EXPECT_GT(window->shows, shows);
  window->close();
  EXPECT_FALSE(sample.window.visible);
  ShowForm(sample.window);
  Pull();
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_FALSE(sample.window.visible);
}

TEST_F(Kit, APlaceOnNoScreenIsNone) {
  QWidget shown;
  ShowAt(shown, WindowPlace{{100000, 100000}, {200, 100}});
  EXPECT_TRUE(shown.isVisible());
  EXPECT_LT(shown.x(), 10000);
  shown.hide();
  ShowAt(shown, WindowPlace{{30, 40}, {200, 100}});
  EXPECT_EQ(shown.pos(), QPoint(30, 40));
  EXPECT_EQ(shown.size(), QSize(200, 100));
  const WindowPlace place = PlaceOf(shown);
  EXPECT_EQ(place.corner, QPoint(30, 40));
  EXPECT_FALSE(place.maximised);
}

TEST_F(Kit, TabGoesAsTheWindowIsSeen) {
  auto* grid = new QGridLayout;
  QLineEdit* last = kit.Text("Text2", 1);
  QLineEdit* third = kit.Text("Text2", 0);
  QLineEdit* second = kit.Text("Text1");
  QCheckBox* first = kit.Check("Check1");
  grid->addWidget(third, 1, 0);
  grid->addWidget(second, 0, 1);
  grid->addWidget(first, 0, 0);
  window->column->addLayout(grid);
  Show(last);
  first->setFocus();
  for (QWidget* widget : {static_cast<QWidget*>(second), static_cast<QWidget*>(third),
                          static_cast<QWidget*>(last), static_cast<QWidget*>(first)}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), widget);
  }
}

}  // namespace
}  // namespace quoll::test
