#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>

#include "cards/Companion.h"
#include "cards/test/Victim.h"

namespace quoll {
namespace {

namespace fs = std::filesystem;

std::string Unique(const std::string& name) { return "test-" + std::to_string(getpid()) + "-" + name; }

bool BecomesReadable(int descriptor) {
  pollfd watched{descriptor, POLLIN, 0};
  return poll(&watched, 1, 1000) == 1;
}

TEST(CompanionTexts, Names) {
  EXPECT_EQ(kCompanionProgram, "QUOLLserial");
  EXPECT_EQ(kCompanionTitle, "QUOLLUART");
  EXPECT_EQ(kCompanionNotFound, "Not Found : QUOLLserial.exe");
}

TEST(CompanionLock, OneForEachMemory) {
  const std::string map = Unique("one");
  EXPECT_FALSE(CompanionRuns(map));
  {
    const CompanionLock lock(map);
    EXPECT_GE(lock.descriptor, 0);
    EXPECT_TRUE(CompanionRuns(map));
    EXPECT_EQ(CompanionLock(map).descriptor, -1);
    EXPECT_GE(CompanionLock(Unique("other")).descriptor, 0);
    EXPECT_FALSE(CompanionRuns(Unique("other")));
  }
  EXPECT_FALSE(CompanionRuns(map));
  EXPECT_GE(CompanionLock(map).descriptor, 0);
}

TEST(CompanionLock, DiesWithItsProcess) {
  const std::string map = Unique("killed");
  test::Victim companion([&map] { static const CompanionLock lock(map); });
  EXPECT_TRUE(CompanionRuns(map));
  EXPECT_EQ(CompanionLock(map).descriptor, -1);
  companion.Kill();
  EXPECT_FALSE(CompanionRuns(map));
  EXPECT_GE(CompanionLock(map).descriptor, 0);
}

TEST(CompanionLock, BringsRequests) {
  const std::string map = Unique("asked");
  EXPECT_FALSE(AskCompanion(map, CompanionRequest::Show));
  const CompanionLock lock(map);
  for (const CompanionRequest request :
       {CompanionRequest::Show, CompanionRequest::Close, CompanionRequest::Show}) {
    EXPECT_TRUE(AskCompanion(map, request));
    ASSERT_TRUE(BecomesReadable(lock.descriptor));
    EXPECT_EQ(lock.Accept(), request);
  }
  EXPECT_EQ(lock.Accept(), std::nullopt);  // nobody there: does not wait
}

TEST(CompanionLock, OneWhoOnlyLooksAsksForNothing) {
  const std::string map = Unique("looked");
  const CompanionLock lock(map);
  EXPECT_TRUE(CompanionRuns(map));
  ASSERT_TRUE(BecomesReadable(lock.descriptor));
  EXPECT_EQ(lock.Accept(), std::nullopt);
}

TEST(CompanionLock, StrangeAndSilentCallers) {
  const std::string map = Unique("strange");
  const CompanionLock lock(map);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string name = "quollserial-" + std::to_string(getuid()) + "-" + map;
  std::memcpy(address.sun_path + 1, name.data(), name.size());
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
  for (const bool silent : {false, true}) {
    const int caller = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(connect(caller, reinterpret_cast<const sockaddr*>(&address), length), 0);
    if (!silent) {
      EXPECT_EQ(send(caller, "?", 1, 0), 1);
    }
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(lock.Accept(), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(2));
    close(caller);
  }
}

TEST(CompanionLock, OneThatDoesNotAnswerIsNotWaitedFor) {
  const std::string map = Unique("busy");
  const CompanionLock lock(map);
  for (int caller = 0; caller < 50; ++caller) EXPECT_TRUE(CompanionRuns(map));
  EXPECT_FALSE(AskCompanion(map, CompanionRequest::Show));
}

TEST(CompanionLock, NamesThatAreTooLong) {
  const std::string map(200, 'x');
  EXPECT_EQ(CompanionLock(map).descriptor, -1);
  EXPECT_FALSE(CompanionRuns(map));
}

// A program of the companion's name that notes its arguments and then waits for the end of its input.
class CompanionStart : public testing::Test {
 protected:
  CompanionStart() {
    fs::create_directories(folder);
    const fs::path program = folder / "QUOLLserial";
    std::ofstream(program) << "#!/bin/sh\necho \"$@\" >'" << (folder / "started").string()
                           << "'\ncat >/dev/null\necho over >'" << (folder / "ended").string() << "'\n";
    fs::permissions(program, fs::perms::owner_all);
  }
  ~CompanionStart() override { fs::remove_all(folder); }

  // The first line of a file as soon as there is one.
  std::string Line(const std::string& name) const {
    std::string line;
    for (int tries = 0; tries < 500 && line.empty(); ++tries) {
      std::ifstream file(folder / name);
      if (!std::getline(file, line)) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return line;
  }

  const fs::path folder = fs::temp_directory_path() / ("quoll-companion-" + std::to_string(getpid()));
};

TEST_F(CompanionStart, RunsUntilItsOwnerEnds) {
  CompanionProcess companion;
  EXPECT_EQ(companion.Start(folder.string(), "MMRS232"), "");
  EXPECT_EQ(Line("started"), "--map MMRS232 --end-with-input --minimised");
  EXPECT_FALSE(fs::exists(folder / "ended"));
  const pid_t process = companion.process;
  companion.End();
  EXPECT_EQ(Line("ended"), "over");
  EXPECT_EQ(kill(process, 0), -1);  // waited for: no zombie stays
}

TEST_F(CompanionStart, ArgumentsOfScripts) {
  CompanionProcess companion;
  EXPECT_EQ(companion.Start(folder.string(), "M2", {"--headless", "--pty", "a b"}), "");
  EXPECT_EQ(Line("started"), "--map M2 --end-with-input --headless --pty a b");
}

TEST_F(CompanionStart, EndsWithAKilledOwner) {
  test::Victim owner([this] {
    static CompanionProcess companion;
    if (!companion.Start(folder.string(), "M3").empty()) _exit(1);
  });
  EXPECT_EQ(Line("started"), "--map M3 --end-with-input --minimised");
  owner.Kill();
  EXPECT_EQ(Line("ended"), "over");
}

TEST_F(CompanionStart, MissingProgramIsTold) {
  CompanionProcess companion;
  const std::string error = companion.Start((folder / "nowhere").string(), "M4");
  EXPECT_EQ(error.find((folder / "nowhere").string()), 0U) << error;
  EXPECT_EQ(companion.process, -1);
  EXPECT_EQ(companion.pipe, -1);
  fs::permissions(folder / "QUOLLserial", fs::perms::owner_read);
  EXPECT_NE(companion.Start(folder.string(), "M4"), "");
}

TEST_F(CompanionStart, SecondStartEndsTheFirst) {
  CompanionProcess companion;
  EXPECT_EQ(companion.Start(folder.string(), "M5"), "");
  EXPECT_EQ(Line("started"), "--map M5 --end-with-input --minimised");
  EXPECT_EQ(companion.Start(folder.string(), "M6"), "");
  EXPECT_EQ(Line("ended"), "over");
}

}  // namespace
}  // namespace quoll
