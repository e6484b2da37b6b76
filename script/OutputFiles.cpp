#include "script/OutputFiles.h"

#include <png.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <limits>

namespace quoll {

namespace {

constexpr uint32_t kSampleRate = 22050;
constexpr uint16_t kChannels = 2;
constexpr uint16_t kBits = 8;
constexpr size_t kHeaderBytes = 44;

// Header fields one after the other, low byte first.
struct HeaderWriter {
  std::array<uint8_t, kHeaderBytes> bytes{};
  size_t at = 0;

  void Name(const char* name) {
    std::memcpy(&bytes[at], name, 4);
    at += 4;
  }
  void Number(uint32_t value, int size) {
    for (int i = 0; i < size; i++) bytes[at++] = static_cast<uint8_t>(value >> (8 * i));
  }
};

std::array<uint8_t, kHeaderBytes> WaveHeader(uint32_t dataBytes) {
  constexpr uint16_t kPcm = 1;
  constexpr uint16_t kSampleBytes = kChannels * kBits / 8;
  HeaderWriter header;
  header.Name("RIFF");
  header.Number(dataBytes + kHeaderBytes - 8, 4);
  header.Name("WAVE");
  header.Name("fmt ");
  header.Number(16, 4);
  header.Number(kPcm, 2);
  header.Number(kChannels, 2);
  header.Number(kSampleRate, 4);
  header.Number(kSampleRate * kSampleBytes, 4);
  header.Number(kSampleBytes, 2);
  header.Number(kBits, 2);
  header.Name("data");
  header.Number(dataBytes, 4);
  return header.bytes;
}

}  // namespace

bool WritePng(const char* path, uint32_t width, uint32_t height, std::span<const uint8_t> pixels) {
  if (pixels.size() != size_t{width} * height * 3) return false;
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = width;
  image.height = height;
  image.format = PNG_FORMAT_RGB;
  return png_image_write_to_file(&image, path, 0, pixels.data(), 0, nullptr) != 0;
}

bool WriteWave(const char* path, std::span<const uint8_t> samples) {
  if (samples.size() > std::numeric_limits<uint32_t>::max() - kHeaderBytes) return false;
  std::FILE* file = std::fopen(path, "wb");
  if (file == nullptr) return false;
  const auto header = WaveHeader(static_cast<uint32_t>(samples.size()));
  const bool written = std::fwrite(header.data(), 1, header.size(), file) == header.size() &&
                       std::fwrite(samples.data(), 1, samples.size(), file) == samples.size();
  return (std::fclose(file) == 0) && written;
}

}  // namespace quoll
