// TFloppy: the disk's window. A chosen image is in drive 0 at once.
#pragma once

#include <string>

#include "core/Form.h"

namespace quoll {

struct TFloppy {
  FormState window;
  std::string Label1;  // name of the image in the drive, empty for none
  ListBox File1;       // images to choose from
  std::string
      folder;  // that is listed: the file panel's when the window was shown; empty: the working directory

  bool operator==(const TFloppy&) const = default;
};

// Shows the window with its list made anew.
void TFloppy_Show(Machine& m);

// Puts an image into drive 0. One that can't be read is told to the user, and the disk stays as it was.
void TFloppy_Insert(Machine& m, const std::string& file);

extern const Form kTFloppy;

}  // namespace quoll
