// The YM2413 told step by step, without any care for speed: what the chip's renderer is compared with.
#pragma once

#include <array>
#include <cstdint>

#include "sound/Tone.h"

namespace quoll {

struct PlainYm2413 {
  std::array<uint8_t, 64> OPLL_Reg{};
  uint8_t latch = 0;
  uint8_t silent = 0;
  std::array<float, 9> phase{};
  std::array<std::array<int16_t, 9>, kFrameSamples> work{};  // of the last sounding frame
  std::array<bool, 9> enabled{true, true, true, true, true,
                              true, true, true, true};  // the window's nine boxes
  FrameSamples Ym2413Out{};

  // Registers to 0. The phases stay.
  void Reset();

  // An even port sets the latch, an odd one writes the latched register.
  void Write(int port, int value);

  const FrameSamples& Render();
};

}  // namespace quoll
