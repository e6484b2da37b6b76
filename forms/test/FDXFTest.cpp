// The sound output's form: its handler, its buttons, its oscilloscope.
#include <gtest/gtest.h>

#include <vector>

#include "forms/FDXF.h"
#include "forms/Forms.h"
#include "machine/Machine.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

using Calls = std::vector<std::string>;

struct Fdxf : testing::Test {
  TestMachine machine;
  TestHost& host = machine.host;
  Machine& m = *machine;

  void Press(const char* name) { quoll::Press(m, TheControl("FDXF", name)); }
};

TEST_F(Fdxf, TheHandlerGivesTheBlockAndLetsTheMachineGoOn) {
  for (int i = 0; i < 4410; ++i) m.mixer.BlockBuffer[static_cast<size_t>(i)] = static_cast<uint8_t>(i * 7);
  const auto block = m.mixer.BlockBuffer;
  std::vector<uint8_t> data(4410);
  EXPECT_EQ(m.mixer.NeedData, 0);
  DirectSoundPlay_NeedWavData(m, data);
  EXPECT_EQ(m.mixer.NeedData, 1);
  EXPECT_EQ(data, std::vector<uint8_t>(block.begin(), block.end()));
  EXPECT_EQ(m.mixer.BlockBuffer, block);
  EXPECT_EQ(m.fdxf.TextR, "1");
  DirectSoundPlay_NeedWavData(m, data);
  EXPECT_EQ(m.fdxf.TextR, "2");
  EXPECT_EQ(m.fdxf.PL.drawings, 0U);
}

TEST_F(Fdxf, ItGivesNoMoreThanThereIsRoomForOrABlockHas) {
  m.mixer.BlockBuffer.fill(5);
  std::vector<uint8_t> data(5000, 9);
  DirectSoundPlay_NeedWavData(m, data);
  EXPECT_EQ(data[4409], 5);
  EXPECT_EQ(data[4410], 9);
  DirectSoundPlay_NeedWavData(m, {data.data(), 0});
  EXPECT_EQ(m.fdxf.TextR, "2");
}

TEST_F(Fdxf, ForcedItWorksOnTheBlockItself) {
  m.mixer.BlockBuffer.fill(77);
  const auto block = m.mixer.BlockBuffer;
  ForceNeedWavData(m);
  EXPECT_EQ(m.mixer.NeedData, 1);
  EXPECT_EQ(m.mixer.BlockBuffer, block);
  EXPECT_EQ(m.fdxf.TextR, "1");
}

TEST_F(Fdxf, TheCounterGoesOnFromWhatItShows) {
  for (const auto& [shown, next] :
       {std::pair("41", "42"), {"", "1"}, {"x", "1"}, {"-3", "-2"}, {"2147483647", "2147483648"}}) {
    m.fdxf.TextR = shown;
    ForceNeedWavData(m);
    EXPECT_EQ(m.fdxf.TextR, next);
  }
}

TEST_F(Fdxf, TheOscilloscopeShowsWhatIsDelivered) {
  m.fdxf.Check7 = true;
  m.mixer.BlockBuffer.fill(200);
  ForceNeedWavData(m);
  EXPECT_EQ(m.fdxf.PL.drawings, 1U);
  EXPECT_EQ(m.fdxf.PR.drawings, 1U);
  EXPECT_EQ(m.fdxf.PL.y, std::vector<float>(2205, 12.0F));
  EXPECT_EQ(m.fdxf.PR.y, std::vector<float>(2205, 12.0F));
  m.fdxf.Check7 = false;
  m.mixer.BlockBuffer.fill(100);
  ForceNeedWavData(m);
  EXPECT_EQ(m.fdxf.PL.drawings, 1U);
  EXPECT_EQ(m.fdxf.PL.y[0], 12.0F);  // it stands
}

TEST_F(Fdxf, PointsOfTheOscilloscope) {
  m.fdxf.Check7 = true;
  m.mixer.BlockBuffer.fill(0);
  m.mixer.BlockBuffer[10] = 128;
  m.mixer.BlockBuffer[4408] = 255;
  m.mixer.BlockBuffer[13] = 4;
  ForceNeedWavData(m);
  const Trace& left = m.fdxf.PL;
  const Trace& right = m.fdxf.PR;
  EXPECT_FLOAT_EQ(left.step * 5, 0.5F);
  EXPECT_FLOAT_EQ(left.step * 2204, 220.4F);
  EXPECT_EQ(right.step, left.step);
  ASSERT_EQ(left.y.size(), 2205U);
  ASSERT_EQ(right.y.size(), 2205U);
  EXPECT_EQ(left.y[0], 62.0F);
  EXPECT_EQ(left.y[5], 30.0F);
  EXPECT_EQ(left.y[2204], -1.75F);
  EXPECT_EQ(right.y[6], 61.0F);
  EXPECT_EQ(right.y[5], 62.0F);
}

TEST_F(Fdxf, PlayInitializesAndPlays) {
  Press("cmdStartPlay");
  EXPECT_EQ(host.events, (Calls{"InitializeSound", "SoundPlay"}));
  EXPECT_EQ(host.format.SamplesPerSec, 22050);
  EXPECT_EQ(host.format.BitsPerSample, 8);
  EXPECT_EQ(host.format.Channels, 2);
  EXPECT_EQ(host.format.HalfBufferSize, 0);
  EXPECT_EQ(host.format.DeviceGuid, "");
  Press("Cstop");
  EXPECT_EQ(host.events.back(), "SoundStop");
}

TEST_F(Fdxf, AFailureIsTold) {
  host.soundError = "Error: 1\r\nDesription: none\r\nSource: test";
  DXinit(m);
  EXPECT_EQ(host.events, Calls{"InitializeSound"});
  EXPECT_EQ(
      host.messages,
      (std::vector<TestHost::Message>{{host.soundError, "DirectSound Error", MessageIcon::Exclamation}}));
}

TEST_F(Fdxf, AMissingDeviceIsSaidUntilOneHasCome) {
  TellNoSoundDevice(m);
  EXPECT_EQ(m.screen.Label1, "No sound device: Timer2");
  host.soundError = "x";
  Press("cmdStartPlay");
  EXPECT_EQ(m.screen.Label1, "No sound device: Timer2");
  host.soundError.clear();
  Press("cmdStartPlay");
  EXPECT_EQ(m.screen.Label1, "");
  m.screen.Label1 = "Unknown Opcode!";
  Press("cmdStartPlay");
  EXPECT_EQ(m.screen.Label1, "Unknown Opcode!");
}

}  // namespace
}  // namespace quoll::test
