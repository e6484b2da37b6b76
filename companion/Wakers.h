// What ends or wakes the companion from outside, each by a descriptor that the event loop waits for.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace quoll {

// Calls when standard input has ended; what comes in on it has no meaning.
std::unique_ptr<QSocketNotifier> WatchInputEnd(std::function<void()> ended);

// Calls when the process is asked to end, by SIGTERM, SIGINT or SIGHUP.
class EndSignals {
 public:
  // Keeps these signals from ending the process at once. Called before any thread is made, the window
  // system's included: it would get them.
  static void Block();

  explicit EndSignals(std::function<void()> asked);
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

 private:
  int descriptor = -1;
  std::unique_ptr<QSocketNotifier> notifier;
};

}  // namespace quoll
