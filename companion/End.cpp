#include "companion/End.h"

#include <poll.h>

#include <QNetworkProxy>
#include <QSerialPort>
#include <QTcpServer>
#include <QTcpSocket>

#include "companion/PseudoTerminal.h"

namespace quoll {

namespace {

constexpr int kCallAgain = 1000;  // milliseconds
// Bytes that a device takes in ahead of the machine: what is in the companion is lost when it is killed.
constexpr qint64 kReadAhead = 4096;

QSerialPort::Parity PortParity(Parity parity) {
  switch (parity) {
    case Parity::None: break;
    case Parity::Even: return QSerialPort::EvenParity;
    case Parity::Odd: return QSerialPort::OddParity;
    case Parity::Mark: return QSerialPort::MarkParity;
    case Parity::Space: return QSerialPort::SpaceParity;
  }
  return QSerialPort::NoParity;
}

QSerialPort::StopBits PortStopBits(uint8_t halfStopBits) {
  if (halfStopBits == 3) return QSerialPort::OneAndHalfStop;
  return halfStopBits == 4 ? QSerialPort::TwoStop : QSerialPort::OneStop;
}

bool Configure(QSerialPort& port, const SerialLine& line) {
  return port.setBaudRate(static_cast<qint32>(line.baud)) &&
         port.setDataBits(static_cast<QSerialPort::DataBits>(line.dataBits)) &&
         port.setParity(PortParity(line.parity)) && port.setStopBits(PortStopBits(line.halfStopBits)) &&
         port.setFlowControl(QSerialPort::NoFlowControl);
}

// Qt takes a read of nothing for nothing to read: of a port that is gone there is no other sign.
bool HungUp(int descriptor) {
  pollfd port{descriptor, 0, 0};
  return poll(&port, 1, 0) > 0 && (port.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

// Objects that have just sent a signal must outlive it.
template <class Object>
void Later(std::unique_ptr<Object>& object) {
  if (!object) return;
  object->disconnect();
  object->close();
  object.release()->deleteLater();
}

}  // namespace

End::End() {
  callAgain.setSingleShot(true);
  callAgain.setInterval(kCallAgain);
  QObject::connect(&callAgain, &QTimer::timeout, &callAgain, [this] { Call(); });
}

End::~End() {
  changed = nullptr;
  Close();
}

QString End::Open(const EndSettings& wanted) {
  Close();
  settings = wanted;
  open = true;
  QString error;
  switch (settings.kind) {
    case EndKind::SerialPort: error = OpenSerialPort(); break;
    case EndKind::PseudoTerminal: error = OpenPseudoTerminal(); break;
    case EndKind::TcpListen: error = OpenTcpListen(); break;
    case EndKind::TcpConnect: OpenTcpConnect(); break;
  }
  if (!error.isEmpty()) {
    Close();
    Tell(nullptr, error);
  }
  return error;
}

void End::Close() {
  callAgain.stop();
  open = false;
  broken = false;
  device = nullptr;
  Later(serial);
  Later(terminal);
  Later(socket);
  Later(server);
  Tell(nullptr, {});
}

uint16_t End::ListensAt() const { return server ? server->serverPort() : uint16_t{0}; }

SerialLine End::Line() const {
  SerialLine line = settings.kind == EndKind::SerialPort ? settings.line : SerialLine{};
  line.open = device != nullptr;
  return line.open ? line : SerialLine{};
}

void End::Tell(QIODevice* newDevice, const QString& text) {
  device = newDevice;
  status = text;
  if (changed) changed();
}

QString End::OpenSerialPort() {
  serial = std::make_unique<QSerialPort>();
  serial->setPortName(settings.port);
  serial->setReadBufferSize(kReadAhead);
  if (!Configure(*serial, settings.line) || !serial->open(QIODevice::ReadWrite)) {
    return settings.port + QStringLiteral(": ") + serial->errorString();
  }
  QObject::connect(serial.get(), &QSerialPort::errorOccurred, &callAgain,
                   [this](QSerialPort::SerialPortError error) {
                     if (error != QSerialPort::ResourceError) return;  // pulled out
                     SerialGone(serial->errorString());
                   });
  Tell(serial.get(), settings.port);
  return {};
}

void End::SerialGone(const QString& why) {
  const QString text = settings.port + QStringLiteral(": ") + why;
  Close();
  Tell(nullptr, text);
}

QString End::OpenPseudoTerminal() {
  terminal = std::make_unique<PseudoTerminal>();
  QString error = terminal->Make(settings.link);
  if (error.isEmpty()) Tell(terminal.get(), terminal->Name());
  return error;
}

QString End::OpenTcpListen() {
  server = std::make_unique<QTcpServer>();
  server->setProxy(QNetworkProxy::NoProxy);
  if (!settings.address.isLoopback()) return QStringLiteral("Only addresses of this computer can be used");
  if (!server->listen(settings.address, settings.tcpPort)) {
    return TcpPlaceText(settings.address, settings.tcpPort) + QStringLiteral(": ") + server->errorString();
  }
  QObject::connect(server.get(), &QTcpServer::newConnection, &callAgain, [this] { Accept(); });
  LineBroke();
  return {};
}

// One caller at a time: the others are turned away at once.
void End::Accept() {
  while (QTcpSocket* const pending = server->nextPendingConnection()) {
    std::unique_ptr<QTcpSocket> caller(pending);
    caller->setParent(nullptr);
    if (socket) {
      Later(caller);
    } else {
      Join(std::move(caller));
      Tell(socket.get(), QStringLiteral("joined at ") + TcpPlaceText(settings.address, ListensAt()));
    }
  }
}

void End::OpenTcpConnect() {
  LineBroke();
  callAgain.stop();
  Call();
}

void End::Call() {
  Join(std::make_unique<QTcpSocket>());
  QObject::connect(socket.get(), &QTcpSocket::connected, &callAgain, [this] {
    Tell(socket.get(), QStringLiteral("joined to ") + TcpPlaceText(settings.address, settings.tcpPort));
  });
  QObject::connect(socket.get(), &QTcpSocket::errorOccurred, &callAgain, [this] {
    if (socket && device == nullptr) LineBroke();
  });
  if (!settings.address.isLoopback()) return LineBroke();
  socket->connectToHost(settings.address, settings.tcpPort);
}

// What arrived before the other side went is still to be read.
void End::AfterRead() {
  if (serial && serial->bytesAvailable() == 0 && HungUp(serial->handle()))
    return SerialGone(QStringLiteral("it is gone"));
  if (broken && socket->bytesAvailable() == 0) LineBroke();
}

void End::Join(std::unique_ptr<QTcpSocket> caller) {
  socket = std::move(caller);
  socket->setProxy(QNetworkProxy::NoProxy);
  socket->setReadBufferSize(kReadAhead);
  socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  QObject::connect(socket.get(), &QTcpSocket::disconnected, &callAgain, [this] {
    broken = true;
    AfterRead();
  });
}

void End::LineBroke() {
  Later(socket);
  broken = false;
  const bool calls = settings.kind == EndKind::TcpConnect;
  if (calls) callAgain.start();
  const QString place = TcpPlaceText(settings.address, calls ? settings.tcpPort : ListensAt());
  Tell(nullptr, (calls ? QStringLiteral("calling ") : QStringLiteral("waiting at ")) + place);
}

}  // namespace quoll
