// Clocks and counters that a script has set to anything: the loop stays defined, numbers of 32 bits wrap.
#include <gtest/gtest.h>

#include <climits>
#include <string_view>
#include <vector>

#include "testkit/TestMachine.h"
#include "z80/Z80Fields.h"

namespace quoll::test {

namespace {

// Adds as a 32-bit register does.
int32_t Wrap(int64_t sum) { return static_cast<int32_t>(static_cast<uint32_t>(sum)); }

constexpr int32_t kAnything[] = {INT_MIN, INT_MIN + 3, -100000, -1,           0,           62496,  62497,
                                 62500,   62501,       200000,  INT_MAX - 14, INT_MAX - 3, INT_MAX};

TEST(RangeTest, AnyFrameClock) {
  for (const int32_t clock : kAnything) {
    TestMachine m;
    m->run.FrameClock = clock;
    Step(*m);
    const int32_t after = Wrap(int64_t{clock} + 4);
    EXPECT_EQ(m->run.FrameClock, after > 62500 ? after - 62500 : after) << clock;
    EXPECT_EQ(m.host.frames, after > 62500 ? 1 : 0) << clock;
  }
}

TEST(RangeTest, AnyFrameClockInARun) {
  for (const int32_t start : kAnything) {
    TestMachine m;
    m.host.framesAllowed = 3;
    m->run.FrameClock = start;
    Program(*m, 0x1000, {0xC3, 0x00, 0x10});  // JP 1000, 10 T-states
    if (start < -1000000 || start > INT_MAX - 10) continue;
    int64_t clock = start;
    int32_t passes = 0;
    for (int frames = 0; frames < 3;) {
      clock += 10;
      ++passes;
      if (clock > 62500) {
        clock -= 62500;
        ++frames;
      }
    }
    RunOn(*m);
    EXPECT_EQ(m->run.FrameClock, clock) << start;
    EXPECT_EQ(m->z80.R, passes % 256) << start;
  }
}

TEST(RangeTest, AnyCyclesAndToneCounter) {
  for (const bool inARun : {false, true}) {
    for (const int32_t value : kAnything) {
      TestMachine m;
      m->z80.PC = 0x1000;
      Put(*m, 0x1001, {0xFD, 0xF3});
      m->run.Cycles = value;
      m->run.ToneItCounter = value;
      RunOrStep(*m, inARun, 1);
      int32_t cycles = Wrap(int64_t{value} + 4);
      // A run's stop takes no time, but its pass folds once more.
      for (int pass = 0; pass < (inARun ? 2 : 1); ++pass) {
        if (cycles > 62500) cycles -= 62500;
      }
      EXPECT_EQ(m->run.Cycles, cycles) << value;
      const int32_t tone = Wrap(int64_t{value} - 4);
      EXPECT_EQ(m->run.ToneItCounter, tone < 1 ? 65536 : tone) << value;
      EXPECT_EQ(m->run.FrameClock, 4);
    }
  }
}

TEST(RangeTest, AnyCyclesAtAnAcceptanceOrAReset) {
  for (const int32_t value : kAnything) {
    for (const int what : {0, 1, 2}) {
      TestMachine m;
      m->z80.PC = 0x1000;
      m->z80.SP = 0x9000;
      m->z80.IM = 1;
      m->run.Cycles = value;
      m->z80.IFF1 = m->z80.IrqLine = what == 0 ? 1 : 0;
      m->run.NmiRequest = what == 1 ? 1 : 0;
      m->run.ResetRequest = what == 2 ? 1 : 0;
      Step(*m);
      const int32_t passed = what == 2 ? 7 : 15;
      const int32_t cycles = Wrap(int64_t{value} + passed);
      EXPECT_EQ(m->run.Cycles, cycles > 62500 ? cycles - 62500 : cycles) << value << " " << what;
      EXPECT_EQ(m->run.FrameClock, passed);
    }
  }
}

TEST(RangeTest, AnyRefreshCounter) {
  for (const bool inARun : {false, true}) {
    for (const int32_t value : kAnything) {
      TestMachine m;
      m->z80.PC = 0x1000;
      m->z80.R = value;
      Put(*m, 0x1001, {0xFD, 0xF3});
      RunOrStep(*m, inARun, 1);
      EXPECT_EQ(m->z80.R, Wrap(int64_t{value} + 1) & 0xFF) << value;
    }
  }
}

// Every opcode of every page with registers of any 32 bits, as a snapshot may bring them: what the pages look
// tables up with stays in its range, and a register is whole until an instruction writes it, which makes 16
// bits of it.
TEST(RangeTest, AnyWideRegisters) {
  const std::vector<std::vector<int>> pages = {{},     {0xCB},          {0xED},         {0xDD},
                                               {0xFD}, {0xDD, 0xCB, 5}, {0xFD, 0xCB, 5}};
  for (const int32_t value : {INT_MIN, -1, 0x12345, INT_MAX}) {
    for (const auto& page : pages) {
      for (int opcode = 0; opcode < 256; ++opcode) {
        SCOPED_TRACE(testing::Message()
                     << value << " page " << (page.empty() ? 0 : page[0]) << " opcode " << opcode);
        TestMachine m;
        Z80State& z80 = m->z80;
        z80.IX = z80.IY = z80.SP = z80.I = z80.R = z80.IFF1 = z80.IFF2 = z80.IrqLine = value;
        z80.IM = 1;
        z80.PC = 0x4000;
        int32_t at = 0x4000;
        for (const int byte : page) Put(*m, at++, {byte});
        Put(*m, at, {opcode, 0x12, 0x34});
        Step(*m);
        if (z80.PrefixState != 0) Step(*m);
        for (size_t i = 0; i < kZ80Bytes; ++i) {
          const int32_t top = kZ80Fields[i].name.find("Flag") != std::string_view::npos ? 1 : 255;
          EXPECT_TRUE(z80.*kZ80Fields[i].field >= 0 && z80.*kZ80Fields[i].field <= top) << kZ80Fields[i].name;
        }
        for (const int32_t pair : {z80.IX, z80.IY, z80.SP})
          EXPECT_TRUE(pair == value || (pair >= 0 && pair <= 0xFFFF));
        EXPECT_TRUE(z80.R >= 0 && z80.R <= 256);  // 256 behind an acceptance
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

TEST(RangeTest, AnyCrtcRegister) {
  for (const int32_t value : kAnything) {
    for (const size_t reg : {6U, 10U, 14U, 15U, 18U}) {
      TestMachine m;
      m->crtc.CrtcRegs[10] = 0;
      m->crtc.CrtcRegs[6] = 60;
      m->crtc.CrtcRegs[reg] = value;
      RunOn(*m);
      EXPECT_EQ(m->run.FrameClock, 4);
      int32_t port = 0x12;
      PortOut(*m, 0x71, port);
      PortIn(*m, 0x71);
    }
  }
}

TEST(RangeTest, AnyLastCursorIrq) {
  for (const int32_t value : kAnything) {
    TestMachine m;
    m->crtc.CrtcRegs[10] = 0;
    m->crtc.CrtcRegs[6] = 60;
    m->run.FrameClock = 5332;
    m->run.LastCursorIrq = value;
    Step(*m);  // to 5336, inside the window
    const bool raised = Wrap(int64_t{5336} - value) > 0;
    EXPECT_EQ(m->run.LastCursorIrq, raised ? 5336 : value) << value;
  }
}

}  // namespace

}  // namespace quoll::test
