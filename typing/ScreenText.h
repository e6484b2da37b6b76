// The text on the machine's screen, read from the picture as it was drawn last by comparing it with the font.
#pragma once

#include <string>
#include <vector>

namespace quoll {

struct Machine;

// The rows from the top, UTF-8, without blanks at their ends. Cells of 8 by 10 points, as many columns as the
// video mode has. A cell counts whatever its two colours are, inverse ones too, so that a full block is a
// blank; one in which no character stands is U+FFFD. Empty where nothing has been drawn, or where the font is
// not that of the system ROM known here.
std::vector<std::string> ScreenRows(const Machine& m);

// The same as one text: a line feed behind each row, without empty rows at the end.
std::string ScreenText(const Machine& m);

}  // namespace quoll
