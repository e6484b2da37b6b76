#include "core/BinaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace quoll {

namespace {

constexpr mode_t kFileMode = 0666;

int Flags(BinaryFile::Mode mode) {
  switch (mode) {
    case BinaryFile::Read: return O_RDONLY;
    case BinaryFile::Write: return O_RDWR;
    case BinaryFile::Create: break;
  }
  return O_RDWR | O_CREAT;
}

bool IsOrdinary(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

BinaryFile::BinaryFile(const std::string& file, Mode mode) : descriptor(-1) {
  do {
    // A pipe must not make the machine wait for its other end.
    descriptor = open(file.c_str(), Flags(mode) | O_CLOEXEC | O_NONBLOCK, kFileMode);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0 || IsOrdinary(descriptor)) return;
  close(descriptor);
  descriptor = -1;
}

BinaryFile::~BinaryFile() {
  if (descriptor >= 0) close(descriptor);
}

size_t BinaryFile::ReadAt(std::span<uint8_t> bytes, int64_t place) const {
  size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t got = pread(descriptor, bytes.data() + done, bytes.size() - done,
                              static_cast<off_t>(place + static_cast<int64_t>(done)));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<size_t>(got);
  }
  return done;
}

bool BinaryFile::WriteAt(std::span<const uint8_t> bytes, int64_t place) const {
  for (size_t done = 0; done < bytes.size();) {
    const ssize_t put = pwrite(descriptor, bytes.data() + done, bytes.size() - done,
                               static_cast<off_t>(place + static_cast<int64_t>(done)));
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    done += static_cast<size_t>(put);
  }
  return true;
}

int64_t BinaryFile::Length() const {
  struct stat status {};
  return fstat(descriptor, &status) == 0 ? static_cast<int64_t>(status.st_size) : -1;
}

std::string FullName(const std::string& file) {
  if (file.empty() || file.find('\0') != std::string::npos) return {};
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(file, error);
  return error ? file : full.string();
}

void RemoveFile(const std::string& file) { unlink(file.c_str()); }

}  // namespace quoll
