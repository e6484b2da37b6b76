// The desktop's side of the machine: windows are served at each frame end, frames are spread evenly over
// time, and errors that come up while Qt delivers an event are carried past Qt to the run loop.
#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <exception>
#include <utility>
#include <vector>

#include "cards/CardLinks.h"
#include "core/FormTimers.h"
#include "core/Host.h"
#include "desktop/DirectPorts.h"
#include "desktop/Extras.h"
#include "desktop/FramePacer.h"
#include "sound/sdl/frmDX_Play.h"

class QWidget;

namespace quoll {

class QtHost;

// What follows the machine, such as a window that shows records of it: copies them into its widgets when
// asked to.
struct RecordView {
  explicit RecordView(QtHost& hostOfView);
  virtual ~RecordView();
  RecordView(const RecordView&) = delete;
  RecordView& operator=(const RecordView&) = delete;

  virtual void Pull(Machine& m) = 0;
  // At the end of every frame of the machine, drawn or not.
  virtual void FrameEnded(Machine& /*m*/) {}

  QtHost& host;
};

class QtHost : public Host {
 public:
  using Clock = FramePacer::Clock;

  QtHost();

  // Shows the records, serves the user and runs the forms' timers that are due.
  void Pump(Machine& m) override;
  void Stalled(Machine& m) override;
  // Spreads the frames of a block over its 100 ms: waits until the next frame is due, unless "Max" speed is
  // chosen or the output has the next block waiting. Windows are served meanwhile.
  void FrameEnded(Machine& m) override;
  // Sleeps until the sound output, or Timer2, has asked for the block. Windows are served meanwhile; only the
  // end of the program breaks it off.
  void WaitForBlock(Machine& m) override;

  std::string InitializeSound(const SoundFormat& format) override;
  bool SoundPlay() override;
  bool SoundStop() override;

  // The main window's timer, which asks for a block every 100 ms by the clock: for machines without a sound
  // device. It runs from the start.
  void EnableTimer2(bool enabled) { timer2 = enabled; }

  uint32_t TickCount() override;            // milliseconds, as the frames are paced
  int64_t PerformanceCounter() override;    // nanoseconds
  int64_t PerformanceFrequency() override;  // 1000 million

  // A modal box over messageParent.
  void MessageBox(std::string_view text, std::string_view title, MessageIcon icon) override;
  void SetClipboard(std::string_view text) override;
  // Every kind that Qt reads, up to 8192 pixels a side.
  bool LoadPicture(const std::string& file, PixelImage& picture) override;
  void Beep(int frequency, int duration) override;
  bool DirectOut(uint16_t port, uint16_t value) override { return DirectPortOut(directPorts, port, value); }

  std::string CreateMaps() override { return quoll::CreateMaps(links); }
  std::span<uint8_t> SerialRecord() override { return quoll::SerialRecord(links); }
  // The companion of companionFolder. Where the user does not want it started, nothing is done at the start.
  bool CallCompanion(CompanionCall call, const std::string& folder) override;
  std::vector<std::string> Printers() override;
  // Besides the host's printers there is a file, for whose name the user is asked.
  std::string Print(const std::string& printer, std::string_view text) override;

  CardLinks links;
  std::string companionFolder;  // where the companion program lies; empty: the machine's program folder
  Extras extras;

  // Runs what an event of Qt leads to. An exception must not pass through Qt: it is kept and
  // thrown again as soon as Qt has been left.
  template <typename Work>
  void Guard(Work&& work) {
    if (pending) return;  // the machine is being left: nothing more is done to it
    try {
      std::forward<Work>(work)();
    } catch (...) {
      Keep(std::current_exception());
    }
  }

  // Does what the user wants by an event of Qt; what that has brought about is seen at once.
  template <typename Work>
  void Act(Machine& m, Work&& work) {
    Guard(std::forward<Work>(work));
    PullViews(m);
  }

  // The user closes the program: the loops are left by ProgramEnd at the next chance.
  void Close();
  bool ClosedByUser() const { return closed; }

  // Serves the user while the machine stands still, until the program is closed; leaves by that exception.
  // The machine runs in here when a handler sets it going.
  [[noreturn]] void ServeUntilEnd(Machine& m);

  // Every view is pulled at each pump and after the user's events; views come and go by themselves.
  void AddView(RecordView* view);
  void RemoveView(RecordView* view);
  void PullViews(Machine& m);

  QWidget* messageParent = nullptr;

 protected:
  // Empty when the user wants none.
  virtual std::string AskForPrintFile();

 private:
  void Keep(std::exception_ptr error);
  void Rethrow();
  void Serve(Machine& m);
  void ServeTimer2(Machine& m);
  void Sleep(Machine& m, Clock::time_point moment);
  Clock::time_point FrameDue(const Machine& m) const;

  std::vector<RecordView*> views;
  std::exception_ptr pending;
  bool closed = false;

  frmDX_Play sound;
  QSocketNotifier soundWake;  // a half of the sound buffer has begun
  bool timer2 = true;
  Clock::time_point timer2Due{};  // its next tick; the clock's start while it has not begun

  DirectPorts directPorts;

  QTimer wake;  // ends a wait for events
  Clock::time_point lastPump{};
  FramePacer pacer;
  FormTimers timers;  // of all forms, by the clock's milliseconds
};

}  // namespace quoll
