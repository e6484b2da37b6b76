// The desktop's side of the machine: windows are served at each frame end, frames are spread evenly over
// time, and errors that come up while Qt delivers an event are carried past Qt to the run loop.
#pragma once

#include <QTimer>
#include <chrono>
#include <exception>
#include <utility>
#include <vector>

#include "core/Host.h"

class QWidget;

namespace quoll {

// A window that shows records of the machine: copies them into its widgets when asked to.
struct RecordView {
  virtual ~RecordView() = default;
  virtual void Pull(Machine& m) = 0;
};

class QtHost : public Host {
 public:
  using Clock = std::chrono::steady_clock;

  QtHost();

  void Pump(Machine& m) override;
  void Stalled(Machine& m) override;
  // Waits until the present frame's 20 ms are over, unless "Max" speed is chosen. Windows are served
  // meanwhile. A host that has fallen behind by more than a block starts counting anew.
  void FrameEnded(Machine& m) override;
  // Without a sound device the clock asks for the block: when its last frame is over.
  void WaitForBlock(Machine& m) override;

  // Milliseconds at the start of the present frame while frames are paced, the clock itself otherwise. So
  // frames that are 20 ms apart count as 20 ms apart, however long their windows took to paint.
  uint32_t TickCount() override;
  int64_t PerformanceCounter() override;    // nanoseconds
  int64_t PerformanceFrequency() override;  // 1000 million

  // A modal box over messageParent.
  void MessageBox(std::string_view text, std::string_view title, MessageIcon icon) override;
  void Beep(int frequency, int duration) override;

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

  // The user closes the program: the loops are left by ProgramEnd at the next chance.
  void Close();
  bool ClosedByUser() const { return closed; }

  // Serves the user while the machine stands still, until the program is closed; leaves by that exception.
  // The machine runs in here when a handler sets it going.
  [[noreturn]] void ServeUntilEnd(Machine& m);

  // Every view is pulled at each pump and after the user's events; a view removes itself when it goes.
  void AddView(RecordView* view);
  void RemoveView(RecordView* view);
  void PullViews(Machine& m);

  QWidget* messageParent = nullptr;

 private:
  void Keep(std::exception_ptr error);
  void Rethrow();
  void WaitUntil(Machine& m, Clock::time_point moment);
  void BeginFrame(bool paced);

  std::vector<RecordView*> views;
  std::exception_ptr pending;
  bool closed = false;

  QTimer wake;  // ends a wait for events
  Clock::time_point lastPump{};
  Clock::time_point frameDue{};    // when the present frame's time is over
  Clock::time_point frameStart{};  // when it began, on the even grid if the host keeps up
  bool pacing = false;
  Clock::time_point lastTick{};  // the tick clock never goes back
};

}  // namespace quoll
