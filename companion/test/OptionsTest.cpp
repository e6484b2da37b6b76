#include <gtest/gtest.h>

#include "companion/Options.h"

namespace quoll {
namespace {

OptionsRead Read(const QString& line) {
  return ReadOptions((QStringLiteral("QUOLLserial ") + line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(TcpPlace, TextsOfThisComputer) {
  struct Row {
    const char* text;
    const char* place;  // null: refused
  };
  for (const Row& row :
       {Row{"4000", "127.0.0.1:4000"}, Row{"localhost:4000", "127.0.0.1:4000"},
        Row{" LOCALHOST:1 ", "127.0.0.1:1"}, Row{"127.0.0.1:65535", "127.0.0.1:65535"},
        Row{"127.1.2.3:80", "127.1.2.3:80"}, Row{"[::1]:4000", "[::1]:4000"}, Row{":4000", "127.0.0.1:4000"},
        Row{"0", "127.0.0.1:0"},
        // not this computer alone
        Row{"0.0.0.0:4000", nullptr}, Row{"[::]:4000", nullptr}, Row{"192.168.1.1:80", nullptr},
        Row{"example.org:80", nullptr}, Row{"128.0.0.1:80", nullptr},
        // no places
        Row{"", nullptr}, Row{"localhost", nullptr}, Row{"65536", nullptr}, Row{"-1", nullptr},
        Row{"127.0.0.1:", nullptr}, Row{"::1:4000", nullptr}, Row{"4000x", nullptr}}) {
    const auto place = ParseTcpPlace(QString::fromLatin1(row.text));
    ASSERT_EQ(place.has_value(), row.place != nullptr) << row.text;
    if (!place) continue;
    EXPECT_EQ(TcpPlaceText(place->address, place->port).toStdString(), row.place);
  }
}

TEST(Options, MemoryAndWindow) {
  const struct {
    const char* text;
    const char* map;
    bool minimised, endWithInput;
  } rows[] = {
      {"", "MMRS232", false, false},
      {"--map M2 --end-with-input --minimised", "M2", true, true},  // as the emulator starts it
  };
  for (const auto& row : rows) {
    const OptionsRead read = Read(row.text);
    EXPECT_TRUE(read.error.isEmpty());
    EXPECT_EQ(read.options.map, row.map);
    EXPECT_EQ(read.options.minimised, row.minimised);
    EXPECT_EQ(read.options.endWithInput, row.endWithInput);
    EXPECT_FALSE(read.options.headless);
    EXPECT_FALSE(read.options.port);
  }
}

TEST(Options, SerialPort) {
  const OptionsRead plain = Read("--port ttyS0");
  ASSERT_TRUE(plain.options.port);
  EXPECT_EQ(plain.options.port->kind, EndKind::SerialPort);
  EXPECT_EQ(plain.options.port->port, "ttyS0");
  EXPECT_EQ(plain.options.port->line, (SerialLine{true, 9600, 8, Parity::None, 2}));
  struct Row {
    const char* text;
    SerialLine line;
  };
  for (const Row& row :
       {Row{"--speed 300 --bits 7 --parity even --stop 2", {true, 300, 7, Parity::Even, 4}},
        Row{"--speed 115200 --bits 5 --parity odd --stop 1.5", {true, 115200, 5, Parity::Odd, 3}},
        Row{"--bits 6 --parity mark --stop 1", {true, 9600, 6, Parity::Mark, 2}},
        Row{"--parity space", {true, 9600, 8, Parity::Space, 2}}}) {
    const OptionsRead read = Read(QStringLiteral("--port x ") + QString::fromLatin1(row.text));
    ASSERT_TRUE(read.options.port) << row.text;
    EXPECT_TRUE(read.error.isEmpty());
    EXPECT_EQ(read.options.port->line, row.line) << row.text;
  }
}

TEST(Options, OtherPorts) {
  const OptionsRead pty = Read("--headless --pty --link /tmp/tty");
  ASSERT_TRUE(pty.options.port);
  EXPECT_TRUE(pty.options.headless);
  EXPECT_EQ(pty.options.port->kind, EndKind::PseudoTerminal);
  EXPECT_EQ(pty.options.port->link, "/tmp/tty");
  const OptionsRead listen = Read("--tcp-listen 4001");
  ASSERT_TRUE(listen.options.port);
  EXPECT_EQ(listen.options.port->kind, EndKind::TcpListen);
  EXPECT_EQ(listen.options.port->tcpPort, 4001);
  const OptionsRead call = Read("--tcp [::1]:4002");
  ASSERT_TRUE(call.options.port);
  EXPECT_EQ(call.options.port->kind, EndKind::TcpConnect);
  EXPECT_EQ(call.options.port->address, QHostAddress(QHostAddress::LocalHostIPv6));
  EXPECT_EQ(call.options.port->tcpPort, 4002);
}

TEST(Options, BadOnesAreTold) {
  struct Row {
    const char* line;
    const char* error;
  };
  for (const Row& row :
       {Row{"--port x --speed 0", "--speed: bad value '0'"},
        Row{"--port x --speed 10000001", "--speed: bad value '10000001'"},
        Row{"--port x --bits 4", "--bits: bad value '4'"}, Row{"--port x --bits 9", "--bits: bad value '9'"},
        Row{"--port x --parity both", "--parity: bad value 'both'"},
        Row{"--port x --stop 3", "--stop: bad value '3'"},
        Row{"--tcp 10.0.0.1:1", "--tcp: bad value '10.0.0.1:1'"},
        Row{"--tcp-listen x", "--tcp-listen: bad value 'x'"},
        Row{"--pty --tcp 1", "only one of --port, --pty, --tcp-listen and --tcp"},
        Row{"--headless", "--headless needs --port, --pty, --tcp-listen or --tcp"},
        Row{"word", "unknown argument 'word'"}}) {
    EXPECT_EQ(Read(QString::fromLatin1(row.line)).error.toStdString(), row.error);
  }
  EXPECT_FALSE(Read("--nonsense").error.isEmpty());
  EXPECT_FALSE(Read("--map").error.isEmpty());
}

TEST(Options, HelpNamesEveryOption) {
  const QString help = Read("--help").help;
  for (const char* option : {"--map", "--headless", "--minimised", "--end-with-input", "--port", "--speed",
                             "--bits", "--parity", "--stop", "--pty", "--link", "--tcp-listen", "--tcp"}) {
    EXPECT_TRUE(help.contains(QLatin1String(option))) << option;
  }
}

}  // namespace
}  // namespace quoll
