// Recording of the sound output by the SAA1099's window, and what it shows of the blocks.
#include "forms/Forms.h"
#include "forms/Fsaa.h"
#include "loop/SoundFrame.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

struct FsaaTest : FolderTest {
  void Press() { quoll::Press(m, TheControl("Fsaa", "Command1")); }

  // A block of this byte, taken by the output.
  void Block(uint8_t byte) {
    m.mixer.BlockBuffer.fill(byte);
    m.mixer.FrameInBlock = 5;
    m.mixer.NeedData = 1;
    SoundSync(m);
  }
};

TEST_F(FsaaTest, EachBlockGoesToTheSamePlaceOfATemplatesCopy) {
  const Bytes model = Pattern(10000);
  WriteAll(Path("techno.wav"), model);
  WriteAll(Path("record.wav"), Bytes(20, 1));
  WriteAll(Path("saa.dat"), Bytes(20, 1));
  EXPECT_EQ(m.fsaa.Command1Look.back, 16777215);
  Block(3);
  EXPECT_EQ(ReadAll(Path("record.wav")), Bytes(20, 1));
  Press();
  EXPECT_EQ(m.fsaa.Command1Look.back, 255);
  EXPECT_EQ(ReadAll(Path("record.wav")), model);
  EXPECT_EQ(ReadAll(Path("saa.dat")), Bytes());
  Block(11);
  Block(22);
  Bytes expected = model;
  std::fill(expected.begin() + 44, expected.begin() + 4454, uint8_t{22});
  EXPECT_EQ(ReadAll(Path("record.wav")), expected);
  Press();
  EXPECT_EQ(m.fsaa.Command1Look.back, 16777215);
  Block(33);
  EXPECT_EQ(ReadAll(Path("record.wav")), expected);
  EXPECT_EQ(ReadAll(Path("saa.dat")), Bytes());
}

TEST_F(FsaaTest, WithoutATemplateTheFileIsABlockOfSilence) {
  Press();
  const Bytes file = ReadAll(Path("record.wav"));
  // 4410 is 0x113A, with 36 more it is 0x115E.
  const Bytes header = {'R', 'I', 'F', 'F', 0x5E, 0x11, 0,   0,   'W', 'A',  'V',  'E',  'f', 'm',  't',
                        ' ', 16,  0,   0,   0,    1,    0,   2,   0,   0x22, 0x56, 0,    0,   0x44, 0xAC,
                        0,   0,   2,   0,   8,    0,    'd', 'a', 't', 'a',  0x3A, 0x11, 0,   0};
  ASSERT_EQ(file.size(), 44U + 4410U);
  EXPECT_EQ(Bytes(file.begin(), file.begin() + 44), header);
  EXPECT_EQ(Bytes(file.begin() + 44, file.end()), Bytes(4410, 128));
  Block(7);
  EXPECT_EQ(ReadAll(Path("record.wav"))[44 + 4409], 7);
}

TEST_F(FsaaTest, MaxSpeedRecordsNothing) {
  Press();
  m.screen.xS6 = true;
  Block(9);
  EXPECT_EQ(ReadAll(Path("record.wav"))[44], 128);
}

TEST_F(FsaaTest, AFolderThatTakesNoFilesIsBorneInSilence) {
  const ReadOnlyFolder readOnly(folder);
  Press();
  Block(9);
  Press();
  EXPECT_EQ(Names(), std::vector<std::string>());
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(FsaaTest, TheFrameOfAResetIsDrawn) {
  m.screen.xio2 = true;
  for (const auto& [reg, value] : {std::pair(0, 0xFF), {8, 100}, {16, 4}, {20, 1}, {24, 0x8A}, {28, 1}}) {
    SaaRegisterWrite(m.card.saa, 0x33, static_cast<uint8_t>(reg));
    SaaRegisterWrite(m.card.saa, 0x32, static_cast<uint8_t>(value));
  }
  SoundFrame(m);
  EXPECT_NE(m.fsaa.Label8, "_________");
  m.card.saa.resetRequest = 1;
  SoundFrame(m);
  EXPECT_EQ(m.card.saa.silent, 1);
  EXPECT_EQ(m.fsaa.Label8, "_________");
}

TEST_F(FsaaTest, TheLabelShowsTheFramesOfTheBlock) {
  EXPECT_EQ(m.fsaa.Label11, "");
  for (const int32_t frames : {5, 5, 2, -3, 9, 5}) {
    m.mixer.FrameInBlock = frames;
    m.mixer.NeedData = 1;
    SoundSync(m);
    EXPECT_EQ(m.fsaa.Label11, std::to_string(frames));
  }
  m.screen.xS6 = true;
  m.mixer.FrameInBlock = 3;
  SoundSync(m);
  EXPECT_EQ(m.fsaa.Label11, "5");
}

}  // namespace

}  // namespace quoll::test
