// Machines that go on from a snapshot: as if it had not been taken, and whatever ran before.
#include <algorithm>
#include <random>

#include "loop/Redraw.h"
#include "loop/RunLoop.h"
#include "machine/MachineInit.h"
#include "media/Snapshot.h"
#include "media/test/SnapshotFields.h"

namespace quoll::test {

namespace {

using SnapshotRunTest = FolderTest;

// A snapshot taken while the processor waits at a HALT goes on waiting there, and one taken in the middle of
// a program is not moved on by the wait of the program that it replaces.
TEST_F(SnapshotRunTest, TheWaitAtAHaltIsTheLoadedMachines) {
  m.PortShadow[2] = 0xB0;
  m.MemImage[0x100] = 0x76;  // HALT
  m.MemImage[0x101] = 0x00;
  m.z80.PC = 0x100;
  m.z80.IFF1 = m.z80.IFF2 = m.z80.IM = 1;
  m.z80.SP = 0x8000;
  Step(m);
  ASSERT_EQ(m.z80.Halted, 1);
  SaveSnapshot(m, Path("halted"));
  m.z80.Halted = 0;
  m.z80.PC = 0x101;
  SaveSnapshot(m, Path("running"));

  LoadSnapShot(m, Path("halted.tvs"));
  m.z80.IrqLine = 1;
  Step(m);  // HALT once more, then the interrupt, which returns behind it
  EXPECT_EQ(m.z80.PC, 0x38);
  EXPECT_EQ(m.MemImage[0x7FFE], 0x01);
  EXPECT_EQ(m.MemImage[0x7FFF], 0x01);

  m.z80.Halted = 1;
  LoadSnapShot(m, Path("running.tvs"));
  m.z80.IrqLine = 1;
  Step(m);  // NOP, then the interrupt, which returns to the byte behind that
  EXPECT_EQ(m.z80.PC, 0x38);
  EXPECT_EQ(m.MemImage[0x7FFE], 0x02);
  EXPECT_EQ(m.MemImage[0x7FFF], 0x01);
}

// Runs for a number of frames, all drawn; true when the program has ended the emulator.
bool RunFrames(TestMachine& m, int frames) {
  m.host.frameTicks = 20;
  m.host.AllowFrames(frames);
  return EndsProgram([&] { RunOn(*m); });
}

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
    TestMachine first, second;
    MachineReset(*first);
    RandomProgram(*first, static_cast<uint32_t>(trial));
    RunFrames(first, 3 + trial);
    first->run.CpuRunning = 1;
    ASSERT_TRUE(SaveSnapshot(*first, Path("a")));

    static_cast<MachineState&>(*second) = *first;
    Fill(*second, static_cast<uint32_t>(trial));
    second->z80.Halted = 1;
    second.host.ticks = first.host.ticks;
    ASSERT_TRUE(LoadSnapShot(*second, Path("a.tvs")));

    EXPECT_EQ(RunFrames(first, kFrames), RunFrames(second, kFrames));
    EXPECT_EQ(first.host.frames, second.host.frames);
    if (second.host.frames == kFrames) ++ranThrough;
    ExpectSameHeld(*first, *second);
    EXPECT_EQ(first->z80, second->z80);
    EXPECT_TRUE(PicturePixels(first->picture) == PicturePixels(second->picture));
    EXPECT_TRUE(static_cast<MachineState&>(*first) == *second);
  }
  RecordProperty("ranThrough", ranThrough);
  EXPECT_GE(ranThrough, kTrials / 2);
}

// Loading within the pump of a running loop: the loop goes on with the loaded machine.
TEST_F(SnapshotRunTest, ALoopThatIsRunningGoesOnWithTheLoadedMachine) {
  m.PortShadow[2] = 0xB0;
  std::ranges::copy(Bytes{0x3C, 0x18, 0xFD}, m.MemImage.begin() + 0x5000);  // INC A, and again
  m.z80.PC = 0x5000;
  m.z80.B = 0x42;
  m.run.CpuRunning = 1;
  SaveSnapshot(m, Path("a"));
  m.PortShadow[2] = 0x00;
  m.z80.B = 0;
  std::ranges::copy(Bytes{0x18, 0xFE}, m.MemImage.begin() + 0x5000);
  host.onPump = [&](Machine&) {
    if (host.Count("Pump") == 1) LoadSnapShot(m, Path("a.tvs"));
  };
  host.ticks = 20;
  RunFrames(machine, 3);
  EXPECT_EQ(host.frames, 3);
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
  TestMachine other;
  EXPECT_TRUE(LoadSnapShot(*other, Path("a.tvs")));
  EXPECT_EQ(draw(*other), saved);
}

}  // namespace

}  // namespace quoll::test
