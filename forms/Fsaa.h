// Fsaa: of the SAA1099's window so far the button that records the sound output, and the number that it shows
// at each end of a block.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "core/Form.h"

namespace quoll {

struct Machine;

struct Fsaa {
  static constexpr int32_t kWhite = 16777215, kRed = 255;

  std::string Label11;             // frames in the block at the last block's end
  int32_t Command1Color = kWhite;  // back colour of "Record"; red while it records
  std::string file;                // full name of "record.wav" while it is open
};

// "Record": begins or ends a recording. The file begins as a copy of the program folder's "techno.wav", or,
// without one, as a header and a block of silence.
void Fsaa_Command1_Click(Machine& m);

// The end of a block at normal speed. While it records, the block goes to the same place of the file each
// time: in the end the file holds the last one.
void FsaaBlockEnded(Machine& m);

std::span<const Control> FsaaControls();

}  // namespace quoll
