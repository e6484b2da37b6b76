#include "loop/Interrupts.h"

#include "core/Wrap.h"
#include "machine/Machine.h"
#include "z80/Alu.h"

namespace quoll {

namespace {

constexpr int32_t kIrqVector = 0x38;
constexpr int32_t kNmiVector = 0x66;
constexpr int32_t kAcceptTStates = 11;

void Accept(Machine& m, int32_t vector) {
  const auto pc = static_cast<uint32_t>(m.z80.PC);
  DecSP(m.z80);
  MemWrite(m, m.z80.SP, static_cast<uint8_t>(pc >> 8));
  DecSP(m.z80);
  MemWrite(m, m.z80.SP, static_cast<uint8_t>(pc));
  m.z80.PC = vector;
  m.run.Cycles = WrappingAdd(m.run.Cycles, kAcceptTStates);
  m.z80.R = WrappingAdd(m.z80.R, 1);
}

}  // namespace

void IrqEnter(Machine& m) {
  m.z80.IFF1 = 0;
  m.z80.IFF2 = 0;
  if (m.z80.IM != 1) {
    m.host->MessageBox("IM MODE 0 or 2 not allowed!", "", MessageIcon::None);
    m.run.CpuRunning = 0;
    m.run.CpuError = 1;
    return;
  }
  Accept(m, kIrqVector);
}

void NmiEnter(Machine& m) {
  m.z80.IFF2 = m.z80.IFF1;
  m.z80.IFF1 = 0;
  Accept(m, kNmiVector);
}

}  // namespace quoll
