#include <gtest/gtest.h>

#include <climits>

#include "display/Crtc.h"

namespace quoll {
namespace {

int32_t Select(Crtc& crtc, int32_t value) {
  CrtcSelect(crtc, value);
  return value;
}

int32_t Write(Crtc& crtc, int32_t value) {
  CrtcWrite(crtc, value);
  return value;
}

TEST(Crtc, ResetLeavesTheCursorInterruptOff) {
  Crtc crtc;
  crtc.CrtcRegs.fill(77);
  CrtcReset(crtc);
  for (int32_t i = 0; i < 19; ++i) EXPECT_EQ(crtc.CrtcRegs[i], i == 10 ? 0x20 : 0) << i;
}

TEST(Crtc, EveryRegisterKeepsItsBits) {
  constexpr int32_t kMasks[18] = {0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0x1F, 0x7F, 0x7F, 0xF3,
                                  0x1F, 0x7F, 0x1F, 0x3F, 0xFF, 0x3F, 0xFF, 0x3F, 0xFF};
  for (int32_t reg = 0; reg < 18; ++reg) {
    for (int32_t value = 0; value < 256; ++value) {
      Crtc crtc;
      EXPECT_EQ(Select(crtc, reg), reg);
      EXPECT_EQ(Write(crtc, value), value & kMasks[reg]);  // the writer's variable is masked too
      for (int32_t i = 0; i < 18; ++i)
        ASSERT_EQ(crtc.CrtcRegs[i], i == reg ? value & kMasks[reg] : 0) << reg << " " << value;
      ASSERT_EQ(crtc.CrtcRegs[18], reg);
      ASSERT_EQ(CrtcRead(crtc), reg < 12 ? 255 : value & kMasks[reg]);
    }
  }
}

TEST(Crtc, SelectionHasFiveBits) {
  Crtc crtc;
  for (int32_t value = 0; value < 256; ++value) {
    EXPECT_EQ(Select(crtc, value), value & 0x1F);
    EXPECT_EQ(crtc.CrtcRegs[kCrtcSelected], value & 0x1F);
  }
  Select(crtc, 0x47);
  EXPECT_EQ(crtc.CrtcRegs[kCrtcSelected], 7);
  Write(crtc, 0x12);
  EXPECT_EQ(crtc.CrtcRegs[7], 0x12);
  EXPECT_EQ(CrtcRead(crtc), 255);  // 7 is below 12
}

TEST(Crtc, RegisterEighteenIsTheSelectionItself) {
  Crtc crtc;
  Select(crtc, 18);
  EXPECT_EQ(CrtcRead(crtc), 18);
  EXPECT_EQ(Write(crtc, 13), 13);
  EXPECT_EQ(crtc.CrtcRegs[kCrtcSelected], 13);
  Write(crtc, 0xAB);
  EXPECT_EQ(crtc.CrtcRegs[13], 0xAB);

  Select(crtc, 18);
  Write(crtc, 200);  // no mask; nothing is there
  EXPECT_EQ(crtc.CrtcRegs[kCrtcSelected], 200);
  const Crtc before = crtc;
  Write(crtc, 5);
  EXPECT_EQ(crtc, before);
  EXPECT_EQ(CrtcRead(crtc), 0);
}

TEST(Crtc, SelectionsWithoutARegister) {
  for (int32_t reg = 19; reg < 32; ++reg) {
    Crtc crtc;
    Select(crtc, reg);
    const Crtc before = crtc;
    EXPECT_EQ(Write(crtc, 0xFF), 0xFF);
    EXPECT_EQ(crtc, before);
    EXPECT_EQ(CrtcRead(crtc), 0);
  }
}

TEST(Crtc, AnySelectionByAScript) {
  for (const int32_t selected : {INT_MIN, -1, 32, 1000, INT_MAX}) {
    Crtc crtc;
    crtc.CrtcRegs[kCrtcSelected] = selected;
    const Crtc before = crtc;
    Write(crtc, 1);
    EXPECT_EQ(crtc, before);
    EXPECT_EQ(CrtcRead(crtc), selected < 12 ? 255 : 0);
  }
}

TEST(Crtc, CursorPositionTakesFourBitsOfR14) {
  Crtc crtc;
  EXPECT_EQ(CursorPosition(crtc), 392);
  crtc.CrtcRegs[14] = 0x0F;
  crtc.CrtcRegs[15] = 0xFF;
  EXPECT_EQ(CursorPosition(crtc), 15 * 256 + 392 + 255);
  crtc.CrtcRegs[14] = 0x3F;
  EXPECT_EQ(CursorPosition(crtc), 15 * 256 + 392 + 255);
  crtc.CrtcRegs[14] = 0x30;
  EXPECT_EQ(CursorPosition(crtc), 392 + 255);
  crtc.CrtcRegs[14] = -1;
  crtc.CrtcRegs[15] = INT_MAX;  // wraps, from 2147483647 + 4232
  EXPECT_EQ(CursorPosition(crtc), INT_MIN + 4231);
}

}  // namespace
}  // namespace quoll
