// Error simulation: damages the machine's memory at each picture, as faulty RAM chips would.
#pragma once

#include <array>
#include <cstdint>

#include "core/Form.h"
#include "core/Random.h"

namespace quoll {

struct ErrorSim {
  FormState window;
  bool Check1 = false;                                                  // "Enabled"
  std::array<bool, 8> CH0{};                                            // "0 bit" to "7 bit"
  std::array<bool, 3> Option1{true, false, false};                      // "bit=0", "bit=1", "bit=Random"
  bool Check2 = false, Check3 = false, Check4 = false, Check5 = false;  // "U0" to "U3"

  bool operator==(const ErrorSim&) const = default;
};

// Sum of the ticked bits of CH0.
uint8_t VidErrMask(const ErrorSim& sim);

// The byte as the damaged chips give it back.
uint8_t VidErr(const ErrorSim& sim, Random& random, uint8_t byte);

extern const Form kErrorSim;

}  // namespace quoll
