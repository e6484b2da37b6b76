// TTape: the tape deck's window. Its buttons wind and change the tape, its reels and counter follow the
// motor.
#pragma once

#include <cstdint>
#include <string>

#include "core/Form.h"

namespace quoll {

struct TTape {
  static constexpr int32_t kPictures = 5;  // of a turning reel
  static constexpr int32_t kPhases = 10 * kPictures;

  FormState window;
  std::string Label1 = "0";  // counter
  std::string Label2 = "0";  // counter of the second deck
  std::string Label3;        // name of the tape
  ListBox File1;             // tapes to choose from
  Look File1Look{.visible = false};
  std::string
      folder;  // that is listed: the file panel's when the list was shown; empty: the working directory

  int32_t WindSpeed = 0;  // tenths of a picture for each tick, positive forward; runs down to 0
  int32_t playSpeed = 0;  // the same while the motor runs: 2, else 0
  int32_t phase = 0;      // of the reels, in tenths of a picture, 0 to kPhases - 1

  bool operator==(const TTape&) const = default;
};

// Which of the reels' pictures is seen, 0 to kPictures - 1.
int32_t ReelPicture(const TTape& form);

// Puts a tape, a wave file, in and winds it to its start.
void TTape_Insert(Machine& m, const std::string& file);

extern const Form kTTape;

}  // namespace quoll
