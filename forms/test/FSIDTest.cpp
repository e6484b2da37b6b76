// The SID's window: what its boxes do to the chip, poke, sweep, labels and scopes.
#include "forms/test/ChipBench.h"

namespace quoll::test {

namespace {

constexpr const char* kForm = "FSID";

struct FSIDTest : ChipBench {
  Sid6581& sid = m.card.sid;

  void Reg(int reg, int value) { OutRegister(0x38, reg, value); }
  void Type(const char* box, const char* text) { SetText(m, TheControl(kForm, box), text); }
  // Voice 0 to 2 as a saw, attack at once, held.
  void Play(int voice, int control = 0x21) {
    Reg(7 * voice + 1, 20);
    Reg(7 * voice + 6, 0xF0);
    Reg(7 * voice + 4, control);
    Reg(24, 15);
  }
};

TEST_F(FSIDTest, TheWindowsControlsAreTheChips) {
  const SidControls start = ChipControls(m.fsid);
  EXPECT_EQ(start, SidControls{});
  struct Box {
    const char* name;
    bool SidControls::*field;
  };
  for (const Box& box : {Box{"Check1", &SidControls::Check1}, Box{"Check2", &SidControls::Check2},
                         Box{"Check3", &SidControls::Check3}, Box{"Check4", &SidControls::Check4},
                         Box{"Check5", &SidControls::Check5}, Box{"Check6", &SidControls::Check6},
                         Box{"Check7", &SidControls::Check7}, Box{"Check10", &SidControls::Check10}}) {
    SidControls expected = start;
    expected.*box.field = !(start.*box.field);
    Tick(kForm, box.name, expected.*box.field);
    EXPECT_EQ(ChipControls(m.fsid), expected) << box.name;
    Tick(kForm, box.name, start.*box.field);
  }
  struct Slider {
    const char* name;
    int32_t SidControls::*field;
  };
  for (const Slider& slider :
       {Slider{"HScroll1", &SidControls::HScroll1}, Slider{"HScroll2", &SidControls::HScroll2},
        Slider{"HScroll3", &SidControls::HScroll3}, Slider{"HScroll4", &SidControls::HScroll4},
        Slider{"HScroll5", &SidControls::HScroll5}}) {
    SidControls expected = start;
    expected.*slider.field = 77;
    Slide(kForm, slider.name, 77);
    EXPECT_EQ(ChipControls(m.fsid), expected) << slider.name;
    Slide(kForm, slider.name, start.*slider.field);
  }
  for (int voice = 0; voice < 3; ++voice) {
    SidControls expected = start;
    expected.Check9[voice] = false;
    Tick(kForm, "Check9", false, voice);
    EXPECT_EQ(ChipControls(m.fsid), expected) << voice;
    Tick(kForm, "Check9", true, voice);
  }
  struct Case {
    const char* text;
    int32_t repeats;
  };
  for (const Case& each : {Case{"4", 4}, Case{"", 0}, Case{"-1", -1}, Case{"x", 0}}) {
    Type("Text1", each.text);
    EXPECT_EQ(ChipControls(m.fsid).Text1, each.repeats) << each.text;
  }
}

TEST_F(FSIDTest, NumbersBesideTheSliders) {
  EXPECT_EQ(m.fsid.Label1, (std::array<std::string, 3>{"50", "50", "50"}));
  EXPECT_EQ(m.fsid.Label2, (std::array<std::string, 2>{"440", "440"}));
  Slide(kForm, "HScroll1", 1);
  Slide(kForm, "HScroll2", 22);
  Slide(kForm, "HScroll3", 100);
  Slide(kForm, "HScroll4", 333);
  Slide(kForm, "HScroll5", 1200);
  EXPECT_EQ(m.fsid.Label1, (std::array<std::string, 3>{"1", "22", "100"}));
  EXPECT_EQ(m.fsid.Label2, (std::array<std::string, 2>{"333", "1200"}));
}

TEST_F(FSIDTest, BoxesShutVoicesOff) {
  Play(0);
  Frame();
  EXPECT_NE(sid.SidOut, FrameSamples{});
  Tick(kForm, "Check9", false, 0);
  Frame();
  EXPECT_EQ(sid.SidOut, FrameSamples{});
}

TEST_F(FSIDTest, PokeGoesThroughThePorts) {
  struct Case {
    const char* address;
    const char* value;
    int latch;
    int reg;  // -1: none
    int stored;
  };
  for (const Case& each :
       {Case{"54272", "17", 0, 0, 17}, Case{"54296", "15", 24, 24, 15}, Case{"54300", "255", 28, 28, 255},
        Case{"54301", "9", 29, -1, 0}, Case{"54273", "258", 1, 1, 2}, Case{"54271", "9", 255, -1, 0},
        Case{"", "9", 0, 0, 9},  // 54272 is 212 times 256
        Case{"-2147483647", "3", 1, 1, 3}, Case{"54275", "", 3, 3, 0}}) {
    SCOPED_TRACE(each.address);
    sid.SID_Reg.fill(1);
    Type("Text2", each.address);
    Type("Text3", each.value);
    Press(kForm, "Command1");
    EXPECT_EQ(sid.latch, each.latch);
    auto expected = sid.SID_Reg;
    expected.fill(1);
    if (each.reg >= 0) expected[each.reg] = each.stored;
    EXPECT_EQ(sid.SID_Reg, expected);
  }
}

TEST_F(FSIDTest, TheSweepIsDrawn) {
  Tick(kForm, "Check4");
  Tick(kForm, "Check6", false);  // no gate has risen
  Reg(24, 15);
  const Trace& picture = Scope(kForm, "PIC2");
  float hertz = 50;
  for (int frame = 0; frame < 100; ++frame) {
    Frame();
    hertz = static_cast<float>(hertz * 1.05);
    ASSERT_EQ(sid.SidTestFreq, hertz);
    ASSERT_EQ(Text(kForm, "Label15"), std::to_string(static_cast<int>(hertz)));
    ASSERT_EQ(picture.y.size(), frame + 1U);
    ASSERT_EQ(picture.drawings, frame + 1U);
    ASSERT_EQ(picture.X(picture.x.size() - 1), hertz / 12);
    ASSERT_FLOAT_EQ(picture.y.back(), 256.0F - static_cast<float>(SidMean(sid)) - 4.0F);
  }
  EXPECT_LT(picture.y.back(), 100);
}

TEST_F(FSIDTest, TheSweepsPictureIsClearedWhenItBeginsAnew) {
  Tick(kForm, "Check4");
  Reg(24, 15);
  sid.SidTestFreq = 10400;
  Frame();
  EXPECT_EQ(m.fsid.PIC2.y.size(), 1U);
  Frame();  // 11466 is too much
  ASSERT_EQ(m.fsid.PIC2.y.size(), 1U);
  EXPECT_EQ(m.fsid.PIC2.x[0], 50.0F / 12);
  EXPECT_EQ(Text(kForm, "Label15"), "50");
}

TEST_F(FSIDTest, AStandingSweepMovesItsPointOnly) {
  Tick(kForm, "Check4");
  Tick(kForm, "Check5");
  Reg(24, 15);
  for (int frame = 0; frame < 1000; ++frame) Frame();
  ASSERT_EQ(m.fsid.PIC2.y.size(), 1U);
  EXPECT_EQ(m.fsid.PIC2.x[0], 440.0F / 12);
  EXPECT_EQ(Text(kForm, "Label15"), "440");
  // However the box is played with, the picture does not grow for ever.
  for (int frame = 0; frame < 2000; ++frame) {
    Tick(kForm, "Check5", frame % 2 == 0);
    Frame();
  }
  EXPECT_LE(m.fsid.PIC2.y.size(), 512U);
  EXPECT_EQ(m.fsid.PIC2.x.size(), m.fsid.PIC2.y.size());
}

TEST_F(FSIDTest, WithoutTheWobblerTheFrequencysLabelStays) {
  Play(0);
  Frame();
  EXPECT_EQ(Text(kForm, "Label15"), "");
  EXPECT_EQ(m.fsid.PIC2.x, std::vector<float>{0});
}

TEST_F(FSIDTest, TheCutoffInForceIsShown) {
  Play(0);
  Reg(22, 0xFF);
  Reg(21, 7);
  Reg(23, 1);
  Frame();
  EXPECT_EQ(m.fsid.HScroll6, (Scroll{0, 0, 100}));  // no low pass has run
  Reg(24, 0x1F);
  Frame();
  EXPECT_EQ(m.fsid.HScroll6.value, 20);  // 2047 / 22000, not below a fifth
  EXPECT_EQ(Text(kForm, "Label16"), "20");
  RunTimer(kForm);
  EXPECT_EQ(Text(kForm, "Label17"), "2047");
  EXPECT_EQ(Text(kForm, "Label8"), "low 1");
}

TEST_F(FSIDTest, HighestAndLowestSample) {
  Play(0);
  int highest = 0, lowest = 0;
  for (int frame = 0; frame < 10; ++frame) {
    Frame();
    highest = std::max<int>(highest, std::ranges::max(sid.SidOut));
    lowest = std::min<int>(lowest, std::ranges::min(sid.SidOut));
    EXPECT_EQ(Text(kForm, "Label25"), std::to_string(highest));
    EXPECT_EQ(Text(kForm, "Label26"), std::to_string(lowest));
  }
  EXPECT_GT(highest, 100);
  EXPECT_LT(lowest, -100);
  Press(kForm, "Label26");
  EXPECT_EQ(Text(kForm, "Label26"), std::to_string(lowest));
  Press(kForm, "Label25");
  EXPECT_EQ(Text(kForm, "Label25"), "0");
  EXPECT_EQ(Text(kForm, "Label26"), "0");
}

TEST_F(FSIDTest, LabelsTellTheRegisters) {
  for (int reg = 0; reg < 29; ++reg) Reg(reg, 7 * reg + 2);
  RunTimer(kForm);
  for (int reg = 0; reg < 29; ++reg) EXPECT_EQ(Text(kForm, "Label3", reg), std::to_string(7 * reg + 2));
  Reg(7, 0x31);
  Reg(8, 0x1D);
  Reg(9, 0x34);
  Reg(10, 0xF2);
  Reg(11, 0x41);
  Reg(12, 0x0A);
  Reg(13, 0xF5);
  Reg(23, 0xF5);
  Reg(24, 0x5F);
  RunTimer(kForm);
  EXPECT_EQ(Text(kForm, "Label4", 1), "432");  // 0x1D31 = 7473; / 8.66 = 862.9, so 863; heard at 431.5
  EXPECT_EQ(Text(kForm, "Label5", 1), "pulse");
  EXPECT_EQ(Text(kForm, "Label6", 1), "0 10 15 5");
  EXPECT_EQ(Text(kForm, "Label7", 1), "564");  // 0x234
  EXPECT_EQ(Text(kForm, "Label8"), "low+high 1 3");
  struct Case {
    int control;
    const char* wave;
  };
  for (const Case& each : {Case{0x0F, "none"}, Case{0x10, "triangle"}, Case{0x30, "saw"}, Case{0x70, "pulse"},
                           Case{0xF0, "noise"}}) {
    Reg(4, each.control);
    RunTimer(kForm);
    EXPECT_EQ(Text(kForm, "Label5", 0), each.wave);
  }
}

TEST_F(FSIDTest, ScopesShowEachFrame) {
  Play(0);
  Play(2, 0x11);
  for (uint32_t frame = 1; frame <= 7; ++frame) {
    Frame();
    for (const int voice : {0, 1, 2}) {
      const Trace& scope = Scope(kForm, "Pic1", voice);
      ASSERT_EQ(scope.drawings, frame);
      for (int i = 0; i <= 220; ++i)
        ASSERT_EQ(scope.y[static_cast<size_t>(i)], 32 - 28 * sid.SidVoiceOut[voice][i]) << i;
    }
  }
}

}  // namespace

}  // namespace quoll::test
