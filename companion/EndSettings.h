// Which end of the world the companion joins the machine to.
#pragma once

#include <QHostAddress>
#include <QString>
#include <cstdint>
#include <optional>

#include "cards/SerialMap.h"

namespace quoll {

enum class EndKind {
  SerialPort,      // a port of this computer
  PseudoTerminal,  // a new terminal that other programs open like a port
  TcpListen,       // waits for one caller at a time, on this computer only
  TcpConnect,      // calls, and calls again when the line breaks, on this computer only
};

struct EndSettings {
  EndKind kind = EndKind::PseudoTerminal;

  QString port;                                     // serial port: its name or device file
  SerialLine line{true, 9600, 8, Parity::None, 2};  // serial port: speed and form of its bytes

  QString link;  // pseudo terminal: a file name that leads to it as long as it is open; empty for none

  QHostAddress address{QHostAddress::LocalHost};  // TCP: always one of this computer
  uint16_t tcpPort = 0;                           // TCP: 0 to listen at one that is free
};

struct TcpPlace {
  QHostAddress address;
  uint16_t port = 0;
};

// Reads "port", "host:port" or "[address]:port". Nothing for a bad text and for addresses that are not this
// computer's own loopback: what is sent is neither encrypted nor guarded.
std::optional<TcpPlace> ParseTcpPlace(const QString& text);

// "127.0.0.1:4000", "[::1]:4000".
QString TcpPlaceText(const QHostAddress& address, uint16_t port);

}  // namespace quoll
