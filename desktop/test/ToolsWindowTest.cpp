// The drawn keyboard by real mouse and key events, and the rest of the tools window.
#include <QFontMetrics>
#include <QLineEdit>
#include <QRadioButton>

#include "desktop/test/DrawnKeys.h"

namespace quoll {
namespace {

// What the machine's keyboard gives: code of the host key, character alone, with Shift, with Alt; 0 for none.
struct Given {
  uint8_t code, alone, shift = 0, alt = 0;
};
constexpr Given kGiven[] = {
    {'0', '0', '&'},
    {'1', '1', '\'', '~'},
    {'2', '2', '"'},
    {'3', '3', '+', '^'},
    {'4', '4', '!'},
    {'5', '5', '%'},
    {'6', '6', '/'},
    {'7', '7', '=', '`'},
    {'8', '8', '('},
    {'9', '9', ')'},
    {0xBC, ',', '?', ';'},
    {0xBE, '.', ':'},
    {0xBD, '-', '_', '*'},
    {0x74, '<', '['},
    {0x75, '>', ']'},
    {0x76, ';', '$'},
    {0x77, '^', '@'},
    {0x78, '#', '{'},
    {0x79, '&', '}'},
    {' ', ' ', ' '},
    {0x25, 28, 28},
    {0x27, 29, 29},
    {0x26, 30, 0xA1},
    {0x28, 31, 31},
    {0x2D, 0xA0, 0xA0},
    {0x6A, '*'},
    {0x6B, '+'},
    {0x6D, '-'},
    {0x6F, '/'},
    {0x0D, 13},
    {0x08, 8, 127},
    {0xDE, 0x90, 0x80},
    {0xBA, 0x91, 0x81, '$'},
    {0xE2, 0x92, 0x82, '<'},
    {0xBB, 0x93, 0x83},
    {0xC0, 0x94, 0x84},
    {0xDB, 0x95, 0x85},
    {0xDD, 0x96, 0x86},
    {0xBF, 0x97, 0x87},
    {0xDC, 0x98, 0x88},
    {'A', 'a', 'A'},
    {'B', 'b', 'B', '{'},
    {'C', 'c', 'C', '&'},
    {'D', 'd', 'D'},
    {'E', 'e', 'E'},
    {'F', 'f', 'F', '['},
    {'G', 'g', 'G', ']'},
    {'H', 'h', 'H'},
    {'I', 'i', 'I'},
    {'J', 'j', 'J'},
    {'K', 'k', 'K'},
    {'L', 'l', 'L'},
    {'M', 'm', 'M'},
    {'N', 'n', 'N', '}'},
    {'O', 'o', 'O'},
    {'P', 'p', 'P'},
    {'Q', 'q', 'Q', '\\'},
    {'R', 'r', 'R'},
    {'S', 's', 'S'},
    {'T', 't', 'T'},
    {'U', 'u', 'U'},
    {'V', 'v', 'V', '@'},
    {'W', 'w', 'W', '|'},
    {'X', 'x', 'X', '#'},
    {'Y', 'y', 'Y', '>'},
    {'Z', 'z', 'Z'},
};
constexpr uint8_t kLock = 0x14, kEscape = 0x23;

struct ToolsWindowTest : DrawnKeysTest {
  // A program that does nothing: what the keys give stays in the system's queue.
  void Idle() {
    constexpr size_t kProgram = 0x5000;
    Boot();
    m.MemImage[kProgram] = 0xFB;  // EI: JR to itself
    m.MemImage[kProgram + 1] = 0x18;
    m.MemImage[kProgram + 2] = 0xFE;
    m.z80.PC = kProgram;
    m.z80.Halted = 0;
    RunFrames(2);
    OpenTools();
  }
  std::vector<int> Queued() {
    constexpr size_t kHead = 0x0B1D, kTail = 0x0B1E, kQueue = 0x1200;
    std::vector<int> codes;
    while (m.MemImage[kHead] != m.MemImage[kTail]) {
      codes.push_back(m.MemImage[kQueue + m.MemImage[kHead]]);
      m.MemImage[kHead] = (m.MemImage[kHead] + 1) & 15;
    }
    return codes;
  }
  void ExpectGives(uint8_t code, int character) {
    Tap(code);
    EXPECT_EQ(Queued(), std::vector<int>{character}) << "key " << int{code};
    EXPECT_EQ(m.tools.Text1, std::to_string(code));
  }
};

TEST_F(ToolsWindowTest, EachKeyGivesItsCharacter) {
  Idle();
  ASSERT_EQ(std::size(kGiven) + 6, kToolKeys.size()) << "all but Lock, Ctrl, Alt, Escape and both Shifts";
  for (const Given& key : kGiven) ExpectGives(key.code, key.alone);
  Hold(kShift);
  for (const Given& key : kGiven) {
    if (key.shift != 0) ExpectGives(key.code, key.shift);
  }
  Hold(kShift);
  Hold(kAlt);
  for (const Given& key : kGiven) {
    if (key.alt != 0) ExpectGives(key.code, key.alt);
  }
  Hold(kAlt);
  Hold(kCtrl);
  ExpectGives('Z', 26);
  Hold(kCtrl);
  Tap(kLock);
  ExpectGives('A', 'A');
  Tap(kLock);
  ExpectGives('A', 'a');
  m.MemImage[0x0B08] = 0;
  Tap(kEscape);
  EXPECT_EQ(m.MemImage[0x0B08], 27);
}

// The legends are what the keys give, in the machine's own code.
TEST_F(ToolsWindowTest, LegendsAreTheCharacters) {
  const auto code = [](std::string_view legend) {
    constexpr std::array<std::string_view, 9> kAccented{"Á", "É", "Í", "Ó", "Ö", "Ő", "Ú", "Ü", "Ű"};
    const auto found = std::ranges::find(kAccented, legend);
    if (found != kAccented.end()) return static_cast<int>(0x80 + (found - kAccented.begin()));
    return legend.size() == 1 ? int{static_cast<uint8_t>(legend[0])} : 0;
  };
  for (const Given& given : kGiven) {
    const ToolKey& key = *std::ranges::find(kToolKeys, given.code, &ToolKey::code);
    const bool control = key.legend.size() > 1 && code(key.legend) == 0;
    if (control) continue;
    const bool letter = given.shift == code(key.legend) && given.alone != given.shift;
    EXPECT_EQ(code(key.legend), letter ? given.shift : given.alone) << key.legend;
    if (!letter && key.legend != " ") {
      EXPECT_EQ(code(key.shift), given.shift) << key.legend;
    }
    EXPECT_EQ(code(key.alt), given.alt) << key.legend;
  }
}

TEST_F(ToolsWindowTest, BothShiftsAreOneKey) {
  Idle();
  int shifts = 0;
  for (size_t i = 0; i < kToolKeys.size(); ++i) {
    if (kToolKeys[i].code != kShift) continue;
    ++shifts;
    QTest::mouseClick(keyboard->Keys()[i], Qt::RightButton);
    Settle();
    for (size_t other = 0; other < kToolKeys.size(); ++other)
      EXPECT_EQ(keyboard->Keys()[other]->IsHeld(), kToolKeys[other].code == kShift);
    ExpectGives('A', 'A');
    Tap(keyboard->Keys()[i]);  // a plain click lets it go
    EXPECT_FALSE(keyboard->Keys()[i]->IsHeld());
    ExpectGives('A', 'a');
  }
  EXPECT_EQ(shifts, 2);
}

// Lit keys look another way, and so do pressed ones.
TEST_F(ToolsWindowTest, AKeyShowsWhatItIsIn) {
  OpenTools();
  KeyCap* cap = Cap('K');
  const auto look = [&] { return cap->grab().toImage(); };
  const QImage up = look();
  QTest::mousePress(cap, Qt::LeftButton);
  const QImage down = look();
  EXPECT_NE(down, up);
  EXPECT_NE(m.keyboard, Keyboard{});
  QTest::mouseMove(keyboard->window(), QPoint(1, 1));
  QTest::mouseRelease(cap, Qt::LeftButton, {}, QPoint(-50, -50));  // beside it
  EXPECT_EQ(m.keyboard, Keyboard{});
  EXPECT_EQ(look(), up);
  QTest::mouseClick(cap, Qt::RightButton);
  Settle();
  EXPECT_NE(look(), up);
  EXPECT_NE(look(), down);
  m.tools.Held['K'] = false;  // by a script
  Settle();
  EXPECT_EQ(look(), up);
}

TEST_F(ToolsWindowTest, NoKeyStaysDownWhenTheWindowGoes) {
  OpenTools();
  QTest::mousePress(Cap('K'), Qt::LeftButton);
  keyboard->window()->close();
  Settle();
  EXPECT_EQ(m.keyboard, Keyboard{});
}

// Tab comes to the keyboard once; the arrow keys walk over all keys of it, Space presses, the menu key holds.
TEST_F(ToolsWindowTest, ByTheKeyboardAlone) {
  OpenTools();
  const auto focused = [&] {
    const auto found = std::ranges::find_if(keyboard->Keys(), [](KeyCap* cap) { return cap->hasFocus(); });
    return found == keyboard->Keys().end()
               ? 0
               : kToolKeys[static_cast<size_t>(found - keyboard->Keys().begin())].code;
  };
  const auto press = [](int key) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key)); };
  keyboard->Keys().front()->setFocus();
  ASSERT_EQ(focused(), '0');
  const std::pair<int, uint8_t> steps[] = {
      {Qt::Key_Left, '0'},  {Qt::Key_Up, '0'},     {Qt::Key_Right, '1'},   {Qt::Key_Down, 'Q'},
      {Qt::Key_Right, 'W'}, {Qt::Key_Down, 'S'},   {Qt::Key_Up, 'W'},      {Qt::Key_Left, 'Q'},
      {Qt::Key_Left, 0x2D}, {Qt::Key_Down, kLock}, {Qt::Key_Down, kShift}, {Qt::Key_Down, kCtrl},
  };
  for (const auto& [key, code] : steps) {
    press(key);
    EXPECT_EQ(focused(), code);
  }
  QTest::keyPress(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_NE(m.keyboard, Keyboard{});
  QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_EQ(m.keyboard, Keyboard{});
  press(Qt::Key_Menu);
  EXPECT_NE(m.keyboard, Keyboard{});
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(m.keyboard, Keyboard{});
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), 0);
}

TEST_F(ToolsWindowTest, ArrowKeysLeadToEveryKey) {
  OpenTools();
  std::vector<QObject*> met{keyboard->Keys().front()};
  for (size_t i = 0; i < met.size(); ++i) {
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
      auto* from = qobject_cast<KeyCap*>(met[i]);
      from->setFocus();
      QTest::keyClick(from, key);
      QObject* to = QApplication::focusWidget();
      if (std::ranges::find(met, to) == met.end()) met.push_back(to);
    }
  }
  EXPECT_EQ(met.size(), kToolKeys.size());
}

// Every legend has room on its key, in small windows and large ones.
TEST_F(ToolsWindowTest, TheDrawingKeepsItsProportions) {
  OpenTools();
  QWidget* shown = keyboard->window();
  for (const QSize size : {QSize(1, 1), QSize(1400, 500), QSize(700, 900)}) {
    shown->resize(size);
    Settle();
    const QRect plain = Cap('K')->geometry();
    EXPECT_NEAR(plain.width(), plain.height(), 1);
    EXPECT_GE(plain.width(), 23);
    for (const KeyCap* cap : keyboard->Keys()) {
      EXPECT_TRUE(keyboard->rect().contains(cap->geometry())) << cap->accessibleName().toStdString();
      EXPECT_FALSE(cap->accessibleName().isEmpty());
    }
  }
}

TEST_F(ToolsWindowTest, CodeBoxAndRows) {
  OpenTools();
  QWidget* shown = keyboard->window();
  window->Picture()->setFocus();
  QTest::keyClick(window->Picture(), Qt::Key_Q);
  Settle();
  EXPECT_EQ(Find<QLineEdit>(shown, "Text1")->text(), "81");
  const auto choose = [&](const char* option) {
    auto* button = Find<QRadioButton>(shown, option);
    button->click();
    Settle();
    EXPECT_EQ(button->palette().color(QPalette::WindowText), QColor(0, 255, 0)) << option;
    return Find<QLineEdit>(shown, "Text2")->text();
  };
  EXPECT_EQ(choose("U32"), "128");  // 2 in bits 6 and 7
  EXPECT_EQ(choose("U03"), "152");  // and 3 in bits 3 and 4
  EXPECT_EQ(choose("U11"), "156");  // and 1 in bit 2
  EXPECT_EQ(choose("U21"), "188");  // and 1 in bit 5
  EXPECT_EQ(choose("U3"), "60");    // 0 in bits 6 and 7
  EXPECT_EQ(Find<QRadioButton>(shown, "U32")->palette().color(QPalette::WindowText), QColor(0, 0, 0));
}

}  // namespace
}  // namespace quoll
