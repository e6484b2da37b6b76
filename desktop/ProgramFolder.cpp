#include "desktop/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace quoll {

namespace {

constexpr const char* kRom = "TVC22_D6.rom";

}  // namespace

std::string ProgramFolder() {
  const QDir own(QCoreApplication::applicationDirPath());
  for (const QDir& folder : {own, QDir(own.filePath("../share/quollemu"))}) {
    if (QFileInfo::exists(folder.filePath(kRom))) return folder.absolutePath().toStdString();
  }
  return own.absolutePath().toStdString();
}

std::string ExecutableFolder() { return QCoreApplication::applicationDirPath().toStdString(); }

}  // namespace quoll
