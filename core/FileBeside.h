// A file that is being written and shall take another one's place when it is complete. Until then it bears a
// name of its own beside the other one and is locked, so that what a killed program has left there is told
// from what another program is writing just now: the system frees a lock with the process that held it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace quoll {

class FileBeside {
 public:
  // Made in the target's folder. Error() tells when that failed.
  explicit FileBeside(const std::filesystem::path& targetOfFile);
  // What is not in the target's place by now goes away.
  ~FileBeside();
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  // Writes all of it and waits until it is on the disk; puts it into place and waits for the folder too. Why
  // not, empty when it is done; the target is as it was then.
  std::string Replace(std::span<const uint8_t> bytes);

 private:
  std::filesystem::path target, name;
  int descriptor = -1;
  int error = 0;  // errno of the making
};

// Takes away what dead programs have left in a folder; the working directory for an empty one.
void RemoveLeftovers(const std::filesystem::path& folder);

}  // namespace quoll
