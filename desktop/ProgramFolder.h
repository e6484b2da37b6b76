// Where the program's own files are.
#pragma once

#include <string>

namespace quoll {

// The folder of the ROM set: the executable's own where it holds one, else where the program's data is
// installed. Without any ROM set it is the executable's own.
std::string ProgramFolder();

// The executable's own, where the companion program lies, too.
std::string ExecutableFolder();

}  // namespace quoll
