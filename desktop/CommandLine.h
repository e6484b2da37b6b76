// What the program is asked for on its command line.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace quoll {

struct CommandLine {
  bool help = false, version = false;
  bool fullScreen = false;
  bool max = false;                // as fast as the host can
  bool run = false;                // type RUN when a cassette file has been opened
  std::string folder;              // of ROMs and cartridges; empty: the program's own
  std::string script;              // that quollrun shall run instead
  std::vector<std::string> files;  // to be opened; behind a script its arguments
  std::string error;               // what is wrong with it, empty for nothing
};

// arguments: without the program's name.
CommandLine ReadCommandLine(std::span<const char* const> arguments);

extern const char* const kHelpText;
extern const char* const kVersionText;

}  // namespace quoll
