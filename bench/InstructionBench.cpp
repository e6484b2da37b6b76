// How fast the machine runs: T-states per second and nanoseconds per Z80 instruction, beside the floor of an
// interpreter. Only ratios within one run mean anything on a busy host.
#include <benchmark/benchmark.h>

#include "bench/Floor.h"
#include "bench/MixMachine.h"

namespace quoll::bench {

namespace {

constexpr int kFramesPerRound = 10;

void Report(benchmark::State& state, double passesPerRound, double tStatesPerRound) {
  const auto rounds = static_cast<double>(state.iterations());
  state.counters["Tstates/s"] = benchmark::Counter(tStatesPerRound * rounds, benchmark::Counter::kIsRate);
  // Shown as a time: seconds per instruction.
  state.counters["instr"] =
      benchmark::Counter(passesPerRound * rounds, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// The whole machine: interrupts, counters, histories, frame ends with their sound; no picture.
void WholeMachine(benchmark::State& state, const char* mix) {
  FrameHost host;
  auto m = MixMachine(host, mix);
  while (state.KeepRunning()) RunFrames(*m, host, kFramesPerRound);
  Report(state, PassesPerFrame(mix) * kFramesPerRound, double{kFrameTStates} * kFramesPerRound);
}
BENCHMARK_CAPTURE(WholeMachine, loop, "loop");
BENCHMARK_CAPTURE(WholeMachine, broad, "broad");

// The same with a picture drawn at each frame end.
struct DrawingHost : FrameHost {
  uint32_t ticks = 0;
  uint32_t TickCount() override { return ticks += kTicksPerFrame; }
  static constexpr uint32_t kTicksPerFrame = 20;
};

void WholeMachineDrawing(benchmark::State& state, const char* mix) {
  DrawingHost host;
  auto m = MixMachine(host, mix);
  m->crtc.CrtcRegs[1] = 64;
  while (state.KeepRunning()) RunFrames(*m, host, kFramesPerRound);
  Report(state, PassesPerFrame(mix) * kFramesPerRound, double{kFrameTStates} * kFramesPerRound);
}
BENCHMARK_CAPTURE(WholeMachineDrawing, loop, "loop");

// Instructions alone: interrupts off, nothing due inside the frame but its end.
void BareInstructions(benchmark::State& state, const char* mix) {
  FrameHost host;
  auto m = MixMachine(host, mix);
  m->z80.IFF1 = m->z80.IFF2 = 0;
  m->crtc.CrtcRegs[10] = 32;
  while (state.KeepRunning()) RunFrames(*m, host, kFramesPerRound);
  Report(state, PassesPerFrame(mix) * kFramesPerRound, double{kFrameTStates} * kFramesPerRound);
}
BENCHMARK_CAPTURE(BareInstructions, loop, "loop");
BENCHMARK_CAPTURE(BareInstructions, broad, "broad");

// One pass at a time, all its steps done literally.
void LiteralPasses(benchmark::State& state) {
  FrameHost host;
  host.framesLeft = 1'000'000'000;
  auto m = MixMachine(host, "loop");
  m->run.BreakArmed = 1;
  while (state.KeepRunning()) RunFrames(*m, host, 1);
  Report(state, PassesPerFrame("loop"), kFrameTStates);
}
BENCHMARK(LiteralPasses);

void FloorOfTheLoop(benchmark::State& state) {
  FrameHost host;
  auto m = MixMachine(host, "loop");
  FloorMachine floor{};
  floor.memory = m->MemImage.data();
  for (size_t page = 0; page < 16; ++page) floor.pages[page] = m->MemImage.data() + page * 0x1000;
  floor.pc = kMixStart;
  while (state.KeepRunning()) RunFloor(floor, kFrameTStates * kFramesPerRound);
  const double rounds = static_cast<double>(state.iterations());
  Report(state, static_cast<double>(floor.instructions) / rounds, double{kFrameTStates} * kFramesPerRound);
}
BENCHMARK(FloorOfTheLoop);

}  // namespace

}  // namespace quoll::bench
