#include <gtest/gtest.h>

#include <memory>

#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "script/ScriptHost.h"

namespace quoll::test {
namespace {

// RAM in all pages, an endless loop at 0, a picture of one character.
std::unique_ptr<Machine> LoopingMachine(Host& host) {
  auto m = std::make_unique<Machine>(host);
  m->PortShadow[2] = 0xB0;
  m->PortShadow[0x59] = 0xBF;
  m->MemImage[0] = 0xC3;
  m->crtc.CrtcRegs[1] = m->crtc.CrtcRegs[6] = 1;
  CpuInit(m->z80);
  return m;
}

TEST(ScriptHost, AFrameTakesTwentyMillisecondsOfTheVirtualClock) {
  ScriptHost host;
  const auto m = LoopingMachine(host);
  const uint32_t ticks = host.TickCount();
  const int64_t count = host.PerformanceCounter();
  EXPECT_GT(ticks, 19U);  // else the first frame would not be drawn
  EXPECT_EQ(host.TickCount(), ticks);
  for (uint32_t frame = 1; frame <= 100; ++frame) {
    host.FrameEnded(*m);
    EXPECT_EQ(host.TickCount(), ticks + 20 * frame);
    EXPECT_EQ((host.PerformanceCounter() - count) * 50, host.PerformanceFrequency() * frame);
  }
  EXPECT_EQ(host.frames, 100);
}

TEST(ScriptHost, EveryFrameIsDrawn) {
  ScriptHost host;
  const auto m = LoopingMachine(host);
  host.stopAt = 30;
  m->run.CpuRunning = 1;
  RunLoop(*m);
  EXPECT_EQ(host.frames, 30);
  EXPECT_EQ(m->picture.shown, 30U);
  EXPECT_EQ(m->run.CpuRunning, 0);
}

TEST(ScriptHost, TimeGoesOnWhenTheClockIsChanged) {
  ScriptHost host;
  const auto m = LoopingMachine(host);
  int64_t last = host.PerformanceCounter();
  for (int i = 0; i < 20; ++i) {
    host.UseRealClock(i % 2 == 0);
    EXPECT_GE(host.PerformanceCounter(), last);
    last = host.PerformanceCounter();
    host.FrameEnded(*m);
    EXPECT_GE(host.PerformanceCounter(), last);
    if (i % 2 != 0) {
      EXPECT_EQ(host.PerformanceCounter(), last + host.PerformanceFrequency() / 50);
    }
    last = host.PerformanceCounter();
  }
}

TEST(ScriptHost, TheRealClockMovesByItself) {
  ScriptHost host;
  host.UseRealClock(true);
  const int64_t start = host.PerformanceCounter();
  const auto before = std::chrono::steady_clock::now();
  while (std::chrono::steady_clock::now() - before < std::chrono::milliseconds(5)) {
  }
  EXPECT_GE(host.PerformanceCounter() - start, host.PerformanceFrequency() / 200);
}

TEST(ScriptHost, BlocksAreTakenAtOnceAndKept) {
  ScriptHost host;
  const auto m = LoopingMachine(host);
  m->mixer.NeedData = 0;
  host.WaitForBlock(*m);
  EXPECT_EQ(m->mixer.NeedData, 1);
  m->mixer.BlockBuffer.fill(1);
  host.BlockMixed(*m);
  m->mixer.BlockBuffer.fill(2);
  host.BlockMixed(*m);
  ASSERT_EQ(host.sound.size(), 2U * 4410);
  EXPECT_EQ(host.sound[4409], 1);
  EXPECT_EQ(host.sound[4410], 2);
}

TEST(ScriptHost, MessageBoxesAreGathered) {
  ScriptHost host;
  host.MessageBox("text", "title", MessageIcon::Stop);
  host.MessageBox("more", "", MessageIcon::None);
  ASSERT_EQ(host.messages.size(), 2U);
  EXPECT_EQ(host.messages[0].text, "text");
  EXPECT_EQ(host.messages[0].title, "title");
  EXPECT_EQ(host.messages[1].text, "more");
}

}  // namespace
}  // namespace quoll::test
