// The desktop program from its first step to its last.
#pragma once

#include "desktop/CommandLine.h"

namespace quoll {

class QtHost;

// Ends with the message when another copy runs; else shows the window, builds the machine and runs it until
// the user closes the window or the machine ends the program. Returns the exit status of the process: 0 when
// the user has closed it, 1 otherwise. A QApplication must exist.
int Main(QtHost& host, const CommandLine& line = {});

}  // namespace quoll
