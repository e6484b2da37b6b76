// Colours of the machine's forms.
#pragma once

#include <QColor>

#include "core/Form.h"

namespace quoll {

// red + 256 x green + 65536 x blue.
inline QColor ToColour(int32_t colour) { return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF}; }

}  // namespace quoll
