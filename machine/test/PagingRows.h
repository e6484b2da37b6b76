// The paging as a table of rows, each what one setting of the ports shows in one stretch of addresses.
// Written from the machine's memory map, with image offsets spelled out, and used by the tests only.
#pragma once

#include <cstdint>
#include <vector>

namespace quoll::test {

enum class OnWrite { Stores, Ignored, Ends };

struct PagingRow {
  const char* what;
  int32_t first, last;  // addresses
  int port2, port3, port0F, port18;
  int care2, care3, care0F, care18;  // bits that select this row; the others may be anything
  int model;                         // 0: 64 KB only, 1: 32 KB only, 2: either
  bool readsZero;
  int32_t image;  // MemImage index of the first address
  OnWrite onWrite;
};

inline const std::vector<PagingRow>& PagingRows() {
  using enum OnWrite;
  static const std::vector<PagingRow> rows{
      // 0x0000: port 2 bits 4-3.
      {"page 0 SYS", 0x0000, 0x3FFF, 0x00, 0, 0, 0, 0x18, 0, 0, 0, 2, false, 0x18000, Ignored},
      {"page 0 CART", 0x0000, 0x3FFF, 0x08, 0, 0, 0, 0x18, 0, 0, 0, 2, false, 0x14000, Stores},
      {"page 0 U0", 0x0000, 0x3FFF, 0x10, 0, 0, 0, 0x18, 0, 0, 0, 2, false, 0x00000, Stores},
      {"page 0 U3", 0x0000, 0x3FFF, 0x18, 0, 0, 0, 0x18, 0, 0, 0, 2, false, 0x0C000, Stores},
      // 0x4000: port 2 bit 2, port 0x0F bits 1-0.
      {"page 1 U1", 0x4000, 0x7FFF, 0x00, 0, 0, 0, 0x04, 0, 0, 0, 2, false, 0x04000, Stores},
      {"page 1 VID0", 0x4000, 0x7FFF, 0x04, 0, 0x00, 0, 0x04, 0, 0x03, 0, 2, false, 0x10000, Stores},
      {"page 1 VID1", 0x4000, 0x7FFF, 0x04, 0, 0x01, 0, 0x04, 0, 0x03, 0, 2, false, 0x20000, Stores},
      {"page 1 VID2", 0x4000, 0x7FFF, 0x04, 0, 0x02, 0, 0x04, 0, 0x03, 0, 2, false, 0x24000, Stores},
      {"page 1 VID3", 0x4000, 0x7FFF, 0x04, 0, 0x03, 0, 0x04, 0, 0x03, 0, 2, false, 0x28000, Stores},
      // 0x8000: port 2 bit 5, port 0x0F bits 3-2.
      {"page 2 U2", 0x8000, 0xBFFF, 0x20, 0, 0, 0, 0x20, 0, 0, 0, 0, false, 0x08000, Stores},
      {"page 2 U2 32K", 0x8000, 0xBFFF, 0x20, 0, 0, 0, 0x20, 0, 0, 0, 1, true, 0x08000, Stores},
      {"page 2 VID0", 0x8000, 0xBFFF, 0x00, 0, 0x00, 0, 0x20, 0, 0x0C, 0, 2, false, 0x10000, Stores},
      {"page 2 VID1", 0x8000, 0xBFFF, 0x00, 0, 0x04, 0, 0x20, 0, 0x0C, 0, 2, false, 0x20000, Stores},
      {"page 2 VID2", 0x8000, 0xBFFF, 0x00, 0, 0x08, 0, 0x20, 0, 0x0C, 0, 2, false, 0x24000, Stores},
      {"page 2 VID3", 0x8000, 0xBFFF, 0x00, 0, 0x0C, 0, 0x20, 0, 0x0C, 0, 2, false, 0x28000, Stores},
      // 0xC000: port 2 bits 7-6.
      {"page 3 CART", 0xC000, 0xFFFF, 0x00, 0, 0, 0, 0xC0, 0, 0, 0, 2, false, 0x14000, Stores},
      {"page 3 SYS", 0xC000, 0xFFFF, 0x40, 0, 0, 0, 0xC0, 0, 0, 0, 2, false, 0x18000, Ignored},
      {"page 3 U3", 0xC000, 0xFFFF, 0x80, 0, 0, 0, 0xC0, 0, 0, 0, 0, false, 0x0C000, Stores},
      {"page 3 U3 32K", 0xC000, 0xFFFF, 0x80, 0, 0, 0, 0xC0, 0, 0, 0, 1, true, 0x0C000, Stores},
      {"EXT high", 0xE000, 0xFFFF, 0xC0, 0, 0, 0, 0xC0, 0, 0, 0, 2, false, 0x1E000, Ignored},
      // EXT's slots: port 3 bits 7-6, and port 0x18 bits 5-4 for the floppy ROM in slot 0.
      {"slot 0 RAM", 0xD000, 0xDFFF, 0xC0, 0x00, 0, 0, 0xC0, 0xC0, 0, 0, 2, false, 0x2E000, Stores},
      {"HBF page 0", 0xC000, 0xCFFF, 0xC0, 0x00, 0, 0x00, 0xC0, 0xC0, 0, 0x30, 2, false, 0x38000, Ignored},
      {"HBF page 1", 0xC000, 0xCFFF, 0xC0, 0x00, 0, 0x10, 0xC0, 0xC0, 0, 0x30, 2, false, 0x39000, Ignored},
      {"HBF page 2", 0xC000, 0xCFFF, 0xC0, 0x00, 0, 0x20, 0xC0, 0xC0, 0, 0x30, 2, false, 0x3A000, Ignored},
      {"HBF page 3", 0xC000, 0xCFFF, 0xC0, 0x00, 0, 0x30, 0xC0, 0xC0, 0, 0x30, 2, false, 0x3B000, Ignored},
      {"slot 1", 0xC000, 0xDFFF, 0xC0, 0x40, 0, 0, 0xC0, 0xC0, 0, 0, 2, false, 0x2E000, Ends},
      {"slot 2", 0xC000, 0xDFFF, 0xC0, 0x80, 0, 0, 0xC0, 0xC0, 0, 0, 2, false, 0x30000, Ends},
      {"slot 3", 0xC000, 0xDFFF, 0xC0, 0xC0, 0, 0, 0xC0, 0xC0, 0, 0, 2, false, 0x32000, Ends},
      // Above 16 bits the last page goes on, with the whole address added.
      {"above CART", 0x10000, 0x2BFFF, 0x00, 0, 0, 0, 0xC0, 0, 0, 0, 2, false, 0x18000, Stores},
      {"above SYS", 0x10000, 0x2BFFF, 0x40, 0, 0, 0, 0xC0, 0, 0, 0, 2, false, 0x1C000, Ignored},
      {"above U3", 0x10000, 0x2BFFF, 0x80, 0, 0, 0, 0xC0, 0, 0, 0, 0, false, 0x10000, Stores},
      {"above U3 32K", 0x10000, 0x2BFFF, 0x80, 0, 0, 0, 0xC0, 0, 0, 0, 1, true, 0x10000, Stores},
      {"above EXT", 0x10000, 0x2BFFF, 0xC0, 0, 0, 0, 0xC0, 0, 0, 0, 2, false, 0x20000, Ignored},
  };
  return rows;
}

}  // namespace quoll::test
