// The companion's command line.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>

#include "companion/EndSettings.h"

namespace quoll {

struct Options {
  std::string map;                  // name of the shared memory
  bool headless = false;            // no window
  bool minimised = false;           // the window is out of the way until it is asked for
  bool endWithInput = false;        // ends with standard input: with whoever holds its other side
  std::optional<EndSettings> port;  // to be opened at once
};

struct OptionsRead {
  Options options;
  QString help;   // not empty: this is all that was asked for
  QString error;  // not empty: what is wrong with the arguments
};

// arguments: with the program's name as the first.
OptionsRead ReadOptions(const QStringList& arguments);

}  // namespace quoll
