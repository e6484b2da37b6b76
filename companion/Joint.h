// Where the two sides meet: bytes go from the shared record to the port's device and back.
#pragma once

#include <QIODevice>
#include <cstdint>

#include "cards/SerialMap.h"

namespace quoll {

struct Joint {
  SerialQueue toMachine;    // read from the device and not yet in the record
  SerialQueue fromMachine;  // taken from the record and not yet in the device

  uint64_t bytesToMachine = 0;    // handed over so far
  uint64_t bytesFromMachine = 0;  // given to the device so far
};

// Moves what can be moved without waiting, both ways; what does not fit stays where it is. The device's and
// the companion's own buffers hold little at any time, so that a killed companion loses little. Without a
// device, null, what was read of the last one still goes to the machine. True when something moved.
bool JointMove(Joint& joint, SerialView record, QIODevice* device);

}  // namespace quoll
