// The tools window with its drawn keyboard, worked by the mouse.
#pragma once

#include <algorithm>

#include "desktop/kit/QtText.h"
#include "desktop/test/WindowTest.h"
#include "desktop/widgets/DrawnKeyboard.h"
#include "desktop/widgets/KeyCap.h"

namespace quoll {

struct DrawnKeysTest : WindowTest {
  static constexpr uint8_t kShift = 0x10, kCtrl = 0x11, kAlt = 0x12, kEnter = 0x0D;

  DrawnKeyboard* keyboard = nullptr;

  void OpenTools() {
    Select("xTools");
    QWidget* shown = Shown("TTools");
    ASSERT_NE(shown, nullptr);
    keyboard = Find<DrawnKeyboard>(shown, "keyboard");
  }
  // The first key of that host key code.
  KeyCap* Cap(uint8_t code) const {
    const auto found = std::ranges::find(kToolKeys, code, &ToolKey::code);
    EXPECT_NE(found, kToolKeys.end()) << int{code};
    return keyboard->Keys()[static_cast<size_t>(found - kToolKeys.begin())];
  }
  // Down and up again, each for long enough to be seen by the machine.
  void Tap(KeyCap* cap) {
    QTest::mousePress(cap, Qt::LeftButton);
    RunFrames(3);
    QTest::mouseRelease(cap, Qt::LeftButton);
    RunFrames(2);
  }
  void Tap(uint8_t code) { Tap(Cap(code)); }
  // By the right button: holds the key or lets it go.
  void Hold(uint8_t code) {
    QTest::mouseClick(Cap(code), Qt::RightButton);
    Settle();
    RunFrames(2);
  }
  // A key that gives the sign: alone, with Shift or with Alt.
  void TypeSign(const QString& sign) {
    for (const ToolKey& key : kToolKeys) {
      const QString legend = ToQt(key.legend);
      const bool letter = legend.size() == 1 && legend[0].isLetter();
      if (sign == (letter ? legend.toLower() : legend)) return Tap(key.code);
      const bool shift = sign == (letter ? legend : ToQt(key.shift));
      if (!shift && sign != ToQt(key.alt)) continue;
      const uint8_t held = shift ? kShift : kAlt;
      Hold(held);
      Tap(key.code);
      return Hold(held);
    }
    ADD_FAILURE() << "no key for " << sign.toStdString();
  }
  void Type(const QString& text) {
    for (const QChar c : text) c == '\n' ? Tap(kEnter) : TypeSign(c);
  }
};

}  // namespace quoll
