// The machine's own sound: a 12-bit tone divider with a 4-bit amplitude, which programs also use as a
// 4-bit sample output. The same divider drives the tone interrupt.
#pragma once

#include <array>
#include <cstdint>

#include "core/PortBytes.h"

namespace quoll {

inline constexpr int kFrameSamples = 441;  // 22050 samples a second / 50 frames
using FrameSamples = std::array<int16_t, kFrameSamples>;

struct Tone {
  // Amplitude written in each sample's time: 16 to 31, or 0 for none.
  std::array<uint8_t, kFrameSamples> DacSlots{};

  float phase = 0.0F;     // position in the half wave, 0 to below 1
  int32_t toggle = 0;     // which half of the square wave
  int32_t lastLevel = 0;  // last value that a slot gave

  FrameSamples ToneOut{};

  bool operator==(const Tone&) const = default;
};

// A write to port 6: frameClock in T-states since the frame began; 142 of them make a sample.
void ToneWriteSlot(Tone& tone, int32_t value, int32_t frameClock);

// A write by something else that is heard, the tape for one: amplitude 0 to 15 in the time's slot.
void ToneStoreSlot(Tone& tone, int32_t amplitude, int32_t frameClock);

// What ports 4 to 6 say: the divider's pitch, 0 to 4095; the amplitude in a byte of port 6, 0 to 15; whether
// the tone is switched on; whether it may interrupt.
int32_t TonePitch(const PortBytes& ports);
int32_t ToneAmplitude(int32_t port6);
bool ToneIsEnabled(const PortBytes& ports);
bool ToneInterrupts(const PortBytes& ports);

// The tone is switched on and its pitch is one that it can make; otherwise the slots are heard.
bool ToneIsOn(const PortBytes& ports);

// T-states of a full tone period, from the pitch in ports 4 and 5: 16 to 65536.
int32_t TonePeriod(const PortBytes& ports);

// Renders the frame's 441 samples into ToneOut and empties the slots.
void ToneFrame(Tone& tone, const PortBytes& ports);

}  // namespace quoll
