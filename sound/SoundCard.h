// The sound card: the list of its chips.
#pragma once

#include "core/Random.h"
#include "sound/Ay38910.h"
#include "sound/Saa1099.h"
#include "sound/Sid6581.h"
#include "sound/SidTune.h"
#include "sound/Sn76489.h"
#include "sound/Ym2413.h"
#include "sound/Ym3812.h"

namespace quoll {

struct SoundCard {
  Saa1099 saa;
  Sn76489 sn;
  Ym3812 opl;
  Sid6581 sid;
  Ym2413 opll;
  Ay38910 ay;
  SidTune tune;  // the open dump of the SID's registers; the chip's window plays it

  bool operator==(const SoundCard&) const = default;
};

// What the chips' windows tell them.
struct SoundCardControls {
  SaaControls saa;
  OplControls opl;
  SidControls sid;
  OpllControls opll;
};

// A new machine's card.
void SoundCardInit(SoundCard& card);

// The reset line: each chip's registers as after power-on. What else a chip keeps, it keeps.
void SoundCardReset(SoundCard& card);

// One frame of every chip into its buffers. The order counts, as chips share the random numbers.
void SoundCardRender(SoundCard& card, const SoundCardControls& controls, Random& random);

}  // namespace quoll
