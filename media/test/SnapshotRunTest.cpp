// Machines that go on from a snapshot: as if it had not been taken, and whatever ran before.
#include <algorithm>
#include <random>

#include "loop/Redraw.h"
#include "loop/RunLoop.h"
#include "media/Snapshot.h"
#include "media/test/SnapshotFields.h"

namespace quoll::test {

namespace {

using SnapshotRunTest = Bench;

// A snapshot taken while the processor waits at a HALT goes on waiting there, and one taken in the middle of
// a program is not moved on by the wait of the program that it replaces.
TEST_F(SnapshotRunTest, TheWaitAtAHaltIsTheLoadedMachines) {
  m.PortShadow[2] = 0xB0;
  m.MemImage[0x100] = 0x76;  // HALT
  m.MemImage[0x101] = 0x00;
  m.z80.PC = 0x100;
  m.z80.IFF1 = m.z80.IFF2 = m.z80.IM = 1;
  m.z80.SP = 0x8000;
  RunLoop(m);
  ASSERT_EQ(m.z80.Halted, 1);
  SaveSnapshot(m, Path("halted"));
  m.z80.Halted = 0;
  m.z80.PC = 0x101;
  SaveSnapshot(m, Path("running"));

  LoadSnapShot(m, Path("halted.tvs"));
  m.z80.IrqLine = 1;
  RunLoop(m);  // HALT once more, then the interrupt, which returns behind it
  EXPECT_EQ(m.z80.PC, 0x38);
  EXPECT_EQ(m.MemImage[0x7FFE], 0x01);
  EXPECT_EQ(m.MemImage[0x7FFF], 0x01);

  m.z80.Halted = 1;
  LoadSnapShot(m, Path("running.tvs"));
  m.z80.IrqLine = 1;
  RunLoop(m);  // NOP, then the interrupt, which returns to the byte behind that
  EXPECT_EQ(m.z80.PC, 0x38);
  EXPECT_EQ(m.MemImage[0x7FFE], 0x02);
  EXPECT_EQ(m.MemImage[0x7FFF], 0x01);
}

// Stops after a number of frames.
struct FrameHost : BenchHost {
  int framesLeft = 0;
  int frames = 0;
  uint32_t ticks = 0;
  uint32_t TickCount() override { return ticks += 20; }
  void FrameEnded(Machine& m) override {
    ++frames;
    if (--framesLeft <= 0) m.run.CpuRunning = 0;
  }
  void Stalled(Machine& m) override { m.run.CpuRunning = 0; }
  // True when the program has ended the emulator.
  bool Run(Machine& m, int count) {
    framesLeft = count;
    m.run.CpuRunning = 1;
    try {
      RunLoop(m);
    } catch (const ProgramEnd&) {
      return true;
    }
    return false;
  }
};

// Random code with interrupts served: all memory noise with lively instructions strewn in.
void RandomProgram(Machine& m, uint32_t seed) {
  std::mt19937 dice(seed);
  const std::vector<Bytes> lively = {
      {0xFB},       {0xFB, 0x76}, {0xED, 0xB0}, {0xD3, 0x60}, {0xD3, 0x61}, {0xD3, 0x00}, {0xD3, 0x06},
      {0xDB, 0x58}, {0xDB, 0x59}, {0xED, 0x5F}, {0xC9},       {0xE5},       {0xE1},       {0x31, 0x00, 0x70}};
  for (size_t at = 0; at + 4 < m.MemImage.size();) {
    if (dice() % 3 == 0) {
      for (const uint8_t byte : lively[dice() % lively.size()]) m.MemImage[at++] = byte;
    } else {
      m.MemImage[at++] = static_cast<uint8_t>(dice());
    }
  }
  const Bytes handler = {0xF5, 0xD3, 0x07, 0xF1, 0xFB, 0xC9};
  for (const ptrdiff_t base : {0x00000, 0x0C000, 0x14000, 0x18000}) {
    std::ranges::copy(handler, m.MemImage.begin() + base + 0x38);
  }
  m.PortShadow[2] = 0xB0;
  m.z80.PC = 0x4000;
  m.z80.SP = 0x7000;
  m.z80.IFF1 = m.z80.IM = 1;
  m.z80.UnDocEnabled = 1;
  // The picture's usual size, and the cursor interrupt in its middle.
  m.crtc.CrtcRegs = {99, 64, 75, 50, 77, 2, 60, 66, 0, 3, 3, 3, 0, 0, 7, 31, 0, 0, 0};
  m.run.ToneItCounter = 5000;
  m.screen.xNoError = true;
}

// Two machines from one snapshot: the one that was saved and another into which it was loaded, which before
// had other values in all that a snapshot holds, run on for 10 seconds of their time and stay the same.
TEST_F(SnapshotRunTest, AMachineGoesOnAsIfItHadNotBeenSaved) {
  constexpr int kTrials = 12;
  constexpr int kFrames = 500;
  int ranThrough = 0;
  for (int trial = 0; trial < kTrials; ++trial) {
    SCOPED_TRACE(trial);
    FrameHost hosts[2];
    const auto first = std::make_unique<Machine>(hosts[0]);
    CpuInit(first->z80);
    MachineReset(*first);
    RandomProgram(*first, static_cast<uint32_t>(trial));
    hosts[0].Run(*first, 3 + trial);
    first->run.CpuRunning = 1;
    ASSERT_TRUE(SaveSnapshot(*first, Path("a")));

    const auto second = std::make_unique<Machine>(*first);
    Fill(*second, static_cast<uint32_t>(trial));
    second->z80.Halted = 1;
    second->host = &hosts[1];
    hosts[1].ticks = hosts[0].ticks;
    ASSERT_TRUE(LoadSnapShot(*second, Path("a.tvs")));

    hosts[0].frames = 0;
    EXPECT_EQ(hosts[0].Run(*first, kFrames), hosts[1].Run(*second, kFrames));
    EXPECT_EQ(hosts[0].frames, hosts[1].frames);
    if (hosts[1].frames == kFrames) ++ranThrough;
    ExpectSameHeld(*first, *second);
    EXPECT_EQ(first->z80, second->z80);
    EXPECT_EQ(first->run.FrameClock, second->run.FrameClock);
    EXPECT_EQ(first->run.Cycles, second->run.Cycles);
    EXPECT_EQ(first->run.ToneItCounter, second->run.ToneItCounter);
    EXPECT_EQ(first->palette, second->palette);
    EXPECT_EQ(first->tone, second->tone);
    EXPECT_EQ(first->mixer, second->mixer);
    EXPECT_TRUE(PicturePixels(first->picture) == PicturePixels(second->picture));
  }
  RecordProperty("ranThrough", ranThrough);
  EXPECT_GE(ranThrough, kTrials / 2);
}

// Loading within the pump of a running loop: the loop goes on with the loaded machine.
TEST_F(SnapshotRunTest, ALoopThatIsRunningGoesOnWithTheLoadedMachine) {
  struct LoadingHost : FrameHost {
    std::string file;
    void Pump(Machine& machineHere) override {
      if (!file.empty()) LoadSnapShot(machineHere, file);
      file.clear();
    }
  } loading;
  m.host = &loading;
  m.PortShadow[2] = 0xB0;
  std::ranges::copy(Bytes{0x3C, 0x18, 0xFD}, m.MemImage.begin() + 0x5000);  // INC A, and again
  m.z80.PC = 0x5000;
  m.z80.B = 0x42;
  m.run.CpuRunning = 1;
  SaveSnapshot(m, Path("a"));
  m.PortShadow[2] = 0x00;
  m.z80.B = 0;
  std::ranges::copy(Bytes{0x18, 0xFE}, m.MemImage.begin() + 0x5000);
  loading.file = Path("a.tvs");
  loading.Run(m, 3);
  EXPECT_EQ(loading.frames, 3);
  EXPECT_EQ(m.z80.B, 0x42);
  EXPECT_GE(m.z80.PC, 0x5000);
  EXPECT_LE(m.z80.PC, 0x5001);
  EXPECT_EQ(m.PortShadow[2], 0xB0);
}

// The next picture is made of the loaded video RAM and the loaded palette ports.
TEST_F(SnapshotRunTest, ThePictureShowsTheLoadedVideoRam) {
  m.crtc.CrtcRegs = {99, 64, 75, 50, 77, 2, 60, 66, 0, 3, 32, 3, 0, 0, 0, 0, 0, 0, 0};
  m.screen.xScreenBW = false;
  m.PortShadow[0x60] = 0x00;
  m.PortShadow[0x61] = 0x55;
  const auto draw = [](Machine& machineHere) {
    PALchNull(machineHere.palette);
    redraw(machineHere);
    return PicturePixels(machineHere.picture);
  };
  const auto black = draw(m);
  std::ranges::copy(Pattern(0x4000), m.MemImage.begin() + 0x10000);
  SaveSnapshot(m, Path("a"));
  const auto saved = draw(m);
  ASSERT_NE(black, saved);
  const auto other = std::make_unique<Machine>(host);
  EXPECT_TRUE(LoadSnapShot(*other, Path("a.tvs")));
  EXPECT_EQ(draw(*other), saved);
}

}  // namespace

}  // namespace quoll::test
