#include "companion/Wakers.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace quoll {

std::unique_ptr<QSocketNotifier> WatchInputEnd(std::function<void()> ended) {
  auto notifier = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
  QSocketNotifier* const watcher = notifier.get();
  QObject::connect(watcher, &QSocketNotifier::activated, watcher, [watcher, ended = std::move(ended)] {
    std::array<char, 256> ignored{};
    const ssize_t got = read(STDIN_FILENO, ignored.data(), ignored.size());
    if (got > 0 || (got < 0 && (errno == EAGAIN || errno == EINTR))) return;
    watcher->setEnabled(false);
    ended();
  });
  return notifier;
}

namespace {

sigset_t TheEndSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, number);
  return signals;
}

}  // namespace

void EndSignals::Block() {
  const sigset_t signals = TheEndSignals();
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

EndSignals::EndSignals(std::function<void()> asked) {
  const sigset_t signals = TheEndSignals();
  descriptor = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor < 0) {
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    return;
  }
  notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                   [asked = std::move(asked)] { asked(); });
}

EndSignals::~EndSignals() {
  notifier.reset();
  if (descriptor >= 0) close(descriptor);
}

}  // namespace quoll
