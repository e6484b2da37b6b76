// The order in which Tab walks through a window.
#pragma once

class QWidget;

namespace quoll {

// As the layouts are seen: row by row, in each from the left to the right, whatever order the widgets were
// made in.
void TabAsSeen(QWidget& window);

}  // namespace quoll
