// Time to build one picture: 512 x 480 in each mode by both paths, and the 80-column picture.
#include <benchmark/benchmark.h>

#include <memory>

#include "loop/Redraw.h"
#include "machine/Machine.h"

namespace quoll {
namespace {

std::unique_ptr<Machine> PictureMachine(Host& host, int mode, bool dib, int characters) {
  auto machine = std::make_unique<Machine>(host);
  uint32_t seed = 1;
  for (uint8_t& byte : machine->MemImage) {
    seed = seed * 1664525U + 1013904223U;
    byte = static_cast<uint8_t>(seed >> 24U);
  }
  machine->PortShadow[6] = static_cast<uint8_t>(mode);
  machine->PortShadow[0x61] = 0x55;
  machine->PortShadow[0x62] = 0x14;
  machine->PortShadow[0x63] = 0x41;
  machine->crtc.CrtcRegs[1] = characters;
  machine->crtc.CrtcRegs[6] = 60;
  machine->screen.xScreenDIB = dib;
  return machine;
}

void Run(benchmark::State& state, Machine& m) {
  while (state.KeepRunning()) {
    redraw(m);
    PALchNull(m.palette);
    benchmark::DoNotOptimize(m.picture.ScreenBits.data());
    benchmark::ClobberMemory();
  }
}

void Redraw(benchmark::State& state) {
  Host host;
  const auto m = PictureMachine(host, static_cast<int>(state.range(0)), state.range(1) != 0, 64);
  Run(state, *m);
}
BENCHMARK(Redraw)->ArgNames({"mode", "dib"})->ArgsProduct({{0, 1, 2, 3}, {0, 1}});

void Redraw80Columns(benchmark::State& state) {
  Host host;
  const auto m = PictureMachine(host, 2, true, 80);
  Run(state, *m);
}
BENCHMARK(Redraw80Columns);

void RedrawWithNoise(benchmark::State& state) {
  Host host;
  const auto m = PictureMachine(host, 0, state.range(0) != 0, 64);
  m->screen.xScreenNoise = true;
  Run(state, *m);
}
BENCHMARK(RedrawWithNoise)->ArgName("dib")->Arg(0)->Arg(1);

// A program that writes the palette in every line.
void RedrawPaletteEveryLine(benchmark::State& state) {
  Host host;
  const auto m = PictureMachine(host, static_cast<int>(state.range(0)), state.range(1) != 0, 64);
  for (int32_t line = 0; line < Palette::kLines; ++line)
    for (auto& entries : m->palette.PalHistory) entries[line] = static_cast<uint8_t>(line);
  while (state.KeepRunning()) {
    m->palette.PalNextLine = Palette::kLastShownLine;  // the frame's history is there already
    redraw(*m);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(RedrawPaletteEveryLine)->ArgNames({"mode", "dib"})->ArgsProduct({{0, 1}, {0, 1}});

// Every video chip faulty at random: eight random numbers a byte on top of the picture.
void RedrawWithFaultyChips(benchmark::State& state) {
  Host host;
  const auto m = PictureMachine(host, 0, false, 64);
  m->errorsim.Check1 = true;
  m->errorsim.CH0.fill(true);
  m->errorsim.Option1 = {false, false, true};
  Run(state, *m);
}
BENCHMARK(RedrawWithFaultyChips);

}  // namespace
}  // namespace quoll
