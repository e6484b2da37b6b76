#include <QKeyEvent>

#include "desktop/picture/KeyCodes.h"
#include "desktop/test/WindowTest.h"

namespace quoll {
namespace {

struct Keys : WindowTest {
  bool Down(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, uint32_t kernelCode = 0, bool repeat = false) {
    return Send(QEvent::KeyPress, key, modifiers, kernelCode, repeat);
  }
  bool Up(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, uint32_t kernelCode = 0, bool repeat = false) {
    return Send(QEvent::KeyRelease, key, modifiers, kernelCode, repeat);
  }
  // kernelCode 0: the host tells no position. True when the key was used up.
  bool Send(QEvent::Type type, Qt::Key key, Qt::KeyboardModifiers modifiers, uint32_t kernelCode,
            bool repeat) {
    QKeyEvent event(type, key, modifiers, kernelCode == 0 ? 0 : kernelCode + 8, 0, 0, QString(), repeat);
    QApplication::sendEvent(window->Picture(), &event);
    return event.isAccepted();
  }
  // Just this bit is set; row -1: none.
  void ExpectOnly(int row, int bit = 0) {
    for (int i = 0; i < 16; ++i)
      EXPECT_EQ(m.keyboard.KeyMatrix[static_cast<size_t>(i)], i == row ? 1 << bit : 0) << "row " << i;
  }
};

TEST_F(Keys, ByName) {
  QTest::keyPress(window->Picture(), Qt::Key_A);
  ExpectOnly(4, 6);
  QTest::keyRelease(window->Picture(), Qt::Key_A);
  ExpectOnly(-1);
  QTest::keyPress(window->Picture(), Qt::Key_Return);
  ExpectOnly(5, 4);
  QTest::keyRelease(window->Picture(), Qt::Key_Return);
  QTest::keyPress(window->Picture(), Qt::Key_5,
                  Qt::KeypadModifier);  // digits of the numeric pad are not wired
  ExpectOnly(-1);
  QTest::keyPress(window->Picture(), Qt::Key_Left, Qt::KeypadModifier);  // without Num Lock
  ExpectOnly(8, 6);
}

TEST_F(Keys, OemKeysByPosition) {
  // Kernel key numbers and what stands there on an American keyboard.
  const struct {
    uint32_t kernel;
    Qt::Key printed;
    int row, bit;
  } keys[] = {
      {12, Qt::Key_Minus, 1, 3},        {13, Qt::Key_Equal, 1, 5},     {26, Qt::Key_BracketLeft, 3, 3},
      {27, Qt::Key_BracketRight, 3, 5}, {39, Qt::Key_Semicolon, 5, 6}, {40, Qt::Key_Apostrophe, 5, 3},
      {43, Qt::Key_Backslash, 5, 5},    {51, Qt::Key_Comma, 7, 1},     {52, Qt::Key_Period, 7, 2},
      {53, Qt::Key_Slash, 7, 6},        {86, Qt::Key_Less, 0, 5},      {55, Qt::Key_Asterisk, 1, 4},
      {74, Qt::Key_Minus, 1, 0},        {78, Qt::Key_Plus, 4, 5},      {98, Qt::Key_Slash, 4, 3},
      {96, Qt::Key_Enter, 5, 4},        {110, Qt::Key_Insert, 8, 0},   {107, Qt::Key_End, 7, 3},
      {58, Qt::Key_CapsLock, 6, 5},     {63, Qt::Key_F5, 2, 3},        {68, Qt::Key_F10, 8, 4},
      {54, Qt::Key_Shift, 6, 3},        {97, Qt::Key_Control, 7, 4},   {103, Qt::Key_Up, 8, 1},
      {15, Qt::Key_Tab, -1, 0},         {1, Qt::Key_Escape, -1, 0},    {111, Qt::Key_Delete, -1, 0},
  };
  for (const auto& key : keys) {
    EXPECT_TRUE(Down(key.printed, {}, key.kernel)) << key.kernel;
    ExpectOnly(key.row, key.bit);
    Up(key.printed, {}, key.kernel);
    ExpectOnly(-1);
  }
}

TEST_F(Keys, LettersAsPrintedDigitsByPosition) {
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 21 + 8, Qt::Key_Y, false), 'Y');         // American
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 21 + 8, Qt::Key_Z, false), 'Z');         // Hungarian
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 2 + 8, Qt::Key_Ampersand, false), '1');  // French
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 2 + 8, Qt::Key_Exclam, false), '1');     // with Shift
  EXPECT_EQ(VirtualKey(ScanCodes::Windows, 0x135, Qt::Key_Slash, true), 0x6F);
  EXPECT_EQ(VirtualKey(ScanCodes::Windows, 0x35, Qt::Key_Minus, false), 0xBD);
  EXPECT_EQ(VirtualKey(ScanCodes::None, 77, Qt::Key_Udiaeresis, false), 0xBF);
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 0, Qt::Key_MediaPlay, false), kNoVirtualKey);
}

TEST_F(Keys, SignsOnLettersByPosition) {
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 47 + 8, Qt::Key_At, false), 'V');  // AltGr+V on a Hungarian keyboard
  EXPECT_EQ(VirtualKey(ScanCodes::Windows, 0x10, Qt::Key_Backslash, false), 'Q');
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 44 + 8, Qt::Key_Greater, false), 'Y');
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 47 + 8, Qt::Key_V, false), 'V');
}

TEST_F(Keys, TheTwoHomesOfZero) {
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 11 + 8, Qt::Key_0, false), '0');
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 11 + 8, Qt::Key_ParenRight, false), '0');
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 41 + 8, Qt::Key_QuoteLeft, false), 0xC0);
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 11 + 8, Qt::Key_Odiaeresis, false), 0xC0);
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 41 + 8, Qt::Key_0, false), '0');
  EXPECT_EQ(VirtualKey(ScanCodes::X11, 41 + 8, Qt::Key_section, false), '0');
}

TEST_F(Keys, RepeatsSetAgain) {
  Down(Qt::Key_Q);
  ExpectOnly(2, 6);
  KeyboardClear(m.keyboard);
  Up(Qt::Key_Q, {}, 0, true);
  Down(Qt::Key_Q, {}, 0, true);
  ExpectOnly(2, 6);
  Up(Qt::Key_Q, {}, 0, true);  // the half of a repeat is no release
  ExpectOnly(2, 6);
  Up(Qt::Key_Q);
  ExpectOnly(-1);
}

TEST_F(Keys, UnwiredOnesAreUsedUp) {
  EXPECT_TRUE(Down(Qt::Key_F11));
  EXPECT_TRUE(Down(Qt::Key_Tab));
  ExpectOnly(-1);
  EXPECT_EQ(QApplication::focusWidget(), window->Picture());
}

TEST_F(Keys, AltAloneIsTheHosts) {
  EXPECT_FALSE(Down(Qt::Key_Alt));  // before the host counts it among the modifiers
  EXPECT_FALSE(Down(Qt::Key_A, Qt::AltModifier));
  EXPECT_FALSE(Down(Qt::Key_F11, Qt::AltModifier));
  ExpectOnly(-1);
  EXPECT_FALSE(Down(Qt::Key_F1, Qt::AltModifier));
  EXPECT_EQ(m.run.ResetRequest, 0);
}

TEST_F(Keys, AltWithShiftOrCtrlIsTheMachines) {
  EXPECT_TRUE(Down(Qt::Key_Alt, Qt::ShiftModifier));
  ExpectOnly(7, 0);
  Up(Qt::Key_Alt);
  EXPECT_TRUE(Down(Qt::Key_A, Qt::AltModifier | Qt::ControlModifier));
  ExpectOnly(4, 6);
  Up(Qt::Key_A);
  EXPECT_TRUE(Down(Qt::Key_AltGr));
  ExpectOnly(7, 0);
}

TEST_F(Keys, ASignOfTheThirdLevelComesUpAsItWentDown) {
  Down(Qt::Key_Y, {}, 21);  // the place's letter is known from here on
  Up(Qt::Key_Y, {}, 21);
  ExpectOnly(-1);
  Down(Qt::Key_AltGr, {}, 100);
  Down(Qt::Key_yen, Qt::GroupSwitchModifier, 21);  // an American international keyboard
  EXPECT_EQ(m.keyboard.KeyMatrix[6], 0x40);
  Up(Qt::Key_AltGr, {}, 100);
  Up(Qt::Key_Y, {}, 21);
  ExpectOnly(-1);

  // The Hungarian zero and its neighbour at the other end, never pressed without AltGr before.
  Down(Qt::Key_Dead_Doubleacute, Qt::GroupSwitchModifier, 11);
  ExpectOnly(1, 6);
  Up(Qt::Key_Odiaeresis, {}, 11);
  ExpectOnly(-1);
  Down(Qt::Key_notsign, Qt::GroupSwitchModifier, 41);
  ExpectOnly(0, 3);
  Up(Qt::Key_0, {}, 41);
  ExpectOnly(-1);
}

TEST_F(Keys, FunctionKeysReset) {
  Down(Qt::Key_F1, {}, 59);
  EXPECT_EQ(m.run.ResetRequest, 1);
  m.run.ResetRequest = 0;
  Down(Qt::Key_F2, {}, 60);
  EXPECT_EQ(m.run.ResetRequest, 1);
  EXPECT_EQ(m.MemImage[kWarmStartMark], 0xFF);
}

TEST_F(Keys, FocusAndMouseClear) {
  Down(Qt::Key_A);
  window->Picture()->clearFocus();
  ExpectOnly(-1);
  m.keyboard.KeyMatrix[3] = 0x10;
  window->Picture()->setFocus();
  ExpectOnly(-1);
  Boot();
  Down(Qt::Key_A);
  QTest::mousePress(window->Picture(), Qt::LeftButton, {}, window->Picture()->rect().center());
  ExpectOnly(-1);
}

TEST_F(Keys, AShortTapIsHeldForAWholeFrame) {
  RunFrames(2);
  std::vector<int32_t> seen;
  host.atFrame = [&](Machine& running) {
    host.PullViews(running);  // as the pump after a drawn picture
    if (host.frames == 4) {
      Down(Qt::Key_A);
      Up(Qt::Key_A);
    }
    seen.push_back(KeyboardRow(running.keyboard, 4));
    if (host.frames == 8) running.run.CpuRunning = 0;
  };
  m.run.CpuRunning = 1;
  m.screen.xS6 = true;
  RunLoop(m);
  constexpr int32_t kFree = 255, kHeld = 255 - 0x40;
  EXPECT_EQ(seen, (std::vector<int32_t>{kFree, kHeld, kHeld, kFree, kFree, kFree}));
  Down(Qt::Key_A);  // nothing looks at the keys of a machine that stands still
  Up(Qt::Key_A);
  ExpectOnly(-1);
}

// A host program types far faster than frames go by: each key goes down alone, in its order, and every change
// lasts a whole frame.
TEST_F(Keys, FastTypingKeepsItsOrder) {
  RunFrames(2);
  const QString text = "THE QUICK BROWN FOX LLAMA";
  std::string seen;
  uint8_t lastRows[9] = {};
  host.atFrame = [&](Machine& running) {
    if (host.frames == 4) {
      for (const QChar c : text) {
        const auto key = static_cast<Qt::Key>(c.unicode());
        if (c == 'L') Down(Qt::Key_Shift);
        Down(key, c == 'L' ? Qt::ShiftModifier : Qt::NoModifier);
        Up(key);
        if (c == 'L') Up(Qt::Key_Shift);
      }
    }
    host.PullViews(running);
    // What a program sees that looks once a frame: which key is newly down.
    for (int code = 0; code < 256; ++code) {
      if (code == 0x10) continue;
      Keyboard one;
      if (!KeyboardPress(one, code, true)) continue;
      for (size_t row = 0; row < 9; ++row) {
        const uint8_t bit = one.KeyMatrix[row];
        if (bit == 0 || (running.keyboard.KeyMatrix[row] & bit) == 0 || (lastRows[row] & bit) != 0) continue;
        const bool shift = (running.keyboard.KeyMatrix[6] & 0x08) != 0;
        seen += static_cast<char>(code);
        EXPECT_EQ(shift, code == 'L') << seen;
      }
    }
    std::copy_n(running.keyboard.KeyMatrix.begin(), 9, lastRows);
    if (host.frames == 200) running.run.CpuRunning = 0;
  };
  m.run.CpuRunning = 1;
  m.screen.xS6 = true;
  RunLoop(m);
  EXPECT_EQ(seen, text.toStdString());
  ExpectOnly(-1);
}

// Frames go by unseen at that speed; the key is down for as many of them as at any other.
TEST_F(Keys, AShortTapStaysShortAtMaxSpeed) {
  RunFrames(2);
  int held = 0;
  host.atFrame = [&](Machine& running) {
    if (host.frames == 4) {
      Down(Qt::Key_A);
      Up(Qt::Key_A);
    }
    if (KeyboardRow(running.keyboard, 4) != 255) ++held;
    if (host.frames == 60) running.run.CpuRunning = 0;
  };
  m.run.CpuRunning = 1;
  m.screen.xS6 = true;
  RunLoop(m);
  EXPECT_EQ(held, 2);
}

TEST_F(Keys, ReachTheRunningMachine) {
  // The key goes down during a frame's wait; the next frame reads it at its port.
  RunFrames(2);
  int32_t row = -1;
  host.atFrame = [&](Machine& running) {
    if (host.frames == 4)
      QCoreApplication::postEvent(window->Picture(),
                                  new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier));
    if (host.frames == 5) {
      row = KeyboardRow(running.keyboard, 4);
      running.run.CpuRunning = 0;
    }
  };
  m.run.CpuRunning = 1;
  RunLoop(m);
  EXPECT_EQ(row, 255 - 0x40);
}

}  // namespace
}  // namespace quoll
