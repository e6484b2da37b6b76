// What a pass consists of: an instruction with its prefixes; R masked; a reset, NMI or interrupt served;
// the tone counter and the frame clock moved on; the cursor interrupt raised; the interrupt line set;
// the frame ended; the cycle count folded; the breakpoint tested; the address put into the history.
//
// Most of that does nothing at most passes. So the loop works out how many T-states may go by before any of
// it could do something, runs instructions alone for that long (a slice), and then does the rest once, for
// all of them. A slice of one pass is the literal pass.
#include "loop/RunLoop.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/NumberText.h"
#include "core/Wrap.h"
#include "loop/Interrupts.h"
#include "loop/Redraw.h"
#include "loop/SliceCpu.h"
#include "loop/SoundFrame.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"
#include "machine/Ports.h"
#include "z80/OpcodesBase.h"

namespace quoll {

namespace {

constexpr int32_t kCursorFirst = 0x188;  // no cursor interrupt up to this T-state of the frame
constexpr int32_t kRowTStates = 1360;    // a row of the CRTC in the cursor interrupt's scale
constexpr int32_t kCursorWidth = 2;      // character positions in which the interrupt is raised
constexpr uint32_t kDrawInterval = 19;   // a picture is drawn when more milliseconds have passed

// An instruction whose prefix was met in an earlier pass: only a snapshot or a script can leave one behind.
template <class Cpu>
void ResumePrefix(Cpu& c) {
  const int32_t prefix = c.s.PrefixState;
  c.Fetch();  // a read at PC comes first, whatever the page goes on to read: it may have side effects
  switch (prefix) {
    case 0xCB: xxCB(c); break;
    case 0xED: xxED(c); break;
    case 0xDD: xxIndex<IXPage>(c); break;
    case 0xFD: xxIndex<IYPage>(c); break;
    case 0xFDCB: xxIndexCB<IYPage>(c); break;
    case 0xDDCB: xxIndexCB<IXPage>(c); break;
    default: EndProgram(c.m, std::to_string(prefix) + "=Unknown prefix", "CPU ERROR!");
  }
  c.s.PrefixState = 0;
}

// Runs instructions until the slice's T-states are used up, at least one. On return the registers and the
// history are up to date but for the last pass's own address, which stands in PrevPc; the passed T-states
// have not been added to the clocks. Returns their number.
template <bool kMapped>
int32_t RunSlice(Machine& m, int32_t slice) {
  SliceCpu<kMapped> c(m, slice);
  do {
    c.BeginPass();
    if constexpr (!kMapped) {
      if (m.z80.PrefixState != 0) {
        ResumePrefix(c);
        continue;
      }
    }
    xx(c);
  } while (c.left > 0);
  c.Store(m, c.pc, c.trail);
  m.z80.R = c.refresh;
  return c.settled - c.left;
}

// All pages in one function, so that the compiler keeps SliceCpu in host registers. Sanitized, that function
// would take minutes to compile.
#ifndef __SANITIZE_ADDRESS__
[[gnu::flatten]]
#endif
int32_t
RunMappedSlice(Machine& m, int32_t slice) {
  return RunSlice<true>(m, slice);
}

// First T-state of the frame at which a character position has been reached: 13.6 T-states each.
int64_t PositionTState(int64_t position) { return (position * kRowTStates + 99) / 100; }

// T-states until the cursor interrupt can be raised; 0 while it is being raised at every pass.
int64_t UntilCursor(const Machine& m) {
  const auto& regs = m.crtc.CrtcRegs;
  constexpr int64_t kNever = std::numeric_limits<int32_t>::max();
  const int64_t position = CursorPosition(m.crtc);
  const int64_t first = PositionTState(position);
  const int64_t end = std::min(PositionTState(position + kCursorWidth), int64_t{regs[6]} * kRowTStates);
  if (regs[10] >= 4 || m.run.FrameClock >= end || first >= end) return kNever;
  return std::max<int64_t>(0, first - m.run.FrameClock);
}

// How many T-states may pass before the loop has to look; 0 for a single pass.
int32_t SliceLength(const Machine& m) {
  const RunState& run = m.run;
  const bool watched =
      run.CpuRunning != 1 || run.BreakArmed != 0 || run.ResetRequest != 0 || run.NmiRequest != 0;
  const bool interrupting =
      m.z80.IFF1 != 0 && (m.z80.IrqLine != 0 || (m.PortShadow[kStatusPort] & kIrqFlags) != kIrqFlags);
  // Scripts can set the clocks to anything; outside a frame there is nothing to be known ahead.
  const bool inFrame = run.FrameClock >= 0 && run.FrameClock <= kFrameTStates;
  if (watched || interrupting || !inFrame) return 0;
  const int64_t untilFold = int64_t{kFrameTStates} + 1 - run.Cycles;
  const int64_t untilFrameEnd = int64_t{kFrameTStates} + 1 - run.FrameClock;
  const int64_t next = std::min({untilFold, untilFrameEnd, int64_t{run.ToneItCounter}, UntilCursor(m)});
  return static_cast<int32_t>(std::max<int64_t>(0, next));
}

// One entry of the loop.
struct Entry {
  uint32_t lastTick = 0;   // when the last picture was drawn
  uint32_t mappedEnd = 0;  // instructions below it reach memory by the page map
};

// After everything that may have changed the machine in any way.
void TakeOver(Machine& m, Entry& entry) {
  KeepBytes(m.z80);
  RenewPages(m);
  // Addresses that a register wider than 16 bits gives are not in the map. No instruction makes a register
  // wide.
  const bool wide = ((m.z80.IX | m.z80.IY | m.z80.SP) & ~0xFFFF) != 0;
  entry.mappedEnd = wide ? 0 : kTopAddress + 1;
  m.z80.R &= 0x1FF;  // an acceptance may have left 256 until the next pass
}

// The page map reaches somewhat past the memory: as far as a slice of NOPs can go.
bool IsMapped(const Machine& m, const Entry& entry) {
  return static_cast<uint32_t>(m.z80.PC) < entry.mappedEnd && m.z80.PrefixState == 0 && !m.VideoReadNoise;
}

// An accepted request moves a halted processor past its HALT, wherever PC stands by now.
void LeaveHalt(Z80State& z80) {
  if (z80.Halted == 0) return;
  z80.PC = WrappingAdd(z80.PC, 1);
  z80.Halted = 0;
}

void ServeRequests(Machine& m) {
  Z80State& z80 = m.z80;
  if (m.run.ResetRequest != 0 || m.run.NmiRequest != 0) {
    LeaveHalt(z80);
    if (m.run.ResetRequest != 0) {
      MachineReset(m);
    } else {
      NmiEnter(m);
    }
  } else if ((z80.IFF1 & z80.IrqLine) != 0) {
    LeaveHalt(z80);
    IrqEnter(m);
  }
}

void RaiseCursorToneFlag(Machine& m) { m.PortShadow[kStatusPort] &= static_cast<uint8_t>(~kCursorToneFlag); }

void CountTone(Machine& m, int32_t passed) {
  m.run.ToneItCounter = WrappingSub(m.run.ToneItCounter, passed);
  if (m.run.ToneItCounter >= 1) return;
  m.run.ToneItCounter = TonePeriod(m.PortShadow);
  if (ToneInterrupts(m.PortShadow) && m.tvcmon.Check3) RaiseCursorToneFlag(m);
}

// A frame is taken as a strip of character positions of 13.6 T-states. A long instruction can step over the
// two that count; the frame's interrupt is then missed.
void RaiseCursor(Machine& m) {
  const auto& regs = m.crtc.CrtcRegs;
  const int32_t clock = m.run.FrameClock;
  const int64_t rowsEnd = int64_t{regs[6]} * kRowTStates;
  if (clock <= kCursorFirst || clock >= rowsEnd || WrappingSub(clock, m.run.LastCursorIrq) <= 0) return;
  const int32_t position = static_cast<int32_t>(static_cast<uint32_t>(clock) * 100) / kRowTStates;
  const int32_t ahead = WrappingSub(position, CursorPosition(m.crtc));
  if (ahead < 0 || ahead >= kCursorWidth || regs[10] >= 4) return;
  RaiseCursorToneFlag(m);
  m.run.LastCursorIrq = clock;
}

void SetIrqLine(Machine& m) {
  if ((m.PortShadow[kStatusPort] & kIrqFlags) != kIrqFlags && m.z80.IFF1 == 1) m.z80.IrqLine = 1;
}

void ShowSpeed(Machine& m) {
  const int32_t value = FrameTimeValue(m);
  m.screen.Text1 = std::to_string(value);
  m.screen.Shape4Width = static_cast<float>(value);
  SpeedMark(m);
}

// The user's turn: afterwards the machine may be in any state.
void Pump(Machine& m, Entry& entry) {
  m.host->Pump(m);
  TakeOver(m, entry);
}

void EndFrame(Machine& m, Entry& entry) {
  m.run.FrameClock = WrappingSub(m.run.FrameClock, kFrameTStates);
  m.run.LastCursorIrq = m.run.FrameClock;
  ShowSpeed(m);
  m.run.TotalCycles = WrappingAdd(m.run.TotalCycles, kFrameTStates);
  LPENRefresh(m.pen, m.crtc);
  if (m.host->TickCount() - entry.lastTick > kDrawInterval) {
    redraw(m);
    PALchNull(m.palette);
    Pump(m, entry);
    entry.lastTick = m.host->TickCount();
  }
  if (m.mixer.FrameInBlock < kFramesPerBlock) SoundFrame(m);
  if (m.mixer.FrameInBlock == kFramesPerBlock) {
    SoundSync(m);
    m.mixer.FrameInBlock = 0;
  }
  m.host->FrameEnded(m);
  TakeOver(m, entry);
}

void TestBreakpoint(Machine& m) {
  if (m.run.BreakArmed == 0 || !m.cpumon.Check2 || NumberOfText(m.cpumon.Text5) != m.z80.PC) return;
  m.run.CpuRunning = 0;
  CPUmon_redraw(m.cpumon);
}

// Everything of a pass after its instruction.
void FinishPass(Machine& m, int32_t cyclesBefore, Entry& entry) {
  m.z80.R &= 0xFF;
  ServeRequests(m);
  const int32_t passed = WrappingSub(m.run.Cycles, cyclesBefore);
  CountTone(m, passed);
  m.run.FrameClock = WrappingAdd(m.run.FrameClock, passed);
  RaiseCursor(m);
  SetIrqLine(m);
  if (m.run.FrameClock > kFrameTStates) EndFrame(m, entry);
  if (m.run.Cycles > kFrameTStates) m.run.Cycles -= kFrameTStates;
  TestBreakpoint(m);
  m.run.PcHistory.Push(m.run.PrevPc);
}

// Counts while it lives, also where the loop is left by ProgramEnd.
struct Counted {
  int& count;
  explicit Counted(int& counter) : count(counter) { ++count; }
  ~Counted() { --count; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
};

void RunPasses(Machine& m, Entry& entry) {
  const int32_t slice = SliceLength(m);
  const int32_t passed = IsMapped(m, entry) ? RunMappedSlice(m, slice) : RunSlice<false>(m, slice);
  const int32_t cyclesBefore = m.run.Cycles;
  m.run.Cycles = WrappingAdd(m.run.Cycles, passed);
  FinishPass(m, cyclesBefore, entry);
  if (m.IdlePasses >= SliceCpu<true>::kIdleSlice) {
    m.IdlePasses = 0;
    m.host->Stalled(m);
    TakeOver(m, entry);
  }
}

}  // namespace

void RunLoop(Machine& m) {
  const Counted counted(m.loops);
  if (m.run.CpuRunning == 1) m.run.CpuError = 0;
  Entry entry;
  TakeOver(m, entry);
  do {
    RunPasses(m, entry);
  } while (m.run.CpuRunning == 1);
  m.cpumon.Command1Look.back = kRed;
  CPUmon_redraw(m.cpumon);
}

int32_t FrameTimeValue(Machine& m) {
  m.run.PerfNow = m.host->PerformanceCounter();
  if (m.run.PerfFreq == 0) return 0;
  const auto counts = static_cast<double>(WrappingSub(m.run.PerfNow, m.run.PerfStart));
  const double value = counts * 100000.0 / static_cast<double>(m.run.PerfFreq);
  constexpr double kLimit = std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(std::nearbyint(std::clamp(value, -kLimit, kLimit)));
}

void SpeedMark(Machine& m) {
  m.run.PerfStart = m.host->PerformanceCounter();
  m.run.PerfFreq = m.host->PerformanceFrequency();
}

}  // namespace quoll
