#include "desktop/picture/StandingMachine.h"

#include <algorithm>
#include <span>

#include "loop/Redraw.h"
#include "loop/RunLoop.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// Ports, CRTC registers, the ticks that count and the memory from the first video bank on.
std::vector<uint8_t> WhatIsDrawn(const Machine& m) {
  std::vector<uint8_t> all(m.PortShadow.begin(), m.PortShadow.end());
  const auto registers = std::as_bytes(std::span(m.crtc.CrtcRegs));
  for (const std::byte byte : registers) all.push_back(std::to_integer<uint8_t>(byte));
  for (const bool tick : {m.screen.xScreenBW, m.screen.xScreenDIB}) all.push_back(tick ? 1 : 0);
  all.insert(all.end(), m.MemImage.begin() + kVid0, m.MemImage.end());
  return all;
}

}  // namespace

StandingMachine::StandingMachine(QtHost& hostOfMachine) : RecordView(hostOfMachine) {}

void StandingMachine::Pull(Machine& m) {
  if (m.loops > 0 || m.picture.shown == 0) {
    drawn.clear();
    return;
  }
  if (m.run.ResetRequest != 0) return host.Guard([&] { ServeReset(m); });
  std::vector<uint8_t> now = WhatIsDrawn(m);
  const bool changed = !drawn.empty() && drawn != now;
  drawn = std::move(now);
  if (!changed) return;
  redraw(m);
  PALchNull(m.palette);
}

void StandingMachine::ServeReset(Machine& m) {
  m.run.CpuRunning = m.screen.xS1 ? 0 : m.run.CpuError;
  RunLoop(m);
}

}  // namespace quoll
