// Runs a mix as a whole process: mixrun loop|broad FRAMES. Under callgrind, the difference between two frame
// counts divided by the passes gives the host instructions of one Z80 instruction (tools/callgrind.sh).
#include <charconv>
#include <cstdio>
#include <cstring>

#include "bench/MixMachine.h"

int main(int argc, char** argv) {
  int frames = 0;
  if (argc == 3) std::from_chars(argv[2], argv[2] + std::strlen(argv[2]), frames);
  if (frames <= 0) {
    std::fprintf(stderr, "usage: mixrun loop|broad FRAMES\n");
    return 2;
  }
  quoll::bench::FrameHost host;
  auto m = quoll::bench::MixMachine(host, argv[1]);
  quoll::bench::RunFrames(*m, host, frames);
  std::printf("%.3f passes per frame, A = %d\n", quoll::bench::PassesPerFrame(argv[1]), m->z80.A);
  return 0;
}
