#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include "cards/Serial.h"
#include "companion/Companion.h"
#include "companion/End.h"
#include "companion/PseudoTerminal.h"
#include "companion/test/TestLoop.h"

namespace quoll {
namespace {

using test::Pass;
using test::WaitFor;

QByteArray AllBytes() {
  QByteArray bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.append(static_cast<char>(byte));
  return bytes;
}

// The other side of a terminal, as a program that reads and writes it without setting anything.
class Terminal {
 public:
  explicit Terminal(const QString& name)
      : descriptor(open(name.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}
  ~Terminal() { close(descriptor); }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  void Write(const QByteArray& bytes) const {
    EXPECT_EQ(write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
  }
  QByteArray Read(qsizetype size) const {
    QByteArray got;
    WaitFor([&] {
      QByteArray piece(4096, 0);
      const ssize_t count = read(descriptor, piece.data(), static_cast<size_t>(piece.size()));
      if (count > 0) got.append(piece.constData(), count);
      return got.size() >= size;
    });
    return got;
  }

  int descriptor;
};

TEST(PseudoTerminalTest, EveryByteBothWays) {
  PseudoTerminal terminal;
  ASSERT_EQ(terminal.Make({}).toStdString(), "");
  EXPECT_TRUE(terminal.Name().startsWith(QLatin1String("/dev/pts/")));
  QByteArray nothing(10, 0);
  EXPECT_EQ(terminal.read(nothing.data(), 10), 0);
  // Written before anybody has opened the other side.
  EXPECT_EQ(terminal.write(AllBytes()), 256);
  const Terminal other(terminal.Name());
  EXPECT_EQ(other.Read(256), AllBytes());
  other.Write(AllBytes());
  EXPECT_EQ(terminal.read(1000), AllBytes());
}

TEST(PseudoTerminalTest, OtherSideMayComeAndGo) {
  PseudoTerminal terminal;
  ASSERT_EQ(terminal.Make({}).toStdString(), "");
  for (int time = 0; time < 3; ++time) {
    const Terminal other(terminal.Name());
    other.Write("\r\n\x03\x04\x11\x13");
    EXPECT_EQ(terminal.read(1000), "\r\n\x03\x04\x11\x13");
    EXPECT_EQ(terminal.write("\n\x1A"), 2);
    EXPECT_EQ(other.Read(2), "\n\x1A");
  }
}

TEST(PseudoTerminalTest, FullOneTakesNoMoreAndLosesNothing) {
  PseudoTerminal terminal;
  ASSERT_EQ(terminal.Make({}).toStdString(), "");
  qint64 total = 0;
  for (;;) {
    const qint64 put = terminal.write(QByteArray(1000, 'x'));
    ASSERT_GE(put, 0);
    if (put == 0) break;
    total += put;
    ASSERT_LT(total, 10'000'000);
  }
  EXPECT_EQ(Terminal(terminal.Name()).Read(total).size(), total);
}

TEST(PseudoTerminalTest, LinkLeadsToIt) {
  const QTemporaryDir folder;
  const QString link = folder.filePath("tty");
  PseudoTerminal first, second;
  ASSERT_EQ(first.Make(link).toStdString(), "");
  EXPECT_EQ(QFile::symLinkTarget(link), first.Name());
  ASSERT_EQ(second.Make(link).toStdString(), "");  // as after a killed companion
  EXPECT_EQ(QFile::symLinkTarget(link), second.Name());
  first.close();
  EXPECT_TRUE(QFileInfo(link).isSymLink());  // the second one's by now
  second.close();
  EXPECT_FALSE(QFileInfo(link).isSymLink());
}

TEST(PseudoTerminalTest, LinkNeverReplacesAFile) {
  const QTemporaryDir folder;
  QFile file(folder.filePath("kept"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  PseudoTerminal terminal;
  EXPECT_TRUE(terminal.Make(file.fileName()).startsWith(file.fileName()));
  EXPECT_FALSE(terminal.isOpen());
  EXPECT_TRUE(QFileInfo(file.fileName()).isFile());
  EXPECT_NE(terminal.Make(folder.filePath("no/folder")), "");
}

EndSettings Listen() {
  EndSettings settings;
  settings.kind = EndKind::TcpListen;
  return settings;
}

EndSettings Call(uint16_t port) {
  EndSettings settings;
  settings.kind = EndKind::TcpConnect;
  settings.tcpPort = port;
  return settings;
}

bool Ends(QTcpSocket& socket) {
  return WaitFor([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
}

TEST(TcpEnd, ListensAndServesOneAfterTheOther) {
  End end;
  ASSERT_EQ(end.Open(Listen()), "");
  EXPECT_EQ(end.Status(), QStringLiteral("waiting at 127.0.0.1:%1").arg(end.ListensAt()));
  EXPECT_EQ(end.Device(), nullptr);
  EXPECT_FALSE(end.Line().open);
  for (int time = 0; time < 3; ++time) {
    QTcpSocket caller;
    caller.connectToHost(QHostAddress::LocalHost, end.ListensAt());
    ASSERT_TRUE(WaitFor([&] { return end.Device() != nullptr; }));
    EXPECT_TRUE(end.Line().open);
    EXPECT_TRUE(end.Status().startsWith(QLatin1String("joined at ")));
    caller.write(AllBytes());
    ASSERT_TRUE(WaitFor([&] { return end.Device()->bytesAvailable() == 256; }));
    EXPECT_EQ(end.Device()->readAll(), AllBytes());
    end.Device()->write("back");
    ASSERT_TRUE(WaitFor([&] { return caller.bytesAvailable() == 4; }));
    caller.disconnectFromHost();
    ASSERT_TRUE(WaitFor([&] { return end.Device() == nullptr; }));
    EXPECT_TRUE(end.IsOpen());
  }
}

TEST(TcpEnd, SecondCallerIsTurnedAway) {
  End end;
  ASSERT_EQ(end.Open(Listen()), "");
  QTcpSocket first, second;
  first.connectToHost(QHostAddress::LocalHost, end.ListensAt());
  ASSERT_TRUE(WaitFor([&] { return end.Device() != nullptr; }));
  second.connectToHost(QHostAddress::LocalHost, end.ListensAt());
  EXPECT_TRUE(Ends(second));
  first.write("still here");
  EXPECT_TRUE(WaitFor([&] { return end.Device() != nullptr && end.Device()->bytesAvailable() == 10; }));
}

TEST(TcpEnd, CallsUntilSomebodyAnswersAndAgainAfterwards) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const uint16_t port = server.serverPort();
  server.close();
  End end;
  ASSERT_EQ(end.Open(Call(port)), "");
  Pass(200);
  EXPECT_TRUE(end.IsOpen());
  EXPECT_EQ(end.Device(), nullptr);
  EXPECT_EQ(end.Status(), QStringLiteral("calling 127.0.0.1:%1").arg(port));
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost, port));
  for (int time = 0; time < 2; ++time) {
    ASSERT_TRUE(WaitFor([&] { return end.Device() != nullptr; }));
    ASSERT_TRUE(WaitFor([&] { return server.hasPendingConnections(); }));
    delete server.nextPendingConnection();
    ASSERT_TRUE(WaitFor([&] { return end.Device() == nullptr; }));
  }
}

TEST(TcpEnd, OnlyThisComputer) {
  for (EndSettings settings : {Listen(), Call(80)}) {
    settings.address = QHostAddress(QStringLiteral("0.0.0.0"));
    End end;
    end.Open(settings);
    EXPECT_EQ(end.Device(), nullptr);
    EXPECT_EQ(end.ListensAt(), 0);
    EXPECT_EQ(end.IsOpen(), settings.kind == EndKind::TcpConnect);
  }
}

TEST(TcpEnd, TakenPlaceIsTold) {
  End first, second;
  ASSERT_EQ(first.Open(Listen()), "");
  EndSettings same = Listen();
  same.tcpPort = first.ListensAt();
  const QString error = second.Open(same);
  EXPECT_TRUE(error.startsWith(QStringLiteral("127.0.0.1:%1: ").arg(same.tcpPort))) << error.toStdString();
  EXPECT_EQ(second.Status(), error);
  EXPECT_FALSE(second.IsOpen());
}

TEST(SerialPortEnd, MissingOneIsTold) {
  EndSettings settings;
  settings.kind = EndKind::SerialPort;
  settings.port = QStringLiteral("/dev/no-such-port");
  End end;
  EXPECT_TRUE(end.Open(settings).startsWith(settings.port));
  EXPECT_FALSE(end.IsOpen());
}

// A terminal stands in for a port: it takes the settings of one.
TEST(SerialPortEnd, BytesAndLineOfAPort) {
  PseudoTerminal wire;
  ASSERT_EQ(wire.Make({}).toStdString(), "");
  EndSettings settings;
  settings.kind = EndKind::SerialPort;
  settings.port = wire.Name();
  settings.line = {true, 1200, 8, Parity::None, 4};
  End end;
  ASSERT_EQ(end.Open(settings).toStdString(), "");
  EXPECT_EQ(end.Line(), settings.line);
  EXPECT_EQ(end.Status(), wire.Name());
  wire.write(AllBytes());
  ASSERT_TRUE(WaitFor([&] { return end.Device()->bytesAvailable() == 256; }));
  EXPECT_EQ(end.Device()->readAll(), AllBytes());
  end.Device()->write(AllBytes());
  QByteArray got;
  EXPECT_TRUE(WaitFor([&] {
    got += wire.read(1000);
    return got.size() >= 256;
  }));
  EXPECT_EQ(got, AllBytes());
  end.Close();
  EXPECT_EQ(end.Line(), SerialLine{});
}

class CompanionEngine : public testing::Test {
 protected:
  CompanionEngine() { machine.CreateMap(map, 535); }

  SerialView Record() { return SerialView(machine.MapView, kSerialMapSize); }

  const std::string map = "test-" + std::to_string(getpid()) + "-engine";
  MMapper machine;
  Serial serial;
};

TEST_F(CompanionEngine, SleepsUntilSomebodyIsThere) {
  Companion companion(map);
  EXPECT_TRUE(companion.Sleeps());
  ASSERT_EQ(companion.Open(Listen()), "");
  EXPECT_TRUE(companion.Sleeps());
  EXPECT_FALSE(ReadLine(Record()).open);
  QTcpSocket caller;
  caller.connectToHost(QHostAddress::LocalHost, companion.Port().ListensAt());
  ASSERT_TRUE(WaitFor([&] { return !companion.Sleeps(); }));
  EXPECT_TRUE(ReadLine(Record()).open);
  caller.disconnectFromHost();
  ASSERT_TRUE(WaitFor([&] { return companion.Sleeps(); }));
  EXPECT_FALSE(ReadLine(Record()).open);
}

TEST_F(CompanionEngine, LeavesTheBytesWhileNoPortIsOpen) {
  Companion companion(map);
  serial.SerialTx = {'h', 'i'};
  SerialExchange(serial, Record());
  Pass(100);
  EXPECT_EQ(Record()[kToCompanion.count], 2);
  ASSERT_EQ(companion.Open({}), "");
  const Terminal other(companion.Port().Status());
  EXPECT_EQ(other.Read(2), "hi");
}

TEST_F(CompanionEngine, TellsTheLineAndThatItIsClosed) {
  PseudoTerminal wire;
  ASSERT_EQ(wire.Make({}).toStdString(), "");
  Record()[514] = 1;  // of a companion that was killed
  {
    Companion companion(map);
    EXPECT_FALSE(ReadLine(Record()).open);
    EndSettings settings;
    settings.kind = EndKind::SerialPort;
    settings.port = wire.Name();
    settings.line.baud = 300;
    ASSERT_EQ(companion.Open(settings).toStdString(), "");
    EXPECT_EQ(ReadLine(Record()), (SerialLine{true, 300, 8, Parity::None, 2}));
  }
  EXPECT_EQ(ReadLine(Record()), SerialLine{});
}

// What a caller has sent before he hangs up arrives, however slow the machine is.
TEST_F(CompanionEngine, CallerThatHangsUpAtOnceIsHeardToTheEnd) {
  Companion companion(map);
  ASSERT_EQ(companion.Open(Listen()), "");
  QByteArray sent;
  for (int i = 0; i < 20'000; ++i) sent.append(static_cast<char>(i % 251));
  QTcpSocket caller;
  caller.connectToHost(QHostAddress::LocalHost, companion.Port().ListensAt());
  ASSERT_TRUE(caller.waitForConnected());
  caller.write(sent);
  caller.disconnectFromHost();
  ASSERT_TRUE(Ends(caller));
  EXPECT_TRUE(WaitFor([&] {
    SerialExchange(serial, Record());
    return serial.SerialRx.size() == static_cast<size_t>(sent.size());
  }));
  EXPECT_TRUE(std::equal(serial.SerialRx.begin(), serial.SerialRx.end(), sent.begin(), sent.end(),
                         [](uint8_t a, char b) { return a == static_cast<uint8_t>(b); }));
  EXPECT_TRUE(WaitFor([&] { return companion.Sleeps(); }));
}

}  // namespace
}  // namespace quoll
