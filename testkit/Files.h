// Files for tests: bytes in and out, folders that go away with the test.
#pragma once

#include <stdlib.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace quoll::test {

using Bytes = std::vector<uint8_t>;

inline Bytes ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), {});
}

inline void WriteBytes(const std::filesystem::path& path, std::span<const uint8_t> bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}
// So that braces can stand for the bytes.
inline void WriteAll(const std::filesystem::path& path, const Bytes& bytes) { WriteBytes(path, bytes); }

// Bytes that differ from their neighbours and from each other's blocks.
inline Bytes Pattern(size_t size, uint32_t seed = 1) {
  Bytes bytes(size);
  uint32_t state = seed;
  for (uint8_t& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<uint8_t>(state >> 24);
  }
  return bytes;
}

// Names in a folder, sorted; what a save left lying about shows here.
inline std::vector<std::string> NamesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

// An empty folder that goes away with its owner.
struct TempFolder {
  std::filesystem::path path;

  explicit TempFolder(const std::filesystem::path& where = std::filesystem::temp_directory_path()) {
    std::string name = (where / "quolltest-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path = name;
    std::filesystem::permissions(path, std::filesystem::perms::all);
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path, std::filesystem::perms::all, ignored);
    std::filesystem::remove_all(path, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string Path(const std::string& name) const { return (path / name).string(); }
  void Write(const std::string& name, const Bytes& bytes) const { WriteAll(path / name, bytes); }
};

// Makes a folder the working directory while it lives.
struct WorkingIn {
  std::filesystem::path before = std::filesystem::current_path();

  explicit WorkingIn(const std::filesystem::path& folder) { std::filesystem::current_path(folder); }
  ~WorkingIn() {
    std::error_code ignored;
    std::filesystem::current_path(before, ignored);
  }
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
