// AY-3-8910 of the sound card: three square tones, noise and an envelope, each a column of a table that the
// mixer and the levels then work through. What is written is heard from the next frame on.
#pragma once

#include <array>
#include <cstdint>

#include "core/Random.h"
#include "sound/Tone.h"

namespace quoll {

inline constexpr int kAyClock = 111861;  // Hz

// Factor of each level: three quarters of the next higher one's, and 0 for none.
inline constexpr std::array<float, 16> AY_Vol = [] {
  std::array<float, 16> volume{};
  volume[15] = 1.0F;
  for (int level = 14; level >= 1; --level) volume[level] = volume[level + 1] * 0.75F;
  return volume;
}();

// What the registers say at a frame, kept so that a change is noticed at the next.
struct AyState {
  struct Tone {
    int32_t frequency = 0;  // rate of the oscillator in Hz, at most 11000
    int32_t period = 0;     // twice the registers' 12 bits, 0 to 8190
    float level = 0;        // 0 to 16
    int32_t mixer = 0;      // the channel's tone and noise bits in register 7's places, 1 = on

    bool operator==(const Tone&) const = default;
  };
  std::array<Tone, 3> tone{};

  int32_t noiseFrequency = 0;  // Hz, at most 11000
  int32_t noisePeriod = 0;     // twice the register's 5 bits, 0 to 62
  float noiseValue = 0;        // -1 to 1

  int32_t envelopeFrequency = 0;  // Hz, at most 6991
  int32_t envelopePeriod = 0;     // twice the registers' 16 bits, 0 to 131070
  float envelopeValue = 0;        // 0 to 1
  int32_t envelopeShape = 0;      // 0 to 15

  bool operator==(const AyState&) const = default;
};

// Columns of the table and places of the phases: the tones A, B, C, then these.
inline constexpr int kAyNoise = 3;
inline constexpr int kAyEnvelope = 4;

struct Ay38910 {
  std::array<int32_t, 16> AY_Reg{0, 0, 0, 0,
                                 0, 0, 0, 255};  // as written, until the renderer masks 1, 3, 5 and 6
  uint8_t latch = 0;                             // register of the next data write; from 16 on none

  AyState AY_State;
  std::array<float, 5> AY_Phase{};  // 0 to below 1; the envelope's may leave that at its highest rates
  int32_t envelopeModes = 0;        // sum of the channels' envelope bits at the last frame, 0 to 48
  uint8_t silent = 1;               // 1 = the mixer lets nothing through

  // The last sounding frame: the channels as they are summed, the noise and the envelope as generated.
  std::array<std::array<float, 5>, kFrameSamples> AY_Rows{};

  FrameSamples AyOut{};  // the frame's sum, -96 to 96

  bool operator==(const Ay38910&) const = default;
};

// Resets the chip; its state between frames stays.
void AyInit(Ay38910& ay);

// Registers to 0, the mixer shut.
void AyReset(Ay38910& ay);

// A write at the chip's ports: an even one sets the latch, an odd one stores into the latched register.
void AyWrite(Ay38910& ay, uint8_t port, uint8_t value);

// Renders the frame's 441 samples into AyOut. Each turn of the noise draws one random number.
void AyRender(Ay38910& ay, Random& random);

// Hz that tone 0 to 2 is heard at as the registers stand, before any limit; a period of 0 counts as half
// of 1.
double AyToneHertz(const Ay38910& ay, int tone);

// The same for the noise's new values in a second, and for the envelope's whole turns.
double AyNoiseHertz(const Ay38910& ay);
double AyEnvelopeHertz(const Ay38910& ay);

// Height of a table's value in the window's scope, whose middle is 32.
float AyScopeY(int column, float value);

}  // namespace quoll
