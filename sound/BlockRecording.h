// The recording of the sound output: the last block mixed, behind a wave file's header.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace quoll {

struct BlockRecording {
  std::string file;  // full name of "record.wav" while it is open, else empty

  bool operator==(const BlockRecording&) const = default;
};

// Begins one in the working directory. The file begins as a copy of the folder's "techno.wav", or, without
// one, as a header and a block of silence.
void StartBlockRecording(BlockRecording& recording, const std::string& programFolder);
void StopBlockRecording(BlockRecording& recording);

// The end of a block. It goes to the same place of the file each time: in the end the file holds the last
// one.
void RecordBlock(const BlockRecording& recording, std::span<const uint8_t> block);

}  // namespace quoll
