#include "core/qt/QtHost.h"

#include <QApplication>
#include <QMessageBox>
#include <algorithm>

#include "core/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr auto kFrameTime = 20ms;
constexpr auto kBlockTime = 100ms;
constexpr auto kStallTime = 50ms;

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QMessageBox::Icon Icon(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Stop: return QMessageBox::Critical;
    case MessageIcon::Exclamation: return QMessageBox::Warning;
    case MessageIcon::None: break;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

QtHost::QtHost() {
  wake.setTimerType(Qt::PreciseTimer);
  wake.setSingleShot(true);
}

void QtHost::Pump(Machine& m) {
  Rethrow();
  lastPump = Clock::now();
  PullViews(m);
  QCoreApplication::processEvents();
  Rethrow();
}

void QtHost::Stalled(Machine& m) {
  if (Clock::now() - lastPump >= kStallTime) Pump(m);
}

void QtHost::FrameEnded(Machine& m) {
  Rethrow();
  if (!m.screen.xS6) WaitUntil(m, frameDue);
  BeginFrame(!m.screen.xS6);
}

void QtHost::WaitForBlock(Machine& m) {
  Rethrow();
  WaitUntil(m, frameDue);
  m.mixer.NeedData = 1;
}

// A frame that begins late but within its own time stays on the even grid; a later one counts from now, so
// that the frames of a host that catches up are not all drawn.
void QtHost::BeginFrame(bool paced) {
  const auto now = Clock::now();
  pacing = paced;
  if (!paced || now - frameDue > kBlockTime) frameDue = now;
  frameStart = now - frameDue < kFrameTime ? frameDue : now;
  frameDue += kFrameTime;
}

// Sleeps in the event loop. Each event wakes it, and so does the timer.
void QtHost::WaitUntil(Machine& m, Clock::time_point moment) {
  for (auto now = Clock::now(); now < moment; now = Clock::now()) {
    wake.start(std::chrono::ceil<std::chrono::milliseconds>(moment - now));
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    Rethrow();
    PullViews(m);
  }
  wake.stop();
}

uint32_t QtHost::TickCount() {
  lastTick = std::max(lastTick, pacing ? frameStart : Clock::now());
  const auto ticks = std::chrono::duration_cast<std::chrono::milliseconds>(lastTick.time_since_epoch());
  return static_cast<uint32_t>(ticks.count());
}

int64_t QtHost::PerformanceCounter() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count();
}

int64_t QtHost::PerformanceFrequency() { return 1'000'000'000; }

void QtHost::MessageBox(std::string_view text, std::string_view title, MessageIcon icon) {
  QMessageBox box(Icon(icon), Text(title), Text(text), QMessageBox::Ok, messageParent);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

void QtHost::Beep(int /*frequency*/, int /*duration*/) { QApplication::beep(); }

void QtHost::Close() {
  closed = true;
  Keep(std::make_exception_ptr(ProgramEnd{}));
}

void QtHost::ServeUntilEnd(Machine& m) {
  PullViews(m);
  for (;;) {
    Rethrow();
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    PullViews(m);
  }
}

void QtHost::AddView(RecordView* view) { views.push_back(view); }

void QtHost::RemoveView(RecordView* view) { std::erase(views, view); }

void QtHost::PullViews(Machine& m) {
  for (size_t i = 0; i < views.size(); ++i) views[i]->Pull(m);
}

// The first one counts: what follows it comes from leaving.
void QtHost::Keep(std::exception_ptr error) {
  if (!pending) pending = std::move(error);
}

// It stays pending, since there may be more loops on the stack to leave.
void QtHost::Rethrow() {
  if (pending) std::rethrow_exception(pending);
}

}  // namespace quoll
