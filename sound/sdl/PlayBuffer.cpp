#include "sound/sdl/PlayBuffer.h"

#include <algorithm>
#include <cstring>

namespace quoll {

namespace {

// The sound thread goes on to the next half if it is finished. What is taken from it was written before
// filled was; what was taken from the last one was read before entered is raised.
bool Enter(PlayBuffer& buffer) {
  const uint32_t next = buffer.entered.load(std::memory_order_relaxed);
  if (buffer.filled.load(std::memory_order_acquire) == next) return false;
  const auto now = PlayBuffer::Clock::now().time_since_epoch();
  buffer.enteredTime.store(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count(),
                           std::memory_order_relaxed);
  buffer.entered.store(next + 1, std::memory_order_release);
  return true;
}

}  // namespace

void PlayReset(PlayBuffer& buffer, size_t halfBytes) {
  for (auto& half : buffer.halves) half.assign(halfBytes, PlayBuffer::kSilence);
  buffer.entered = 0;
  buffer.filled = 1;
  buffer.enteredTime = 0;
  buffer.repeats = 0;
  buffer.cursor = 0;
}

bool PlayTake(PlayBuffer& buffer, std::span<uint8_t> out) {
  const size_t halfBytes = buffer.halves[0].size();
  bool begun = false;
  while (!out.empty() && halfBytes > 0) {
    const bool first = buffer.entered.load(std::memory_order_relaxed) == 0;
    if (first || buffer.cursor == halfBytes) {
      const bool next = Enter(buffer);
      begun = begun || next;
      if (!next) buffer.repeats.fetch_add(1, std::memory_order_relaxed);
      buffer.cursor = 0;
    }
    const uint32_t present = buffer.entered.load(std::memory_order_relaxed) - 1;
    const size_t count = std::min(out.size(), halfBytes - buffer.cursor);
    std::memcpy(out.data(), buffer.halves[present % 2].data() + buffer.cursor, count);
    buffer.cursor += count;
    out = out.subspan(count);
  }
  return begun;
}

bool PlayWantsData(const PlayBuffer& buffer) {
  return buffer.entered.load(std::memory_order_acquire) == buffer.filled.load(std::memory_order_relaxed);
}

std::span<uint8_t> PlayHalfToFill(PlayBuffer& buffer) {
  return buffer.halves[buffer.filled.load(std::memory_order_relaxed) % 2];
}

void PlayFilled(PlayBuffer& buffer) { buffer.filled.fetch_add(1, std::memory_order_release); }

}  // namespace quoll
