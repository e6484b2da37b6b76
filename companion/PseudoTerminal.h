// A new pseudo terminal: this side of it as a device, the other side a name that any program can open like a
// serial port. All bytes pass as they are.
#pragma once

#include <QIODevice>
#include <QString>

namespace quoll {

class PseudoTerminal : public QIODevice {
 public:
  ~PseudoTerminal() override;

  // Makes the terminal and, when link is not empty, a symbolic link of that name to it. An old link of the
  // name is replaced, any other file stays and is an error. Empty, or what went wrong.
  QString Make(const QString& link);

  // Of the other side, "/dev/pts/3" or the like.
  QString Name() const { return name; }

  bool isSequential() const override { return true; }
  void close() override;

 protected:
  // Neither waits: 0 when there is nothing to read or no room to write.
  qint64 readData(char* data, qint64 most) override;
  qint64 writeData(const char* data, qint64 size) override;

 private:
  QString MakeLink(const QString& link);

  int master = -1;
  // Kept open as well: without anybody at the other side reading fails, and its settings are forgotten.
  int other = -1;
  QString name;
  QString linkMade;
};

}  // namespace quoll
