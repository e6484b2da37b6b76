// The companion program as the desktop program starts it, and the choice that leaves it alone.
#include <QTemporaryDir>
#include <chrono>

#include "desktop/Main.h"
#include "desktop/test/RuntimeFolder.h"
#include "desktop/test/WindowTest.h"

namespace quoll {
namespace {

constexpr int kPatience = 30'000;  // milliseconds, for a busy computer

// Closes the program when a companion runs, or after so many frames.
struct CompanionHost : TestHost {
  void FrameEnded(Machine& m) override {
    runs = CompanionRuns(links.serialName);
    if (runs || frames == most) Close();
    TestHost::FrameEnded(m);
  }
  bool runs = false;
  int most = 50;
};

struct CompanionStart : testing::Test {
  const RuntimeFolder folder;
  std::unique_ptr<CompanionHost> host = std::make_unique<CompanionHost>();

  void TearDown() override { KeepExtras({}); }
  // The name of the shared memory, which the host does not outlive.
  std::string Name() const { return host->links.serialName; }
};

TEST_F(CompanionStart, ItRunsAsLongAsTheProgram) {
  const std::string name = Name();
  EXPECT_FALSE(CompanionRuns(name));
  host->most = kPatience / 20;
  EXPECT_EQ(Main(*host), 0);
  EXPECT_TRUE(host->runs);
  EXPECT_TRUE(host->messages.empty());
  EXPECT_EQ(host->companionFolder, ROM_FOLDER);
  EXPECT_EQ(SerialRecord(host->links).size(), kSerialMapSize);
  host.reset();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !CompanionRuns(name); }, kPatience));
}

TEST_F(CompanionStart, AMissingOneIsTold) {
  const QTemporaryDir empty;
  host->companionFolder = empty.path().toStdString();
  EXPECT_EQ(Main(*host), 0);
  EXPECT_FALSE(host->runs);
  EXPECT_EQ(host->messages, std::vector<std::string>{"QUOLLEMU|Not Found : QUOLLserial.exe"});
}

TEST_F(CompanionStart, NotWhereTheUserDoesNotWantIt) {
  Extras extras;
  extras.startCompanion = false;
  KeepExtras(extras);
  EXPECT_EQ(Main(*host), 0);
  EXPECT_FALSE(host->runs);
  EXPECT_TRUE(host->messages.empty());
  EXPECT_FALSE(host->extras.startCompanion);
}

using ExtrasMenu = WindowTest;

TEST_F(ExtrasMenu, AChoiceCountsAtOnceAndForTheNextStart) {
  EXPECT_EQ(ReadExtras(), Extras());
  for (const ExtrasTick& tick : kExtrasTicks) {
    const bool first = Extras().*tick.on;
    EXPECT_EQ(window->Action(tick.name)->isChecked(), first);
    Select(tick.name);
    EXPECT_EQ(window->Action(tick.name)->isChecked(), !first);
    EXPECT_EQ(host.extras.*tick.on, !first);
    EXPECT_EQ(ReadExtras().*tick.on, !first);
    Select(tick.name);
    EXPECT_EQ(ReadExtras(), Extras());
  }
}

// OPEN starts one even where the start leaves it out, and shows its window; CLOSE and the end take it away.
TEST_F(ExtrasMenu, OpenInTheSerialWindowStartsIt) {
  host.extras.startCompanion = false;
  EXPECT_EQ(host.CreateMaps(), "");
  EXPECT_TRUE(host.CallCompanion(CompanionCall::Start, ROM_FOLDER));
  EXPECT_FALSE(CompanionRuns(host.links.serialName));
  PressButton("TSerial", "Command1");
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(QTest::qWaitFor([&] { return CompanionRuns(host.links.serialName); }, kPatience));
  PressButton("TSerial", "Command2");
  EXPECT_TRUE(CompanionRuns(host.links.serialName));
  host.links.companion.End();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !CompanionRuns(host.links.serialName); }, kPatience));
  m.programFolder = "/nowhere";
  PressButton("TSerial", "Command1");
  EXPECT_EQ(host.messages, std::vector<std::string>{"QUOLLEMU|Not Found : QUOLLserial.exe"});
}

}  // namespace
}  // namespace quoll
