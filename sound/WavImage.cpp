#include "sound/WavImage.h"

#include <algorithm>
#include <cmath>

#include "core/WaveHeader.h"

namespace quoll {

std::vector<uint8_t> BuildWavImage(int32_t channels, int32_t rate, double seconds) {
  constexpr uint8_t kSilence = 128;
  constexpr uint16_t kBits = 8;
  const double samples = std::max(0.0, std::nearbyint(static_cast<double>(rate) * seconds * channels));
  const double bytesPerSecond = std::nearbyint(static_cast<double>(kBits) * channels * rate / 8);
  WaveFormat format{};
  format.channels = static_cast<uint16_t>(channels);
  format.rate = static_cast<uint32_t>(rate);
  format.bytesPerSecond = static_cast<uint32_t>(std::max(0.0, bytesPerSecond));
  format.blockAlign = 2;  // whatever the channels are: the image has always said so
  format.bits = kBits;
  const auto count = static_cast<uint32_t>(samples);
  const auto header = WaveHeader(format, count);
  std::vector<uint8_t> image(header.size() + count, kSilence);
  std::ranges::copy(header, image.begin());
  return image;
}

}  // namespace quoll
