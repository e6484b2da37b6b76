#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <vector>

#include "core/Host.h"
#include "loop/SoundFrame.h"
#include "machine/Machine.h"
#include "sound/Mixer.h"
#include "sound/test/BlockBytes.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

struct Bench {
  TestMachine machine;
  TestHost& host = machine.host;
  Machine& m = *machine;
  Mixer& mixer = m.mixer;
  // As they were when the output got them.
  std::vector<std::array<uint8_t, 4410>> blocks;
  std::vector<int> framesAtBlock, needDataAtBlock;

  Bench() {
    host.onBlockMixed = [this](Machine&) {
      blocks.push_back(mixer.BlockBuffer);
      framesAtBlock.push_back(mixer.FrameInBlock);
      needDataAtBlock.push_back(mixer.NeedData);
    };
  }
};

// Amplitude written at the start of the frame, held by sample mode from there on.
void Level(Machine& m, int amplitude) { ToneWriteSlot(m.tone, amplitude << 2, 0); }

TEST(SoundFrame, RendersMixesAndCounts) {
  Bench bench;
  Level(bench.m, 8);
  SoundFrame(bench.m);
  EXPECT_EQ(bench.mixer.FrameInBlock, 1);
  EXPECT_EQ(bench.m.tone.ToneOut[440], 40);
  ExpectBlockFrame(bench.mixer, 0, 148);  // 40 at half weight
  ExpectBlockFrame(bench.mixer, 1, 128);  // not mixed yet
  EXPECT_EQ(bench.m.tone.DacSlots[0], 0);
  EXPECT_EQ(bench.host.waits, 0);
}

TEST(SoundFrame, FiveFramesMakeABlock) {
  Bench bench;
  for (int frame = 0; frame < 5; ++frame) {
    EXPECT_TRUE(bench.blocks.empty());
    Level(bench.m, 2 * frame);
    SoundFrame(bench.m);
    EXPECT_EQ(bench.mixer.FrameInBlock, frame + 1);
  }
  ASSERT_EQ(bench.blocks.size(), 1U);
  EXPECT_EQ(bench.framesAtBlock[0], 5);
  for (int frame = 0; frame < 5; ++frame) ExpectBlockFrame(bench.mixer, frame, 128 + 5 * frame);
  EXPECT_EQ(bench.blocks[0], bench.mixer.BlockBuffer);
}

TEST(SoundFrame, ToneModeReadsThePorts) {
  Bench bench;
  bench.m.PortShadow[5] = 0x10;
  bench.m.PortShadow[6] = 10 << 2;
  SoundFrame(bench.m);
  // 48 Hz: 229 samples of -70, then 70, at half weight.
  for (int i = 0; i < 441; ++i) {
    const int byte = i < 229 ? 93 : 163;
    ASSERT_EQ(At(bench.mixer, 0, i), (Pair{byte, byte})) << i;
  }
}

TEST(SoundFrame, MenuTicksDoNotSilenceTheTone) {
  for (const bool card : {false, true}) {
    for (const bool sound : {false, true}) {
      Bench bench;
      bench.m.screen.xio2 = card;
      bench.m.screen.xSound = sound;
      Level(bench.m, 4);
      SoundFrame(bench.m);
      ExpectBlockFrame(bench.mixer, 0, 138);
    }
  }
}

TEST(SoundFrame, WithTheCardOffTheChipsRepeatTheirLastFrame) {
  Bench bench;
  bench.m.screen.xio2 = false;
  for (int i = 0; i < 441; ++i) {
    bench.m.card.ay.AyOut[i] = static_cast<int16_t>(i % 100);
    bench.m.card.saa.SaaOutR[i] = 20;
  }
  for (int frame = 0; frame < 5; ++frame) SoundFrame(bench.m);
  for (int frame = 0; frame < 5; ++frame) {
    for (int i = 0; i < 441; ++i) {
      ASSERT_EQ(At(bench.mixer, frame, i), (Pair{128 + i % 100, 148 + i % 100})) << frame << ' ' << i;
    }
  }
  EXPECT_EQ(bench.m.card.ay.AyOut[440], 40);
}

TEST(SoundFrame, CountsOutsideTheBlock) {
  struct Row {
    int32_t before, after;
    size_t blocks;
  };
  constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
  constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();
  for (const Row row : {Row{-1, 0, 0}, Row{-7, -6, 0}, Row{4, 5, 1}, Row{5, 6, 0}, Row{6, 7, 0},
                        Row{kLowest, kLowest + 1, 0}, Row{kHighest, kLowest, 0}}) {
    Bench bench;
    bench.mixer.FrameInBlock = row.before;
    Level(bench.m, 2);
    SoundFrame(bench.m);
    EXPECT_EQ(bench.mixer.FrameInBlock, row.after);
    EXPECT_EQ(bench.blocks.size(), row.blocks) << row.before;
    EXPECT_EQ(bench.m.tone.ToneOut[0], 10);  // the tone goes on
  }
}

// After so many waits the output has the block, and the next one begins.
void ExpectSynced(Bench& bench, int waits) {
  EXPECT_EQ(bench.host.waits, waits);
  EXPECT_EQ(bench.mixer.NeedData, 0);
  EXPECT_EQ(bench.mixer.FrameInBlock, 0);
}

TEST(SoundSync, MaxSpeedDoesNothing) {
  Bench bench;
  bench.m.screen.xS6 = true;
  for (const int32_t need : {0, 1}) {
    bench.mixer.FrameInBlock = 5;
    bench.mixer.NeedData = need;
    const Mixer before = bench.mixer;
    SoundSync(bench.m);
    EXPECT_EQ(bench.mixer, before);
  }
  EXPECT_EQ(bench.host.waits, 0);
}

TEST(SoundSync, WaitsUntilTheOutputWantsABlock) {
  Bench bench;
  bench.host.waitsNeeded = 3;  // a host may come back early
  bench.mixer.FrameInBlock = 5;
  SoundSync(bench.m);
  ExpectSynced(bench, 3);
  EXPECT_TRUE(bench.blocks.empty());  // it was full already
}

TEST(SoundSync, DoesNotWaitWhenTheOutputIsAhead) {
  for (const int32_t need : {1, 2, -1}) {
    Bench bench;
    bench.mixer.FrameInBlock = 5;
    bench.mixer.NeedData = need;
    SoundSync(bench.m);
    ExpectSynced(bench, 0);
  }
}

TEST(SoundSync, ChoosingMaxDuringTheWaitDoesNotEndIt) {
  Bench bench;
  bench.host.waitsNeeded = 4;
  bench.host.onWait = [](Machine& m) { m.screen.xS6 = true; };
  bench.mixer.FrameInBlock = 5;
  SoundSync(bench.m);
  ExpectSynced(bench, 4);
}

TEST(SoundSync, OtherSpeedsWait) {
  Bench bench;
  bench.m.screen.xS3 = false;
  bench.m.screen.xS5 = true;
  SoundSync(bench.m);
  EXPECT_EQ(bench.host.waits, 1);
}

// With fewer frames than a block has, the missing ones are mixed, five at most.
TEST(SoundSync, FillsABlockThatIsShort) {
  struct Case {
    int32_t before;
    size_t blocks;
    int first, end;  // the frames that are mixed
  };
  for (const auto& [before, blocks, first, end] : {
           Case{2, 1, 2, 5}, Case{0, 1, 0, 5}, Case{-2, 0, 0, 3},  // five more make 3
           Case{9, 0, 0, 0},                                       // above the block: it starts anew
       }) {
    Bench bench;
    bench.mixer.FrameInBlock = before;
    bench.mixer.BlockBuffer.fill(7);
    SoundSync(bench.m);
    ASSERT_EQ(bench.blocks.size(), blocks) << before;
    for (const int need : bench.needDataAtBlock) EXPECT_EQ(need, 0);  // the flag is cleared before
    for (int frame = 0; frame < 5; ++frame)
      ExpectBlockFrame(bench.mixer, frame, frame >= first && frame < end ? 128 : 7);
    EXPECT_EQ(bench.mixer.FrameInBlock, 0);
  }
}

TEST(SoundSync, EndOfTheProgramLeavesTheWait) {
  Bench bench;
  bench.host.onWait = [](Machine&) { throw ProgramEnd{}; };
  EXPECT_THROW(SoundSync(bench.m), ProgramEnd);
  EXPECT_EQ(bench.host.waits, 1);
}

TEST(Host, WithoutASoundDeviceWantsTheNextBlockAtOnce) {
  Host host;
  TestMachine machine;
  machine->host = &host;
  host.WaitForBlock(*machine);
  EXPECT_EQ(machine->mixer.NeedData, 1);
  machine->mixer.NeedData = 0;
  machine->mixer.FrameInBlock = 5;
  SoundSync(*machine);
  EXPECT_EQ(machine->mixer.FrameInBlock, 0);
  EXPECT_EQ(machine->mixer.NeedData, 0);
}

}  // namespace
}  // namespace quoll::test
