#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "cards/SharedMemory.h"
#include "cards/test/Victim.h"

namespace quoll {
namespace {

using test::Victim;

// No other test and no running machine has a memory of this name.
std::string Unique(const std::string& name) { return "test-" + std::to_string(getpid()) + "-" + name; }

// The name as the system knows it, without the slash.
std::string SystemFile(const std::string& name) {
  return "/quollemu-" + std::to_string(getuid()) + "-" + name;
}

bool Exists(const std::string& name) {
  const int descriptor = shm_open(SystemFile(name).c_str(), O_RDWR, 0);
  if (descriptor >= 0) close(descriptor);
  return descriptor >= 0;
}

MapError Thrown(const std::function<void()>& call) {
  try {
    call();
  } catch (const MapError& error) {
    return error;
  }
  return {0, "nothing"};
}

void ExpectError(const std::function<void()>& call, int number, const std::string& text) {
  const MapError error = Thrown(call);
  EXPECT_EQ(error.number, number);
  EXPECT_EQ(error.what(), text);
}

TEST(MMapper, TheThreeOfTheSystem) {
  EXPECT_EQ(kSoundMap.name, "MMDemo");
  EXPECT_EQ(kSoundMap.size, 4410);
  EXPECT_EQ(kSoundFlagMap.name, "MMDemo2");
  EXPECT_EQ(kSoundFlagMap.size, 1);
  EXPECT_EQ(kSerialMapName.name, "MMRS232");
  EXPECT_EQ(kSerialMapName.size, 535);
}

TEST(MMapper, NewMemoryIsZeroAndKeepsWhatIsWritten) {
  for (const int32_t size : {1, 535, 4096, 4410}) {
    MMapper map;
    map.CreateMap(Unique("new"), size);
    EXPECT_FALSE(map.existed);
    EXPECT_EQ(map.MapSize, size);
    EXPECT_GE(map.MapHandle, 0);
    std::vector<uint8_t> bytes(static_cast<size_t>(size), 0xAA);
    map.ReadMap(bytes.data(), size);
    EXPECT_EQ(bytes, std::vector<uint8_t>(static_cast<size_t>(size)));
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 3 + 1);
    map.WriteMap(bytes.data(), size);
    std::vector<uint8_t> got(bytes.size());
    map.ReadMap(got.data(), size);
    EXPECT_EQ(got, bytes);
    EXPECT_EQ(map.MapView[size - 1], bytes.back());
  }
}

TEST(MMapper, PartsAreReadAndWrittenFromTheStart) {
  MMapper map;
  map.CreateMap(Unique("part"), 4);
  map.WriteMap("abcd", 4);
  map.WriteMap("XY", 2);
  map.WriteMap("Z", 0);
  std::array<char, 4> got{'-', '-', '-', '-'};
  map.ReadMap(got.data(), 3);
  EXPECT_EQ(std::string(got.data(), 4), "XYc-");
}

TEST(MMapper, SecondHolderSeesTheSameBytes) {
  MMapper first, second, third;
  const std::string name = Unique("joined");
  first.CreateMap(name, 8);
  first.MapView[5] = 77;
  second.CreateMap(name, 8);
  EXPECT_TRUE(second.existed);
  EXPECT_EQ(second.MapView[5], 77);
  third.OpenMap(name, 4);
  EXPECT_EQ(third.MapSize, 4);
  third.MapView[0] = 1;
  EXPECT_EQ(first.MapView[0], 1);
  first.CloseMap();
  EXPECT_EQ(second.MapView[5], 77);
  first.CreateMap(name, 8);
  EXPECT_TRUE(first.existed);
  EXPECT_EQ(first.MapView[5], 77);
}

TEST(MMapper, LastHolderTakesTheNameAway) {
  const std::string name = Unique("last");
  {
    MMapper first, second;
    first.CreateMap(name, 8);
    second.OpenMap(name, 8);
    first.CloseMap();
    EXPECT_TRUE(Exists(name));
    first.CloseMap();  // once more does nothing
  }
  EXPECT_FALSE(Exists(name));
}

TEST(MMapper, CreateAgainClosesWhatWasOpen) {
  MMapper map;
  map.CreateMap(Unique("one"), 8);
  map.CreateMap(Unique("two"), 9);
  EXPECT_FALSE(Exists(Unique("one")));
  EXPECT_TRUE(Exists(Unique("two")));
  EXPECT_EQ(map.MapSize, 9);
}

TEST(MMapper, SizesBelowOne) {
  MMapper map;
  for (const int32_t size : {0, -1, INT32_MIN}) {
    ExpectError([&] { map.CreateMap("x", size); }, 5, "Size must be at least 1 byte");
    ExpectError([&] { map.OpenMap("x", size); }, 5, "Size must be at least 1 byte");
  }
  EXPECT_EQ(map.MapView, nullptr);
}

TEST(MMapper, SizesAboveTheMemory) {
  MMapper map;
  map.CreateMap(Unique("small"), 4);
  std::array<uint8_t, 8> bytes{};
  ExpectError([&] { map.ReadMap(bytes.data(), 5); }, 5, "Size must not exceed mapped size");
  ExpectError([&] { map.WriteMap(bytes.data(), 5); }, 5, "Size must not exceed mapped size");
}

TEST(MMapper, NotOpen) {
  MMapper map;
  std::array<uint8_t, 8> bytes{};
  ExpectError([&] { map.ReadMap(bytes.data(), 1); }, 5, "Size must not exceed mapped size");
  ExpectError([&] { map.ReadMap(bytes.data(), 0); }, 5, "ReadMap: Map not open");
  ExpectError([&] { map.WriteMap(bytes.data(), 0); }, 5, "WriteMap: Map not open");
  map.CreateMap(Unique("closed"), 8);
  map.CloseMap();
  ExpectError([&] { map.ReadMap(bytes.data(), 8); }, 5, "ReadMap: Map not open");
  ExpectError([&] { map.WriteMap(bytes.data(), 8); }, 5, "WriteMap: Map not open");
}

TEST(MMapper, NamesThatNobodyHolds) {
  MMapper map;
  ExpectError([&] { map.OpenMap(Unique("none"), 1); }, ENOENT,
              "OpenFileMapping system error " + std::to_string(ENOENT));
}

TEST(MMapper, NamesThatTheSystemRefuses) {
  MMapper map;
  for (const std::string& name : {std::string("a/b"), std::string(300, 'x')}) {
    const MapError error = Thrown([&] { map.CreateMap(name, 1); });
    EXPECT_GT(error.number, 0);
    EXPECT_EQ(error.what(), "CreateFileMapping system error " + std::to_string(error.number));
    EXPECT_EQ(map.MapHandle, -1);
  }
}

TEST(MMapper, ViewLargerThanTheMemoryThatIsThere) {
  MMapper first, second;
  const std::string name = Unique("short");
  first.CreateMap(name, 8);
  for (const bool create : {true, false}) {
    ExpectError(
        [&] {
          if (create) {
            second.CreateMap(name, 9);
          } else {
            second.OpenMap(name, 9);
          }
        },
        EACCES, "MapViewOfFile system error " + std::to_string(EACCES));
    EXPECT_EQ(second.MapHandle, -1);
  }
  EXPECT_TRUE(Exists(name));
}

TEST(MMapper, WhatAKilledProgramLeftIsNothing) {
  const std::string name = Unique("killed");
  Victim victim([&name] {
    static MMapper map;
    map.CreateMap(name, 100);
    map.MapView[99] = 42;
  });
  {
    MMapper map;
    map.OpenMap(name, 100);
    EXPECT_EQ(map.MapView[99], 42);
    victim.Kill();
    EXPECT_EQ(map.MapView[99], 42);  // who lives keeps it
  }
  EXPECT_FALSE(Exists(name));

  Victim another([&name] {
    static MMapper map;
    map.CreateMap(name, 100);
    map.MapView[99] = 42;
  });
  another.Kill();
  EXPECT_TRUE(Exists(name));
  MMapper map;
  map.CreateMap(name, 535);
  EXPECT_FALSE(map.existed);
  EXPECT_EQ(map.MapView[99], 0);
  EXPECT_EQ(map.MapSize, 535);
}

TEST(MMapper, NamesOfTheDeadCannotBeOpened) {
  const std::string name = Unique("dead");
  Victim victim([&name] {
    static MMapper map;
    map.CreateMap(name, 1);
  });
  victim.Kill();
  MMapper map;
  EXPECT_EQ(Thrown([&] { map.OpenMap(name, 1); }).number, ENOENT);
  EXPECT_FALSE(Exists(name));
}

// Many programs that make, join and leave one name at the same time never fail, and never see a memory that
// is too short.
TEST(MMapper, ManyAtOnce) {
  const std::string name = Unique("many");
  std::vector<pid_t> children;
  for (int i = 0; i < 6; ++i) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      int result = 0;
      try {
        for (int round = 0; round < 300; ++round) {
          MMapper map;
          map.CreateMap(name, 535);
          map.MapView[534] = 1;
        }
      } catch (const MapError&) {
        result = 1;
      }
      _exit(result);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  EXPECT_FALSE(Exists(name));
}

}  // namespace
}  // namespace quoll
