#include "forms/CPUmon.h"

#include "core/FormTable.h"
#include "core/NumberText.h"
#include "loop/Redraw.h"
#include "loop/RunLoop.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

void ZeroCycles(Machine& m) {
  m.run.Cycles = 0;
  m.run.TotalCycles = 0;
}

void Command2_Click(Machine& m) { m.run.NmiRequest = 1; }

// "Poke"
void Command3_Click(Machine& m) {
  const int32_t address = NumberOfText(m.cpumon.Text12);
  const int32_t value = NumberOfText(m.cpumon.Text13);
  MemWrite(m, address, static_cast<uint8_t>(value & 0xFF));
  CPUmon_redraw(m.cpumon);
}

void Command4_Click(Machine& m) {
  if (m.z80.IFF1 == 1) m.z80.IrqLine = 1;
}

void Command5_Click(Machine& m) {
  m.run.ResetRequest = 1;
  CPUmon_redraw(m.cpumon);
}

void Check4_Click(Machine& m) { m.run.BreakArmed = m.cpumon.Check4 ? 1 : 0; }

constexpr On<&Machine::cpumon> f;

constexpr std::array kControls{
    Button("Command1", "Run", CPUmon_Command1_Click).Looks(f.Look<&CPUmon::Command1Look>),
    Button("Command6", "Stop", CPUmon_Command6_Click),
    Button("Command7", "Step", CPUmon_Command7_Click),
    Button("Command5", "RESET", Command5_Click),
    Button("Command4", "INT", Command4_Click),
    Button("Command2", "NMI", Command2_Click),
    f.Check<&CPUmon::Check2>("Check2", "Address"),
    f.Text<&CPUmon::Text5>("Text5", "Breakpoint address"),
    f.Check<&CPUmon::Check3>("Check3", "Instcount"),
    f.Text<&CPUmon::Text6>("Text6", "Instruction count"),
    f.Check<&CPUmon::Check4>("Check4", "Debug", Check4_Click),
    f.Check<&CPUmon::Check5>("Check5", "Screen"),
    f.Check<&CPUmon::Check6>("Check6", "Border"),
    f.Check<&CPUmon::Check7>("Check7", "Int"),
    f.Check<&CPUmon::Check8>("Check8", "Nmi"),
    f.Check<&CPUmon::Check9>("Check9", "Reset"),
    f.Scroll<&CPUmon::HScroll1>("HScroll1", "Speed"),
    f.Text<&CPUmon::Text12>("Text12", "Poke: address"),
    f.Text<&CPUmon::Text13>("Text13", "Poke: value"),
    Button("Command3", "Poke", Command3_Click),
};

}  // namespace

void CPUmon_Command1_Click(Machine& m) {
  m.cpumon.Command1Look.back = kButtonFace;
  m.run.CpuRunning = 1;
  ZeroCycles(m);
  RunLoop(m);
}

void CPUmon_Command6_Click(Machine& m) {
  m.run.CpuRunning = 0;
  ZeroCycles(m);
}

void CPUmon_Command7_Click(Machine& m) {
  m.run.CpuRunning = 0;
  RunLoop(m);
  redraw(m);
}

constexpr Form kCPUmon{"CPUmon", "Z80mon", f.State, kControls};

}  // namespace quoll
