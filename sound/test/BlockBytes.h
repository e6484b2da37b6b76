// The samples of a block, for the tests of what fills it.
#pragma once

#include <gtest/gtest.h>

#include <ostream>

#include "sound/Mixer.h"

namespace quoll {

struct Pair {
  int left, right;
  bool operator==(const Pair&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Pair& pair) {
  return out << pair.left << '/' << pair.right;
}

inline Pair At(const Mixer& mixer, int frame, int sample) {
  const int at = 2 * (441 * frame + sample);
  return {mixer.BlockBuffer[at], mixer.BlockBuffer[at + 1]};
}

// All of a frame's samples are this byte.
inline void ExpectBlockFrame(const Mixer& mixer, int frame, int byte) {
  for (int i = 0; i < 441; ++i) ASSERT_EQ(At(mixer, frame, i), (Pair{byte, byte})) << frame << ' ' << i;
}

}  // namespace quoll
