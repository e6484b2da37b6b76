#include "script/OutputFiles.h"

#include <png.h>

#include <limits>
#include <vector>

#include "core/Files.h"
#include "core/WaveHeader.h"

namespace quoll {

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
  if (samples.size() > std::numeric_limits<uint32_t>::max() - kWaveHeaderBytes) return false;
  const auto header = WaveHeader(kMachineSound, static_cast<uint32_t>(samples.size()));
  std::vector<uint8_t> file(header.begin(), header.end());
  file.insert(file.end(), samples.begin(), samples.end());
  return SaveFile(path, file).empty();
}

}  // namespace quoll
