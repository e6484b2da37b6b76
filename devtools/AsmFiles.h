// The assembler's files on the disk.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quoll {

// The file that INCBIN names in code page 1250, looked for in the source's folder (empty: none), then in the
// working directory; at most the first kAsmFileLimit + 1 bytes. Nothing when neither place has an ordinary
// file of this name that can be read.
std::optional<std::vector<uint8_t>> ReadIncluded(const std::string& sourceFolder, std::string_view name);

// The cassette file of a program: a header of 144 bytes, then the program itself.
std::vector<uint8_t> CassetteFile(const std::vector<uint8_t>& program);

}  // namespace quoll
