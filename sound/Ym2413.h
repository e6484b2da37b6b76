// The YM2413 of the sound card, in its most reduced form: nine channels, each a sine that is rounded to -1, 0
// or 1 before it is scaled. Instruments have names, but no sound of their own.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "sound/Tone.h"

namespace quoll {

inline constexpr int kOpllChannels = 9;

struct OpllChannel {
  float frequency = 0.0F;  // hertz
  float key = 0.0F;        // 1 = on, 0 = off
  float volume = 0.0F;     // 0 to 15, 15 the loudest

  bool operator==(const OpllChannel&) const = default;
};

struct Ym2413 {
  std::array<uint8_t, 64> OPLL_Reg{};
  uint8_t latch = 0;  // register that a data write goes to, 0 to 63

  uint8_t silent = 1;                                  // the last frame was the silent one
  std::array<OpllChannel, kOpllChannels> OPLL_Chan{};  // as decoded at the last frame's start
  std::array<float, kOpllChannels> phase{};            // turns, 0 to below 1

  std::array<FrameSamples, kOpllChannels> work{};  // each channel's last frame that was not silent, -15 to 15
  FrameSamples Ym2413Out{};                        // -135 to 135

  bool operator==(const Ym2413&) const = default;
};

// The window's controls that reach the chip.
struct OpllControls {
  std::array<bool, kOpllChannels> Check7{true, true, true, true, true,
                                         true, true, true, true};  // channel sounds

  bool operator==(const OpllControls&) const = default;
};

// Names for the high four bits of registers 0x30 to 0x38.
inline constexpr std::array<std::string_view, 16> kOpllInstruments{
    "original", "violin", "guitar", "piano", "flute", "clarinet",  "oboe",     "trumpet",
    "organ",    "horn",   "shynt",  "harp",  "vibra", "synt bass", "acu bass", "elec guitar"};

// A write to ports 0x3C and 0x3D: an even port sets the latch, an odd one writes the latched register.
void OpllWrite(Ym2413& chip, uint8_t port, uint8_t value);

// All registers 0. Phases and latch stay.
void OpllReset(Ym2413& chip);

// What the registers say, as it is taken at each frame's start.
std::array<OpllChannel, kOpllChannels> OpllDecode(const Ym2413& chip);

// One frame into Ym2413Out.
void OpllRender(Ym2413& chip, const OpllControls& controls);

// The sine of a phase in [0, 1), rounded: -1, 0 or 1.
int OpllRoundedSine(float phase);

}  // namespace quoll
