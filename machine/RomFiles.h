// ROM and cartridge files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quoll {

// Reads the first bytes of a folder's file into the buffer; a shorter file leaves zeros behind it. False when
// the file can't be opened or read; the buffer is then all zero.
bool ReadRomFile(const std::string& folder, std::string_view name, std::span<uint8_t> buffer);

}  // namespace quoll
