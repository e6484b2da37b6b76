// Register dumps that play on the SID, one line or record in each frame: SIDX, a text of fixed columns, and
// DMP, 25 bytes a record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sound/Sid6581.h"

namespace quoll {

enum class SidTuneFormat : uint8_t { None, Sidx, Dmp };

inline constexpr size_t kSidTuneMostBytes = size_t{16} << 20U;  // 50 minutes of SIDX
inline constexpr int kSidxHeaderLines = 7;
inline constexpr size_t kDmpRecordBytes = 25;

// The open dump. What is read from it, lines or records, is chosen at each step.
struct SidTune {
  std::vector<uint8_t> bytes;
  size_t place = 0;  // of the next line or record

  bool operator==(const SidTune&) const = default;
};

struct SidTuneResult {
  bool opened = false;  // false: the tune that was open before still is
  std::string message;  // for the user; also beside a tune that opened but ends in half a record
};

// Opens a file's bytes as the format wants: a SIDX stands at its first line after the header. A file that is
// empty, ends before its first line or record, or is larger than kSidTuneMostBytes is refused.
SidTuneResult SidTuneOpen(SidTune& tune, SidTuneFormat format, std::span<const uint8_t> bytes);

// The same for a file. Whatever comes of it, the tune that was open before is closed; a file that is not
// there is no error.
SidTuneResult SidTuneOpenFile(SidTune& tune, SidTuneFormat format, const std::string& file);

// Nothing is left to play.
void SidTuneClose(SidTune& tune);

// One frame's line or record into the registers; nothing at the tune's end. The result is a filter word that
// a line should not have, which the user is told; else it is empty.
std::string SidTuneStep(SidTune& tune, SidTuneFormat format, Sid6581& chip);

// One SIDX line. Fields of dots leave their registers alone, and so do those that are missing or no number.
std::string SidxLine(std::string_view line, Sid6581& chip);

}  // namespace quoll
