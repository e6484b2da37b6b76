// How a YM3812 frame is made once the registers are decoded.
#pragma once

#include <array>

#include "sound/Ym3812.h"

namespace quoll {

// A carrier and the level of what turns it.
struct OplVoice {
  double modulatorLevel = 0.0;  // 1 / (level + 1) of the modulator
  double level = 0.0;           // the same of the carrier
  int wave = 0;                 // the carrier's
};

OplVoice OplVoiceOf(const OplChannel& channel);

// One carrier sample told plainly, from the modulator's value and the carrier's phase. Every sample of the
// chip is as if it came from here.
float OplCarrierSample(const OplVoice& voice, float modulator, float phase);

// A modulator has no sine: its value is the phase in the shape of its wave.
float OplModulatorValue(float phase, int wave);

// A whole frame: advances the phases of the channels that are keyed on, and adds up those that are heard.
void OplFrame(const std::array<OplChannel, kOplChannels>& channels,
              const std::array<bool, kOplChannels>& heard, bool addModulators, OplPhases& phases,
              FrameSamples& out);

}  // namespace quoll
