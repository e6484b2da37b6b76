#include "forms/ErrorSim.h"

#include "core/FormTable.h"
#include "display/MemoryFaults.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr On<&Machine::errorsim> f;

constexpr std::array kControls{
    f.Check<&ErrorSim::Check1>("Check1", "Enabled"),
    f.Check<&ErrorSim::CH0>("CH0", "0 bit|1 bit|2 bit|3 bit|4 bit|5 bit|6 bit|7 bit"),
    f.Option<&ErrorSim::Option1>("Option1", "bit=0|bit=1|bit=Random"),
    f.Check<&ErrorSim::Check2>("Check2", "U0"),
    f.Check<&ErrorSim::Check3>("Check3", "U1"),
    f.Check<&ErrorSim::Check4>("Check4", "U2"),
    f.Check<&ErrorSim::Check5>("Check5", "U3"),
};

}  // namespace

uint8_t VidErrMask(const ErrorSim& sim) {
  uint32_t mask = 0;
  for (uint32_t i = 0; i < sim.CH0.size(); ++i) mask |= (sim.CH0[i] ? 1U : 0U) << i;
  return static_cast<uint8_t>(mask);
}

uint8_t VidErr(const ErrorSim& sim, Random& random, uint8_t byte) {
  constexpr std::array kFaults{BitFault::Zero, BitFault::One, BitFault::Random};
  for (size_t i = 0; i < kFaults.size(); ++i)
    if (sim.Option1[i]) return FaultyByte(byte, VidErrMask(sim), kFaults[i], random);
  return byte;
}

constexpr Form kErrorSim{"ErrorSim", "Error simulation", On<&Machine::errorsim>::State, kControls};

}  // namespace quoll
