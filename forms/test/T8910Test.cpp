// The AY-3-8910's window: scopes, and labels that tell the registers.
#include "forms/test/ChipBench.h"

namespace quoll::test {

namespace {

constexpr const char* kForm = "T8910";

struct T8910Test : ChipBench {
  void Reg(int reg, int value) { OutRegister(0x3A, reg, value); }
};

TEST_F(T8910Test, RegistersAndWhatTheyMean) {
  for (int reg = 0; reg < 16; ++reg) Reg(reg, 10 * reg + 3);
  RunTimer(kForm);
  for (int reg = 0; reg < 16; ++reg) EXPECT_EQ(Text(kForm, "Label1", reg), std::to_string(10 * reg + 3));

  Reg(0, 0xFE);
  Reg(1, 0);
  Reg(2, 0);
  Reg(3, 1);
  Reg(6, 31);
  Reg(8, 7);
  Reg(9, 16);
  Reg(10, 15);
  Reg(11, 0x10);
  Reg(12, 0x27);
  RunTimer(kForm);
  EXPECT_EQ(Text(kForm, "Label2", 0), "440");  // 111861 / 254
  EXPECT_EQ(Text(kForm, "Label2", 1), "437");  // 111861 / 256
  EXPECT_EQ(Text(kForm, "Label3", 0), "7");
  EXPECT_EQ(Text(kForm, "Label3", 1), "env");
  EXPECT_EQ(Text(kForm, "Label3", 2), "15");
  EXPECT_EQ(Text(kForm, "Label5"), "3608");  // 111861 / 31
  EXPECT_EQ(Text(kForm, "Label6"), "1");     // 111861 / 16 / 10000
}

TEST_F(T8910Test, WhatTheMixerLetsThrough) {
  constexpr const char* kTexts[] = {"tone+noise", "noise", "tone", "off"};
  for (int bits = 0; bits < 64; ++bits) {
    Reg(7, 0xC0 | bits);
    RunTimer(kForm);
    for (int tone = 0; tone < 3; ++tone)
      ASSERT_EQ(Text(kForm, "Label4", tone), kTexts[(bits >> tone & 1) + 2 * (bits >> (tone + 3) & 1)])
          << bits;
  }
}

TEST_F(T8910Test, ShapesHavePictures) {
  for (int shape = 0; shape < 16; ++shape) {
    Reg(13, 0xF0 | shape);
    RunTimer(kForm);
    EXPECT_EQ(Text(kForm, "Label7"), std::to_string(shape));
    const std::string picture = Text(kForm, "Label8");
    EXPECT_EQ(picture.size(), 8U);
    EXPECT_EQ(picture[0], (shape & 12) == 4 || shape >= 12 ? '/' : '\\') << shape;
  }
}

TEST_F(T8910Test, ScopesShowTheTable) {
  Reg(0, 200);
  Reg(2, 100);
  Reg(8, 15);
  Reg(9, 16);
  Reg(11, 60);
  Reg(13, 14);
  Reg(7, 0x38 & ~0x10);
  Block();
  const Ay38910& ay = m.card.ay;
  for (int column = 0; column < 5; ++column) {
    const Trace& scope = Scope(kForm, "Pic1", column);
    EXPECT_EQ(scope.drawings, 1U);
    for (int i = 0; i <= 220; ++i) {
      const float value = ay.AY_Rows[i][column];
      ASSERT_EQ(scope.y[static_cast<size_t>(i)], 32 - (column < 3 ? value : value * 16))
          << column << ' ' << i;
    }
  }
}

TEST_F(T8910Test, ItHasNothingToOperate) {
  for (const Control& control : kT8910.controls) {
    const bool shown = control.kind == ControlKind::Label || control.kind == ControlKind::Scope ||
                       control.kind == ControlKind::Timer;
    EXPECT_TRUE(shown) << control.name;
    EXPECT_FALSE(control.click) << control.name;
  }
}

}  // namespace

}  // namespace quoll::test
