// The timers of made-up forms in virtual time.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>
#include <vector>

#include "core/FormTable.h"
#include "core/FormTimers.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

using namespace std::chrono_literals;

// How often each has run, and what it does besides.
std::array<int, 3> runs;
std::function<void()> meanwhile;

template <size_t kTimer>
void Tick(Machine&) {
  ++runs[kTimer];
  if (kTimer == 0 && meanwhile) meanwhile();
}

constexpr std::array kFirst{Timer("Timer1", 100ms, Tick<0>), Button("Command1", "", {}),
                            Timer("Timer2", 30ms, Tick<1>)};
constexpr std::array kSecond{Timer("Timer1", 1000ms, Tick<2>)};
constexpr Form kA{"A", "", nullptr, kFirst};
constexpr Form kB{"B", "", nullptr, kSecond};
constexpr Form kBare{"C", "", nullptr, {}};
constexpr std::array kForms{&kA, &kBare, &kB};

using Runs = std::array<int, 3>;

struct FormTimersTest : testing::Test {
  FormTimersTest() {
    runs = {};
    meanwhile = nullptr;
  }
  Runs After(int64_t now) {
    RunTimers(*machine, timers, now);
    return runs;
  }

  TestMachine machine;
  FormTimers timers = StartTimers(kForms, 0);
};

TEST_F(FormTimersTest, TheFirstTickComesAPeriodAfterTheStart) {
  EXPECT_EQ(timers.lines.size(), 3U);
  EXPECT_EQ(After(29), (Runs{0, 0, 0}));
  EXPECT_EQ(After(30), (Runs{0, 1, 0}));
  EXPECT_EQ(After(59), (Runs{0, 1, 0}));
  EXPECT_EQ(After(60), (Runs{0, 2, 0}));
  timers = StartTimers(kForms, 1000);
  EXPECT_EQ(After(1029), (Runs{0, 2, 0}));
  EXPECT_EQ(After(1030), (Runs{0, 3, 0}));
}

// Asked every 20 ms, as at frame ends, they keep their pace, also where the period is no multiple.
TEST_F(FormTimersTest, TheyKeepTheirPace) {
  for (int64_t now = 0; now <= 6000; now += 20) RunTimers(*machine, timers, now);
  EXPECT_EQ(runs, (Runs{60, 200, 6}));
}

TEST_F(FormTimersTest, MissedTicksAreNotMadeUpFor) {
  EXPECT_EQ(After(1050), (Runs{1, 1, 1}));
  EXPECT_EQ(After(1050), (Runs{1, 1, 1}));
  EXPECT_EQ(After(1079), (Runs{1, 1, 1}));
  EXPECT_EQ(After(1080), (Runs{1, 2, 1}));  // 36 x 30
  EXPECT_EQ(After(1099), (Runs{1, 2, 1}));
  EXPECT_EQ(After(1100), (Runs{2, 2, 1}));
  EXPECT_EQ(After(1200), (Runs{3, 3, 1}));
  EXPECT_EQ(After(1400), (Runs{4, 4, 1}));  // one of the first's was missed, and is the present one
  EXPECT_EQ(After(1401), (Runs{4, 4, 1}));
  EXPECT_EQ(After(5'000'000'000), (Runs{5, 5, 2}));
  EXPECT_EQ(After(5'000'000'000), (Runs{5, 5, 2}));
}

// A handler may run the machine, whose pumps run the timers.
TEST_F(FormTimersTest, AHandlerMayComeBackHere) {
  meanwhile = [this] { RunTimers(*machine, timers, 100); };
  EXPECT_EQ(After(100), (Runs{1, 1, 0}));                     // itself not again, the next one once
  meanwhile = [this] { RunTimers(*machine, timers, 1000); };  // it took its time
  EXPECT_EQ(After(200), (Runs{3, 2, 1}));                     // its next tick came within
  meanwhile = nullptr;
  EXPECT_EQ(After(1000), (Runs{3, 2, 1}));
}

TEST_F(FormTimersTest, TheNextOneIsTold) {
  EXPECT_EQ(NextTimer(timers), 30);
  RunTimers(*machine, timers, 35);
  EXPECT_EQ(NextTimer(timers), 60);
  RunTimers(*machine, timers, 95);
  EXPECT_EQ(NextTimer(timers), 100);
  EXPECT_EQ(NextTimer({}), std::numeric_limits<int64_t>::max());
  EXPECT_TRUE(StartTimers({}, 5).lines.empty());
}

}  // namespace
}  // namespace quoll::test
