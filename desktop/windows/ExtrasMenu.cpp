#include "desktop/windows/ExtrasMenu.h"

#include <QMenuBar>

#include "desktop/QtHost.h"

namespace quoll {

void AddExtrasMenu(QMenuBar& menus, QtHost& host) {
  auto* menu = new QMenu("&Extras", &menus);
  menu->setAccessibleName("Extras");
  menus.insertMenu(menus.actions().back(), menu);
  for (const ExtrasTick& tick : kExtrasTicks) {
    QAction* entry = menu->addAction(tick.caption);
    entry->setObjectName(tick.name);
    entry->setCheckable(true);
    entry->setChecked(host.extras.*tick.on);
    QObject::connect(entry, &QAction::toggled, entry, [&host, tick](bool on) {
      host.extras.*tick.on = on;
      KeepExtras(host.extras);
    });
  }
}

}  // namespace quoll
