#include <gtest/gtest.h>

#include <climits>
#include <map>

#include "display/Keyboard.h"
#include "forms/PicD.h"
#include "machine/Machine.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

struct Place {
  int row;
  int bit;
};

// Every wired host key by virtual key code.
const std::map<int32_t, Place> kWired{
    {0x30, {0, 3}}, {0x31, {0, 6}}, {0x32, {0, 2}}, {0x33, {0, 1}}, {0x34, {0, 7}},  // 0 to 4
    {0x35, {0, 0}}, {0x36, {0, 4}}, {0x37, {1, 7}}, {0x38, {1, 1}}, {0x39, {1, 2}},  // 5 to 9
    {0x41, {4, 6}}, {0x42, {6, 0}}, {0x43, {6, 1}}, {0x44, {4, 1}}, {0x45, {2, 1}},  // A to E
    {0x46, {4, 7}}, {0x47, {4, 0}}, {0x48, {4, 4}}, {0x49, {3, 1}}, {0x4A, {5, 7}},  // F to J
    {0x4B, {5, 1}}, {0x4C, {5, 2}}, {0x4D, {7, 7}}, {0x4E, {6, 4}}, {0x4F, {3, 2}},  // K to O
    {0x50, {3, 6}}, {0x51, {2, 6}}, {0x52, {2, 7}}, {0x53, {4, 2}}, {0x54, {2, 0}},  // P to T
    {0x55, {3, 7}}, {0x56, {6, 7}}, {0x57, {2, 2}}, {0x58, {6, 2}}, {0x59, {6, 6}},  // U to Y
    {0x5A, {2, 4}},                                                                  // Z
    {0xE2, {0, 5}}, {0xC0, {1, 6}}, {0xBB, {1, 5}}, {0xBF, {1, 3}}, {0xDD, {3, 5}},  // OEM keys
    {0xDB, {3, 3}}, {0xBA, {5, 6}}, {0xDC, {5, 5}}, {0xDE, {5, 3}}, {0xBD, {7, 6}}, {0xBE, {7, 2}},
    {0xBC, {7, 1}}, {0x6A, {1, 4}}, {0x6D, {1, 0}}, {0x6B, {4, 5}}, {0x6F, {4, 3}},  // numeric pad
    {0x74, {2, 3}}, {0x75, {2, 5}}, {0x76, {3, 4}}, {0x77, {3, 0}}, {0x78, {8, 3}},  // F5 to F9
    {0x79, {8, 4}},                                                                  // F10
    {0x0D, {5, 4}}, {0x08, {5, 0}}, {0x14, {6, 5}}, {0x10, {6, 3}}, {0x20, {7, 5}},  // Enter ... Space
    {0x11, {7, 4}}, {0x23, {7, 3}}, {0x12, {7, 0}},                                  // Ctrl, End, Alt
    {0x25, {8, 6}}, {0x27, {8, 5}}, {0x28, {8, 2}}, {0x26, {8, 1}}, {0x2D, {8, 0}},  // arrows, Insert
};

struct Keys : testing::Test {
  TestMachine machine;
  Machine& m = *machine;

  // The code as the host gets it back.
  int32_t Down(int32_t keyCode, int32_t shift = 0) {
    picd_KeyDown(m, keyCode, shift);
    return keyCode;
  }

  void ExpectOnly(int32_t code) {
    const auto wired = kWired.find(code);
    for (int row = 0; row < 16; ++row) {
      const int expected = wired != kWired.end() && wired->second.row == row ? 1 << wired->second.bit : 0;
      ASSERT_EQ(m.keyboard.KeyMatrix[row], expected) << "code " << code << " row " << row;
      ASSERT_EQ(KeyboardRow(m.keyboard, row), 255 - expected) << "code " << code << " row " << row;
    }
  }
};

TEST_F(Keys, TheTableFillsTheMatrix) {
  EXPECT_EQ(kWired.size(), 71U);  // nine rows of eight, one place without a key
}

TEST_F(Keys, EveryCodeDownAndUp) {
  for (int32_t code = 0; code < 256; ++code) {
    EXPECT_EQ(Down(code), 0) << code;  // unwired ones are used up too
    ExpectOnly(code);
    picd_KeyUp(m, code);
    ExpectOnly(-1);
  }
}

TEST_F(Keys, PressTellsWhetherTheCodeIsWired) {
  for (int32_t code = -2; code < 600; ++code) {
    EXPECT_EQ(KeyboardPress(m.keyboard, code, true), kWired.contains(code)) << code;
    EXPECT_EQ(KeyboardPress(m.keyboard, code, false), kWired.contains(code)) << code;
  }
}

TEST_F(Keys, UnwiredKeys) {
  // F3, F4, F11, F12, Escape, Home, Page Up, Page Down, Delete.
  for (const int32_t code : {0x72, 0x73, 0x7A, 0x7B, 0x1B, 0x24, 0x21, 0x22, 0x2E}) {
    EXPECT_EQ(Down(code), 0);
    ExpectOnly(-1);
  }
}

TEST_F(Keys, CodesThatNoHostSends) {
  for (const int32_t code : {INT_MIN, -1, 256, 0x141, INT_MAX}) {
    EXPECT_EQ(Down(code), 0);
    picd_KeyUp(m, code);
    ExpectOnly(-1);
  }
}

TEST_F(Keys, AltAloneIsTheHosts) {
  EXPECT_EQ(Down('A', kAltKey), 'A');
  ExpectOnly(-1);
  EXPECT_EQ(Down(0x12, kAltKey), 0x12);  // the Alt key itself comes with Alt set
  ExpectOnly(-1);
  EXPECT_EQ(Down(0x70, kAltKey), 0x70);  // no reset either
  EXPECT_EQ(m.run.ResetRequest, 0);
}

TEST_F(Keys, AltWithAnotherModifierIsTheMachines) {
  for (const int32_t shift : {kAltKey + kShiftKey, kAltKey + kCtrlKey, kAltKey + kCtrlKey + kShiftKey}) {
    EXPECT_EQ(Down(0x12, shift), 0);
    ExpectOnly(0x12);
    picd_KeyUp(m, 0x12);
  }
  for (const int32_t shift : {0, kShiftKey, kCtrlKey, kShiftKey + kCtrlKey}) {
    EXPECT_EQ(Down('A', shift), 0);
    ExpectOnly('A');
    picd_KeyUp(m, 'A');
  }
}

TEST_F(Keys, ReleaseAfterAlt) {
  EXPECT_EQ(Down('A', kAltKey), 'A');
  picd_KeyUp(m, 'A');
  ExpectOnly(-1);
}

TEST_F(Keys, UpKeyInRowEight) {
  EXPECT_EQ(KeyboardRow(m.keyboard, 8), 0xFF);
  Down(0x26);
  EXPECT_EQ(KeyboardRow(m.keyboard, 8), 0xFD);
  EXPECT_EQ(KeyboardRow(m.keyboard, 0xC8), 0xFD);  // the slot bits of the port do not count
  EXPECT_EQ(KeyboardRow(m.keyboard, -8), 0xFD);
}

TEST_F(Keys, KeysOfARowAndRepeats) {
  Down('U');
  Down('U');
  Down('P');
  Down(0x77);
  EXPECT_EQ(m.keyboard.KeyMatrix[3], 0x80 | 0x40 | 0x01);
  picd_KeyUp(m, 'U');
  EXPECT_EQ(m.keyboard.KeyMatrix[3], 0x40 | 0x01);
  picd_KeyUp(m, 'U');
  EXPECT_EQ(m.keyboard.KeyMatrix[3], 0x40 | 0x01);
}

// A held key stays down whatever else happens to it or to the others.
TEST_F(Keys, AHeldKeyStaysDown) {
  for (const auto& [code, place] : kWired) {
    ASSERT_TRUE(KeyboardHold(m.keyboard, code, true));
    ExpectOnly(code);
    KeyboardPress(m.keyboard, code, true);
    KeyboardPress(m.keyboard, code, false);
    ExpectOnly(code);
    KeyboardClear(m.keyboard);
    ExpectOnly(code);
    ASSERT_TRUE(KeyboardHold(m.keyboard, code, false));
    EXPECT_EQ(m.keyboard, Keyboard{});
  }
  for (const int32_t code : {-1, 0, 0x70, 0x71, 0xFF, 256, INT_MAX, INT_MIN}) {
    EXPECT_FALSE(KeyboardHold(m.keyboard, code, true)) << code;
    EXPECT_EQ(m.keyboard, Keyboard{});
  }
}

TEST_F(Keys, ClearReleasesAll) {
  for (const auto& [code, place] : kWired) Down(code);
  for (int row = 0; row < 9; ++row) EXPECT_EQ(KeyboardRow(m.keyboard, row), row == 8 ? 0x80 : 0x00) << row;
  for (int row = 9; row < 16; ++row) EXPECT_EQ(KeyboardRow(m.keyboard, row), 0xFF) << row;
  KeyboardClear(m.keyboard);
  ExpectOnly(-1);
}

TEST_F(Keys, F1AndF2ResetTheMachine) {
  EXPECT_EQ(Down(0x70), 0);
  EXPECT_EQ(m.run.ResetRequest, 1);
  EXPECT_EQ(m.MemImage[kWarmStartMark], 0);
  ExpectOnly(-1);

  m.run.ResetRequest = 0;
  picd_KeyUp(m, 0x70);
  picd_KeyUp(m, 0x71);
  EXPECT_EQ(m.run.ResetRequest, 0);

  EXPECT_EQ(Down(0x71), 0);
  EXPECT_EQ(m.run.ResetRequest, 1);
  EXPECT_EQ(m.MemImage[kWarmStartMark], 0xFF);
  ExpectOnly(-1);
}

TEST_F(Keys, TheToolsWindowShowsTheCode) {
  Down(0xE2);
  EXPECT_EQ(m.tools.Text1, "226");
  Down('A', kAltKey);  // the host's, but shown
  EXPECT_EQ(m.tools.Text1, "65");
  picd_KeyUp(m, 0xE2);
  EXPECT_EQ(m.tools.Text1, "65");
}

}  // namespace
}  // namespace quoll::test
