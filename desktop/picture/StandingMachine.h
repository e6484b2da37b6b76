// While the machine stands, what is done to it is seen at once: a file that is loaded, memory or ports that a
// monitor changes, a reset.
#pragma once

#include <cstdint>
#include <vector>

#include "desktop/QtHost.h"

namespace quoll {

class StandingMachine : public RecordView {
 public:
  explicit StandingMachine(QtHost& hostOfMachine);

  void Pull(Machine& machine) override;

 private:
  // A reset that is wanted is done in a single pass; where an error of the processor has stopped the machine
  // it sets it going again, in here.
  void ServeReset(Machine& m);

  std::vector<uint8_t>
      drawn;  // what the picture is made of, as it was drawn last; empty while the machine runs
};

}  // namespace quoll
