// TTape: the tape deck's window. Its buttons wind and change the tape, its reels and counter follow the
// motor.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "core/Form.h"

namespace quoll {

struct Machine;

struct TTape {
  static constexpr int32_t kPictures = 5;  // of a turning reel
  static constexpr int32_t kPhases = 10 * kPictures;
  static constexpr int32_t kTimer1Milliseconds = 100;

  std::string Label1 = "0";  // counter
  std::string Label2 = "0";  // counter of the second deck
  std::string Label3;        // name of the tape
  std::string File1;         // the file chosen in the list
  bool listShown = false;    // the list File1 is seen
  std::string
      folder;  // that is listed: the file panel's when the list was shown; empty: the working directory
  uint32_t listRefreshes = 0;

  int32_t WindSpeed = 0;  // tenths of a picture for each tick, positive forward; runs down to 0
  int32_t playSpeed = 0;  // the same while the motor runs: 2, else 0
  int32_t phase = 0;      // of the reels, in tenths of a picture, 0 to kPhases - 1
};

// Which of the reels' pictures is seen, 0 to kPictures - 1.
int32_t ReelPicture(const TTape& form);

// Puts a tape, a wave file, in and winds it to its start.
void TTape_Insert(Machine& m, const std::string& file);

// The tick of Timer1: moves reels and counter on.
void TTape_Timer1(Machine& m);

std::span<const Control> TTapeControls();

}  // namespace quoll
