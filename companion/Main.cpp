// QUOLLserial: joins the emulated machine's serial card to the world.
#include <QApplication>
#include <QSocketNotifier>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>

#include "cards/Companion.h"
#include "companion/Companion.h"
#include "companion/Options.h"
#include "companion/Wakers.h"
#include "companion/Window.h"

namespace quoll {

namespace {

constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

void TellError(const QString& text) { std::fprintf(stderr, "QUOLLserial: %s\n", qUtf8Printable(text)); }

// A line for each state of the port, for scripts that read the name of a terminal or wait for a call. Ends
// the program when the port is lost.
void TellStates(Companion& companion) {
  companion.changed = [&companion, told = QString()]() mutable {
    const QString status = companion.Port().Status();
    if (status.isEmpty() || status == told) return;
    told = status;
    if (companion.Port().IsOpen()) {
      std::printf("%s\n", qUtf8Printable(status));
      std::fflush(stdout);
    } else {
      TellError(status);
      QCoreApplication::exit(kFailed);
    }
  };
}

// The one that runs shows its window: this program's file was started by hand.
int ShowTheOther(const Options& options) {
  if (!options.headless && AskCompanion(options.map, CompanionRequest::Show)) return kOk;
  TellError(QStringLiteral("another one runs for '%1'").arg(QString::fromStdString(options.map)));
  return kFailed;
}

void Serve(CompanionRequest request, Companion& companion, Window* window) {
  switch (request) {
    case CompanionRequest::Show:
      if (window != nullptr) window->BringUp();
      break;
    case CompanionRequest::Close:
      if (window == nullptr) break;  // its port came from the command line and is all that it is for
      companion.Close();
      // One that was started by hand has only its window to be ended by.
      if (!QApplication::quitOnLastWindowClosed()) window->hide();
      break;
  }
}

std::unique_ptr<Window> MakeWindow(const Options& options, Companion& companion) {
  auto window = std::make_unique<Window>(companion);
  if (options.port) window->Show(*options.port);
  // Out of the way means hidden: an icon is more than some desktops make of a window that begins minimised.
  if (!options.minimised) window->show();
  return window;
}

int Run(const Options& options) {
  const CompanionLock lock(options.map);
  if (lock.descriptor < 0) return ShowTheOther(options);
  const EndSignals signals([] { QCoreApplication::quit(); });
  Companion companion(options.map);
  std::unique_ptr<Window> window;
  if (options.headless) {
    TellStates(companion);
  } else {
    window = MakeWindow(options, companion);
    // One that belongs to another program ends with that one, and its window can be called up again.
    QApplication::setQuitOnLastWindowClosed(!options.endWithInput);
  }

  QSocketNotifier caller(lock.descriptor, QSocketNotifier::Read);
  QObject::connect(&caller, &QSocketNotifier::activated, &caller, [&] {
    if (const auto request = lock.Accept()) Serve(*request, companion, window.get());
  });
  std::unique_ptr<QSocketNotifier> input;
  if (options.endWithInput) input = WatchInputEnd([] { QCoreApplication::quit(); });

  const bool failed = options.port && !companion.Open(*options.port).isEmpty();
  if (failed && options.headless) return kFailed;
  return QCoreApplication::exec();
}

int Main(int argc, char** argv) {
  EndSignals::Block();
  const bool windowless = std::any_of(argv, argv + argc, [](const std::string_view word) {
    return word == "--headless" || word == "--help" || word == "-h";
  });
  const std::unique_ptr<QCoreApplication> app = windowless ? std::make_unique<QCoreApplication>(argc, argv)
                                                           : std::make_unique<QApplication>(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("QUOLLserial"));
  const OptionsRead read = ReadOptions(QCoreApplication::arguments());
  if (!read.error.isEmpty()) {
    TellError(read.error);
    return kUsage;
  }
  if (!read.help.isEmpty()) {
    std::printf("%s", qUtf8Printable(read.help));
    return kOk;
  }
  try {
    return Run(read.options);
  } catch (const MapError& error) {
    TellError(QString::fromUtf8(error.what()));
    return kFailed;
  }
}

}  // namespace

}  // namespace quoll

int main(int argc, char** argv) { return quoll::Main(argc, argv); }
