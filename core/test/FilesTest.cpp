// Whole files: what is read, what is refused, and that a save which fails leaves the old file alone.
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "core/Files.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

using FilesTest = FolderTest;
using List = std::vector<std::string>;
namespace fs = std::filesystem;

constexpr const char* kMissing = "No such file or directory";

TEST_F(FilesTest, ReadsAllOfAFileAndNoMoreThanTheLimit) {
  const Bytes bytes = Pattern(1000);
  WriteAll("a", bytes);
  for (const size_t limit : {0U, 1U, 999U, 1000U, 1001U, 100000U}) {
    const FileContent content = ReadFile(Path("a"), limit);
    EXPECT_EQ(content.error, "");
    EXPECT_EQ(content.size, 1000U);
    EXPECT_EQ(content.bytes, Bytes(bytes.begin(), bytes.begin() + std::min<ptrdiff_t>(limit, 1000)));
  }
}

TEST_F(FilesTest, ReadsAnEmptyFile) {
  WriteAll("a", {});
  const FileContent content = ReadFile("a", 10);
  EXPECT_EQ(content.error, "");
  EXPECT_TRUE(content.bytes.empty());
  EXPECT_FALSE(content.missing);
}

// A file of 5 GB without content: only the limit is taken into memory, the size is told in full.
TEST_F(FilesTest, ReadsTheFrontOfAHugeFile) {
  WriteAll("a", {1, 2, 3});
  constexpr uint64_t kHuge = 5'000'000'000U;
  fs::resize_file("a", kHuge);
  const FileContent content = ReadFile("a", 5);
  EXPECT_EQ(content.size, kHuge);
  EXPECT_EQ(content.bytes, (Bytes{1, 2, 3, 0, 0}));
}

TEST_F(FilesTest, NamesAMissingFileAndDoesNotMakeIt) {
  const FileContent content = ReadFile(Path("none"), 10);
  EXPECT_EQ(content.error, Path("none") + ": " + kMissing);
  EXPECT_TRUE(content.missing);
  EXPECT_TRUE(Names().empty());
  EXPECT_TRUE(ReadFile("", 10).missing);
}

TEST_F(FilesTest, RefusesWhatIsNoFile) {
  fs::create_directory("dir");
  EXPECT_EQ(ReadFile("dir", 10).error, "dir: it is a directory");
  EXPECT_FALSE(ReadFile("dir", 10).missing);
  EXPECT_EQ(ReadFile("/dev/zero", 10).error, "/dev/zero: it is not an ordinary file");
  // A pipe without a writer would be waited for without end.
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  EXPECT_EQ(ReadFile("pipe", 10).error, "pipe: it is not an ordinary file");
  WriteAll("file", {1});
  EXPECT_NE(ReadFile("file/below", 10).error, "");
  EXPECT_NE(ReadFile(std::string("file\0x", 6), 10).error, "");
}

TEST_F(FilesTest, NamesAFileThatMayNotBeRead) {
  WriteAll("a", {1});
  fs::permissions("a", fs::perms::none);
  const ReadOnlyFolder asNobody(folder);
  const FileContent content = ReadFile("a", 10);
  EXPECT_EQ(content.error, "a: Permission denied");
  EXPECT_EQ(content.size, 0U);
  EXPECT_FALSE(content.missing);
}

TEST_F(FilesTest, SavesAndReplaces) {
  const Bytes first = Pattern(100'000, 1);
  const Bytes second = Pattern(50'000, 2);
  EXPECT_EQ(SaveFile(Path("a"), first), "");
  EXPECT_EQ(ReadAll("a"), first);
  EXPECT_EQ(SaveFile("a", second), "");
  EXPECT_EQ(ReadAll("a"), second);
  EXPECT_EQ(SaveFile("a", {}), "");
  EXPECT_EQ(fs::file_size("a"), 0U);
  EXPECT_EQ(Names(), (List{"a"}));
}

TEST_F(FilesTest, SavesUnderTheLongestName) {
  const std::string name(255, 'n');
  EXPECT_EQ(SaveFile(name, Pattern(10)), "");
  EXPECT_EQ(ReadAll(name), Pattern(10));
  EXPECT_EQ(SaveFile(name + "n", Pattern(10)), name + "n: File name too long");
  EXPECT_EQ(Names(), (List{name}));
}

TEST_F(FilesTest, LeavesForeignFilesBesideAlone) {
  WriteAll("quoll-saving-0.tmp", {7});
  EXPECT_EQ(SaveFile("a", Pattern(10)), "");
  EXPECT_EQ(ReadAll("quoll-saving-0.tmp"), (Bytes{7}));
  EXPECT_EQ(Names(), (List{"a", "quoll-saving-0.tmp"}));
}

// A child that saves one file after another is killed at any moment. The file is always whole, and the next
// save clears up.
TEST_F(FilesTest, KilledSavesLeaveAWholeFileAndNothingBeside) {
  constexpr int kKills = 200;
  const Bytes one = Pattern(200'000, 1), other = Pattern(150'000, 2);
  ASSERT_EQ(SaveFile(Path("a"), one), "");
  size_t most = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (;;) {
        SaveFile("a", other);
        SaveFile("a", one);
      }
    }
    usleep(static_cast<useconds_t>(500 + kill * 37 % 3000));
    ASSERT_EQ(::kill(child, SIGKILL), 0);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    const Bytes now = ReadAll("a");
    ASSERT_TRUE(now == one || now == other) << kill;
    most = std::max(most, Names().size());
  }
  EXPECT_EQ(SaveFile("a", other), "");
  EXPECT_EQ(Names(), List{"a"});
  EXPECT_LE(most, 2U);  // the children clear up after each other, too
}

// What another program is writing just now is locked by it.
TEST_F(FilesTest, AFileBeingWrittenIsNoLeftover) {
  WriteAll("quoll-saving-77-0.tmp", {1});
  WriteAll("quoll-saving-77-1.tmp", {2});
  WriteAll("quoll-saving-7x-1.tmp", {3});
  const int writer = open("quoll-saving-77-0.tmp", O_WRONLY);
  ASSERT_EQ(flock(writer, LOCK_EX), 0);
  EXPECT_EQ(SaveFile(Path("a"), Pattern(10)), "");
  EXPECT_EQ(Names(), (List{"a", "quoll-saving-77-0.tmp", "quoll-saving-7x-1.tmp"}));
  close(writer);
  EXPECT_EQ(SaveFile(Path("a"), Pattern(10)), "");
  EXPECT_EQ(Names(), (List{"a", "quoll-saving-7x-1.tmp"}));
}

TEST_F(FilesTest, KeepsTheOldFileWhenTheDiskIsFull) {
  const Bytes old = Pattern(500, 1);
  WriteAll("a", old);
  std::string error;
  {
    const FullDisk full(4096);
    error = SaveFile("a", Pattern(100'000, 2));
  }
  EXPECT_EQ(error, "a: File too large");
  EXPECT_EQ(ReadAll("a"), old);
  {
    const FullDisk full(100);  // so small a file fails only when it is closed
    error = SaveFile("a", Pattern(200, 2));
  }
  EXPECT_EQ(error, "a: File too large");
  EXPECT_EQ(ReadAll("a"), old);
  EXPECT_EQ(Names(), (List{"a"}));
}

TEST_F(FilesTest, KeepsTheOldFileInAReadOnlyFolder) {
  const Bytes old = Pattern(500, 1);
  WriteAll("a", old);
  fs::permissions("a", fs::perms::all);
  std::string error;
  {
    const ReadOnlyFolder readOnly(folder);
    error = SaveFile("a", Pattern(100, 2));
  }
  EXPECT_EQ(error, "a: Permission denied");
  EXPECT_EQ(ReadAll("a"), old);
  EXPECT_EQ(Names(), (List{"a"}));
}

TEST_F(FilesTest, KeepsAWriteProtectedFile) {
  WriteAll("a", {1, 2});
  fs::permissions("a", fs::perms::owner_read);
  EXPECT_EQ(SaveFile("a", Pattern(10)), "a: it is write-protected");
  EXPECT_EQ(ReadAll("a"), (Bytes{1, 2}));
}

TEST_F(FilesTest, ReplacesNothingButFiles) {
  fs::create_directory("dir");
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  EXPECT_EQ(SaveFile("dir", Pattern(10)), "dir: it is a directory");
  EXPECT_EQ(SaveFile("pipe", Pattern(10)), "pipe: it is not an ordinary file");
  EXPECT_TRUE(fs::is_directory("dir"));
  EXPECT_TRUE(fs::is_fifo("pipe"));
}

TEST_F(FilesTest, NamesFoldersThatAreNoFolders) {
  WriteAll("file", {1});
  EXPECT_EQ(SaveFile("file/a", Pattern(10)), "file/a: Not a directory");
  EXPECT_EQ(SaveFile("none/a", Pattern(10)), std::string("none/a: ") + kMissing);
  EXPECT_NE(SaveFile("", Pattern(10)), "");
  EXPECT_NE(SaveFile(std::string("a\0b", 3), Pattern(10)), "");
  EXPECT_EQ(ReadAll("file"), (Bytes{1}));
  EXPECT_EQ(Names(), (List{"file"}));
}

TEST_F(FilesTest, ALinkIsReplacedAndItsTargetKept) {
  WriteAll("target", {1});
  fs::create_symlink("target", "link");
  EXPECT_EQ(SaveFile("link", Bytes{2}), "");
  EXPECT_EQ(ReadAll("link"), (Bytes{2}));
  EXPECT_EQ(ReadAll("target"), (Bytes{1}));
}

TEST_F(FilesTest, TellsTheUserOnlyOfErrors) {
  EXPECT_TRUE(SaveFileOrTell(host, "a", Bytes{1}));
  EXPECT_TRUE(host.messages.empty());
  EXPECT_FALSE(SaveFileOrTell(host, "none/a", Bytes{1}));
  ExpectBox("none/a", kMissing);
}

TEST_F(FilesTest, AppendsTheExtensionOnce) {
  EXPECT_EQ(WithExtension("game", ".tvs"), "game.tvs");
  EXPECT_EQ(WithExtension("game.tvs", ".tvs"), "game.tvs");
  EXPECT_EQ(WithExtension("GAME.TVS", ".tvs"), "GAME.TVS");
  EXPECT_EQ(WithExtension("game.tvs.old", ".tvs"), "game.tvs.old.tvs");
  EXPECT_EQ(WithExtension("game.cas", ".tvs"), "game.cas.tvs");
  EXPECT_EQ(WithExtension("tvs", ".tvs"), "tvs.tvs");
  EXPECT_EQ(WithExtension("gametvs", ".tvs"), "gametvs.tvs");
  EXPECT_EQ(WithExtension("", ".tvs"), ".tvs");
}

}  // namespace

}  // namespace quoll::test
