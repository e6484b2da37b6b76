// The hardware monitor: what its frame "SOUND" shows.
#include <gtest/gtest.h>

#include "forms/TVCmon.h"
#include "machine/Machine.h"
#include "machine/Ports.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

constexpr size_t kIrq = 0, kActive = 1;  // places in SoundLamp

struct TVCmonSound : testing::Test {
  TestMachine machine;
  Machine& m = *machine;

  const TVCmonShown& Shown() {
    TVCmon_redraw(m);
    return m.tvcmon.shown;
  }
  const TVCmonShown& With(uint8_t port4, uint8_t port5, uint8_t port6) {
    m.PortShadow[4] = port4;
    m.PortShadow[5] = port5;
    m.PortShadow[6] = port6;
    return Shown();
  }
};

TEST_F(TVCmonSound, SoundFrame) {
  m.run.ToneItCounter = -12;
  const TVCmonShown& fields = With(0x2C, 0xFA, 0xFF);
  EXPECT_EQ(fields.Pitch, "A2C");
  EXPECT_EQ(fields.Volume, "15");
  EXPECT_EQ(fields.SoundIT, "1");
  EXPECT_EQ(fields.OutEnable, "1");
  EXPECT_EQ(fields.Counter, "-12");
  EXPECT_TRUE(fields.SoundLamp[kActive]);
  With(0x05, 0xC0, 0x83);
  EXPECT_EQ(fields.Pitch, "005");
  EXPECT_EQ(fields.Volume, "0");
  EXPECT_EQ(fields.SoundIT, "0");
  EXPECT_EQ(fields.OutEnable, "0");
  EXPECT_FALSE(fields.SoundLamp[kActive]);
}

TEST_F(TVCmonSound, LampOfTheTone) {
  EXPECT_TRUE(With(0xF0, 0x1F, 0).SoundLamp[kActive]);   // pitch 4080
  EXPECT_FALSE(With(0xF1, 0x1F, 0).SoundLamp[kActive]);  // the first one that is too high
  EXPECT_FALSE(With(0xF0, 0x0F, 0).SoundLamp[kActive]);
}

TEST_F(TVCmonSound, LampOfTheInterrupt) {
  m.PortShadow[kStatusPort] = 0xFF;
  EXPECT_FALSE(Shown().SoundLamp[kIrq]);
  m.PortShadow[kStatusPort] = 0xEF;
  EXPECT_TRUE(Shown().SoundLamp[kIrq]);
  m.PortShadow[kStatusPort] = 0xF0;  // the cards' flags have lamps of their own
  EXPECT_FALSE(Shown().SoundLamp[kIrq]);
}

}  // namespace
}  // namespace quoll::test
