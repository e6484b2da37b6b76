// Only one copy of the program runs for each user.
#pragma once

#include <string>

namespace quoll {

// Holds a file's lock for as long as it lives. The system itself gives the lock free when the process ends in
// whatever way, so a crash never leaves one behind; the file that stays has no meaning of its own.
class SingleInstance {
 public:
  // file: its path. A file that can't be made or opened locks nobody out.
  explicit SingleInstance(const std::string& file);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Another process, or another object of this one, holds the lock.
  bool OtherRuns() const { return otherRuns; }

 private:
  int descriptor = -1;
  bool otherRuns = false;
};

// Where the lock of this user's program is.
std::string SingleInstanceFile();

}  // namespace quoll
