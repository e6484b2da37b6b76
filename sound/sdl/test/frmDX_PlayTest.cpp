// The sound device, on SDL's drivers that need no hardware.
#include <SDL.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "sound/sdl/frmDX_Play.h"
#include "testkit/Files.h"

namespace quoll {
namespace {

using test::Bytes;
constexpr SoundFormat kFormat{22050, 8, 2, 0, {}};
constexpr size_t kHalf = 4410;

struct DxPlay : testing::Test {
  test::TempFolder folder;
  uint8_t next = 1;  // the byte that fills the next block
  int served = 0;    // blocks given
  size_t given = 0;  // bytes of the last one

  DxPlay() { Driver("dummy"); }
  ~DxPlay() override { unsetenv("SDL_DISKAUDIOFILE"); }

  static void Driver(const char* name) { setenv("SDL_AUDIODRIVER", name, 1); }

  // Gives the device as many blocks, waiting for each; false when it does not ask within two seconds.
  bool Serve(frmDX_Play& form, int blocks) {
    for (const int last = served + blocks; served < last;) {
      pollfd waiting{form.wake, POLLIN, 0};
      if (poll(&waiting, 1, 2000) != 1) return false;
      uint64_t count = 0;
      if (read(form.wake, &count, sizeof count) != sizeof count) return false;
      ServeSound(form, [&](std::span<uint8_t> data) {
        std::ranges::fill(data, next++);
        given = data.size();
        ++served;
      });
    }
    return true;
  }
};

TEST_F(DxPlay, ADeviceOpens) {
  EXPECT_TRUE(SoundDeviceOpens());
  Driver("nonsense");
  EXPECT_FALSE(SoundDeviceOpens());
  Driver("dummy");
  EXPECT_TRUE(SoundDeviceOpens());
}

TEST_F(DxPlay, HalvesOf4410BytesOr100Milliseconds) {
  frmDX_Play form;
  ASSERT_EQ(Initialize(form, kFormat), "");
  EXPECT_EQ(form.HalfSize, kHalf);
  EXPECT_TRUE(SoundPlay(form));
  const auto start = PlayBuffer::Clock::now();
  ASSERT_TRUE(Serve(form, 6));
  const std::chrono::duration<double> passed = PlayBuffer::Clock::now() - start;
  EXPECT_EQ(given, kHalf);
  // The first half begins at once, the sixth after five more.
  EXPECT_GT(passed.count(), 0.45);
  EXPECT_LT(passed.count(), 0.9);
}

TEST_F(DxPlay, OtherHalfSizesAreWholeSamples) {
  frmDX_Play form;
  for (const auto& [wanted, expected] : {std::pair(1001, 1000), {1000, 1000}, {0, 4410}, {-5, 4410}}) {
    ASSERT_EQ(Initialize(form, {22050, 8, 2, wanted, {}}), "");
    EXPECT_EQ(form.HalfSize, static_cast<size_t>(expected));
  }
  ASSERT_EQ(Initialize(form, {22050, 16, 2, 1003, {}}), "");
  EXPECT_EQ(form.HalfSize, 1000U);
  EXPECT_NE(Initialize(form, {22050, 8, 2, 1, {}}), "");
}

TEST_F(DxPlay, ItDoesNotAskBeforeItPlaysNorWhenStopped) {
  frmDX_Play form;
  ASSERT_EQ(Initialize(form, kFormat), "");
  EXPECT_FALSE(Serve(form, 1));
  SoundPlay(form);
  EXPECT_TRUE(Serve(form, 2));
  SoundStop(form);
  // A request may have been on its way.
  SDL_Delay(250);
  ServeSound(form, [](std::span<uint8_t>) {});
  uint64_t count = 0;
  [[maybe_unused]] const ssize_t taken = read(form.wake, &count, sizeof count);
  EXPECT_FALSE(Serve(form, 1));
  SoundPlay(form);
  EXPECT_TRUE(Serve(form, 2));
}

TEST_F(DxPlay, InitializedAnewItPlaysOn) {
  frmDX_Play form;
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(Initialize(form, kFormat), "");
    SoundPlay(form);
    EXPECT_TRUE(Serve(form, 2)) << i;
  }
}

TEST_F(DxPlay, ErrorsHaveThreeLines) {
  frmDX_Play form;
  Driver("nonsense");
  const std::string error = Initialize(form, kFormat);
  EXPECT_EQ(error.substr(0, 7), "Error: ");
  const size_t second = error.find("\r\nDesription: ");
  const size_t third = error.find("\r\nSource: SDL");
  ASSERT_NE(second, std::string::npos);
  ASSERT_NE(third, std::string::npos);
  EXPECT_GT(third, second + 14);  // SDL says something
  EXPECT_EQ(third + 13, error.size());
  // Without a device all else does nothing.
  EXPECT_TRUE(SoundPlay(form));
  EXPECT_TRUE(SoundStop(form));
  EXPECT_EQ(ServeSound(form, [](std::span<uint8_t>) { FAIL(); }), 0);
  UninitializeSound(form);
  Driver("dummy");
  EXPECT_EQ(Initialize(form, kFormat), "");

  EXPECT_NE(Initialize(form, {22050, 12, 2, 0, {}}), "");
  EXPECT_NE(Initialize(form, {0, 8, 2, 0, {}}), "");
  EXPECT_NE(Initialize(form, {22050, 8, 3, 0, {}}), "");
}

TEST_F(DxPlay, TheDriverClosedUnderItOnlyStopsAsking) {
  frmDX_Play form;
  ASSERT_EQ(Initialize(form, kFormat), "");
  SoundPlay(form);
  EXPECT_TRUE(Serve(form, 2));
  SDL_QuitSubSystem(SDL_INIT_AUDIO);
  Serve(form, 2);  // what was on its way
  EXPECT_FALSE(Serve(form, 1));
  SoundStop(form);
  SoundPlay(form);
  ASSERT_EQ(Initialize(form, kFormat), "");
  SoundPlay(form);
  EXPECT_TRUE(Serve(form, 2));
}

TEST_F(DxPlay, TheDeviceGetsEachBlockOnce) {
  const std::string file = folder.Path("played");
  setenv("SDL_DISKAUDIOFILE", file.c_str(), 1);
  Driver("disk");
  {
    frmDX_Play form;
    ASSERT_EQ(Initialize(form, kFormat), "");
    SoundPlay(form);
    ASSERT_TRUE(Serve(form, 12));
    EXPECT_EQ(form.buffer.repeats.load(), 0U);
  }
  const Bytes played = test::ReadAll(file);
  // Silence while it was paused and for the first half; then blocks 1, 2, 3...
  size_t at = 0;
  while (at < played.size() && played[at] == 128) ++at;
  ASSERT_GE(played.size(), at + 10 * kHalf);
  EXPECT_GE(at, kHalf);
  for (size_t i = 0; i < 10 * kHalf; ++i) ASSERT_EQ(played[at + i], 1 + i / kHalf) << i;
}

}  // namespace
}  // namespace quoll
