// Inside a frame the machine asks the host for nothing and allocates nothing. A program of its own, since it
// counts every allocation by taking the place of the global operator new.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "bench/MixMachine.h"

namespace {

int64_t allocations = 0;

}  // namespace

[[gnu::noinline]] void* operator new(size_t size) {
  ++allocations;
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, size_t) noexcept { std::free(memory); }

namespace quoll::test {

namespace {

struct CountingHost : bench::FrameHost {
  int64_t calls = 0;
  uint32_t TickCount() override { return ++calls, 0; }
  int64_t PerformanceCounter() override { return ++calls, 0; }
  int64_t PerformanceFrequency() override { return ++calls, 1; }
  void Pump(Machine&) override { ++calls; }
  void Stalled(Machine&) override { ++calls; }
  void BlockMixed(Machine&) override { ++calls; }
  void WaitForBlock(Machine& m) override {
    ++calls;
    m.mixer.NeedData = 1;
  }
  void MessageBox(std::string_view, std::string_view, MessageIcon) override { ++calls; }
  void Beep(int, int) override { ++calls; }
};

class QuietFrameTest : public testing::TestWithParam<const char*> {};

TEST_P(QuietFrameTest, NoAllocationAndNoCallOfTheHostInsideAFrame) {
  constexpr int kFrames = 50;
  CountingHost host;
  auto m = bench::MixMachine(host, GetParam());
  bench::RunFrames(*m, host, 1);
  host.calls = 0;
  const int64_t before = allocations;
  bench::RunFrames(*m, host, kFrames);
  EXPECT_EQ(allocations, before);
  // Each frame's end reads the counter twice, its frequency and the clock; each block is announced and waited
  // for.
  EXPECT_EQ(host.calls, kFrames * 4 + kFrames / 5 * 2);
}

INSTANTIATE_TEST_SUITE_P(Mixes, QuietFrameTest, testing::Values("loop", "broad"));

}  // namespace

}  // namespace quoll::test
