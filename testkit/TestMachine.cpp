#include "testkit/TestMachine.h"

namespace quoll::test {

struct TestMachine::Both {
  TestHost host;
  Machine machine{host};
};

TestMachine::TestMachine() : both(std::make_unique<Both>()), host(both->host) {
  Machine& m = **this;
  host.machine = &m;
  CpuInit(m.z80);
  SoundCardInit(m.card);
  m.z80.UnDocEnabled = 1;
  m.PortShadow[2] = kAllRam;
  m.PortShadow[kStatusPort] = 0xFF;
  m.crtc.CrtcRegs[10] = 0x20;
  m.run.ToneItCounter = kNoToneSoon;
}
TestMachine::TestMachine(TestMachine&& other) noexcept = default;
TestMachine::~TestMachine() = default;

Machine* TestMachine::operator->() const { return &both->machine; }
Machine& TestMachine::operator*() const { return both->machine; }

std::unique_ptr<Machine> CopyOf(const Machine& m) { return std::make_unique<Machine>(m); }

void Put(Machine& m, int32_t offset, std::initializer_list<int> bytes) {
  for (const int byte : bytes) m.MemImage.at(static_cast<size_t>(offset++)) = static_cast<uint8_t>(byte);
}

void Program(Machine& m, int32_t offset, std::initializer_list<int> bytes) {
  m.z80.PC = offset;
  Put(m, offset, bytes);
}

int32_t Word(const Machine& m, int32_t offset) {
  const auto at = static_cast<size_t>(offset);
  return m.MemImage.at(at) + 256 * m.MemImage.at(at + 1);
}

uint32_t Redraws(const Machine& m) { return m.cpumon.shown.redraws - CPUmonShown().redraws; }

void PutTape(Machine& m, int level) {
  m.tape.input.ahead[0] = level != 0 ? 255 : 0;
  m.tape.input.aheadCount = 1;
  m.tape.input.next = 0;
}

void Step(Machine& m, int passes) {
  for (; passes > 0; --passes) {
    m.run.CpuRunning = 0;
    RunLoop(m);
  }
}

void RunOn(Machine& m) {
  m.run.CpuRunning = 1;
  RunLoop(m);
}

void RunOrStep(Machine& m, bool inARun, int passes) {
  if (inARun) {
    RunOn(m);
  } else {
    Step(m, passes);
  }
}

}  // namespace quoll::test
