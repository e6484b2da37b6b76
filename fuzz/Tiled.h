// Long files out of the short inputs that fuzzers like best.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace quoll {

// The bytes again and again up to the length; zeros when there are none.
inline std::vector<uint8_t> Tiled(std::span<const uint8_t> bytes, size_t length) {
  std::vector<uint8_t> file(length);
  if (bytes.empty()) return file;
  for (size_t at = 0; at < length; at += bytes.size()) {
    std::memcpy(file.data() + at, bytes.data(), std::min(bytes.size(), length - at));
  }
  return file;
}

}  // namespace quoll
