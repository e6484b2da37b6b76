// Key events of a window as the picture box gets them.
#pragma once

#include <array>
#include <cstdint>

#include "desktop/QtHost.h"

class QEvent;
class QKeyEvent;

namespace quoll {

// Gives a window's keys to the machine. A program of the machine looks at its keys once a frame, so a tap
// that is shorter than that is held until it can have been seen.
class MachineKeys : public RecordView {
 public:
  MachineKeys(QtHost& hostOfWindow, Machine& machineOfWindow);
  ~MachineKeys() override;
  MachineKeys(const MachineKeys&) = delete;
  MachineKeys& operator=(const MachineKeys&) = delete;

  // Accepts the event, unless the machine leaves the key to the host: then it is ignored, so that menus can
  // be reached with Alt.
  void Pressed(QKeyEvent* event);
  void Released(QKeyEvent* event);

  // Releases the taps that have been held long enough.
  void Pull(Machine& machine) override;

 private:
  struct Tap {
    int64_t pressedAt = 0;  // frame
    bool released = false;  // by the user, not yet in the machine
  };

  int64_t Frame() const;
  bool Seen(const Tap& tap) const;
  // The key that the event is about, whatever sign it gives with the keys held now.
  int32_t KeyOf(const QKeyEvent& event);

  QtHost& host;
  Machine& m;
  std::array<Tap, 256> taps{};  // by virtual key code
  // What a place of the host's keyboard gave when it was last pressed without AltGr, by native scan code.
  std::array<int32_t, 512> plainCodes{};
  bool held = false;  // some tap waits for its release
};

// Keeps shortcuts of the host away from keys that are the machine's; true when it did.
bool ClaimShortcut(QEvent* event);

}  // namespace quoll
