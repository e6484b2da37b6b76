// Picture files: the first five bytes are the moment in the frame and the length to which the rest is
// repeated when the fifth is odd, so that long files come up too. The picture is drawn afterwards.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "fuzz/Fuzz.h"
#include "fuzz/FuzzMachine.h"
#include "fuzz/Tiled.h"
#include "loop/Redraw.h"
#include "media/Pictures.h"

namespace quoll {

namespace {

struct Head {
  int32_t frameClock = 0;
  uint8_t length = 0;
};
constexpr size_t kHeadBytes = 5;

void Check(const Machine& m, std::span<const uint8_t> file) {
  const size_t screen = file.size() > kTimHeaderSize ? file.size() - kTimHeaderSize : 0;
  const size_t stored = std::min(screen, m.MemImage.size() - kVid0);
  const auto video = m.MemImage.begin() + kVid0;
  CheckZeros(m, 0, kVid0);
  if (stored != 0 &&
      !std::equal(video, video + static_cast<ptrdiff_t>(stored), file.begin() + kTimHeaderSize)) {
    std::abort();
  }
  CheckZeros(m, kVid0 + stored, m.MemImage.size());
  if ((m.PortShadow[6] & 3) == 3 || (m.PortShadow[6] & 0xFC) != 0) std::abort();
  for (size_t colour = 0; colour < 4; ++colour) {
    const int expected = file.size() > 4 + colour ? file[4 + colour] : 0;
    if (m.PortShadow[0x60 + colour] != expected) std::abort();
  }
}

}  // namespace

void Fuzz(std::span<const uint8_t> input) {
  static Host host;
  const auto m = FuzzMachine(host);
  Head head;
  if (input.size() >= kHeadBytes) {
    std::memcpy(&head.frameClock, input.data(), 4);
    head.length = input[4];
    input = input.subspan(kHeadBytes);
  }
  std::vector<uint8_t> file(input.begin(), input.end());
  if ((head.length & 1) != 0 && !input.empty()) {
    file = Tiled(input, std::max<size_t>(input.size(), size_t{head.length} * 1000));
  }
  m->run.FrameClock = head.frameClock;
  m->crtc.CrtcRegs[1] = 64;
  m->crtc.CrtcRegs[6] = 60;
  ShowTim(*m, file);
  Check(*m, file);
  redraw(*m);
}

}  // namespace quoll
