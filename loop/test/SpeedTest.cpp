// The speed display and the count of T-states.
#include <gtest/gtest.h>

#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

TEST(SpeedTest, ValueIsHundredThousandthsOfASecond) {
  struct Case {
    int64_t start, now, frequency;
    int32_t value;
  };
  constexpr Case kCases[] = {
      {0, 20000, 1000000, 2000},    // 20 ms
      {500, 20500, 1000000, 2000},  //
      {0, 0, 1000000, 0},           //
      {7, 7, 1, 0},                 //
      {0, 1, 1, 100000},            // a second
      {0, 16, 1000000, 2},          // 1.6
      {0, 14, 1000000, 1},          // 1.4
      {0, 4, 1000000, 0},           // 0.4
      {1000, 0, 1000000, -100},     // a counter that ran backwards
      {0, 214748, 10, 2147480000},  //
      {4000000000000, 4000000200000, 10000000, 2000},
      {0, 66667, 3333333, 2000},  // 2000.0102
  };
  for (const auto& [start, now, frequency, value] : kCases) {
    TestMachine m;
    m->run.PerfStart = start;
    m->run.PerfFreq = frequency;
    m.host.counter = now;
    m.host.frequency = 12345;  // only SpeedMark asks for it
    EXPECT_EQ(FrameTimeValue(*m), value) << now;
    EXPECT_EQ(m->run.PerfNow, now);
    EXPECT_EQ(m->run.PerfStart, start);
    EXPECT_EQ(m->run.PerfFreq, frequency);
  }
}

TEST(SpeedTest, ValuesBeyondAnIntegerStayDefined) {
  TestMachine m;
  m->run.PerfFreq = 1;
  m.host.counter = INT64_MAX;
  EXPECT_GT(FrameTimeValue(*m), 0);
  m->run.PerfStart = INT64_MAX;
  m.host.counter = 0;
  EXPECT_LT(FrameTimeValue(*m), 0);
}

// Scripts can put any number into the record.
TEST(SpeedTest, AnyReadingsStayDefined) {
  for (const int64_t start : {INT64_MIN, int64_t{-1}, int64_t{0}, INT64_MAX}) {
    for (const int64_t now : {INT64_MIN, int64_t{0}, int64_t{1}, INT64_MAX}) {
      for (const int64_t frequency : {INT64_MIN, int64_t{-1}, int64_t{0}, int64_t{1}, INT64_MAX}) {
        TestMachine m;
        m->run.PerfStart = start;
        m->run.PerfFreq = frequency;
        m.host.counter = now;
        const int32_t value = FrameTimeValue(*m);
        if (start == now && frequency != 0) {
          EXPECT_EQ(value, 0);
        }
        if (start == 0 && now == 1 && frequency == -1) {
          EXPECT_EQ(value, -100000);
        }
      }
    }
  }
}

TEST(SpeedTest, TotalCyclesWrapAtTheEndOfTheirRange) {
  TestMachine m;
  m->run.TotalCycles = INT64_MAX - 62499;
  RunOn(*m);
  EXPECT_EQ(m->run.TotalCycles, INT64_MIN);
}

TEST(SpeedTest, MarkReadsCounterAndFrequency) {
  TestMachine m;
  m.host.counter = 4711;
  m.host.frequency = 3579545;
  m->run.PerfNow = 1;
  SpeedMark(*m);
  EXPECT_EQ(m->run.PerfStart, 4711);
  EXPECT_EQ(m->run.PerfFreq, 3579545);
  EXPECT_EQ(m->run.PerfNow, 1);
}

TEST(SpeedTest, EachFrameShowsTheTimeSinceTheLast) {
  TestMachine m;
  m.host.frequency = 1000000;
  m.host.counter = 1000;
  m->run.PerfStart = 0;
  m->run.PerfFreq = 500000;  // left from before: the first figure is measured with it
  std::vector<std::string> texts;
  std::vector<float> widths;
  constexpr int64_t kFrames[] = {20000, 40000, 5, 167772170};
  m.host.framesAllowed = 5;
  m.host.onFrameEnded = [&](Machine& machine) {
    texts.push_back(machine.screen.Text1);
    widths.push_back(machine.screen.Shape4Width);
    EXPECT_EQ(machine.run.PerfStart, m.host.counter);
    EXPECT_EQ(machine.run.PerfFreq, 1000000);
    if (texts.size() <= 4) m.host.counter += kFrames[texts.size() - 1];
  };
  RunOn(*m);
  EXPECT_EQ(texts, (std::vector<std::string>{"200", "2000", "4000", "0", "16777217"}));
  // The bar is in single precision, which has no 16777217.
  EXPECT_EQ(widths, (std::vector<float>{200.0F, 2000.0F, 4000.0F, 0.0F, 16777216.0F}));
}

TEST(SpeedTest, OnlyAFramesEndShowsIt) {
  TestMachine m;
  m->screen.Text1 = "old";
  Step(*m);
  EXPECT_EQ(m->screen.Text1, "old");
  EXPECT_TRUE(m.host.events.empty());
}

TEST(SpeedTest, TotalCyclesGrowByWholeFrames) {
  TestMachine m;
  m.host.framesAllowed = 40;
  m->run.TotalCycles = 5000000000;
  RunOn(*m);
  EXPECT_EQ(m->run.TotalCycles, 5000000000 + 40 * 62500);
}

}  // namespace

}  // namespace quoll::test
