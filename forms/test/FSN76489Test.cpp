// The SN76489's window: sliders that play, scopes and what the labels say.
#include "forms/test/ChipBench.h"

namespace quoll::test {

namespace {

struct FSN76489Test : ChipBench {
  Sn76489& sn = m.card.sn;
};

TEST_F(FSN76489Test, TheMachineWritesUnlessTheWindowPlays) {
  Out(0x30, 0x83);
  Out(0xFD, 0x25);
  EXPECT_EQ(sn.SN_Reg[1], 3);
  EXPECT_EQ(sn.SN_Reg[0], 0x25);
  Tick("FSN76489", "Check3");
  const Sn76489 before = sn;
  for (int value = 0; value < 256; ++value) {
    Out(0x30, value);
    Out(0xFD, value);
  }
  EXPECT_TRUE(sn == before);
  Tick("FSN76489", "Check3", false);
  Out(0x30, 0x8A);
  EXPECT_EQ(sn.SN_Reg[1], 10);
}

TEST_F(FSN76489Test, SlidersPlayInManualModeOnly) {
  Slide("FSN76489", "HScroll3", 1024 - 0x2A5, 1);
  Slide("FSN76489", "HScroll4", 3, 1);
  const Sn76489 before = sn;
  RunTimer("FSN76489");
  EXPECT_TRUE(sn == before);
  Tick("FSN76489", "Check3");
  EXPECT_TRUE(sn == before);  // the timer plays
  RunTimer("FSN76489");
  // 0x2A5: its upper four bits go out as the low byte, the six others as the data byte.
  EXPECT_EQ(sn.SN_Reg[4], 0x2A5 >> 6);
  EXPECT_EQ(sn.SN_Reg[3], 0x25);
  EXPECT_EQ(SnAttenuation(sn, 1), 3);
  EXPECT_EQ(SnAttenuation(sn, 0), 15);
  EXPECT_EQ(SnAttenuation(sn, 2), 15);
  EXPECT_EQ(SnAttenuation(sn, 3), 15);
}

TEST_F(FSN76489Test, EverySliderReachesItsChannel) {
  Tick("FSN76489", "Check3");
  for (int tone = 0; tone < 3; ++tone) {
    for (int value = 0; value <= 1023; value += 31) {
      Slide("FSN76489", "HScroll3", value, tone);
      RunTimer("FSN76489");
      const int period = 1024 - value;
      ASSERT_EQ(sn.SN_Reg[3 * tone + 1], (period >> 6) & 15) << value;
      ASSERT_EQ(sn.SN_Reg[3 * tone], period & 63) << value;
      ASSERT_EQ(Text("FSN76489", "Label6", tone), std::to_string(3579545 / period / 32));
    }
  }
  for (int channel = 0; channel < 4; ++channel) {
    for (int value = 0; value <= 15; ++value) {
      Slide("FSN76489", "HScroll4", value, channel);
      RunTimer("FSN76489");
      ASSERT_EQ(SnAttenuation(sn, channel), value);
    }
  }
}

TEST_F(FSN76489Test, ThePeriodicBoxIsTheFeedbackBit) {
  Out(0x30, 0xE2);
  Tick("FSN76489", "Check3");
  RunTimer("FSN76489");
  EXPECT_TRUE(SnNoiseIsWhite(sn));
  EXPECT_EQ(sn.SN_Reg[9], 2);  // the rate stays
  Tick("FSN76489", "Check2");
  RunTimer("FSN76489");
  EXPECT_FALSE(SnNoiseIsWhite(sn));
  EXPECT_EQ(sn.SN_Reg[9], 2);
}

TEST_F(FSN76489Test, HertzOfTheSliders) {
  EXPECT_EQ(Text("FSN76489", "Label6", 0), "109");  // 3579545 / 1024 / 32
  Slide("FSN76489", "HScroll3", 1023, 0);
  EXPECT_EQ(Text("FSN76489", "Label6", 0), "111860");
  Slide("FSN76489", "HScroll3", 770, 2);  // period 254
  EXPECT_EQ(Text("FSN76489", "Label6", 2), "440");
  EXPECT_EQ(Text("FSN76489", "Label6", 1), "109");
}

TEST_F(FSN76489Test, LabelsSayWhatTheChipPlays) {
  for (const int value : {0x8E, 0x0F, 0x94, 0xE3, 0xF7, 0xC0, 0x02}) Out(0x30, value);
  RunTimer("FSN76489");
  EXPECT_EQ(Text("FSN76489", "Label1", 0), "440");  // period 254
  EXPECT_EQ(Text("FSN76489", "Label2", 0), "254");
  EXPECT_EQ(Text("FSN76489", "Label3", 0), "4");
  EXPECT_EQ(Text("FSN76489", "Label2", 3), "128");  // the third tone's high part times 64
  EXPECT_EQ(Text("FSN76489", "Label3", 3), "7");
  EXPECT_EQ(Text("FSN76489", "Label4"), "periodic, rate 3");
  Out(0x30, 0xE4);
  RunTimer("FSN76489");
  EXPECT_EQ(Text("FSN76489", "Label4"), "white, rate 0");
}

TEST_F(FSN76489Test, TheScopeIsDrawnInTheBlocksLastFrame) {
  for (const int value : {0x8E, 0x0F, 0x92}) Out(0x30, value);
  for (int frame = 0; frame < 4; ++frame) Frame();
  EXPECT_EQ(Scope("FSN76489", "Pic1").drawings, 0U);
  Frame();
  const Trace& scope = Scope("FSN76489", "Pic1");
  EXPECT_EQ(scope.drawings, 1U);
  for (int i = 0; i <= 220; ++i) {
    // 260 / 20 above and below 32.
    ASSERT_EQ(scope.y[static_cast<size_t>(i)], sn.voices[i][0] > 0 ? 45 : 19) << i;
  }
  EXPECT_EQ(Scope("FSN76489", "Pic1", 1).y, std::vector<float>(221, 32));
}

}  // namespace

}  // namespace quoll::test
