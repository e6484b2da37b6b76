#include "desktop/SingleInstance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <QStandardPaths>
#include <cerrno>

namespace quoll {

SingleInstance::SingleInstance(const std::string& file) {
  // Programs that this one starts must not hold the lock on after its end: close on exec.
  constexpr mode_t kOwnerOnly = 0600;
  descriptor = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kOwnerOnly);
  if (descriptor < 0) return;
  int result = -1;
  do {
    result = flock(descriptor, LOCK_EX | LOCK_NB);
  } while (result != 0 && errno == EINTR);
  otherRuns = result != 0 && errno == EWOULDBLOCK;
}

SingleInstance::~SingleInstance() {
  if (descriptor >= 0) close(descriptor);
}

std::string SingleInstanceFile() {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (folder.isEmpty()) folder = QDir::tempPath();
  return QDir(folder).filePath(QStringLiteral("quollemu-%1.lock").arg(getuid())).toStdString();
}

}  // namespace quoll
