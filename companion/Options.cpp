#include "companion/Options.h"

#include <QCommandLineParser>
#include <array>

#include "cards/SharedMemory.h"

namespace quoll {

namespace {

enum class Word {
  Map,
  Headless,
  Minimised,
  EndWithInput,
  Port,
  Speed,
  Bits,
  Parity,
  Stop,
  Pty,
  Link,
  TcpListen,
  Tcp
};

struct Option {
  const char* name;
  const char* text;
  const char* value = nullptr;  // what stands behind it; nullptr for nothing
  const char* first = nullptr;  // its value where it is left out
};

// In the order of the words, and of the help.
constexpr std::array<Option, 13> kOptions{{
    {"map", "Shared memory of the machine.", "name", kSerialMapName.name.data()},
    {"headless", "No window; what happens is told on standard output."},
    {"minimised", "The window is out of the way until it is asked for."},
    {"end-with-input", "End when standard input ends."},
    {"port", "Open a serial port.", "name"},
    {"speed", "Its bits a second.", "number", "9600"},
    {"bits", "Its data bits, 5 to 8.", "number", "8"},
    {"parity", "none, even, odd, mark or space.", "name", "none"},
    {"stop", "Its stop bits, 1, 1.5 or 2.", "number", "1"},
    {"pty", "Open a new pseudo terminal."},
    {"link", "Symbolic link that leads to it.", "file"},
    {"tcp-listen", "Wait for a call at [address:]port.", "place"},
    {"tcp", "Call [address:]port.", "place"},
}};

QString Name(Word word) { return QString::fromUtf8(kOptions[static_cast<size_t>(word)].name); }

// What the arguments say.
struct Said {
  QCommandLineParser parser;

  bool Has(Word word) const { return parser.isSet(Name(word)); }
  QString Value(Word word) const { return parser.value(Name(word)); }
};

void Declare(QCommandLineParser& parser) {
  parser.setApplicationDescription(
      QStringLiteral("Joins the serial card of the emulated machine to a serial port, a pseudo terminal or a "
                     "TCP address on this computer."));
  parser.addHelpOption();
  for (const Option& option : kOptions) {
    QCommandLineOption declared(QString::fromUtf8(option.name), QString::fromUtf8(option.text),
                                QString::fromUtf8(option.value));
    if (option.first != nullptr) declared.setDefaultValue(QString::fromUtf8(option.first));
    parser.addOption(declared);
  }
}

QString Bad(const Said& said, Word word) {
  return QStringLiteral("--%1: bad value '%2'").arg(Name(word), said.Value(word));
}

// The place of a word in a list, or -1.
template <size_t kCount>
int PlaceOf(const QString& word, const std::array<const char*, kCount>& words) {
  for (size_t i = 0; i < kCount; ++i) {
    if (word == QLatin1String(words[i])) return static_cast<int>(i);
  }
  return -1;
}

// The option whose value is bad; nothing when all are good.
std::optional<Word> ReadLineOptions(const Said& said, SerialLine& line) {
  constexpr uint kFastest = 10'000'000;
  constexpr std::array kParities = {"none", "even", "odd", "mark", "space"};
  constexpr std::array kStops = {"1", "1.5", "2"};
  line.baud = said.Value(Word::Speed).toUInt();
  if (line.baud == 0 || line.baud > kFastest) return Word::Speed;
  const uint bits = said.Value(Word::Bits).toUInt();
  if (bits < 5 || bits > 8) return Word::Bits;
  line.dataBits = static_cast<uint8_t>(bits);
  const int parity = PlaceOf(said.Value(Word::Parity), kParities);
  if (parity < 0) return Word::Parity;
  line.parity = static_cast<Parity>(parity);
  const int stop = PlaceOf(said.Value(Word::Stop), kStops);
  if (stop < 0) return Word::Stop;
  line.halfStopBits = static_cast<uint8_t>(2 + stop);
  return {};
}

// The same.
std::optional<Word> ReadPort(const Said& said, EndSettings& settings) {
  settings.port = said.Value(Word::Port);
  settings.link = said.Value(Word::Link);
  if (const auto bad = ReadLineOptions(said, settings.line)) return bad;
  if (said.Has(Word::Port)) {
    settings.kind = EndKind::SerialPort;
  } else if (said.Has(Word::Pty)) {
    settings.kind = EndKind::PseudoTerminal;
  } else {
    const bool listens = said.Has(Word::TcpListen);
    const Word word = listens ? Word::TcpListen : Word::Tcp;
    const auto place = ParseTcpPlace(said.Value(word));
    if (!place) return word;
    settings.kind = listens ? EndKind::TcpListen : EndKind::TcpConnect;
    settings.address = place->address;
    settings.tcpPort = place->port;
  }
  return {};
}

}  // namespace

OptionsRead ReadOptions(const QStringList& arguments) {
  Said said;
  QCommandLineParser& parser = said.parser;
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
  options.map = said.Value(Word::Map).toStdString();
  options.headless = said.Has(Word::Headless);
  options.minimised = said.Has(Word::Minimised);
  options.endWithInput = said.Has(Word::EndWithInput);
  int ports = 0;
  for (const Word word : {Word::Port, Word::Pty, Word::TcpListen, Word::Tcp}) ports += said.Has(word) ? 1 : 0;
  if (ports == 1) {
    EndSettings settings;
    if (const auto bad = ReadPort(said, settings)) read.error = Bad(said, *bad);
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
