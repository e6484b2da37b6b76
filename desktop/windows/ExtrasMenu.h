// The menu "Extras": the choices of desktop/Extras.h.
#pragma once

class QMenuBar;

namespace quoll {

class QtHost;

// Puts it before the last menu. A choice counts at once and is kept for the next start.
void AddExtrasMenu(QMenuBar& menus, QtHost& host);

}  // namespace quoll
