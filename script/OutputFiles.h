// The files in which a script keeps what the user would see and hear.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quoll {

// Writes rows from the top, three bytes red, green, blue a pixel, as a PNG picture. The span holds
// width x height x 3 bytes. False when the file can't be written.
bool WritePng(const char* path, uint32_t width, uint32_t height, std::span<const uint8_t> pixels);

// Writes 8-bit unsigned stereo samples of 22050 Hz as a wave file. False when the file can't be written or
// the samples are more than such a file can hold.
bool WriteWave(const char* path, std::span<const uint8_t> samples);

}  // namespace quoll
