#include <gtest/gtest.h>

#include <vector>

#include "desktop/FramePacer.h"

namespace quoll {
namespace {

using namespace std::chrono_literals;

using Time = FramePacer::Time;

constexpr Time kStart{1000s};

TEST(FramePacer, ABlocksFramesAreDueTwentyMillisecondsApart) {
  FramePacer pacer(kStart);
  pacer.BlockBegun(kStart);
  for (int mixed = 0; mixed <= 5; ++mixed) EXPECT_EQ(pacer.FrameDue(mixed), kStart + mixed * 20ms) << mixed;
  EXPECT_EQ(pacer.FrameDue(-1), kStart);
  EXPECT_EQ(pacer.FrameDue(6), kStart + 100ms);
}

TEST(FramePacer, JitterIsSmoothed) {
  FramePacer pacer(kStart);
  pacer.BlockBegun(kStart);
  pacer.BlockBegun(kStart + 108ms);                      // 8 ms late
  EXPECT_EQ(pacer.FrameDue(0), kStart + 102ms);          // a quarter of it
  EXPECT_EQ(pacer.FrameDue(5), kStart + 202ms + 250us);  // the block is a 32nd of it longer
  pacer.BlockBegun(pacer.FrameDue(5) - 4ms);             // 4 ms early
  EXPECT_EQ(pacer.FrameDue(0), kStart + 201ms + 250us);
  EXPECT_EQ(pacer.FrameDue(5) - pacer.FrameDue(0), 100ms + 250us - 125us);
}

TEST(FramePacer, ALateBlockIsANewBeginning) {
  for (const auto late : {30ms, 5000ms, -30ms}) {
    FramePacer pacer(kStart);
    pacer.BlockBegun(kStart);
    pacer.BlockBegun(kStart + 100ms + late);
    EXPECT_EQ(pacer.FrameDue(0), kStart + 100ms + late);
    EXPECT_EQ(pacer.FrameDue(5), kStart + 200ms + late);
  }
}

// An output whose clock is 5 percent slow: after a while its own pace is followed, evenly.
TEST(FramePacer, FollowsTheOutputsClock) {
  FramePacer pacer(kStart);
  Time block = kStart;
  Time before{};
  for (int i = 0; i < 300; ++i, block += 105ms) {
    pacer.BlockBegun(block);
    if (i > 200) {
      EXPECT_NEAR(static_cast<double>((pacer.FrameDue(0) - before).count()), 105e6, 1e5);
    }
    before = pacer.FrameDue(0);
  }
  EXPECT_NEAR(static_cast<double>((pacer.FrameDue(1) - pacer.FrameDue(0)).count()), 21e6, 1e5);
}

TEST(FramePacer, ABlockIsNeverTakenForMuchLongerOrShorter) {
  for (const auto length : {75ms, 125ms}) {
    FramePacer pacer(kStart);
    Time block = kStart;
    for (int i = 0; i < 1000; ++i, block += length) pacer.BlockBegun(block);
    const auto taken = pacer.FrameDue(5) - pacer.FrameDue(0);
    EXPECT_GE(taken, 90ms);
    EXPECT_LE(taken, 110ms);
  }
}

// What the clock gave at frames that began so long after each other.
std::vector<int64_t> Ticks(const std::vector<std::chrono::milliseconds>& steps, bool paced) {
  FramePacer pacer(kStart);
  Time now = kStart;
  const auto first = pacer.Tick(now);
  std::vector<int64_t> ticks;
  for (const auto step : steps) {
    const Time due = now + 20ms;
    now += step;
    pacer.FrameBegun(now, due, paced);
    ticks.push_back((pacer.Tick(now + 3ms) - first).count());  // read during the frame
  }
  return ticks;
}

TEST(FramePacer, AFrameOnTimeCountsTwentyMilliseconds) {
  EXPECT_EQ(Ticks({20ms, 23ms, 20ms, 39ms}, true), (std::vector<int64_t>{20, 40, 60, 80}));
}

TEST(FramePacer, OtherwiseTheClockCounts) {
  // 40 ms late, and frames that are not held back at all: the time of reading.
  EXPECT_EQ(Ticks({60ms}, true), std::vector<int64_t>{63});
  EXPECT_EQ(Ticks({5ms, 5ms}, false), (std::vector<int64_t>{8, 13}));
}

}  // namespace
}  // namespace quoll
