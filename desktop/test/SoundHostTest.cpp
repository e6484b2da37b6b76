// The machine on the sound device: paced by it, stopped with it, closed while it waits for it.
#include <SDL.h>

#include <QTimer>

#include "desktop/test/WindowTest.h"

namespace quoll {
namespace {

using std::chrono::duration;

// The machine on SDL's driver without a device, or none at all.
struct SoundHost : WindowTest {
  QByteArray driverBefore = qgetenv("SDL_AUDIODRIVER");

  void SetUp() override {
    qputenv("SDL_AUDIODRIVER", "dummy");
    WindowTest::SetUp();
  }
  void TearDown() override {
    if (driverBefore.isEmpty()) {
      qunsetenv("SDL_AUDIODRIVER");
    } else {
      qputenv("SDL_AUDIODRIVER", driverBefore);
    }
  }

  void Start() {
    host.EnableTimer2(false);
    DXinit(m);
    ASSERT_TRUE(host.messages.empty());
  }
  void After(int milliseconds, std::function<void()> work) {
    QTimer::singleShot(milliseconds, window, std::move(work));
  }
  void CloseAfter(int milliseconds) {
    After(milliseconds, [this] { window->close(); });
  }
  // Runs until so many frames have ended.
  void RunTo(int frames) {
    host.atFrame = [this, frames](Machine& running) {
      if (host.frames >= frames) running.run.CpuRunning = 0;
    };
    CPUmon_Command1_Click(m);
    host.atFrame = nullptr;
  }
  int Blocks() const { return std::stoi(m.fdxf.TextR); }
  // Runs the 50 frames up to this one: they take a second and fill ten blocks.
  void ExpectASecondTo(int frames) {
    const auto start = QtHost::Clock::now();
    const int blocks = Blocks();
    RunTo(frames);
    const duration<double> passed = QtHost::Clock::now() - start;
    EXPECT_NEAR(passed.count(), 1.0, 0.25);
    EXPECT_NEAR(Blocks() - blocks, 10, 2);
  }
};

TEST_F(SoundHost, TheDeviceSetsThePace) {
  Start();
  RunTo(10);
  ExpectASecondTo(60);
}

TEST_F(SoundHost, WithoutADeviceTimer2SetsIt) {
  RunTo(10);
  ExpectASecondTo(60);
}

TEST_F(SoundHost, MaxIsNotHeldBackAndTheDeviceIsFed) {
  Start();
  RunTo(10);
  m.screen.xS6 = true;
  const int blocks = Blocks();
  const auto start = QtHost::Clock::now();
  int frames = 0;
  host.atFrame = [&](Machine& running) {
    ++frames;
    if (QtHost::Clock::now() - start > std::chrono::milliseconds(600)) running.run.CpuRunning = 0;
  };
  CPUmon_Command1_Click(m);
  EXPECT_GT(frames, 200);  // thirty would be normal
  EXPECT_GE(Blocks() - blocks, 4);
  EXPECT_LE(Blocks() - blocks, 7);
}

TEST_F(SoundHost, StopHaltsAtTheNextBlockAndPlayGoesOn) {
  Start();
  int framesAtStop = 0, blocksAtStop = 0, framesWhileStopped = 0, blocksWhileStopped = 0, framesAfter = 0;
  After(400, [&] {
    PressButton("FDXF", "Cstop");
    framesAtStop = host.frames;
    blocksAtStop = Blocks();
  });
  After(1000, [&] {
    framesWhileStopped = host.frames;
    blocksWhileStopped = Blocks();
    EXPECT_EQ(m.mixer.FrameInBlock, kFramesPerBlock);  // it waits at the end of a block
    PressButton("FDXF", "cmdStartPlay");
  });
  After(1800, [&] {
    framesAfter = host.frames;
    window->close();
  });
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_GT(framesAtStop, 5);
  // The block that was begun, and one that had been asked for before.
  EXPECT_LE(framesWhileStopped, framesAtStop + 10);
  EXPECT_LE(blocksWhileStopped, blocksAtStop + 1);
  EXPECT_GT(framesAfter, framesWhileStopped + 20);
}

TEST_F(SoundHost, ClosingWhileItWaitsForAStoppedDevice) {
  Start();
  After(200, [this] { PressButton("FDXF", "Cstop"); });
  CloseAfter(700);
  const auto start = QtHost::Clock::now();
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_TRUE(host.ClosedByUser());
  EXPECT_LT(duration<double>(QtHost::Clock::now() - start).count(), 1.5);
}

TEST_F(SoundHost, ChoosingMaxDoesNotEndTheWait) {
  Start();
  After(200, [this] { PressButton("FDXF", "Cstop"); });
  After(600, [this] { window->Action("xS6")->trigger(); });
  int frames = 0;
  After(700, [&] { frames = host.frames; });
  CloseAfter(1000);
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_EQ(host.frames, frames);
  EXPECT_EQ(m.mixer.FrameInBlock, kFramesPerBlock);
}

TEST_F(SoundHost, TheDriverClosedUnderTheProgram) {
  Start();
  int framesAtLoss = 0, framesWhileLost = 0, framesAfter = 0;
  After(300, [&] {
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    framesAtLoss = host.frames;
  });
  After(900, [&] {
    framesWhileLost = host.frames;
    PressButton("FDXF", "cmdStartPlay");
  });
  After(1700, [&] {
    framesAfter = host.frames;
    window->close();
  });
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_LE(framesWhileLost, framesAtLoss + 10);
  EXPECT_GT(framesAfter, framesWhileLost + 20);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(SoundHost, AFailureAtTheStartIsToldAndTheMachineWaits) {
  qputenv("SDL_AUDIODRIVER", "nonsense");
  host.EnableTimer2(false);
  DXinit(m);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_TRUE(host.messages[0].starts_with("DirectSound Error|Error: 1\r\nDesription: "));
  EXPECT_TRUE(host.messages[0].ends_with("\r\nSource: SDL"));
  EXPECT_EQ(host.lastIcon, MessageIcon::Exclamation);
  int frames = 0;
  bool alive = false;
  After(300, [&] {
    frames = host.frames;
    window->Action("xScreenBW")->trigger();
    alive = m.screen.xScreenBW;
  });
  CloseAfter(600);
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_TRUE(alive);
  EXPECT_EQ(frames, 4);  // the fifth is not over before the output asks
  EXPECT_EQ(host.frames, 4);
}

TEST_F(SoundHost, ADeviceThatComesLaterTakesOver) {
  TellNoSoundDevice(m);
  RunTo(10);
  PressButton("FDXF", "cmdStartPlay");
  EXPECT_EQ(m.screen.Label1, "");
  RunTo(20);
  ExpectASecondTo(70);
}

TEST_F(SoundHost, WaitingCostsNoTime) {
  Start();
  After(200, [this] { PressButton("FDXF", "Cstop"); });
  clock_t stopped = 0, later = 0;
  After(700, [&] { stopped = clock(); });
  After(1700, [&] {
    later = clock();
    window->close();
  });
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  // A second of waiting.
  EXPECT_LT(static_cast<double>(later - stopped) / CLOCKS_PER_SEC, 0.1);
}

}  // namespace
}  // namespace quoll
