#include "desktop/QtHost.h"

#include <unistd.h>

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QImageReader>
#include <QMessageBox>
#include <algorithm>

#include "core/Files.h"
#include "desktop/Printing.h"
#include "desktop/kit/QtText.h"
#include "forms/Forms.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr auto kStallTime = 50ms;

int64_t Milliseconds(QtHost::Clock::time_point moment) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(moment.time_since_epoch()).count();
}

QtHost::Clock::time_point NextDue(const FormTimers& timers) {
  constexpr auto kLast = QtHost::Clock::time_point::max();
  const int64_t next = NextTimer(timers);
  return next >= Milliseconds(kLast) ? kLast : QtHost::Clock::time_point(std::chrono::milliseconds(next));
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

RecordView::RecordView(QtHost& hostOfView) : host(hostOfView) { host.AddView(this); }

RecordView::~RecordView() { host.RemoveView(this); }

QtHost::QtHost()
    : soundWake(sound.wake, QSocketNotifier::Read),
      pacer(Clock::now()),
      timers(StartTimers(Forms(), Milliseconds(Clock::now()))) {
  wake.setTimerType(Qt::PreciseTimer);
  wake.setSingleShot(true);
  // Being woken is all that it is for: the halves are counted elsewhere.
  QObject::connect(&soundWake, &QSocketNotifier::activated, [this] {
    uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = read(sound.wake, &count, sizeof count);
  });
}

void QtHost::Pump(Machine& m) {
  Rethrow();
  lastPump = Clock::now();
  PullViews(m);
  QCoreApplication::processEvents();
  Rethrow();
  Serve(m);
}

void QtHost::Stalled(Machine& m) {
  if (Clock::now() - lastPump >= kStallTime) Pump(m);
}

// With a block asked for, the machine has to catch up: it does not wait before the block is complete.
void QtHost::FrameEnded(Machine& m) {
  Rethrow();
  for (size_t i = 0; i < views.size(); ++i) views[i]->FrameEnded(m);
  Serve(m);
  while (!m.screen.xS6 && m.mixer.NeedData == 0 && Clock::now() < FrameDue(m)) Sleep(m, FrameDue(m));
  pacer.FrameBegun(Clock::now(), FrameDue(m), !m.screen.xS6 && m.mixer.NeedData == 0);
}

void QtHost::WaitForBlock(Machine& m) {
  Rethrow();
  Serve(m);
  while (m.mixer.NeedData == 0) Sleep(m, Clock::time_point::max());
}

// Gives the sound output, or Timer2, what it has asked for, and runs the forms' timers.
void QtHost::Serve(Machine& m) {
  const int64_t begun =
      ServeSound(sound, [&m](std::span<uint8_t> data) { DirectSoundPlay_NeedWavData(m, data); });
  if (begun != 0) pacer.BlockBegun(Clock::time_point(std::chrono::nanoseconds(begun)));
  if (timer2) ServeTimer2(m);
  RunTimers(m, timers, Milliseconds(Clock::now()));
}

void QtHost::ServeTimer2(Machine& m) {
  const auto now = Clock::now();
  if (timer2Due == Clock::time_point()) {
    timer2Due = now + FramePacer::kBlock;
    pacer.BlockBegun(now);
  }
  if (now < timer2Due) return;
  ForceNeedWavData(m);
  pacer.BlockBegun(timer2Due);
  // Ticks that were missed are not made up for.
  timer2Due = std::max(timer2Due, now - FramePacer::kBlock) + FramePacer::kBlock;
}

QtHost::Clock::time_point QtHost::FrameDue(const Machine& m) const {
  return pacer.FrameDue(m.mixer.FrameInBlock);
}

// Sleeps in the event loop. Each event wakes it, and so do the sound output and the timers.
void QtHost::Sleep(Machine& m, Clock::time_point moment) {
  moment = std::min(moment, NextDue(timers));
  if (timer2) moment = std::min(moment, timer2Due);
  if (moment != Clock::time_point::max()) {
    const auto time = std::chrono::ceil<std::chrono::milliseconds>(moment - Clock::now());
    wake.start(std::max(time, 0ms));
  }
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  wake.stop();
  Rethrow();
  Serve(m);
  PullViews(m);
}

std::string QtHost::InitializeSound(const SoundFormat& format) {
  std::string error = Initialize(sound, format);
  if (error.empty()) timer2 = false;  // two clocks would make the machine run twice as fast
  return error;
}

bool QtHost::SoundPlay() { return quoll::SoundPlay(sound); }

bool QtHost::SoundStop() { return quoll::SoundStop(sound); }

uint32_t QtHost::TickCount() { return static_cast<uint32_t>(pacer.Tick(Clock::now()).count()); }

int64_t QtHost::PerformanceCounter() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count();
}

int64_t QtHost::PerformanceFrequency() { return 1'000'000'000; }

void QtHost::MessageBox(std::string_view text, std::string_view title, MessageIcon icon) {
  // With the full screen shown the main window is hidden.
  const bool seen = messageParent != nullptr && messageParent->isVisible();
  QMessageBox box(Icon(icon), ToQt(title), ToQt(text), QMessageBox::Ok,
                  seen ? messageParent : QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

void QtHost::SetClipboard(std::string_view text) { QGuiApplication::clipboard()->setText(ToQt(text)); }

bool QtHost::LoadPicture(const std::string& file, PixelImage& picture) {
  constexpr int kLargest = 8192;
  QImageReader reader(ToQt(file));
  reader.setDecideFormatFromContent(true);
  if (reader.size().width() > kLargest || reader.size().height() > kLargest) return false;
  QImage image = reader.read();
  if (image.isNull() || image.width() > kLargest || image.height() > kLargest) return false;
  image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);  // on black where it is seen through
  picture.width = image.width();
  picture.height = image.height();
  picture.pixels.clear();
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x)
      picture.pixels.push_back(qRed(line[x]) | qGreen(line[x]) << 8 | qBlue(line[x]) << 16);
  }
  return true;
}

void QtHost::Beep(int /*frequency*/, int /*duration*/) { QApplication::beep(); }

bool QtHost::CallCompanion(CompanionCall call, const std::string& folder) {
  if (call == CompanionCall::Start && !extras.startCompanion) return true;
  return quoll::CallCompanion(links, call, companionFolder.empty() ? folder : companionFolder);
}

std::vector<std::string> QtHost::Printers() { return PrinterNames(); }

std::string QtHost::Print(const std::string& printer, std::string_view text) {
  if (printer != kPrintToFile) return PrintOn(printer, text);
  const std::string file = AskForPrintFile();
  if (file.empty()) return {};
  const QByteArray pdf = PrintedPdf(text);
  return SaveFile(file, {reinterpret_cast<const uint8_t*>(pdf.data()), static_cast<size_t>(pdf.size())});
}

std::string QtHost::AskForPrintFile() {
  // The dialog itself completes the name, so that it asks before the right file is replaced.
  QFileDialog dialog(QApplication::activeWindow(), QFileDialog::tr("Print to file"), {}, "PDF (*.pdf)");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix("pdf");
  dialog.selectFile("print.pdf");
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst().toStdString();
}

void QtHost::Close() {
  closed = true;
  Keep(std::make_exception_ptr(ProgramEnd{}));
}

void QtHost::ServeUntilEnd(Machine& m) {
  PullViews(m);
  for (;;) {
    Rethrow();
    Sleep(m, Clock::time_point::max());
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
