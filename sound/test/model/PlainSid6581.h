// The SID 6581 told step by step, without any care for speed: what the chip's renderer is compared with.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/Random.h"
#include "sound/Tone.h"

namespace quoll {

struct PlainSidVoice {
  int32_t frequency = 0;
  uint8_t control = 0;
  int32_t attack = 0, decay = 0, sustain = 0, release = 0;
  float attackStep = 0, decayStep = 0, sustainLevel = 0, releaseStep = 0;
  int32_t pulseWidth = 0;
  float envelope = 0;
};

// Last output and last input of a filter.
struct PlainSidMemory {
  float output = 0, input = 0;
};

// The window's boxes and sliders.
struct PlainSidControls {
  bool highPass = false, lowPass = false, butterfly = false;              // Check1, Check2, Check3
  bool wobbler = false, steady = false;                                   // Check4, Check5
  bool adsr = true, filter = true, ring = true;                           // Check6, Check7, Check10
  std::array<bool, 3> voice{true, true, true};                            // Check9
  int32_t highPassSlider = 50, lowPassSlider = 50, butterflySlider = 50;  // HScroll1, HScroll2, HScroll3
  int32_t attackSlider = 440, decaySlider = 440;                          // HScroll4, HScroll5
  int32_t repeats = 1;                                                    // Text1
};

struct PlainSid6581 {
  std::array<int32_t, 29> SID_Reg{};
  std::array<PlainSidVoice, 3> SID_Voice{};
  uint8_t latch = 0;
  int32_t SidCutoff = 0;
  uint8_t SidRoute = 0, SidResonance = 0, SidMode = 0;
  float SidVolume = 0;
  std::array<float, 3> SidPhase{};
  std::array<int32_t, 3> SidEnvState{}, SidGate{}, SidGateOld{};
  std::array<float, 3> SidNoise{};
  std::array<std::array<float, 3>, kFrameSamples> SidVoiceOut{};
  float SidTestFreq = 0;
  std::array<PlainSidMemory, 3> chipLowPass{}, chipHighPass{};
  PlainSidMemory postHighPass, postLowPass, postButterfly;
  uint8_t silent = 0;
  double lowPassShown = 0;  // what HScroll6 is set to
  double mean = 0;          // the measured mean of the last sounding frame
  FrameSamples SidOut{};

  // Registers, phases, gates and envelope states to 0.
  void Reset();

  // An even port sets the latch, an odd one writes the latched register.
  void Write(int port, int value);

  // The older card: ports 0xE0 to 0xF8.
  void WriteDirect(int port, int value);

  // One line of a "*.sidx" file, one record of a "*.dmp" file.
  void TakeSidxLine(const std::string& line);
  void TakeDmpRecord(const std::array<uint8_t, 25>& record);

  const FrameSamples& Render(const PlainSidControls& controls, Random& random);
};

}  // namespace quoll
