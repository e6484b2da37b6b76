#include <gtest/gtest.h>

#include <algorithm>

#include "sound/sdl/PlayBuffer.h"

namespace quoll {
namespace {

constexpr size_t kHalf = 12;

struct PlayBufferTest : testing::Test {
  PlayBuffer buffer;
  PlayBufferTest() { PlayReset(buffer, kHalf); }

  bool Take(size_t count, std::vector<uint8_t>& out) {
    out.assign(count, 0);
    return PlayTake(buffer, out);
  }
  void Fill(uint8_t value) {
    ASSERT_TRUE(PlayWantsData(buffer));
    std::ranges::fill(PlayHalfToFill(buffer), value);
    PlayFilled(buffer);
  }
};

using Bytes = std::vector<uint8_t>;

TEST_F(PlayBufferTest, BeginsSilentAndAsksAtOnce) {
  Bytes out;
  EXPECT_FALSE(PlayWantsData(buffer));  // nothing plays yet
  EXPECT_TRUE(Take(4, out));
  EXPECT_EQ(out, Bytes(4, 128));
  EXPECT_TRUE(PlayWantsData(buffer));
  EXPECT_GT(buffer.enteredTime.load(), 0);
  EXPECT_FALSE(Take(8, out));  // the rest of the half
  EXPECT_EQ(out, Bytes(8, 128));
}

TEST_F(PlayBufferTest, OneRequestForEachHalf) {
  Bytes out;
  for (int n = 0; n < 100; ++n) {
    int begun = 0;
    for (size_t i = 0; i < kHalf; i += 3) {
      begun += Take(3, out) ? 1 : 0;
      EXPECT_EQ(out, Bytes(3, static_cast<uint8_t>(n == 0 ? 128 : n)));
      EXPECT_EQ(PlayWantsData(buffer), i == 0);
      if (i == 0) Fill(static_cast<uint8_t>(n + 1));
    }
    EXPECT_EQ(begun, 1);
  }
  EXPECT_EQ(buffer.repeats.load(), 0U);
}

TEST_F(PlayBufferTest, TheHalfInPlayIsNeverTheOneToFill) {
  Bytes out;
  for (int n = 0; n < 10; ++n) {
    Take(kHalf, out);
    const uint32_t present = (buffer.entered.load() - 1) % 2;
    EXPECT_NE(PlayHalfToFill(buffer).data(), buffer.halves[present].data());
    Fill(static_cast<uint8_t>(n));
  }
}

TEST_F(PlayBufferTest, AnUnfinishedHalfIsWaitedForByPlayingThePresentOneAgain) {
  Bytes out;
  Take(kHalf, out);
  Fill(1);
  EXPECT_TRUE(Take(kHalf, out));
  EXPECT_EQ(out, Bytes(kHalf, 1));
  EXPECT_FALSE(Take(kHalf, out));
  EXPECT_EQ(out, Bytes(kHalf, 1));
  EXPECT_FALSE(Take(5, out));
  EXPECT_EQ(buffer.repeats.load(), 2U);
  Fill(2);
  EXPECT_FALSE(Take(7, out));  // the repetition is played to its end
  EXPECT_EQ(out, Bytes(7, 1));
  EXPECT_TRUE(Take(kHalf, out));
  EXPECT_EQ(out, Bytes(kHalf, 2));
}

TEST_F(PlayBufferTest, ChunksNeedNotFitTheHalves) {
  Bytes out, all;
  uint8_t next = 1;
  for (int i = 0; i < 60; ++i) {
    Take(5, out);
    all.insert(all.end(), out.begin(), out.end());
    if (PlayWantsData(buffer)) Fill(next++);
  }
  ASSERT_EQ(all.size(), 300U);
  for (size_t i = 0; i < all.size(); ++i) EXPECT_EQ(all[i], i < kHalf ? 128 : i / kHalf) << i;
}

TEST_F(PlayBufferTest, AChunkLongerThanBothHalvesRepeats) {
  Bytes out;
  EXPECT_TRUE(Take(3 * kHalf, out));
  EXPECT_EQ(out, Bytes(3 * kHalf, 128));
  EXPECT_EQ(buffer.repeats.load(), 2U);
}

TEST_F(PlayBufferTest, ResetForgets) {
  Bytes out;
  Take(kHalf, out);
  Fill(9);
  Take(5, out);
  PlayReset(buffer, 2 * kHalf);
  EXPECT_FALSE(PlayWantsData(buffer));
  EXPECT_TRUE(Take(2 * kHalf, out));
  EXPECT_EQ(out, Bytes(2 * kHalf, 128));
  EXPECT_EQ(PlayHalfToFill(buffer).size(), 2 * kHalf);
}

TEST(PlayBuffer, WithoutABufferNothingIsTaken) {
  PlayBuffer buffer;
  Bytes out(4, 7);
  EXPECT_FALSE(PlayTake(buffer, out));
  EXPECT_EQ(out, Bytes(4, 7));
}

}  // namespace
}  // namespace quoll
