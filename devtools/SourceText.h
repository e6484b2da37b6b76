// Assembler sources as whole texts: colours, other dialects, files.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "devtools/Assembler.h"

namespace quoll {

// The source with the colours of the editor; lines parted by carriage return and line feed. Text without a
// colour of its own is black.
ColouredText ColouredSource(std::string_view source);

// A source of the machine's own assembler in this assembler's dialect, by replacements over the whole text.
std::string ConvertTvcasm(std::string_view source);

// Every line end, be it carriage return, line feed or both, as both.
std::string WithBothLineEnds(std::string_view text);

// The source of a file: UTF-8 where it is such, otherwise code page 1250 as it stands; line ends as
// WithBothLineEnds.
std::string SourceOfFile(std::string_view bytes);

}  // namespace quoll
