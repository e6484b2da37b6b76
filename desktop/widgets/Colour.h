// Colours of the machine's forms.
#pragma once

#include <QColor>

#include "core/Form.h"

namespace quoll {

// red + 256 x green + 65536 x blue.
inline QColor ToColour(int32_t colour) { return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF}; }

// Of a value that has changed.
inline const QColor kChangedGround(0xFF, 0xD8, 0xC0), kChangedText(0xB0, 0x10, 0x00);

}  // namespace quoll
