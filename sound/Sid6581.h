// The SID 6581 of the sound card: three voices with waveform and envelope, a filter for each steered by the
// chip's registers, and behind the sum filters that only the window's sliders steer.
#pragma once

#include <array>
#include <cstdint>

#include "core/Random.h"
#include "sound/Tone.h"

namespace quoll {

inline constexpr int kSidRegisters = 29;
inline constexpr int kSidVoices = 3;

// One voice, decoded from its seven registers at each frame's start.
struct SidVoice {
  int32_t frequency = 0;                                    // hertz, 0 to 7568; the sweep's up to 11000
  uint8_t control = 0;                                      // the voice's control register
  int32_t attack = 0, decay = 0, sustain = 0, release = 0;  // 0 to 15
  // Change of the envelope in a sample, and the level it falls to. Renewed when the gate rises, only.
  float attackStep = 0.0F, decayStep = 0.0F;
  float sustainLevel = 0.0F;  // 0 to 1
  float releaseStep = 0.0F;
  int32_t pulseWidth = 0;  // 0 to 4095; the high state's share is this / 4096
  float envelope = 0.0F;   // 0 to 1

  bool operator==(const SidVoice&) const = default;
};

// Last output and last input of a filter.
struct SidMemory {
  float output = 0.0F;
  float input = 0.0F;

  bool operator==(const SidMemory&) const = default;
};

enum SidEnvelope : int32_t { SidAttack = 0, SidDecay = 1, SidSustain = 2, SidRelease = 3 };

// A voice's control register.
enum SidControlBits : uint8_t {
  SidGateBit = 0x01,
  SidSyncBit = 0x02,
  SidRingBit = 0x04,
  SidTriangle = 0x10,
  SidSaw = 0x20,
  SidPulse = 0x40,
  SidNoiseBit = 0x80,
};

// The highest of a control register's four waveform bits, the others are not mixed in; 0 for none.
constexpr uint8_t SidWaveOf(int control) {
  for (const uint8_t wave : {SidNoiseBit, SidPulse, SidSaw, SidTriangle}) {
    if ((control & wave) != 0) return wave;
  }
  return 0;
}

struct Sid6581 {
  std::array<int32_t, kSidRegisters> SID_Reg{};  // bytes; 7 a voice, then 21 to 24
  uint8_t latch = 0;                             // register that a data write goes to; above 28 it is dropped

  std::array<SidVoice, kSidVoices> SID_Voice{};
  int32_t SidCutoff = 0;     // 0 to 2047
  uint8_t SidRoute = 0;      // bits 0 to 2: voices that are filtered
  uint8_t SidResonance = 0;  // 0 to 15; without effect
  uint8_t SidMode = 0;       // bit 0: low pass, bit 2: high pass
  float SidVolume = 0.0F;    // 0 to 15
  uint8_t silent = 1;        // the volume is 0

  std::array<float, kSidVoices> SidPhase{};  // -2 to below 2; -1 to 1 but for pulses
  std::array<int32_t, kSidVoices> SidEnvState{};
  std::array<int32_t, kSidVoices> SidGate{}, SidGateOld{};  // gate bit now and in the frame before
  std::array<float, kSidVoices> SidNoise{};                 // -1 to 0.75
  float SidTestFreq = 0.0F;     // hertz of the test sweep; 0 before its first frame
  bool sweepRestarted = false;  // the sweep began again in this frame
  int32_t cutoffPercent = 0;    // 20 to 100: the low pass's strength, where it last ran

  std::array<SidMemory, kSidVoices> lowPass{}, highPass{};  // of the chip's filter
  SidMemory postHighPass, postLowPass, postButterfly;

  std::array<std::array<float, kFrameSamples>, kSidVoices>
      SidVoiceOut{};  // the last frame that was not silent
  FrameSamples SidOut{};

  bool operator==(const Sid6581&) const = default;
};

// The window's controls that reach the chip.
struct SidControls {
  bool Check1 = false, Check2 = false, Check3 = false;    // post filters: high pass, low pass, butterfly pass
  int32_t HScroll1 = 50, HScroll2 = 50, HScroll3 = 50;    // their strengths, 0 to 100
  int32_t Text1 = 1;                                      // the post filters run once more than this
  bool Check4 = false;                                    // wobbler: the test sweep
  bool Check5 = false;                                    // the sweep stands at 440 Hz
  bool Check6 = true;                                     // ADSR on
  bool Check7 = true;                                     // the chip's filter on
  std::array<bool, kSidVoices> Check9{true, true, true};  // voice sounds
  bool Check10 = true;                                    // ring and sync on
  int32_t HScroll4 = 440;                                 // time scale of attack and release, 1 to 1200
  int32_t HScroll5 = 440;                                 // time scale of decay, 1 to 1200

  bool operator==(const SidControls&) const = default;
};

// Milliseconds of the sixteen attacks; decay and release take three times as long.
inline constexpr std::array<int32_t, 16> kSidAttackMs{2,   8,   16,  24,  38,   56,   68,   80,
                                                      100, 250, 500, 800, 1000, 3000, 5000, 8000};

// A write to ports 0x38 and 0x39: an even port sets the latch, an odd one writes the latched register.
void SidWrite(Sid6581& chip, uint8_t port, uint8_t value);

// The older card's ports 0xE0 to 0xF8, one for each register. Other ports do nothing.
void SidWriteDirect(Sid6581& chip, uint8_t port, uint8_t value);

// Registers, envelope states, gates and phases to 0; the rest stays.
void SidReset(Sid6581& chip);

// Registers into the voices and the filter's settings, as at each frame's start. A gate that has risen since
// the last time starts its envelope.
void SidDecode(Sid6581& chip, const SidControls& controls);

// Hertz of a voice as its registers stand.
int32_t SidHertz(const Sid6581& chip, int voice);

// One frame into SidOut. The noise takes a number from `random` at each of its steps, voice by voice.
void SidRender(Sid6581& chip, const SidControls& controls, Random& random);

// The level that the sweep's picture shows: twice the mean size of the frame's samples.
double SidMean(const Sid6581& chip);

}  // namespace quoll
