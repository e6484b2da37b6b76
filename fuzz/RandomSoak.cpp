// Random code on random machines for a time: randomsoak SECONDS [SEED]. Meant for the sanitizer build;
// reports how much has run. Every paging state, every port; machines that end or use no T-states are followed
// by new ones.
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>

#include "fuzz/FuzzMachine.h"

namespace quoll {

namespace {

constexpr int kFramesPerMachine = 40;

void Randomize(Machine& m, std::mt19937_64& dice) {
  for (uint8_t& byte : m.MemImage) byte = static_cast<uint8_t>(dice());
  // Code that is all random soon meets a halt or a loop: two thirds of the machines get stretches of
  // arithmetic.
  if (dice() % 3 != 0) {
    for (size_t at = 0; at + 64 < m.MemImage.size(); at += 64 + dice() % 128) {
      for (size_t i = 0; i < 48; ++i) m.MemImage[at + i] = static_cast<uint8_t>(0x80 + dice() % 0x40);
    }
  }
  for (uint8_t& port : m.PortShadow) port = static_cast<uint8_t>(dice());
  if (dice() % 4 != 0) m.PortShadow[3] &= 0x3F;
  if (dice() % 2 == 0) m.PortShadow[2] = 0xB0;
  for (int32_t& reg : m.crtc.CrtcRegs) reg = static_cast<int32_t>(dice() % 256);
  m.crtc.CrtcRegs[18] %= 32;
  m.VideoReadNoise = dice() % 8 == 0;
  m.screen.x32KB = dice() % 8 == 0;
  m.screen.xScreenDIB = dice() % 2 == 0;
  m.screen.xScreenNoise = dice() % 4 == 0;
  if (dice() % 8 == 0) {
    m.CartName = kMexCartridge;
    m.MexPages.resize(kMexPageCount);
  }
  for (int32_t* field : {&m.z80.A, &m.z80.B, &m.z80.H, &m.z80.IX, &m.z80.IY, &m.z80.SP}) {
    *field = static_cast<int32_t>(dice());
  }
  m.z80.PC = static_cast<int32_t>(dice() % (dice() % 8 == 0 ? 0x40000 : 0x10000)) - 0x100;
  m.z80.IM = dice() % 16 == 0 ? 2 : 1;
  m.z80.IFF1 = static_cast<int32_t>(dice() % 2);
  m.run.FrameClock = static_cast<int32_t>(dice() % 62500);
}

int Soak(int seconds, uint64_t seed) {
  std::mt19937_64 dice(seed);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  int64_t frames = 0;
  int64_t machines = 0;
  int64_t ended = 0;
  int64_t sampledPasses = 0;
  int64_t sampledTStates = 0;
  for (; std::chrono::steady_clock::now() < end; ++machines) {
    FuzzHost host;
    host.framesLeft = kFramesPerMachine;
    host.framesForAPicture = 8;
    host.ticks = 0;
    const auto m = FuzzMachine(host);
    Randomize(*m, dice);
    bool endedSoon = false;
    try {
      for (int pass = 0; pass < 200; ++pass) {  // how long an instruction takes here, on average
        const int32_t before = m->run.FrameClock;
        RunLoop(*m);
        if (m->run.FrameClock > before) ++sampledPasses, sampledTStates += m->run.FrameClock - before;
      }
    } catch (const ProgramEnd&) {
      endedSoon = true;
    }
    if (endedSoon || !RunFuzzed(*m)) ++ended;
    frames += host.frames;
  }
  const double tStates = static_cast<double>(frames) * kFrameTStates;
  const double perPass =
      static_cast<double>(sampledTStates) / static_cast<double>(std::max<int64_t>(1, sampledPasses));
  std::printf(
      "%lld machines, %lld of them ended by a card's window, %lld frames, %.2f thousand million T-states, "
      "about %.2f thousand million instructions\n",
      static_cast<long long>(machines), static_cast<long long>(ended), static_cast<long long>(frames),
      tStates / 1e9, tStates / perPass / 1e9);
  return 0;
}

}  // namespace

}  // namespace quoll

int main(int argc, char** argv) {
  int seconds = 0;
  uint64_t seed = 1;
  if (argc > 1) std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), seconds);
  if (argc > 2) std::from_chars(argv[2], argv[2] + std::strlen(argv[2]), seed);
  if (seconds <= 0) {
    std::fprintf(stderr, "usage: randomsoak SECONDS [SEED]\n");
    return 2;
  }
  return quoll::Soak(seconds, seed);
}
