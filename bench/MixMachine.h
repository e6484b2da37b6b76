// A machine that runs one of the mixes for a number of frames.
#pragma once

#include <algorithm>
#include <memory>
#include <string_view>

#include "bench/Mixes.h"
#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"

namespace quoll::bench {

// Stops the machine after the wished number of frames. TickCount stands still, so that no picture is drawn.
struct FrameHost : Host {
  int framesLeft = 0;
  void FrameEnded(Machine& m) override {
    if (--framesLeft <= 0) m.run.CpuRunning = 0;
  }
};

// Interrupts on, cursor interrupt once a frame served by a handler at 0x38 in U0, the mix at kMixStart.
inline std::unique_ptr<Machine> MixMachine(Host& host, std::string_view mix) {
  auto m = std::make_unique<Machine>(host);
  CpuInit(m->z80);
  MachineReset(*m);
  const auto put = [&](int32_t address, const std::vector<uint8_t>& code) {
    std::ranges::copy(code, m->MemImage.begin() + address);
  };
  put(0x38, {0xF5, 0xD3, 0x07, 0xF1, 0xFB, 0xC9});  // PUSH AF: OUT (7),A: POP AF: EI: RET
  put(kMixStart, mix == "broad" ? BroadMix() : LoopMix());
  put(kBroadCallee, BroadCallee());
  m->PortShadow[2] = 0xB0;  // U0, U1, U2, U3
  m->crtc.CrtcRegs[6] = 60;
  m->crtc.CrtcRegs[10] = 0;
  m->crtc.CrtcRegs[14] = 14;
  m->z80.IM = 1;
  m->z80.IFF1 = m->z80.IFF2 = 1;
  m->z80.SP = 0x7F00;
  m->z80.PC = kMixStart;
  return m;
}

inline void RunFrames(Machine& m, FrameHost& host, int frames) {
  host.framesLeft = frames;
  m.run.CpuRunning = 1;
  RunLoop(m);
}

// Passes per frame of 62500 T-states, counted one by one.
inline double PassesPerFrame(std::string_view mix) {
  constexpr int kFrames = 20;
  FrameHost host;
  host.framesLeft = kFrames;
  auto m = MixMachine(host, mix);
  int64_t passes = 0;
  while (host.framesLeft > 0) {
    m->run.CpuRunning = 0;
    RunLoop(*m);
    ++passes;
  }
  return static_cast<double>(passes) / kFrames;
}

}  // namespace quoll::bench
