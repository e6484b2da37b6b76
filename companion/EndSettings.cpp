#include "companion/EndSettings.h"

namespace quoll {

namespace {

QHostAddress OwnAddress(const QString& host) {
  if (host.isEmpty() || host.compare(QStringLiteral("localhost"), Qt::CaseInsensitive) == 0) {
    return QHostAddress(QHostAddress::LocalHost);
  }
  return QHostAddress(host);
}

}  // namespace

std::optional<TcpPlace> ParseTcpPlace(const QString& text) {
  const QString trimmed = text.trimmed();
  const auto colon = trimmed.lastIndexOf(QLatin1Char(':'));
  QString host = colon < 0 ? QString() : trimmed.left(colon);
  if (host.startsWith(QLatin1Char('[')) && host.endsWith(QLatin1Char(']'))) {
    host = host.mid(1, host.size() - 2);
  } else if (host.contains(QLatin1Char(':'))) {
    return {};  // which of its numbers is the port?
  }
  bool isNumber = false;
  const uint port = trimmed.mid(colon + 1).toUShort(&isNumber);
  const QHostAddress address = OwnAddress(host);
  if (!isNumber || !address.isLoopback()) return {};
  return TcpPlace{address, static_cast<uint16_t>(port)};
}

QString TcpPlaceText(const QHostAddress& address, uint16_t port) {
  const bool six = address.protocol() == QAbstractSocket::IPv6Protocol;
  return (six ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2")).arg(address.toString()).arg(port);
}

}  // namespace quoll
