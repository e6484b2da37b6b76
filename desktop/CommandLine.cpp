#include "desktop/CommandLine.h"

#include <string_view>

namespace quoll {

const char* const kVersionText = "quollemu 3.1\n";

const char* const kHelpText =
    "Usage: quollemu [option ...] [file ...]\n"
    "\n"
    "Shows the TV Computer in a window. Files open as if they were dropped on it, as soon as BASIC is "
    "ready:\n"
    ".cas .tvs .crt .tim .wav .dsk\n"
    "\n"
    "  --folder DIR   where the ROMs and cartridges are; otherwise the program's own folder\n"
    "  --fullscreen   begins with the full screen; Escape leaves it\n"
    "  --run          starts the program of a .cas file: types RUN\n"
    "  --speed max    as fast as the computer can; --speed normal is the machine's own speed\n"
    "  --script FILE  runs a Lua script by quollrun, without a window; what follows are its arguments\n"
    "  --version      says which version this is\n"
    "  --help         shows this text\n"
    "  --             what follows are files\n";

CommandLine ReadCommandLine(std::span<const char* const> arguments) {
  CommandLine line;
  bool filesOnly = false;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    // The option's value: behind "=", or the next argument.
    const size_t sign = argument.find('=');
    const std::string_view name = argument.substr(0, sign);
    const auto value = [&]() -> std::string {
      std::string given;
      if (sign != std::string_view::npos) {
        given = argument.substr(sign + 1);
      } else if (i + 1 < arguments.size()) {
        given = arguments[++i];
      }
      if (given.empty()) line.error = std::string(name) + " needs a value";
      return given;
    };
    if (filesOnly || !argument.starts_with('-') || argument == "-") {
      line.files.emplace_back(argument);
    } else if (argument == "--") {
      filesOnly = true;
    } else if (argument == "--help" || argument == "-h") {
      line.help = true;
    } else if (argument == "--version") {
      line.version = true;
    } else if (argument == "--fullscreen") {
      line.fullScreen = true;
    } else if (argument == "--run") {
      line.run = true;
    } else if (name == "--folder") {
      line.folder = value();
    } else if (name == "--speed") {
      const std::string speed = value();
      line.max = speed == "max";
      if (!line.max && speed != "normal" && line.error.empty())
        line.error = "--speed is max or normal, not " + speed;
    } else if (name == "--script") {
      line.script = value();
      filesOnly = true;
    } else {
      line.error = "there is no option " + std::string(argument);
    }
  }
  return line;
}

}  // namespace quoll
