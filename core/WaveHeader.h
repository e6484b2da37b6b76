// The header of a wave file with uncompressed samples, in the 44 bytes that it always takes here.
#pragma once

#include <array>
#include <cstdint>

namespace quoll {

inline constexpr uint32_t kWaveHeaderBytes = 44;

struct WaveFormat {
  uint16_t channels;
  uint32_t rate;  // samples a second
  uint32_t bytesPerSecond;
  uint16_t blockAlign;  // bytes of one moment's samples
  uint16_t bits;        // of a sample
};

// What the machine plays: both sides, 8 bits, unsigned.
inline constexpr WaveFormat kMachineSound{2, 22050, 44100, 2, 8};

// The header before so many bytes of samples.
std::array<uint8_t, kWaveHeaderBytes> WaveHeader(const WaveFormat& format, uint32_t sampleBytes);

}  // namespace quoll
