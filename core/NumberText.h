// Numbers as users type them into the boxes of the forms.
#pragma once

#include <cstdint>
#include <string>

namespace quoll {

// Value of a box's text: blanks, a sign, then digits as far as they go, hexadecimal ones after "&H"; 0 for a
// bad text. What 32 bits can't hold gives the nearest number that they can.
int32_t NumberOfText(const std::string& text);

}  // namespace quoll
