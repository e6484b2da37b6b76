// The two halves between the machine and the sound thread. The sound thread plays them in turn and only takes
// a half that is finished; the main thread only fills the half that is not being played. Two counters tell
// who owns which half, so that neither thread ever waits for the other.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quoll {

struct PlayBuffer {
  using Clock = std::chrono::steady_clock;
  static constexpr uint8_t kSilence = 128;

  // Halves are numbered from 0 on; half n lies in halves[n % 2].
  std::array<std::vector<uint8_t>, 2> halves;

  std::atomic<uint32_t> entered = 0;     // halves that have begun to play; written by the sound thread
  std::atomic<uint32_t> filled = 1;      // halves that are finished; written by the main thread
  std::atomic<int64_t> enteredTime = 0;  // nanoseconds of Clock at which the last one began
  std::atomic<uint32_t> repeats = 0;     // halves played twice because the next one was not finished

  size_t cursor = 0;  // bytes of the present half played; the sound thread's own
};

// Makes both halves anew, silent, as if nothing had been played. Only while no sound thread runs.
void PlayReset(PlayBuffer& buffer, size_t halfBytes);

// The sound thread takes its next bytes. With no finished half to go on with, the present one is played once
// more. Returns true when a half has begun, which is when the main thread has one to fill.
bool PlayTake(PlayBuffer& buffer, std::span<uint8_t> out);

// The main thread: a half has begun to play and its follower is not filled yet.
bool PlayWantsData(const PlayBuffer& buffer);
// The half to be filled, only while PlayWantsData.
std::span<uint8_t> PlayHalfToFill(PlayBuffer& buffer);
// It is finished.
void PlayFilled(PlayBuffer& buffer);

}  // namespace quoll
