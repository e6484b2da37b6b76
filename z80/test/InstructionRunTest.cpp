// Programs in one go. The run loop does many passes in a row without looking up; what a program sees must be
// what it sees in single passes.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "z80/test/PassBench.h"

namespace quoll::z80test {
namespace {

constexpr int32_t kStop = 0xF3;  // FD F3 ends each program

// Runs the program in one go and in single passes, compares both, and leaves the machine that ran.
void RunBothWays(Bench& run, const std::function<void(Bench&)>& prepare) {
  Bench steps;
  prepare(steps);
  prepare(run);
  for (int pass = 0; pass < 100000; ++pass) {
    const bool last = steps.Peek(std::clamp(steps.s.PC, 0, kMemImageSize - 2)) == 0xFD &&
                      steps.Peek(std::clamp(steps.s.PC, 0, kMemImageSize - 2) + 1) == kStop;
    steps.Pass();
    if (last) break;
  }
  run.run.CpuRunning = 1;
  RunLoop(*run.m);
  EXPECT_TRUE(SameState(run.s, steps.s));
  EXPECT_TRUE(run.m->MemImage == steps.m->MemImage);
  EXPECT_EQ(run.run.Cycles, steps.run.Cycles);
  EXPECT_EQ(run.run.FrameClock, steps.run.FrameClock);
  EXPECT_EQ(run.run.TotalCycles, steps.run.TotalCycles);
  for (size_t i = 0; i < PcTrail::kShown; ++i)
    EXPECT_EQ(run.run.PcHistory[i], steps.run.PcHistory[i]) << "history " << i;
}

struct Move {
  const char* name;
  int opcode;  // B0 up, B8 down
  int32_t from, to, count;
};

TEST(Z80Run, BlockTransfersOfEveryKind) {
  const Move moves[] = {
      {"short", 0xB0, 0x6000, 0x6800, 3},
      {"one byte", 0xB0, 0x6000, 0x6800, 1},
      {"over several 4 KB borders", 0xB0, 0x5FFD, 0x8FFE, 0x0203},
      {"down over several 4 KB borders", 0xB8, 0x6002, 0x9001, 0x0203},
      {"filling upwards", 0xB0, 0x6000, 0x6001, 0x0180},
      {"filling downwards", 0xB8, 0x6200, 0x61FF, 0x0180},
      {"overlapping safely", 0xB0, 0x6010, 0x6000, 0x0100},
      {"past the top of memory", 0xB0, 0xFFF0, 0x6000, 0x0020},
      {"to the top of memory and on from its bottom", 0xB0, 0x6000, 0xFFF0, 0x0020},
      {"below the bottom of memory", 0xB8, 0x000F, 0x6100, 0x0020},
      {"longer than what is left of the frame", 0xB0, 0x5000, 0x9000, 0x0C00},
  };
  for (const Move& move : moves) {
    SCOPED_TRACE(move.name);
    Bench b;
    std::vector<uint8_t> want(0x10000);
    RunBothWays(b, [&](Bench& bench) {
      for (int32_t i = 0; i < 0x10000; ++i) bench.Poke(i, {(i * 7 + i / 256) % 256});
      bench.Poke(kOrigin, {0xED, move.opcode, 0xFD, kStop});
      bench.s.H = move.from / 256, bench.s.L = move.from % 256;
      bench.s.D = move.to / 256, bench.s.E = move.to % 256;
      bench.s.B = move.count / 256, bench.s.C = move.count % 256;
      std::copy_n(bench.m->MemImage.begin(), want.size(), want.begin());
    });
    const int32_t step = move.opcode == 0xB0 ? 1 : -1;
    for (int32_t i = 0; i < move.count; ++i)
      want[static_cast<size_t>((move.to + i * step) & 0xFFFF)] =
          want[static_cast<size_t>((move.from + i * step) & 0xFFFF)];
    EXPECT_TRUE(std::equal(want.begin(), want.end(), b.m->MemImage.begin()));
    EXPECT_EQ(b.s.H * 256 + b.s.L, (move.from + move.count * step) & 0xFFFF);
    EXPECT_EQ(b.s.D * 256 + b.s.E, (move.to + move.count * step) & 0xFFFF);
    EXPECT_EQ(b.s.B + b.s.C, 0);
    EXPECT_EQ(b.s.PC, kOrigin + 4);
    EXPECT_EQ(b.s.R, (kStartR + move.count) & 0xFF);
    const int32_t clock = kStartCycles + 21 * (move.count - 1) + 16;
    EXPECT_EQ(b.run.FrameClock, clock > 62500 ? clock - 62500 : clock);
  }
}

// Runs an LDIR that reaches its own two bytes after `distance` others and puts the code in their place;
// copies is how many bytes it moves before it has destroyed itself or has come to its end, a what A is then.
void ExpectSelfTransfer(int32_t origin, int32_t distance, int32_t count, const std::vector<int>& code,
                        int32_t copies, int32_t a) {
  SCOPED_TRACE(std::to_string(origin) + " distance " + std::to_string(distance) + " count " +
               std::to_string(count));
  const int32_t source = 0x6800;
  const int32_t target = origin - distance;
  Bench b;
  RunBothWays(b, [&](Bench& bench) {
    for (int32_t i = 0; i < 0x80; ++i) bench.Poke(source + i, {0x00});
    for (size_t i = 0; i < code.size(); ++i)
      bench.Poke(source + distance + static_cast<int32_t>(i), {code[i]});
    bench.s.PC = origin;
    bench.Poke(origin, {0xED, 0xB0, 0xFD, kStop});
    bench.s.H = source / 256, bench.s.L = source % 256, bench.s.D = target / 256, bench.s.E = target % 256;
    bench.s.B = 0, bench.s.C = count;
  });
  EXPECT_EQ(b.s.C, count - copies);
  EXPECT_EQ(b.s.A, a);
}

TEST(Z80Run, ABlockTransferOverItself) {
  for (const int32_t origin : {0x4000, 0x4001, 0x4800, 0x4FFF})
    for (const int32_t distance : {0, 1, 2, 5, 40})
      for (int32_t more = -2; more <= 4; ++more) {
        const int32_t count = distance + more;
        if (count < 1) continue;
        // The prefix turns into INC A. With nothing left to move the end comes first.
        const bool destroyed = count > distance + 1;
        ExpectSelfTransfer(origin, distance, count, {0x3C, 0x00}, std::min(count, distance + 1),
                           destroyed ? 0x56 : 0x55);
        // The prefix is replaced by itself; then ED B0 turns into ED 44, NEG.
        const bool changed = count > distance + 2;
        ExpectSelfTransfer(origin, distance, count, {0xED, 0x44}, std::min(count, distance + 2),
                           changed ? 0xAB : 0x55);
      }
}

// Downwards the opcode's second byte goes first. The stop behind the instruction is written anew on the way.
TEST(Z80Run, ABlockTransferDownwardsOverItself) {
  for (const int32_t origin : {0x4000, 0x4800, 0x4FFC, 0x4FFD, 0x4FFE, 0x4FFF})
    for (const int32_t distance : {2, 3, 40})
      for (int32_t count = distance - 1; count <= distance + 4; ++count) {
        SCOPED_TRACE(std::to_string(origin) + " distance " + std::to_string(distance) + " count " +
                     std::to_string(count));
        Bench b;
        RunBothWays(b, [&](Bench& bench) {
          for (int32_t i = 0; i < 0x40; ++i) bench.Poke(0x6800 - i, {0x00});
          bench.Poke(0x6800 - distance, {0x44, 0xFD, kStop});  // NEG in place of LDDR, then the stop
          bench.Poke(origin, {0xED, 0xB8, 0xFD, kStop});
          const int32_t target = origin + 1 + distance;
          bench.s.PC = origin;
          bench.s.H = 0x68, bench.s.L = 0x00, bench.s.D = target / 256, bench.s.E = target % 256;
          bench.s.B = 0, bench.s.C = count;
        });
        EXPECT_EQ(b.s.C, std::max(0, count - distance - 1));
        EXPECT_EQ(b.s.A, count > distance + 1 ? 0xAB : 0x55);
      }
}

TEST(Z80Run, ASearchThatFindsAndOneThatDoesNot) {
  for (const int opcode : {0xB1, 0xB9})
    for (const int32_t count : {1, 2, 200, 300}) {
      Bench b;
      RunBothWays(b, [&](Bench& bench) {
        for (int32_t i = 0; i < 0x2000; ++i) bench.Poke(0x6000 + i, {0});
        bench.Poke(opcode == 0xB1 ? 0x7000 + 249 : 0x7000 - 249, {0x55});
        bench.Poke(kOrigin, {0xED, opcode, 0xFD, kStop});
        bench.s.H = 0x70, bench.s.L = 0, bench.s.B = count / 256, bench.s.C = count % 256;
      });
      const int32_t looked = std::min(count, 250);
      EXPECT_EQ(b.s.FlagZ, count == 300 ? 1 : 0);
      EXPECT_EQ(b.s.FlagPV, count == 300 ? 1 : 0);
      EXPECT_EQ(b.s.B * 256 + b.s.C, count - looked);
      EXPECT_EQ(b.s.H * 256 + b.s.L, opcode == 0xB1 ? 0x7000 + looked : 0x7000 - looked);
      EXPECT_EQ(b.Taken(), 21 * (looked - 1) + 16);
      EXPECT_EQ(b.s.R, kStartR);
    }
}

TEST(Z80Run, RIsSeenWithinAByteHoweverLongTheRun) {
  Bench b;
  RunBothWays(b, [](Bench& bench) {
    for (int32_t i = 0; i < 500; ++i) bench.Poke(kOrigin + i, {0x00});
    bench.Poke(kOrigin + 500, {0xED, 0x5F, 0xFD, kStop});
  });
  EXPECT_EQ(b.s.A, (kStartR + 500) % 256);
  EXPECT_EQ(b.s.R, (kStartR + 502) % 256);
  EXPECT_EQ(b.s.FlagS, 0);
}

TEST(Z80Run, AnInterruptAfterEiComesBeforeTheNextInstruction) {
  Bench b;
  RunBothWays(b, [](Bench& bench) {
    bench.s.IrqLine = 1;
    bench.Poke(kOrigin, {0x00, 0xFB, 0x3C, 0xFD, kStop});
    bench.Poke(0x38, {0x47, 0xD3, 0x07, 0xFB, 0xED, 0x4D});  // LD B,A; OUT (7),A; EI; RETI
  });
  EXPECT_EQ(b.s.B, 0x55);
  EXPECT_EQ(b.s.A, 0x56);
  EXPECT_EQ(b.s.IrqLine, 0);
  EXPECT_EQ(b.Taken(), 4 + 4 + 11 + 4 + 11 + 4 + 14 + 4);
}

TEST(Z80Run, AnInterruptThatIsNotAcknowledgedComesAgain) {
  Bench b;
  RunBothWays(b, [](Bench& bench) {
    bench.s.IrqLine = 1, bench.s.B = 0;
    bench.Poke(kOrigin, {0xFB});
    bench.Poke(0x38, {0x04, 0x78, 0xFE, 0x05, 0x28, 0x02, 0xFB, 0x00, 0xFD, kStop});
  });
  EXPECT_EQ(b.s.B, 5);  // INC B; LD A,B; CP 5; JR Z,+2; EI
  EXPECT_EQ(b.s.SP, kStack - 10);
}

TEST(Z80Run, F0InterruptsWhereItStands) {
  Bench b;
  RunBothWays(b, [](Bench& bench) {
    bench.Poke(kOrigin, {0xFB, 0x00, 0xFD, 0xF0, 0x3C, 0xFD, kStop});
    bench.Poke(0x38, {0x47, 0xD3, 0x07, 0xED, 0x4D});
  });
  EXPECT_EQ(b.s.B, 0x55);
  EXPECT_EQ(b.s.A, 0x56);
}

TEST(Z80Run, AnNmiIsAcceptedAfterEachInstructionOfItsHandler) {
  Bench b;
  RunBothWays(b, [](Bench& bench) {
    bench.s.IFF1 = 1;
    bench.s.B = 0;
    bench.Poke(kOrigin, {0xFD, 0xF1, 0xFD, kStop});
    // The first instruction of the handler is all that ever runs: it turns itself into the stop.
    bench.s.H = 0x00, bench.s.L = 0x66, bench.s.A = 0xFD;
    bench.Poke(0x66, {0x77, kStop});  // LD (HL),A
  });
  EXPECT_EQ(b.s.SP, kStack - 6);
  EXPECT_EQ(b.OnStack(kStack), kOrigin + 2);
  EXPECT_EQ(b.OnStack(kStack - 2), 0x67);
  EXPECT_EQ(b.OnStack(kStack - 4), 0x68);
  EXPECT_EQ(b.s.PC, 0x66);
  EXPECT_EQ(b.s.IFF2, 0);
}

TEST(Z80Run, AHaltWaitsForTheCursorInterrupt) {
  Bench b;
  RunBothWays(b, [](Bench& bench) {
    bench.m->crtc.CrtcRegs[6] = 60, bench.m->crtc.CrtcRegs[10] = 3;
    bench.m->crtc.CrtcRegs[14] = bench.m->crtc.CrtcRegs[15] = 0;
    bench.s.IFF1 = bench.s.IFF2 = 1;
    bench.Poke(kOrigin, {0x76, 0xFD, kStop});
    bench.Poke(0x38, {0xD3, 0x07, 0xED, 0x4D});
  });
  // 1000 + 4 x 1083 = 5332 is the first clock in character position 392; the pass after it accepts.
  EXPECT_EQ(b.Taken(), 4 * 1083 + 4 + 11 + 11 + 14);
  EXPECT_EQ(b.s.PC, kOrigin + 3);
  EXPECT_EQ(b.s.Halted, 0);
}

// The cursor's position begins at T-state 5331.2. The pass that gets there raises the line, the next one is
// the last before the handler, which looks how far the transfer has come.
TEST(Z80Run, ABlockTransferIsInterruptedAfterTheRightByte) {
  for (int32_t ahead = 0; ahead <= 21; ++ahead) {
    SCOPED_TRACE(ahead);
    Bench b;
    RunBothWays(b, [&](Bench& bench) {
      bench.m->crtc.CrtcRegs[6] = 60, bench.m->crtc.CrtcRegs[10] = 3;
      bench.m->crtc.CrtcRegs[14] = bench.m->crtc.CrtcRegs[15] = 0;
      bench.run.FrameClock = 1000 + ahead;
      bench.s.IFF1 = bench.s.IFF2 = 1;
      bench.s.B = 0x01, bench.s.C = 0x2C;  // 300 bytes
      bench.s.H = 0x50, bench.s.L = 0x00, bench.s.D = 0x90, bench.s.E = 0x00;
      bench.Poke(kOrigin, {0xED, 0xB0, 0xFD, kStop});
      bench.Poke(0x38, {0x79, 0xD3, 0x07, 0xED, 0x4D});  // LD A,C
    });
    int32_t clock = 1000 + ahead, left = 300;
    while (clock < 5332) clock += 21, --left;
    EXPECT_EQ(b.s.A, left - 1);
    EXPECT_EQ(b.s.C, 0);
  }
}

TEST(Z80Run, UnknownInstructionsAndMaskedOutputsInAChain) {
  Bench b;
  RunBothWays(b, [](Bench& bench) {
    bench.Poke(kOrigin, {0xDD, 0xFD, 0x21, 0x34, 0x12, 0x3E, 0xFF, 0xD3, 0x70, 0xDD, 0xCB,
                         0x05, 0x3C, 0xFD, 0xCB, 0x05, 0x3C, 0xED, 0x77, 0xFD, kStop});
  });
  EXPECT_EQ(b.s.H * 256 + b.s.L, 0x1234);
  EXPECT_EQ(b.s.A, 0x1F + 2);
  EXPECT_EQ(b.s.B, 0x63);
  EXPECT_EQ(b.Taken(), 10 + 7 + 11 + 4 + 4 + 4);
}

}  // namespace
}  // namespace quoll::z80test
