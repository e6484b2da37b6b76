// Cartridge files: the first byte chooses between a plain cartridge and the MEX4MB store, and the length to
// which the rest is repeated, if at all. That is the file, which lies in a folder in memory beside system
// ROMs of zeros. The machine then runs for a frame with the cartridge's first page at 0xC000, and the
// cartridge is taken out.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>

#include "fuzz/Fuzz.h"
#include "fuzz/FuzzMachine.h"
#include "fuzz/Tiled.h"
#include "media/Cartridge.h"
#include "testkit/Files.h"

namespace quoll {

namespace {

namespace fs = std::filesystem;

// The program folder, in memory; it goes when the fuzzer ends.
struct Folder : test::TempFolder {
  Folder() : TempFolder("/dev/shm") {
    for (const char* rom : {"TVC22_D6.rom", "TVC22_D4.rom", "TVC22_D7.rom"})
      Write(rom, std::vector<uint8_t>(0x2000));
  }
};

// The page of the cartridge holds the file's bytes from its place on, and zeros behind them.
void CheckPage(std::span<const uint8_t> page, std::span<const uint8_t> file) {
  const size_t there = std::min(page.size(), file.size());
  if (!std::equal(page.begin(), page.begin() + static_cast<ptrdiff_t>(there), file.begin())) std::abort();
  static constexpr MexPage kZeros{};
  if (std::memcmp(page.data() + there, kZeros.data(), page.size() - there) != 0) std::abort();
}

void CheckLoaded(const Machine& m, bool store, std::span<const uint8_t> file) {
  const auto window = std::span(m.MemImage).subspan(kCart, sizeof(MexPage));
  CheckPage(window, store ? std::span<const uint8_t>() : file);
  if (m.MexPages.size() != (store ? size_t{kMexPageCount} : 0)) std::abort();
  for (size_t page = 0; page < m.MexPages.size(); ++page) {
    CheckPage(m.MexPages[page], file.subspan(std::min(file.size(), page * sizeof(MexPage))));
  }
}

// The store goes to the working directory, which is the fuzzer's own otherwise: its corpus may lie there.
void CheckSave(Machine& m, const fs::path& folder) {
  const fs::path before = fs::current_path();
  fs::current_path(folder);
  const bool saved = SaveMex4mb(m);
  fs::current_path(before);
  if (!saved || fs::file_size(folder / "mex4mb.bin") != kMexPageCount * sizeof(MexPage)) std::abort();
}

}  // namespace

void Fuzz(std::span<const uint8_t> input) {
  static FuzzHost host;
  static const Folder folder;
  const uint8_t kind = input.empty() ? 0 : input[0];
  const bool store = (kind & 1) != 0;
  if (!input.empty()) input = input.subspan(1);
  // Up to a little more than the window holds; a store reaches over several pages.
  const std::vector<uint8_t> tiled = Tiled(input, size_t{kind} * (store ? 1000 : 70));
  if ((kind & 2) != 0) input = tiled;
  const fs::path file = folder.path / (store ? kMexCartridge : "game.crt");
  test::WriteBytes(file, input);
  host.framesLeft = 1;
  const auto m = FuzzMachine(host);
  m->programFolder = folder.path.string();
  LoadCRT(*m, file.string());
  CheckLoaded(*m, store, input);
  m->z80.PC = 0xC000;
  m->z80.UnDocEnabled = 1;
  RunFuzzed(*m);
  if (store) CheckSave(*m, folder.path);
  UnloadCRT(*m);
  CheckLoaded(*m, false, {});
}

}  // namespace quoll
