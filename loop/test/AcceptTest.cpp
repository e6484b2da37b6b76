// The non-maskable interrupt, resets, and how requests and interrupts leave a HALT.
#include <cstdint>
#include <vector>

#include "loop/Interrupts.h"
#include "machine/MachineInit.h"
#include "machine/test/Disturbed.h"
#include "z80/test/PassBench.h"

namespace quoll::z80test {
namespace {

TEST(Z80Request, NmiEntrySavesIff1) {
  for (const int32_t mode : {0, 1, 2})
    for (const int32_t iff1 : {0, 1})
      for (const int32_t sp : {kStack, 0x0000, 0x0001}) {
        Bench b;
        b.s.IFF1 = iff1, b.s.IFF2 = 1 - iff1, b.s.IM = mode, b.s.PC = 0x1234, b.s.SP = sp;
        b.run.NmiRequest = 1;
        Z80State want = b.s;
        NmiEnter(*b.m);
        want.IFF2 = iff1, want.IFF1 = 0, want.PC = 0x66, want.R += 1, want.SP = (sp + 0xFFFE) % 0x10000;
        EXPECT_TRUE(SameState(b.s, want));
        EXPECT_EQ(b.OnStack(sp), 0x1234);
        EXPECT_EQ(b.Taken(), 11);
        EXPECT_EQ(b.run.NmiRequest, 1);
        EXPECT_TRUE(b.host.messages.empty());
      }
}

TEST(Z80Request, LeavesAHaltByOneByte) {
  Bench b;
  b.s.IFF1 = b.s.IFF2 = 1;
  b.Pass({0x76});
  b.Pass();
  EXPECT_EQ(b.s.PC, kOrigin);
  EXPECT_EQ(b.Taken(), 8);
  b.s.IrqLine = 1;
  b.Pass();
  EXPECT_EQ(b.s.Halted, 0);
  EXPECT_EQ(b.s.PC, 0x38);
  EXPECT_EQ(b.OnStack(), kOrigin + 1);
  EXPECT_EQ(b.Taken(), 12 + 11);
  EXPECT_EQ(b.s.R, kStartR + 4);
}

TEST(Z80Request, LeavesAHaltInItsOwnPass) {
  Bench b;
  Enable(b);
  b.Pass({0x76});
  EXPECT_EQ(b.s.Halted, 0);
  EXPECT_EQ(b.OnStack(), kOrigin + 1);
}

TEST(Z80Request, AHaltWithInterruptsDisabledStays) {
  Bench b;
  b.s.IrqLine = 1;
  b.Poke(kOrigin, {0x76});
  for (int i = 0; i < 5; ++i) b.Pass();
  EXPECT_EQ(b.s.Halted, 1);
  EXPECT_EQ(b.s.PC, kOrigin);
}

TEST(Z80Request, NmiLeavesAHaltByOneByte) {
  Bench b;
  b.run.NmiRequest = 1;
  b.Pass({0x76});
  EXPECT_EQ(b.s.Halted, 0);
  EXPECT_EQ(b.s.PC, 0x66);
  EXPECT_EQ(b.OnStack(), kOrigin + 1);
}

// The step belongs to Halted, not to the HALT opcode.
TEST(Z80Request, HaltedAddsOneToPCWhereverItStands) {
  Bench b;
  Enable(b);
  b.s.Halted = 1;
  b.Pass({0x06, 0x11});
  EXPECT_EQ(b.OnStack(), kOrigin + 3);
  EXPECT_EQ(b.s.Halted, 0);
  b.Restart();
  b.s.Halted = 1;
  b.run.NmiRequest = 1;
  b.Pass({0x06, 0x11});
  EXPECT_EQ(b.OnStack(), kOrigin + 3);
  b.Restart();
  b.s.Halted = 1;
  b.Pass({0x06, 0x11});
  EXPECT_EQ(b.s.Halted, 1);
  EXPECT_EQ(b.s.PC, kOrigin + 2);
}

TEST(Z80Request, InMode2DuringHaltPCHasMovedPastTheHalt) {
  for (const int32_t mode : {0, 2}) {
    Bench b;
    b.s.IM = mode;
    b.s.IFF1 = b.s.IFF2 = 1;
    b.Pass({0x76});
    b.s.IrqLine = 1;
    b.Pass();
    EXPECT_EQ(b.s.PC, kOrigin + 1);
    EXPECT_EQ(b.s.Halted, 0);
    EXPECT_EQ(b.s.SP, kStack);
    EXPECT_EQ(b.s.IFF1 + b.s.IFF2, 0);
    EXPECT_EQ(b.host.messages.size(), 1U);
  }
}

TEST(Z80Request, NmiIsAcceptedAgainAfterEveryInstructionUntilReset) {
  Bench b;
  b.s.IFF1 = b.s.IFF2 = 1;
  b.run.NmiRequest = 1;
  b.Poke(0x66, {0x3C, 0x00});
  b.Pass({0x00});
  EXPECT_EQ(b.s.PC, 0x66);
  EXPECT_EQ(b.s.IFF2, 1);
  for (int turn = 1; turn <= 4; ++turn) {
    b.Pass();
    EXPECT_EQ(b.s.PC, 0x66);
    EXPECT_EQ(b.s.A, 0x55 + turn);
    EXPECT_EQ(b.s.SP, kStack - 2 - 2 * turn);
    EXPECT_EQ(b.OnStack(kStack - 2 * turn), 0x67);
    EXPECT_EQ(b.s.IFF2, 0) << "the second acceptance loses what the first one saved";
    EXPECT_EQ(b.Taken(), 15 * (turn + 1));
    EXPECT_EQ(b.run.NmiRequest, 1);
  }
  b.run.ResetRequest = 1;
  b.Pass();
  EXPECT_EQ(b.run.NmiRequest, 0);
  EXPECT_EQ(b.s.PC, 0);
  b.m->PortShadow[2] = 0xB0;
  b.Poke(0, {0x00});
  b.Pass();
  EXPECT_EQ(b.s.PC, 1);
}

TEST(Z80Request, NmiGoesBeforeTheInterrupt) {
  Bench b;
  Enable(b);
  b.run.NmiRequest = 1;
  b.Pass({0x00});
  Z80State want = b.s;
  want.PC = 0x66, want.SP = kStack - 2, want.IFF1 = 0, want.IFF2 = 1, want.IrqLine = 1;
  EXPECT_TRUE(SameState(b.s, want));
}

TEST(Z80Request, ResetWinsOverNmiAndInterrupt) {
  for (const int32_t halted : {0, 1}) {
    Bench b;
    Enable(b);
    b.s.Halted = halted;
    b.Poke(kStack - 2, {0x11, 0x22});
    b.run.NmiRequest = 1, b.run.ResetRequest = 1;
    b.Pass({0x00});
    EXPECT_EQ(b.s.PC, 0);
    EXPECT_EQ(b.s.Halted, 0);
    EXPECT_EQ(b.run.NmiRequest, 0);
    EXPECT_EQ(b.run.ResetRequest, 0);
    EXPECT_EQ(b.s.IrqLine, 0);
    EXPECT_EQ(b.OnStack(), 0x2211);
    EXPECT_EQ(b.Taken(), 4 + 3);
  }
}

TEST(Z80Request, ResetGivesThePowerOnRegisters) {
  Bench b;
  Enable(b);
  b.s.UnDocEnabled = 0, b.s.Halted = 1, b.s.IM = 2;
  b.run.NmiRequest = b.run.ResetRequest = 1;
  Z80State want = test::PowerOnState();
  want.UnDocEnabled = 0;
  want.CurOpcode = b.s.CurOpcode, want.PrefixState = b.s.PrefixState, want.IndexDisp = b.s.IndexDisp;
  CpuReset(*b.m);
  EXPECT_TRUE(SameState(b.s, want));
  EXPECT_EQ(b.run.NmiRequest, 0);
  EXPECT_EQ(b.run.ResetRequest, 0);
  EXPECT_EQ(b.Taken(), 3);
  Z80State fresh{};
  CpuInit(fresh);
  want.CurOpcode = want.PrefixState = want.IndexDisp = 0;
  EXPECT_TRUE(SameState(fresh, want));  // UnDocEnabled is the machine's, not the processor's
}

}  // namespace
}  // namespace quoll::z80test
