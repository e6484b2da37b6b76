// A window full of controls that can be made smaller than they need: bars scroll it then. It comes as large
// as they need, or as the screen is.
#pragma once

#include "desktop/kit/FormWindow.h"

namespace quoll {

class ScrolledWindow : public FormWindow {
  Q_OBJECT

 protected:
  // contentOfWindow: gets its layout in the constructor of the window.
  ScrolledWindow(FormKit& kitOfWindow, QWidget* contentOfWindow);

  void Appear() override;

  QWidget* content;

 private:
  bool sized = false;
};

}  // namespace quoll
