// Ways to make a save fail.
#pragma once

#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace quoll::test {

// While it lives, no file can grow beyond the limit: writes fail half way as on a full disk.
struct FullDisk {
  rlimit old{};
  void (*handler)(int);
  explicit FullDisk(rlim_t limit) : handler(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit small{limit, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &old);
    signal(SIGXFSZ, handler);
  }
};

// While it lives, the folder takes no new files and nobody reads what permissions forbid: the superuser, who
// could, becomes nobody for that time.
struct ReadOnlyFolder {
  std::filesystem::path folder;
  uid_t old = geteuid();
  explicit ReadOnlyFolder(const std::filesystem::path& readOnly) : folder(readOnly) {
    using std::filesystem::perms;
    std::filesystem::permissions(folder, perms::owner_read | perms::owner_exec | perms::group_read |
                                             perms::group_exec | perms::others_read | perms::others_exec);
    constexpr uid_t kNobody = 65534;
    if (old == 0 && seteuid(kNobody) != 0) throw std::runtime_error("can't become nobody");
  }
  ReadOnlyFolder(const ReadOnlyFolder&) = delete;
  ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;
  ~ReadOnlyFolder() {
    if (old == 0 && seteuid(old) != 0) std::abort();
    std::filesystem::permissions(folder, std::filesystem::perms::all);
  }
};

}  // namespace quoll::test
