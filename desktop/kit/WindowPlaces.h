// Where the windows stand and how large they are: whatever shows a window for good or hides it goes through
// here.
#pragma once

#include <QMargins>
#include <QPoint>
#include <QSize>
#include <optional>

class QWidget;

namespace quoll {

struct WindowPlace {
  QPoint corner;  // of its frame, upper left, on the screen
  QSize size;     // without the frame
  bool maximised = false;
};

WindowPlace PlaceOf(const QWidget& window);

// Shows the window at its place, or where the host puts a new one. A place that lies on no screen any more
// counts as none.
void ShowAt(QWidget& window, const std::optional<WindowPlace>& place);

// For a window whose size is told with its frame, which is known only when it has been shown.
struct OuterSize {
  QMargins frame;  // for which the size was last taken
  QSize taken;     // the size it gave; another one is the user's choice, and stays

  // Both in device-independent pixels, wanted with the frame, atLeast without it.
  void Take(QWidget& window, QSize wanted, QSize atLeast);
};

}  // namespace quoll
