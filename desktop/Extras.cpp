#include "desktop/Extras.h"

#include <QSettings>

namespace quoll {

namespace {

QSettings File() { return QSettings(QSettings::IniFormat, QSettings::UserScope, "quollemu", "extras"); }

}  // namespace

Extras ReadExtras() {
  const QSettings file = File();
  Extras extras;
  for (const ExtrasTick& tick : kExtrasTicks)
    extras.*tick.on = file.value(tick.name, extras.*tick.on).toBool();
  return extras;
}

void KeepExtras(const Extras& extras) {
  QSettings file = File();
  for (const ExtrasTick& tick : kExtrasTicks) {
    const bool on = extras.*tick.on;
    if (on == Extras().*tick.on) {
      file.remove(tick.name);
    } else {
      file.setValue(tick.name, on);
    }
  }
}

}  // namespace quoll
