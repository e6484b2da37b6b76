// The maskable interrupt: its line, its acceptance, its modes.
#include <cstdint>
#include <vector>

#include "loop/Interrupts.h"
#include "machine/Ports.h"
#include "z80/test/PassBench.h"

namespace quoll::z80test {
namespace {

TEST(Z80Interrupt, EntryInMode1PushesAndJumps) {
  for (const int32_t sp : {kStack, 0x0000, 0x0001, 0x0002, 0xFFFF}) {
    Bench b;
    Enable(b);
    b.s.SP = sp, b.s.PC = 0x1234;
    Z80State want = b.s;
    IrqEnter(*b.m);
    want.IFF1 = want.IFF2 = 0, want.PC = 0x38, want.R += 1, want.SP = (sp + 0xFFFE) % 0x10000;
    EXPECT_TRUE(SameState(b.s, want));
    EXPECT_EQ(b.OnStack(sp), 0x1234);
    EXPECT_EQ(b.Taken(), 11);
    EXPECT_TRUE(b.host.messages.empty());
  }
}

TEST(Z80Interrupt, EntryPushesTheLow16BitsOfPC) {
  Bench b;
  b.s.PC = 0x2ABCD;
  IrqEnter(*b.m);
  EXPECT_EQ(b.OnStack(), 0xABCD);
  b.Restart();
  b.s.PC = 0x10042;
  NmiEnter(*b.m);
  EXPECT_EQ(b.OnStack(), 0x0042);
}

TEST(Z80Interrupt, EntryInModes0And2StopsWithAMessage) {
  for (const int32_t mode : {0, 2}) {
    Bench b;
    Enable(b);
    b.s.IM = mode;
    b.run.CpuRunning = 1;
    b.Poke(kStack - 2, {0x11, 0x22});
    Z80State want = b.s;
    IrqEnter(*b.m);
    want.IFF1 = want.IFF2 = 0;
    EXPECT_TRUE(SameState(b.s, want)) << mode;
    EXPECT_EQ(b.OnStack(), 0x2211);
    EXPECT_EQ(b.Taken(), 0);
    EXPECT_EQ(b.run.CpuRunning, 0);
    EXPECT_EQ(b.run.CpuError, 1);
    ASSERT_EQ(b.host.messages.size(), 1U);
    EXPECT_EQ(b.host.messages[0].text, "IM MODE 0 or 2 not allowed!");
  }
}

TEST(Z80Interrupt, IsAcceptedAtTheEndOfAPass) {
  Bench b;
  Enable(b);
  b.Pass({0x3C});
  EXPECT_EQ(b.s.A, 0x56);
  EXPECT_EQ(b.s.PC, 0x38);
  EXPECT_EQ(b.OnStack(), kOrigin + 1);
  EXPECT_EQ(b.Taken(), 4 + 11);
  EXPECT_EQ(b.run.FrameClock, kStartCycles + 15);
  EXPECT_EQ(b.s.R, kStartR + 2);
  EXPECT_EQ(b.s.IFF1 + b.s.IFF2, 0);
}

TEST(Z80Interrupt, NeedsIff1AndTheLine) {
  for (const auto& [iff1, line] : {std::pair{0, 0}, {0, 1}, {1, 0}}) {
    Bench b;
    b.s.IFF1 = iff1, b.s.IFF2 = 1, b.s.IrqLine = line;
    b.Pass({0x00});
    EXPECT_EQ(b.s.PC, kOrigin + 1);
    EXPECT_EQ(b.s.IrqLine, line);
  }
}

TEST(Z80Interrupt, IsNotAcceptedBehindAPrefix) {
  Bench b;
  Enable(b);
  b.Pass({0xDD, 0x23});
  EXPECT_EQ(b.s.IX, 0x7013);
  EXPECT_EQ(b.OnStack(), kOrigin + 2);
  b.Restart();
  Enable(b);
  b.Pass({0xFD, 0xCB, 0x00, 0xC6});
  EXPECT_EQ(b.Peek(0x71F4) & 1, 1);
  EXPECT_EQ(b.OnStack(), kOrigin + 4);
}

TEST(Z80Interrupt, AcceptanceComesAfterRIsMasked) {
  Bench b;
  Enable(b);
  b.s.R = 254;
  b.Pass({0x00});
  EXPECT_EQ(b.s.R, 256);
  b.Poke(0x38, {0x00});
  b.Pass();
  EXPECT_EQ(b.s.R, 1);
  b.Restart();
  b.s.R = 254;
  b.run.NmiRequest = 1;
  b.Pass({0x00});
  EXPECT_EQ(b.s.R, 256);
  b.run.NmiRequest = 0;
  b.Poke(0x66, {0x00});
  b.Pass();
  EXPECT_EQ(b.s.R, 1);
}

TEST(Z80Interrupt, EveryLowFlagOfTheStatusPortRaisesTheLine) {
  Bench b;
  for (int bit = 0; bit < 8; ++bit)
    for (const int32_t iff1 : {0, 1}) {
      b.Restart();
      b.s.IFF1 = iff1;
      b.m->PortShadow[kStatusPort] = static_cast<uint8_t>(0xFF - (1 << bit));
      b.Pass({0x00});
      EXPECT_EQ(b.s.IrqLine, iff1 == 1 && bit <= 4 ? 1 : 0) << bit;
      EXPECT_EQ(b.s.PC, kOrigin + 1) << "accepted in the pass that raised the line";
    }
}

TEST(Z80Interrupt, AfterEiAWaitingLineIsTakenAtOnce) {
  Bench b;
  b.s.IrqLine = 1;
  b.Pass({0xFB, 0x3C});
  EXPECT_EQ(b.s.PC, 0x38);
  EXPECT_EQ(b.OnStack(), kOrigin + 1);
  EXPECT_EQ(b.s.A, 0x55);
  EXPECT_EQ(b.Taken(), 4 + 11);
}

TEST(Z80Interrupt, AfterEiAFlagAloneIsTakenOneInstructionLater) {
  Bench b;
  b.m->PortShadow[kStatusPort] = 0xEF;
  b.Poke(kOrigin, {0xFB, 0x3C, 0x3C});
  b.Pass();
  EXPECT_EQ(b.s.PC, kOrigin + 1);
  EXPECT_EQ(b.s.IrqLine, 1);
  b.Pass();
  EXPECT_EQ(b.s.PC, 0x38);
  EXPECT_EQ(b.OnStack(), kOrigin + 2);
  EXPECT_EQ(b.s.A, 0x56);
}

TEST(Z80Interrupt, DiInTheSamePassPreventsIt) {
  Bench b;
  Enable(b);
  b.Pass({0xF3});
  EXPECT_EQ(b.s.PC, kOrigin + 1);
  EXPECT_EQ(b.s.IrqLine, 1);
}

TEST(Z80Interrupt, TheLineStaysUntilPort7IsWritten) {
  Bench b;
  Enable(b);
  b.m->PortShadow[kStatusPort] = 0xEF;
  b.Pass({0x00});
  EXPECT_EQ(b.s.PC, 0x38);
  EXPECT_EQ(b.s.IrqLine, 1);
  b.Poke(0x38, {0x00, 0xFB});  // a handler that forgets port 7
  b.Pass();
  EXPECT_EQ(b.s.PC, 0x39);
  b.Pass();
  EXPECT_EQ(b.s.PC, 0x38) << "taken again after EI";
  EXPECT_EQ(b.OnStack(kStack - 2), 0x3A);
  b.Poke(0x38, {0xD3, 0x07, 0xFB, 0x00});
  b.Pass();
  EXPECT_EQ(b.s.IrqLine, 0);
  EXPECT_EQ(b.m->PortShadow[kStatusPort], 0xFF);
  for (int i = 0; i < 2; ++i) b.Pass();  // EI lets nothing in any more
  EXPECT_EQ(b.s.IFF1, 1);
  EXPECT_EQ(b.s.PC, 0x3C);
  EXPECT_EQ(b.s.IrqLine, 0);
}

TEST(Z80Interrupt, Port7DoesNotSilenceACard) {
  Bench b;
  b.s.IFF1 = 1;
  b.m->PortShadow[kStatusPort] = 0xFB;
  b.Pass({0xD3, 0x07});
  EXPECT_EQ(b.s.IrqLine, 1);
  EXPECT_EQ(b.m->PortShadow[kStatusPort], 0xFB);
}

// The cursor stands at character position 0x188 of the frame, that is at T-state 5331.2.
TEST(Z80Interrupt, InMode2TheCursorInterruptStopsTheRunWithOneMessage) {
  Bench b;
  b.m->crtc.CrtcRegs[6] = 60, b.m->crtc.CrtcRegs[10] = 3;
  b.m->crtc.CrtcRegs[14] = b.m->crtc.CrtcRegs[15] = 0;
  b.run.FrameClock = 5328, b.run.LastCursorIrq = 0;
  b.s.IM = 2;
  b.Poke(kOrigin, {0xFB, 0x3C, 0x3C, 0x3C, 0xFD, 0xF3});
  b.run.CpuRunning = 1;
  RunLoop(*b.m);
  ASSERT_EQ(b.host.messages.size(), 1U);
  EXPECT_EQ(b.host.messages[0].text, "IM MODE 0 or 2 not allowed!");
  EXPECT_EQ(b.run.CpuRunning, 0);
  EXPECT_EQ(b.s.IFF1 + b.s.IFF2, 0);
  EXPECT_EQ(b.s.IrqLine, 1);
  EXPECT_EQ(b.s.PC, kOrigin + 2);
  EXPECT_EQ(b.s.SP, kStack);
  EXPECT_EQ(b.Taken(), 8);
  b.run.CpuRunning = 1;  // disabled, it does not come again
  RunLoop(*b.m);
  EXPECT_EQ(b.host.messages.size(), 1U);
  EXPECT_EQ(b.s.PC, kOrigin + 6);
}

TEST(Z80Interrupt, F0InMode0StopsWithTheMessage) {
  Bench b;
  b.s.IM = 0;
  b.s.IFF1 = b.s.IFF2 = 1;
  b.Pass({0xFD, 0xF0});
  EXPECT_EQ(b.host.messages.size(), 1U);
  EXPECT_EQ(b.s.PC, kOrigin + 2);
  EXPECT_EQ(b.s.IrqLine, 1);
}

}  // namespace
}  // namespace quoll::z80test
