// The desktop program in real time: how evenly its frames come, what it costs, and whether the sound device
// got each block once. See bench/pace.sh.
//
//   pacebench [--max] [seconds]      with the driver of SDL_AUDIODRIVER; "disk" with SDL_DISKAUDIOFILE
//
// Exit status 0 when the program ran to the end of the time and no block was lost or doubled.
#include <sys/resource.h>

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "desktop/Main.h"
#include "desktop/QtHost.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using Block = std::array<uint8_t, kBlockBytes>;

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double CpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

struct PaceHost : QtHost {
  static constexpr size_t kStart = 50;  // frames until everything runs evenly

  double seconds = 60;
  bool max = false;
  bool keepsBlocks = false;
  std::vector<Clock::time_point> ends;  // of frames
  std::vector<double> figures;          // Text1
  std::vector<Block> blocks;
  double cpuAtStart = 0, cpu = 0;
  uint32_t shownAtStart = 0, shown = 0;
  std::string delivered;
  uint32_t noise = 1;

  // Noise in every sample makes each block unlike any other.
  void MakeNoise(Machine& m) {
    m.PortShadow[5] &= 0xEF;
    for (uint8_t& slot : m.tone.DacSlots) {
      noise = noise * 1664525U + 1013904223U;
      slot = static_cast<uint8_t>(16 + (noise >> 28));
    }
  }

  void FrameEnded(Machine& m) override {
    if (max) m.screen.xS6 = true;
    QtHost::FrameEnded(m);
    MakeNoise(m);
    ends.push_back(Clock::now());
    figures.push_back(std::atof(m.screen.Text1.c_str()));
    if (ends.size() == kStart) {
      cpuAtStart = CpuSeconds();
      shownAtStart = m.picture.shown;
    }
    cpu = CpuSeconds();
    shown = m.picture.shown;
    delivered = m.fdxf.TextR;
    if (ends.size() > kStart && Passed() >= seconds) Close();
  }
  void BlockMixed(Machine& m) override {
    if (keepsBlocks) blocks.push_back(m.mixer.BlockBuffer);
  }
  void MessageBox(std::string_view text, std::string_view title, MessageIcon) override {
    std::printf("message: %.*s | %.*s\n", static_cast<int>(title.size()), title.data(),
                static_cast<int>(text.size()), text.data());
  }

  double Passed() const { return std::chrono::duration<double>(ends.back() - ends[kStart - 1]).count(); }
};

double At(const std::vector<double>& sorted, double part) {
  return sorted[static_cast<size_t>(part * static_cast<double>(sorted.size() - 1))];
}

void Report(const PaceHost& host) {
  std::vector<double> intervals;
  for (size_t i = PaceHost::kStart; i < host.ends.size(); ++i) {
    intervals.push_back(std::chrono::duration<double, std::milli>(host.ends[i] - host.ends[i - 1]).count());
  }
  std::ranges::sort(intervals);
  std::vector<double> figures(host.figures.begin() + PaceHost::kStart, host.figures.end());
  std::ranges::sort(figures);
  const double passed = host.Passed();
  const auto frames = static_cast<double>(intervals.size());
  std::printf("frames %.0f in %.3f s: %.3f a second, %.0f in a minute\n", frames, passed, frames / passed,
              60 * frames / passed);
  std::printf("frame interval, ms: p1 %.2f, p5 %.2f, median %.2f, p95 %.2f, p99 %.2f, longest %.2f\n",
              At(intervals, 0.01), At(intervals, 0.05), At(intervals, 0.5), At(intervals, 0.95),
              At(intervals, 0.99), intervals.back());
  std::printf("Text1: p5 %.0f, median %.0f, p95 %.0f\n", At(figures, 0.05), At(figures, 0.5),
              At(figures, 0.95));
  std::printf("pictures drawn: %u, blocks delivered: %s\n", host.shown - host.shownAtStart,
              host.delivered.c_str());
  std::printf("CPU share: %.1f %% of one core\n", 100 * (host.cpu - host.cpuAtStart) / passed);
}

// From the block on that was mixed first after the start, what the device played must be the blocks in their
// order. The last ones were not played any more.
bool Compare(const PaceHost& host, const char* file) {
  constexpr size_t kFirst = 10, kNotPlayed = 4;
  std::ifstream in(file, std::ios::binary);
  const std::vector<uint8_t> played(std::istreambuf_iterator<char>(in), {});
  const Block& first = host.blocks.at(kFirst);
  auto at = std::search(played.begin(), played.end(), first.begin(), first.end());
  if (at == played.end()) {
    std::printf("disk: block %zu was never played\n", kFirst);
    return false;
  }
  size_t same = 0, other = 0;
  const size_t expected = host.blocks.size() - kNotPlayed;
  for (size_t n = kFirst; n < expected; ++n) {
    const Block& block = host.blocks[n];
    const bool there = played.end() - at >= kBlockBytes && std::equal(block.begin(), block.end(), at);
    (there ? same : other) += 1;
    if (played.end() - at < kBlockBytes) break;
    at += kBlockBytes;
  }
  std::printf("disk: %zu blocks mixed, from number %zu on %zu played in their place, %zu not\n",
              host.blocks.size(), kFirst, same, other);
  return other == 0 && same + kFirst == expected;
}

}  // namespace

}  // namespace quoll

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("QUOLLEMU");
  QApplication::setQuitOnLastWindowClosed(false);
  quoll::PaceHost host;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--max") == 0) {
      host.max = true;
    } else {
      host.seconds = std::atof(argv[i]);
    }
  }
  const char* driver = std::getenv("SDL_AUDIODRIVER");
  const char* file = std::getenv("SDL_DISKAUDIOFILE");
  host.keepsBlocks = driver != nullptr && std::strcmp(driver, "disk") == 0 && file != nullptr && !host.max;
  const int status = quoll::Main(host);
  if (host.ends.size() <= quoll::PaceHost::kStart) return 1;
  quoll::Report(host);
  return status == 0 && (!host.keepsBlocks || quoll::Compare(host, file)) ? 0 : 1;
}
