// A place of its own for what a program's copies tell each other.
#pragma once

#include <QTemporaryDir>

namespace quoll {

// The lock's folder as the program sees it, for a test's time.
struct RuntimeFolder {
  RuntimeFolder() : before(qgetenv("XDG_RUNTIME_DIR")) { qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8()); }
  ~RuntimeFolder() { qputenv("XDG_RUNTIME_DIR", before); }
  RuntimeFolder(const RuntimeFolder&) = delete;
  RuntimeFolder& operator=(const RuntimeFolder&) = delete;

  QTemporaryDir folder;
  QByteArray before;
};

}  // namespace quoll
