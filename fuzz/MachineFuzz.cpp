// The processor on random memory: the input is ports, registers and code; the machine runs it for a number of
// frames, through both ways of reaching memory. Nothing may get out of the machine, whatever the code does.
#include <algorithm>
#include <cstring>

#include "fuzz/Fuzz.h"
#include "fuzz/FuzzMachine.h"

namespace quoll {

namespace {

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

}  // namespace

void Fuzz(std::span<const uint8_t> bytes) {
  Input input{bytes.data(), bytes.size()};
  FuzzHost host;
  host.framesLeft = 3;
  const auto m = FuzzMachine(host);
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
  RunFuzzed(*m);
}

}  // namespace quoll
