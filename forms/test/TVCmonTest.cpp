#include <gtest/gtest.h>

#include "forms/Forms.h"
#include "forms/TVCmon.h"
#include "loop/RunLoop.h"
#include "machine/Machine.h"
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
