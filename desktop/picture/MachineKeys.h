// Key events of a window as the picture box gets them.
#pragma once

#include <array>
#include <cstdint>
#include <deque>

#include "desktop/QtHost.h"
#include "desktop/picture/HostLayout.h"

class QEvent;
class QKeyEvent;

namespace quoll {

// Gives a window's keys to the machine, in their order and none of them lost. A program of the machine looks
// at its keys once a frame, so each key that goes down or up stays so until it can have been seen; what comes
// meanwhile waits. A user does not notice that, programs that type do.
class MachineKeys : public RecordView {
 public:
  MachineKeys(QtHost& hostOfWindow, Machine& machineOfWindow);

  // Accepts the event, unless the machine leaves the key to the host: then it is ignored, so that menus can
  // be reached with Alt.
  void Pressed(QKeyEvent* event);
  void Released(QKeyEvent* event);

  // All keys come up, and what waits is forgotten: the focus goes or comes, the mouse is pressed.
  void Clear();

  // Gives what waits as far as the machine has seen what came before.
  void Pull(Machine& machine) override;
  // At "Max" many frames go by between two pulls: a tap must not grow into a held key.
  void FrameEnded(Machine& machine) override { Pull(machine); }

 private:
  struct Change {
    int32_t keyCode = 0;
    int32_t shift = 0;
    bool down = false;
  };

  int64_t Frame() const;
  bool Seen(int64_t since) const;
  bool MayCome(const Change& change) const;
  void Give(const Change& change);
  void Queue(const Change& change);
  // The key that the event is about, whatever sign it gives with the keys held now.
  int32_t KeyOf(const QKeyEvent& event);

  Machine& m;
  HostLayout layout;
  std::deque<Change> waiting;
  std::array<int64_t, 256> changedAt;  // frame at which a key last went down or up, by virtual key code
  int64_t pressedAt;                   // frame at which some key that is no modifier last went down
  // What a place of the host's keyboard gave when it was last pressed, without AltGr where the layout is not
  // known, by native scan code.
  std::array<int32_t, 512> codesOfPlaces{};
};

// Keeps shortcuts of the host away from keys that are the machine's; true when it did.
bool ClaimShortcut(QEvent* event);

}  // namespace quoll
