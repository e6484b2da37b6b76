#include "companion/Options.h"

#include <QCommandLineParser>
#include <array>

#include "cards/SharedMemory.h"

namespace quoll {

namespace {

const QString kMap = QStringLiteral("map");
const QString kHeadless = QStringLiteral("headless");
const QString kMinimised = QStringLiteral("minimised");
const QString kEndWithInput = QStringLiteral("end-with-input");
const QString kPort = QStringLiteral("port");
const QString kSpeed = QStringLiteral("speed");
const QString kBits = QStringLiteral("bits");
const QString kParity = QStringLiteral("parity");
const QString kStop = QStringLiteral("stop");
const QString kPty = QStringLiteral("pty");
const QString kLink = QStringLiteral("link");
const QString kTcpListen = QStringLiteral("tcp-listen");
const QString kTcp = QStringLiteral("tcp");

void Declare(QCommandLineParser& parser) {
  parser.setApplicationDescription(
      QStringLiteral("Joins the serial card of the emulated machine to a serial port, a pseudo terminal or a "
                     "TCP address on this computer."));
  parser.addHelpOption();
  const QString defaultMap = QString::fromUtf8(kSerialMapName.name.data());
  parser.addOptions({
      {kMap, QStringLiteral("Shared memory of the machine."), QStringLiteral("name"), defaultMap},
      {kHeadless, QStringLiteral("No window; what happens is told on standard output.")},
      {kMinimised, QStringLiteral("The window is minimised until it is asked for.")},
      {kEndWithInput, QStringLiteral("End when standard input ends.")},
      {kPort, QStringLiteral("Open a serial port."), QStringLiteral("name")},
      {kSpeed, QStringLiteral("Its bits a second."), QStringLiteral("number"), QStringLiteral("9600")},
      {kBits, QStringLiteral("Its data bits, 5 to 8."), QStringLiteral("number"), QStringLiteral("8")},
      {kParity, QStringLiteral("none, even, odd, mark or space."), QStringLiteral("name"),
       QStringLiteral("none")},
      {kStop, QStringLiteral("Its stop bits, 1, 1.5 or 2."), QStringLiteral("number"), QStringLiteral("1")},
      {kPty, QStringLiteral("Open a new pseudo terminal.")},
      {kLink, QStringLiteral("Symbolic link that leads to it."), QStringLiteral("file")},
      {kTcpListen, QStringLiteral("Wait for a call at [address:]port."), QStringLiteral("place")},
      {kTcp, QStringLiteral("Call [address:]port."), QStringLiteral("place")},
  });
}

QString Bad(const QCommandLineParser& parser, const QString& option) {
  return QStringLiteral("--%1: bad value '%2'").arg(option, parser.value(option));
}

// The place of a word in a list, or -1.
template <size_t kCount>
int PlaceOf(const QString& word, const std::array<const char*, kCount>& words) {
  for (size_t i = 0; i < kCount; ++i) {
    if (word == QLatin1String(words[i])) return static_cast<int>(i);
  }
  return -1;
}

// The option whose value is bad; empty when all are good.
QString ReadLineOptions(const QCommandLineParser& parser, SerialLine& line) {
  constexpr uint kFastest = 10'000'000;
  constexpr std::array kParities = {"none", "even", "odd", "mark", "space"};
  constexpr std::array kStops = {"1", "1.5", "2"};
  line.baud = parser.value(kSpeed).toUInt();
  if (line.baud == 0 || line.baud > kFastest) return kSpeed;
  const uint bits = parser.value(kBits).toUInt();
  if (bits < 5 || bits > 8) return kBits;
  line.dataBits = static_cast<uint8_t>(bits);
  const int parity = PlaceOf(parser.value(kParity), kParities);
  if (parity < 0) return kParity;
  line.parity = static_cast<Parity>(parity);
  const int stop = PlaceOf(parser.value(kStop), kStops);
  if (stop < 0) return kStop;
  line.halfStopBits = static_cast<uint8_t>(2 + stop);
  return {};
}

// The option whose value is bad; empty when all are good.
QString ReadPort(const QCommandLineParser& parser, EndSettings& settings) {
  settings.port = parser.value(kPort);
  settings.link = parser.value(kLink);
  QString bad = ReadLineOptions(parser, settings.line);
  if (!bad.isEmpty()) return bad;
  if (parser.isSet(kPort)) {
    settings.kind = EndKind::SerialPort;
  } else if (parser.isSet(kPty)) {
    settings.kind = EndKind::PseudoTerminal;
  } else {
    const bool listens = parser.isSet(kTcpListen);
    QString option = listens ? kTcpListen : kTcp;
    const auto place = ParseTcpPlace(parser.value(option));
    if (!place) return option;
    settings.kind = listens ? EndKind::TcpListen : EndKind::TcpConnect;
    settings.address = place->address;
    settings.tcpPort = place->port;
  }
  return {};
}

}  // namespace

OptionsRead ReadOptions(const QStringList& arguments) {
  QCommandLineParser parser;
  Declare(parser);
  OptionsRead read;
  if (!parser.parse(arguments)) {
    read.error = parser.errorText();
    return read;
  }
  if (parser.isSet(QStringLiteral("help"))) {
    read.help = parser.helpText();
    return read;
  }
  Options& options = read.options;
  options.map = parser.value(kMap).toStdString();
  options.headless = parser.isSet(kHeadless);
  options.minimised = parser.isSet(kMinimised);
  options.endWithInput = parser.isSet(kEndWithInput);
  int ports = 0;
  for (const QString& option : {kPort, kPty, kTcpListen, kTcp}) ports += parser.isSet(option) ? 1 : 0;
  if (ports == 1) {
    EndSettings settings;
    const QString bad = ReadPort(parser, settings);
    if (!bad.isEmpty()) read.error = Bad(parser, bad);
    options.port = settings;
  }
  if (!parser.positionalArguments().isEmpty()) {
    read.error = QStringLiteral("unknown argument '%1'").arg(parser.positionalArguments().constFirst());
  } else if (ports > 1) {
    read.error = QStringLiteral("only one of --port, --pty, --tcp-listen and --tcp");
  } else if (ports == 0 && options.headless) {
    read.error = QStringLiteral("--headless needs --port, --pty, --tcp-listen or --tcp");
  }
  return read;
}

}  // namespace quoll
