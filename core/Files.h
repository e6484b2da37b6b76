// Whole files in and out. A save never harms the file that it replaces: the new one is written beside it
// under a name of its own and put into its place when it is complete and on the disk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quoll {

struct Host;

struct FileContent {
  std::vector<uint8_t> bytes;  // from the file's start, no more than the limit
  uint64_t size = 0;           // length of the whole file in bytes
  bool missing = false;        // there is no such file
  std::string error;           // empty, or the file's name and the reason why it can't be read
};

// Reads a file's first bytes, at most limit. Directories, pipes and devices are refused. With an error
// set there are no bytes and the size is 0.
FileContent ReadFile(const std::string& file, size_t limit);

// Writes the bytes as the whole file, replacing one that is there. Empty when all of it is in place;
// otherwise the file's name and the reason, and what was there before is untouched. Write-protected files,
// directories and devices are not replaced.
std::string SaveFile(const std::string& file, std::span<const uint8_t> bytes);

// SaveFile, with an error shown to the user. False when the file could not be saved.
bool SaveFileOrTell(Host& host, const std::string& file, std::span<const uint8_t> bytes);

// Shows what went wrong with a file.
void TellFileError(Host& host, std::string_view text);

// The name with the extension, ".tvs" or the like, at its end: appended unless it is there, in large or
// small letters.
std::string WithExtension(const std::string& name, std::string_view extension);

}  // namespace quoll
