// What the tests of files share: a folder of their own, a host that remembers, and ways to make a save fail.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "machine/Machine.h"
#include "machine/MachineInit.h"

namespace quoll::test {

using Bytes = std::vector<uint8_t>;

struct BenchHost : Host {
  struct Box {
    std::string text, title;
    MessageIcon icon;
  };
  std::vector<Box> boxes;
  int pumps = 0;

  void MessageBox(std::string_view text, std::string_view title, MessageIcon icon) override {
    boxes.push_back({std::string(text), std::string(title), icon});
  }
  void Pump(Machine&) override { ++pumps; }
};

inline Bytes ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), {});
}

inline void WriteAll(const std::filesystem::path& path, const Bytes& bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// Bytes that differ from their neighbours and from each other's blocks.
inline Bytes Pattern(size_t size, uint32_t seed = 1) {
  Bytes bytes(size);
  uint32_t state = seed;
  for (uint8_t& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<uint8_t>(state >> 24);
  }
  return bytes;
}

// A machine in an empty folder, which is the working directory and the program folder while the test runs.
struct Bench : testing::Test {
  std::filesystem::path oldFolder = std::filesystem::current_path();
  std::filesystem::path folder;
  BenchHost host;
  std::unique_ptr<Machine> machine = std::make_unique<Machine>(host);
  Machine& m = *machine;

  Bench() {
    std::string name = (std::filesystem::temp_directory_path() / "quollbench-XXXXXX").string();
    folder = mkdtemp(name.data());
    std::filesystem::permissions(folder, std::filesystem::perms::all);
    std::filesystem::current_path(folder);
    m.programFolder = folder.string();
    CpuInit(m.z80);
    MachineReset(m);
  }
  ~Bench() override {
    std::filesystem::current_path(oldFolder);
    std::filesystem::permissions(folder, std::filesystem::perms::all);
    std::filesystem::remove_all(folder);
  }

  std::string Path(const std::string& name) const { return (folder / name).string(); }

  // Names in the folder, sorted; what a save left lying about shows here.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }

  // The one box shown so far names the file and the reason.
  void ExpectBox(const std::string& file, const std::string& reason) const {
    ASSERT_EQ(host.boxes.size(), 1U);
    EXPECT_EQ(host.boxes[0].text, file + ": " + reason);
    EXPECT_EQ(host.boxes[0].title, "Error");
  }
};

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

// While it lives, the folder takes no new files, not even from the superuser, who becomes nobody for that
// time.
struct ReadOnlyFolder {
  std::filesystem::path folder;
  uid_t old = geteuid();
  explicit ReadOnlyFolder(const std::filesystem::path& readOnly) : folder(readOnly) {
    using std::filesystem::perms;
    std::filesystem::permissions(folder, perms::owner_read | perms::owner_exec | perms::group_read |
                                             perms::group_exec | perms::others_read | perms::others_exec);
    constexpr uid_t kNobody = 65534;
    EXPECT_TRUE(old != 0 || seteuid(kNobody) == 0);
  }
  ReadOnlyFolder(const ReadOnlyFolder&) = delete;
  ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;
  ~ReadOnlyFolder() {
    EXPECT_TRUE(old != 0 || seteuid(old) == 0);
    std::filesystem::permissions(folder, std::filesystem::perms::all);
  }
};

}  // namespace quoll::test
