// Files for tests: bytes in and out, folders that go away with the test.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace quoll::test {

using Bytes = std::vector<uint8_t>;

Bytes ReadAll(const std::filesystem::path& path);

void WriteBytes(const std::filesystem::path& path, std::span<const uint8_t> bytes);
// So that braces can stand for the bytes.
void WriteAll(const std::filesystem::path& path, const Bytes& bytes);

// Bytes that differ from their neighbours and from each other's blocks.
Bytes Pattern(size_t size, uint32_t seed = 1);

// Names in a folder, sorted; what a save left lying about shows here.
std::vector<std::string> NamesIn(const std::filesystem::path& folder);

// An empty folder that goes away with its owner.
struct TempFolder {
  std::filesystem::path path;

  explicit TempFolder(const std::filesystem::path& where = std::filesystem::temp_directory_path());
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string Path(const std::string& name) const;
  void Write(const std::string& name, const Bytes& bytes) const;
};

// Makes a folder the working directory while it lives.
struct WorkingIn {
  std::filesystem::path before;

  explicit WorkingIn(const std::filesystem::path& folder);
  ~WorkingIn();
  WorkingIn(const WorkingIn&) = delete;
  WorkingIn& operator=(const WorkingIn&) = delete;
};

// Every ROM file that a setting of the menu asks for.
struct RomFile {
  const char* name;
  size_t size;
};
inline constexpr RomFile kRomFiles[] = {
    {"TVC22_D6.rom", 0x2000}, {"TVC22_D4.rom", 0x2000}, {"TVC22_D7.rom", 0x2000},
    {"TVC12_D4.rom", 0x2000}, {"TVC12_D3.rom", 0x2000}, {"TVC12_D7.rom", 0x2000},
    {"io3.rom", 0x2000},      {"hbf.rom", 0x4000},      {"sndmx.rom", 0x8000},
};

}  // namespace quoll::test
