#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "cards/CardLinks.h"

namespace quoll {
namespace {

std::string Unique(const std::string& name) { return "test-" + std::to_string(getpid()) + "-" + name; }

TEST(CardLinks, MakesTheThreeMemories) {
  CardLinks links;
  EXPECT_EQ(links.serialName, "MMRS232");
  EXPECT_TRUE(SerialRecord(links).empty());
  links.serialName = Unique("three");
  EXPECT_EQ(CreateMaps(links), "");
  EXPECT_EQ(links.sound.MapSize, 4410);
  EXPECT_EQ(links.soundFlag.MapSize, 1);
  EXPECT_EQ(SerialRecord(links).size(), 535U);
  SerialRecord(links)[534] = 77;
  MMapper other;
  other.OpenMap(links.serialName, 535);
  EXPECT_EQ(other.MapView[534], 77);
}

TEST(CardLinks, TellsWhatWentWrong) {
  CardLinks links;
  links.serialName = "no/such/name";
  EXPECT_NE(CreateMaps(links).find("CreateFileMapping system error"), std::string::npos);
  EXPECT_TRUE(SerialRecord(links).empty());
  EXPECT_NE(links.sound.MapView, nullptr);
}

// A folder with a companion that writes its arguments down and ends with its input.
struct CompanionFolder {
  std::filesystem::path path;

  CompanionFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "cardlinksXXXXXX").string();
    path = mkdtemp(name.data());
    const std::string program = (path / kCompanionProgram).string();
    std::ofstream(program) << "#!/bin/sh\necho \"$@\" > \"${0%/*}/words.new\"\n"
                           << "mv \"${0%/*}/words.new\" \"${0%/*}/words\"\ncat > /dev/null\n";
    chmod(program.c_str(), 0700);
  }
  ~CompanionFolder() { std::filesystem::remove_all(path); }
  CompanionFolder(const CompanionFolder&) = delete;
  CompanionFolder& operator=(const CompanionFolder&) = delete;

  std::string Words() const {
    std::string words;
    for (int looks = 0; looks < 500 && !std::filesystem::exists(path / "words"); ++looks) usleep(10'000);
    std::getline(std::ifstream(path / "words"), words);
    return words;
  }
};

TEST(CardLinks, StartsACompanionOutOfTheWayOrToBeSeen) {
  const std::pair<CompanionCall, const char*> rows[] = {{CompanionCall::Start, " --minimised"},
                                                        {CompanionCall::Show, ""}};
  for (const auto& [call, last] : rows) {
    const CompanionFolder folder;
    CardLinks links;
    links.serialName = Unique("start");
    EXPECT_FALSE(CallCompanion(links, CompanionCall::Close, folder.path));
    EXPECT_FALSE(std::filesystem::exists(folder.path / "words")) << "nothing to close";
    EXPECT_TRUE(CallCompanion(links, call, folder.path));
    EXPECT_EQ(folder.Words(), "--map " + links.serialName + " --end-with-input" + last);
  }
}

TEST(CardLinks, LeavesOneThatRunsAlone) {
  const CompanionFolder folder;
  CardLinks links;
  links.serialName = Unique("runs");
  const CompanionLock lock(links.serialName);
  EXPECT_TRUE(CallCompanion(links, CompanionCall::Start, folder.path));
  EXPECT_EQ(links.companion.process, -1);
  EXPECT_FALSE(lock.Accept().has_value()) << "only looked for";
  EXPECT_TRUE(CallCompanion(links, CompanionCall::Show, folder.path));
  EXPECT_EQ(lock.Accept(), CompanionRequest::Show);
  EXPECT_TRUE(CallCompanion(links, CompanionCall::Close, folder.path));
  EXPECT_EQ(lock.Accept(), CompanionRequest::Close);
  EXPECT_EQ(links.companion.process, -1);
}

TEST(CardLinks, AFolderWithoutOne) {
  CardLinks links;
  links.serialName = Unique("none");
  for (const CompanionCall call : {CompanionCall::Start, CompanionCall::Show, CompanionCall::Close})
    EXPECT_FALSE(CallCompanion(links, call, "/nowhere"));
}

}  // namespace
}  // namespace quoll
