// Reading and writing of the tape, sample by sample.
#include <sys/stat.h>

#include <algorithm>

#include "forms/Forms.h"
#include "loop/RunLoop.h"
#include "machine/Ports.h"
#include "tape/Tape.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

// A wave file of 44 bytes of header, here 7s, and these samples.
Bytes Wave(const Bytes& samples) {
  Bytes file(44 + samples.size(), 7);
  std::ranges::copy(samples, file.begin() + 44);
  return file;
}

struct TapeTest : FolderTest {
  void Put(const Bytes& file, const std::string& name = "tape.wav") {
    WriteAll(Path(name), file);
    TapeOpen(m.tape, Path(name));
  }
  int Read(int port = 0x59) { return (PortIn(m, port) & 0x20) != 0 ? 1 : 0; }
  void Edge(int32_t clock, int port = 0x50) {
    m.run.FrameClock = clock;
    int32_t value = 0;
    PortOut(m, port, value);
  }
  void Record(bool on) { SetTick(m, TheControl("TVCmon", "Check1"), on); }
};

TEST_F(TapeTest, EverySampleHasItsLevel) {
  Bytes samples(256);
  for (size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<uint8_t>(i);
  Put(Wave(samples));
  TapeRewind(m.tape);
  for (int i = 0; i < 256; ++i) EXPECT_EQ(TapeRead(m.tape), i > 90 ? 1 : 0) << i;
}

TEST_F(TapeTest, OneSampleForEachReadOfEitherPort) {
  Put(Wave({255, 90, 91, 0, 200}));
  TapeRewind(m.tape);
  EXPECT_EQ(Read(0x59), 1);
  EXPECT_EQ(Read(0x5D), 0);
  EXPECT_EQ(Read(0x5D), 1);
  EXPECT_EQ(PortIn(m, 0x5A), 0xFF);  // its neighbours take none
  EXPECT_EQ(PortIn(m, 0x58), 0xFF);
  EXPECT_EQ(Read(0x59), 0);
  EXPECT_EQ(Read(0x59), 1);
  EXPECT_EQ(Read(0x59), 0);  // the end
  EXPECT_EQ(Read(0x59), 0);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(TapeTest, TheMotorHasNoSay) {
  Put(Wave({255, 0, 255}));
  TapeRewind(m.tape);
  for (const int level : {1, 0, 1}) {
    m.PortShadow[5] = level != 0 ? 0 : 0x40;
    EXPECT_EQ(Read(), level);
  }
}

TEST_F(TapeTest, OpenedAtItsFirstByteRewoundToItsFirstSample) {
  Bytes file(44, 200);
  file[43] = 1;
  file.push_back(255);
  file.push_back(2);
  Put(file);
  for (int i = 0; i < 43; ++i) EXPECT_EQ(TapeRead(m.tape), 1) << i;
  EXPECT_EQ(TapeRead(m.tape), 0);
  EXPECT_EQ(TapeRead(m.tape), 1);
  TapeRewind(m.tape);
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(TapeRead(m.tape), 0);
  EXPECT_EQ(TapeRead(m.tape), 0);
}

TEST_F(TapeTest, LongTapesComeInOrder) {
  const Bytes samples = Pattern(3 * TapeInput::kChunk + 123);
  Put(Wave(samples));
  TapeRewind(m.tape);
  for (size_t i = 0; i < samples.size(); ++i) ASSERT_EQ(TapeRead(m.tape), samples[i] > 90 ? 1 : 0) << i;
  for (int i = 0; i < 5; ++i) EXPECT_EQ(TapeRead(m.tape), 0);
}

TEST_F(TapeTest, ShortFilesHaveNoSamples) {
  for (const size_t size : {0U, 1U, 43U, 44U}) {
    Put(Bytes(size, 255));
    TapeRewind(m.tape);
    EXPECT_EQ(TapeRead(m.tape), 0) << size;
    TapeOpen(m.tape, Path("tape.wav"));
    EXPECT_EQ(TapeRead(m.tape), size > 0 ? 1 : 0) << size;
  }
}

TEST_F(TapeTest, NoTapeReadsZero) {
  EXPECT_EQ(TapeRead(m.tape), 0);
  TapeRewind(m.tape);
  EXPECT_EQ(Read(), 0);
  EXPECT_EQ(Names(), std::vector<std::string>());
}

TEST_F(TapeTest, AMissingFileIsMadeEmpty) {
  TapeOpen(m.tape, Path("new.wav"));
  EXPECT_EQ(Names(), std::vector<std::string>{"new.wav"});
  EXPECT_EQ(ReadAll(Path("new.wav")), Bytes());
  EXPECT_EQ(TapeRead(m.tape), 0);
  // What is put into it later is there after a rewind.
  WriteAll(Path("new.wav"), Wave({255}));
  EXPECT_EQ(TapeRead(m.tape), 0);
  TapeRewind(m.tape);
  EXPECT_EQ(TapeRead(m.tape), 1);
}

TEST_F(TapeTest, TheFirstTapeIsThatOfTheProgramFolder) {
  std::filesystem::create_directory(folder / "program");
  m.programFolder = Path("program");
  TapeOpenFirst(m.tape, m.programFolder);
  EXPECT_EQ(ReadAll(Path("program/load.wav")), Bytes());
  WriteAll(Path("program/load.wav"), {255, 0});
  TapeOpenFirst(m.tape, m.programFolder);
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(TapeRead(m.tape), 0);
}

TEST_F(TapeTest, AReadOnlyFolderHasAnEmptyTape) {
  const ReadOnlyFolder readOnly(folder);
  TapeOpenFirst(m.tape, m.programFolder);
  EXPECT_EQ(TapeRead(m.tape), 0);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(Names(), std::vector<std::string>());
}

TEST_F(TapeTest, WhatIsNoOrdinaryFilePlaysAsEmpty) {
  std::filesystem::create_directory(folder / "folder.wav");
  ASSERT_EQ(mkfifo(Path("pipe.wav").c_str(), 0600), 0);
  for (const std::string& name : {Path("folder.wav"), Path("pipe.wav"), Path("none/such.wav"),
                                  std::string("/dev/zero"), std::string(), std::string("a\0b", 3)}) {
    TapeOpen(m.tape, name);
    EXPECT_EQ(TapeRead(m.tape), 0) << name;
  }
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(TapeTest, ANewTapeTakesThePlaceOfTheOld) {
  Put(Wave(Bytes(100, 255)), "one.wav");
  TapeRewind(m.tape);
  EXPECT_EQ(TapeRead(m.tape), 1);
  Put(Wave({255, 0, 255}), "two.wav");
  TapeRewind(m.tape);
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(TapeRead(m.tape), 0);
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(TapeRead(m.tape), 0);
}

TEST_F(TapeTest, RelativeNamesStayWhereTheyWere) {
  WriteAll(Path("tape.wav"), Wave({255, 255}));
  TapeOpen(m.tape, "tape.wav");
  std::filesystem::create_directory(folder / "elsewhere");
  std::filesystem::current_path(folder / "elsewhere");
  TapeRewind(m.tape);
  EXPECT_EQ(TapeRead(m.tape), 1);
  std::filesystem::current_path(folder);
}

TEST_F(TapeTest, ReadsAreHeard) {
  Put(Wave({255, 0, 255, 255}));
  TapeRewind(m.tape);
  const auto read = [this](int32_t clock) {
    m.run.FrameClock = clock;
    Read();
  };
  read(0);
  EXPECT_EQ(m.tone.DacSlots[0], 0x11);
  read(141);
  EXPECT_EQ(m.tone.DacSlots[0], 0x10);  // the later one has the slot
  read(142);
  EXPECT_EQ(m.tone.DacSlots[1], 0x11);
  read(62500);
  EXPECT_EQ(m.tone.DacSlots[440], 0x11);
  read(100000);
  EXPECT_EQ(m.tone.DacSlots[440], 0x10);
  read(-5);
  EXPECT_EQ(m.tone.DacSlots[0], 0x10);
}

// The samples of an edge after so many T-states: d / 80 rounded, ties to even, and one more.
TEST_F(TapeTest, SamplesOfAnEdge) {
  struct Case {
    int32_t d;
    int samples;
  };
  constexpr Case kCases[] = {{0, 1},       {39, 1},      {40, 1},      {41, 2},      {80, 2},    {119, 2},
                             {120, 3},     {121, 3},     {200, 3},     {201, 4},     {280, 5},   {4000, 51},
                             {61959, 775}, {61960, 775}, {61961, 776}, {62000, 776}, {62001, 0}, {62499, 0}};
  for (const auto& [d, samples] : kCases) {
    m.tape.TapeLastCycle = 0;
    m.tape.TapeLevel = Tape::kLow;
    m.tape.TapeOutPos = 45;
    Edge(d);
    EXPECT_EQ(m.tape.TapeOutPos, 45 + samples) << d;
    EXPECT_EQ(m.tape.TapeLevel, samples > 0 ? 0xDC : 0x1E) << d;
    EXPECT_EQ(m.tape.TapeLastCycle, d);
  }
}

TEST_F(TapeTest, GapsReachOverTheFramesEnd) {
  m.tape.TapeLastCycle = 62400;
  m.tape.TapeOutPos = 45;
  Edge(60);  // 160 T-states
  EXPECT_EQ(m.tape.TapeOutPos, 45 + 3);
  m.tape.TapeLastCycle = 501;
  Edge(1);  // 62000
  EXPECT_EQ(m.tape.TapeOutPos, 48 + 776);
  m.tape.TapeLastCycle = 500;
  Edge(1);  // 62001
  EXPECT_EQ(m.tape.TapeOutPos, 48 + 776);
  EXPECT_EQ(m.tape.TapeLastCycle, 1);
}

TEST_F(TapeTest, LevelsAlternateAndAreHeard) {
  m.tape.TapeLastCycle = 0;
  Edge(0);  // the first edge of all
  EXPECT_EQ(m.tape.TapeLevel, 0x1E);
  EXPECT_EQ(m.tone.DacSlots[0], 0x10);
  Edge(0);
  EXPECT_EQ(m.tape.TapeLevel, 0xDC);
  EXPECT_EQ(m.tone.DacSlots[0], 0x11);
  Edge(284);
  EXPECT_EQ(m.tape.TapeLevel, 0x1E);
  EXPECT_EQ(m.tone.DacSlots[2], 0x10);
}

TEST_F(TapeTest, AllEightPortsWriteAndKeepNothing) {
  for (int port = 0x50; port <= 0x57; ++port) {
    m.PortShadow[static_cast<size_t>(port)] = 0x77;
    m.tape.TapeOutPos = 45;
    Edge(m.tape.TapeLastCycle, port);
    EXPECT_EQ(m.tape.TapeOutPos, 46);
    EXPECT_EQ(m.PortShadow[static_cast<size_t>(port)], 0x77);
  }
  EXPECT_EQ(m.screen.List1.count, 0U);
}

TEST_F(TapeTest, ATimeBeyondTheLastSlotIsTold) {
  m.tape.TapeLastCycle = 62000;
  Edge(62621);  // 441 x 142 - 1
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(m.tone.DacSlots[440], 0x10);
  Edge(62622);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text, "hiba hang");
  EXPECT_EQ(m.tone.DacSlots[440], 0x11);
}

TEST_F(TapeTest, ClocksThatNoProgramMakes) {
  for (const int32_t last : {INT32_MIN, -1, 0, 62500, INT32_MAX}) {
    for (const int32_t now : {INT32_MIN, -63000, -1, 0, 62500, INT32_MAX}) {
      m.tape.TapeLastCycle = last;
      m.tape.TapeOutPos = 45;
      Edge(now);
      EXPECT_EQ(m.tape.TapeLastCycle, now);
      EXPECT_GE(m.tape.TapeOutPos, 45);
      EXPECT_LE(m.tape.TapeOutPos, 45 + 776);
    }
  }
}

TEST_F(TapeTest, WithoutRecordingOnlyThePlaceMovesOn) {
  m.tape.TapeLastCycle = 0;
  for (int i = 0; i < 1000; ++i) Edge(0);
  EXPECT_EQ(m.tape.TapeOutPos, 1045);
  EXPECT_EQ(Names(), std::vector<std::string>());
  Record(true);
  EXPECT_EQ(m.tape.TapeOutPos, 45);
}

}  // namespace

}  // namespace quoll::test
