// TPrint: the printer's window. What was printed stands in its text box and goes to a printer of the host or
// into a file.
//
// Text1 is the printer's own text, a byte a character in its code page 852, and that is what scripts read.
// Windows, pages and files show it as UTF-8: PrintedText and PrintedFollower of cards/CodePage852.h make it
// so.
#pragma once

#include <string>

#include "core/Form.h"

namespace quoll {

struct TPrint {
  static constexpr std::string_view kNoPrinter = "No Printer";

  FormState window;
  ListBox Combo1{.entries = {std::string(kNoPrinter)}, .selected = 0};
  std::string Text2 = "print.txt";  // file that Command3 writes, by its name in the working directory

  bool operator==(const TPrint&) const = default;
};

// Shows the window with the host's printers as they are now; the chosen one stays where it is still there.
void TPrint_Show(Machine& m);

extern const Form kTPrint;

}  // namespace quoll
