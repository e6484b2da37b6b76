// Recording: "save.wav" with the edges, "record.wav" with the tone generator, byte for byte.
#include "forms/Forms.h"
#include "loop/RunLoop.h"
#include "loop/SoundFrame.h"
#include "machine/Ports.h"
#include "tape/Tape.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

// Headers as the files have them while they are being recorded, worked out by hand.
const Bytes kSaveHeader = {'R', 'I', 'F', 'F', 36, 0, 0,   0,   'W', 'A',  'V',  'E', 'f', 'm',  't',
                           ' ', 16,  0,   0,   0,  1, 0,   1,   0,   0x44, 0xAC, 0,   0,   0x44, 0xAC,
                           0,   0,   1,   0,   8,  0, 'd', 'a', 't', 'a',  0,    0,   0,   0};
const Bytes kRecordHeader = {'R', 'I', 'F', 'F', 36, 0, 0,   0,   'W', 'A',  'V',  'E', 'f', 'm',  't',
                             ' ', 16,  0,   0,   0,  1, 0,   1,   0,   0x22, 0x56, 0,   0,   0x44, 0xAC,
                             0,   0,   2,   0,   16, 0, 'd', 'a', 't', 'a',  0,    0,   0,   0};

void Store32(Bytes& bytes, size_t at, uint32_t value) {
  for (size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<uint8_t>(value >> (8 * i));
}

// The finished file: its whole length at 4, its samples' number at 40.
Bytes Finished(Bytes header, const Bytes& samples) {
  Store32(header, 4, static_cast<uint32_t>(44 + samples.size()));
  Store32(header, 40, static_cast<uint32_t>(samples.size()));
  header.resize(44 + samples.size());
  std::ranges::copy(samples, header.begin() + 44);
  return header;
}

struct TapeRecording : FolderTest {
  void Edge(int32_t clock) {
    m.run.FrameClock = clock;
    int32_t value = 0;
    PortOut(m, 0x50, value);
  }
  // The clock of the last edge, and the level that the next one leaves.
  void LastEdge(int32_t clock, uint8_t level) {
    m.tape.TapeLastCycle = clock;
    m.tape.TapeLevel = level;
  }
  Bytes Save() const { return ReadAll(Path("save.wav")); }
  void Record(bool on) { SetTick(m, TheControl("TVCmon", "Check1"), on); }
};

TEST_F(TapeRecording, HeadersStandAtOnce) {
  Record(true);
  EXPECT_EQ(Save(), kSaveHeader);
  EXPECT_EQ(ReadAll(Path("record.wav")), kRecordHeader);
  Record(false);
  EXPECT_EQ(Save(), Finished(kSaveHeader, {}));
  EXPECT_EQ(ReadAll(Path("record.wav")), Finished(kRecordHeader, {}));
  EXPECT_EQ(Names(), (std::vector<std::string>{"record.wav", "save.wav"}));
}

TEST_F(TapeRecording, OldFilesAreReplaced) {
  WriteAll(Path("save.wav"), Bytes(1000, 1));
  WriteAll(Path("record.wav"), Bytes(1000, 1));
  Record(true);
  Record(false);
  EXPECT_EQ(Save().size(), 44U);
  EXPECT_EQ(ReadAll(Path("record.wav")).size(), 44U);
}

TEST_F(TapeRecording, EdgesFillTheTimeSinceTheLast) {
  Record(true);
  LastEdge(1000, Tape::kHigh);
  Edge(1400);  // 400 T-states: 5 + 1 low
  Edge(1720);  // 320: 4 + 1 high
  Edge(1720);  // 0: 1 low
  Edge(1718);  // 62498: none, no change of level
  Edge(1838);  // 120, a tie: 2 + 1 high
  Record(false);
  Bytes samples(6, 0x1E);
  samples.insert(samples.end(), 5, 0xDC);
  samples.push_back(0x1E);
  samples.insert(samples.end(), 3, 0xDC);
  EXPECT_EQ(Save(), Finished(kSaveHeader, samples));
}

TEST_F(TapeRecording, MoreEdgesThanAreHeldBack) {
  Record(true);
  LastEdge(0, Tape::kHigh);
  Bytes samples;
  for (int i = 0; i < 100; ++i) {
    const bool low = i % 2 == 0;
    m.tape.TapeLastCycle = 0;
    Edge(60000 - i);  // 750 + 1 samples each, fewer than 40 T-states off
    samples.insert(samples.end(), i <= 40 ? 751 : 750, low ? 0x1E : 0xDC);
  }
  Record(false);
  EXPECT_EQ(Save(), Finished(kSaveHeader, samples));
}

TEST_F(TapeRecording, EachFrameOfTheToneIsAppended) {
  m.PortShadow[5] = 0;  // sample mode
  Record(true);
  Bytes expected;
  for (int frame = 0; frame < 30; ++frame) {
    ToneWriteSlot(m.tone, (frame % 16) << 2, 142 * 440);
    SoundFrame(m);
    m.mixer.FrameInBlock = 0;
    // The level of the last frame, and in the last slot that of this one; 16 bits, low byte first.
    for (int i = 0; i < 441; ++i) {
      const int level = 5 * (i == 440 ? frame % 16 : (frame + 15) % 16);
      expected.push_back(static_cast<uint8_t>(frame == 0 && i < 440 ? 0 : level));
      expected.push_back(0);
    }
    // All of it is on the disk at each frame's end.
    ASSERT_EQ(ReadAll(Path("record.wav")).size(), 44U + 882U * static_cast<size_t>(frame + 1));
  }
  Record(false);
  SoundFrame(m);
  EXPECT_EQ(ReadAll(Path("record.wav")), Finished(kRecordHeader, expected));
}

TEST_F(TapeRecording, EdgesOfAFrameThatNeverEndsReachTheDisk) {
  Record(true);
  Edge(1000);
  Edge(1800);  // ten samples and one
  EXPECT_EQ(Save().size(), 44U);
  TapeFlush(m.tape);
  const Bytes file = Save();
  EXPECT_EQ(file.size(), static_cast<size_t>(m.tape.TapeOutPos) - 1);
  ASSERT_GE(file.size(), 44U + 12U);
  EXPECT_EQ(Bytes(file.end() - 11, file.end()), Bytes(11, file.back()));
  EXPECT_NE(file[file.size() - 12], file.back());
}

TEST_F(TapeRecording, NegativeSamplesHaveTwoBytes) {
  Record(true);
  m.PortShadow[4] = 0;
  m.PortShadow[5] = 0x10;
  m.PortShadow[6] = 15 << 2;
  SoundFrame(m);
  Record(false);
  const Bytes file = ReadAll(Path("record.wav"));
  ASSERT_EQ(file.size(), 44U + 882U);
  EXPECT_EQ(file[44], 0x97);  // -105
  EXPECT_EQ(file[45], 0xFF);
  EXPECT_EQ(file[44 + 880], 105);
  EXPECT_EQ(file[44 + 881], 0);
}

TEST_F(TapeRecording, EdgesReachTheDiskAtAFramesEnd) {
  Record(true);
  LastEdge(0, Tape::kHigh);
  Edge(80);
  EXPECT_EQ(Save().size(), 44U);
  SoundFrame(m);
  Bytes file = kSaveHeader;
  file.insert(file.end(), {0x1E, 0x1E});
  EXPECT_EQ(Save(), file);
}

TEST_F(TapeRecording, WhatIsBeingSavedCanBeHeardAsATape) {
  Record(true);
  LastEdge(0, Tape::kLow);
  Edge(80);
  TapeOpen(m.tape, "save.wav");
  TapeRewind(m.tape);
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(TapeRead(m.tape), 0);
}

TEST_F(TapeRecording, StartedTwiceBeginsAnew) {
  Record(true);
  m.tape.TapeLastCycle = 0;
  Edge(8000);
  SoundFrame(m);
  Record(true);
  EXPECT_EQ(Save(), kSaveHeader);
  EXPECT_EQ(m.tape.TapeOutPos, 45);
  Record(false);
  Record(false);  // nothing is open any more
  EXPECT_EQ(Save(), Finished(kSaveHeader, {}));
}

TEST_F(TapeRecording, AFolderThatTakesNoFilesIsTold) {
  {
    const ReadOnlyFolder readOnly(folder);
    Record(true);
    ASSERT_EQ(host.messages.size(), 1U);
    EXPECT_EQ(host.messages[0].text, "Wav File create error");
    EXPECT_FALSE(m.tvcmon.Check1);  // nothing is recorded: the tick goes off
    m.tape.TapeLastCycle = 0;
    Edge(800);
    EXPECT_EQ(m.tape.TapeOutPos, 45 + 11);
    SoundFrame(m);
    Record(false);
  }
  EXPECT_EQ(Names(), std::vector<std::string>());
  EXPECT_EQ(host.messages.size(), 1U);
}

TEST_F(TapeRecording, OneFileThatCantBeMadeEndsTheOther) {
  std::filesystem::create_directory(folder / "record.wav");
  Record(true);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text, "Wav File create error");
  EXPECT_FALSE(m.tvcmon.Check1);
  LastEdge(0, Tape::kLow);
  Edge(0);
  SoundFrame(m);
  EXPECT_EQ(Save(), Finished(kSaveHeader, {}));
}

TEST_F(TapeRecording, AFullDiskIsBornInSilence) {
  Record(true);
  {
    const FullDisk full(100);
    m.tape.TapeLastCycle = 0;
    Edge(60000);
    for (int frame = 0; frame < 3; ++frame) SoundFrame(m);
    EXPECT_EQ(m.tape.TapeOutPos, 45 + 751);
  }
  Record(false);
  EXPECT_TRUE(host.messages.empty());
  const Bytes file = Save();
  ASSERT_EQ(file.size(), 100U);
  EXPECT_EQ(file[4], 100);
  EXPECT_EQ(file[40], 56);
}

TEST_F(TapeRecording, TheWorkingDirectoryOfTheStartCounts) {
  Record(true);
  std::filesystem::create_directory(folder / "elsewhere");
  std::filesystem::current_path(folder / "elsewhere");
  SoundFrame(m);
  Record(false);
  std::filesystem::current_path(folder);
  EXPECT_EQ(ReadAll(Path("record.wav")).size(), 44U + 882U);
}

// A loop of the machine's own: OUT (50),A at even distances makes a square wave.
TEST_F(TapeRecording, AProgramsSquareWave) {
  m.PortShadow[2] = 0xB0;
  m.PortShadow[kStatusPort] = 0xFF;
  m.run.ToneItCounter = 1000000;
  // LD B,30: DJNZ -2: OUT (50),A: JP 1000
  const Bytes code = {0x06, 30, 0x10, 0xFE, 0xD3, 0x50, 0xC3, 0x00, 0x10};
  std::ranges::copy(code, m.MemImage.begin() + 0x1000);
  m.z80.PC = 0x1000;
  m.run.FrameClock = m.run.Cycles = 0;
  Record(true);
  LastEdge(0, Tape::kHigh);
  std::vector<int32_t> clocks;
  for (int passes = 0; passes < 1000; ++passes) {
    if (m.z80.PC == 0x1004) clocks.push_back(m.run.FrameClock);
    m.run.CpuRunning = 0;
    RunLoop(m);
  }
  Record(false);
  ASSERT_GT(clocks.size(), 20U);
  Bytes samples;
  int32_t last = 0;
  uint8_t level = 0x1E;
  for (const int32_t clock : clocks) {
    const int32_t d = clock - last;
    samples.insert(samples.end(), static_cast<size_t>((d + 40) / 80 + 1), level);  // no ties among them
    ASSERT_NE(d % 80, 40);
    level = level == 0x1E ? 0xDC : 0x1E;
    last = clock;
  }
  EXPECT_EQ(Save(), Finished(kSaveHeader, samples));
}

}  // namespace

}  // namespace quoll::test
