// A frame's samples and a few that nobody hears, so that the compiler makes loops of whole vectors of them.
#pragma once

#include <algorithm>
#include <array>

#include "sound/Tone.h"

namespace quoll {

inline constexpr int kPaddedSamples = 448;

template <class Sample>
using Padded = std::array<Sample, kPaddedSamples>;

// The samples that are heard.
template <class Sample>
void CopyFrame(const Padded<Sample>& padded, std::array<Sample, kFrameSamples>& frame) {
  std::copy_n(padded.begin(), kFrameSamples, frame.begin());
}

}  // namespace quoll
