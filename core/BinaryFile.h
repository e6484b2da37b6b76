// A file that is read and written at given places, and open for no longer than its object lives. Only
// ordinary files: what else has the name counts as a file that can't be opened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace quoll {

struct BinaryFile {
  enum Mode {
    Read,
    Write,   // what is in the file stays
    Create,  // the same, and a missing file is made
  };

  BinaryFile(const std::string& file, Mode mode);
  ~BinaryFile();
  BinaryFile(const BinaryFile&) = delete;
  BinaryFile& operator=(const BinaryFile&) = delete;

  // It is open. On one that isn't all that follows fails.
  explicit operator bool() const { return descriptor >= 0; }

  // Places count from 0. Number of bytes read: fewer than asked for at the end of the file or on an error.
  size_t ReadAt(std::span<uint8_t> bytes, int64_t place) const;
  // False when not all could be written.
  bool WriteAt(std::span<const uint8_t> bytes, int64_t place) const;
  // Bytes; -1 on an error.
  int64_t Length() const;

  int descriptor;
};

// The full name, so that a later change of the working directory does not matter. Empty for a name that no
// file can have.
std::string FullName(const std::string& file);

// Errors don't matter: the file is gone or it stays.
void RemoveFile(const std::string& file);

}  // namespace quoll
