// The YM3812 of the sound card: nine channels of two operators, one sine turning the other's phase. No
// envelope: a channel sounds at constant level while its key is on.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "sound/Tone.h"

namespace quoll {

inline constexpr int kOplChannels = 9;

// One operator's settings, decoded from its five registers.
struct OplOperator {
  uint8_t multiplier = 0;            // 0 to 15, index into OPL_Mult
  uint8_t level = 0;                 // 0 to 63, 0 the loudest
  uint8_t attack = 0, decay = 0;     // 0 to 15; shown, not heard
  uint8_t sustain = 0, release = 0;  // 0 to 15; shown, not heard
  uint8_t wave = 0;                  // 0 to 3; 0 also where register 1 doesn't let waves be selected

  bool operator==(const OplOperator&) const = default;
};

struct OplChannel {
  uint8_t keyOn = 0;       // 0x20 = on, 0 = off
  uint8_t feedback = 0;    // 0 to 7, index into OPL_Feedback
  float frequency = 0.0F;  // hertz, before the multipliers
  OplOperator modulator, carrier;

  bool operator==(const OplChannel&) const = default;
};

// In turns, below 1. A feedback of 5 or more makes a modulator's step a little smaller, so that the phase of
// a very low note may go below 0.
struct OplPhases {
  std::array<float, kOplChannels> modulator{};
  std::array<float, kOplChannels> carrier{};

  bool operator==(const OplPhases&) const = default;
};

// What a frame began with: all that tells its samples again.
struct OplFrameStart {
  OplPhases phases;
  std::array<OplChannel, kOplChannels> channels{};
  std::array<bool, kOplChannels> heard{};  // keyed on, and not shut off by its box

  bool operator==(const OplFrameStart&) const = default;
};

struct Ym3812 {
  std::array<uint8_t, 256> OPL_Reg{};
  uint8_t latch = 0;  // register that a data write goes to

  uint8_t silent = 1;                               // the last frame was the silent one
  std::array<OplChannel, kOplChannels> OPL_Chan{};  // as decoded at the last frame's start
  OplPhases phases;                                 // at the last frame's end

  OplFrameStart sounding;  // start of the last frame that was not silent

  FrameSamples Ym3812Out{};  // -126 to 126

  bool operator==(const Ym3812&) const = default;
};

// The window's controls that reach the chip.
struct OplControls {
  std::array<bool, kOplChannels> Check1{true, true, true, true, true,
                                        true, true, true, true};  // channel sounds

  bool operator==(const OplControls&) const = default;
};

inline constexpr std::array<double, 16> OPL_Mult{0.5, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 10, 11, 11, 12, 12};
inline constexpr std::array<double, 8> OPL_Feedback{0, 1.0 / 16, 1.0 / 8, 1.0 / 4, 1.0 / 2, 1, 2, 4};

// Place of each channel's operators within a group of registers: 0x20, 0x40, 0x60, 0x80 and 0xE0 plus this.
inline constexpr std::array<int, kOplChannels> kOplModulatorOffset{0, 1, 2, 8, 9, 10, 16, 17, 18};
inline constexpr std::array<int, kOplChannels> kOplCarrierOffset{3, 4, 5, 11, 12, 13, 19, 20, 21};

// A write to ports 0x34 and 0x35: an even port sets the latch, an odd one writes the latched register.
void OplWrite(Ym3812& chip, uint8_t port, uint8_t value);

// All registers 0. Phases and latch stay.
void OplReset(Ym3812& chip);

// What the registers say, as it is taken at each frame's start.
std::array<OplChannel, kOplChannels> OplDecode(const Ym3812& chip);

// One frame into Ym3812Out.
void OplRender(Ym3812& chip, const OplControls& controls);

// Both operators' values in the last frame that was not silent. A channel that was not heard in it reads 0.
struct OplTables {
  std::array<std::array<float, kFrameSamples>, kOplChannels> modulator{};  // 0 to 1
  std::array<std::array<float, kFrameSamples>, kOplChannels> carrier{};    // -1 to 1
};

// The work of the frame told plainly, for the scopes, which want it a few times a second: its first samples,
// 0 behind them. All of them cost some 100 us.
OplTables OplTablesOf(const OplFrameStart& frame, int samples = kFrameSamples);

// What a register holds, for its cell of the grid: "level, channel 3 carrier". Empty for one without a use.
std::string OplRegisterName(int index);

}  // namespace quoll
