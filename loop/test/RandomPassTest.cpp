// The run loop against the literal model, on random machines: pass by pass, and over whole frames, where the
// run loop does long stretches at once.
#include <cstdio>
#include <cstdlib>

#include "loop/RunLoop.h"
#include "loop/test/Twins.h"

namespace quoll::test {

namespace {

constexpr uint64_t kSeed = 20260401;

// More trials than in the everyday run: QUOLL_TRIALS=100 multiplies them.
int Trials(int everyday) {
  const char* factor = std::getenv("QUOLL_TRIALS");
  return factor == nullptr ? everyday : everyday * std::max(1, std::atoi(factor));
}

TEST(RandomPassTest, SinglePassesEqualTheModel) {
  Dice dice(kSeed);
  const int trials = Trials(300);
  for (int trial = 0; trial < trials && !testing::Test::HasFailure(); ++trial) {
    Twins twins;
    twins.Randomize(dice);
    twins.framesLeft = twins.modelFramesLeft = 1000;
    bool ended = false;
    for (int pass = 0; pass < 2000 && !ended && !testing::Test::HasFailure(); ++pass) {
      const std::string what = "trial " + std::to_string(trial) + " pass " + std::to_string(pass) + " PC " +
                               std::to_string(twins.model.PC);
      ended = twins.Pass();
      if (ended) break;
      twins.ExpectCpuEqual(what);
      if (pass % 64 == 0) twins.ExpectEqual(what);
    }
    if (!ended && !testing::Test::HasFailure()) twins.ExpectEqual("trial " + std::to_string(trial));
  }
}

// Every opcode of every page on random registers and operands.
TEST(RandomPassTest, EveryOpcodeOfEveryPageEqualsTheModel) {
  const std::vector<std::vector<uint8_t>> pages = {{},     {0xCB},       {0xED},      {0xDD},
                                                   {0xFD}, {0xDD, 0xCB}, {0xFD, 0xCB}};
  Dice dice(kSeed + 2);
  Twins twins;
  twins.Randomize(dice);
  twins.framesLeft = twins.modelFramesLeft = 1'000'000;
  twins.machine->VideoReadNoise = twins.model.VideoReadNoise = false;
  const int states = Trials(60);
  for (const auto& page : pages) {
    for (int opcode = 0; opcode < 256; ++opcode) {
      for (int state = 0; state < states && !testing::Test::HasFailure(); ++state) {
        twins.RandomizeCpu(dice);
        // RAM throughout; the instruction in its middle, so that displacements and jumps stay inside.
        twins.machine->PortShadow[2] = twins.model.PortShadow[2] = 0xB0;
        twins.machine->z80.PC = twins.model.PC = 0x4000 + Roll(dice, 0x100);
        int32_t at = twins.model.PC;
        for (const uint8_t byte : page) twins.Poke(at++, byte);
        if (page.size() == 2) twins.Poke(at++, static_cast<uint8_t>(dice()));
        twins.Poke(at++, static_cast<uint8_t>(opcode));
        twins.Poke(at++, static_cast<uint8_t>(dice()));
        twins.Poke(at, static_cast<uint8_t>(dice()));
        const std::string what = "page " + std::to_string(page.empty() ? 0 : page.front()) + " of " +
                                 std::to_string(page.size()) + " opcode " + std::to_string(opcode);
        twins.Pass();
        twins.ExpectCpuEqual(what);
      }
    }
    if (!testing::Test::HasFailure()) twins.ExpectEqual("after a page");
  }
}

TEST(RandomPassTest, WholeFramesEqualTheModel) {
  Dice dice(kSeed + 1);
  const int trials = Trials(400);
  int64_t passes = 0;
  int stalled = 0;
  for (int trial = 0; trial < trials && !testing::Test::HasFailure(); ++trial) {
    Twins twins;
    twins.Randomize(dice);
    twins.framesLeft = twins.modelFramesLeft = 1 + Roll(dice, 12);
    twins.machine->run.CpuRunning = 1;
    const bool machineEnds = Ends([&] { RunLoop(*twins.machine); });
    if (twins.host.stalls > 0) {  // a program that uses no T-states: how long it ran is the host's affair
      ++stalled;
      continue;
    }
    twins.model.CpuRunning = 1;
    const bool modelEnds = Ends([&] {
      do {
        twins.model.Pass();
        ++passes;
      } while (twins.model.CpuRunning == 1);
    });
    ASSERT_EQ(machineEnds, modelEnds) << "trial " << trial;
    if (!modelEnds) twins.ExpectEqual("trial " + std::to_string(trial));
  }
  RecordProperty("passes", static_cast<int>(passes / 1000));
  std::printf("%.1f million passes, %d of %d trials stalled\n", static_cast<double>(passes) / 1e6, stalled,
              trials);
  EXPECT_GT(passes, 3'000'000);
}

}  // namespace

}  // namespace quoll::test
