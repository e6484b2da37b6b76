// What the Z80 monitor shows, against a plain telling of it, in machines of any state.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

#include "devtools/test/model/PlainDisAsm.h"
#include "forms/test/MonitorBench.h"

namespace quoll::test {
namespace {

std::string Hex(int32_t value, int digits) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%0*X", digits, static_cast<unsigned>(value));
  return text.data();
}

// The machine's characters beyond ASCII in the window's code page, in pairs.
constexpr const char* kNational =
    "7FDB 80B5 8190 8292 83E0 8499 858A 86E9 879A 88EB 89DA 8AC0 8BB3 8CC3 8DC2 8EC5 8FC6 "
    "90A0 9182 928C 93A2 9494 958B 96A3 9781 98FB 99BF 9AD9 9BC4 9CB4 9DC1 9EAC 9FE6 ";

char Character(int byte) {
  if (byte < 0x20 || byte > 0x9F) return '.';
  if (byte < 0x7F) return static_cast<char>(byte);
  const char* found = std::strstr(kNational, Hex(byte, 2).c_str());
  while ((found - kNational) % 5 != 0) found = std::strstr(found + 1, Hex(byte, 2).c_str());
  return static_cast<char>(std::stoi(std::string(found + 2, 2), nullptr, 16));
}

template <class Read>
std::string Rows(int32_t address, Read read) {
  std::string text;
  for (int row = 0; row < 8; ++row, address += 16) {
    std::string characters;
    text += (row > 0 ? "\r\n" : "") + Hex(address, 4) + ": ";
    for (int32_t a = address; a < address + 16; ++a) {
      text += Hex(read(a), 2) + " ";
      characters += Character(read(a));
    }
    text += characters;
  }
  return text;
}

struct CPUmonViews : MonitorBench {
  void Randomize(Dice& dice);
  void ExpectAll();

  int32_t memoryFrom = 0, portsFrom = 0;
};

void CPUmonViews::Randomize(Dice& dice) {
  Machine& machine = *m;
  for (size_t i = 0; i + 8 < machine.MemImage.size(); i += 8) {
    const uint64_t word = dice();
    std::memcpy(&machine.MemImage[i], &word, sizeof word);
  }
  for (uint8_t& port : machine.PortShadow) port = static_cast<uint8_t>(Roll(dice, 256));
  machine.screen.x32KB = Roll(dice, 4) == 0;
  machine.VideoReadNoise = Roll(dice, 4) == 0;
  Z80State& z80 = machine.z80;
  for (int32_t* byte : {&z80.A, &z80.B, &z80.C, &z80.D, &z80.E, &z80.H, &z80.L, &z80.A2, &z80.B2, &z80.C2,
                        &z80.D2, &z80.E2, &z80.H2, &z80.L2, &z80.I, &z80.R})
    *byte = Roll(dice, 256);
  for (int32_t* pair : {&z80.IX, &z80.IY, &z80.SP}) *pair = Roll(dice, 0x10000);
  z80.PC = Roll(dice, Roll(dice, 8) == 0 ? 0x2C000 : 0x10000);  // it runs on past 16 bits
  for (int32_t* flag : {&z80.FlagS,    &z80.FlagZ,    &z80.FlagY,    &z80.FlagH,     &z80.FlagX,
                        &z80.FlagPV,   &z80.FlagN,    &z80.FlagC,    &z80.AltFlagS,  &z80.AltFlagZ,
                        &z80.AltFlagY, &z80.AltFlagH, &z80.AltFlagX, &z80.AltFlagPV, &z80.AltFlagN,
                        &z80.AltFlagC, &z80.IFF1,     &z80.IFF2,     &z80.Halted,    &z80.IrqLine})
    *flag = Roll(dice, 2);
  z80.IM = Roll(dice, 3);
  for (int i = 0; i < 20; ++i) machine.run.PcHistory.Push(Roll(dice, 0x10000));
  machine.run.Cycles = Roll(dice, 62501);
  machine.run.TotalCycles = static_cast<int64_t>(dice() >> 20U);
  memoryFrom = Roll(dice, 4) == 0 ? 0x10000 - Roll(dice, 200) - 1 : Roll(dice, 0x10000);
  portsFrom = Roll(dice, 300);
  Type("Text10", std::to_string(memoryFrom));
  Type("Text11", std::to_string(portsFrom));
}

void CPUmonViews::ExpectAll() {
  // Read as the processor does, which may change the memory: of a copy.
  const auto copy = CopyOf(*m);
  Machine& machine = *copy;
  const auto read = [&machine](int32_t address) -> int {
    const bool damages = address >= 0x8000 && address < 0xC000;
    uint8_t& victim = machine.MemImage[damages ? static_cast<size_t>(address) + 0x8000 : 0];
    const uint8_t before = victim;
    const uint8_t value = MemRead(machine, address);
    victim = before;
    return value;
  };
  const Z80State& z80 = m->z80;

  EXPECT_EQ(Text("Picture1"), plain::DisAsm(read, z80.PC, 10, 1));
  std::string history;
  for (size_t i = 0; i < 10; ++i)
    history += (i > 0 ? "\r\n" : "") + plain::DisAsm(read, m->run.PcHistory[i], 1, 1);
  EXPECT_EQ(Text("Picture4"), history);
  EXPECT_EQ(Text("Picture2"), Rows(memoryFrom, [&](int32_t a) { return read(std::min(a, 0xFFFF)); }));
  EXPECT_EQ(Text("Picture3"), Rows(portsFrom, [&](int32_t a) -> int {
              return machine.PortShadow[static_cast<size_t>(std::min(a, 0xFF))];
            }));

  const int32_t bytes[] = {z80.A,  z80.B,  z80.C,  z80.D,  z80.E,  z80.H,  z80.L,
                           z80.A2, z80.B2, z80.C2, z80.D2, z80.E2, z80.H2, z80.L2};
  for (int i = 0; i < 14; ++i) EXPECT_EQ(Text("Text1", i), Hex(bytes[i], 2)) << i;
  const int32_t flags[] = {z80.FlagS,    z80.FlagZ,     z80.FlagY,    z80.FlagH,
                           z80.FlagX,    z80.FlagPV,    z80.FlagN,    z80.FlagC,
                           z80.AltFlagS, z80.AltFlagZ,  z80.AltFlagY, z80.AltFlagH,
                           z80.AltFlagX, z80.AltFlagPV, z80.AltFlagN, z80.AltFlagC};
  for (int i = 0; i < 16; ++i) EXPECT_EQ(Text("Text2", i), std::to_string(flags[i])) << i;
  EXPECT_EQ(Text("Text3", 0), Hex(z80.IX, 4));
  EXPECT_EQ(Text("Text3", 1), Hex(z80.SP, 4));
  EXPECT_EQ(Text("Text3", 2), Hex(z80.IY, 4));
  EXPECT_EQ(Text("Text3", 3), Hex(z80.PC, 4));
  EXPECT_EQ(Text("Text3", 4), Hex(z80.I, 2));
  EXPECT_EQ(Text("Text3", 5), Hex(z80.R, 2));
  EXPECT_EQ(Text("Text4", 0) + Text("Text4", 1) + Text("Text4", 2),
            std::to_string(z80.IFF1 * 100 + z80.IFF2 * 10 + z80.IM + 1000).substr(1));
  for (int i = 0; i < 8; ++i) EXPECT_EQ(Text("TextA", i), (z80.A & 0x80 >> i) != 0 ? "1" : "0");
  EXPECT_EQ(Text("Text8"), std::to_string(m->run.TotalCycles + m->run.Cycles));
  EXPECT_EQ(Bar("Shape2").value, std::min(z80.PC, 0xFFFF));
  EXPECT_EQ(Bar("Shape4").value, z80.R);
  EXPECT_EQ(LookOf(*m, Ref("Label7")).fore, z80.Halted * 255);
  EXPECT_EQ(LookOf(*m, Ref("Label8")).fore, z80.IrqLine * 255);
}

TEST_F(CPUmonViews, AThousandMachines) {
  Dice dice(15);
  for (int trial = 0; trial < 1000 && !HasFailure(); ++trial) {
    SCOPED_TRACE(trial);
    Randomize(dice);
    const auto before = CopyOf(*m);
    CPUmon_redraw(m->cpumon);
    ExpectAll();
    before->cpumon.shown = m->cpumon.shown;
    EXPECT_TRUE(static_cast<MachineState&>(*m) == *before) << "looking has changed the machine";
  }
}

TEST_F(CPUmonViews, TheEndOfMemoryIsRepeated) {
  m->MemImage[0xFFFE] = 0xA0;
  m->MemImage[0xFFFF] = 0x99;
  Enter("Text10", "65534");
  const std::string first = "FFFE: A0" + [] {
    std::string nines;
    for (int i = 0; i < 15; ++i) nines += " 99";
    return nines;
  }() + " ." + std::string(15, '\xBF');
  EXPECT_EQ(Text("Picture2").substr(0, first.size() + 2), first + "\r\n");
  EXPECT_NE(Text("Picture2").find("\r\n1000E: 99 99"), std::string::npos);
}

// Texts follow the machine when they are asked to, not when it changes.
TEST_F(CPUmonViews, StandStillUntilARedraw) {
  EXPECT_EQ(Text("Text1"), "FF");  // at power-on
  m->z80.A = 0x12;
  EXPECT_EQ(Text("Text1"), "FF");
  CPUmon_redraw(m->cpumon);
  EXPECT_EQ(Text("Text1"), "12");
}

TEST_F(CPUmonViews, BreakpointsControlsAreSeenWithDebug) {
  const char* const kBoxes[] = {"Check2", "Text5", "Check3", "Text6", "Check7", "Check8", "Check9"};
  for (const bool on : {false, true, false}) {
    Tick("Check4", on);
    EXPECT_EQ(m->run.BreakArmed, on ? 1 : 0);
    for (const char* box : kBoxes) EXPECT_EQ(LookOf(*m, Ref(box)).visible, on) << box;
  }
}

TEST_F(CPUmonViews, StartsWithPictureAndBorderTicked) {
  EXPECT_TRUE(m->cpumon.Check5);
  EXPECT_TRUE(m->cpumon.Check6);
  for (const bool off : {m->cpumon.Check2, m->cpumon.Check3, m->cpumon.Check4, m->cpumon.Check7,
                         m->cpumon.Check8, m->cpumon.Check9})
    EXPECT_FALSE(off);
  EXPECT_EQ(Text("Text10") + Text("Text11"), "00");
}

struct Speed {
  int64_t total;  // TotalCycles at the tick
  const char *perMillisecond, *megahertz;
};

TEST_F(CPUmonViews, SpeedSinceTheLastTick) {
  constexpr Speed kTicks[] = {
      {0, "0", "0.000"},
      {1562500, "3125", "3.125"},  // 25 frames in 500 ms
      {3062500, "3000", "3.000"},  // 24
      {3062500, "0", "0.000"},     // it stands
      {3063250, "2", "0.002"},     // 1.5: ties go to the even number
      {3065750, "5", "0.005"},     //
      {62500, "125", "0.125"},     // "Run" counts anew
      {62500 + 62500000, "125000", "125.000"},
  };
  for (const Speed& tick : kTicks) {
    m->run.TotalCycles = tick.total;
    RunTimer("Timer1");
    EXPECT_EQ(Text("Text7"), tick.perMillisecond) << tick.total;
    EXPECT_EQ(Text("Label5"), tick.megahertz) << tick.total;
    EXPECT_EQ(m->screen.window.caption, std::string("QUOLL_EMU  ") + tick.megahertz);
  }
  EXPECT_EQ(Ref("Timer1").control->period, std::chrono::milliseconds(500));
}

TEST_F(CPUmonViews, AnyCountIsFigured) {
  constexpr int64_t kLow = std::numeric_limits<int64_t>::min(), kHigh = std::numeric_limits<int64_t>::max();
  for (const int64_t total : {kLow, kHigh, int64_t{0}, kHigh, kLow}) {
    m->run.TotalCycles = total;
    RunTimer("Timer1");
    EXPECT_NE(Text("Text7"), "");
  }
}

TEST_F(CPUmonViews, TheTimerRedrawsWhileRunningWithScreen) {
  for (const bool screen : {false, true}) {
    for (const int running : {0, 1, 2}) {
      m->cpumon.Check5 = screen;
      m->run.CpuRunning = static_cast<uint8_t>(running);
      const uint32_t redraws = m->cpumon.shown.redraws;
      RunTimer("Timer1");
      EXPECT_EQ(m->cpumon.shown.redraws, redraws + (screen && running == 1 ? 1 : 0));
    }
  }
}

// Half a second later the caption shows the speed again; the label keeps what happened.
TEST_F(CPUmonViews, AnUnknownOpcodeIsInTheCaptionUntilTheTick) {
  Program(*m, 0x100, {0xED, 0x00});
  Press("Command7");
  EXPECT_EQ(m->screen.window.caption, "Unknown Opcode!");
  RunTimer("Timer1");
  EXPECT_EQ(m->screen.window.caption, "QUOLL_EMU  0.000");
  EXPECT_EQ(m->screen.Label1, "Unknown Opcode!");
}

TEST_F(CPUmonViews, APseudoBreakIsSteppedOver) {
  Program(*m, 0x100, {0xFD, 0xF3, 0x3C});
  Press("Command7");
  EXPECT_EQ(m->z80.PC, 0x102);
  m->z80.A = 0;
  Press("Command7");
  EXPECT_EQ(m->z80.A, 1);
  EXPECT_TRUE(Text("Picture4").ends_with("\r\n 0102 INC A"));
}

}  // namespace
}  // namespace quoll::test
