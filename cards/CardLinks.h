// What the cards have outside the machine: the memories shared with other programs, and the companion program
// behind the serial card. Hosts that have them keep one; it is no part of a machine's state.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cards/Companion.h"
#include "cards/SharedMemory.h"
#include "core/Host.h"

namespace quoll {

struct CardLinks {
  MMapper sound;      // "MMDemo" and "MMDemo2": other programs may expect them; nothing is kept there
  MMapper soundFlag;  //
  MMapper serial;     // the serial card's record

  std::string serialName{kSerialMapName.name};  // another one lets machines run side by side
  CompanionProcess companion;                   // the one that this program has started
};

// Makes all three. Empty, or what went wrong; those that could be made stay.
std::string CreateMaps(CardLinks& links);

// The serial card's record; empty while it is not made.
std::span<uint8_t> SerialRecord(CardLinks& links);

// Host::CallCompanion for a memory: a companion that runs is asked, else one is started from the folder.
bool CallCompanion(CardLinks& links, CompanionCall call, const std::string& folder);

}  // namespace quoll
