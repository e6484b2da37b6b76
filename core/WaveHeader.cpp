#include "core/WaveHeader.h"

#include <string_view>

namespace quoll {

namespace {

struct HeaderWriter {
  std::array<uint8_t, kWaveHeaderBytes> bytes{};
  size_t next = 0;

  void Name(std::string_view name) {
    for (const char c : name) bytes[next++] = static_cast<uint8_t>(c);
  }
  void Number(uint32_t value, int count) {
    for (int i = 0; i < count; ++i) bytes[next++] = static_cast<uint8_t>(value >> (8 * i));
  }
};

}  // namespace

std::array<uint8_t, kWaveHeaderBytes> WaveHeader(const WaveFormat& format, uint32_t sampleBytes) {
  constexpr uint32_t kAfterSize = 36;  // bytes of the header after its size field
  constexpr uint32_t kFormatBytes = 16;
  constexpr uint32_t kPcm = 1;
  HeaderWriter header;
  header.Name("RIFF");
  header.Number(sampleBytes + kAfterSize, 4);
  header.Name("WAVE");
  header.Name("fmt ");
  header.Number(kFormatBytes, 4);
  header.Number(kPcm, 2);
  header.Number(format.channels, 2);
  header.Number(format.rate, 4);
  header.Number(format.bytesPerSecond, 4);
  header.Number(format.blockAlign, 2);
  header.Number(format.bits, 2);
  header.Name("data");
  header.Number(sampleBytes, 4);
  return header.bytes;
}

}  // namespace quoll
