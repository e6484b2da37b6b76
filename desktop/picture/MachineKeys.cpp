#include "desktop/picture/MachineKeys.h"

#include <QKeyEvent>

#include "desktop/picture/KeyCodes.h"
#include "forms/PicD.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// Two frame ends, so that a whole frame lies between.
constexpr int64_t kSeenAfter = 2;

}  // namespace

MachineKeys::MachineKeys(QtHost& hostOfWindow, Machine& machineOfWindow)
    : host(hostOfWindow), m(machineOfWindow) {
  host.AddView(this);
}

MachineKeys::~MachineKeys() { host.RemoveView(this); }

int64_t MachineKeys::Frame() const { return m.run.TotalCycles / kFrameTStates; }

// A machine that stands still looks at nothing. The monitor's "Run" counts frames anew.
bool MachineKeys::Seen(const Tap& tap) const {
  const int64_t passed = Frame() - tap.pressedAt;
  return m.run.CpuRunning == 0 || passed < 0 || passed >= kSeenAfter;
}

// With AltGr most keys give other signs, and not the same ones at press and release.
int32_t MachineKeys::KeyOf(const QKeyEvent& event) {
  const uint32_t place = event.nativeScanCode();
  if (place == 0 || place >= plainCodes.size()) return VirtualKey(event);
  int32_t& plain = plainCodes[place];
  const bool third = event.modifiers().testFlag(Qt::GroupSwitchModifier);
  if (event.type() == QEvent::KeyPress && !event.isAutoRepeat() && !third) plain = VirtualKey(event);
  return plain != 0 ? plain : VirtualKey(event);
}

void MachineKeys::Pressed(QKeyEvent* event) {
  int32_t keyCode = KeyOf(*event);
  const int32_t shift = ShiftState(*event);
  if (keyCode >= 0 && keyCode <= 255) {
    Tap& tap = taps[static_cast<size_t>(keyCode)];
    if (!event->isAutoRepeat()) tap.pressedAt = Frame();
    tap.released = false;
  }
  host.Guard([&] { picd_KeyDown(m, keyCode, shift); });
  event->setAccepted(keyCode == 0);
}

void MachineKeys::Released(QKeyEvent* event) {
  // X11 tells a held key as up and down again and again; only the last of it is a release.
  const int32_t keyCode = KeyOf(*event);
  if (!event->isAutoRepeat() && keyCode >= 0 && keyCode <= 255) {
    Tap& tap = taps[static_cast<size_t>(keyCode)];
    tap.released = !Seen(tap);
    held = held || tap.released;
    if (!tap.released) host.Guard([&] { picd_KeyUp(m, keyCode); });
  }
  event->setAccepted(!event->modifiers().testFlag(Qt::AltModifier) && event->key() != Qt::Key_Alt);
}

void MachineKeys::Pull(Machine& machine) {
  if (!held) return;
  held = false;
  for (size_t keyCode = 0; keyCode < taps.size(); ++keyCode) {
    Tap& tap = taps[keyCode];
    if (!tap.released) continue;
    tap.released = !Seen(tap);
    held = held || tap.released;
    if (!tap.released) picd_KeyUp(machine, static_cast<int32_t>(keyCode));
  }
}

bool ClaimShortcut(QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (ShiftState(*key) == kAltKey || key->key() == Qt::Key_Alt) return false;
  event->accept();
  return true;
}

}  // namespace quoll
