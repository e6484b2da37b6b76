// The processor on random memory: the input is ports, registers and code; the machine runs it for a number of
// frames, through both ways of reaching memory. Nothing may get out of the machine, whatever the code does.
#include <algorithm>
#include <cstring>
#include <memory>

#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"

namespace quoll {

namespace {

// Stops after some frames, and when a program without T-states would go on for ever.
struct FuzzHost : Host {
  int framesLeft = 3;
  uint32_t ticks = 0;
  uint32_t TickCount() override { return ticks += 20; }
  void FrameEnded(Machine& m) override {
    if (--framesLeft <= 0) m.run.CpuRunning = 0;
  }
  void Stalled(Machine& m) override { m.run.CpuRunning = 0; }
};

// Takes bytes from the front of the input; zeros when it is used up.
struct Input {
  const uint8_t* data;
  size_t size;
  void Take(void* target, size_t count) {
    const size_t there = std::min(count, size);
    std::memcpy(target, data, there);
    data += there;
    size -= there;
  }
};

void Run(Input input) {
  FuzzHost host;
  const auto m = std::make_unique<Machine>(host);
  m->programFolder = "/nonexistent";
  CpuInit(m->z80);
  MachineReset(*m);
  // Any values at all: the run loop has to bring them into their ranges.
  input.Take(&m->z80, sizeof m->z80);
  m->z80.PrefixState = 0;
  uint8_t flags = 0;
  input.Take(&flags, 1);
  m->VideoReadNoise = (flags & 1) != 0;
  m->screen.x32KB = (flags & 2) != 0;
  m->screen.xScreenDIB = (flags & 4) != 0;
  m->screen.xScreenNoise = (flags & 8) != 0;
  if ((flags & 16) != 0) {
    m->CartName = kMexCartridge;
    m->MexPages.resize(kMexPageCount);
  }
  input.Take(&m->run.FrameClock, 4);
  input.Take(&m->run.Cycles, 4);
  input.Take(&m->run.ToneItCounter, 4);
  input.Take(m->crtc.CrtcRegs.data(), 19 * sizeof(int32_t));
  input.Take(m->PortShadow.data(), 8);
  if ((flags & 32) != 0) m->PortShadow[2] = 0xB0;
  // The code, repeated through the whole image.
  const size_t length = std::max<size_t>(1, std::min<size_t>(input.size, 0x8000));
  input.Take(m->MemImage.data(), length);
  for (size_t at = length; at < m->MemImage.size(); ++at) m->MemImage[at] = m->MemImage[at - length];
  m->run.CpuRunning = 1;
  try {
    RunLoop(*m);
  } catch (const ProgramEnd&) {
    // A write into a card's window: the stated end.
  }
}

}  // namespace

}  // namespace quoll

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  quoll::Run({data, size});
  return 0;
}
