// Key events of a window as the picture box gets them.
#pragma once

class QEvent;
class QKeyEvent;

namespace quoll {

class QtHost;
struct Machine;

// Gives the key to the machine and accepts the event, unless the machine leaves the key to the host: then the
// event is ignored, so that menus can be reached with Alt.
void KeyPressed(QtHost& host, Machine& m, QKeyEvent* event);
void KeyReleased(QtHost& host, Machine& m, QKeyEvent* event);

// Keeps shortcuts of the host away from keys that are the machine's; true when it did.
bool ClaimShortcut(QEvent* event);

}  // namespace quoll
