// The four pages of the address space and the bits that select what they show:
//
//   0x0000  port 2 bits 4-3   0 SYS, 1 CART, 2 U0, 3 U3
//   0x4000  port 2 bit 2      0 U1, 1 video bank of port 0x0F bits 1-0
//   0x8000  port 2 bit 5      1 U2, 0 video bank of port 0x0F bits 3-2
//   0xC000  port 2 bits 7-6   0 CART, 1 SYS, 2 U3, 3 EXT
//   EXT     port 3 bits 7-6   card slot at 0xC000-0xDFFF; the extension ROM lies above
//
// Addresses are not cut to 16 bits. Those from 0x10000 on belong to the last page.
#include "machine/Memory.h"

#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr int32_t kGranule = 0x1000;
constexpr std::array<uint8_t, kGranule> kZeros{};

// Offset of a 16 KB video bank less the page's address is what these add to the address.
constexpr std::array<int32_t, 4> kBankFromPage1 = {0xC000, 0x1C000, 0x20000, 0x24000};
constexpr std::array<int32_t, 4> kBankFromPage2 = {0x8000, 0x18000, 0x1C000, 0x20000};
// The floppy ROM's four pages, by port 0x18 bits 5-4.
constexpr std::array<int32_t, 4> kHbfFromExt = {0x2C000, 0x2D000, 0x2E000, 0x2F000};
// The windows of I/O cards 1 to 3.
constexpr std::array<int32_t, 4> kCardFromExt = {0, 0x22000, 0x24000, 0x26000};

bool MexInside(const Machine& m) { return m.CartName == kMexCartridge && m.MexPages.size() == kMexPageCount; }

uint8_t* Image(Machine& m, int32_t offset) { return &m.MemImage.at(static_cast<size_t>(offset)); }

// A byte of the cartridge page, counted from the page's start.
uint8_t* CartridgeByte(Machine& m, int32_t offset) {
  if (!MexInside(m)) return Image(m, kCart + offset);
  if (offset >= 0x4000) return nullptr;
  return &m.MexPages[m.PortShadow[0xA0]][static_cast<size_t>(offset)];
}

// Where reads of 0xC000 to 0xDFFF find the card in the selected slot.
uint8_t* CardByte(Machine& m, int32_t address) {
  const size_t slot = m.PortShadow[3] >> 6;
  if (slot != 0) return Image(m, address + kCardFromExt[slot]);
  if (address >= 0xD000) return Image(m, address + 0x21000);
  return Image(m, address + kHbfFromExt[(m.PortShadow[0x18] >> 4) & 3]);
}

// The byte that a read sees; nullptr reads as 0.
uint8_t* ReadPlace(Machine& m, int32_t address) {
  const uint8_t port2 = m.PortShadow[2];
  const uint8_t banks = m.PortShadow[0x0F];
  if (address < 0 || address > kTopAddress) return nullptr;
  if (address < 0x4000) {
    switch ((port2 >> 3) & 3) {
      case 0: return Image(m, address + kSysLow);
      case 1: return CartridgeByte(m, address);
      case 2: return Image(m, address);
      default: return Image(m, address + 0xC000);
    }
  }
  if (address < 0x8000) {
    if ((port2 & 0x04) == 0) return Image(m, address);
    return Image(m, address + kBankFromPage1[banks & 3]);
  }
  if (address < 0xC000) {
    if ((port2 & 0x20) == 0) return Image(m, address + kBankFromPage2[(banks >> 2) & 3]);
    return m.screen.x32KB ? nullptr : Image(m, address);
  }
  switch (port2 >> 6) {
    case 0: return CartridgeByte(m, address - 0xC000);
    case 1: return Image(m, address + 0xC000);
    case 2: return m.screen.x32KB ? nullptr : Image(m, address);
    default: return address > 0xDFFF ? Image(m, address + 0x10000) : CardByte(m, address);
  }
}

enum class Store { Byte, Ignored, EndsProgram };

struct WritePlace {
  Store what;
  uint8_t* byte;
};

// Writes follow the reads but for ROM, which ignores them, and a 32 KB machine, which stores what it can't
// read back.
WritePlace FindWritePlace(Machine& m, int32_t address) {
  constexpr WritePlace kIgnored = {Store::Ignored, nullptr};
  const uint8_t port2 = m.PortShadow[2];
  if (address < 0 || address > kTopAddress) return kIgnored;
  const bool page3 = address >= 0xC000;
  if (address < 0x4000 && (port2 & 0x18) == 0) return kIgnored;
  if (page3 && port2 >> 6 == 1) return kIgnored;
  if (page3 && port2 >> 6 == 3) {
    if (address > 0xDFFF) return kIgnored;
    if (m.PortShadow[3] >> 6 != 0) return {Store::EndsProgram, nullptr};
    if (address < 0xD000) return kIgnored;
  }
  const bool u2 = address >= 0x8000 && !page3 && (port2 & 0x20) != 0;
  const bool u3 = page3 && port2 >> 6 == 2;
  uint8_t* byte = u2 || u3 ? Image(m, address) : ReadPlace(m, address);
  return byte == nullptr ? kIgnored : WritePlace{Store::Byte, byte};
}

// Granules in which one paging choice holds throughout, by their first granule.
constexpr std::array<int, 8> kAreas = {0x0, 0x4, 0x8, 0xC, 0xD, 0xE, 0x10, (kTopAddress + 1) / kGranule};

uintptr_t Biased(const uint8_t* byte, int granule) {
  return reinterpret_cast<uintptr_t>(byte) - static_cast<uintptr_t>(granule) * kGranule;
}

// While VideoReadNoise is set, reads of page 2 video RAM set these bits in bank 0, whatever bank they read.
constexpr uint8_t kReadDamage = 0x37;
bool ReadsDamage(const Machine& m, int32_t address) {
  return m.VideoReadNoise && address >= 0x8000 && address < 0xC000 && (m.PortShadow[2] & 0x20) == 0;
}

}  // namespace

uint8_t MemRead(Machine& m, int32_t address) {
  if (ReadsDamage(m, address)) *Image(m, address + kBankFromPage2[0]) |= kReadDamage;
  const uint8_t* byte = ReadPlace(m, address);
  return byte == nullptr ? 0 : *byte;
}

uint8_t MemPeek(Machine& m, int32_t address) {
  const uint8_t* byte = ReadPlace(m, address);
  if (byte == nullptr) return 0;
  const bool damaged = ReadsDamage(m, address) && byte == Image(m, address + kBankFromPage2[0]);
  return damaged ? *byte | kReadDamage : *byte;
}

void MemWrite(Machine& m, int32_t address, uint8_t value) {
  const WritePlace place = FindWritePlace(m, address);
  if (place.what == Store::Byte) *place.byte = value;
  if (place.what == Store::EndsProgram) EndProgram(m, " CTL 1-3 IOM write????", "");
}

void RenewPages(Machine& m) {
  PageMap& pages = m.pages;
  pages.read[0] = Biased(kZeros.data(), -1);
  pages.write[0] = Biased(pages.sink.data(), -1);
  for (size_t area = 0; area < kAreas.size(); ++area) {
    const int first = kAreas[area];
    const int end = area + 1 < kAreas.size() ? kAreas[area + 1] : PageMap::kGranules;
    const uint8_t* byte = ReadPlace(m, first * kGranule);
    for (int granule = first; granule < end; ++granule) {
      pages.read[PageMap::kBelow + static_cast<size_t>(granule)] =
          byte == nullptr ? Biased(kZeros.data(), granule) : Biased(byte, first);
    }
    const WritePlace place = FindWritePlace(m, first * kGranule);
    for (int granule = first; granule < end && granule < PageMap::kWritable; ++granule) {
      uintptr_t& entry = pages.write[PageMap::kBelow + static_cast<size_t>(granule)];
      entry = place.what == Store::Byte      ? Biased(place.byte, first)
              : place.what == Store::Ignored ? Biased(pages.sink.data(), granule)
                                             : 0;
    }
  }
}

}  // namespace quoll
