// Prefix chains, unknown instructions, and the instructions by which a program drives the emulator.
#include <cstdint>
#include <vector>

#include "loop/MissingOP.h"
#include "z80/test/PassBench.h"

namespace quoll::z80test {
namespace {

using Beeps = std::vector<std::pair<int, int>>;

TEST(Z80Prefix, APrefixAfterAnIndexPrefixIsUnknownAndTheRestRunsUnprefixed) {
  Bench b;
  for (const int first : {0xDD, 0xFD})
    for (const int second : {0xDD, 0xED, 0xFD}) {
      b.Restart();
      b.Poke(kOrigin, {first, second, 0x21, 0x34, 0x12});
      b.Pass();
      EXPECT_EQ(b.s.PC, kOrigin + 2);
      EXPECT_EQ(b.s.PrefixState, 0);
      EXPECT_EQ(b.Taken(), 0);
      EXPECT_EQ(b.s.R, kStartR);
      EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
      b.Pass();  // LD HL,nn
      EXPECT_EQ(b.s.H, 0x12);
      EXPECT_EQ(b.s.L, 0x34);
      EXPECT_EQ(b.s.IX, 0x7012);
      EXPECT_EQ(b.s.IY, 0x71F4);
      EXPECT_EQ(b.Taken(), 10);
    }
}

TEST(Z80Prefix, APrefixAfterEdIsUnknown) {
  Bench b;
  for (const int second : {0xCB, 0xDD, 0xED, 0xFD}) {
    b.Restart();
    b.Pass({0xED, second, 0x3C});
    EXPECT_EQ(b.s.PC, kOrigin + 2);
    EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
    b.Pass();
    EXPECT_EQ(b.s.A, 0x56);
  }
}

TEST(Z80Prefix, PrefixBytesAfterCbAreOrdinaryOpcodes) {
  Bench b;
  b.s.E = 0x00;
  b.Pass({0xCB, 0xDB});  // SET 3,E
  EXPECT_EQ(b.s.E, 0x08);
  b.s.L = 0x00;
  b.Pass({0xCB, 0xDD});  // SET 3,L
  EXPECT_EQ(b.s.L, 0x08);
  b.Pass({0xCB, 0xFD});  // SET 7,L
  EXPECT_EQ(b.s.L, 0x88);
  b.Pass({0xCB, 0xED});  // SET 5,L
  EXPECT_EQ(b.s.L, 0xA8);
  EXPECT_EQ(b.m->screen.Label1, "before");
}

TEST(Z80Prefix, TheIndexedCbPagesTakeTheDisplacementBeforeTheOpcode) {
  Bench b;
  b.Poke(0x7012 + 0x46, {0x80});
  b.Poke(0x71F4 + 0x46, {0x80});
  b.Pass({0xDD, 0xCB, 0x46, 0x06});
  EXPECT_EQ(b.Peek(0x7012 + 0x46), 0x01);
  EXPECT_EQ(b.Taken(), 23);
  EXPECT_EQ(b.s.CurOpcode, 0x06);
  EXPECT_EQ(b.s.IndexDisp, 0x46);
  b.Restart();
  b.Pass({0xFD, 0xCB, 0x46, 0x06});
  EXPECT_EQ(b.Peek(0x71F4 + 0x46), 0x01);
  EXPECT_EQ(b.Taken(), 20);
  EXPECT_EQ(b.s.CurOpcode, 0x06);
  EXPECT_EQ(b.s.IndexDisp, 0x46);
}

TEST(Z80Prefix, FdCbRrcAddsSixToR) {
  Bench b;
  b.Pass({0xFD, 0xCB, 0x00, 0x0E});
  EXPECT_EQ(b.s.R, kStartR + 6);
  b.Restart();
  b.Pass({0xDD, 0xCB, 0x00, 0x0E});
  EXPECT_EQ(b.s.R, kStartR + 1);
}

TEST(Z80Prefix, AnUnknownDdCbOpcodeIsRunAgainUnprefixed) {
  Bench b;
  b.s.IX = 0x7012;
  b.Poke(kOrigin, {0xDD, 0xCB, 0x05, 0x3C});
  b.Pass();
  EXPECT_EQ(b.s.PC, kOrigin + 3);
  EXPECT_EQ(b.Taken(), 0);
  EXPECT_EQ(b.s.R, kStartR);
  EXPECT_EQ(b.s.A, 0x55);
  b.Pass();
  EXPECT_EQ(b.s.A, 0x56);  // INC A
  EXPECT_EQ(b.s.PC, kOrigin + 4);
}

TEST(Z80Prefix, AnUnknownFdCbOpcodeResumesAtItsDisplacement) {
  Bench b;
  b.Poke(kOrigin, {0xFD, 0xCB, 0x05, 0x3C});
  b.Pass();
  EXPECT_EQ(b.s.PC, kOrigin + 2);
  EXPECT_EQ(b.Taken(), 0);
  EXPECT_EQ(b.s.B, 0x64);
  b.Pass();
  EXPECT_EQ(b.s.B, 0x63);  // DEC B
  EXPECT_EQ(b.s.A, 0x55);
  b.Pass();
  EXPECT_EQ(b.s.A, 0x56);  // INC A
}

TEST(Z80Prefix, IndexedSllIsUnknownWithoutUndocumentedInstructions) {
  Bench b;
  for (const int prefix : {0xDD, 0xFD})
    for (int op = 0x30; op <= 0x37; ++op) {
      b.Restart();
      b.s.UnDocEnabled = 0;
      const int32_t place = (prefix == 0xDD ? 0x7012 : 0x71F4) + 1;
      b.Poke(place, {0x11});
      b.Pass({prefix, 0xCB, 0x01, op});
      EXPECT_EQ(b.Peek(place), 0x11);
      EXPECT_EQ(b.s.PC, kOrigin + (prefix == 0xDD ? 3 : 2));
      EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
    }
}

TEST(Z80Prefix, DdZeroPassesTheZero) {
  Bench b;
  b.Pass({0xDD, 0x00});
  EXPECT_EQ(b.s.PC, kOrigin + 2);
  EXPECT_EQ(b.Taken(), 0);
  EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
}

TEST(Z80Prefix, DdSixtyFourDependsOnUndocumentedInstructions) {
  Bench b;
  b.Pass({0xDD, 0x64});
  EXPECT_EQ(b.Taken(), 8);
  EXPECT_EQ(b.s.R, kStartR + 2);
  EXPECT_EQ(b.m->screen.Label1, "before");
  b.Restart();
  b.s.UnDocEnabled = 0;
  b.Pass({0xDD, 0x64});
  EXPECT_EQ(b.Taken(), 0);
  EXPECT_EQ(b.s.R, kStartR);
  EXPECT_EQ(b.s.PC, kOrigin + 2);
  EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
}

// The index pages look at the byte after the opcode even where it is no displacement.
TEST(Z80Prefix, EveryIndexOpcodeSetsTheDisplacement) {
  Bench b;
  for (const int prefix : {0xDD, 0xFD})
    for (int op = 0; op < 256; ++op) {
      if (op == 0xCB || (prefix == 0xFD && op == 0xF2)) continue;
      for (const int32_t unDocEnabled : {0, 1}) {
        b.Restart();
        b.s.UnDocEnabled = unDocEnabled;
        b.s.IndexDisp = 1;
        b.Pass({prefix, op, 0x85});
        ASSERT_EQ(b.s.IndexDisp, -123) << prefix << " " << op;
      }
    }
}

TEST(Z80Prefix, EveryIndexedCbOpcodeSetsTheDisplacement) {
  Bench b;
  for (const int prefix : {0xDD, 0xFD})
    for (int op = 0; op < 256; ++op) {
      b.Restart();
      b.Pass({prefix, 0xCB, 0x80, op, 0x01});
      ASSERT_EQ(b.s.IndexDisp, -128) << prefix << " " << op;
    }
}

TEST(Z80Prefix, OtherPagesLeaveTheDisplacement) {
  Bench b;
  for (const auto& code : {std::vector{0x21, 0x11, 0x22}, {0xCB, 0x00}, {0xED, 0x44}, {0xED, 0x00}}) {
    b.Restart();
    b.s.IndexDisp = -77;
    b.Pass(code);
    EXPECT_EQ(b.s.IndexDisp, -77);
  }
}

TEST(Z80Prefix, APassCanStartBehindAPrefix) {
  Bench b;
  b.s.PrefixState = 0xED;
  b.Pass({0x44});  // NEG
  EXPECT_EQ(b.s.A, 0xAB);
  EXPECT_EQ(b.s.PC, kOrigin + 1);
  b.Restart();
  b.s.PrefixState = 0xDDCB;
  b.Poke(0x7012 + 3, {0x80});
  b.Pass({0x03, 0x06});
  EXPECT_EQ(b.Peek(0x7012 + 3), 0x01);
  EXPECT_EQ(b.s.PC, kOrigin + 2);
}

TEST(Z80Prefix, AWrongPrefixEndsTheProgram) {
  for (const auto& [prefix, text] : {std::pair{0x1234, "4660=Unknown prefix"},
                                     {1, "1=Unknown prefix"},
                                     {0xCBCB, "52171=Unknown prefix"}}) {
    Bench b;
    b.s.PrefixState = prefix;
    EXPECT_THROW(b.Pass({0x00}), ProgramEnd);
    ASSERT_EQ(b.host.messages.size(), 1U);
    EXPECT_EQ(b.host.messages[0].text, text);
    EXPECT_EQ(b.host.messages[0].title, "CPU ERROR!");
  }
}

TEST(Z80Missing, AnUnknownInstructionWritesTheLabelAndMovesOn) {
  Bench b;
  b.s.PrefixState = 0xED;
  Z80State want = b.s;
  MissingOP(*b.m);
  want.PrefixState = 0, want.PC += 1;
  EXPECT_TRUE(SameState(b.s, want));
  EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
  EXPECT_EQ(b.m->screen.window.caption, "Unknown Opcode!");
  EXPECT_EQ(b.Taken(), 0);
  EXPECT_EQ(b.run.FrameClock, kStartCycles);
  EXPECT_TRUE(b.host.messages.empty());
}

TEST(Z80Missing, TheRunGoesOnAndTheTextStays) {
  Bench b;
  b.Poke(kOrigin, {0xED, 0x00, 0x3C, 0xFD, 0xF3});
  b.run.CpuRunning = 1;
  RunLoop(*b.m);
  EXPECT_EQ(b.s.PC, kOrigin + 5);
  EXPECT_EQ(b.s.A, 0x56);
  EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
  EXPECT_TRUE(b.host.messages.empty());
}

TEST(Z80Missing, SllWithoutUndocumentedInstructionsCountsTwoBytes) {
  Bench b;
  b.s.UnDocEnabled = 0;
  b.Pass({0xCB, 0x30});
  EXPECT_EQ(b.s.PC, kOrigin + 2);
  EXPECT_EQ(b.Taken(), 0);
  EXPECT_EQ(b.s.B, 0x64);
  EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
}

TEST(Z80Pseudo, F0WithInterruptsDisabledDoesNothing) {
  Bench b;
  b.s.IFF2 = 1;
  Z80State want = b.s;
  b.Pass({0xFD, 0xF0});
  want.PC += 2, want.CurOpcode = 0xF0, want.IndexDisp = b.s.IndexDisp;
  EXPECT_TRUE(SameState(b.s, want));
  EXPECT_EQ(b.Taken(), 0);
  EXPECT_TRUE(b.host.beeps.empty());
}

TEST(Z80Pseudo, F0WithInterruptsEnabledIsAcceptedInItsOwnPass) {
  Bench b;
  b.s.IFF1 = b.s.IFF2 = 1;
  b.Pass({0xFD, 0xF0});
  EXPECT_EQ(b.s.PC, 0x38);
  EXPECT_EQ(b.s.IrqLine, 1);
  EXPECT_EQ(b.s.IFF1, 0);
  EXPECT_EQ(b.s.IFF2, 0);
  EXPECT_EQ(b.s.SP, kStack - 2);
  EXPECT_EQ(b.Peek(kStack - 2) + 256 * b.Peek(kStack - 1), kOrigin + 2);
  EXPECT_EQ(b.Taken(), 11);
  EXPECT_EQ(b.s.R, kStartR + 1);
  EXPECT_TRUE(b.host.beeps.empty());
}

TEST(Z80Pseudo, F1BeepsAndIsAcceptedInItsOwnPass) {
  Bench b;
  b.s.IFF1 = 1, b.s.IFF2 = 0;
  b.Pass({0xFD, 0xF1});
  EXPECT_EQ(b.run.NmiRequest, 1);
  EXPECT_EQ(b.host.beeps, (Beeps{{600, 500}}));
  EXPECT_EQ(b.s.PC, 0x66);
  EXPECT_EQ(b.Peek(kStack - 2) + 256 * b.Peek(kStack - 1), kOrigin + 2);
  EXPECT_EQ(b.s.IFF1, 0);
  EXPECT_EQ(b.s.IFF2, 1);
  EXPECT_EQ(b.Taken(), 11);
}

TEST(Z80Pseudo, F2BeepsAndResetsInItsOwnPass) {
  Bench b;
  b.Pass({0xFD, 0xF2});
  EXPECT_EQ(b.host.beeps, (Beeps{{600, 500}}));
  EXPECT_EQ(b.run.ResetRequest, 0);
  EXPECT_EQ(b.s.PC, 0);
  EXPECT_EQ(b.s.SP, 0xFFFF);
  EXPECT_EQ(b.s.A, 255);
  EXPECT_EQ(b.m->PortShadow[2], 0);
  EXPECT_EQ(b.Taken(), 3);
}

TEST(Z80Pseudo, F3StopsTheRunOnTheNextInstruction) {
  Bench b;
  b.Poke(kOrigin, {0x3C, 0xFD, 0xF3, 0x3C, 0x3C});
  b.run.CpuRunning = 1;
  RunLoop(*b.m);
  EXPECT_EQ(b.run.CpuRunning, 0);
  EXPECT_EQ(b.s.PC, kOrigin + 3);
  EXPECT_EQ(b.s.A, 0x56);
  EXPECT_EQ(b.Taken(), 4);
  EXPECT_EQ(b.s.R, kStartR + 1);
  EXPECT_EQ(b.host.beeps, (Beeps{{600, 200}}));
}

TEST(Z80Pseudo, TheDdPageHasNone) {
  Bench b;
  for (int op = 0xF0; op <= 0xF3; ++op) {
    b.Restart();
    b.s.IFF1 = 1;
    b.Pass({0xDD, op});
    EXPECT_EQ(b.m->screen.Label1, "Unknown Opcode!");
    EXPECT_EQ(b.s.IrqLine + b.run.NmiRequest + b.run.ResetRequest, 0);
    EXPECT_TRUE(b.host.beeps.empty());
  }
}

}  // namespace
}  // namespace quoll::z80test
