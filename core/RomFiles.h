// ROM and cartridge files of the program folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quoll {

struct Machine;

// Reads the file's first bytes into the buffer; a shorter file leaves zeros behind it. False when the file
// can't be opened or read; the buffer is then all zero.
bool ReadRomFile(const Machine& m, std::string_view name, std::span<uint8_t> buffer);

}  // namespace quoll
