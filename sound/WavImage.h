// A wave file of silence in memory.
#pragma once

#include <cstdint>
#include <vector>

namespace quoll {

// A file of rate x seconds x channels samples of 8 bits, all silent. Negative arguments give no samples.
std::vector<uint8_t> BuildWavImage(int32_t channels, int32_t rate, double seconds);

}  // namespace quoll
