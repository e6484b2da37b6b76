// Pictures that a script's user picks.
#pragma once

#include <string>

#include "core/Form.h"

namespace quoll {

// Reads a PNG file. False, and the picture as it was, when it is none or larger than 8192 pixels.
bool ReadPicture(const std::string& file, PixelImage& picture);

}  // namespace quoll
