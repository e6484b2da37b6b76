// Coloured text as a rich text file.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "devtools/Assembler.h"

namespace quoll {

// The file's content. The text is UTF-8; what stands before the first run is black.
std::string RichText(std::string_view utf8, std::span<const ColouredText::Run> runs);

}  // namespace quoll
