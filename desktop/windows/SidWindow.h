// FSID: the window of the SID.
#pragma once

#include "desktop/kit/FormWindow.h"

namespace quoll {

class SidWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit SidWindow(FormKit& kitOfWindow);

 private:
  QWidget* ChipFilter();
  QWidget* Dumps();
  QWidget* Extended();
  QWidget* PostFilters();
  QWidget* TimeScales();
  QWidget* Sweep();
  QWidget* Poke();
  QWidget* Registers();
};

}  // namespace quoll
