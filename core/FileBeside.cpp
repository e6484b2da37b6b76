#include "core/FileBeside.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <system_error>

namespace quoll {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = "quoll-saving-", kSuffix = ".tmp";
constexpr mode_t kFileMode = 0666;

std::string Reason(int error) { return error == 0 ? std::string() : std::generic_category().message(error); }

template <class Call>
auto Again(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

bool Lock(int descriptor) {
  return Again([&] { return flock(descriptor, LOCK_EX | LOCK_NB); }) == 0;
}

// Somebody may have taken it for a leftover before it was locked.
bool HasName(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && status.st_nlink > 0;
}

// Process and number: two numbers with a dash between them.
bool IsOurs(std::string_view name) {
  if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix)) return false;
  name.remove_prefix(kPrefix.size());
  name.remove_suffix(kSuffix.size());
  const size_t dash = name.find('-');
  return dash != std::string_view::npos && name.find_first_not_of("0123456789-") == std::string_view::npos &&
         name.find('-', dash + 1) == std::string_view::npos;
}

// Some file systems know no such thing; that is no failure of the save.
int Flush(int descriptor) {
  const bool done = Again([&] { return fsync(descriptor); }) == 0;
  return done || errno == EINVAL || errno == ENOTSUP || errno == EROFS ? 0 : errno;
}

int WriteAll(int descriptor, std::span<const uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t put = Again([&] { return write(descriptor, bytes.data(), bytes.size()); });
    if (put <= 0) return put < 0 ? errno : ENOSPC;
    bytes = bytes.subspan(static_cast<size_t>(put));
  }
  return Flush(descriptor);
}

// So that the new name outlives a loss of power; where that can't be had, the file is in place all the same.
void FlushFolder(const fs::path& folder) {
  const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  Flush(descriptor);
  close(descriptor);
}

}  // namespace

// A short name, so that a long one of the target's leaves room for it.
FileBeside::FileBeside(const fs::path& targetOfFile) : target(targetOfFile) {
  for (int number = 0;; ++number) {
    name = target.parent_path() / (std::string(kPrefix) + std::to_string(getpid()) + '-' +
                                   std::to_string(number) + std::string(kSuffix));
    descriptor =
        Again([&] { return open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kFileMode); });
    if (descriptor < 0 && errno == EEXIST) continue;
    error = descriptor < 0 ? errno : 0;
    if (descriptor < 0) return;
    // A file system without locks does not clear up either; who holds this one takes it for a leftover.
    const bool taken = !Lock(descriptor) && errno == EWOULDBLOCK;
    if (!taken && HasName(descriptor)) return;
    close(descriptor);
  }
}

FileBeside::~FileBeside() {
  if (descriptor < 0) return;
  if (!name.empty()) unlink(name.c_str());
  close(descriptor);
}

std::string FileBeside::Replace(std::span<const uint8_t> bytes) {
  if (error == 0) error = WriteAll(descriptor, bytes);
  if (error == 0 && rename(name.c_str(), target.c_str()) != 0) error = errno;
  if (error != 0) return Reason(error);
  name.clear();
  FlushFolder(target.parent_path());
  return {};
}

void RemoveLeftovers(const fs::path& folder) {
  std::error_code failed;
  fs::directory_iterator entry(folder.empty() ? "." : folder, failed);
  for (; !failed && entry != fs::directory_iterator(); entry.increment(failed)) {
    if (!IsOurs(entry->path().filename().string())) continue;
    const int descriptor = open(entry->path().c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) continue;
    if (Lock(descriptor)) unlink(entry->path().c_str());
    close(descriptor);
  }
}

}  // namespace quoll
