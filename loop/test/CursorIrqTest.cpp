// The two interrupts of the machine's own: the cursor's and the tone generator's. Both clear bit 4 of the
// status.
#include <gtest/gtest.h>

#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

struct Cursor {
  int r14, r15, r6, r10;
  int32_t first, last;  // T-states of the frame at which the interrupt is raised; first 0: never
};

// Worked out by hand. The position is B = (R14 AND 15) x 256 + R15 + 392, reached at 13.6 x B T-states, left
// at 13.6 x (B + 2), and R6 x 1360 bounds it.
constexpr Cursor kCursors[] = {
    {0x00, 0x00, 60, 0x00, 5332, 5358},    // 392: 5331.2 to 5358.4
    {0x00, 0x01, 60, 0x01, 5345, 5371},    // 393: 5344.8 to 5372, which is left out
    {0x00, 0x03, 60, 0x02, 5372, 5399},    // 395: 5372 itself to 5399.2
    {0x01, 0x10, 60, 0x03, 9031, 9057},    // 664: 9030.4 to 9057.6
    {0x03, 0xE8, 60, 0x00, 18932, 18958},  // 1392: 18931.2 to 18958.4
    {0x3F, 0xFF, 60, 0x00, 61024, 61050},  // 4487: 61023.2 to 61050.4; two bits of R14 do not count
    {0x0F, 0xFF, 60, 0x00, 61024, 61050},
    {0x0F, 0xFF, 45, 0x00, 61024, 61050},  // rows to 61200
    {0x0F, 0xFF, 44, 0x00, 0, 0},          // rows to 59840
    {0x00, 0x07, 4, 0x00, 5427, 5439},     // 399: 5426.4 to 5453.6, cut by 4 rows at 5440
    {0x00, 0x07, 5, 0x00, 5427, 5453},
    {0x00, 0x08, 4, 0x00, 0, 0},   // 400: from 5440 on, where the rows have ended
    {0x00, 0x00, 0, 0x00, 0, 0},   // no rows
    {0x00, 0x00, 60, 0x04, 0, 0},  // R10 from 4 on
    {0x00, 0x00, 60, 0x20, 0, 0},
    {0x00, 0x00, 60, 0x7F, 0, 0},
    {0x00, 0x00, 3, 0x00, 0, 0},  // rows to 4080
};

void SetCursor(Machine& m, const Cursor& c) {
  m.crtc.CrtcRegs[14] = c.r14;
  m.crtc.CrtcRegs[15] = c.r15;
  m.crtc.CrtcRegs[6] = c.r6;
  m.crtc.CrtcRegs[10] = c.r10;
}

bool Inside(const Cursor& c, int32_t clock) { return c.first != 0 && clock >= c.first && clock <= c.last; }

bool Raised(const Machine& m) { return (m.PortShadow[kStatusPort] & 0x10) == 0; }

TEST(CursorIrqTest, RaisedAtExactlyTheseTStates) {
  for (const Cursor& cursor : kCursors) {
    TestMachine m;
    SetCursor(*m, cursor);
    for (int32_t clock = 4; clock <= 62500; ++clock) {
      m->z80.PC = 0x1000;
      m->PortShadow[kStatusPort] = 0xFF;
      m->run.FrameClock = clock - 4;
      m->run.LastCursorIrq = 0;
      Step(*m);
      ASSERT_EQ(m->run.FrameClock, clock);
      ASSERT_EQ(m->PortShadow[kStatusPort], Inside(cursor, clock) ? 0xEF : 0xFF)
          << "R14 " << cursor.r14 << " R15 " << cursor.r15 << " R6 " << cursor.r6 << " clock " << clock;
      ASSERT_EQ(m->run.LastCursorIrq, Inside(cursor, clock) ? clock : 0);
    }
  }
}

TEST(CursorIrqTest, OnlyAfterTheLastOne) {
  for (const int32_t last : {5339, 5340, 5341, 0, -1, 5336, 62500}) {
    TestMachine m;
    SetCursor(*m, kCursors[0]);
    m->run.FrameClock = 5336;
    m->run.LastCursorIrq = last;
    Step(*m);  // to 5340
    EXPECT_EQ(Raised(*m), last < 5340) << last;
    EXPECT_EQ(m->run.LastCursorIrq, last < 5340 ? 5340 : last);
  }
}

// In a run the interrupt comes with the first instruction that ends in the window, for any phase of the
// frame; the next one lets it in.
TEST(CursorIrqTest, ARunStopsForIt) {
  for (const Cursor& cursor : kCursors) {
    for (int32_t start = 0; start < 32; ++start) {
      TestMachine m;
      SetCursor(*m, cursor);
      m->z80.PC = 0x4000;
      m->z80.SP = 0x9000;
      m->z80.IM = 1;
      m->z80.IFF1 = 1;
      m->run.FrameClock = start;
      Put(*m, 0x0038, {0xFD, 0xF3});
      int32_t clock = start;
      int32_t passes = 0;
      while (clock <= 62500 && !Inside(cursor, clock)) {
        clock += 4;
        ++passes;
      }
      RunOn(*m);
      if (clock > 62500) {
        ASSERT_EQ(m.host.frames, 1);
        ASSERT_EQ(m->z80.PC, 0x4000 + passes);
        ASSERT_FALSE(Raised(*m));
        continue;
      }
      ASSERT_EQ(m.host.frames, 0) << start;
      ASSERT_EQ(m->z80.PC, 0x3A);
      ASSERT_EQ(Word(*m, 0x8FFE), 0x4000 + passes + 1) << start;
      ASSERT_EQ(m->run.FrameClock, clock + 4 + 11);
      // The accepted pass ends at clock + 15, and the stop of no T-states does not raise it again.
      ASSERT_EQ(m->run.LastCursorIrq, Inside(cursor, clock + 15) ? clock + 15 : clock) << start;
    }
  }
}

// Without interrupts every instruction in the window raises the flag; the last one stays as the mark.
TEST(CursorIrqTest, EveryInstructionInTheWindowRaisesIt) {
  TestMachine m;
  SetCursor(*m, kCursors[0]);
  m->z80.PC = 0x4000;
  Put(*m, 0x4000 + 1400, {0xFD, 0xF3});  // at 5600
  RunOn(*m);
  EXPECT_EQ(m->run.LastCursorIrq, 5356);  // 4 x 1339; the next would be 5360
  EXPECT_TRUE(Raised(*m));
  EXPECT_EQ(m->z80.IrqLine, 0);
}

TEST(CursorIrqTest, ALongInstructionStepsOverIt) {
  struct Case {
    int32_t start;
    bool raised;
  };
  // INC (IX+d) of 23 T-states with an NMI of 11: 34, more than the window's 27.
  constexpr Case kCases[] = {{5297, false}, {5298, true},  {5324, true},
                             {5325, false}, {5331, false}, {5332, false}};
  for (const auto& [start, raised] : kCases) {
    TestMachine m;
    SetCursor(*m, kCursors[0]);
    m->z80.IX = 0x2000;
    m->z80.SP = 0x9000;
    m->run.NmiRequest = 1;
    m->run.FrameClock = start;
    Program(*m, 0x1000, {0xDD, 0x34, 0x00});
    Step(*m);
    EXPECT_EQ(m->run.FrameClock, start + 34);
    EXPECT_EQ(Raised(*m), raised) << start;
    if (start + 34 <= 5358) continue;
    m->run.NmiRequest = 0;
    RunOn(*m);  // nothing more in this frame
    EXPECT_FALSE(Raised(*m)) << start;
  }
}

// The registers can be set in the midst of a run, through any of the data ports.
TEST(CursorIrqTest, AProgramMovesTheCursorWhileItRuns) {
  for (const int port : {0x71, 0x73, 0x75, 0x77}) {
    TestMachine m;
    SetCursor(*m, {0x0F, 0xFF, 60, 0x20, 0, 0});
    m->z80.PC = 0x4000;
    m->z80.SP = 0x9000;
    m->z80.IM = m->z80.IFF1 = 1;
    Put(*m, 0x0038, {0xFD, 0xF3});
    std::vector<int> code;
    for (const auto& [reg, value] : {std::pair{14, 0x01}, {15, 0x10}, {10, 0x03}}) {
      code.insert(code.end(), {0x3E, reg, 0xD3, 0x70, 0x3E, value, 0xD3, port});
    }
    int32_t at = 0x4000;
    for (const int byte : code) Put(*m, at++, {byte});
    RunOn(*m);
    // 3 x 36 = 108 T-states, then NOPs: 9031 is passed at 9032, accepted with the next.
    EXPECT_EQ(m->run.LastCursorIrq, 9047);  // 9032 + 15 lies in the window too
    EXPECT_EQ(m->run.FrameClock, 9047);
    EXPECT_EQ(m->z80.PC, 0x3A);
  }
}

// A whole frame passes without the interrupt.
void ExpectQuietFrame(TestMachine& m) {
  RunOn(*m);
  EXPECT_FALSE(Raised(*m));
  EXPECT_EQ(m.host.frames, 1);
}

TEST(CursorIrqTest, SwitchingTheCursorOffInARunWorksToo) {
  TestMachine m;
  SetCursor(*m, kCursors[0]);
  m->z80.PC = 0x4000;
  // LD A,10  OUT (70),A  LD A,20h  OUT (71),A
  Put(*m, 0x4000, {0x3E, 10, 0xD3, 0x70, 0x3E, 0x20, 0xD3, 0x71});
  ExpectQuietFrame(m);
}

TEST(CursorIrqTest, OnceAFrameWithAHandler) {
  TestMachine m;
  m.host.framesAllowed = 5;
  SetCursor(*m, {0x03, 0xE8, 60, 0x00, 0, 0});
  m->z80.SP = 0x9000;
  m->z80.IM = m->z80.IFF1 = 1;
  m->z80.D = 0;
  Program(*m, 0x4000, {0xC3, 0x00, 0x40});                      // JP 4000
  Put(*m, 0x0038, {0x14, 0xE3, 0xE3, 0xD3, 0x07, 0xFB, 0xC9});  // INC D  EX (SP),HL twice  OUT (7),A  EI  RET
  RunOn(*m);
  EXPECT_EQ(m->z80.D, 5);
  EXPECT_EQ(m->z80.SP, 0x9000);
}

TEST(CursorIrqTest, AfterAResetItIsOff) {
  TestMachine m;
  SetCursor(*m, kCursors[0]);
  m->run.ResetRequest = 1;
  Step(*m);
  m->PortShadow[2] = kAllRam;
  ExpectQuietFrame(m);
}

}  // namespace

}  // namespace quoll::test
