// The port that is open: a device as soon as somebody is at its other side, and what is told of it.
#pragma once

#include <QIODevice>
#include <QString>
#include <QTimer>
#include <functional>
#include <memory>

#include "companion/EndSettings.h"

class QSerialPort;
class QTcpServer;
class QTcpSocket;

namespace quoll {

class PseudoTerminal;

class End {
 public:
  End();
  ~End();
  End(const End&) = delete;
  End& operator=(const End&) = delete;

  // Closes what was open. Empty, or what went wrong; then none is open. A call by TCP that nobody answers is
  // no error: it is repeated every second.
  QString Open(const EndSettings& wanted);
  void Close();

  bool IsOpen() const { return open; }
  // Null while none is open or nobody is at the other side of a TCP line.
  QIODevice* Device() const { return device; }
  // Name of the terminal, place and state of the TCP line, name of the serial port; or what closed it.
  QString Status() const { return status; }
  // TCP place that is listened at; 0 when none is.
  uint16_t ListensAt() const;
  SerialLine Line() const;

  // To be called after each read: lets a TCP line or a serial port go that is broken and of which everything
  // has been read.
  void AfterRead();

  // Called whenever the device or the status has become another one.
  std::function<void()> changed;

 private:
  QString OpenSerialPort();
  void SerialGone(const QString& why);
  QString OpenPseudoTerminal();
  QString OpenTcpListen();
  void OpenTcpConnect();
  void Accept();
  void Call();
  void Join(std::unique_ptr<QTcpSocket> caller);
  void LineBroke();
  void Tell(QIODevice* newDevice, const QString& text);

  EndSettings settings;
  bool open = false;
  QIODevice* device = nullptr;
  QString status;
  bool broken = false;  // the other side of the TCP line has gone

  std::unique_ptr<QSerialPort> serial;
  std::unique_ptr<PseudoTerminal> terminal;
  std::unique_ptr<QTcpServer> server;
  std::unique_ptr<QTcpSocket> socket;
  QTimer callAgain;
};

}  // namespace quoll
