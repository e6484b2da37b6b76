#include "cards/SharedMemory.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace quoll {

namespace {

constexpr mode_t kOwnerOnly = 0600;

// Each user has names of his own, and none can name a memory that is no one of this system's.
std::string SystemName(std::string_view name) {
  return "/quollemu-" + std::to_string(getuid()) + "-" + std::string(name);
}

bool Lock(int descriptor, int kind) {
  int result = -1;
  do {
    result = flock(descriptor, kind);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

[[noreturn]] void Throw(const char* what, int code) {
  throw MapError(code, what + std::string(" system error ") + std::to_string(code));
}

void CheckNewSize(int32_t size) {
  if (size < 1) throw MapError(kBadCall, "Size must be at least 1 byte");
}

// A name that was taken away while this program waited for its lock leads to nobody any more.
bool StillNamed(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && status.st_nlink != 0;
}

int64_t Length(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 ? static_cast<int64_t>(status.st_size) : -1;
}

}  // namespace

// Whoever can lock the memory for himself alone is its only holder: what is in it is of the dead.
void MMapper::CreateMap(std::string_view name, int32_t size) {
  CheckNewSize(size);
  CloseMap();
  const std::string wanted = SystemName(name);
  for (;;) {
    const int descriptor = shm_open(wanted.c_str(), O_RDWR | O_CREAT, kOwnerOnly);
    if (descriptor < 0) Throw("CreateFileMapping", errno);
    const bool alone = Lock(descriptor, LOCK_EX | LOCK_NB);
    const bool made = !alone || (ftruncate(descriptor, 0) == 0 && ftruncate(descriptor, size) == 0);
    const int code = errno;
    if (made && Lock(descriptor, LOCK_SH) && StillNamed(descriptor)) {
      MapHandle = descriptor;
      existed = !alone;
      break;
    }
    close(descriptor);
    if (!made) Throw("CreateFileMapping", code);
  }
  systemName = wanted;
  View(size);
}

void MMapper::OpenMap(std::string_view name, int32_t size) {
  CheckNewSize(size);
  CloseMap();
  const std::string wanted = SystemName(name);
  const int descriptor = shm_open(wanted.c_str(), O_RDWR, kOwnerOnly);
  if (descriptor < 0) Throw("OpenFileMapping", errno);
  const bool alone = Lock(descriptor, LOCK_EX | LOCK_NB);
  if (alone || !Lock(descriptor, LOCK_SH) || !StillNamed(descriptor)) {
    // Somebody may be about to create it at this moment: without the name he begins again.
    if (alone && StillNamed(descriptor)) shm_unlink(wanted.c_str());
    close(descriptor);
    Throw("OpenFileMapping", ENOENT);
  }
  MapHandle = descriptor;
  existed = true;
  systemName = wanted;
  View(size);
}

// A memory that is shorter than the view would end the program at the first touch beyond its end.
void MMapper::View(int32_t size) {
  const bool fits = Length(MapHandle) >= size;
  void* view = MAP_FAILED;
  if (fits) view = mmap(nullptr, static_cast<size_t>(size), PROT_READ | PROT_WRITE, MAP_SHARED, MapHandle, 0);
  const int code = fits ? errno : EACCES;
  if (view == MAP_FAILED) {
    CloseMap();
    Throw("MapViewOfFile", code);
  }
  MapView = static_cast<uint8_t*>(view);
  MapSize = size;
}

void MMapper::CheckSize(int32_t size, const char* notOpen) const {
  if (size > MapSize) throw MapError(kBadCall, "Size must not exceed mapped size");
  if (MapView == nullptr) throw MapError(kBadCall, notOpen);
}

void MMapper::ReadMap(void* destination, int32_t size) const {
  CheckSize(size, "ReadMap: Map not open");
  if (size > 0) std::memcpy(destination, MapView, static_cast<size_t>(size));
}

void MMapper::WriteMap(const void* source, int32_t size) {
  CheckSize(size, "WriteMap: Map not open");
  if (size > 0) std::memcpy(MapView, source, static_cast<size_t>(size));
}

void MMapper::CloseMap() noexcept {
  if (MapView != nullptr) munmap(MapView, static_cast<size_t>(MapSize));
  if (MapHandle >= 0) {
    if (Lock(MapHandle, LOCK_EX | LOCK_NB) && StillNamed(MapHandle)) shm_unlink(systemName.c_str());
    close(MapHandle);
  }
  MapHandle = -1;
  MapView = nullptr;
  existed = false;
}

}  // namespace quoll
