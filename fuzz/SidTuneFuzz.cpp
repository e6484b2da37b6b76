// Dumps of the SID's registers. The input's first byte tells the format, how the file is opened, and whether
// it is played in the other format from half way on; the rest is the file, or, with bit 2, what it is filled
// with behind a sound header.
#include <cstdlib>
#include <string>

#include "fuzz/Fuzz.h"
#include "fuzz/Tiled.h"
#include "sound/SidTune.h"

namespace quoll {

namespace {

constexpr size_t kLongest = 20'000;
constexpr int kMostSteps = 3000;

// A refused file leaves the open tune as it was; one that is taken ends.
void CheckOpened(const SidTune& tune, const SidTune& before, const SidTuneResult& result) {
  if (!result.opened && result.message.empty()) std::abort();
  if (!result.opened && tune != before) std::abort();
  if (result.opened && tune.place >= tune.bytes.size()) std::abort();
}

// From a line or a record the chip gets bytes, and the place moves on.
void CheckStep(const SidTune& tune, size_t before, const Sid6581& chip) {
  if (before < tune.bytes.size() && tune.place <= before) std::abort();
  if (tune.place > tune.bytes.size()) std::abort();
  for (const int32_t reg : chip.SID_Reg)
    if (reg < 0 || reg > 0xFF) std::abort();
}

}  // namespace

void Fuzz(std::span<const uint8_t> input) {
  if (input.empty()) return;
  const uint8_t flags = input[0];
  input = input.subspan(1);
  const SidTuneFormat format = (flags & 1) != 0 ? SidTuneFormat::Dmp : SidTuneFormat::Sidx;
  const SidTuneFormat other = (flags & 1) != 0 ? SidTuneFormat::Sidx : SidTuneFormat::Dmp;
  std::vector<uint8_t> file(input.begin(), input.end());
  if ((flags & 4) != 0) {
    file = Tiled(input, kLongest);
    for (int line = 0; line < kSidxHeaderLines; ++line) file.insert(file.begin(), '\n');
  }
  SidTune tune{.bytes = {1, 2, 3}};
  const SidTune before = tune;
  const SidTuneResult result = SidTuneOpen(tune, format, file);
  CheckOpened(tune, before, result);
  Sid6581 chip;
  SidReset(chip);
  for (int step = 0; step < kMostSteps && tune.place < tune.bytes.size(); ++step) {
    const size_t place = tune.place;
    const bool change = (flags & 2) != 0 && place > tune.bytes.size() / 2;
    const std::string word = SidTuneStep(tune, change ? other : format, chip);
    if (word.size() > 3) std::abort();
    CheckStep(tune, place, chip);
  }
  SidxLine({reinterpret_cast<const char*>(input.data()), input.size()}, chip);
  SidTuneClose(tune);
  if (!SidTuneStep(tune, format, chip).empty() || tune != SidTune{}) std::abort();
}

}  // namespace quoll
