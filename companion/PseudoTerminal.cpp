#include "companion/PseudoTerminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <array>
#include <cerrno>
#include <system_error>

namespace quoll {

namespace {

QString SystemError() { return QString::fromStdString(std::generic_category().message(errno)); }

bool MakeRaw(int descriptor) {
  termios settings{};
  if (tcgetattr(descriptor, &settings) != 0) return false;
  cfmakeraw(&settings);
  return tcsetattr(descriptor, TCSANOW, &settings) == 0;
}

// What a call that must not wait has moved: 0 when it would have waited, -1 on an error.
qint64 Moved(ssize_t result) {
  if (result >= 0) return result;
  return errno == EAGAIN || errno == EINTR ? 0 : -1;
}

}  // namespace

PseudoTerminal::~PseudoTerminal() { PseudoTerminal::close(); }

QString PseudoTerminal::Make(const QString& link) {
  close();
  std::array<char, 128> path{};
  master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
  if (master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0 &&
      ptsname_r(master, path.data(), path.size()) == 0) {
    other = ::open(path.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  }
  if (other < 0 || !MakeRaw(other)) {
    QString error = SystemError();
    close();
    return error;
  }
  name = QFile::decodeName(path.data());
  QString error = MakeLink(link);
  if (error.isEmpty()) {
    open(QIODevice::ReadWrite | QIODevice::Unbuffered);
  } else {
    close();
  }
  return error;
}

QString PseudoTerminal::MakeLink(const QString& link) {
  if (link.isEmpty()) return {};
  const QByteArray file = QFile::encodeName(link);
  if (QFileInfo(link).isSymLink()) unlink(file.constData());
  if (symlink(QFile::encodeName(name).constData(), file.constData()) != 0) {
    return link + QStringLiteral(": ") + SystemError();
  }
  linkMade = link;
  return {};
}

void PseudoTerminal::close() {
  if (!linkMade.isEmpty() && QFile::symLinkTarget(linkMade) == name) QFile::remove(linkMade);
  linkMade.clear();
  for (int* descriptor : {&master, &other}) {
    if (*descriptor >= 0) ::close(*descriptor);
    *descriptor = -1;
  }
  name.clear();
  QIODevice::close();
}

qint64 PseudoTerminal::readData(char* data, qint64 most) {
  return Moved(::read(master, data, static_cast<size_t>(most)));
}

qint64 PseudoTerminal::writeData(const char* data, qint64 size) {
  return Moved(::write(master, data, static_cast<size_t>(size)));
}

}  // namespace quoll
