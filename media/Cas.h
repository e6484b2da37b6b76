// Cassette files "*.cas": a BASIC program behind a header of 144 bytes. It is copied straight into the place
// where the ROM's BASIC expects it, and BASIC's pointers are set, so that RUN can follow at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quoll {

struct Machine;

inline constexpr int32_t kCasProgramStart = 0x19EF;
inline constexpr size_t kCasHeaderSize = 144;

// Addresses of a program: s its first byte, e the first after it.
struct CasRange {
  int32_t s = 0;
  int32_t e = 0;
  bool operator==(const CasRange&) const = default;
};

// What SaveCAS makes of any two numbers: both at most 0xFFFF, s at least 0x19EF. e can stay below s.
CasRange ClampCasRange(int32_t s, int32_t e);

// Fills the boxes of the save panel, program start and end and the word at 0x1720, all decimal, from BASIC's
// pointers, read as the processor would with its present paging.
void ReadCasBoxes(Machine& m, std::string& start, std::string& end, std::string& word);

// Takes start and end as numbers, decimal or hexadecimal behind "&H", and writes back in decimal what the
// save will use. A text that is no number counts as 0.
CasRange UseCasBoxes(std::string& start, std::string& end);

// The bytes of a cassette file with the program from s to e - 1, read with the present paging; s and e are
// brought into range as ClampCasRange does. With e below s it is the header alone.
std::vector<uint8_t> CasBytes(Machine& m, int32_t s, int32_t e);

// Saves that program; the extension ".cas" is appended to the name unless it is there. False when the file
// could not be saved: the user has been told, and an old file of that name is as it was.
bool SaveCAS(Machine& m, const std::string& name, int32_t s, int32_t e);

// Puts what follows the header at 0x19EF of RAM, whatever is paged in, up to the end of the memory
// array, and sets BASIC's start and end pointers. fileSize: length of the whole file, of which the bytes
// may be the first part only. The header is not looked at; a file shorter than it leaves the end
// pointer below the start.
void PlaceCas(Machine& m, std::span<const uint8_t> file, uint64_t fileSize);

// Serves host events once when BASIC's pages are not in, then loads the file. A file that can't be read
// counts as an empty one: the pointers are set all the same and nobody is told. False for such a file.
bool LoadCAS(Machine& m, const std::string& file);

}  // namespace quoll
