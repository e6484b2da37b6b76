// A disk image whose bytes tell where they come from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "cards/Floppy.h"

namespace quoll::test {

// Each place of it differs from its neighbours, and each sector from the next ones.
inline uint8_t Pattern(size_t place) { return static_cast<uint8_t>(place * 7 + place / 512 * 13 + 1); }

inline std::vector<uint8_t> PatternImage(size_t size = kDiskSize) {
  std::vector<uint8_t> image(size);
  for (size_t place = 0; place < size; ++place) image[place] = Pattern(place);
  return image;
}

inline const Floppy& PatternDisk() {
  static const Floppy kFloppy = [] {
    Floppy floppy;
    PlaceDisk(floppy, PatternImage());
    return floppy;
  }();
  return kFloppy;
}

inline Floppy WithDisk() { return PatternDisk(); }

}  // namespace quoll::test
