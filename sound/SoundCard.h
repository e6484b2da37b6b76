// The sound card: the list of its chips.
#pragma once

#include <span>

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

// What is done with a chip.
struct SoundChip {
  void (*init)(SoundCard& card);  // in a new machine; nullptr: nothing
  void (*reset)(SoundCard& card);
  void (*render)(SoundCard& card, const SoundCardControls& controls, Random& random);
  double weight;  // in the mix
  const FrameSamples& (*left)(const SoundCard& card);
  const FrameSamples& (*right)(const SoundCard& card);
};

// All chips. A mix of tenths depends on the order of its terms, and chips share the random numbers: a new one
// comes at the end.
std::span<const SoundChip> SoundChips();
// The tone generator's place among the terms: behind so many chips.
inline constexpr size_t kChipsBeforeTone = 4;

// A new machine's card.
void SoundCardInit(SoundCard& card);

// The reset line: each chip's registers as after power-on. What else a chip keeps, it keeps.
void SoundCardReset(SoundCard& card);

// One frame of every chip into its buffers.
void SoundCardRender(SoundCard& card, const SoundCardControls& controls, Random& random);

}  // namespace quoll
