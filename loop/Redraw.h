// The picture's order of steps, from the CRTC's placing of the box to the border.
#pragma once

#include "display/Refresh.h"
#include "machine/Machine.h"

namespace quoll {

// Builds the picture and paints the border, as far as the monitor's "Screen" and "Border" boxes want them.
void redraw(Machine& m);

// What the machine's next picture is made from.
PictureSource SourceOf(Machine& m);

}  // namespace quoll
