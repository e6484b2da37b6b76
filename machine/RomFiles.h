// ROM and cartridge files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quoll {

struct Machine;

// Reads the first bytes of a folder's file into the buffer; a shorter file leaves zeros behind it. False when
// the file can't be opened or read; the buffer is then all zero.
bool ReadRomFile(const std::string& folder, std::string_view name, std::span<uint8_t> buffer);

inline constexpr size_t kRomSize = 0x2000;
inline constexpr size_t kSoundRomSize = 4 * kRomSize;
inline constexpr const char* kSoundRom = "sndmx.rom";

// A stretch of the machine's memory image.
std::span<uint8_t> Region(Machine& m, int32_t offset, size_t size);

// Ports 0x36 and 0x37: puts page 0 to 3 of "sndmx.rom" into the window of I/O card 2. The file is read at
// each call: that is how the card's page register works. Without the file the window stays as it is.
void SelectSoundRomPage(Machine& m, int32_t page);

}  // namespace quoll
