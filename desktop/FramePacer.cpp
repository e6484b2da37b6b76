#include "desktop/FramePacer.h"

#include <algorithm>

#include "sound/Mixer.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr auto kLargestJitter = 30ms;  // more is a new beginning
constexpr auto kLargestDrift = 10ms;   // of a block's length
constexpr int kStartSmoothing = 4, kLengthSmoothing = 32;

}  // namespace

FramePacer::FramePacer(Time now) : tick(now.time_since_epoch()), tickTaken(now) {}

void FramePacer::BlockBegun(Time moment) {
  const auto expected = blockStart + blockLength;
  const auto error = moment - expected;
  const bool jitter = -kLargestJitter < error && error < kLargestJitter;
  blockStart = jitter ? expected + error / kStartSmoothing : moment;
  if (!jitter) return;
  blockLength = std::clamp<Clock::duration>(blockLength + error / kLengthSmoothing, kBlock - kLargestDrift,
                                            kBlock + kLargestDrift);
}

FramePacer::Time FramePacer::FrameDue(int framesMixed) const {
  return blockStart + blockLength * std::clamp(framesMixed, 0, kFramesPerBlock) / kFramesPerBlock;
}

void FramePacer::FrameBegun(Time now, Time due, bool paced) {
  onTime = paced && now - due < kFrame;
  MoveTick(now);
}

std::chrono::milliseconds FramePacer::Tick(Time now) {
  if (!onTime) MoveTick(now);
  return std::chrono::duration_cast<std::chrono::milliseconds>(tick);
}

void FramePacer::MoveTick(Time now) {
  tick += onTime ? kFrame : now - tickTaken;
  tickTaken = now;
}

}  // namespace quoll
