#include "forms/CPUmon.h"

#include <array>
#include <string_view>

#include "machine/Machine.h"
#include "core/NumberText.h"
#include "loop/RunLoop.h"

namespace quoll {

namespace {

constexpr std::string_view kUnknownOpcode = "Unknown Opcode!";

void Reset(Machine& m, int) {
  m.run.ResetRequest = 1;
  CPUmon_redraw(m);
}

void Nmi(Machine& m, int) { m.run.NmiRequest = 1; }

void Int(Machine& m, int) {
  if (m.z80.IFF1 == 1) m.z80.IrqLine = 1;
}

void Poke(Machine& m, int) {
  const int32_t address = NumberOfText(m.cpumon.Text12);
  const int32_t value = NumberOfText(m.cpumon.Text13);
  MemWrite(m, address, static_cast<uint8_t>(value & 0xFF));
  CPUmon_redraw(m);
}

void Debug(Machine& m, int) { m.run.BreakArmed = m.cpumon.Check4 ? 1 : 0; }

template <auto kField>
constexpr Control Value(std::string_view name, ControlKind kind, void (*changed)(Machine&, int) = nullptr) {
  return {name, kind, [](Machine& m) -> ControlField { return &(m.cpumon.*kField); }, changed};
}

constexpr Control Button(std::string_view name, void (*pressed)(Machine&, int)) {
  return {name, ControlKind::Button, nullptr, pressed};
}

constexpr std::array kControls{
    Button("Command1", [](Machine& m, int) { CPUmon_Command1_Click(m); }),
    Button("Command6", [](Machine& m, int) { CPUmon_Command6_Click(m); }),
    Button("Command7", [](Machine& m, int) { CPUmon_Command7_Click(m); }),
    Button("Command5", Reset),
    Button("Command4", Int),
    Button("Command2", Nmi),
    Value<&CPUmon::Check2>("Check2", ControlKind::Check),
    Value<&CPUmon::Text5>("Text5", ControlKind::Text),
    Value<&CPUmon::Check3>("Check3", ControlKind::Check),
    Value<&CPUmon::Text6>("Text6", ControlKind::Text),
    Value<&CPUmon::Check4>("Check4", ControlKind::Check, Debug),
    Value<&CPUmon::Check5>("Check5", ControlKind::Check),
    Value<&CPUmon::Check6>("Check6", ControlKind::Check),
    Value<&CPUmon::Check7>("Check7", ControlKind::Check),
    Value<&CPUmon::Check8>("Check8", ControlKind::Check),
    Value<&CPUmon::Check9>("Check9", ControlKind::Check),
    Value<&CPUmon::HScroll1>("HScroll1", ControlKind::Scroll),
    Value<&CPUmon::Text12>("Text12", ControlKind::Text),
    Value<&CPUmon::Text13>("Text13", ControlKind::Text),
    Button("Command3", Poke),
};

}  // namespace

void CPUmon_Command1_Click(Machine& m) {
  m.cpumon.Command1Color = CPUmon::kButtonFace;
  m.run.CpuRunning = 1;
  m.run.Cycles = 0;
  m.run.TotalCycles = 0;
  RunLoop(m);
}

void CPUmon_Command6_Click(Machine& m) {
  m.run.CpuRunning = 0;
  m.run.Cycles = 0;
  m.run.TotalCycles = 0;
}

void CPUmon_Command7_Click(Machine& m) {
  m.run.CpuRunning = 0;
  RunLoop(m);
  redraw(m);
}

void CPUmon_redraw(Machine& m) {
  m.cpumon.redraws = static_cast<int32_t>(static_cast<uint32_t>(m.cpumon.redraws) + 1U);
}

void MissingOP(Machine& m) {
  // A program can be full of such instructions: the texts are stored only when they change.
  if (m.screen.Label1 != kUnknownOpcode) m.screen.Label1 = kUnknownOpcode;
  if (m.screen.Caption != kUnknownOpcode) m.screen.Caption = kUnknownOpcode;
  m.z80.PrefixState = 0;
  m.z80.PC = static_cast<int32_t>(static_cast<uint32_t>(m.z80.PC) + 1U);
}

std::span<const Control> CPUmonControls() { return kControls; }

}  // namespace quoll
