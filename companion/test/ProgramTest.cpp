// The program itself: how it starts, sleeps and ends, and that bytes survive it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <csignal>
#include <fstream>
#include <string>

#include "cards/Companion.h"
#include "cards/Serial.h"
#include "cards/SharedMemory.h"
#include "cards/test/Victim.h"
#include "companion/test/TestLoop.h"

namespace quoll {
namespace {

using test::Pass;
using test::WaitFor;

std::string Map(const std::string& name) { return "test-" + std::to_string(getpid()) + "-" + name; }

// A stream in which no part looks like another one nearby.
std::vector<uint8_t> Stream(size_t size, uint32_t seed) {
  std::vector<uint8_t> bytes(size);
  for (uint8_t& byte : bytes) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<uint8_t>(seed >> 24);
  }
  return bytes;
}

// The machine's side: the card and its memory.
struct Card {
  explicit Card(const std::string& name) { memory.CreateMap(name, kSerialMapName.size); }

  void Exchange() { SerialExchange(serial, SerialView(memory.MapView, kSerialMapSize)); }
  std::vector<uint8_t> Received() const { return {serial.SerialRx.begin(), serial.SerialRx.end()}; }

  MMapper memory;
  Serial serial;
};

// A companion in its own process.
class Program {
 public:
  Program(const std::string& map, QStringList arguments) {
    arguments.prepend(QString::fromStdString(map));
    arguments.prepend(QStringLiteral("--map"));
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(QStringLiteral(QUOLLSERIAL_PROGRAM), arguments);
    EXPECT_TRUE(process.waitForStarted());
  }
  ~Program() { Kill(); }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // The next line that it tells.
  QString Line() {
    WaitFor([this] { return process.canReadLine(); });
    return QString::fromUtf8(process.readLine()).trimmed();
  }
  void Kill() {
    if (process.state() == QProcess::NotRunning) return;
    process.kill();  // SIGKILL
    process.waitForFinished();
  }
  bool Ends() {
    return WaitFor([this] { return process.state() == QProcess::NotRunning; });
  }
  QString Error() { return QString::fromUtf8(process.readAllStandardError()).trimmed(); }

  QProcess process;
};

// The last word of "waiting at 127.0.0.1:4000" and the like.
QString Place(const QString& line) { return line.section(QLatin1Char(' '), -1); }

TEST(CompanionProgram, PseudoTerminalEndsWithInput) {
  const std::string map = Map("pty");
  Program program(map, {"--headless", "--pty", "--end-with-input"});
  const QString name = program.Line();
  EXPECT_TRUE(name.startsWith(QLatin1String("/dev/pts/"))) << name.toStdString();
  EXPECT_TRUE(QFile::exists(name));
  EXPECT_TRUE(CompanionRuns(map));
  program.process.write("this means nothing\n");
  Pass(100);
  EXPECT_EQ(program.process.state(), QProcess::Running);
  program.process.closeWriteChannel();
  EXPECT_TRUE(program.Ends());
  EXPECT_EQ(program.process.exitCode(), 0);
  EXPECT_FALSE(CompanionRuns(map));
}

TEST(CompanionProgram, EndsInOrderWhenAskedTo) {
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    const Card card(Map("ends"));
    Program program(Map("ends"), {"--headless", "--pty"});
    program.Line();
    EXPECT_TRUE(ReadLine(SerialView(card.memory.MapView, kSerialMapSize)).open);
    ASSERT_GT(program.process.processId(), 0);
    kill(static_cast<pid_t>(program.process.processId()), number);
    EXPECT_TRUE(program.Ends());
    EXPECT_EQ(program.process.exitStatus(), QProcess::NormalExit);
    EXPECT_FALSE(ReadLine(SerialView(card.memory.MapView, kSerialMapSize)).open);
  }
}

// A terminal whose other side goes is what a serial port is that is pulled out: reads give nothing for ever.
TEST(CompanionProgram, APortThatIsGoneIsTold) {
  const int other = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_GE(other, 0);
  ASSERT_EQ(grantpt(other), 0);
  ASSERT_EQ(unlockpt(other), 0);
  const QString port = QString::fromLocal8Bit(ptsname(other));
  Program program(Map("gone"), {"--headless", "--port", port});
  EXPECT_EQ(program.Line(), port);
  close(other);
  EXPECT_TRUE(program.Ends());
  EXPECT_EQ(program.process.exitCode(), 1);
  EXPECT_TRUE(program.Error().startsWith(QLatin1String("QUOLLserial: ") + port))
      << program.Error().toStdString();
}

TEST(CompanionProgram, SecondOneGivesWay) {
  const std::string map = Map("second");
  Program first(map, {"--headless", "--pty"});
  first.Line();
  Program second(map, {"--headless", "--pty"});
  EXPECT_TRUE(second.Ends());
  EXPECT_EQ(second.process.exitCode(), 1);
  EXPECT_TRUE(second.Error().contains(QLatin1String("another one runs")));
  Program byHand(map, {});  // asks the first one for its window
  EXPECT_TRUE(byHand.Ends());
  EXPECT_EQ(byHand.process.exitCode(), 0);
  EXPECT_EQ(first.process.state(), QProcess::Running);
  Program other(Map("third"), {"--headless", "--pty"});  // serves another machine
  EXPECT_TRUE(other.Line().startsWith(QLatin1String("/dev/pts/")));
}

TEST(CompanionProgram, FailuresHaveAnExitStatus) {
  Program missing(Map("missing"), {"--headless", "--port", "/dev/no-such-port"});
  EXPECT_TRUE(missing.Ends());
  EXPECT_EQ(missing.process.exitCode(), 1);
  EXPECT_TRUE(missing.Error().contains(QLatin1String("/dev/no-such-port")));
  Program wrong(Map("wrong"), {"--headless", "--tcp", "8.8.8.8:53"});
  EXPECT_TRUE(wrong.Ends());
  EXPECT_EQ(wrong.process.exitCode(), 2);
}

// How often a process has gone to sleep so far.
long Sleeps(qint64 process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("voluntary_ctxt_switches:", 0) == 0) return std::stol(line.substr(line.find(':') + 1));
  }
  return -1;
}

// With nobody at the other side it wakes up once a second at most, with a window or without one.
TEST(CompanionProgram, SleepsWhileNothingIsJoined) {
  const QStringList kinds[] = {{"--headless", "--tcp-listen", "0"}, {"--minimised"}, {}};
  for (const QStringList& arguments : kinds) {
    const std::string map = Map("sleeps");
    Program program(map, arguments);
    ASSERT_TRUE(WaitFor([&] { return CompanionRuns(map); }));
    Pass(1500);  // has started
    const long before = Sleeps(program.process.processId());
    ASSERT_GT(before, 0);
    Pass(3000);
    EXPECT_LE(Sleeps(program.process.processId()) - before, 3) << arguments.join(' ').toStdString();
  }
}

TEST(CompanionProgram, RequestsAreServedByTheOneWithAWindow) {
  const std::string map = Map("window");
  Program program(map, {"--minimised", "--pty", "--end-with-input"});
  const Card card(map);
  const auto open = [&] { return ReadLine(SerialView(card.memory.MapView, kSerialMapSize)).open; };
  ASSERT_TRUE(WaitFor(open));
  EXPECT_TRUE(AskCompanion(map, CompanionRequest::Show));
  EXPECT_TRUE(AskCompanion(map, CompanionRequest::Close));
  EXPECT_TRUE(WaitFor([&] { return !open(); }));
  EXPECT_TRUE(AskCompanion(map, CompanionRequest::Show));
  EXPECT_EQ(program.process.state(), QProcess::Running);
}

TEST(CompanionProgram, TwoMachinesTalkByTcp) {
  constexpr size_t kLength = 100'000;
  Card first(Map("first")), second(Map("other"));
  Program listens(Map("first"), {"--headless", "--tcp-listen", "0"});
  const QString place = Place(listens.Line());
  Program calls(Map("other"), {"--headless", "--tcp", place});
  const auto there = Stream(kLength, 1);
  const auto back = Stream(kLength, 2);
  SerialSend(first.serial, there);
  SerialSend(second.serial, back);
  EXPECT_TRUE(WaitFor(
      [&] {
        first.Exchange();
        second.Exchange();
        return first.serial.SerialRx.size() == kLength && second.serial.SerialRx.size() == kLength;
      },
      60'000));
  EXPECT_EQ(second.Received(), there);
  EXPECT_EQ(first.Received(), back);
}

// The other side of a TCP line that the program calls.
struct Called {
  Called() { EXPECT_TRUE(server.listen(QHostAddress::LocalHost)); }
  QStringList Arguments() const { return {"--headless", "--tcp", QString::number(server.serverPort())}; }
  std::unique_ptr<QTcpSocket> Next() {
    EXPECT_TRUE(WaitFor([this] { return server.hasPendingConnections(); }));
    return std::unique_ptr<QTcpSocket>(server.nextPendingConnection());
  }

  QTcpServer server;
};

// Everything that a socket gives until its other side has gone.
std::vector<uint8_t> ReadAll(QTcpSocket& socket) {
  const QByteArray bytes = socket.readAll();
  return {bytes.begin(), bytes.end()};
}

// Killed while it sends: what is missing is less than what it can hold. The next one goes on.
TEST(CompanionProgram, KilledWhileTheMachineSends) {
  constexpr size_t kLength = 100'000;
  const std::string map = Map("killed");
  Card card(map);
  Called called;
  const auto stream = Stream(kLength, 3);
  SerialSend(card.serial, stream);
  std::vector<uint8_t> parts[2];
  for (int part = 0; part < 2; ++part) {
    Program program(map, called.Arguments());
    const auto socket = called.Next();
    ASSERT_NE(socket, nullptr);
    ASSERT_TRUE(WaitFor(
        [&] {
          card.Exchange();
          const bool sent = card.serial.SerialTx.empty() &&
                            LaneIsFree(SerialView(card.memory.MapView, kSerialMapSize), kToCompanion);
          return part == 0 ? socket->bytesAvailable() > 40'000 : sent;
        },
        60'000));
    if (part == 1) Pass(300);
    program.Kill();
    ASSERT_TRUE(WaitFor([&] { return socket->state() == QAbstractSocket::UnconnectedState; }));
    parts[part] = ReadAll(*socket);
  }
  ASSERT_GT(parts[0].size(), 40'000U);
  ASSERT_LE(parts[0].size() + parts[1].size(), kLength);
  EXPECT_LE(kLength - parts[0].size() - parts[1].size(), 255U);
  EXPECT_TRUE(std::equal(parts[0].begin(), parts[0].end(), stream.begin()));
  EXPECT_TRUE(std::equal(parts[1].begin(), parts[1].end(), stream.end() - parts[1].size()));
}

// Killed while it has nothing in hand: nothing at all is missing, in either direction.
TEST(CompanionProgram, KilledBetweenTwoHalves) {
  constexpr size_t kHalf = 50'000;
  const std::string map = Map("halves");
  Card card(map);
  Called called;
  const auto out = Stream(2 * kHalf, 4);
  const auto in = Stream(2 * kHalf, 5);
  std::vector<uint8_t> got;
  for (size_t half = 0; half < 2; ++half) {
    Program program(map, called.Arguments());
    const auto socket = called.Next();
    ASSERT_NE(socket, nullptr);
    SerialSend(card.serial, std::span(out).subspan(half * kHalf, kHalf));
    socket->write(reinterpret_cast<const char*>(in.data()) + half * kHalf, kHalf);
    ASSERT_TRUE(WaitFor(
        [&] {
          card.Exchange();
          return card.serial.SerialRx.size() == (half + 1) * kHalf && socket->bytesAvailable() == kHalf;
        },
        60'000));
    const auto more = ReadAll(*socket);
    got.insert(got.end(), more.begin(), more.end());
    if (half == 0) {
      program.Kill();
    }
  }
  EXPECT_EQ(got, out);
  EXPECT_EQ(card.Received(), in);
}

// Started as the machine starts it: ends with its owner, even with one that is killed.
TEST(CompanionProgram, EndsWithTheProgramThatStartedIt) {
  const std::string map = Map("owned");
  const QString program = QStringLiteral(QUOLLSERIAL_PROGRAM);
  const std::string folder = program.section(QLatin1Char('/'), 0, -2).toStdString();
  test::Victim owner([&] {
    static CompanionProcess companion;
    if (!companion.Start(folder, map).empty()) _exit(1);
  });
  EXPECT_TRUE(WaitFor([&] { return CompanionRuns(map); }));
  owner.Kill();
  EXPECT_TRUE(WaitFor([&] { return !CompanionRuns(map); }));
}

}  // namespace
}  // namespace quoll
