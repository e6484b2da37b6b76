// The YM2413's window: its grid, the channels' boxes and labels, the scopes.
#include "forms/test/ChipBench.h"

namespace quoll::test {

namespace {

constexpr const char* kForm = "FYM2413";

struct FYM2413Test : ChipBench {
  Ym2413& opll = m.card.opll;

  void Play(int channel, int volume) {
    OutRegister(0x3C, 0x10 + channel, 0x20);
    OutRegister(0x3C, 0x20 + channel, 0x1B);
    OutRegister(0x3C, 0x30 + channel, volume);
  }
};

TEST_F(FYM2413Test, TheGridFollowsTheRegisters) {
  for (int reg = 0; reg < 64; ++reg) OutRegister(0x3C, reg, 255 - 3 * reg);
  EXPECT_EQ(Text(kForm, "Label1", 9), "");
  RunTimer(kForm);
  for (int reg = 0; reg < 64; ++reg) EXPECT_EQ(Text(kForm, "Label1", reg), std::to_string(255 - 3 * reg));
}

TEST_F(FYM2413Test, AClickShowsARegisterInHexadecimalAndBack) {
  OutRegister(0x3C, 7, 0xA5);
  OutRegister(0x3C, 8, 0x0B);
  RunTimer(kForm);
  Press(kForm, "Label1", 7);
  Press(kForm, "Label1", 8);
  EXPECT_EQ(Text(kForm, "Label1", 7), "A5");
  EXPECT_EQ(Text(kForm, "Label1", 8), "0B");
  OutRegister(0x3C, 7, 0x3C);
  RunTimer(kForm);
  EXPECT_EQ(Text(kForm, "Label1", 7), "3C");
  Press(kForm, "Label1", 7);
  EXPECT_EQ(Text(kForm, "Label1", 7), "60");
  EXPECT_EQ(Text(kForm, "Label1", 8), "0B");
  EXPECT_EQ(Text(kForm, "Label1", 6), "0");
}

TEST_F(FYM2413Test, LabelsSayWhatTheChannelsPlay) {
  constexpr const char* kNames[] = {"original", "violin",    "guitar",   "piano",      "flute", "clarinet",
                                    "oboe",     "trumpet",   "organ",    "horn",       "shynt", "harp",
                                    "vibra",    "synt bass", "acu bass", "elec guitar"};
  for (int c = 0; c < 9; ++c) {
    for (int instrument = 0; instrument < 16; ++instrument) {
      OutRegister(0x3C, 0x30 + c, instrument << 4 | c);
      RunTimer(kForm);
      ASSERT_EQ(Text(kForm, "Label2", c), kNames[instrument]);
      ASSERT_EQ(Text(kForm, "Label4", c), std::to_string(c));
    }
  }
  OutRegister(0x3C, 0x14, 0x20);
  OutRegister(0x3C, 0x24, 0x1B);  // key, block 5, 0x120 = 288
  RunTimer(kForm);
  EXPECT_EQ(Text(kForm, "Label3", 4), "866");  // 288 x 32 / 21.276595 = 433.15, heard at twice that
  EXPECT_EQ(Text(kForm, "Label5", 4), "on");
  EXPECT_EQ(Text(kForm, "Label5", 5), "off");
}

TEST_F(FYM2413Test, BoxesShutChannelsOff) {
  for (int c = 0; c < 9; ++c) {
    opll = Ym2413{};
    Play(c, 9);
    Frame();
    EXPECT_NE(opll.Ym2413Out, FrameSamples{}) << c;
    Tick(kForm, "Check7", false, c);
    Frame();
    EXPECT_EQ(opll.Ym2413Out, FrameSamples{}) << c;
    Tick(kForm, "Check7", true, c);
  }
}

TEST_F(FYM2413Test, ScopesShowTheChannels) {
  Play(2, 15);
  Play(6, 3);
  for (int frame = 0; frame < 4; ++frame) Frame();
  EXPECT_EQ(Scope(kForm, "Pic1", 2).drawings, 0U);
  Frame();
  for (const int c : {2, 6, 7}) {
    for (int i = 0; i <= 220; ++i)
      ASSERT_FLOAT_EQ(Scope(kForm, "Pic1", c).y[static_cast<size_t>(i)],
                      32.0F - 28.0F * static_cast<float>(opll.work[c][i]) / 15.0F);
  }
}

}  // namespace

}  // namespace quoll::test
