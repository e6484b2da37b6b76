// Memory under a name that several programs share. A name lives as long as the programs that hold it: what a
// killed program left behind is taken for nothing at the next start.
//
// This is POSIX shared memory rather than a library's: the engine links nothing but the C library for it, and
// a file lock beside each mapping tells the names that somebody holds from those of the dead, for which a
// library would need a registry of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quoll {

struct SharedName {
  std::string_view name;
  int32_t size;  // bytes
};
inline constexpr SharedName kSoundMap{"MMDemo", 4410};
inline constexpr SharedName kSoundFlagMap{"MMDemo2", 1};
inline constexpr SharedName kSerialMapName{"MMRS232", 535};

// What MMapper throws.
struct MapError : std::runtime_error {
  MapError(int errorNumber, const std::string& text) : std::runtime_error(text), number(errorNumber) {}

  int number;  // the system's error code; kBadCall for a call that could never succeed
};
inline constexpr int kBadCall = 5;

class MMapper {
 public:
  MMapper() = default;
  ~MMapper() { CloseMap(); }
  MMapper(const MMapper&) = delete;
  MMapper& operator=(const MMapper&) = delete;

  // Makes the memory, all zeros, or joins one that a program of this user holds already, whose bytes stay.
  // size in bytes. What was open before is closed.
  void CreateMap(std::string_view name, int32_t size);
  // Joins a memory that some program of this user holds.
  void OpenMap(std::string_view name, int32_t size);
  // Copies from the memory's start to destination.
  void ReadMap(void* destination, int32_t size) const;
  // Copies to the memory's start from source.
  void WriteMap(const void* source, int32_t size);
  // Nothing when none is open. The last one to close takes the name away.
  void CloseMap() noexcept;

  int MapHandle = -1;          // descriptor of the memory, which holds its lock; -1 when none is open
  uint8_t* MapView = nullptr;  // MapSize bytes that others may change at any time; null when none is open
  int32_t MapSize = 0;         // bytes; stays when it is closed
  bool existed = false;        // CreateMap found it held by somebody

 private:
  void View(int32_t size);
  void CheckSize(int32_t size, const char* notOpen) const;

  std::string systemName;
};

}  // namespace quoll
