#include "forms/ErrorSim.h"

#include "machine/Machine.h"

namespace quoll {

namespace {

enum Choice { kBitZero, kBitOne, kBitRandom };

// Puts a random state into the given bit: a number rounded to 0 sets it, one rounded to 1 clears it.
void bitr(Random& random, uint8_t& byte, uint8_t bit) {
  const bool roundsToZero = RandomNext(random) <= 0.5;
  byte = static_cast<uint8_t>(roundsToZero ? byte | bit : byte & ~bit);
}

// Option buttons: the one just chosen puts the others out.
void OptionChosen(Machine& m, int index) {
  auto& options = m.errorsim.Option1;
  if (index < 0 || index >= static_cast<int>(options.size()) || !options[index]) return;
  options.fill(false);
  options[index] = true;
}

constexpr std::array<Control, 7> kControls{{
    {"Check1", ControlKind::Check, [](Machine& m) -> ControlField { return &m.errorsim.Check1; }, nullptr},
    {"CH0", ControlKind::Check, [](Machine& m) -> ControlField { return std::span<bool>(m.errorsim.CH0); },
     nullptr},
    {"Option1", ControlKind::Option,
     [](Machine& m) -> ControlField { return std::span<bool>(m.errorsim.Option1); }, OptionChosen},
    {"Check2", ControlKind::Check, [](Machine& m) -> ControlField { return &m.errorsim.Check2; }, nullptr},
    {"Check3", ControlKind::Check, [](Machine& m) -> ControlField { return &m.errorsim.Check3; }, nullptr},
    {"Check4", ControlKind::Check, [](Machine& m) -> ControlField { return &m.errorsim.Check4; }, nullptr},
    {"Check5", ControlKind::Check, [](Machine& m) -> ControlField { return &m.errorsim.Check5; }, nullptr},
}};

}  // namespace

uint8_t VidErrMask(const ErrorSim& sim) {
  uint32_t mask = 0;
  for (uint32_t i = 0; i < sim.CH0.size(); ++i) mask |= (sim.CH0[i] ? 1U : 0U) << i;
  return static_cast<uint8_t>(mask);
}

uint8_t VidErr(const ErrorSim& sim, Random& random, uint8_t byte) {
  const uint8_t mask = VidErrMask(sim);
  if (sim.Option1[kBitZero]) return static_cast<uint8_t>(byte & ~mask);
  if (sim.Option1[kBitOne]) return byte | mask;
  if (sim.Option1[kBitRandom]) {
    for (uint32_t bit = 1; bit <= 0x80U; bit <<= 1U)
      if ((mask & bit) != 0) bitr(random, byte, static_cast<uint8_t>(bit));
  }
  return byte;
}

std::span<const Control> ErrorSimControls() { return kControls; }

}  // namespace quoll
