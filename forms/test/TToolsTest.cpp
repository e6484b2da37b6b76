// The tools window: the drawn keyboard and the four rows.
#include <gtest/gtest.h>

#include <memory>
#include <set>

#include "display/Keyboard.h"
#include "forms/Forms.h"
#include "forms/TTools.h"
#include "forms/ToolKeys.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"

namespace quoll::test {

namespace {

constexpr int32_t kShift = 0x10;

struct TToolsTest : testing::Test {
  Host host;
  std::unique_ptr<Machine> machine = std::make_unique<Machine>(host);
  Machine& m = *machine;
  TTools& form = m.tools;

  static ControlRef Of(const ToolKey& key) {
    return TheControl("TTools", key.control, key.control == "Label1" ? key.code - kFirstKeyCode : 0);
  }
  // The rows as the key alone leaves them.
  static Keyboard Alone(int32_t code) {
    Keyboard keyboard;
    EXPECT_TRUE(KeyboardPress(keyboard, code, true)) << code;
    return keyboard;
  }
  bool Down(int32_t code) const {
    const Keyboard alone = Alone(code);
    for (size_t row = 0; row < 16; ++row) {
      if ((m.keyboard.KeyMatrix[row] & alone.KeyMatrix[row]) != alone.KeyMatrix[row]) return false;
    }
    return true;
  }
  void Hold(int32_t code, bool on) { SetTick(m, TheControl("TTools", "Held", code), on); }
};

TEST_F(TToolsTest, TheMenuShowsIt) {
  Press(m, TheControl("TScreen", "xTools"));
  EXPECT_TRUE(form.window.visible && form.window.raise);
}

// Each wired key is drawn, and nothing else is.
TEST_F(TToolsTest, TheDrawingHasAllKeysOfTheMachine) {
  std::set<int> drawn;
  for (const ToolKey& key : kToolKeys) drawn.insert(key.code);
  for (int code = 0; code < 256; ++code) {
    Keyboard keyboard;
    EXPECT_EQ(KeyboardPress(keyboard, code, true), drawn.contains(code)) << code;
  }
}

TEST_F(TToolsTest, KeysLieInTheDrawingAndApart) {
  std::set<std::pair<int, int>> taken;
  for (const ToolKey& key : kToolKeys) {
    EXPECT_FALSE(key.legend.empty()) << int{key.code};
    EXPECT_GE(key.width, 4);
    EXPECT_GE(key.height, 4);
    EXPECT_LE(key.x + key.width, kToolKeysWidth);
    EXPECT_LE(key.y + key.height, kToolKeysHeight);
    for (int x = key.x; x < key.x + key.width; ++x) {
      for (int y = key.y; y < key.y + key.height; ++y)
        EXPECT_TRUE(taken.insert({x, y}).second) << key.legend << " lies over another key";
    }
  }
}

TEST_F(TToolsTest, EachKeyGoesDownAndUp) {
  for (const ToolKey& key : kToolKeys) {
    MouseDown(m, Of(key));
    EXPECT_EQ(m.keyboard, Alone(key.code)) << key.legend;
    EXPECT_EQ(form.Text1, std::to_string(key.code));
    MouseUp(m, Of(key));
    EXPECT_EQ(m.keyboard, Keyboard{}) << key.legend;
    if (key.control == "Label1") {
      EXPECT_EQ(CaptionOf(Of(key)), key.legend);
    }
  }
}

// The index plus 32 is the key code, for places without a key too.
TEST_F(TToolsTest, TheIndexIsTheCodeLess32) {
  for (int index = 0; index < TTools::kKeys; ++index) {
    if (index == 0x71 - 32) continue;  // F2 spoils the warm-start mark
    MouseDown(m, TheControl("TTools", "Label1", index));
    EXPECT_EQ(form.Text1, std::to_string(index + 32));
    MouseUp(m, TheControl("TTools", "Label1", index));
  }
  EXPECT_EQ(m.run.ResetRequest, 1) << "F1 is among them";
  EXPECT_EQ(m.keyboard, Keyboard{});
  MouseDown(m, TheControl("TTools", "Label1", TTools::kKeys));
  EXPECT_EQ(form.Text1, std::to_string(TTools::kKeys + 31)) << "outside";
}

TEST_F(TToolsTest, AHeldKeyStaysUntilItIsClickedAgain) {
  Hold(kShift, true);
  EXPECT_TRUE(form.Held[kShift]);
  EXPECT_EQ(form.Text1, "16");
  MouseDown(m, TheControl("TTools", "Label1", 'A' - 32));
  EXPECT_TRUE(Down(kShift) && Down('A'));
  MouseUp(m, TheControl("TTools", "Label1", 'A' - 32));
  EXPECT_TRUE(Down(kShift));
  EXPECT_FALSE(Down('A'));
  KeyboardClear(m.keyboard);  // the picture has lost the focus
  EXPECT_TRUE(Down(kShift));
  MachineReset(m);
  EXPECT_TRUE(Down(kShift));
  KeyboardPress(m.keyboard, kShift, true);  // the host's own Shift
  KeyboardPress(m.keyboard, kShift, false);
  EXPECT_TRUE(Down(kShift));
  Hold(kShift, false);
  EXPECT_FALSE(form.Held[kShift]);
  EXPECT_EQ(m.keyboard, Keyboard{});
}

TEST_F(TToolsTest, APlainClickLetsAHeldKeyGo) {
  Hold(kShift, true);
  Hold('Q', true);
  MouseDown(m, TheControl("TTools", "Label2"));
  EXPECT_TRUE(Down(kShift));
  MouseUp(m, TheControl("TTools", "Label2"));
  EXPECT_FALSE(form.Held[kShift]);
  EXPECT_EQ(form.Held['Q'], true);
  EXPECT_FALSE(Down(kShift));
  EXPECT_TRUE(Down('Q'));
}

TEST_F(TToolsTest, OnlyKeysOfTheMachineCanBeHeld) {
  for (int code = 0; code < 256; ++code) {
    Keyboard keyboard;
    Hold(code, true);
    EXPECT_EQ(form.Held[static_cast<size_t>(code)], KeyboardPress(keyboard, code, true)) << code;
    Hold(code, false);
    EXPECT_EQ(m.keyboard, Keyboard{}) << code;
  }
  EXPECT_EQ(m.run.ResetRequest, 0) << "F1 can't be held";
}

struct RowCase {
  const char* name;
  int count, shift;
};

// Each row has its bits of port 2, clears them first and leaves the others alone.
TEST_F(TToolsTest, RowsWorkTheValueOut) {
  constexpr RowCase kRows[] = {{"U0", 4, 3}, {"U1", 2, 2}, {"U2", 2, 5}, {"U3", 4, 6}};
  for (const RowCase& row : kRows) {
    for (const int start : {0x00, 0xFF, 0x5A}) {
      for (int index = row.count - 1; index >= 0; --index) {
        form.Text2 = std::to_string(start);
        SetTick(m, TheControl("TTools", row.name, index), true);
        const int bits = (row.count - 1) << row.shift;
        EXPECT_EQ(form.Text2, std::to_string((start & ~bits) | index << row.shift)) << row.name << index;
        for (int other = 0; other < row.count; ++other) {
          const ControlRef ref = TheControl("TTools", row.name, other);
          EXPECT_EQ(*FieldOf<bool>(m, ref), other == index);
          EXPECT_EQ(LookOf(m, ref).fore, other == index ? 0xFF00 : 0);
        }
      }
    }
  }
}

TEST_F(TToolsTest, RowsStartAtTheirFirstOptions) {
  EXPECT_EQ(form.Text2, "0");
  for (const char* name : {"U0", "U1", "U2", "U3"}) {
    EXPECT_TRUE(*FieldOf<bool>(m, TheControl("TTools", name, 0)));
    EXPECT_EQ(LookOf(m, TheControl("TTools", name, 0)).fore, 0xFF00);
    EXPECT_EQ(LookOf(m, TheControl("TTools", name, 1)).fore, 0);
  }
  form.Text2 = "nonsense";
  SetTick(m, TheControl("TTools", "U3", 3), true);
  EXPECT_EQ(form.Text2, "192");
}

}  // namespace

}  // namespace quoll::test
