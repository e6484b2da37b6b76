// The companion without its window: a shared memory, a port, and the timer that moves the bytes between them.
#pragma once

#include <QString>
#include <QTimer>
#include <functional>
#include <string>

#include "cards/SharedMemory.h"
#include "companion/End.h"
#include "companion/Joint.h"

namespace quoll {

// Sleeps while nobody is at the other side of a port: then nothing of it runs by time.
class Companion {
 public:
  // map: name of the shared memory. Throws MapError.
  explicit Companion(const std::string& map);
  ~Companion();
  Companion(const Companion&) = delete;
  Companion& operator=(const Companion&) = delete;

  // Empty, or what went wrong; then no port is open.
  QString Open(const EndSettings& settings);
  // What the machine has sent and the port has not yet taken is gone, as on a real line.
  void Close();

  const End& Port() const { return end; }
  const Joint& Bytes() const { return joint; }
  bool Sleeps() const { return !timer.isActive(); }

  std::function<void()> changed;  // the port's state is another one
  std::function<void()> moved;    // bytes went through

 private:
  SerialView Record() { return SerialView(map.MapView, kSerialMapSize); }
  void PortChanged();
  void Tick();

  MMapper map;
  Joint joint;
  QTimer timer;
  int looksInVain = 0;  // ticks since the last one that moved a byte
  End end;
};

}  // namespace quoll
