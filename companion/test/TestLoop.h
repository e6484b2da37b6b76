// Waiting with the event loop at work.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <chrono>
#include <functional>
#include <thread>

namespace quoll::test {

// Serves events until the condition holds; false when it does not within so many milliseconds.
inline bool WaitFor(const std::function<bool()>& condition, int milliseconds = 10'000) {
  QElapsedTimer clock;
  clock.start();
  while (!condition()) {
    if (clock.elapsed() > milliseconds) return false;
    QCoreApplication::processEvents();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

// Serves events for so many milliseconds.
inline void Pass(int milliseconds) {
  WaitFor([] { return false; }, milliseconds);
}

}  // namespace quoll::test
