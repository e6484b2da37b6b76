#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <ostream>
#include <vector>

#include "core/Host.h"
#include "loop/SoundFrame.h"
#include "machine/Machine.h"
#include "sound/Mixer.h"

namespace quoll {
namespace {

struct Pair {
  int left, right;
  bool operator==(const Pair&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Pair& pair) {
  return out << pair.left << '/' << pair.right;
}

Pair At(const Mixer& mixer, int frame, int sample) {
  const int at = 2 * (441 * frame + sample);
  return {mixer.BlockBuffer[at], mixer.BlockBuffer[at + 1]};
}

class Listener : public Host {
 public:
  void WaitForBlock(Machine& m) override {
    ++waits;
    if (maxWhileWaiting) m.screen.xS6 = true;
    if (waits >= waitsNeeded) m.mixer.NeedData = 1;
    if (endWhileWaiting) throw ProgramEnd{};
  }
  void BlockMixed(Machine& m) override {
    blocks.push_back(m.mixer.BlockBuffer);
    framesAtBlock.push_back(m.mixer.FrameInBlock);
    needDataAtBlock.push_back(m.mixer.NeedData);
  }

  int waits = 0;
  int waitsNeeded = 1;
  bool maxWhileWaiting = false;
  bool endWhileWaiting = false;
  std::vector<std::array<uint8_t, 4410>> blocks;
  std::vector<int> framesAtBlock, needDataAtBlock;
};

struct Bench {
  Listener host;
  std::unique_ptr<Machine> machine = std::make_unique<Machine>(host);
  Machine& m = *machine;
  Mixer& mixer = m.mixer;
};

// Amplitude written at the start of the frame, held by sample mode from there on.
void Level(Machine& m, int amplitude) { ToneWriteSlot(m.tone, amplitude << 2, 0); }

void ExpectBlockFrame(const Mixer& mixer, int frame, int byte) {
  for (int i = 0; i < 441; ++i) ASSERT_EQ(At(mixer, frame, i), (Pair{byte, byte})) << frame << ' ' << i;
}

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
    EXPECT_TRUE(bench.host.blocks.empty());
    Level(bench.m, 2 * frame);
    SoundFrame(bench.m);
    EXPECT_EQ(bench.mixer.FrameInBlock, frame + 1);
  }
  ASSERT_EQ(bench.host.blocks.size(), 1U);
  EXPECT_EQ(bench.host.framesAtBlock[0], 5);
  for (int frame = 0; frame < 5; ++frame) ExpectBlockFrame(bench.mixer, frame, 128 + 5 * frame);
  EXPECT_EQ(bench.host.blocks[0], bench.mixer.BlockBuffer);
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
    bench.mixer.AyOut[i] = static_cast<int16_t>(i % 100);
    bench.mixer.SaaOutR[i] = 20;
  }
  for (int frame = 0; frame < 5; ++frame) SoundFrame(bench.m);
  for (int frame = 0; frame < 5; ++frame) {
    for (int i = 0; i < 441; ++i) {
      ASSERT_EQ(At(bench.mixer, frame, i), (Pair{128 + i % 100, 148 + i % 100})) << frame << ' ' << i;
    }
  }
  EXPECT_EQ(bench.mixer.AyOut[440], 40);
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
    EXPECT_EQ(bench.host.blocks.size(), row.blocks) << row.before;
    EXPECT_EQ(bench.m.tone.ToneOut[0], 10);  // the tone goes on
  }
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
  EXPECT_EQ(bench.host.waits, 3);
  EXPECT_EQ(bench.mixer.NeedData, 0);
  EXPECT_EQ(bench.mixer.FrameInBlock, 0);
  EXPECT_TRUE(bench.host.blocks.empty());  // it was full already
}

TEST(SoundSync, DoesNotWaitWhenTheOutputIsAhead) {
  for (const int32_t need : {1, 2, -1}) {
    Bench bench;
    bench.mixer.FrameInBlock = 5;
    bench.mixer.NeedData = need;
    SoundSync(bench.m);
    EXPECT_EQ(bench.host.waits, 0);
    EXPECT_EQ(bench.mixer.NeedData, 0);
    EXPECT_EQ(bench.mixer.FrameInBlock, 0);
  }
}

TEST(SoundSync, ChoosingMaxDuringTheWaitDoesNotEndIt) {
  Bench bench;
  bench.host.waitsNeeded = 4;
  bench.host.maxWhileWaiting = true;
  bench.mixer.FrameInBlock = 5;
  SoundSync(bench.m);
  EXPECT_EQ(bench.host.waits, 4);
  EXPECT_EQ(bench.mixer.NeedData, 0);
  EXPECT_EQ(bench.mixer.FrameInBlock, 0);
}

TEST(SoundSync, OtherSpeedsWait) {
  Bench bench;
  bench.m.screen.xS3 = false;
  bench.m.screen.xS5 = true;
  SoundSync(bench.m);
  EXPECT_EQ(bench.host.waits, 1);
}

TEST(SoundSync, FillsABlockThatIsShort) {
  Bench bench;
  bench.mixer.FrameInBlock = 2;
  bench.mixer.BlockBuffer.fill(7);
  SoundSync(bench.m);
  ASSERT_EQ(bench.host.blocks.size(), 1U);
  EXPECT_EQ(bench.host.needDataAtBlock[0], 0);  // the flag is cleared before
  for (int frame = 0; frame < 5; ++frame) ExpectBlockFrame(bench.mixer, frame, frame < 2 ? 7 : 128);
  EXPECT_EQ(bench.mixer.FrameInBlock, 0);
}

TEST(SoundSync, FillsAnEmptyBlock) {
  Bench bench;
  SoundSync(bench.m);
  EXPECT_EQ(bench.host.blocks.size(), 1U);
  for (int frame = 0; frame < 5; ++frame) ExpectBlockFrame(bench.mixer, frame, 128);
  EXPECT_EQ(bench.mixer.FrameInBlock, 0);
}

TEST(SoundSync, FillsWithFiveFramesAtMost) {
  Bench bench;
  bench.mixer.FrameInBlock = -2;  // five more make 3: frames 0 to 2 are mixed
  bench.mixer.BlockBuffer.fill(7);
  SoundSync(bench.m);
  EXPECT_TRUE(bench.host.blocks.empty());
  for (int frame = 0; frame < 5; ++frame) ExpectBlockFrame(bench.mixer, frame, frame < 3 ? 128 : 7);
  EXPECT_EQ(bench.mixer.FrameInBlock, 0);
}

TEST(SoundSync, ACountAboveTheBlockStartsAnew) {
  Bench bench;
  bench.mixer.FrameInBlock = 9;
  bench.mixer.BlockBuffer.fill(7);
  SoundSync(bench.m);
  for (int frame = 0; frame < 5; ++frame) ExpectBlockFrame(bench.mixer, frame, 7);
  EXPECT_EQ(bench.mixer.FrameInBlock, 0);
}

TEST(SoundSync, EndOfTheProgramLeavesTheWait) {
  Bench bench;
  bench.host.waitsNeeded = 1000;
  bench.host.endWhileWaiting = true;
  EXPECT_THROW(SoundSync(bench.m), ProgramEnd);
  EXPECT_EQ(bench.host.waits, 1);
}

TEST(Host, WithoutASoundDeviceWantsTheNextBlockAtOnce) {
  Host host;
  auto machine = std::make_unique<Machine>(host);
  host.WaitForBlock(*machine);
  EXPECT_EQ(machine->mixer.NeedData, 1);
  machine->mixer.NeedData = 0;
  machine->mixer.FrameInBlock = 5;
  SoundSync(*machine);
  EXPECT_EQ(machine->mixer.FrameInBlock, 0);
  EXPECT_EQ(machine->mixer.NeedData, 0);
}

}  // namespace
}  // namespace quoll
