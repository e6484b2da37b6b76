// The printer's code page: IBM's page 852 for Central Europe, with its letters, signs and frame pieces.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "cards/Printer.h"

namespace quoll {

// Unicode's number of a byte. Below 0x80 it is the byte itself.
char32_t CodePage852(uint8_t byte);

// What was printed, as UTF-8 for a window, a page or a file. Each CR, LF or pair of CR and LF becomes one
// line feed; tabs and form feeds stay; other control characters become full stops.
std::string PrintedText(std::string_view printed);

// Makes the same text piece by piece, for a window that must stay quick however much has been printed.
struct PrintedFollower {
  size_t taken = 0;         // bytes of the printed text that the pieces so far came from
  uint32_t beginnings = 0;  // the printer's, when they were
  char before = 0;          // the last of these bytes
};

struct PrintedPiece {
  bool fromStart = false;  // the text has begun anew: the pieces before are gone
  std::string text;        // UTF-8, to be put at the end
};

// What has been printed since the last call, at most so many bytes: the rest comes with the next calls.
PrintedPiece FollowPrinted(PrintedFollower& follower, const Printer& printer, size_t most = 65536);

}  // namespace quoll
