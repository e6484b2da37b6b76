#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "sound/Tone.h"

namespace quoll {
namespace {

TEST(ToneWriteSlot, SlotIsTheSampleInWhoseTimeTheWriteComes) {
  // 37 shares no factor with 142: every remainder comes up.
  for (int32_t clock = 0; clock < 62500; clock += 37) {
    Tone tone;
    ToneWriteSlot(tone, 0, clock);
    int expected = 0;
    while (142 * (expected + 1) <= clock) ++expected;
    ASSERT_EQ(tone.DacSlots[expected], 16) << clock;
  }
  for (const int32_t edge : {0, 141, 142, 283, 284, 62479, 62480, 62499}) {
    Tone tone;
    ToneWriteSlot(tone, 0, edge);
    for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.DacSlots[i], i == edge / 142 ? 16 : 0) << edge << ' ' << i;
  }
}

TEST(ToneWriteSlot, ClocksOutsideTheFrameLandInItsFirstAndLastSlot) {
  for (const int32_t late : {62500, 62621, 62622, 62623, 70000, std::numeric_limits<int32_t>::max()}) {
    Tone tone;
    ToneWriteSlot(tone, 4, late);
    for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.DacSlots[i], i == 440 ? 17 : 0) << late << ' ' << i;
  }
  for (const int32_t early : {-1, -142, -100000, std::numeric_limits<int32_t>::min()}) {
    Tone tone;
    ToneWriteSlot(tone, 4, early);
    for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.DacSlots[i], i == 0 ? 17 : 0) << early << ' ' << i;
  }
}

TEST(ToneWriteSlot, LaterWriteWinsTheSlot) {
  Tone tone;
  ToneWriteSlot(tone, 15 << 2, 1000);
  ToneWriteSlot(tone, 3 << 2, 1100);  // both within 994 to 1135
  EXPECT_EQ(tone.DacSlots[7], 16 + 3);
  ToneWriteSlot(tone, 0, 1135);
  EXPECT_EQ(tone.DacSlots[7], 16);
}

TEST(ToneWriteSlot, TakesBits2To5OfTheValue) {
  for (int value = 0; value < 256; ++value) {
    Tone tone;
    ToneWriteSlot(tone, value, 0);
    const int amplitude = (value % 64) / 4;
    EXPECT_EQ(tone.DacSlots[0], 16 + amplitude) << value;
  }
  Tone tone;
  ToneWriteSlot(tone, -1, 0);
  EXPECT_EQ(tone.DacSlots[0], 31);
  ToneWriteSlot(tone, std::numeric_limits<int32_t>::min(), 0);
  EXPECT_EQ(tone.DacSlots[0], 16);
}

}  // namespace
}  // namespace quoll
