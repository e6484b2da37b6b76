#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "devtools/AsmFiles.h"

namespace quoll {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;

// A folder of its own that is the working directory while the test runs.
class AsmFiles : public testing::Test {
 protected:
  AsmFiles() : before(fs::current_path()) {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    folder =
        fs::temp_directory_path() / (std::string("quoll_") + test->name() + "_" + std::to_string(getpid()));
    fs::create_directories(folder / "source");
    fs::current_path(folder);
  }
  ~AsmFiles() override {
    fs::current_path(before);
    std::error_code error;
    fs::remove_all(folder, error);
  }
  AsmFiles(const AsmFiles&) = delete;
  AsmFiles& operator=(const AsmFiles&) = delete;

  static void Put(const std::string& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
  }

  fs::path before, folder;
};

TEST_F(AsmFiles, TheSourcesFolderComesFirst) {
  Put("a", "here");
  Put("b", "here");
  Put("source/a", "there");
  EXPECT_EQ(ReadIncluded("source", "a"), (Bytes{'t', 'h', 'e', 'r', 'e'}));
  EXPECT_EQ(ReadIncluded("source", "b"), (Bytes{'h', 'e', 'r', 'e'}));
  EXPECT_EQ(ReadIncluded("", "a"), (Bytes{'h', 'e', 'r', 'e'}));
  EXPECT_EQ(ReadIncluded("", (folder / "source/a").string()), (Bytes{'t', 'h', 'e', 'r', 'e'}));
  EXPECT_EQ(ReadIncluded("nowhere", "c"), std::nullopt);
}

TEST_F(AsmFiles, WhatIsNoOrdinaryFile) {
  EXPECT_EQ(ReadIncluded("", "source"), std::nullopt);
  EXPECT_EQ(ReadIncluded("", ""), std::nullopt);
  EXPECT_EQ(ReadIncluded("", "/dev/zero"), std::nullopt);
  EXPECT_EQ(ReadIncluded("", std::string("a\0b", 3)), std::nullopt);
  EXPECT_EQ(ReadIncluded("source", std::string(5000, 'x')), std::nullopt);
}

TEST_F(AsmFiles, OneByteMoreThanTheLimitIsRead) {
  Put("empty", "");
  Put("full", std::string(65536, 'x'));
  Put("long", std::string(200000, 'x'));
  EXPECT_EQ(ReadIncluded("", "empty")->size(), 0U);
  EXPECT_EQ(ReadIncluded("", "full")->size(), 65536U);
  EXPECT_EQ(ReadIncluded("", "long")->size(), 65537U);
}

TEST_F(AsmFiles, NamesAreInTheSourcesCodePage) {
  Put("k\xC3\xA9p", "x");
  EXPECT_EQ(ReadIncluded("", "k\xE9p"), (Bytes{'x'}));
}

TEST_F(AsmFiles, CassetteHeader) {
  Bytes program(1000);
  program[0] = 7;
  const Bytes file = CassetteFile(program);
  ASSERT_EQ(file.size(), 1144U);
  Bytes header(144);
  header[0] = 0x11;
  header[2] = 1144 / 128;
  header[4] = 1144 % 128;
  header[129] = 1;
  header[130] = 1000 & 255;
  header[131] = 1000 >> 8;
  EXPECT_EQ(Bytes(file.begin(), file.begin() + 144), header);
  EXPECT_EQ(Bytes(file.begin() + 144, file.end()), program);
  EXPECT_EQ(CassetteFile({}).size(), 144U);
}

}  // namespace
}  // namespace quoll
