#include "display/qt/MachineKeys.h"

#include <QKeyEvent>

#include "core/Machine.h"
#include "core/qt/QtHost.h"
#include "display/qt/KeyCodes.h"

namespace quoll {

void KeyPressed(QtHost& host, Machine& m, QKeyEvent* event) {
  int32_t keyCode = VirtualKey(*event);
  const int32_t shift = ShiftState(*event);
  host.Guard([&] { picd_KeyDown(m, keyCode, shift); });
  event->setAccepted(keyCode == 0);
}

void KeyReleased(QtHost& host, Machine& m, QKeyEvent* event) {
  // X11 tells a held key as up and down again and again; only the last of it is a release.
  if (!event->isAutoRepeat()) host.Guard([&] { picd_KeyUp(m, VirtualKey(*event)); });
  event->setAccepted(!event->modifiers().testFlag(Qt::AltModifier) && event->key() != Qt::Key_Alt);
}

bool ClaimShortcut(QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (ShiftState(*key) == kAltKey || key->key() == Qt::Key_Alt) return false;
  event->accept();
  return true;
}

}  // namespace quoll
