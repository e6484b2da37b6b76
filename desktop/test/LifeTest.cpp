#include <signal.h>

#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>

#include "desktop/Main.h"
#include "desktop/SingleInstance.h"
#include "desktop/test/RuntimeFolder.h"
#include "desktop/test/WindowTest.h"
#include "loop/SoundFrame.h"

namespace quoll {
namespace {

struct Life : WindowTest {
  // Closes the window in the event loop, after so many milliseconds.
  void CloseAfter(int milliseconds) {
    QTimer::singleShot(milliseconds, window, [this] { window->close(); });
  }
};

TEST_F(Life, ClosingWhileItRuns) {
  CloseAfter(70);
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_TRUE(host.ClosedByUser());
}

TEST_F(Life, ClosingAtMaxSpeed) {
  m.screen.xS6 = true;
  CloseAfter(70);
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_TRUE(host.ClosedByUser());
}

TEST_F(Life, ClosingWhileItWaitsForTheBlock) {
  host.FrameEnded(m);  // begins a frame
  m.mixer.FrameInBlock = kFramesPerBlock;
  CloseAfter(1);
  EXPECT_THROW(SoundSync(m), ProgramEnd);
  EXPECT_TRUE(host.ClosedByUser());
}

TEST_F(Life, ClosingAMachineThatReachesNoFrameEnd) {
  // Prefixes without end use no time: only Stalled is called.
  m.MemImage.fill(0xDD);
  m.programFolder.clear();
  CloseAfter(30);
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
}

TEST_F(Life, PauseAndOnAndClose) {
  const auto pause = [this] { window->Action("xS1")->trigger(); };
  bool stoppedBetween = false;
  QTimer::singleShot(60, window, pause);
  QTimer::singleShot(160, window, [&] {
    stoppedBetween = m.run.CpuRunning == 0 && m.screen.xS1;
    pause();  // runs the machine on this stack
  });
  CloseAfter(300);
  CPUmon_Command1_Click(m);
  const int framesAtPause = host.frames;
  EXPECT_TRUE(m.screen.xS1);
  EXPECT_THROW(host.ServeUntilEnd(m), ProgramEnd);
  EXPECT_TRUE(stoppedBetween);
  EXPECT_GT(host.frames, framesAtPause + 2);
  EXPECT_TRUE(host.ClosedByUser());
}

TEST_F(Life, ClosingWithARunOnARun) {
  // Pause on and off within one pump: the second run lies on top of the first.
  int depth = 0;
  QTimer::singleShot(60, window, [&] {
    ++depth;
    window->Action("xS1")->trigger();
    window->Action("xS1")->trigger();
    --depth;
  });
  int depthAtClose = 0;
  QTimer::singleShot(200, window, [&] {
    depthAtClose = depth;
    window->close();
  });
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_EQ(depthAtClose, 1);
  EXPECT_TRUE(host.ClosedByUser());
}

TEST_F(Life, ClosingWhilePaused) {
  CloseAfter(20);
  EXPECT_THROW(host.ServeUntilEnd(m), ProgramEnd);
}

// The deck's counter follows the motor, ten times a second, whether the deck is seen or not.
TEST_F(Life, TimersOfFormsRunWhileTheMachineDoes) {
  m.MemImage.fill(0);  // no program that stops the motor
  m.PortShadow[5] = 0x40;
  CloseAfter(1050);
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_NEAR(std::stoi(m.ttape.Label1), 10, 2);
}

TEST_F(Life, TimersOfFormsRunWhileTheMachineStands) {
  m.PortShadow[5] = 0x40;
  CloseAfter(1050);
  EXPECT_THROW(host.ServeUntilEnd(m), ProgramEnd);
  EXPECT_NEAR(std::stoi(m.ttape.Label1), 10, 2);
  EXPECT_EQ(host.frames, 0);
}

TEST_F(Life, TimersOfFormsRunAtMaxSpeed) {
  m.screen.xS6 = true;
  m.MemImage.fill(0);
  m.PortShadow[5] = 0x40;
  CloseAfter(550);
  EXPECT_THROW(CPUmon_Command1_Click(m), ProgramEnd);
  EXPECT_NEAR(std::stoi(m.ttape.Label1), 5, 2);
}

TEST_F(Life, FramesAreEvenlySpread) {
  std::vector<QtHost::Clock::time_point> ends;
  host.atFrame = [&](Machine& running) {
    ends.push_back(QtHost::Clock::now());
    if (ends.size() == 51) running.run.CpuRunning = 0;
  };
  const uint32_t shownBefore = m.picture.shown;
  CPUmon_Command1_Click(m);
  const std::chrono::duration<double> all = ends.back() - ends.front();
  // A test may run beside others: the rate must hold, single frames may come late.
  EXPECT_NEAR(all.count(), 1.0, 0.1);
  EXPECT_GE(m.picture.shown - shownBefore, 45U);
}

TEST_F(Life, MaxDoesNotWait) {
  const auto start = QtHost::Clock::now();
  RunFrames(200);  // four seconds of the machine
  EXPECT_LT(QtHost::Clock::now() - start, std::chrono::seconds(3));
}

TEST(MessageBoxes, TitleTextAndIcon) {
  QtHost host;
  bool seen = false;
  QTimer::singleShot(50, [&seen] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    seen = true;
    EXPECT_EQ(box->text(), "What happened");
    EXPECT_EQ(box->windowTitle(), "Title");
    EXPECT_EQ(box->icon(), QMessageBox::Critical);
    box->accept();
  });
  host.MessageBox("What happened", "Title", MessageIcon::Stop);
  EXPECT_TRUE(seen);
}

TEST(Instances, OnlyOneHoldsTheLock) {
  QTemporaryDir folder;
  const std::string file = folder.filePath("lock").toStdString();
  {
    const SingleInstance first(file);
    EXPECT_FALSE(first.OtherRuns());
    EXPECT_TRUE(SingleInstance(file).OtherRuns());
  }
  EXPECT_FALSE(SingleInstance(file).OtherRuns());
  EXPECT_FALSE(SingleInstance(folder.filePath("no/such/folder").toStdString()).OtherRuns());
}

// The program itself, as a second process.
struct Program : QProcess {
  explicit Program(const QString& runtimeFolder) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_RUNTIME_DIR", runtimeFolder);
    setProcessEnvironment(environment);
    start(QUOLLEMU_PROGRAM, QStringList());
    waitForStarted();
  }
  ~Program() override {
    kill();
    waitForFinished();
  }
};

TEST(Instances, AKilledProcessLocksNobodyOut) {
  QTemporaryDir folder;
  const std::string lock = folder.filePath("quollemu-" + QString::number(getuid()) + ".lock").toStdString();
  {
    Program first(folder.path());
    // Until it holds the lock.
    for (int i = 0; i < 100 && !SingleInstance(lock).OtherRuns(); ++i) QTest::qWait(50);
    ASSERT_TRUE(SingleInstance(lock).OtherRuns());
    first.kill();  // no chance to tidy up
    first.waitForFinished();
  }
  EXPECT_TRUE(QFile::exists(QString::fromStdString(lock)));  // the file stays, the lock doesn't
  EXPECT_FALSE(SingleInstance(lock).OtherRuns());
  Program again(folder.path());
  for (int i = 0; i < 100 && !SingleInstance(lock).OtherRuns(); ++i) QTest::qWait(50);
  EXPECT_TRUE(SingleInstance(lock).OtherRuns());
  QTest::qWait(300);
  EXPECT_EQ(again.state(), QProcess::Running);
}

TEST(Instances, ASecondStartSaysSoAndEnds) {
  const RuntimeFolder folder;
  const SingleInstance first(SingleInstanceFile());
  ASSERT_FALSE(first.OtherRuns());
  TestHost host;
  EXPECT_EQ(Main(host), 1);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0],
            QApplication::applicationName().toStdString() + "|Application is already running!");
  EXPECT_EQ(host.lastIcon, MessageIcon::Stop);
  EXPECT_EQ(host.frames, 0);
}

// Notes what stands at the first pump, and closes the program after a few frames.
struct StartHost : TestHost {
  void Pump(Machine& m) override {
    if (pumps++ == 0) {
      windowFirst = messageParent != nullptr && messageParent->isVisible();
      caption = m.screen.window.caption;
      romAtFirst = m.MemImage[0x18000];
    }
    TestHost::Pump(m);
  }
  void FrameEnded(Machine& m) override {
    rom = m.MemImage[0x18000];
    running = m.run.CpuRunning;
    if (frames == 3) Close();
    TestHost::FrameEnded(m);
  }

  int pumps = 0;
  bool windowFirst = false;
  std::string caption;
  int romAtFirst = -1, rom = -1, running = -1;
};

TEST(Start, TheWindowStandsBeforeTheMachineDoes) {
  const RuntimeFolder folder;
  StartHost host;
  EXPECT_EQ(Main(host), 0);
  EXPECT_TRUE(host.windowFirst);
  EXPECT_EQ(host.caption, "QUOLLEMU");
  EXPECT_EQ(host.romAtFirst, 0);
  EXPECT_NE(host.rom, 0);
  EXPECT_EQ(host.running, 1);
  EXPECT_FALSE(SingleInstance(SingleInstanceFile()).OtherRuns());
}

}  // namespace
}  // namespace quoll
