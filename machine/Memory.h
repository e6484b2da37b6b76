// The machine's memory: one flat image seen through four 16 KB pages that ports 2, 3, 0x0F, 0x18 and
// 0xA0 select.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quoll {

struct Machine;

// Offsets of the regions in MemImage.
inline constexpr int32_t kVid0 = 0x10000;
inline constexpr int32_t kCart = 0x14000;
inline constexpr int32_t kSysLow = 0x18000;
inline constexpr int32_t kSysHigh = 0x1A000;
inline constexpr int32_t kExtHigh = 0x1E000;
inline constexpr int32_t kIom2 = 0x30000;
inline constexpr int32_t kIom3 = 0x32000;
inline constexpr int32_t kHbf = 0x38000;

inline constexpr int32_t kMemImageSize = 0x3C001;  // indices 0 to 0x3C000
inline constexpr int32_t kTopAddress = 0x2BFFF;    // above it and below 0 reads give 0, writes do nothing
inline constexpr int32_t kWarmStartMark = 0x0B22;  // byte of U0 by which the system ROM knows a warm start

using MexPage = std::array<uint8_t, 0x4000>;
inline constexpr int kMexPageCount = 256;
inline constexpr const char* kMexCartridge = "mex4mb.crt";

// Reads the byte that the processor sees at the address; 0 to 255. Not free of side effects: while
// VideoReadNoise is set, reads of page 2 video RAM damage bank 0.
uint8_t MemRead(Machine& m, int32_t address);

// The same value without any side effect, for whoever only looks.
uint8_t MemPeek(Machine& m, int32_t address);

// Stores a byte as the processor does. ROM and gaps ignore it. A store into the window of I/O cards 1 to
// 3 ends the program.
void MemWrite(Machine& m, int32_t address, uint8_t value);

// The paging turned into pointers, one for each 4 KB of address, so that the processor reads memory by
// one table look-up. Valid while the run loop runs: it renews the map when it starts and after each
// pump, the ports renew it when paging changes. A copy is empty: it would point into the other machine.
struct PageMap {
  static constexpr int kBelow = 1;  // granules below address 0
  static constexpr int kGranules =
      0x34;  // granules from address 0 on; PC can run past kTopAddress for a while
  static constexpr int kWritable = 0x11;  // writes reach -0x80 to 0x1007F only

  // Host address of the granule less its machine address, so that adding a machine address gives the byte.
  std::array<uintptr_t, kBelow + kGranules> read{};
  std::array<uintptr_t, kBelow + kWritable> write{};  // 0: only MemWrite can do it
  std::array<uint8_t, 0x1000> sink{};                 // takes what is written to ROM and gaps; never read

  PageMap() = default;
  PageMap(const PageMap&) {}
  PageMap& operator=(const PageMap&) { return *this = PageMap(); }
  PageMap& operator=(PageMap&&) = default;
};

// Fills the map from the paging ports.
void RenewPages(Machine& m);

}  // namespace quoll
