#include "machine/RomFiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace quoll {

bool ReadRomFile(const std::string& folder, std::string_view name, std::span<uint8_t> buffer) {
  std::ranges::fill(buffer, uint8_t{0});
  const std::filesystem::path path = std::filesystem::path(folder) / name;
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return false;  // a pipe would never end
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  file.read(reinterpret_cast<char*>(buffer.data()), static_cast<std::streamsize>(buffer.size()));
  return !file.bad();
}

}  // namespace quoll
