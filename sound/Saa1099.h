// SAA1099 of the sound card: six tones in stereo, two noises and two envelopes, rendered a frame at a time in
// bytes. What is written is heard from the next frame on.
#pragma once

#include <array>
#include <cstdint>

#include "core/Random.h"
#include "sound/Padded.h"
#include "sound/Tone.h"

namespace quoll {

inline constexpr int kSaaChannels = 6;

struct Saa1099 {
  struct Pitch {
    uint8_t frequency = 0;  // the higher, the higher
    uint8_t octave = 0;     // 0 to 7

    bool operator==(const Pitch&) const = default;
  };
  struct Enable {
    uint8_t tone = 0;   // 0 or 1
    uint8_t noise = 0;  // 0 or 1

    bool operator==(const Enable&) const = default;
  };
  struct Envelope {
    uint8_t enable = 0;         // 0 or 1
    uint8_t invertRight = 0;    // 1 = the right side takes the envelope upside down
    uint8_t externalClock = 0;  // stored and shown; not heard
    uint8_t mode = 0;           // shape, 0 to 7
    uint8_t threeBit = 0;       // 1 = fewer steps, so twice as fast

    bool operator==(const Envelope&) const = default;
  };
  struct ToneState {
    std::array<double, kSaaChannels>
        phase{};  // position in the half wave; 1 and more turns at the next sample
    std::array<double, kSaaChannels> level{};  // 0 or 255

    bool operator==(const ToneState&) const = default;
  };
  struct EnvelopeState {
    std::array<float, 2> phase{};
    std::array<float, 2> level{};  // 0 or 255, flips at each turn; no shape takes it

    bool operator==(const EnvelopeState&) const = default;
  };
  using Column = Padded<uint8_t>;
  using Channels = std::array<Column, kSaaChannels>;

  uint8_t latch = 0;                                // register of the next data write, 0 to 31
  std::array<uint8_t, 2 * kSaaChannels> SAA_Amp{};  // left levels, then right ones, 0 to 15
  std::array<Pitch, kSaaChannels> SAA_Freq{};
  std::array<Enable, kSaaChannels> SAA_Enable{};
  std::array<uint8_t, 2> SAA_Noise{};  // clock settings, 0 to 3
  std::array<Envelope, 2> SAA_Env{};
  uint8_t soundEnable = 0;   // bit 0 of register 28
  uint8_t resetRequest = 0;  // 1 = reset at the next sounding frame; bit 1 of register 28

  uint8_t silent = 1;     // all twelve levels are 0
  bool wasReset = false;  // the last frame carried a reset out: silent as it is, it is drawn
  ToneState SAA_Tone;
  EnvelopeState SAA_EnvState;  // of the repeating shapes; the others begin anew in every frame

  // Stages of the last frame that had a level.
  Channels SaaWave{};              // the tones' square waves
  Channels SaaLeft{}, SaaRight{};  // with levels, noise and envelopes
  Column SaaNoise0{}, SaaNoise1{};
  Column SaaEnv0{}, SaaEnv1{};

  FrameSamples SaaOutL{}, SaaOutR{};  // the frame's sums, 0 to 120

  bool operator==(const Saa1099&) const = default;
};

// What the chip's window tells the chip.
struct SaaControls {
  bool manual = false;  // the window plays: the machine's writes are ignored
  bool patch2 = false;  // forces the tone of channel 2 on
  bool patch5 = false;  // forces the tone of channel 5 on
};

// Positions of the window's controls in manual mode.
struct SaaManual {
  struct Channel {
    bool tone = false, noise = false;
    int32_t left = 0, right = 0;  // levels, 0 to 15
    int32_t frequency = 0;        // 0 to 255
    int32_t octave = 0;           // 0 to 7
  };
  struct Envelope {
    bool enable = false, invertRight = false, externalClock = false, threeBit = false;
    int32_t mode = 0;  // 0 to 7
  };
  std::array<Channel, kSaaChannels> channel{};
  std::array<Envelope, 2> envelope{};
  bool soundEnable = false;
  bool reset = false;
};

// Clears pitches, enables, envelopes, levels and latch. What sounds goes on in its phase, and the sound
// enable and the noise clocks stay.
void SaaReset(Saa1099& saa);

// A write by the machine, at any of the chip's ports: an odd one sets the address, an even one writes data.
void SaaWrite(Saa1099& saa, const SaaControls& controls, uint8_t port, uint8_t value);

// A write that reaches the chip: the machine's, or the window's in manual mode.
void SaaRegisterWrite(Saa1099& saa, uint8_t port, uint8_t value);

// Writes all that the controls say, as the window does at its timer. The noise clocks stay.
void SaaManualWrite(Saa1099& saa, const SaaManual& manual);

// Renders the frame's 441 samples into SaaOutL and SaaOutR. Each flip of a noise draws one random number, all
// of noise 0 before those of noise 1.
void SaaRender(Saa1099& saa, const SaaControls& controls, Random& random);

// Hz of a channel's tone, 31 to 7812.
int32_t SaaHertz(const Saa1099& saa, int channel);

// Picture of an envelope's mode, 0 to 7.
const char* SaaEnvelopePicture(int mode);

// Height of a channel's byte in the window's scope.
int32_t SaaScopeY(uint8_t sample);

}  // namespace quoll
