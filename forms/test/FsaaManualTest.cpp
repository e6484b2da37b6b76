// The SAA1099's window: the controls of its manual mode, patches, pictures and scopes.
#include "forms/test/ChipBench.h"

namespace quoll::test {

namespace {

struct FsaaManualTest : ChipBench {
  Saa1099& saa = m.card.saa;

  FsaaManualTest() { Tick("Fsaa", "Check2"); }
};

TEST_F(FsaaManualTest, TheMachineWritesUnlessTheWindowPlays) {
  const Saa1099 before = saa;
  for (const int port : {0x32, 0x33, 0xFE, 0xFF}) {
    for (int value = 0; value < 256; ++value) Out(port, value);
  }
  EXPECT_TRUE(saa == before);
  Tick("Fsaa", "Check2", false);
  for (const auto& [addressPort, dataPort] :
       {std::pair{0x33, 0x32}, {0xFF, 0xFE}, {0x33, 0xFE}, {0xFF, 0x32}}) {
    saa.SAA_Amp = {};
    Out(addressPort, 3);
    Out(dataPort, 0x5A);
    EXPECT_EQ(saa.SAA_Amp[3], 0x0A);
    EXPECT_EQ(saa.SAA_Amp[9], 0x05);
  }
}

TEST_F(FsaaManualTest, NothingIsSentWithoutTheBox) {
  Tick("Fsaa", "Check2", false);
  Slide("Fsaa", "HScroll1", 9, 2);
  Tick("Fsaa", "Check8");
  const Saa1099 before = saa;
  RunTimer("Fsaa");
  EXPECT_TRUE(saa == before);
}

TEST_F(FsaaManualTest, EveryChannelsControls) {
  for (int c = 0; c < kSaaChannels; ++c) {
    SCOPED_TRACE(c);
    Tick("Fsaa", "Check1", true, c);
    Tick("Fsaa", "Check3", c % 2 == 0, c);
    Slide("Fsaa", "HScroll1", 3 + c, c);
    Slide("Fsaa", "HScroll2", 15 - c, c);
    Slide("Fsaa", "HScroll3", 40 * c + 7, c);
    Slide("Fsaa", "HScroll4", 7 - c, c);
    RunTimer("Fsaa");
    for (int other = 0; other < kSaaChannels; ++other) {
      const bool set = other <= c;
      EXPECT_EQ(saa.SAA_Enable[other].tone, set ? 1 : 0) << other;
      EXPECT_EQ(saa.SAA_Enable[other].noise, set && other % 2 == 0 ? 1 : 0) << other;
      EXPECT_EQ(saa.SAA_Amp[other], set ? 3 + other : 0) << other;
      EXPECT_EQ(saa.SAA_Amp[other + 6], set ? 15 - other : 0) << other;
      EXPECT_EQ(saa.SAA_Freq[other].frequency, set ? 40 * other + 7 : 0) << other;
      EXPECT_EQ(saa.SAA_Freq[other].octave, set ? 7 - other : 0) << other;
    }
    EXPECT_EQ(Text("Fsaa", "Label1", c), std::to_string(3 + c));
    EXPECT_EQ(Text("Fsaa", "Label2", c), std::to_string(15 - c));
    EXPECT_EQ(Text("Fsaa", "Label3", c), std::to_string(40 * c + 7));
    EXPECT_EQ(Text("Fsaa", "Label4", c), std::to_string(7 - c));
    EXPECT_EQ(Text("Fsaa", "Label6", c), c % 2 == 0 ? "tone+noise" : "tone");
  }
  EXPECT_EQ(Text("Fsaa", "Label5", 0), "3968");  // 15625 x 2^7 / (511 - 7) = 3968.25
}

TEST_F(FsaaManualTest, EveryEnvelopesControls) {
  for (int e = 0; e < 2; ++e) {
    for (int bits = 0; bits < 16; ++bits) {
      for (int mode = 0; mode < 8; ++mode) {
        Tick("Fsaa", "Check4", (bits & 1) != 0, e);
        Tick("Fsaa", "Check5", (bits & 2) != 0, e);
        Tick("Fsaa", "Check6", (bits & 4) != 0, e);
        Tick("Fsaa", "Check7", (bits & 8) != 0, e);
        Slide("Fsaa", "HScroll6", mode, e);
        RunTimer("Fsaa");
        const Saa1099::Envelope expected{.enable = static_cast<uint8_t>(bits >> 3 & 1),
                                         .invertRight = static_cast<uint8_t>(bits & 1),
                                         .externalClock = static_cast<uint8_t>(bits >> 2 & 1),
                                         .mode = static_cast<uint8_t>(mode),
                                         .threeBit = static_cast<uint8_t>(bits >> 1 & 1)};
        ASSERT_EQ(saa.SAA_Env[e], expected) << e << ' ' << bits << ' ' << mode;
      }
    }
    EXPECT_EQ(Text("Fsaa", "Label10", e), "on, inverse R, 3 bit, external");
  }
}

TEST_F(FsaaManualTest, SoundEnableAndReset) {
  RunTimer("Fsaa");
  EXPECT_EQ(saa.soundEnable, 0);
  EXPECT_EQ(Text("Fsaa", "Label12"), "off");
  Tick("Fsaa", "Check8");
  RunTimer("Fsaa");
  EXPECT_EQ(saa.soundEnable, 1);
  EXPECT_EQ(saa.resetRequest, 0);
  EXPECT_EQ(Text("Fsaa", "Label12"), "on");
  Slide("Fsaa", "HScroll1", 9, 0);
  Tick("Fsaa", "Check9");
  RunTimer("Fsaa");
  EXPECT_EQ(saa.resetRequest, 1);
  Frame();
  EXPECT_EQ(saa.resetRequest, 0);
  EXPECT_EQ(saa.SAA_Amp[0], 0);
}

TEST_F(FsaaManualTest, PatchesForceTones) {
  Tick("Fsaa", "Check2", false);
  for (int c = 0; c < 6; ++c) OutRegister(0x33, c, 0xFF);
  OutRegister(0x33, 28, 1);
  struct Case {
    const char* box;
    int channel;
  };
  for (const Case& patch : {Case{"Check11", 2}, Case{"Check12", 5}}) {
    OutRegister(0x33, 20, 0);
    Frame();
    EXPECT_EQ(saa.SAA_Enable[patch.channel].tone, 0);
    Tick("Fsaa", patch.box);
    Frame();
    for (int c = 0; c < 6; ++c) EXPECT_EQ(saa.SAA_Enable[c].tone, c == patch.channel ? 1 : 0) << c;
    Tick("Fsaa", patch.box, false);
    Frame();
    EXPECT_EQ(saa.SAA_Enable[patch.channel].tone, 1);  // until the next write
  }
}

TEST_F(FsaaManualTest, PicturesOfTheModesAreShownInEverySoundingFrame) {
  Tick("Fsaa", "Check2", false);
  constexpr const char* kPictures[] = {"_________",  "---------",     "\\________", "\\|\\|\\|\\|\\",
                                       "/\\_______", "/\\/\\/\\/\\/", "/|_______",  "/|/|/|/|/"};
  OutRegister(0x33, 24, 1 << 1);
  Frame();
  EXPECT_EQ(Text("Fsaa", "Label8"), "");  // no level: the frame is not rendered
  OutRegister(0x33, 0, 1);
  for (int mode = 0; mode < 8; ++mode) {
    OutRegister(0x33, 24, mode << 1);
    OutRegister(0x33, 25, (7 - mode) << 1);
    Frame();
    EXPECT_EQ(Text("Fsaa", "Label8"), kPictures[mode]);
    EXPECT_EQ(Text("Fsaa", "Label9"), kPictures[7 - mode]);
  }
}

TEST_F(FsaaManualTest, ScopesShowTheRightSide) {
  Tick("Fsaa", "Check2", false);
  OutRegister(0x33, 4, 0xF0);  // right alone
  OutRegister(0x33, 3, 0x0F);  // left alone
  OutRegister(0x33, 17, 0x50);
  OutRegister(0x33, 18, 0x05);
  OutRegister(0x33, 20, 0x18);
  OutRegister(0x33, 28, 1);
  Block();
  // 255 / 30 x 15 = 127.5, to even 128; a tenth of it is 13.
  for (int i = 0; i <= 220; ++i)
    ASSERT_EQ(Scope("Fsaa", "Pic1", 4).y[static_cast<size_t>(i)], saa.SaaRight[4][i] != 0 ? 45 : 32) << i;
  EXPECT_EQ(Scope("Fsaa", "Pic1", 3).y, std::vector<float>(221, 32));
}

}  // namespace

}  // namespace quoll::test
