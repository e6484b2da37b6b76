#include "media/Cartridge.h"

#include <filesystem>

#include "core/Files.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"

namespace quoll {

void LoadCRT(Machine& m, const std::string& file) {
  const std::filesystem::path path(file);
  std::error_code error;
  m.CartName = path.filename().string();
  // With a folder of its own it is found again wherever the program works then.
  const bool there = path.has_parent_path() && std::filesystem::exists(path, error);
  m.cartFolder = there ? std::filesystem::absolute(path, error).parent_path().string() : std::string();
  RebuildMachine(m);
}

void UnloadCRT(Machine& m) {
  m.CartName.clear();
  m.cartFolder.clear();
  RebuildMachine(m);
}

std::string UnloadCaption(const Machine& m) {
  return m.CartName.empty() ? "Unload" : "Unload: " + m.CartName;
}

bool SaveMex4mb(Machine& m) {
  if (m.MexPages.empty()) {
    TellFileError(*m.host, std::string(kMexStoreFile) + ": there is no MEX4MB cartridge");
    return false;
  }
  std::vector<uint8_t> store;
  store.reserve(m.MexPages.size() * sizeof(MexPage));
  for (const MexPage& page : m.MexPages) store.insert(store.end(), page.begin(), page.end());
  return SaveFileOrTell(*m.host, kMexStoreFile, store);
}

}  // namespace quoll
