#include "testkit/Files.h"

#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace quoll::test {

namespace fs = std::filesystem;

Bytes ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), {});
}

void WriteBytes(const fs::path& path, std::span<const uint8_t> bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

void WriteAll(const fs::path& path, const Bytes& bytes) { WriteBytes(path, bytes); }

Bytes Pattern(size_t size, uint32_t seed) {
  Bytes bytes(size);
  uint32_t state = seed;
  for (uint8_t& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<uint8_t>(state >> 24);
  }
  return bytes;
}

std::vector<std::string> NamesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

TempFolder::TempFolder(const fs::path& where) {
  std::string name = (where / "quolltest-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path = name;
  fs::permissions(path, fs::perms::all);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  fs::permissions(path, fs::perms::all, ignored);
  fs::remove_all(path, ignored);
}

std::string TempFolder::Path(const std::string& name) const { return (path / name).string(); }

void TempFolder::Write(const std::string& name, const Bytes& bytes) const { WriteAll(path / name, bytes); }

WorkingIn::WorkingIn(const fs::path& folder) : before(fs::current_path()) { fs::current_path(folder); }

WorkingIn::~WorkingIn() {
  std::error_code ignored;
  fs::current_path(before, ignored);
}

}  // namespace quoll::test
