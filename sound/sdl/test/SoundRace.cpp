// The sound thread and the main thread on one PlayBuffer, as fast as they can, for ThreadSanitizer to watch.
// Also checks that every block arrives once and in order. Exit status 0 when it does.
#include <cstdio>
#include <thread>

#include "sound/sdl/PlayBuffer.h"

namespace {

constexpr uint32_t kBlocks = 5000;
constexpr size_t kHalfBytes = 4410;
constexpr size_t kChunk = 882;

// The first bytes of a block are its number, the others follow from it.
void WriteBlock(std::span<uint8_t> half, uint32_t number) {
  for (size_t i = 0; i < half.size(); ++i) half[i] = static_cast<uint8_t>((number >> (8 * (i % 4))) + i / 4);
}

bool IsBlock(std::span<const uint8_t> half, uint32_t number) {
  for (size_t i = 0; i < half.size(); ++i) {
    if (half[i] != static_cast<uint8_t>((number >> (8 * (i % 4))) + i / 4)) return false;
  }
  return true;
}

}  // namespace

int main() {
  quoll::PlayBuffer buffer;
  quoll::PlayReset(buffer, kHalfBytes);
  std::atomic<bool> done = false;

  uint32_t wrong = 0, played = 0, repeated = 0;
  std::thread sound([&] {
    std::vector<uint8_t> half(kHalfBytes);
    uint32_t expected = 0;  // the silent half is no block
    while (!done) {
      bool begun = false;
      for (size_t at = 0; at < kHalfBytes; at += kChunk) {
        begun = quoll::PlayTake(buffer, std::span(half).subspan(at, kChunk)) || begun;
      }
      if (begun) {
        if (expected > 0) ++played;
        ++expected;
      } else {
        ++repeated;
        std::this_thread::yield();
      }
      if (expected > 1 && !IsBlock(half, expected - 1)) ++wrong;
    }
  });
  for (uint32_t number = 1; number <= kBlocks;) {
    if (!quoll::PlayWantsData(buffer)) {
      std::this_thread::yield();
      continue;
    }
    WriteBlock(quoll::PlayHalfToFill(buffer), number++);
    quoll::PlayFilled(buffer);
  }
  while (buffer.entered.load() <= kBlocks) std::this_thread::yield();
  done = true;
  sound.join();
  std::printf("%u blocks played, %u wrong, %u halves repeated\n", played, wrong, repeated);
  return wrong == 0 && played == kBlocks && repeated == buffer.repeats.load() ? 0 : 1;
}
