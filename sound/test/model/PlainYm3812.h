// The YM3812 told step by step, without any care for speed: what the chip's renderer is compared with.
#pragma once

#include <array>
#include <cstdint>

#include "sound/Tone.h"

namespace quoll {

struct PlainYm3812 {
  std::array<uint8_t, 256> OPL_Reg{};
  uint8_t latch = 0;
  uint8_t silent = 0;
  std::array<float, 9> modulatorPhase{};
  std::array<float, 9> carrierPhase{};
  std::array<std::array<float, 9>, kFrameSamples> modulator{};  // of the last sounding frame
  std::array<std::array<float, 9>, kFrameSamples> carrier{};
  std::array<bool, 9> enabled{true, true, true, true, true,
                              true, true, true, true};  // the window's nine boxes
  FrameSamples Ym3812Out{};

  // Registers to 0. The phases stay.
  void Reset();

  // An even port sets the latch, an odd one writes the latched register.
  void Write(int port, int value);

  const FrameSamples& Render();
};

}  // namespace quoll
