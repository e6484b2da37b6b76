// The printer's code page: IBM's page 852 for Central Europe, with its letters, signs and frame pieces.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quoll {

// Unicode's number of a byte. Below 0x80 it is the byte itself.
char32_t CodePage852(uint8_t byte);

// What was printed, as UTF-8 for a window, a page or a file. Each CR, LF or pair of CR and LF becomes one
// line feed; tabs and form feeds stay; other control characters become full stops.
std::string PrintedText(std::string_view printed);

}  // namespace quoll
