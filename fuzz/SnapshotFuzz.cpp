// Snapshot files of any content. The input's last byte tells what is made of the others: bit 0, the machine
// draws a picture and runs for a frame; bit 1, they fill a whole file behind its name; bit 2, only up to a
// length that they tell, so that the file is cut short. Without bit 1 they are the file.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "fuzz/Fuzz.h"
#include "fuzz/FuzzMachine.h"
#include "fuzz/Tiled.h"
#include "loop/Redraw.h"
#include "media/Snapshot.h"

namespace quoll {

namespace {

constexpr std::string_view kMagic = "QUOLLEMU02";
constexpr size_t kPorts = 99;
constexpr size_t kMemory = 599;

std::vector<uint8_t> WholeFile(std::span<const uint8_t> filling) {
  std::vector<uint8_t> file = Tiled(filling, kSnapshotSize);
  std::copy(kMagic.begin(), kMagic.end(), file.begin());
  return file;
}

// An array lies at this place of the file: taken as far as the file goes, and behind that as it was.
void CheckArray(std::span<const uint8_t> now, std::span<const uint8_t> before, std::span<const uint8_t> file,
                size_t place) {
  const size_t there = file.size() <= place ? 0 : std::min(file.size() - place, now.size());
  if (there > 0 && std::memcmp(now.data(), file.data() + place, there) != 0) std::abort();
  if (!std::ranges::equal(now.subspan(there), before.subspan(there))) std::abort();
}

void CheckTaken(const Machine& m, const Machine& before, std::span<const uint8_t> file, bool snapshot) {
  const auto from = snapshot ? file : std::span<const uint8_t>();
  CheckArray(m.PortShadow, before.PortShadow, from, kPorts);
  CheckArray(m.MemImage, before.MemImage, from, kMemory);
  if (!snapshot && m.z80 != before.z80) std::abort();
}

// What was loaded is what is saved: a second machine that loads it is the same.
void CheckRoundTrip(const Machine& m, const Machine& before) {
  const auto second = std::make_unique<Machine>(before);
  const std::vector<uint8_t> saved = SnapshotBytes(m);
  if (saved.size() != kSnapshotSize) std::abort();
  if (ApplySnapshot(*second, saved) != SnapshotResult::Whole) std::abort();
  if (SnapshotBytes(*second) != saved) std::abort();
}

}  // namespace

void Fuzz(std::span<const uint8_t> input) {
  static FuzzHost host;
  static const auto before = FuzzMachine(host);
  const uint8_t kind = input.empty() ? 0 : input.back();
  if (!input.empty()) input = input.first(input.size() - 1);
  std::vector<uint8_t> file(input.begin(), input.end());
  if ((kind & 2) != 0 && input.size() >= 3) {
    file = WholeFile(input);
    const size_t length = input[0] + input[1] * size_t{0x100} + input[2] * size_t{0x10000};
    if ((kind & 4) != 0) file.resize(length % (kSnapshotSize + 100));
  }
  const bool snapshot =
      file.size() >= kMagic.size() && std::equal(kMagic.begin(), kMagic.end(), file.begin());

  const auto m = std::make_unique<Machine>(*before);
  const SnapshotResult result = ApplySnapshot(*m, file);
  if ((result == SnapshotResult::Foreign) == snapshot) std::abort();
  CheckTaken(*m, *before, file, snapshot);
  CheckRoundTrip(*m, *before);
  if ((kind & 1) == 0) return;
  redraw(*m);
  host.framesLeft = 1;
  RunFuzzed(*m);
}

}  // namespace quoll
