#include "sound/Tone.h"

#include <algorithm>
#include <cmath>

namespace quoll {
namespace {

constexpr int32_t kSampleTStates = 142;         // 3125000 / 22050, a whole number of T-states a sample
constexpr int kSlotWritten = 16;                // added to an amplitude, so that 0 differs from no write
constexpr int kToneEnable = 0x10;               // in port 5
constexpr int kToneInterrupt = 0x20;            // the same
constexpr int kPitchValues = 4096;              // the divider counts from the pitch up to here
constexpr int kHighestPitch = 4080;             // above it the tone is as good as off
constexpr double kDividerHertz = 195312.5;      // 3125000 / 16
constexpr double kHighestHertz = 11000.0;       // just below half the sample rate
constexpr double kHalfWavesPerHertz = 11025.0;  // f / 11025 is the part of a half wave in one sample

void RenderTone(Tone& tone, int pitch, int amplitude) {
  // nearbyint goes to the even neighbour at a tie: a divider of 25 gives 7812 Hz.
  const double hertz = std::min(std::nearbyint(kDividerHertz / (kPitchValues - pitch)), kHighestHertz);
  const double step = hertz / kHalfWavesPerHertz;
  const auto level = static_cast<int16_t>(7 * amplitude);
  const auto opposite = static_cast<int16_t>(-level);
  for (int16_t& out : tone.ToneOut) {
    // The step is added in double and the phase kept as a float: its rounding is part of the sound.
    tone.phase = static_cast<float>(tone.phase + step);
    if (tone.phase >= 1.0F) {
      tone.phase -= 1.0F;
      tone.toggle = tone.toggle == 1 ? 0 : 1;
    }
    out = tone.toggle == 1 ? level : opposite;
  }
}

void RenderSlots(Tone& tone) {
  for (int i = 0; i < kFrameSamples; ++i) {
    const int slot = tone.DacSlots[i];
    if (slot >= kSlotWritten) tone.lastLevel = 5 * (slot - kSlotWritten);
    tone.ToneOut[i] = static_cast<int16_t>(tone.lastLevel);
  }
}

}  // namespace

int32_t TonePitch(const PortBytes& ports) { return (ports[5] & 15) * 256 + ports[4]; }
int32_t ToneAmplitude(int32_t port6) { return (port6 >> 2) & 15; }
bool ToneIsEnabled(const PortBytes& ports) { return (ports[5] & kToneEnable) != 0; }
bool ToneInterrupts(const PortBytes& ports) { return (ports[5] & kToneInterrupt) != 0; }

void ToneWriteSlot(Tone& tone, int32_t value, int32_t frameClock) {
  ToneStoreSlot(tone, ToneAmplitude(value), frameClock);
}

void ToneStoreSlot(Tone& tone, int32_t amplitude, int32_t frameClock) {
  const int32_t slot = std::clamp(frameClock / kSampleTStates, 0, kFrameSamples - 1);
  tone.DacSlots[slot] = static_cast<uint8_t>(amplitude + kSlotWritten);
}

bool ToneIsOn(const PortBytes& ports) { return ToneIsEnabled(ports) && TonePitch(ports) <= kHighestPitch; }

int32_t TonePeriod(const PortBytes& ports) { return (kPitchValues - TonePitch(ports)) * 16; }

void ToneFrame(Tone& tone, const PortBytes& ports) {
  if (ToneIsOn(ports)) {
    RenderTone(tone, TonePitch(ports), ToneAmplitude(ports[6]));
  } else {
    RenderSlots(tone);
  }
  tone.DacSlots.fill(0);
}

}  // namespace quoll
