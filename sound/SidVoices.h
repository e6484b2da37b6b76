// The SID's three voices: oscillators, waveforms and envelopes.
#pragma once

#include "sound/Sid6581.h"

namespace quoll {

// One frame of each voice into SidVoiceOut, before ring and filter.
void SidVoicesFrame(Sid6581& chip, const SidControls& controls, Random& random);

}  // namespace quoll
