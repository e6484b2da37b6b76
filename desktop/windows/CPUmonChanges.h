// What of the processor and its memory has changed since the last stop, by the texts of the Z80 monitor.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "desktop/widgets/HexView.h"
#include "forms/CPUmon.h"

namespace quoll {

struct CPUmonChanges {
  std::optional<CPUmonShown> before;  // what is compared with: when the machine went on for the last time
  std::optional<CPUmonShown> atRest;  // as the machine stood last, with what was typed in since it stopped
};

// To be called with each look at the texts. What is typed into a machine at rest has changed as well.
void FollowChanges(CPUmonChanges& changes, const CPUmonShown& now, bool running);

// The bytes and characters that differ in rows of the same address; none in rows that were not seen before.
std::vector<HexView::Mark> ChangedBytes(std::string_view before, std::string_view now);

}  // namespace quoll
