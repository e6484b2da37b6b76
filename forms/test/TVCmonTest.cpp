#include <gtest/gtest.h>

#include "forms/Forms.h"
#include "forms/TVCmon.h"
#include "loop/RunLoop.h"
#include "loop/Start.h"
#include "machine/Machine.h"
#include "testkit/Files.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

TEST(TVCmon, StartsWithBothInterruptBoxesTicked) {
  const TVCmon monitor;
  EXPECT_FALSE(monitor.Check1);
  EXPECT_TRUE(monitor.Check2);
  EXPECT_TRUE(monitor.Check3);
}

TEST(TVCmon, ControlsReachTheirOwnFields) {
  TestMachine m;
  bool* const fields[] = {&m->tvcmon.Check1, &m->tvcmon.Check2, &m->tvcmon.Check3};
  const char* const names[] = {"Check1", "Check2", "Check3"};
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(FieldOf<bool>(*m, TheControl("TVCmon", names[i])), fields[i]);
  }
}

// Where the files can't be made, nothing is recorded and nothing says so.
TEST(TVCmon, RecordGoesOffWhenItCantBegin) {
  const TempFolder folder;
  const WorkingIn there(folder.path);
  std::filesystem::create_directories("save.wav/held");
  TestMachine m;
  SetTick(*m, TheControl("TVCmon", "Check1"), true);
  EXPECT_FALSE(m->tvcmon.Check1);
  EXPECT_EQ(m.host.messages.size(), 1U);
  EXPECT_EQ(m->tape.record.file, "");
  std::filesystem::remove_all("save.wav");
  SetTick(*m, TheControl("TVCmon", "Check1"), true);
  EXPECT_TRUE(m->tvcmon.Check1);
}

// The end of the program is the end of the recording: the headers have their lengths.
TEST(TVCmon, WhatIsRecordedIsFinishedAtTheEnd) {
  const TempFolder folder;
  const WorkingIn there(folder.path);
  TestMachine m;
  SetTick(*m, TheControl("TVCmon", "Check1"), true);
  for (int i = 0; i < 10; ++i) TapeWriteEdge(m->tape, 800 * i);
  StopMachine(*m);
  const Bytes save = ReadAll("save.wav");
  ASSERT_GT(save.size(), 50U);
  const auto number = [&](size_t at) { return save[at] + 256U * save[at + 1]; };
  EXPECT_EQ(number(4), save.size());
  EXPECT_EQ(number(40), save.size() - 44);
}

// The tone counter runs out at the first pass: the interrupt flag, which is low when raised, follows the box.
TEST(TVCmon, Check3LetsTheToneInterruptThrough) {
  for (const bool enabled : {true, false}) {
    TestMachine m;
    CpuInit(m->z80);
    m->PortShadow[2] = 0xB0;
    m->PortShadow[5] = 0x20;
    m->PortShadow[0x59] = 0xBF;
    m->run.ToneItCounter = 1;
    m->tvcmon.Check3 = enabled;
    m->tvcmon.Check2 = !enabled;  // has no part in it
    RunLoop(*m);
    EXPECT_EQ(m->PortShadow[0x59], enabled ? 0xAF : 0xBF);
  }
}

}  // namespace
}  // namespace quoll::test
