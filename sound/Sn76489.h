// SN76489 of the sound card: three square tones and noise, rendered a frame at a time. What is written is
// heard from the next frame on; the noise comes from a random source, not from a shift register.
#pragma once

#include <array>
#include <cstdint>

#include "core/Random.h"
#include "sound/Tone.h"

namespace quoll {

inline constexpr int kSnClock = 3579545;  // Hz

// Where the white noise's own sequence begins, at every restart.
inline constexpr uint64_t kSnNoiseSeed = 76489;

struct Sn76489 {
  // Three words for each tone: high part of the period (6 bits), its low part (4 bits), attenuation (0 to
  // 15). Word 9 is the noise rate (2 bits); word 11 has the noise attenuation in its low byte and the
  // feedback flag (0 periodic, 4 white) in its second byte. At first all are silent.
  std::array<int32_t, 12> SN_Reg{0, 0, 15, 0, 0, 15, 0, 0, 15, 0, 0, 15};
  uint8_t SN_Latch = 0;  // tone that a data byte goes to, 0 to 2

  uint8_t silent = 1;               // nonzero while all four attenuations are 15
  uint8_t reseedCount = 10;         // sounding frames up to the white noise's restart at 10, 1 to 10
  Random whiteNoise{kSnNoiseSeed};  // the sequence that white noise plays
  std::array<float, 4> phase{};     // position in the half wave, 0 to below 1; the last is the noise's
  std::array<int32_t, 4> toggle{};  // state of each output, 0 or 1
  std::array<std::array<int16_t, 4>, kFrameSamples> voices{};  // the last sounding frame of each channel

  FrameSamples SnOut{};  // the frame's sum, -1200 to 1200

  bool operator==(const Sn76489&) const = default;
};

// What the chip's window tells the chip.
struct SnControls {
  bool manual = false;  // the window plays: the machine's writes are ignored
};

// Positions of the window's sliders in manual mode.
struct SnManual {
  std::array<int32_t, 3> period{};       // of each tone; the period is 1024 less this
  std::array<int32_t, 4> attenuation{};  // of the tones and the noise, 0 to 15
  bool periodicNoise = false;
};

// Starts the chip afresh, silent. Its last frame stays: it is heard on while the card is off.
void SnInit(Sn76489& sn);

// Silences the four channels. Periods, latch and phases stay.
void SnReset(Sn76489& sn);

// A write by the machine, at any of the chip's ports.
void SnWrite(Sn76489& sn, const SnControls& controls, uint8_t value);

// A write that reaches the chip: the machine's, or the window's in manual mode.
void SnRegisterWrite(Sn76489& sn, uint8_t value);

// Writes all that the sliders say, as the window does at its timer. The noise keeps its rate.
void SnManualWrite(Sn76489& sn, const SnManual& manual);

// Renders the frame's 441 samples into SnOut. Periodic noise draws on the machine's random numbers; white
// noise has its own, which begin anew every tenth frame.
void SnRender(Sn76489& sn, Random& random);

// Hz of a tone for a period of 1 to 1023, below 1 as 1; not limited to what the renderer can play.
int32_t SnHertz(int32_t period);

// Period of tone 0 to 2 as the renderer takes it, 1 to 1023.
int32_t SnTonePeriod(const Sn76489& sn, int tone);

// Period of the noise, 1 to 4047. Rate 3 takes the third tone's words, the high one times 64.
int32_t SnNoisePeriod(const Sn76489& sn);

// White noise, not the periodic one.
bool SnNoiseIsWhite(const Sn76489& sn);

// Attenuation of channel 0 to 3, the last being the noise.
int32_t SnAttenuation(const Sn76489& sn, int channel);

// Height of a sample in the window's scope, whose middle is 32.
int32_t SnScopeY(int16_t sample);

}  // namespace quoll
