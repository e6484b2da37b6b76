// The SID's filters: on single voices by the chip's registers, and on the sum by the window's sliders.
#pragma once

#include "sound/Sid6581.h"

namespace quoll {

// Rounded to a sample, ties to even. A resonating butterfly reaches beyond 16 bits: there it stays at the
// end.
int16_t SidSample(double value);

// Low pass on each routed voice, then high pass, whose output always goes to voice 1.
void SidChipFilter(Sid6581& chip);

// The three post filters on SidOut, in their order, as often as the controls say.
void SidPostFilters(Sid6581& chip, const SidControls& controls);

}  // namespace quoll
