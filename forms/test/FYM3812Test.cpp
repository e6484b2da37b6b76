// The YM3812's window: its grid, the operator that is edited, the channels' boxes, direct output and scopes.
#include "forms/test/ChipBench.h"

namespace quoll::test {

namespace {

constexpr const char* kForm = "FYM3812";

struct FYM3812Test : ChipBench {
  Ym3812& opl = m.card.opl;

  void Type(const char* box, const char* text) { SetText(m, TheControl(kForm, box), text); }
  // A channel that sounds: its frequency about 190 Hz, both operators at full level.
  void Play(int channel) {
    OutRegister(0x34, 0xA0 + channel, 0xF0);
    OutRegister(0x34, 0xB0 + channel, 0x20 | 4 << 2);
    for (const int offset : {kOplModulatorOffset[channel], kOplCarrierOffset[channel]})
      OutRegister(0x34, 0x20 + offset, 1);
  }
};

TEST_F(FYM3812Test, TheGridFollowsTheRegisters) {
  for (int reg = 0; reg < 256; ++reg) OutRegister(0x34, reg, (reg * 37 + 5) & 0xFF);
  EXPECT_EQ(Text(kForm, "Label1", 3), "");
  RunTimer(kForm);
  for (int reg = 0; reg < 246; ++reg)
    ASSERT_EQ(Text(kForm, "Label1", reg), std::to_string((reg * 37 + 5) & 0xFF)) << reg;
}

TEST_F(FYM3812Test, AClickedRegisterIsNamedAndCanBeTyped) {
  OutRegister(0x34, 0x43, 77);
  Press(kForm, "Label1", 0x43);
  EXPECT_EQ(Text(kForm, "Text1"), "77");
  EXPECT_EQ(Text(kForm, "Label2"), "Register 67: scaling and level, channel 1 carrier");
  Type("Text1", "&H1F");
  EXPECT_EQ(opl.OPL_Reg[0x43], 77);  // Enter writes
  RunTimer(kForm);
  EXPECT_EQ(Text(kForm, "Text1"), "&H1F");  // what is being typed stays
  PressEnter(m, TheControl(kForm, "Text1"));
  EXPECT_EQ(opl.OPL_Reg[0x43], 0x1F);
  EXPECT_EQ(Text(kForm, "Label1", 0x43), "31");
  OutRegister(0x34, 0x43, 5);
  RunTimer(kForm);
  EXPECT_EQ(Text(kForm, "Text1"), "5");  // until the register changes
}

struct Place {
  int control;
  int reg;  // of channel 5's modulator (operator 9) or its carrier (operator 12), or of the channel
  int carrierReg;
  int shift;
  int last;
};

constexpr Place kSettings[] = {
    {0, 0x29, 0x2C, 0, 15}, {1, 0x49, 0x4C, 0, 63}, {2, 0x69, 0x6C, 4, 15}, {3, 0x69, 0x6C, 0, 15},
    {4, 0x89, 0x8C, 4, 15}, {5, 0x89, 0x8C, 0, 15}, {6, 0xE9, 0xEC, 0, 3},  {7, 0xC4, 0xC4, 1, 7},
};
constexpr Place kSwitches[] = {
    {0, 0x29, 0x2C, 4, 1}, {1, 0x29, 0x2C, 7, 1}, {2, 0x29, 0x2C, 6, 1}, {3, 0xBD, 0xBD, 5, 1}};

TEST_F(FYM3812Test, SlidersEditTheOperator) {
  Slide(kForm, "HScroll2", 5);
  for (const bool carrier : {false, true}) {
    Tick(kForm, "Option1", true, carrier ? 1 : 0);
    for (const Place& place : kSettings) {
      const int reg = carrier ? place.carrierReg : place.reg;
      for (const int others : {0x00, 0xFF}) {
        for (int value = 0; value <= place.last; ++value) {
          OutRegister(0x34, reg, others);
          OutRegister(0x34, 1, 0x40);
          const auto before = opl.OPL_Reg;
          Slide(kForm, "HScroll1", value, place.control);
          auto expected = before;
          expected[reg] =
              static_cast<uint8_t>((others & ~(place.last << place.shift)) | value << place.shift);
          if (place.control == 6) expected[1] = 0x60;  // else the wave would not be heard
          ASSERT_EQ(opl.OPL_Reg, expected) << place.control << ' ' << value;
          ASSERT_EQ(Text(kForm, "Label3", place.control), std::to_string(value));
        }
      }
    }
  }
}

TEST_F(FYM3812Test, BoxesEditTheOperator) {
  Slide(kForm, "HScroll2", 5);
  for (const bool carrier : {false, true}) {
    Tick(kForm, "Option1", true, carrier ? 1 : 0);
    for (const Place& place : kSwitches) {
      const int reg = carrier ? place.carrierReg : place.reg;
      for (const int others : {0x00, 0xFF}) {
        OutRegister(0x34, reg, others);
        for (const bool on : {true, false}) {
          Tick(kForm, "Check2", on, place.control);
          ASSERT_EQ(opl.OPL_Reg[reg], (others & ~(1 << place.shift)) | (on ? 1 << place.shift : 0));
        }
      }
    }
  }
}

TEST_F(FYM3812Test, SlidersFollowTheRegistersAndTheChoice) {
  OutRegister(0x34, 0x33, 0x97);  // channel 7's carrier: tremolo, KSR, multiplier 7
  OutRegister(0x34, 0x30, 0x43);  // its modulator: vibrato, multiplier 3
  Slide(kForm, "HScroll2", 7);
  EXPECT_EQ(m.fym3812.HScroll1[0].value, 7);
  EXPECT_EQ(m.fym3812.Check2, (std::array<bool, 4>{true, true, false, false}));
  Tick(kForm, "Option1", true, 0);
  EXPECT_EQ(m.fym3812.Option1, (std::array<bool, 2>{true, false}));
  EXPECT_EQ(m.fym3812.HScroll1[0].value, 3);
  EXPECT_EQ(m.fym3812.Check2, (std::array<bool, 4>{false, false, true, false}));
  OutRegister(0x34, 0x30, 0x0C);
  EXPECT_EQ(m.fym3812.HScroll1[0].value, 3);
  RunTimer(kForm);
  EXPECT_EQ(m.fym3812.HScroll1[0].value, 12);
}

TEST_F(FYM3812Test, TheButtonClearsRegisters0To254) {
  for (int reg = 0; reg < 256; ++reg) OutRegister(0x34, reg, 0xA5);
  Tick(kForm, "Check3");
  Press(kForm, "Command1");
  std::array<uint8_t, 256> expected{};
  expected[255] = 0xA5;
  EXPECT_EQ(opl.OPL_Reg, expected);
  // Through the ports: the real chip gets all of it as well.
  ASSERT_EQ(host.direct.size(), 510U);
  for (uint16_t reg = 0; reg < 255; ++reg) {
    EXPECT_EQ(host.direct[2U * reg], (std::pair<uint16_t, uint16_t>{896, reg}));
    EXPECT_EQ(host.direct[2U * reg + 1], (std::pair<uint16_t, uint16_t>{897, 0}));
  }
}

TEST_F(FYM3812Test, DirectOutputSendsWhatTheMachineWrites) {
  OutRegister(0x34, 0x20, 0x11);
  EXPECT_TRUE(host.direct.empty());
  Tick(kForm, "Check3");
  using Writes = std::vector<std::pair<uint16_t, uint16_t>>;
  OutRegister(0x34, 0x20, 0x12);
  EXPECT_EQ(host.direct, (Writes{{896, 0x20}, {897, 0x12}}));
  EXPECT_EQ(opl.OPL_Reg[0x20], 0x12);
  // The text is read anew at each write.
  struct Case {
    const char* text;
    uint16_t port;
  };
  for (const Case& each : {Case{"904", 904}, Case{"", 0}, Case{"x", 0}, Case{"65535", 65535},
                           Case{"65536", 0}, Case{" 12 ", 12}, Case{"2147483647", 65535}}) {
    host.direct.clear();
    Type("Text2", each.text);
    OutRegister(0x34, 0x21, 0x13);
    EXPECT_EQ(host.direct, (Writes{{each.port, 0x21}, {static_cast<uint16_t>(each.port + 1), 0x13}}))
        << each.text;
  }
  // Sixteen bits of the value go out.
  host.direct.clear();
  Type("Text2", "896");
  Out(0x35, 0x123456);
  EXPECT_EQ(host.direct, (Writes{{897, 0x3456}}));
  EXPECT_EQ(opl.OPL_Reg[0x21], 0x56);
  // Other chips' ports don't.
  host.direct.clear();
  for (const int port : {0x30, 0x32, 0x33, 0x38, 0x3A, 0x3C}) Out(port, 1);
  EXPECT_TRUE(host.direct.empty());
}

TEST_F(FYM3812Test, WithoutPortsTheBoxGoesOffWithOneMessage) {
  host.hasPorts = false;
  Tick(kForm, "Check3");
  OutRegister(0x34, 0x20, 0x12);
  OutRegister(0x34, 0x21, 0x13);
  EXPECT_FALSE(m.fym3812.Check3);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text,
            "Port 896 of this computer can't be written. Direct output is off; the emulated chip plays on.");
  EXPECT_EQ(opl.OPL_Reg[0x20], 0x12);
  EXPECT_EQ(opl.OPL_Reg[0x21], 0x13);
  Play(0);
  Frame();
  EXPECT_NE(opl.Ym3812Out, FrameSamples{});
}

TEST_F(FYM3812Test, BoxesShutChannelsOff) {
  for (int c = 0; c < 9; ++c) {
    OutRegister(0x34, 0xBD, 0);
    m.card.opl = Ym3812{};
    Play(c);
    Frame();
    EXPECT_NE(opl.Ym3812Out, FrameSamples{}) << c;
    Tick(kForm, "Check1", false, c);
    Frame();
    EXPECT_EQ(opl.Ym3812Out, FrameSamples{}) << c;
    Tick(kForm, "Check1", true, c);
  }
}

TEST_F(FYM3812Test, LabelsSayWhatTheChannelsPlay) {
  OutRegister(0x34, 0xA2, 0x41);
  OutRegister(0x34, 0xB2, 0x32);  // key on, block 4, 0x241 = 577
  RunTimer(kForm);
  EXPECT_EQ(Text(kForm, "Label4", 2), "435");  // 577 x 16 / 21.23 = 434.86
  EXPECT_EQ(Text(kForm, "Label5", 2), "on");
  EXPECT_EQ(Text(kForm, "Label4", 3), "0");
  EXPECT_EQ(Text(kForm, "Label5", 3), "off");
}

TEST_F(FYM3812Test, ScopesShowTheCarriersOfTheBlocksLastFrame) {
  Play(3);
  Block();
  const OplTables tables = OplTablesOf(opl.sounding);
  // The next frames are another block's: what is read now is still this one's.
  Frame();
  Frame();
  const Trace& scope = Scope(kForm, "Pic1", 3);
  EXPECT_EQ(scope.drawings, 1U);
  for (int i = 0; i <= 220; ++i)
    ASSERT_EQ(scope.y[static_cast<size_t>(i)], 32 - 28 * tables.carrier[3][i]) << i;
  EXPECT_EQ(Scope(kForm, "Pic1", 4).y, std::vector<float>(221, 32));
}

TEST_F(FYM3812Test, ScopesAreMadeOnlyWhenTheyAreRead) {
  Play(3);
  Block();
  EXPECT_EQ(m.fym3812.Pic1[3].drawings, 0U);
  Block();
  EXPECT_EQ(Scope(kForm, "Pic1", 3).drawings, 2U);
  m.fym3812.Pic1[3].y.clear();
  EXPECT_TRUE(Scope(kForm, "Pic1", 3).y.empty());  // not drawn twice
  Block();
  EXPECT_EQ(Scope(kForm, "Pic1", 3).y.size(), 221U);
}

}  // namespace

}  // namespace quoll::test
