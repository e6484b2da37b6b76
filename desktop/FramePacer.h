// The pace of the frames: the sound output asks for a block every 100 ms of its own clock, with some jitter;
// the frames of a block are spread evenly over that time.
#pragma once

#include <chrono>

namespace quoll {

class FramePacer {
 public:
  using Clock = std::chrono::steady_clock;
  using Time = Clock::time_point;

  static constexpr std::chrono::milliseconds kFrame{20};
  static constexpr std::chrono::milliseconds kBlock{100};

  explicit FramePacer(Time now);

  // The output has asked for a block, at this moment. Start and length of the blocks are smoothed.
  void BlockBegun(Time moment);

  // When the frame that follows those mixed into the block so far, 0 to 5, is due. A block's first one is due
  // when the block begins, so that its last is mixed 20 ms before the output asks for it.
  Time FrameDue(int framesMixed) const;

  // A frame begins. paced: it could have waited until it was due.
  void FrameBegun(Time now, Time due, bool paced);

  // The clock that the machine sees, in milliseconds. A frame that begins when it is due counts as 20 ms
  // after the last one, however long the windows took to paint and however the output's clock differs;
  // otherwise the clock itself counts.
  std::chrono::milliseconds Tick(Time now);

 private:
  void MoveTick(Time now);

  Time blockStart{};  // when the output asked for the block before the present one, smoothed
  Clock::duration blockLength{kBlock};  // by the output's clock, smoothed
  bool onTime = false;                  // the present frame began when it was due
  Clock::duration tick;                 // what Tick gives
  Time tickTaken;                       // when that was
};

}  // namespace quoll
