// Which of the windows are asked for. A menu entry asks, the window that shows the form takes it from here
// and tells when the user has closed it; with no window open the flag alone is what has happened.
#pragma once

namespace quoll {

struct WindowState {
  bool visible = false;
  bool raise = false;  // asked for anew: the window comes to the front and takes this back
};

struct Windows {
  WindowState Frame2;  // the About panel inside the main window
  WindowState FScreen;
  WindowState ErrorSim;
  WindowState TTape;
  WindowState TVCmon;
  WindowState FDXF;
};

inline void ShowWindow(WindowState& window) { window = {true, true}; }

}  // namespace quoll
