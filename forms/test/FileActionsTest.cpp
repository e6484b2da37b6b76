// What belongs to which kind of file, and files that are opened by their suffix.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <map>

#include "forms/FileActions.h"
#include "machine/Machine.h"
#include "testkit/FolderTest.h"

namespace quoll::test {
namespace {

namespace fs = std::filesystem;

struct FileActionsTest : FolderTest {
  FileActionsTest() {
    m.panel.window.visible = true;
    m.screen.focusPicD = false;
  }
  // Nothing was opened, and the one box said so.
  void ExpectTold(const std::string& text) {
    EXPECT_EQ(host.messages, (std::vector<TestHost::Message>{{text, "QUOLLEMU", MessageIcon::Exclamation}}));
    EXPECT_TRUE(m.panel.window.visible);
    EXPECT_FALSE(m.screen.focusPicD);
    host.messages.clear();
  }
};

TEST_F(FileActionsTest, EachKindStandsOnce) {
  std::map<std::string_view, bool> kinds;  // and whether it can be saved
  for (const FileAction& action : FileActions()) {
    EXPECT_TRUE(kinds.emplace(action.pattern, action.save != nullptr).second) << action.pattern;
    EXPECT_NE(action.open, nullptr) << action.pattern;
    EXPECT_EQ(FindFileAction(action.pattern), &action);
  }
  for (const auto& [pattern, saved] : std::map<std::string_view, bool>{{"*.cas", true},
                                                                       {"*.tvs", true},
                                                                       {"*.crt", false},
                                                                       {"*.tim", false},
                                                                       {"*.wav", false},
                                                                       {"*.asm", false},
                                                                       {"*.tvcasm", false}}) {
    ASSERT_TRUE(kinds.contains(pattern)) << pattern;
    EXPECT_EQ(kinds[pattern], saved) << pattern;
  }
  for (const char* stranger : {"*.CAS", ".cas", "*", "*.cas;*.tvs", ""})
    EXPECT_EQ(FindFileAction(stranger), nullptr);
}

TEST_F(FileActionsTest, TheReasonIsToldWithTheName) {
  WriteAll("a.tvs", {1});
  EXPECT_EQ(WhyUnreadable(Path("a.tvs")), "");
  fs::create_directory("dir.tvs");
  EXPECT_EQ(WhyUnreadable("dir.tvs"), "dir.tvs: it is a directory");
  EXPECT_EQ(WhyUnreadable(Path("none.tvs")), Path("none.tvs") + ": No such file or directory");
  ASSERT_EQ(mkfifo("pipe.tvs", 0600), 0);
  EXPECT_EQ(WhyUnreadable("pipe.tvs"), "pipe.tvs: it is not an ordinary file");
  fs::permissions("a.tvs", fs::perms::none);
  const ReadOnlyFolder asNobody(folder);
  EXPECT_EQ(WhyUnreadable("a.tvs"), "a.tvs: Permission denied");
}

// Of any kind: the reason, and never that its content is not valid.
TEST_F(FileActionsTest, WhatCantBeReadIsToldAndTouchesNothing) {
  const auto before = CopyOf(m);
  for (const FileAction& action : FileActions()) {
    const std::string suffix(action.pattern.substr(1));
    OpenBySuffix(m, Path("none" + suffix));
    ExpectTold(Path("none" + suffix) + ": No such file or directory");
    fs::create_directory("dir" + suffix);
    OpenBySuffix(m, "dir" + suffix);
    ExpectTold("dir" + suffix + ": it is a directory");
    WriteAll("closed" + suffix, {1});
    fs::permissions("closed" + suffix, fs::perms::none);
    const ReadOnlyFolder asNobody(folder);
    OpenBySuffix(m, "closed" + suffix);
    ExpectTold("closed" + suffix + ": Permission denied");
  }
  EXPECT_TRUE(static_cast<MachineState&>(m) == *before);
}

TEST_F(FileActionsTest, AKindWithoutAnActionIsTold) {
  WriteAll("notes.txt", {1});
  for (const char* file : {"notes.txt", "cas", "a.cas.old", "none.doc", ""}) {
    OpenBySuffix(m, file);
    ExpectTold("This kind of file can't be opened: " + std::string(file));
  }
}

TEST_F(FileActionsTest, TheSuffixChoosesWhateverItsLetters) {
  WriteAll("Tape.WAV", Bytes(45, 255));
  OpenBySuffix(m, Path("Tape.WAV"));
  EXPECT_EQ(m.ttape.Label3, "Tape.WAV");
  EXPECT_FALSE(m.panel.window.visible);
  EXPECT_TRUE(m.screen.focusPicD);

  Bytes cassette(144 + 2);
  cassette[144] = 0x77;
  WriteAll("a.b.Cas", cassette);
  OpenBySuffix(m, "a.b.Cas");
  EXPECT_EQ(m.MemImage[0x19EF], 0x77);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(FileActionsTest, ASourceComesWithItsWindow) {
  WriteAll("one.ASM", {'n', 'o', 'p'});
  OpenBySuffix(m, Path("one.ASM"));
  EXPECT_TRUE(m.asse.window.visible);
  EXPECT_TRUE(m.asse.window.raise);
  EXPECT_EQ(m.asse.source.RText1, "nop");
  EXPECT_EQ(m.asse.files.Text16, "one.ASM");
  EXPECT_TRUE(host.messages.empty());
}

// What is wrong with a file that can be read is the loader's to tell.
TEST_F(FileActionsTest, AForeignSnapshotIsNotValid) {
  WriteAll("a.tvs", {1, 2, 3});
  OpenBySuffix(m, "a.tvs");
  EXPECT_EQ(host.messages,
            (std::vector<TestHost::Message>{{"Snapshot not valid!", "Error", MessageIcon::None}}));
}

}  // namespace
}  // namespace quoll::test
