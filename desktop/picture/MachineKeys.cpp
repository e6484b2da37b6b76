#include "desktop/picture/MachineKeys.h"

#include <QKeyEvent>

#include "desktop/picture/KeyCodes.h"
#include "forms/PicD.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// Two frame ends, so that a whole frame lies between.
constexpr int64_t kSeenAfter = 2;
constexpr int64_t kLongAgo = -1'000'000;

bool IsModifier(int32_t keyCode) { return keyCode == 0x10 || keyCode == 0x11 || keyCode == 0x12; }

}  // namespace

MachineKeys::MachineKeys(QtHost& hostOfWindow, Machine& machineOfWindow)
    : RecordView(hostOfWindow), m(machineOfWindow), pressedAt(kLongAgo) {
  changedAt.fill(kLongAgo);
}

int64_t MachineKeys::Frame() const { return m.run.TotalCycles / kFrameTStates; }

// A machine that stands still looks at nothing. The monitor's "Run" counts frames anew.
bool MachineKeys::Seen(int64_t since) const {
  const int64_t passed = Frame() - since;
  return m.run.CpuRunning == 0 || passed < 0 || passed >= kSeenAfter;
}

// A key goes down after the one before it has been seen alone, and so do modifiers change: held on, a key
// that has been seen gets no other sign by them. Fingers that come up do not matter to each other.
bool MachineKeys::MayCome(const Change& change) const {
  if (!Seen(changedAt[static_cast<size_t>(change.keyCode)])) return false;
  return (!change.down && !IsModifier(change.keyCode)) || Seen(pressedAt);
}

void MachineKeys::Give(const Change& change) {
  int32_t keyCode = change.keyCode;
  changedAt[static_cast<size_t>(keyCode)] = Frame();
  if (change.down && !IsModifier(keyCode)) pressedAt = Frame();
  host.Guard([&] {
    if (change.down) {
      picd_KeyDown(m, keyCode, change.shift);
    } else {
      picd_KeyUp(m, keyCode);
    }
  });
}

void MachineKeys::Queue(const Change& change) {
  if (waiting.empty() && MayCome(change)) return Give(change);
  waiting.push_back(change);
}

// With AltGr most keys give other signs, and not the same ones at press and release.
int32_t MachineKeys::KeyOf(const QKeyEvent& event) {
  const uint32_t place = event.nativeScanCode();
  const std::optional<int32_t> known = layout.Code(event);
  if (place == 0 || place >= codesOfPlaces.size()) return known.value_or(VirtualKey(event));
  int32_t& code = codesOfPlaces[place];
  const bool third = event.modifiers().testFlag(Qt::GroupSwitchModifier) && !known;
  if (event.type() == QEvent::KeyPress && !event.isAutoRepeat() && !third)
    code = known.value_or(VirtualKey(event));
  return code != 0 ? code : VirtualKey(event);
}

void MachineKeys::Pressed(QKeyEvent* event) {
  int32_t keyCode = KeyOf(*event);
  const int32_t shift = ShiftState(*event);
  event->setAccepted(shift != kAltKey);
  // What the machine does not take, and a repeat, can't be lost; a repeat only matters after a Clear.
  const bool atOnce = shift == kAltKey || keyCode < 0 || keyCode > 255;
  if (atOnce || (event->isAutoRepeat() && waiting.empty()))
    return host.Guard([&] { picd_KeyDown(m, keyCode, shift); });
  if (!event->isAutoRepeat()) Queue({keyCode, shift, true});
}

void MachineKeys::Released(QKeyEvent* event) {
  // X11 tells a held key as up and down again and again; only the last of it is a release.
  const int32_t keyCode = KeyOf(*event);
  if (!event->isAutoRepeat() && keyCode >= 0 && keyCode <= 255) Queue({keyCode, 0, false});
  event->setAccepted(!event->modifiers().testFlag(Qt::AltModifier) && event->key() != Qt::Key_Alt);
}

void MachineKeys::Clear() {
  waiting.clear();
  KeyboardClear(m.keyboard);
}

void MachineKeys::Pull(Machine& /*machine*/) {
  while (!waiting.empty() && MayCome(waiting.front())) {
    const Change change = waiting.front();
    waiting.pop_front();
    Give(change);
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
