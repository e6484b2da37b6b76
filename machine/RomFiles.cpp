#include "machine/RomFiles.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "machine/Machine.h"

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

std::span<uint8_t> Region(Machine& m, int32_t offset, size_t size) {
  return std::span(m.MemImage).subspan(static_cast<size_t>(offset), size);
}

void SelectSoundRomPage(Machine& m, int32_t page) {
  std::array<uint8_t, kSoundRomSize> rom{};
  if (!ReadRomFile(m.programFolder, kSoundRom, rom)) return;
  const size_t first = static_cast<size_t>(page & 3) * kRomSize;
  std::ranges::copy(std::span(rom).subspan(first, kRomSize), Region(m, kIom2, kRomSize).begin());
}

}  // namespace quoll
